// A cubic in power form relative to its start, for loops that also need derivatives.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// The motion along a cubic, t being the time: places relative to the start point.
struct Motion {
  Point c1, c2, c3;

  /// Of the cubic with these control points relative to its start.
  Motion(Point const& p1, Point const& p2, Point const& p3)
      : c1(p1 * 3.0), c2((p2 - p1 * 2.0) * 3.0), c3(p3 - (p2 - p1) * 3.0) {}

  Point place(double t) const { return (c1 + (c2 + c3 * t) * t) * t; }
  Point velocity(double t) const { return c1 + (c2 * 2.0 + c3 * (3.0 * t)) * t; }
  Point acceleration(double t) const { return c2 * 2.0 + c3 * (6.0 * t); }
};

/// Of a cubic, relative to its start.
inline Motion motionOf(Cubic const& c) {
  return {c.p[1] - c.start(), c.p[2] - c.start(), c.end() - c.start()};
}

/// The amount by which Newton's method for the nearest point reduces t, where error is the offset
/// of the curve's point from the given point. Where the curvature makes the step unsafe, it is the
/// Gauss-Newton step, which ignores the curvature.
inline double footStep(Point const& error, Point const& velocity, Point const& acceleration) {
  // The least share of the Gauss-Newton denominator that the full denominator must keep.
  constexpr double kMinDenominator = 0.2;
  double const along = dot(error, velocity);
  double const squaredSpeed = dot(velocity, velocity);
  double denominator = squaredSpeed + dot(error, acceleration);
  if (!(denominator > kMinDenominator * squaredSpeed)) denominator = squaredSpeed;
  return denominator > 0.0 ? along / denominator : 0.0;
}

}  // namespace crv::internal
