// The edges of a cubic's control polygon, which are its velocity in Bernstein form.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

/// A quadratic polynomial in Bernstein form.
struct Quadratic {
  double c0, c1, c2;  // c0 (1-t)^2 + 2 c1 (1-t) t + c2 t^2

  /// Stores the roots inside (0, 1), ascending, and returns their number. Double roots are left
  /// out.
  int roots(double (&t)[2]) const {
    double const discriminant = c1 * c1 - c0 * c2;
    if (!(discriminant > 0.0)) return 0;
    double const root = std::sqrt(discriminant), half = c0 - c1;
    double const q = half + (half < 0.0 ? -root : root);
    double const a = q / (c0 - 2.0 * c1 + c2), b = c0 / q;
    int count = 0;
    for (double const x : {min(a, b), max(a, b)}) {
      if (x > 0.0 && x < 1.0) t[count++] = x;
    }
    return count;
  }
};

/// The edges of the control polygon of a segment or a stretch of it: a third of its velocity in
/// Bernstein form.
struct Edges {
  Point e[3];

  explicit Edges(Cubic const& c) : e{c.p[1] - c.p[0], c.p[2] - c.p[1], c.p[3] - c.p[2]} {}
  Edges(Point const& a, Point const& b, Point const& c) : e{a, b, c} {}

  Edges stretch(double t0, double t1) const {
    auto const at = [this](double r, double s) {
      return between(between(e[0], e[1], r), between(e[1], e[2], r), s);
    };
    double const width = t1 - t0;
    return {at(t0, t0) * width, at(t0, t1) * width, at(t1, t1) * width};
  }

  Quadratic across(Point const& axis) const {
    return {cross(axis, e[0]), cross(axis, e[1]), cross(axis, e[2])};
  }

  Quadratic along(Point const& axis) const {
    return {dot(axis, e[0]), dot(axis, e[1]), dot(axis, e[2])};
  }

  /// An eighteenth of the cross product of the first and second derivatives.
  Quadratic turning() const {
    return {cross(e[0], e[1]), 0.5 * cross(e[0], e[2]), cross(e[1], e[2])};
  }

  double largest() const {
    return std::sqrt(max(dot(e[0], e[0]), max(dot(e[1], e[1]), dot(e[2], e[2]))));
  }

  double alongSum(Point const& axis) const { return dot(e[0] + e[1] + e[2], axis); }

  /// The smallest component of an edge along a direction.
  double leastAlong(Point const& axis) const {
    return min(dot(e[0], axis), min(dot(e[1], axis), dot(e[2], axis)));
  }
};

}  // namespace crv::internal
