// The first crossing of two segments, fast and approximate: both are flattened, the chords crossed
// in order, and the crossing traced back to a parameter on each segment.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/piece.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

using Points = std::vector<GxCoord<double>>;

namespace {

// Curve units: how far from the lines of its chords a crossing may lie, and how far from a segment
// it still has a parameter there.
constexpr double kOnChord = 0.5;
constexpr double kOnSegment = 0.708;

// Guard: pairs of chords looked at. More come only of polylines of 65,000 chords.
constexpr long long kMaxPairs = 1LL << 32;

crv::internal::Box chordBox(GxCoord<double> const& a, GxCoord<double> const& b) {
  return {min(a.xval(), b.xval()), min(a.yval(), b.yval()), max(a.xval(), b.xval()),
          max(a.yval(), b.yval())};
}

bool chordBoxesOverlap(crv::internal::Box const& a, crv::internal::Box const& b) {
  return a.minX <= b.maxX && a.minY <= b.maxY && b.minX <= a.maxX && b.minY <= a.maxY;
}

bool isEnd(double t) {
  return IS_EQUAL(t, 0.0, kZeroTolerance) || IS_EQUAL(t, 1.0, kZeroTolerance);
}

/// The parameters of the crossing of two chords; false if they do not cross, or where the segments
/// meet with their ends.
bool crossingParameters(GxBezier& a, GxCoord<double> const* aChord, GxBezier& b,
                        GxCoord<double> const* bChord, double& ta, double& tb) {
  // Deliberate: parallel chords leave the origin, which is then judged like any crossing.
  GxCoord<double> crossing;
  intersect(crossing, aChord[0], aChord[1], bChord[0], bChord[1]);
  if (!quickCheckPointOnLine(crossing, aChord[0], aChord[1], kOnChord)) return false;
  if (!quickCheckPointOnLine(crossing, bChord[0], bChord[1], kOnChord)) return false;
  if (!a.findTValue(crossing, ta, kOnSegment)) return false;
  if (!b.findTValue(crossing, tb, kOnSegment)) return false;
  return !(isEnd(ta) && isEnd(tb));
}

}  // namespace

int GxBezier::findFirstIntersection(GxBezier& other, std::pair<double, double>& result,
                                    double tol) {
  if (!isIntersect(other)) return 0;
  Points a;
  Points b;
  getPolyline(tol, a);
  if (a.size() < 2) return 0;
  other.getPolyline(tol, b);
  if (b.size() < 2) return 0;

  long long pairs = 0;
  for (std::size_t i = 0; i + 1 < a.size(); ++i) {
    crv::internal::Box const aBox = chordBox(a[i], a[i + 1]);
    for (std::size_t j = 0; j + 1 < b.size(); ++j) {
      if (++pairs > kMaxPairs) return 0;
      if (!chordBoxesOverlap(aBox, chordBox(b[j], b[j + 1]))) continue;
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
