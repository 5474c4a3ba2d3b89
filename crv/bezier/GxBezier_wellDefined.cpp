// Is a segment, run from left to right, a graph over the x axis, and how much of its direction lies
// in x. Both look at the derivative through differences of control points (Farin, Curves and
// Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/foundation/tolerance.h"

#include <cmath>

namespace {

// Curve units, per unit of t where speeds are meant: a difference smaller than this is none.
constexpr double kNoDifference = kZeroTolerance;

// Squared curve units: a direction shorter than this is none, and so is a sum of squared speeds.
constexpr double kNoDirection = kZeroTolerance;

// The modes of findRatio.
constexpr int kMinimum = 1;
constexpr int kMaximum = 2;

// The weights of products of first differences in the averaged ratio. Deliberate: 0.9, where the
// integral of the product of the first two quadratic Bernstein polynomials is 0.1.
constexpr double kWeights[3][3] = {
    {0.2, 0.9, 1.0 / 30.0}, {0.9, 2.0 / 15.0, 0.1}, {1.0 / 30.0, 0.1, 0.2}};

bool isZero(double d) { return IS_ZERO(d, kNoDifference); }

bool isZero(GxVector<double> const& v) { return IS_ZERO(v.squaredLength(), kNoDirection); }

/// The segment run from left to right.
GxBezier rightwards(GxBezier const& s) {
  GxBezier copy(s);
  if (copy[3].xval() < copy[0].xval()) copy.reverse();
  return copy;
}

/// The x speed starts and ends forwards: p and q are its end values, m and n its changes there.
bool runsForwardAtEnds(double p, double q, double m, double n) {
  if (p < 0.0 || q < 0.0) return false;
  if (p > 0.0 && q > 0.0) return true;
  if (isZero(p) && q > 0.0 && (m > 0.0 || (isZero(m) && n > 0.0))) return true;
  if (p > 0.0 && isZero(q) && (n < 0.0 || (isZero(n) && m < 0.0))) return true;
  return isZero(p) && m > 0.0 && isZero(q) && n < 0.0;
}

/// The three first differences of the control points.
struct Differences {
  explicit Differences(GxBezier const& s) : d{s[1] - s[0], s[2] - s[1], s[3] - s[2]} {}

  /// The weighted sum of the products of one coordinate's differences.
  static double weightedSquare(double d0, double d1, double d2) {
    double const e[3] = {d0, d1, d2};
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) sum += e[i] * e[j] * kWeights[i][j];
    }
    return sum;
  }

  double squareOfX() const { return weightedSquare(d[0].xval(), d[1].xval(), d[2].xval()); }
  double squareOfY() const { return weightedSquare(d[0].yval(), d[1].yval(), d[2].yval()); }

  GxVector<double> d[3];
};

double averageRatio(Differences const& differences, double a, double b) {
  double const x = std::fabs(differences.squareOfX());
  double const both = x + std::fabs(differences.squareOfY());
  if (IS_ZERO(both, kNoDirection)) return (a + b) * 0.5;
  return std::sqrt(x) / std::sqrt(both);
}

}  // namespace

int GxBezier::isWellDefined() const {
  GxBezier const s = rightwards(*this);
  double const x0 = s[0].xval();
  double const x1 = s[1].xval();
  double const x2 = s[2].xval();
  double const x3 = s[3].xval();
  double const m = x2 - 2.0 * x1 + x0;
  double const n = x3 - 2.0 * x2 + x1;
  if (!runsForwardAtEnds(x1 - x0, x3 - x2, m, n)) return 0;
  double const k = n - m;
  if (isZero(k)) return 1;
  double const slowest = -(m / k);
  bool const isInside = 0.0 < slowest && slowest < 1.0;
  return !(isInside && s.dValue(slowest).xval() <= 0.0);
}

int GxBezier::findRatio(double /*ignored*/, int mode, double& ratio) const {
  if (isAPoint(kZeroTolerance)) return -1;
  GxBezier const s = rightwards(*this);
  Differences const differences(s);
  GxVector<double> const* const d = differences.d;
  int first = 0;
  int last = 2;
  while (first < 3 && isZero(d[first])) ++first;
  if (first == 3) return -1;
  while (isZero(d[last])) --last;
  double const a = d[first].normalize().xval();
  double const b = d[last].normalize().xval();

  if (mode != kMinimum && mode != kMaximum) {
    ratio = averageRatio(differences, a, b);
    return 0;
  }
  int code = 0;
  if (mode == kMinimum) {
    ratio = a <= b ? a : b;
    code = a <= b ? 1 : 2;
  } else {
    ratio = max(a, b);
  }
  double const change = d[1].xval() - d[0].xval();
  double const bend = (d[2].xval() - d[1].xval()) - change;
  if (isZero(bend)) return code;
  double const t = -(change / bend);
  if (!(0.0 < t && t < 1.0)) return code;
  GxVector<double> const tangent = s.dValue(t);
  double const inside = isZero(tangent) ? tangent.xval() : tangent.normalize().xval();
  if (bend > 0.0 && mode == kMinimum && min(a, b) > inside) {
    ratio = inside;
    return 3;
  }
  if (bend < 0.0 && mode == kMaximum && max(a, b) < inside) ratio = inside;
  return code;
}
