// All crossings of two segments: both are halved while their boxes overlap, to a depth computed
// from their second differences, at which a chord may replace its piece (Wang, 1984; Lane and
// Riesenfeld, 1980); then the chords are intersected. Pairs of pieces that are separated along one
// of their chords are skipped (Sederberg and Nishita, "Curve intersection using Bezier clipping",
// 1990).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/lanes.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

using crv::internal::areEqual;
using crv::internal::Cubic;
using crv::internal::holdsInAny;
using crv::internal::inBothLanes;
using crv::internal::isFinite;
using crv::internal::LaneMask;
using crv::internal::Lanes;
using crv::internal::maxOf;
using crv::internal::minOf;
using crv::internal::Point;

namespace {

// The largest second difference of a cubic times 3*sqrt(2)/4 bounds its distance from the chord;
// the second constant is the first one divided by the distance allowed of a piece, 2^-14 curve
// units. Deliberate: these digits, not computed from sqrt(2).
constexpr double kDeviation = 1.06066017;
constexpr double kDeviationOverTolerance = 17377.85622528;

// Guards: pairs of pieces examined in one search, and halvings of one segment, more than any size
// of segment needs.
constexpr long kMaxPairs = 1L << 26;
constexpr int kMaxDepth = 1100;

// Halved pieces that one search keeps, 24 kilobytes: enough for four ordinary crossings.
constexpr int kMaxKept = 128;

// Two pieces are skipped if they lie farther apart than the sum of two margins: kApart, in curve
// units, exceeds twice 2^-14, by which the boxes of two fully halved pieces exceed their chords;
// kRoundingMargin, relative to the coordinates, exceeds the rounding errors of all halvings. With
// coordinates above kLargestCoordinate squares may overflow, and no piece is skipped.
constexpr double kApart = 0x1p-12;
constexpr double kRoundingMargin = 0x1p-36;
constexpr double kLargestCoordinate = 1e150;
constexpr double kPassNothingOver = std::numeric_limits<double>::infinity();

/// The box of a segment's control points: x in one lane, y in the other.
struct Box {
  Lanes least, greatest;

  explicit Box(Cubic const& s) {
    Lanes const p0 = lanes(s.p[0]), p1 = lanes(s.p[1]), p2 = lanes(s.p[2]), p3 = lanes(s.p[3]);
    least = minOf(p0, minOf(p1, minOf(p2, p3)));
    greatest = maxOf(p0, maxOf(p1, maxOf(p2, p3)));
  }
  Box() = default;

 private:
  static Lanes lanes(Point const& p) { return Lanes{p.x, p.y}; }
};

/// Boxes that only touch overlap. The test has no branches because its outcome is unpredictable.
/// Exact form: the last comparison is the other way round than the others, for NaN.
bool overlap(Box const& a, Box const& b) {
  LaneMask const isApart = (a.least > b.greatest) | (b.least > a.greatest);
  return !holdsInAny(isApart) & (b.least[1] <= a.greatest[1]);
}

struct Halves;

/// The part [lo, hi] of a segment, which is still to be halved depth times, and its halves, once
/// they are made.
struct Piece {
  Cubic cubic;
  double lo, hi;
  int depth;
  Halves* halves;

  bool isLeaf() const { return depth < 1; }
};

struct Halves {
  Piece left, right;

  void make(Piece const& piece) {
    piece.cubic.split(0.5, left.cubic, right.cubic);
    left.lo = piece.lo;
    right.hi = piece.hi;
    left.hi = right.lo = (piece.lo + piece.hi) * 0.5;
    left.depth = right.depth = piece.depth - 1;
    left.halves = right.halves = nullptr;
  }
};

/// Whether a piece is one point, which is then the same after every halving.
bool isPoint(Cubic const& s) {
  return isFinite(s.p[0]) && areEqual(s.p[0], s.p[3]) && areEqual(s.p[0], s.p[1]) &&
         areEqual(s.p[0], s.p[2]);
}

/// Flags: whether each half of a piece may meet another piece.
struct Reaching {
  int left, right;

  bool isNone() const { return (left | right) == 0; }
};

/// Finds the halves of a and of b that may meet the other piece. A half cannot meet it if, measured
/// across the other piece's chord, all control points of the half lie more than margin above or
/// below all control points of that piece. One lane measures across a's chord, the other one across
/// b's.
void findReaching(Cubic const& a, Cubic const& b, double margin, Reaching& ofA, Reaching& ofB) {
  Point const aChord = a.end() - a.start();
  Point const bChord = b.end() - b.start();
  Lanes const chordX = {aChord.x, bChord.x};
  Lanes const chordY = {aChord.y, bChord.y};
  auto const heights = [=](Point const& p, Point const& q) {
    return chordX * Lanes{p.y, q.y} - chordY * Lanes{p.x, q.x};
  };
  // The height of the chord's end equals that of its start.
  Lanes const own0 = heights(a.p[0], b.p[0]), own1 = heights(a.p[1], b.p[1]);
  Lanes const own2 = heights(a.p[2], b.p[2]);
  Lanes const wanted = {margin * (std::fabs(aChord.x) + std::fabs(aChord.y)),
                        margin * (std::fabs(bChord.x) + std::fabs(bChord.y))};
  Lanes const above = maxOf(own0, maxOf(own1, own2)) + wanted;
  Lanes const below = minOf(own0, minOf(own1, own2)) - wanted;
  auto const areApart = [=](Lanes p0, Lanes p1, Lanes p2, Lanes p3) {
    return (minOf(minOf(p0, p1), minOf(p2, p3)) > above) |
           (maxOf(maxOf(p0, p1), maxOf(p2, p3)) < below);
  };
  // The heights of the other piece's halves, by de Casteljau's triangle.
  Lanes const start = heights(b.p[0], a.p[0]), first = heights(b.p[1], a.p[1]);
  Lanes const second = heights(b.p[2], a.p[2]), end = heights(b.p[3], a.p[3]);
  Lanes const half = inBothLanes(0.5);
  Lanes const left1 = (start + first) * half, inner = (first + second) * half;
  Lanes const right2 = (second + end) * half;
  Lanes const left2 = (left1 + inner) * half, right1 = (inner + right2) * half;
  Lanes const middle = (left2 + right1) * half;
  LaneMask const isLeftApart = areApart(start, left1, left2, middle);
  LaneMask const isRightApart = areApart(middle, right1, right2, end);
  ofB = {isLeftApart[0] == 0, isRightApart[0] == 0};
  ofA = {isLeftApart[1] == 0, isRightApart[1] == 0};
}

/// One crossing: the parameters on both segments.
struct Crossing {
  double a, b;
};

using Crossings = std::vector<Crossing>;

/// Appends the crossings of two pieces, and of their halves whose boxes overlap.
class Search {
 public:
  Search(Crossings& crossings, double margin) : crossings_(crossings), margin_(margin) {}

  void intersectPieces(Piece& a, Piece& b) {
    if (pairs_ == kMaxPairs) return;
    ++pairs_;
    if (a.depth > 1 || b.depth > 1) {
      Reaching ofA, ofB;
      findReaching(a.cubic, b.cubic, margin_, ofA, ofB);
      if (ofA.isNone() || ofB.isNone()) return;
      if ((a.isLeaf() && isPoint(b.cubic)) || (b.isLeaf() && isPoint(a.cubic))) {
        countPairsWithPoint(a, b);
      } else {
        intersectHalves(a, b, ofA, ofB);
      }
    } else if (a.isLeaf() && b.isLeaf()) {
      intersectLeaves(a, b);
    } else {
      intersectLastHalves(a, b);
    }
  }

 private:
  /// Counts the pairs of parts of a leaf and of a point, which is halved some more times. Every
  /// part of the point is that point again, so either all boxes overlap or none do, and no chords
  /// cross.
  void countPairsWithPoint(Piece const& a, Piece const& b) {
    if (!overlap(Box(a.cubic), Box(b.cubic))) return;
    int const depth = max(a.depth, b.depth);
    long const pairs = (2L << min(depth, 26)) - 2;  // 2 + 4 + ... + 2^depth, or more than allowed
    pairs_ = std::min(kMaxPairs, pairs_ + pairs);
  }

  /// A piece that is halved no further, or a half of one.
  struct Part {
    Piece* piece;
    int reaches;
  };

  void intersectHalves(Piece& a, Piece& b, Reaching const& ofA, Reaching const& ofB) {
    Halves aScratch, bScratch;
    Part aParts[2], bParts[2];
    setParts(a, ofA, aScratch, aParts);
    setParts(b, ofB, bScratch, bParts);
    // Every pair is stored, but kept only if the count grows, because a branch would be
    // mispredicted.
    std::pair<Piece*, Piece*> reaching[4];
    int count = 0;
    for (Part const& bPart : bParts) {
      for (Part const& aPart : aParts) {
        reaching[count] = {aPart.piece, bPart.piece};
        count += aPart.reaches & bPart.reaches;
      }
    }
    intersectOverlapping(reaching, count);
  }

  /// Sets parts to the two halves of a piece, or to the piece itself and nothing if it is a leaf.
  void setParts(Piece& piece, Reaching const& reaching, Halves& scratch, Part (&parts)[2]) {
    if (piece.isLeaf()) {
      parts[0] = {&piece, 1};
      parts[1] = {&piece, 0};
    } else {
      Halves& halves = halvesOf(piece, scratch);
      parts[0] = {&halves.left, reaching.left};
      parts[1] = {&halves.right, reaching.right};
    }
  }

  /// A half lies in the box of its piece, so comparing the boxes of leaves is enough for the
  /// result. The boxes of other pieces are compared where that may save work.
  void intersectOverlapping(std::pair<Piece*, Piece*> (&pairs)[4], int count) {
    if (count == 1) {
      intersectPieces(*pairs[0].first, *pairs[0].second);
      return;
    }
    int overlapping = 0;
    for (int i = 0; i < count; ++i) {
      auto const [a, b] = pairs[i];
      pairs[overlapping] = {a, b};
      overlapping += overlap(Box(a->cubic), Box(b->cubic));
    }
    for (int i = 0; i < overlapping; ++i) intersectPieces(*pairs[i].first, *pairs[i].second);
  }

  /// Intersects the leaves of two pieces, at least one of which is halved once more. Most pairs of
  /// a search are pairs of leaves, so nothing is called for each of them, and none of their boxes
  /// is computed twice.
  void intersectLastHalves(Piece& a, Piece& b) {
    if (a.isLeaf()) {
      Halves const& ofB = halvesOf(b, lastOfB_);
      Box const box(a.cubic);
      intersectIfOverlapping(a, box, ofB.left, Box(ofB.left.cubic));
      intersectIfOverlapping(a, box, ofB.right, Box(ofB.right.cubic));
    } else if (b.isLeaf()) {
      Halves const& ofA = halvesOf(a, lastOfA_);
      Box const box(b.cubic);
      intersectIfOverlapping(ofA.left, Box(ofA.left.cubic), b, box);
      intersectIfOverlapping(ofA.right, Box(ofA.right.cubic), b, box);
    } else {
      Halves const& ofA = halvesOf(a, lastOfA_);
      Halves const& ofB = halvesOf(b, lastOfB_);
      Box const aLeft(ofA.left.cubic), aRight(ofA.right.cubic);
      Box const bLeft(ofB.left.cubic), bRight(ofB.right.cubic);
      intersectIfOverlapping(ofA.left, aLeft, ofB.left, bLeft);
      intersectIfOverlapping(ofA.right, aRight, ofB.left, bLeft);
      intersectIfOverlapping(ofA.left, aLeft, ofB.right, bRight);
      intersectIfOverlapping(ofA.right, aRight, ofB.right, bRight);
    }
  }

  void intersectIfOverlapping(Piece const& a, Box const& aBox, Piece const& b, Box const& bBox) {
    if (!overlap(aBox, bBox) || pairs_ == kMaxPairs) return;
    ++pairs_;
    intersectLeaves(a, b);
  }

  /// The halves of a piece. They are made once and kept for the other pairs of that piece; when
  /// there is no room to keep them, they are made in scratch.
  Halves& halvesOf(Piece& piece, Halves& scratch) {
    if (piece.halves != nullptr) return *piece.halves;
    if (keptCount_ == kMaxKept) {
      scratch.make(piece);
      return scratch;
    }
    piece.halves = &kept_[keptCount_++];
    piece.halves->make(piece);
    return *piece.halves;
  }

  /// Intersects the chords of two pieces, ends included.
  void intersectLeaves(Piece const& a, Piece const& b) {
    Point const d1 = a.cubic.end() - a.cubic.start();
    Point const d2 = b.cubic.end() - b.cubic.start();
    Point const w = b.cubic.start() - a.cubic.start();
    double const det = d2.x * d1.y - d2.y * d1.x;
    // Deliberate: negligible beside 1, whatever the size of the chords.
    if (det + 1.0 == 1.0) return;
    double const inverse = 1.0 / det;
    double const s = (w.y * d2.x - w.x * d2.y) * inverse;
    double const v = (w.y * d1.x - w.x * d1.y) * inverse;
    if (0.0 <= s && s <= 1.0 && 0.0 <= v && v <= 1.0) {
      crossings_.push_back({a.lo + (a.hi - a.lo) * s, b.lo + (b.hi - b.lo) * v});
    }
  }

  Crossings& crossings_;
  double margin_;
  long pairs_ = 0;
  Halves kept_[kMaxKept];
  Halves lastOfA_, lastOfB_;
  int keptCount_ = 0;
};

Piece pieceOf(Cubic const& cubic, double lo, double hi, int depth) {
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
double marginOf(Piece const& a, Piece const& b) {
  Lanes sum = inBothLanes(0.0);
  Lanes largest = inBothLanes(0.0);
  for (Piece const* const piece : {&a, &b}) {
    for (Point const& p : piece->cubic.p) sum = sum + Lanes{p.x, p.y};
    Box const box(piece->cubic);
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
  if (overlap(Box(aCubic), Box(bCubic))) {
    Piece aPiece = pieceOf(aCubic, 0.0, 1.0, subdivisionDepth(aCubic));
    Piece bPiece = pieceOf(bCubic, 0.0, 1.0, subdivisionDepth(bCubic));
    Search(crossings, marginOf(aPiece, bPiece)).intersectPieces(aPiece, bPiece);
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
  return overlap(Box(crv::internal::cubic(*this)), Box(crv::internal::cubic(other)));
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
  Piece aPiece = pieceOf(crv::internal::cubic(a), a0, a1, aDepth);
  Piece bPiece = pieceOf(crv::internal::cubic(b), b0, b1, bDepth);
  // The caller chose the depths, so chords may be farther from their pieces than the margins
  // assume.
  Search(crossings, kPassNothingOver).intersectPieces(aPiece, bPiece);
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
