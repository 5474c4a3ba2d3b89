// Lowest and highest points through the roots of the derivative, and the boxes of the curve and of
// its control points (Farin, Curves and Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/powerForm.h"
#include "crv/foundation/solvers.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <functional>

namespace {

// Squared curve units per unit of t: what the leading coefficient of the derivative and its
// discriminant must exceed to count.
constexpr double kLeading = 1e-20;
constexpr double kDiscriminant = 1e-9;

/// The box of the points seen so far.
struct Box {
  double& minX;
  double& minY;
  double& maxX;
  double& maxY;

  void widen(GxCoord<double> const& p) {
    minX = min(minX, p.xval());
    minY = min(minY, p.yval());
    maxX = max(maxX, p.xval());
    maxY = max(maxY, p.yval());
  }
};

/// Widens the box by the points at which one coordinate turns, strictly inside the segment.
void widenAtTurns(Box box, GxBezier const& s, crv::internal::Derivative const& d) {
  auto const widenAt = [&](double t) {
    if (0.0 < t && t < 1.0) box.widen(s.bValue(t));
  };
  if (IS_ZERO(d.a, kZeroTolerance)) {
    if (!IS_ZERO(d.b, kZeroTolerance)) widenAt(-(d.c / d.b));
    return;
  }
  double const discriminant = d.b * d.b - 4.0 * d.a * d.c;
  if (discriminant < 0.0) return;
  double const root = std::sqrt(discriminant);
  widenAt((root - d.b) / (2.0 * d.a));
  widenAt((-d.b - root) / (2.0 * d.a));
}

/// The highest or lowest point, as beyond(h, y) asks whether h goes beyond y.
template <class Beyond>
void findExtremeHeight(GxBezier const& s, Beyond beyond, double& t, double& y) {
  t = 0.0;
  y = s[0].yval();
  if (s.isAPoint(kZeroTolerance)) return;
  if (beyond(s[3].yval(), y)) {
    t = 1.0;
    y = s[3].yval();
  }
  // The curve stays within the heights of its control points: where inner ones do not go beyond the
  // ends, the ends are the answer.
  auto const within = [&](double h) { return beyond(y, h) || h == y; };
  if (within(s[1].yval()) && within(s[2].yval())) return;
  GxList<double> extremes;
  GxBezier(s).getYMinMaxTValues(extremes);
  for (unsigned i = 0; i < extremes.length(); ++i) {
    double const h = s.bValue(extremes(i)).yval();
    if (beyond(h, y)) {
      t = extremes(i);
      y = h;
      return;
    }
  }
}

}  // namespace

int GxBezier::getYMinMaxTValues(GxList<double>& list) {
  double const y0 = points_[0].yval();
  double const y1 = points_[1].yval();
  double const y2 = points_[2].yval();
  double const y3 = points_[3].yval();
  // Deliberate: appended, but then addressed as entries 0 and 1.
  list.add(0.0);
  list.add(1.0);
  double low = y0;
  double high = y3;
  if (y0 > y3) {
    low = y3;
    high = y0;
    double const first = list(0);
    list(0) = list(1);
    list(1) = first;
  }
  if (IS_EQUAL(y0, y1, kZeroTolerance) && IS_EQUAL(y2, y3, kZeroTolerance)) return 2;

  crv::internal::Derivative const d = crv::internal::derivative(y0, y1, y2, y3);
  int count = 0;
  double roots[2] = {};
  GxQuadraticSolver().quadraticSolve(&count, &roots[0], &roots[1], d.a, d.b, d.c, kLeading,
                                     kDiscriminant);
  for (int i = 0; i < count; ++i) {
    if (!(0.0 <= roots[i] && roots[i] <= 1.0)) continue;
    double const h = bValue(roots[i]).yval();
    if (h < low) {
      low = h;
      list(0) = roots[i];
    } else if (h > high) {
      high = h;
      list(1) = roots[i];
    }
  }
  return static_cast<int>(list.length());
}

void GxBezier::getMaxYTValue(double& t, double& y) const {
  findExtremeHeight(*this, std::greater<double>(), t, y);
}

void GxBezier::getMinYTValue(double& t, double& y) const {
  findExtremeHeight(*this, std::less<double>(), t, y);
}

void GxBezier::localMinMax(double& minX, double& minY, double& maxX, double& maxY) const {
  minX = maxX = points_[0].xval();
  minY = maxY = points_[0].yval();
  Box box{minX, minY, maxX, maxY};
  box.widen(points_[3]);
  widenAtTurns(box, *this, crv::internal::derivativeOfX(*this));
  widenAtTurns(box, *this, crv::internal::derivativeOfY(*this));
}

void GxBezier::getConvexHull(double& minX, double& minY, double& maxX, double& maxY) const {
  crv::internal::Box const box = crv::internal::cubic(*this).hull();
  minX = box.minX;
  minY = box.minY;
  maxX = box.maxX;
  maxY = box.maxY;
}
