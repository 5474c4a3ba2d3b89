// The lengths of stretches of one cubic: the engine of arcLength.h and walk.h.
#pragma once

#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/speed.h"
#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

/// A finite cubic, ready to be measured. Tolerances are absolute and should be those of
/// tolerance().
class CubicLength {
 public:
  explicit CubicLength(Cubic const& cubic)
      : edges_(cubic), bound_(boundOf(edges_)), scale_{1.0, 1.0} {
    if (bound_ >= kSmallestUnscaled && bound_ <= kLargestUnscaled) return;
    scale_ = PowerOfTwo::below(bound_);
    for (Point& e : edges_.e) e = e * scale_.inverse;
  }

  /// The length of a whole segment, computed without scaling; -1 for segments that are very large,
  /// very small or straight, and for an accuracy that is NaN.
  static double ofOrdinary(GxBezier const& segment, double accuracy);

  /// At least the length of the cubic, and at most six times as much.
  double bound() const { return bound_; }

  /// What the method may be off for a result to stay within an accuracy, or 64 u L if that is more.
  /// L belongs to what the bound, a sum of bounds, is for.
  static double tolerance(double accuracy, double bound) {
    double const kept = kRoundingShare * bound;
    return max(accuracy - kept, kept);
  }

  /// The length between two parameters in [0, 1], t0 <= t1.
  double between(double t0, double t1, double tolerance) const {
    return scaledBetween(t0, t1, tolerance * scale_.inverse) * scale_.power;
  }

  /// The parameter in [t0, 1] at a length from t0, or in [0, t0] at minus a negative one; 1 or 0
  /// where the cubic ends before.
  double parameterAt(double t0, double length, double tolerance) const;

 private:
  // Relative to the bound of the length: what is kept for rounding, and the least that the method
  // is asked for. The bound is at most six times the length, so that both stay below 64 u L.
  static constexpr double kRoundingShare = 5 * kRounding;

  // Bounds between which eighth powers of the edges are in range.
  static constexpr double kSmallestUnscaled = 0x1p-64;
  static constexpr double kLargestUnscaled = 0x1p64;

  double scaledBetween(double t0, double t1, double tolerance) const;
  Hodograph hodograph(double t0, double t1) const;
  static double boundOf(Edges const& edges) {
    auto const& e = edges.e;
    return (std::fabs(e[0].x) + std::fabs(e[0].y)) + (std::fabs(e[1].x) + std::fabs(e[1].y)) +
           (std::fabs(e[2].x) + std::fabs(e[2].y));
  }
  static bool isStraight(Edges const& edges);
  double straightBetween(double t0, double t1) const;
  Point offset(double t) const;
  double speed(double t) const;

  Edges edges_;  // divided by the scale
  double bound_;
  PowerOfTwo scale_;  // keeps eighth powers of the edges in range
};

}  // namespace crv::internal
