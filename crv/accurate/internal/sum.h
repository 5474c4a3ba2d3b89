// Compensated summation.
#pragma once

#include <cmath>

namespace crv::internal {

/// A sum whose error does not grow with the number of terms.
/// Method: A. Neumaier, "Rundungsfehleranalyse einiger Verfahren zur Summation endlicher Summen",
/// ZAMM 54 (1974).
class Sum {
 public:
  void add(double x) {
    double const next = sum_ + x;
    lost_ += std::fabs(sum_) >= std::fabs(x) ? (sum_ - next) + x : (x - next) + sum_;
    sum_ = next;
  }
  double value() const { return sum_ + lost_; }

 private:
  double sum_ = 0.0;
  double lost_ = 0.0;
};

}  // namespace crv::internal
