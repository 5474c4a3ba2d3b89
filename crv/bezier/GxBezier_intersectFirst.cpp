// The first crossing of two segments, fast and approximate: both are flattened, their chords are
// crossed in order, and the crossing point is traced back to a parameter on each segment.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/polyline.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <limits>

using crv::internal::Box;
using Points = std::vector<GxCoord<double>>;

namespace {

// Curve units: how far a crossing point may lie from the lines of both chords, and from a segment
// on which it still has a parameter.
constexpr double kOnChord = 0.5;
constexpr double kOnSegment = 0.708;

// Guard: pieces examined in one polyline. Only tolerances below the resolution of the coordinates
// need more.
constexpr long kMaxPieces = 1L << 22;

// Guard: boxes of chords, or of runs of chords, that are compared. Only two polylines of 65,000
// chords each, overlapping throughout, need more.
constexpr long long kMaxLooks = 1LL << 32;

// Fan-out of the box tree over the chords. A wide one has few boxes to make and to compare.
constexpr std::size_t kRun = 16;

Box chordBox(GxCoord<double> const& a, GxCoord<double> const& b) {
  return {min(a.xval(), b.xval()), min(a.yval(), b.yval()), max(a.xval(), b.xval()),
          max(a.yval(), b.yval())};
}

/// Boxes that only touch overlap; a box with a NaN bound overlaps nothing.
bool chordBoxesOverlap(Box const& a, Box const& b) {
  return a.minX <= b.maxX && a.minY <= b.maxY && b.minX <= a.maxX && b.minY <= a.maxY;
}

/// The chords of a polyline, and a tree of boxes around runs of them, so that a search skips a
/// whole run that lies apart from another chord.
class Chords {
 public:
  explicit Chords(Points const& points) : points_(points) {
    levels_.push_back(runBoxes(count(), [this](std::size_t i) { return box(i); }));
    while (levels_.back().size() > 1) {
      Boxes const& below = levels_.back();
      Boxes above = runBoxes(below.size(), [&below](std::size_t i) { return below[i]; });
      levels_.push_back(std::move(above));
    }
  }

  std::size_t count() const { return points_.size() - 1; }
  Box box(std::size_t i) const { return chordBox(points_[i], points_[i + 1]); }

  /// The first chord from i on whose box overlaps the other one, or count() if there is none. Adds
  /// the number of boxes compared to looks.
  std::size_t nextOverlapping(Box const& other, std::size_t i, long long& looks) const {
    while (i < count()) {
      ++looks;
      std::size_t const apart = runApart(other, i);
      if (apart == 0) return i;
      i += apart;
    }
    return count();
  }

 private:
  using Boxes = std::vector<Box>;

  template <class BoxAt>
  static Boxes runBoxes(std::size_t n, BoxAt boxAt) {
    double const infinite = std::numeric_limits<double>::infinity();
    Boxes runs((n + kRun - 1) / kRun, {infinite, infinite, -infinite, -infinite});
    for (std::size_t i = 0; i < n; ++i) {
      Box& run = runs[i / kRun];
      Box const box = boxAt(i);
      // min and max ignore a NaN bound, whose chord overlaps nothing.
      run = {min(run.minX, box.minX), min(run.minY, box.minY), max(run.maxX, box.maxX),
             max(run.maxY, box.maxY)};
    }
    return runs;
  }

  /// The length of the longest run that starts at chord i and lies apart from the other box.
  std::size_t runApart(Box const& other, std::size_t i) const {
    if (chordBoxesOverlap(other, box(i))) return 0;
    std::size_t apart = 1;
    for (Boxes const& runs : levels_) {
      std::size_t const length = apart * kRun;
      if (i % length != 0 || chordBoxesOverlap(other, runs[i / length])) break;
      apart = length;
    }
    return apart;
  }

  Points const& points_;
  std::vector<Boxes> levels_;
};

bool isEnd(double t) {
  return IS_EQUAL(t, 0.0, kZeroTolerance) || IS_EQUAL(t, 1.0, kZeroTolerance);
}

/// Stores the parameters at which two chords cross on their segments. Returns false if they do not
/// cross, or if the segments meet there end to end.
bool crossingParameters(GxBezier const& a, GxCoord<double> const* aChord, GxBezier const& b,
                        GxCoord<double> const* bChord, double& ta, double& tb) {
  // Deliberate: parallel chords leave the point at the origin, which is judged like any other.
  GxCoord<double> crossing;
  intersect(crossing, aChord[0], aChord[1], bChord[0], bChord[1]);
  if (!quickCheckPointOnLine(crossing, aChord[0], aChord[1], kOnChord)) return false;
  if (!quickCheckPointOnLine(crossing, bChord[0], bChord[1], kOnChord)) return false;
  if (!a.findTValue(crossing, ta, kOnSegment)) return false;
  if (!b.findTValue(crossing, tb, kOnSegment)) return false;
  return !(isEnd(ta) && isEnd(tb));
}

}  // namespace

int GxBezier::findFirstIntersection(GxBezier const& other, std::pair<double, double>& result,
                                    double tol) const {
  if (!isIntersect(other)) return 0;
  Points a;
  Points b;
  crv::internal::appendPolyline(*this, tol, kMaxPieces, a);
  if (a.size() < 2) return 0;
  crv::internal::appendPolyline(other, tol, kMaxPieces, b);
  if (b.size() < 2) return 0;

  Chords const bChords(b);
  long long looks = 0;
  for (std::size_t i = 0; i + 1 < a.size() && looks <= kMaxLooks; ++i) {
    Box const aBox = chordBox(a[i], a[i + 1]);
    for (std::size_t j = bChords.nextOverlapping(aBox, 0, looks);
         looks <= kMaxLooks && j < bChords.count();
         j = bChords.nextOverlapping(aBox, j + 1, looks)) {
      double ta = 0.0;
      double tb = 0.0;
      if (crossingParameters(*this, &a[i], other, &b[j], ta, tb)) {
        result = {ta, tb};
        return 1;
      }
    }
  }
  return 0;
}
