// All crossings of two segments: both are halved while their boxes overlap, to a depth computed
// from their second differences, at which a chord may replace its piece (Wang, 1984; Lane and
// Riesenfeld, 1980); then the chords are intersected.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/crossingSearch.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/lanes.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>

using crv::internal::Crossing;
using crv::internal::Crossings;
using crv::internal::Cubic;
using crv::internal::HalvedPiece;
using crv::internal::inBothLanes;
using crv::internal::LaneBox;
using crv::internal::Lanes;
using crv::internal::maxOf;
using crv::internal::Point;

namespace {

// The largest second difference of a cubic times 3*sqrt(2)/4 bounds its distance from the chord;
// the second constant is the first one divided by the distance allowed of a piece, 2^-14 curve
// units. Deliberate: these digits, not computed from sqrt(2).
constexpr double kDeviation = 1.06066017;
constexpr double kDeviationOverTolerance = 17377.85622528;

// Guard: halvings of one segment, more than any size of segment needs.
constexpr int kMaxDepth = 1100;

// Two pieces are skipped if they lie farther apart than the sum of two margins: kApart, in curve
// units, exceeds twice 2^-14, by which the boxes of two fully halved pieces exceed their chords;
// kRoundingMargin, relative to the coordinates, exceeds the rounding errors of all halvings. With
// coordinates above kLargestCoordinate squares may overflow, and no piece is skipped.
constexpr double kApart = 0x1p-12;
constexpr double kRoundingMargin = 0x1p-36;
constexpr double kLargestCoordinate = 1e150;
constexpr double kPassNothingOver = std::numeric_limits<double>::infinity();

HalvedPiece pieceOf(Cubic const& cubic, double lo, double hi, int depth) {
  return {cubic, lo, hi, min(depth, kMaxDepth), nullptr};
}

/// The number of halvings after which every piece is as flat as wanted; none if below 1.
int subdivisionDepth(Cubic const& s) {
  Point const first = (s.p[0] - s.p[1]) - (s.p[1] - s.p[2]);
  Point const second = (s.p[1] - s.p[2]) - (s.p[2] - s.p[3]);
  double const largest = max(max(std::fabs(first.x), std::fabs(second.x)),
                             max(std::fabs(first.y), std::fabs(second.y)));
  if (largest * kDeviation + 1.0 == 1.0) return 0;
  double const ratio = largest * kDeviationOverTolerance;
  // The logarithm to base 4, rounded up, is half the exponent to base 2, rounded up, unless the
  // ratio is so near to a power of 2 that the logarithm's rounding decides, or not finite.
  int exponent;
  double const mantissa = std::frexp(ratio, &exponent);
  constexpr double kNearPower = 0x1p-30;  // of the mantissa: far more than the logarithm's rounding
  if (0.5 + kNearPower < mantissa && mantissa < 1.0 - kNearPower) return (exponent + 1) / 2;
  double const depth = std::ceil(std::log(ratio) / std::log(2.0) * 0.5);
  return std::isfinite(depth) ? static_cast<int>(depth) : 0;
}

/// The margin of a search that halves both segments as often as their depths say.
double marginOf(HalvedPiece const& a, HalvedPiece const& b) {
  Lanes sum = inBothLanes(0.0);
  Lanes largest = inBothLanes(0.0);
  for (HalvedPiece const* const piece : {&a, &b}) {
    for (Point const& p : piece->cubic.p) sum = sum + Lanes{p.x, p.y};
    LaneBox const box(piece->cubic);
    largest = maxOf(largest, maxOf(box.greatest, inBothLanes(0.0) - box.least));
  }
  double const size = max(largest[0], largest[1]);
  // A box may lack coordinates that are NaN, but no sum does.
  bool const isSafe = size < kLargestCoordinate && std::isfinite(sum[0] + sum[1]);
  return isSafe ? kApart + size * kRoundingMargin : kPassNothingOver;
}

/// All crossings of two segments, in the order in which the search finds them.
Crossings crossingsOf(GxBezier const& a, GxBezier const& b) {
  Crossings crossings;
  Cubic const aCubic = crv::internal::cubic(a);
  Cubic const bCubic = crv::internal::cubic(b);
  if (overlap(LaneBox(aCubic), LaneBox(bCubic))) {
    HalvedPiece aPiece = pieceOf(aCubic, 0.0, 1.0, subdivisionDepth(aCubic));
    HalvedPiece bPiece = pieceOf(bCubic, 0.0, 1.0, subdivisionDepth(bCubic));
    appendCrossings(aPiece, bPiece, marginOf(aPiece, bPiece), crossings);
  }
  return crossings;
}

/// Sorts by descending parameters on the first segment.
void sortDescending(Crossings& crossings) {
  // NaN entries, which only the caller can have added, sort last.
  auto const key = [](double t) {
    return std::isnan(t) ? -std::numeric_limits<double>::infinity() : t;
  };
  crv::internal::introsort(
      crossings, [key](Crossing const& x, Crossing const& y) { return key(y.a) < key(x.a); });
}

/// Appends to both lists, which may be one.
void append(Crossings const& crossings, GxList<double>& first, GxList<double>& second) {
  for (Crossing const& c : crossings) {
    first.add(c.a);
    second.add(c.b);
  }
}

/// Sorts two lists, pairwise, by descending entries of the first.
void sortDescending(GxList<double>& first, GxList<double>& second) {
  Crossings crossings;
  crossings.reserve(first.length());
  for (unsigned i = 0; i < first.length(); ++i) crossings.push_back({first(i), second(i)});
  sortDescending(crossings);
  GxList<double> sortedFirst;
  GxList<double> sortedSecond;
  append(crossings, sortedFirst, sortedSecond);
  // Deliberate: removed in pairs, at the cursors, so that a longer second list keeps as many
  // entries as it is longer, whichever they are.
  while (first.length() != 0) {
    first.remove(-1);
    second.remove(-1);
  }
  first.join(sortedFirst);
  second.join(sortedSecond);
}

}  // namespace

int GxBezier::isIntersect(GxBezier const& other) const {
  return overlap(LaneBox(crv::internal::cubic(*this)), LaneBox(crv::internal::cubic(other)));
}

int GxBezier::findIntersections(GxBezier const& other, GxList<double>& thisParams,
                                GxList<double>& otherParams) const {
  return findCIntersectionParameters(other, thisParams, otherParams) > 0;
}

int GxBezier::findIntersections(GxBezier const& other, GxList<GxCoord<double>>& points) const {
  Cubic const s = crv::internal::cubic(*this);
  Crossings crossings = crossingsOf(*this, other);
  sortDescending(crossings);
  for (Crossing const& c : crossings) {
    Point const p = s.point(c.a);
    points.add(GxCoord<double>(p.x, p.y));
  }
  return !crossings.empty();
}

void GxBezier::recursivelyIntersect(GxBezier const& a, double a0, double a1, int aDepth,
                                    GxBezier const& b, double b0, double b1, int bDepth,
                                    GxList<double>& aParams, GxList<double>& bParams) const {
  Crossings crossings;
  HalvedPiece aPiece = pieceOf(crv::internal::cubic(a), a0, a1, aDepth);
  HalvedPiece bPiece = pieceOf(crv::internal::cubic(b), b0, b1, bDepth);
  // The caller chose the depths, so chords may be farther from their pieces than the margins
  // assume.
  appendCrossings(aPiece, bPiece, kPassNothingOver, crossings);
  append(crossings, aParams, bParams);
}

int GxBezier::findCIntersectionParameters(GxBezier const& other, GxList<double>& thisParams,
                                          GxList<double>& otherParams) const {
  bool const areFresh =
      thisParams.length() == 0 && otherParams.length() == 0 && &thisParams != &otherParams;
  Crossings crossings = crossingsOf(*this, other);
  if (areFresh) sortDescending(crossings);
  append(crossings, thisParams, otherParams);
  if (thisParams.length() == 0) return 0;
  if (!areFresh && otherParams.length() != 0) sortDescending(thisParams, otherParams);
  return 1;
}
