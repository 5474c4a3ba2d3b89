#include "crv/curve/GxBezierCurvePosition.h"

#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>

namespace {

// From this parameter on, adding 1 need not change it: nothing is carried.
constexpr double kCarryLimit = 0x1p53;

/// segment + carry, or the nearer end of the range of long.
long saturatedSum(long segment, double carry) {
  constexpr long kLowest = std::numeric_limits<long>::min();
  constexpr long kHighest = std::numeric_limits<long>::max();
  double const sum = static_cast<double>(segment) + carry;
  if (sum <= static_cast<double>(kLowest)) return kLowest;
  if (sum >= static_cast<double>(kHighest)) return kHighest;
  // The carry alone may lie beyond a long of 32 bits.
  return static_cast<long>(segment + static_cast<long long>(carry));
}

/// The position as one number, segment + t.
double globalParameter(GxBezierCurvePosition const& p) {
  return static_cast<double>(p.getSegmentNumber()) + p.getTValue();
}

}  // namespace

GxBezierCurvePosition::GxBezierCurvePosition() : segment_(-1), t_(0.0) {}

void GxBezierCurvePosition::normalise() {
  if (!(std::fabs(t_) < kCarryLimit)) return;
  if (t_ < 0.0) {
    // Exact form: carrying 1 at a time is exact in every step but the last, so all but the last are
    // carried at once.
    double const steps = std::floor(-t_);
    t_ += steps;
    segment_ = saturatedSum(segment_, -steps);
    if (t_ < 0.0) {
      t_ += 1.0;
      segment_ = saturatedSum(segment_, -1.0);
    }
  }
  if (t_ >= 1.0) {
    double const steps = std::floor(t_);
    t_ -= steps;
    segment_ = saturatedSum(segment_, steps);
  }
}

int GxBezierCurvePosition::operator==(GxBezierCurvePosition const& p) const {
  return segment_ == p.segment_ && t_ == p.t_;
}

int GxBezierCurvePosition::operator!=(GxBezierCurvePosition const& p) const {
  return !(*this == p);
}

int GxBezierCurvePosition::operator<(GxBezierCurvePosition const& p) const {
  return segment_ < p.segment_ || (segment_ == p.segment_ && t_ < p.t_);
}

int GxBezierCurvePosition::operator<=(GxBezierCurvePosition const& p) const {
  return segment_ < p.segment_ || (segment_ == p.segment_ && t_ <= p.t_);
}

int GxBezierCurvePosition::operator>(GxBezierCurvePosition const& p) const {
  return segment_ > p.segment_ || (segment_ == p.segment_ && t_ > p.t_);
}

int GxBezierCurvePosition::operator>=(GxBezierCurvePosition const& p) const {
  return segment_ > p.segment_ || (segment_ == p.segment_ && t_ >= p.t_);
}

int GxBezierCurvePosition::isEqual(GxBezierCurvePosition const& p, double tol) const {
  return IS_EQUAL(globalParameter(*this), globalParameter(p), std::fabs(tol));
}

int GxBezierCurvePosition::reverseSense(int sense) {
  if (sense == 1) return 2;
  if (sense == 2) return 1;
  return sense;
}

int GxBezierCurvePosition::isCompatibleSense(int a, int b) { return a == b || a == 0 || b == 0; }

int isEqual(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b, double tol) {
  return IS_EQUAL(globalParameter(a), globalParameter(b), tol);
}

template class GxList<GxBezierCurvePosition>;
