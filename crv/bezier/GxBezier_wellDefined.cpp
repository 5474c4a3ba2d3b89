// Whether a segment, taken from left to right, is a graph over the x axis, and how much of its
// direction lies in x. Both examine the derivative through differences of control points (Farin,
// Curves and Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/foundation/tolerance.h"

#include <cmath>

namespace {

using Vector = GxVector<double>;

// Curve units, per unit of t where speeds are meant: a difference below this counts as zero.
constexpr double kNoDifference = kZeroTolerance;

// Squared curve units: a vector whose squared length is below this has no direction; a sum of
// squared speeds below this is zero.
constexpr double kNoDirection = kZeroTolerance;

// The modes of findRatio; any other mode computes the average.
constexpr int kMinimum = 1;
constexpr int kMaximum = 2;

// The codes of findRatio; for a minimum they tell where it lies.
constexpr int kNoRatio = -1;
constexpr int kDone = 0;
constexpr int kAtStart = 1;
constexpr int kAtEnd = 2;
constexpr int kInside = 3;

// The weights of products of first differences in the averaged ratio. Deliberate: 0.9, where the
// integral of the product of the first two quadratic Bernstein polynomials is 0.1.
constexpr double kWeights[3][3] = {
    {0.2, 0.9, 1.0 / 30.0}, {0.9, 2.0 / 15.0, 0.1}, {1.0 / 30.0, 0.1, 0.2}};

bool isZero(double d) { return IS_ZERO(d, kNoDifference); }

bool isZero(Vector const& v) { return IS_ZERO(v.squaredLength(), kNoDirection); }

/// The segment taken from left to right.
GxBezier rightwards(GxBezier const& s) {
  GxBezier copy(s);
  if (copy[3].xval() < copy[0].xval()) copy.reverse();
  return copy;
}

/// Returns true when the x speed is positive next to both ends. If the speed at an end is zero, its
/// change there decides; if that is zero, too, the change at the other end does.
bool runsForwardAtEnds(double startSpeed, double endSpeed, double startChange, double endChange) {
  if (startSpeed < 0.0 || endSpeed < 0.0) return false;
  bool const startsForward = startSpeed > 0.0;
  bool const endsForward = endSpeed > 0.0;
  if (startsForward && endsForward) return true;
  bool const speedsUp = startChange > 0.0 || (isZero(startChange) && endChange > 0.0);
  bool const slowsDown = endChange < 0.0 || (isZero(endChange) && startChange < 0.0);
  if (isZero(startSpeed) && endsForward && speedsUp) return true;
  if (startsForward && isZero(endSpeed) && slowsDown) return true;
  // Deliberate: where both speeds are zero, only the change at the end itself counts.
  return isZero(startSpeed) && startChange > 0.0 && isZero(endSpeed) && endChange < 0.0;
}

/// The three first differences of the control points.
struct Differences {
  explicit Differences(GxBezier const& s) : d{s[1] - s[0], s[2] - s[1], s[3] - s[2]} {}

  Vector d[3];
};

/// The x components of the unit tangents at both ends.
struct EndRatios {
  double start;
  double end;
};

/// Stores the x components of the first and of the last difference that has a direction, as unit
/// vectors. Returns false if none has.
bool findEndRatios(Differences const& differences, EndRatios& ratios) {
  Vector const* const d = differences.d;
  int first = 0;
  int last = 2;
  while (first < 3 && isZero(d[first])) ++first;
  if (first == 3) return false;
  while (isZero(d[last])) --last;
  ratios = {d[first].normalize().xval(), d[last].normalize().xval()};
  return true;
}

/// Stores the x component of the unit tangent where the x speed has its extreme. Returns false if
/// the extreme does not lie inside the segment or is not of the wanted kind.
bool findInnerRatio(GxBezier const& s, Differences const& differences, bool wantsMinimum,
                    double& ratio) {
  Vector const* const d = differences.d;
  double const secondDifference = d[1].xval() - d[0].xval();
  double const thirdDifference = (d[2].xval() - d[1].xval()) - secondDifference;
  if (isZero(thirdDifference)) return false;
  bool const isMinimum = thirdDifference > 0.0;
  double const t = -(secondDifference / thirdDifference);
  bool const isInside = 0.0 < t && t < 1.0;
  if (!isInside || isMinimum != wantsMinimum) return false;
  Vector const tangent = s.dValue(t);
  ratio = isZero(tangent) ? tangent.xval() : tangent.normalize().xval();
  return true;
}

int minimumRatio(GxBezier const& s, Differences const& differences, EndRatios const& ends,
                 double& ratio) {
  double inner;
  if (findInnerRatio(s, differences, true, inner) && min(ends.start, ends.end) > inner) {
    ratio = inner;
    return kInside;
  }
  bool const isAtStart = ends.start <= ends.end;
  ratio = isAtStart ? ends.start : ends.end;
  return isAtStart ? kAtStart : kAtEnd;
}

double maximumRatio(GxBezier const& s, Differences const& differences, EndRatios const& ends) {
  double const outer = max(ends.start, ends.end);
  double inner;
  return findInnerRatio(s, differences, false, inner) && outer < inner ? inner : outer;
}

/// The sum of the weighted products of one coordinate's differences.
double weightedSquare(double d0, double d1, double d2) {
  double const d[3] = {d0, d1, d2};
  double sum = 0.0;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) sum += d[i] * d[j] * kWeights[i][j];
  }
  return sum;
}

/// The share of x in the squared speed of the whole segment, as a ratio of lengths.
double averageRatio(Differences const& differences, EndRatios const& ends) {
  Vector const* const d = differences.d;
  double const x = std::fabs(weightedSquare(d[0].xval(), d[1].xval(), d[2].xval()));
  double const y = std::fabs(weightedSquare(d[0].yval(), d[1].yval(), d[2].yval()));
  double const both = x + y;
  if (IS_ZERO(both, kNoDirection)) return (ends.start + ends.end) * 0.5;
  return std::sqrt(x) / std::sqrt(both);
}

}  // namespace

int GxBezier::isWellDefined() const {
  GxBezier const s = rightwards(*this);
  double const x0 = s[0].xval();
  double const x1 = s[1].xval();
  double const x2 = s[2].xval();
  double const x3 = s[3].xval();
  double const startChange = x2 - 2.0 * x1 + x0;
  double const endChange = x3 - 2.0 * x2 + x1;
  if (!runsForwardAtEnds(x1 - x0, x3 - x2, startChange, endChange)) return 0;
  double const thirdDifference = endChange - startChange;
  if (isZero(thirdDifference)) return 1;
  double const extreme = -(startChange / thirdDifference);
  bool const isInside = 0.0 < extreme && extreme < 1.0;
  return !(isInside && s.dValue(extreme).xval() <= 0.0);
}

int GxBezier::findRatio(double /*ignored*/, int mode, double& ratio) const {
  if (isAPoint(kZeroTolerance)) return kNoRatio;
  GxBezier const s = rightwards(*this);
  Differences const differences(s);
  EndRatios ends;
  if (!findEndRatios(differences, ends)) return kNoRatio;
  switch (mode) {
    case kMinimum: return minimumRatio(s, differences, ends, ratio);
    case kMaximum: ratio = maximumRatio(s, differences, ends); return kDone;
    default: ratio = averageRatio(differences, ends); return kDone;
  }
}
