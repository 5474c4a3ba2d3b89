// The parameter of a point, by Newton steps on (B(t) - p) . B'(t) (P. J. Schneider, "An algorithm
// for automatically fitting digitized curves", Graphics Gems, 1990), always started in the middle.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Point;

namespace {

// Parameter: where the search starts, whatever the caller's guess; and the Newton steps it may
// take.
constexpr double kStart = 0.5;
constexpr int kMaxSteps = 15;

/// 2 or 3 times the difference of consecutive control points: the derivative's control points.
void hodograph(Point const* p, int degree, Point* out) {
  for (int i = 0; i < degree; ++i) {
    out[i] = {degree * (p[i + 1].x - p[i].x), degree * (p[i + 1].y - p[i].y)};
  }
}

/// A segment and the control points of its derivatives.
struct Newton {
  explicit Newton(GxBezier const& s) {
    for (int i = 0; i < 4; ++i) points[i] = crv::internal::plain(s[i]);
    hodograph(points, 3, first);
    hodograph(first, 2, second);
  }

  double step(Point const& p, double u) const {
    Point const q = crv::internal::deCasteljau(points, u, 3);
    Point const q1 = crv::internal::deCasteljau(first, u, 2);
    Point const q2 = crv::internal::deCasteljau(second, u, 1);
    double const dx = q.x - p.x;
    double const dy = q.y - p.y;
    double const numerator = dx * q1.x + dy * q1.y;
    double const denominator = (dx * q2.x + dy * q2.y) + q1.x * q1.x + q1.y * q1.y;
    return IS_ZERO(denominator, kZeroTolerance) ? u : u - numerator / denominator;
  }

  Point points[4];
  Point first[3];
  Point second[2];
};

}  // namespace

double GxBezier::parameter(GxCoord<double> const& p, double u) {
  return Newton(*this).step(crv::internal::plain(p), u);
}

double GxBezier::findParameter(GxCoord<double> const& p, double /*ignored*/, double tol) {
  Newton const newton(*this);
  Point const target = crv::internal::plain(p);
  double t = kStart;
  for (int i = 0; i < kMaxSteps; ++i) {
    t = newton.step(target, t);
    if (!(0.0 <= t && t <= 1.0)) continue;
    Point const q = crv::internal::deCasteljau(newton.points, t, 3);
    if (std::fabs(q.x - target.x) < tol && std::fabs(q.y - target.y) < tol) return t;
  }
  return -1.0;
}
