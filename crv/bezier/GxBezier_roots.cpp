// Parameters at which a segment reaches a height, passes a point or has its inflection. All are
// roots of polynomials made from the power form of its coordinates.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/powerForm.h"
#include "crv/foundation/internal/solvers.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/solvers.h"
#include "crv/foundation/tolerance.h"

using crv::internal::PowerForm;

namespace {

// Curve units: how far outside the box of the control points a point is still searched for, and the
// extent of the box below which the roots of a coordinate are not used.
constexpr double kBoxMargin = 0.1;
constexpr double kNoExtent = 0.1;

// Curve units to the fourth: the product of the cross products at both inner control points, below
// which the control polygon hardly turns.
constexpr double kNoTurn = 1e-9;

// Squared curve units, and to the fourth: a leading coefficient of the inflection equation up to
// this is zero, and so is a discriminant.
constexpr double kLeading = 1e-20;
constexpr double kDiscriminant = 1e-9;

double valueAt(PowerForm const& f, double t) { return ((f.a * t + f.b) * t + f.c) * t + f.d; }

int rootsOf(PowerForm const& f, double* roots) { return cubicRoots(f.a, f.b, f.c, f.d, roots); }

/// Stores in t the first root of one coordinate at which the other coordinate is zero, too, within
/// tol. Returns false if there is none; t is then the last root.
bool findCommonRoot(double const* roots, int count, PowerForm const& other, double tol, double& t) {
  for (int i = 0; i < count; ++i) {
    t = roots[i];
    if (0.0 <= t && t <= 1.0 && IS_ZERO(valueAt(other, t), tol)) return true;
  }
  return false;
}

}  // namespace

int GxBezier::findRoots(GxList<double>& list, double y, double lowerT, double upperT) const {
  PowerForm f = crv::internal::powerFormOfY(*this);
  f.d -= y;
  double roots[3];
  int const count = crv::internal::cubicRootsIn({lowerT, upperT}, f.a, f.b, f.c, f.d, roots);
  for (int i = 0; i < count; ++i) {
    if (lowerT <= roots[i] && roots[i] <= upperT) list.add(roots[i]);
  }
  return static_cast<int>(list.length());
}

int GxBezier::findRoots(GxList<GxCoord<double>>& points, double y, double lowerT,
                        double upperT) const {
  GxList<double> parameters;
  findRoots(parameters, y, lowerT, upperT);
  for (unsigned i = 0; i < parameters.length(); ++i) points.add(bValue(parameters(i)));
  return static_cast<int>(points.length());
}

int GxBezier::findTValue(GxCoord<double> const& p, double& t, double tol) const {
  if (isEqual(points_[0], p, tol)) {
    t = 0.0;
    return 1;
  }
  if (isEqual(points_[3], p, tol)) {
    t = 1.0;
    return 1;
  }
  double minX, minY, maxX, maxY;
  getConvexHull(minX, minY, maxX, maxY);
  // Deliberate: the margin is fixed, whatever tol.
  if (!isPointInBox(p, minX, minY, maxX, maxY, kBoxMargin)) return 0;

  PowerForm fx = crv::internal::powerFormOfX(*this);
  PowerForm fy = crv::internal::powerFormOfY(*this);
  fx.d -= p.xval();
  fy.d -= p.yval();
  double roots[3];
  if (!IS_EQUAL(minX, maxX, kNoExtent)) {
    int const count = rootsOf(fx, roots);
    if (count < 1) return 0;
    if (findCommonRoot(roots, count, fy, tol, t)) return 1;
  }
  if (IS_EQUAL(minY, maxY, kNoExtent)) return 0;
  return findCommonRoot(roots, rootsOf(fy, roots), fx, tol, t);
}

int GxBezier::findInflectionPoint(double& t) const {
  GxVector<double> const a = points_[1] - points_[0];
  GxVector<double> const b = points_[2] - points_[1];
  GxVector<double> const c = points_[3] - points_[2];
  double const turns = a.cross(b) * b.cross(c);
  if (turns > 0.0 || IS_ZERO(turns, kNoTurn)) return 0;

  auto const x = [this](int i) { return points_[i].xval(); };
  auto const y = [this](int i) { return points_[i].yval(); };
  GxVector<double> const d1(x(1) - x(0), y(1) - y(0));
  GxVector<double> const d2(x(2) - 2.0 * x(1) + x(0), y(2) - 2.0 * y(1) + y(0));
  GxVector<double> const d3(x(3) - 3.0 * x(2) + 3.0 * x(1) - x(0),
                            y(3) - 3.0 * y(2) + 3.0 * y(1) - y(0));
  int count = 0;
  double roots[2] = {1.0, 1.0};
  GxQuadraticSolver().quadraticSolve(&count, &roots[0], &roots[1], d2.cross(d3), d1.cross(d3),
                                     d1.cross(d2), kLeading, kDiscriminant);
  for (int i = 0; i < count; ++i) {
    if (0.0 < roots[i] && roots[i] < 1.0) {
      t = roots[i];
      return 1;
    }
  }
  return 0;
}
