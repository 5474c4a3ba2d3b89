// Self-intersection: the two parameters at which a cubic crosses itself are the roots of one
// quadratic, whose coefficients come from the power forms of the coordinates.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/powerForm.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::PowerForm;

namespace {

// Curve units: a handle up to this length rules a loop out, and ends up to this distance apart
// make one.
constexpr double kShortHandle = 0.1;
constexpr double kClosed = 0.1;

}  // namespace

int GxBezier::isSelfIntersect(double& t1, double& t2) const {
  if (isEqual(points_[0], points_[1], kShortHandle)) return 0;
  if (isEqual(points_[2], points_[3], kShortHandle)) return 0;
  if (isEqual(points_[0], points_[3], kClosed)) {
    t1 = 0.0;
    t2 = 1.0;
    return 1;
  }
  PowerForm const x = crv::internal::powerFormOfX(*this);
  PowerForm const y = crv::internal::powerFormOfY(*this);
  double const p = y.c * x.a - y.a * x.c;
  double const q = y.c * x.b - y.b * x.c;
  double const r = y.a * x.b - y.b * x.a;
  // Exact form: P^2 - 4*(Q*R + P^2), not -3*P^2 - 4*Q*R.
  double const discriminant = p * p - 4.0 * (q * r + p * p);
  if (discriminant < 0.0) return 0;
  double const n = y.b * x.a - y.a * x.b;
  if (IS_ZERO(n, kZeroTolerance)) return 0;
  double const h = (std::sqrt(discriminant) - p) * 0.5;
  t1 = h / n;
  if (t1 > 1.0 || t1 < 0.0) return 0;
  t2 = -((h + p) / n);
  return 0.0 <= t2 && t2 <= 1.0;
}

void GxBezier::cleanSelfIntersection(GxList<GxBezier>& list) const {
  double t1 = 0.0;
  double t2 = 0.0;
  if (!isSelfIntersect(t1, t2)) {
    list.add(*this);
    return;
  }
  GxBezier left;
  GxBezier right;
  split(left, right, (t1 + t2) * 0.5);
  list.add(left);
  list.add(right);
}
