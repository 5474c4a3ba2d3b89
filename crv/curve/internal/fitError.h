// The error of a fitted segment: squared distances from the points at their parameters.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/GxCoord.h"

#include <cmath>
#include <limits>

namespace crv::internal {

/// The sum of the magnitudes of a segment's coordinates, which rounding errors are relative to.
inline double magnitude(Cubic const& s) {
  double sum = 0.0;
  for (Point const& p : s.p) sum += std::fabs(p.x) + std::fabs(p.y);
  return sum;
}

/// Squared distances from points to a segment's points at their parameters.
class ErrorMeasure {
 public:
  explicit ErrorMeasure(GxBezier const& segment)
      : s_(cubic(segment)), slack_(magnitude(s_) * kRounding + kTiny) {}

  double squaredError(GxCoord<double> const& p, double t) {
    // All points not matched share the parameter -1, so the last weights are cached.
    if (t != t_) {
      double const s = 1.0 - t;
      // Exact form: the same weights as blendValue. Powers to 0 and 1 and factors of 1 change no
      // bit and are left out, but the power function is not a product.
      b_[0] = std::pow(s, 3.0);
      b_[1] = 3.0 * std::pow(s, 2.0) * t;
      b_[2] = 3.0 * s * std::pow(t, 2.0);
      b_[3] = std::pow(t, 3.0);
      t_ = t;
    }
    Point const q = weighted(b_);
    double const dx = q.x - p.xval();
    double const dy = q.y - p.yval();
    return dx * dx + dy * dy;
  }

  /// Returns true only if squaredError is below d, which it proves without the power function.
  bool isBelow(double d, GxCoord<double> const& p, double t) const {
    if (!(0.0 <= t && t <= 1.0)) return false;
    double const s = 1.0 - t;
    double const b[4] = {s * s * s, 3.0 * s * s * t, 3.0 * s * t * t, t * t * t};
    Point const q = weighted(b);
    double const dx = std::fabs(q.x - p.xval()) * (1.0 + kRounding) + slack_;
    double const dy = std::fabs(q.y - p.yval()) * (1.0 + kRounding) + slack_;
    return dx * dx + dy * dy < d;
  }

 private:
  // Relative: about a hundred times the difference between pow and products.
  static constexpr double kRounding = 1e-13;
  // Curve units: covers the rounding errors of subnormal numbers.
  static constexpr double kTiny = 1e-300;

  Point weighted(double const* b) const {
    return {b[0] * s_.p[0].x + b[1] * s_.p[1].x + b[2] * s_.p[2].x + b[3] * s_.p[3].x,
            b[0] * s_.p[0].y + b[1] * s_.p[1].y + b[2] * s_.p[2].y + b[3] * s_.p[3].y};
  }

  Cubic const s_;
  double const slack_;
  double t_ = std::numeric_limits<double>::quiet_NaN();
  double b_[4] = {};
};

// The index where there is no inner point, or where all distances are NaN.
constexpr int kNoPoint = -1;

/// The inner point farthest from a segment, and its squared distance.
struct WorstPoint {
  double error = 0.0;
  int index = kNoPoint;

  void update(double d, unsigned i) {
    // Deliberate: of equal distances the last counts, 0 included.
    if (!(d >= error)) return;
    error = d;
    index = static_cast<int>(i);
  }
};

/// points is a list or an array; u holds the parameters of points first..last.
template <class Points>
WorstPoint worstPoint(Points const& points, unsigned first, unsigned last, double const* u,
                      GxBezier const& segment) {
  WorstPoint worst;
  ErrorMeasure measure(segment);
  for (unsigned i = first + 1; i < last; ++i) {
    GxCoord<double> const& p = points[i];
    double const t = u[i - first];
    if (!measure.isBelow(worst.error, p, t)) worst.update(measure.squaredError(p, t), i);
  }
  return worst;
}

}  // namespace crv::internal
