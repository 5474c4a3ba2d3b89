// Pairs of pieces that are separated along one of their chords are skipped (Sederberg and Nishita,
// "Curve intersection using Bezier clipping", 1990). Pieces that are halved no further are
// represented by their chords.
#include "crv/bezier/internal/crossingSearch.h"

#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// A guard: the pairs of pieces examined in one search, more than any size of segment needs.
constexpr long kMaxPairs = 1L << 26;

// Halved pieces that one search keeps, 24 kilobytes: enough for four ordinary crossings.
constexpr int kMaxKept = 128;

}  // namespace

struct HalvedPiece::Halves {
  HalvedPiece left, right;

  void make(HalvedPiece const& piece) {
    piece.cubic.split(0.5, left.cubic, right.cubic);
    left.lo = piece.lo;
    right.hi = piece.hi;
    left.hi = right.lo = (piece.lo + piece.hi) * 0.5;
    left.depth = right.depth = piece.depth - 1;
    left.halves = right.halves = nullptr;
  }
};

namespace {

using Piece = HalvedPiece;
using Halves = HalvedPiece::Halves;

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
    if (!overlap(LaneBox(a.cubic), LaneBox(b.cubic))) return;
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
      overlapping += overlap(LaneBox(a->cubic), LaneBox(b->cubic));
    }
    for (int i = 0; i < overlapping; ++i) intersectPieces(*pairs[i].first, *pairs[i].second);
  }

  /// Intersects the leaves of two pieces, at least one of which is halved once more. Most pairs of
  /// a search are pairs of leaves, so nothing is called for each of them, and none of their boxes
  /// is computed twice.
  void intersectLastHalves(Piece& a, Piece& b) {
    if (a.isLeaf()) {
      Halves const& ofB = halvesOf(b, lastOfB_);
      LaneBox const box(a.cubic);
      intersectIfOverlapping(a, box, ofB.left, LaneBox(ofB.left.cubic));
      intersectIfOverlapping(a, box, ofB.right, LaneBox(ofB.right.cubic));
    } else if (b.isLeaf()) {
      Halves const& ofA = halvesOf(a, lastOfA_);
      LaneBox const box(b.cubic);
      intersectIfOverlapping(ofA.left, LaneBox(ofA.left.cubic), b, box);
      intersectIfOverlapping(ofA.right, LaneBox(ofA.right.cubic), b, box);
    } else {
      Halves const& ofA = halvesOf(a, lastOfA_);
      Halves const& ofB = halvesOf(b, lastOfB_);
      LaneBox const aLeft(ofA.left.cubic), aRight(ofA.right.cubic);
      LaneBox const bLeft(ofB.left.cubic), bRight(ofB.right.cubic);
      intersectIfOverlapping(ofA.left, aLeft, ofB.left, bLeft);
      intersectIfOverlapping(ofA.right, aRight, ofB.left, bLeft);
      intersectIfOverlapping(ofA.left, aLeft, ofB.right, bRight);
      intersectIfOverlapping(ofA.right, aRight, ofB.right, bRight);
    }
  }

  void intersectIfOverlapping(Piece const& a, LaneBox const& aBox, Piece const& b,
                              LaneBox const& bBox) {
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
    // Deliberate: the determinant counts as zero if adding 1 to it gives 1, even for tiny chords.
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

}  // namespace

void appendCrossings(HalvedPiece& a, HalvedPiece& b, double margin, Crossings& crossings) {
  Search(crossings, margin).intersectPieces(a, b);
}

}  // namespace crv::internal
