// The parameter of a point, by Newton's method on (B(t) - p) . B'(t) (P. J. Schneider, "An
// algorithm for automatically fitting digitized curves", Graphics Gems, 1990).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Parameter: the starting value. Deliberate: the caller's guess is ignored.
constexpr double kStart = 0.5;

// Newton steps after which the point counts as not on the segment.
constexpr int kMaxSteps = 15;

/// Stores the control points of the derivative: the degree times the differences of consecutive
/// control points.
void hodograph(Point const* p, int degree, Point* out) {
  for (int i = 0; i < degree; ++i) {
    out[i] = {degree * (p[i + 1].x - p[i].x), degree * (p[i + 1].y - p[i].y)};
  }
}

/// A segment and the control points of its derivatives.
struct Newton {
  explicit Newton(GxBezier const& s) : segment(crv::internal::cubic(s)) {
    hodograph(segment.p, 3, first);
    hodograph(first, 2, second);
  }

  Point point(double t) const { return crv::internal::deCasteljau(segment.p, t, 3); }

  /// One step from u towards the parameter of the point nearest to p.
  double step(Point const& p, double u) const {
    Point const q = point(u);
    Point const q1 = crv::internal::deCasteljau(first, u, 2);
    Point const q2 = crv::internal::deCasteljau(second, u, 1);
    Point const offset = q - p;
    double const numerator = dot(offset, q1);
    // Exact form: dot(q1, q1) is not added as one sum.
    double const denominator = dot(offset, q2) + q1.x * q1.x + q1.y * q1.y;
    return IS_ZERO(denominator, kZeroTolerance) ? u : u - numerator / denominator;
  }

  Cubic segment;
  Point first[3];
  Point second[2];
};

}  // namespace

double GxBezier::parameter(GxCoord<double> const& p, double u) const {
  return Newton(*this).step(crv::internal::plain(p), u);
}

double GxBezier::findParameter(GxCoord<double> const& p, double /*ignored*/, double tol) const {
  Newton const newton(*this);
  Point const target = crv::internal::plain(p);
  double t = kStart;
  for (int i = 0; i < kMaxSteps; ++i) {
    t = newton.step(target, t);
    if (!(0.0 <= t && t <= 1.0)) continue;
    Point const q = newton.point(t);
    if (std::fabs(q.x - target.x) < tol && std::fabs(q.y - target.y) < tol) return t;
  }
  return -1.0;
}
