// The lowest and highest points, at roots of the derivative, and the boxes of the curve and of its
// control points (Farin, Curves and Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/extremes.h"
#include "crv/bezier/internal/powerForm.h"
#include "crv/foundation/solvers.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <functional>
#include <utility>

using crv::internal::Box;
using crv::internal::Cubic;
using crv::internal::Derivative;
using crv::internal::Point;

namespace {

// Below these the solver takes the derivative as linear, or its roots as one. The leading
// coefficient is in curve units, the discriminant in squared ones.
constexpr double kLeading = 1e-20;
constexpr double kDiscriminant = 1e-9;

/// Parameters strictly inside a segment.
struct InnerParameters {
  double t[4];
  int count = 0;

  void add(double parameter) {
    if (0.0 < parameter && parameter < 1.0) t[count++] = parameter;
  }

  /// Adds the zeros of the derivative d of one coordinate.
  void addRoots(Derivative const& d) {
    if (IS_ZERO(d.a, kZeroTolerance)) {
      if (!IS_ZERO(d.b, kZeroTolerance)) add(-(d.c / d.b));
      return;
    }
    double const discriminant = d.b * d.b - 4.0 * d.a * d.c;
    if (discriminant < 0.0) return;
    double const root = std::sqrt(discriminant);
    add((root - d.b) / (2.0 * d.a));
    add((-d.b - root) / (2.0 * d.a));
  }
};

/// Stores the parameters of the lowest and the highest point in entry(0) and entry(1), which hold
/// 0 and 1. Returns true if these stay because the handles at both ends are level.
template <class Entry>
bool storeHeightExtremes(GxBezier const& s, Entry entry) {
  double const y0 = s[0].yval();
  double const y1 = s[1].yval();
  double const y2 = s[2].yval();
  double const y3 = s[3].yval();
  double low = y0;
  double high = y3;
  if (y0 > y3) {
    std::swap(low, high);
    std::swap(entry(0), entry(1));
  }
  if (IS_EQUAL(y0, y1, kZeroTolerance) && IS_EQUAL(y2, y3, kZeroTolerance)) return true;

  Derivative const d = crv::internal::derivative(y0, y1, y2, y3);
  int count = 0;
  double roots[2] = {};
  GxQuadraticSolver().quadraticSolve(&count, &roots[0], &roots[1], d.a, d.b, d.c, kLeading,
                                     kDiscriminant);
  for (int i = 0; i < count; ++i) {
    if (!(0.0 <= roots[i] && roots[i] <= 1.0)) continue;
    double const h = s.bValue(roots[i]).yval();
    if (h < low) {
      low = h;
      entry(0) = roots[i];
    } else if (h > high) {
      high = h;
      entry(1) = roots[i];
    }
  }
  return false;
}

/// The highest or lowest point; beyond(h, y) tells whether height h goes beyond y.
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
  crv::internal::HeightExtremes const extremes = crv::internal::heightExtremes(s);
  for (double const extreme : {extremes.lowest, extremes.highest}) {
    double const h = s.bValue(extreme).yval();
    if (beyond(h, y)) {
      t = extreme;
      y = h;
      return;
    }
  }
}

}  // namespace

namespace crv::internal {

HeightExtremes heightExtremes(GxBezier const& s) {
  double t[2] = {0.0, 1.0};
  storeHeightExtremes(s, [&t](unsigned i) -> double& { return t[i]; });
  return {t[0], t[1]};
}

}  // namespace crv::internal

int GxBezier::getYMinMaxTValues(GxList<double>& list) const {
  // Deliberate: appended, but then addressed as entries 0 and 1.
  list.add(0.0);
  list.add(1.0);
  bool const areEnds =
      storeHeightExtremes(*this, [&list](unsigned i) -> double& { return list(i); });
  return areEnds ? 2 : static_cast<int>(list.length());
}

void GxBezier::getMaxYTValue(double& t, double& y) const {
  findExtremeHeight(*this, std::greater<double>(), t, y);
}

void GxBezier::getMinYTValue(double& t, double& y) const {
  findExtremeHeight(*this, std::less<double>(), t, y);
}

void GxBezier::localMinMax(double& minX, double& minY, double& maxX, double& maxY) const {
  Cubic const s = crv::internal::cubic(*this);
  minX = min(s.start().x, s.end().x);
  minY = min(s.start().y, s.end().y);
  maxX = max(s.start().x, s.end().x);
  maxY = max(s.start().y, s.end().y);
  InnerParameters extremes;
  extremes.addRoots(crv::internal::derivativeOfX(*this));
  extremes.addRoots(crv::internal::derivativeOfY(*this));
  for (int i = 0; i < extremes.count; ++i) {
    Point const p = s.point(extremes.t[i]);
    minX = min(minX, p.x);
    minY = min(minY, p.y);
    maxX = max(maxX, p.x);
    maxY = max(maxY, p.y);
  }
}

void GxBezier::getConvexHull(double& minX, double& minY, double& maxX, double& maxY) const {
  Box const box = crv::internal::cubic(*this).hull();
  minX = box.minX;
  minY = box.minY;
  maxX = box.maxX;
  maxY = box.maxY;
}
