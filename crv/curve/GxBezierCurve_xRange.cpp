// The position of a curve's x range relative to an interval, and the extension of the curve's start
// to a given x.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/tolerance.h"

namespace {

// Squared curve units: control points this close coincide.
constexpr double kCoincident = kZeroTolerance;

// The results of wellDefinedDetection.
constexpr int kNotWellDefined = 0;
constexpr int kCovers = 1;
constexpr int kStartsInside = 2;
constexpr int kEndsInside = 4;
constexpr int kInside = 7;

// Deliberate: process-wide, set while a reversed curve is checked, and left set where that check
// fails.
int reversedPass = 0;

int classify(double x0, double xe, double lo, double hi) {
  if (x0 <= lo) {
    if (xe >= hi) return kCovers;
    return reversedPass == 1 ? kStartsInside : kEndsInside;
  }
  if (xe >= hi) return reversedPass == 1 ? kEndsInside : kStartsInside;
  return kInside;
}

}  // namespace

int GxBezierCurve::extendLine(GxCoord<double>& out, double x, double tol) const {
  if (segments_.length() == 0) return -1;
  GxBezier const& s = segments_[0];
  int towards = 1;
  while (towards <= 3 && IS_ZERO(s[0].squaredDistance(s[towards]), kCoincident)) ++towards;
  if (towards > 3) return -1;
  GxVector<double> direction = (s[towards] - s[0]).normalize();
  if (IS_ZERO(direction.xval(), tol)) direction = GxVector<double>(-1.0, 0.0);
  double const start = s[0].xval();
  double const distance = (x - start) / direction.xval();
  out = GxCoord<double>(x, s[0].yval() + distance * direction.yval());
  return x <= start && start <= s[3].xval() ? 0 : 1;
}

int GxBezierCurve::wellDefinedDetection(double lo, double hi) const {
  unsigned const n = segments_.length();
  if (n == 0) return kNotWellDefined;
  if (lo > hi) return wellDefinedDetection(hi, lo);
  double const x0 = segments_[0][0].xval();
  double const xe = segments_[n - 1][3].xval();
  if (x0 > xe) {
    GxBezierCurve reversed(*this);
    reversed.reverse();
    reversedPass = 1;
    return reversed.wellDefinedDetection(lo, hi);
  }
  int const code = classify(x0, xe, lo, hi);
  GxBezier const* const first = &segments_[0];
  for (GxBezier const& s : segments_) {
    if (!s.isWellDefined()) return kNotWellDefined;
    // Deliberate: the first segment may run backwards.
    if (&s != first && s[3].xval() < s[0].xval()) return kNotWellDefined;
  }
  reversedPass = 0;
  return code;
}
