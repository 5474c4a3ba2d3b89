// The lengths of stretches of one cubic: the engine of arcLength.h and walk.h.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A finite cubic, ready to be measured. Tolerances are absolute and should be those of
/// tolerance().
class CubicLength {
 public:
  explicit CubicLength(Cubic const& cubic);

  /// At least the length of the cubic, and at most six times as much.
  double bound() const { return bound_; }

  /// What the method may be off for a result to stay within an accuracy, or 64 u L if that is more.
  /// L belongs to what the bound, a sum of bounds, is for.
  static double tolerance(double accuracy, double bound);

  /// The length between two parameters in [0, 1], t0 <= t1.
  double between(double t0, double t1, double tolerance) const;

  /// The parameter in [t0, 1] at a length from t0, or in [0, t0] at minus a negative one; 1 or 0
  /// where the cubic ends before.
  double parameterAt(double t0, double length, double tolerance) const;

 private:
  bool isStraight() const;
  double straightBetween(double t0, double t1) const;
  Point offset(double t) const;
  double speed(double t) const;

  Point e_[3];  // the edges of the control polygon
  Point chord_;
  double bound_;
  bool isStraight_;
};

}  // namespace crv::internal
