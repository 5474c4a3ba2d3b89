// All crossings of two segments: both are halved while their boxes overlap, to a depth known from
// their second differences, at which a chord may stand for its piece (Wang, 1984; Lane and
// Riesenfeld, 1980); then chords are crossed.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// What the largest second difference of a cubic is multiplied by for a bound on the distance from
// its chord, 3*sqrt(2)/4, and the same over the distance, 2^-14 curve units, wanted of a piece.
// Deliberate: these digits, not computed from sqrt(2).
constexpr double kDeviation = 1.06066017;
constexpr double kDeviationOverTolerance = 17377.85622528;

// Guards: pairs of pieces looked at in one search, and halvings of one segment, beyond any that
// the size of a double calls for.
constexpr long kMaxPairs = 1L << 26;
constexpr int kMaxDepth = 1100;

// Halved pieces kept at hand, 36 kilobytes: enough for four ordinary crossings.
constexpr int kMaxKept = 128;

struct Halves;

/// The part [lo, hi] of a segment, still to be halved depth times; its halves once they are made.
struct Piece {
  Cubic cubic;
  crv::internal::Box box;
  double lo, hi;
  int depth;
  Halves* halves;
};

Piece pieceOf(GxBezier const& s, double lo, double hi, int depth) {
  Cubic const cubic = crv::internal::cubic(s);
  return {cubic, cubic.hull(), lo, hi, min(depth, kMaxDepth), nullptr};
}

struct Halves {
  Piece left, right;

  void make(Piece const& piece) {
    piece.cubic.split(0.5, left.cubic, right.cubic);
    left.box = left.cubic.hull();
    right.box = right.cubic.hull();
    left.lo = piece.lo;
    right.hi = piece.hi;
    left.hi = right.lo = (piece.lo + piece.hi) * 0.5;
    left.depth = right.depth = piece.depth - 1;
    left.halves = right.halves = nullptr;
  }
};

/// Crosses the segments p0-p1 and q0-q1, ends included: the fractions along both.
bool crossChords(Point const& p0, Point const& p1, Point const& q0, Point const& q1, double& s,
                 double& v) {
  Point const d1 = {p1.x - p0.x, p1.y - p0.y};
  Point const d2 = {q1.x - q0.x, q1.y - q0.y};
  Point const w = {q0.x - p0.x, q0.y - p0.y};
  double const det = d2.x * d1.y - d2.y * d1.x;
  // Deliberate: negligible beside 1, whatever the size of the chords.
  if (det + 1.0 == 1.0) return false;
  double const inverse = 1.0 / det;
  s = (w.y * d2.x - w.x * d2.y) * inverse;
  v = (w.y * d1.x - w.x * d1.y) * inverse;
  return 0.0 <= s && s <= 1.0 && 0.0 <= v && v <= 1.0;
}

/// One crossing: the parameters on both segments.
struct Crossing {
  double a, b;
};

using Crossings = std::vector<Crossing>;

/// Appends the crossings of pairs of pieces whose boxes overlap.
class Search {
 public:
  explicit Search(Crossings& crossings) : crossings_(crossings) {}

  void meet(Piece& a, Piece& b) {
    if (pairs_ == kMaxPairs) return;
    ++pairs_;
    if (a.depth < 1 && b.depth < 1) {
      meetChords(a, b);
    } else if (a.depth < 1) {
      Halves scratch;
      Halves& bHalves = halvesOf(b, scratch);
      meetIfOverlapping(a, bHalves.left);
      meetIfOverlapping(a, bHalves.right);
    } else if (b.depth < 1) {
      Halves scratch;
      Halves& aHalves = halvesOf(a, scratch);
      meetIfOverlapping(aHalves.left, b);
      meetIfOverlapping(aHalves.right, b);
    } else {
      meetHalves(a, b);
    }
  }

 private:
  void meetHalves(Piece& a, Piece& b) {
    Halves aScratch;
    Halves bScratch;
    Halves& aHalves = halvesOf(a, aScratch);
    Halves& bHalves = halvesOf(b, bScratch);
    std::pair<Piece*, Piece*> overlapping[4];
    int count = 0;
    for (Piece* const bHalf : {&bHalves.left, &bHalves.right}) {
      for (Piece* const aHalf : {&aHalves.left, &aHalves.right}) {
        overlapping[count] = {aHalf, bHalf};
        count += crv::internal::overlap(aHalf->box, bHalf->box);
      }
    }
    for (int i = 0; i < count; ++i) meet(*overlapping[i].first, *overlapping[i].second);
  }

  /// The halves of a piece, made once and kept for the other pairs it is in; when there are too
  /// many to keep, made in scratch.
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

  void meetIfOverlapping(Piece& a, Piece& b) {
    if (crv::internal::overlap(a.box, b.box)) meet(a, b);
  }

  void meetChords(Piece const& a, Piece const& b) {
    double s, v;
    if (!crossChords(a.cubic.start(), a.cubic.end(), b.cubic.start(), b.cubic.end(), s, v)) return;
    crossings_.push_back({a.lo + (a.hi - a.lo) * s, b.lo + (b.hi - b.lo) * v});
  }

  Crossings& crossings_;
  long pairs_ = 0;
  Halves kept_[kMaxKept];
  int keptCount_ = 0;
};

/// The number of halvings after which every piece is as flat as wanted.
int subdivisionDepth(GxBezier const& s) {
  GxVector<double> const first = (s[0] - s[1]) - (s[1] - s[2]);
  GxVector<double> const second = (s[1] - s[2]) - (s[2] - s[3]);
  double const largest = max(max(std::fabs(first.xval()), std::fabs(second.xval())),
                             max(std::fabs(first.yval()), std::fabs(second.yval())));
  if (largest * kDeviation + 1.0 == 1.0) return 0;
  double const depth = std::ceil(std::log(largest * kDeviationOverTolerance) / std::log(2.0) * 0.5);
  return std::isfinite(depth) ? static_cast<int>(depth) : 0;
}

/// The crossings of two parts of segments, in the order in which the search meets them.
Crossings crossingsOf(Piece a, Piece b) {
  Crossings crossings;
  Search(crossings).meet(a, b);
  return crossings;
}

/// All crossings of two segments.
Crossings crossingsOf(GxBezier const& a, GxBezier const& b) {
  return crossingsOf(pieceOf(a, 0.0, 1.0, subdivisionDepth(a)),
                     pieceOf(b, 0.0, 1.0, subdivisionDepth(b)));
}

/// Sorts by descending parameters on the first segment.
void sortDescending(Crossings& crossings) {
  // What is not a number, which only a caller can have put there, goes to the end.
  auto const key = [](double t) {
    return std::isnan(t) ? -std::numeric_limits<double>::infinity() : t;
  };
  std::sort(crossings.begin(), crossings.end(),
            [key](Crossing const& x, Crossing const& y) { return key(y.a) < key(x.a); });
}

/// The lists may be one.
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
  while (first.length() != 0) {
    first.remove(-1);
    second.remove(-1);
  }
  first.join(sortedFirst);
  second.join(sortedSecond);
}

}  // namespace

int GxBezier::isIntersect(GxBezier const& other) {
  return crv::internal::overlap(crv::internal::cubic(*this).hull(),
                                crv::internal::cubic(other).hull());
}

int GxBezier::findIntersections(GxBezier const& other, GxList<double>& thisParams,
                                GxList<double>& otherParams) {
  return findCIntersectionParameters(other, thisParams, otherParams) > 0;
}

int GxBezier::findIntersections(GxBezier const& other, GxList<GxCoord<double>>& points) {
  if (!isIntersect(other)) return 0;
  Crossings crossings = crossingsOf(*this, other);
  sortDescending(crossings);
  Cubic const s = crv::internal::cubic(*this);
  for (Crossing const& c : crossings) {
    Point const p = s.point(c.a);
    points.add(GxCoord<double>(p.x, p.y));
  }
  return !crossings.empty();
}

void GxBezier::recursivelyIntersect(GxBezier const& a, double a0, double a1, int aDepth,
                                    GxBezier const& b, double b0, double b1, int bDepth,
                                    GxList<double>& aParams, GxList<double>& bParams) {
  append(crossingsOf(pieceOf(a, a0, a1, aDepth), pieceOf(b, b0, b1, bDepth)), aParams, bParams);
}

int GxBezier::findCIntersectionParameters(GxBezier const& other, GxList<double>& thisParams,
                                          GxList<double>& otherParams) {
  bool const areFresh =
      thisParams.length() == 0 && otherParams.length() == 0 && &thisParams != &otherParams;
  if (isIntersect(other)) {
    Crossings crossings = crossingsOf(*this, other);
    if (areFresh) sortDescending(crossings);
    append(crossings, thisParams, otherParams);
  }
  if (thisParams.length() == 0) return 0;
  if (!areFresh && otherParams.length() != 0) sortDescending(thisParams, otherParams);
  return 1;
}
