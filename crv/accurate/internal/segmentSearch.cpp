// Halves pairs of parts until both are graphs over one axis, then halves the interval of that axis.
//
// The difference of the two graphs is bounded. If both parts cover the same interval of the axis,
// the differences of control points bound it far more tightly than two fat lines do: parallel
// curves close to each other are separated at once, and coinciding ones are recognised as a whole.
#include "crv/accurate/internal/segmentSearch.h"

#include "crv/accurate/internal/graph.h"
#include "crv/accurate/internal/searchParts.h"
#include "crv/accurate/internal/straightParts.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// Guard: pairs examined. Two segments with nine crossings take about a hundred, tangency twice as
// many. Beyond this number the search ends with the approaches found so far.
constexpr int kMostPairs = 1 << 15;

// The length of a vector (1, slope) at the steepest slope: vertical distances are at most this many
// times the true ones.
constexpr double kVertical = 4.3;

// Halvings after which the end of a shared stretch of two graphs is known to rounding.
constexpr int kMostHalvings = 52;

// Bisections that exhaust the bracket of a crossing.
constexpr int kMostBisections = 60;

// In units of the resolution: intervals of the axis no longer than this are not halved.
constexpr double kShortInterval = 0.5;

// In chord lengths: if the lines of two chords meet farther than this beyond the ends, Newton's
// method is not tried.
constexpr double kFarOutside = 0.25;

// In chord lengths: a derivative below this does not determine a direction.
constexpr double kRetracted = 0x1p-20;

// In units of the largest coordinate: an end this near to the other segment lies on it up to
// rounding.
constexpr double kRounded = 0x1p-51;

// Tangent of an angle, and the same divided by the resolution: where graphs diverge everywhere
// faster than the smaller of both, the shared stretch is far too short to be reported, and only
// points are.
constexpr double kSlow = 0x1p-4;
constexpr double kSlowness = 0x1p18;

/// Whether an end of a segment lies on the other one up to rounding.
bool isOnEnd(double t, double u, double distance) {
  bool const isEnd = t == 0.0 || t == 1.0 || u == 0.0 || u == 1.0;
  return isEnd && std::fabs(distance) <= kRounded;
}

Point unit(Point const& v) {
  double const length = std::sqrt(dot(v, v));
  return length > 0.0 ? v * (1.0 / length) : Point{1.0, 0.0};
}

class Search {
 public:
  Search(SegmentPair const& pair, double resolution, Approaches& found)
      : pair_(pair), resolution_(resolution), found_(found) {}

  void search(Part const& a, Part const& b, int runs) {
    runs_ = runs;
    search(SearchPiece(a), SearchPiece(b));
  }
  void search(SearchPiece const& a, SearchPiece const& b);

 private:
  void searchGraphs(Part const& a, Part const& b);
  void searchNode(Part const& a, Part const& b);
  bool findsCrossing(Part const& a, Part const& b, double& t, double& u) const;
  bool addClearCrossing(Part const& a, Part const& b);
  bool addNearPart(Part const& a, Part const& b);
  double addRoot(Part const& a, Part const& b);
  void addEndsNear(double t, double u);
  void addIfNear(double t, double u);
  void addPlace(double t, double u, bool isRoot) { found_.push_back({t, t, u, u, isRoot, runs_}); }
  void addStretch(double t0, double t1, double u0, double u1) {
    if (t0 > t1) return addStretch(t1, t0, u1, u0);
    found_.push_back({t0, t1, u0, u1, false, runs_});
  }

  SegmentPair const& pair_;
  double const resolution_;
  Approaches& found_;
  int pairs_ = 0;
  int runs_ = 0;
};

void Search::search(SearchPiece const& a, SearchPiece const& b) {
  double const r = resolution_;
  if (!areNear(a.box, b.box, r) || ++pairs_ > kMostPairs) return;
  ControlPolygon const edgesA(a.part.c), edgesB(b.part.c);
  if (isBesideChord(a.part.c, edgesA, b.part.c, r)) return;
  if (isBesideChord(b.part.c, edgesB, a.part.c, r)) return;
  if (runAcross(edgesA, edgesB, r) && addClearCrossing(a.part, b.part)) return;

  bool const isPointA = a.isPoint(r), isPointB = b.isPoint(r);
  if (isPointA && isPointB) return addIfNear(a.part.t0, b.part.t0);
  bool const halveA = !isPointA && (isPointB || !edgesA.areGentle());
  bool const halveB = !isPointB && (isPointA || !edgesB.areGentle());
  if (!halveA && !halveB) return searchGraphs(a.part, b.part);
  if (!halveB) {
    SearchHalves const halves(a.part);
    for (SearchPiece const& half : halves.half) search(half, b);
  } else if (!halveA) {
    SearchHalves const halves(b.part);
    for (SearchPiece const& half : halves.half) search(a, half);
  } else {
    SearchHalves const halvesA(a.part), halvesB(b.part);
    for (SearchPiece const& halfA : halvesA.half) {
      for (SearchPiece const& halfB : halvesB.half) search(halfA, halfB);
    }
  }
}

/// Newton's method for a crossing inside two parts. Where a segment turns back its steps may end
/// beside the crossing.
bool Search::findsCrossing(Part const& a, Part const& b, double& t, double& u) const {
  return pair_.findCrossing(t, u) && t >= min(a.t0, a.t1) && t <= max(a.t0, a.t1) &&
         u >= min(b.t0, b.t1) && u <= max(b.t0, b.t1) && pair_.distanceAt(t, u) <= resolution_;
}

/// Adds the only crossing of two parts that run across each other, if Newton's method finds it
/// inside both.
bool Search::addClearCrossing(Part const& a, Part const& b) {
  Point const chordA = a.c.p[3] - a.c.p[0], chordB = b.c.p[3] - b.c.p[0];
  Point const gap = b.c.p[0] - a.c.p[0];
  double const det = cross(chordA, chordB);
  double const s = cross(gap, chordB) / det, w = cross(gap, chordA) / det;
  if (!(s > -kFarOutside && s < 1.0 + kFarOutside && w > -kFarOutside && w < 1.0 + kFarOutside)) {
    return false;
  }
  double t = a.parameter(min(1.0, max(0.0, s))), u = b.parameter(min(1.0, max(0.0, w)));
  if (!findsCrossing(a, b, t, u)) return false;
  addPlace(t, u, true);
  addEndsNear(t, u);
  return true;
}

/// Adds those ends of segments that may be connected to a crossing by pairs within the resolution.
void Search::addEndsNear(double t, double u) {
  Point const place = pointAt(pair_.a, t);
  auto const isAtEnd = [&](Cubic const& c) {
    double const squared = resolution_ * resolution_;
    return squaredDistance(place, c.p[0]) <= squared || squaredDistance(place, c.p[3]) <= squared;
  };
  if (isAtEnd(pair_.a) && isAtEnd(pair_.b)) return;
  double const reach = 2.0 * kSteepness * resolution_;
  for (double const end : {0.0, 1.0}) {
    int const i = end == 0.0 ? 0 : 3;
    if (squaredDistance(place, pair_.a.p[i]) <= reach * reach) addIfNear(end, u);
    if (squaredDistance(place, pair_.b.p[i]) <= reach * reach) addIfNear(t, end);
  }
}

/// Searches two gentle parts: both are rotated so that the bisector of their chords is the axis,
/// and the second is reversed if it runs against the first.
void Search::searchGraphs(Part const& a, Part const& b) {
  Point const directionA = unit(a.c.p[3] - a.c.p[0]), directionB = unit(b.c.p[3] - b.c.p[0]);
  bool const sameWay = dot(directionA, directionB) >= 0.0;
  Point const axis = unit(sameWay ? directionA + directionB : directionA - directionB);
  Point const origin = a.c.p[0];
  Part const seenA = a.along(axis, origin);
  Part const seenB = (sameWay ? b : b.reversed()).along(axis, origin);
  double const lo = max(seenA.c.p[0].x, seenB.c.p[0].x);
  double const hi = min(seenA.c.p[3].x, seenB.c.p[3].x);
  if (lo > hi) {
    // The parts cover disjoint intervals of the axis, so only the ends that face each other can be
    // near.
    if (lo > hi + resolution_) return;
    bool const isFirstA = seenA.c.p[3].x <= seenB.c.p[0].x;
    return isFirstA ? addIfNear(seenA.t1, seenB.t0) : addIfNear(seenA.t0, seenB.t1);
  }
  searchNode(trimmed(seenA, lo, hi), trimmed(seenB, lo, hi));
}

/// Searches two graphs over the same interval of the axis.
void Search::searchNode(Part const& a, Part const& b) {
  if (++pairs_ > kMostPairs) return;
  double const lo = a.c.p[0].x, length = a.c.p[3].x - lo;
  double const before = b.c.p[0].y - a.c.p[0].y, after = b.c.p[3].y - a.c.p[3].y;
  double const far = kVertical * resolution_;

  // Both are sheared so that their mean chord is level.
  double const rise = (a.c.p[3].y - a.c.p[0].y) + (b.c.p[3].y - b.c.p[0].y);
  double const mean = length > 0.0 ? 0.5 * rise / length : 0.0;
  SlopeRange const slopesA = slopeRangeOf(a.c), slopesB = slopeRangeOf(b.c);
  ValueRange gapX = {0.0, 0.0}, gapY = {before, before};
  for (int i = 0; i < 4; ++i) {
    Point const gap = b.c.p[i] - a.c.p[i];
    gapX.add(gap.x);
    gapY.add(gap.y - mean * gap.x);
  }
  double const steepest = max(max(slopesA.range.hi, slopesB.range.hi) - mean,
                              mean - min(slopesA.range.lo, slopesB.range.lo));
  double const slip = steepest * max(gapX.hi, -gapX.lo);
  // The resolution as a vertical distance, at the least and at the greatest slope. If the
  // difference lies between the two, the interval is halved.
  double const leastSlope = max(0.0, std::fabs(mean) - steepest);
  double const mostSlope = min(kSteepest, std::fabs(mean) + max(0.0, steepest));
  double const within = resolution_ * std::sqrt(1.0 + leastSlope * leastSlope);
  double const beyond = resolution_ * std::sqrt(1.0 + mostSlope * mostSlope);
  if (gapY.lo - slip > beyond || gapY.hi + slip < -beyond) return;
  if (gapY.hi + slip <= within && gapY.lo - slip >= -within) {
    return addStretch(a.t0, a.t1, b.t0, b.t1);
  }

  bool const areBounded = slopesA.areBounded && slopesB.areBounded;
  double const leastDivergence =
      max(slopesB.range.lo - slopesA.range.hi, slopesA.range.lo - slopesB.range.hi);
  bool const isMonotone = areBounded && leastDivergence > 0.0;
  bool const isShort = length <= kShortInterval * resolution_;
  bool const isSlow = isMonotone && leastDivergence <= min(kSlow, kSlowness * resolution_);
  if (isSlow && addNearPart(a, b)) return;
  if (isMonotone || isShort) {
    // An end that lies on the other segment up to rounding is told as such.
    bool const isRooted = !(isOnEnd(a.t0, b.t0, before) || isOnEnd(a.t1, b.t1, after));
    if (isRooted && ((before < 0.0 && after > 0.0) || (before > 0.0 && after < 0.0))) addRoot(a, b);
    if (std::fabs(before) <= far) addIfNear(a.t0, b.t0);
    if (std::fabs(after) <= far) addIfNear(a.t1, b.t1);
    return;
  }
  double const middle = lo + 0.5 * length;
  Part leftA, rightA, leftB, rightB;
  a.split(whereXIs(a.c, middle), leftA, rightA);
  b.split(whereXIs(b.c, middle), leftB, rightB);
  searchNode(leftA, leftB);
  searchNode(rightA, rightB);
}

/// The distance of two nearly parallel graphs at a given x.
double distanceWhereXIs(Part const& a, Part const& b, double x, double& s, double& w) {
  s = whereXIs(a.c, x);
  w = whereXIs(b.c, x);
  // At a retracted handle the derivative is only rounding errors.
  Point const derivative = derivativeAt(a.c, s), chord = a.c.p[3] - a.c.p[0];
  Point const direction = std::fabs(derivative.x) > kRetracted * chord.x ? derivative : chord;
  double const gap = std::fabs(pointAt(b.c, w).y - pointAt(a.c, s).y), length = norm(direction);
  return length > 0.0 ? gap * std::fabs(direction.x) / length : gap;
}

/// Adds the stretch of two graphs with a monotone difference that is within the resolution, and the
/// crossing in it. Returns false if there is none.
bool Search::addNearPart(Part const& a, Part const& b) {
  double const before = b.c.p[0].y - a.c.p[0].y, after = b.c.p[3].y - a.c.p[3].y;
  bool const doCross = (before < 0.0 && after > 0.0) || (before > 0.0 && after < 0.0);
  double s = 0.0, w = 0.0;
  auto const isNear = [&](double x) { return distanceWhereXIs(a, b, x, s, w) <= resolution_; };
  double const lo = a.c.p[0].x, hi = a.c.p[3].x;
  bool const isNearBefore = isNear(lo), isNearAfter = isNear(hi);
  if (!isNearBefore && !isNearAfter && !doCross) return false;
  double const middle = doCross ? addRoot(a, b) : isNearBefore ? lo : hi;
  if (isNearBefore && isNearAfter) {
    addStretch(a.t0, a.t1, b.t0, b.t1);
    return true;
  }
  if (!isNear(middle)) return true;
  auto const endTowards = [&](double far) {
    double near = middle;
    for (int i = 0; i < kMostHalvings; ++i) {
      double const x = 0.5 * (near + far);
      (isNear(x) ? near : far) = x;
    }
    isNear(near);
  };
  double t0 = a.t0, t1 = a.t1, u0 = b.t0, u1 = b.t1;
  if (!isNearBefore) {
    endTowards(lo);
    t0 = a.parameter(s);
    u0 = b.parameter(w);
  }
  if (!isNearAfter) {
    endTowards(hi);
    t1 = a.parameter(s);
    u1 = b.parameter(w);
  }
  addStretch(t0, t1, u0, u1);
  return true;
}

/// Adds the crossing of two graphs whose difference has opposite signs at the ends, and returns its
/// place on the axis.
double Search::addRoot(Part const& a, Part const& b) {
  double const before = b.c.p[0].y - a.c.p[0].y, after = b.c.p[3].y - a.c.p[3].y;
  double const share = before / (before - after);
  double t = a.parameter(share), u = b.parameter(share);
  if (findsCrossing(a, b, t, u)) {
    addPlace(t, u, true);
    return pointAt(a.c, (t - a.t0) / (a.t1 - a.t0)).x;
  }
  double lo = a.c.p[0].x, hi = a.c.p[3].x, x = lo + (hi - lo) * share;
  for (int i = 0; i < kMostBisections; ++i) {
    double const s = whereXIs(a.c, x), w = whereXIs(b.c, x);
    t = a.parameter(s);
    u = b.parameter(w);
    double const gap = pointAt(b.c, w).y - pointAt(a.c, s).y;
    if (gap == 0.0) break;
    if ((gap < 0.0) == (before < 0.0)) {
      lo = x;
    } else {
      hi = x;
    }
    double const next = 0.5 * (lo + hi);
    if (next == x) break;
    x = next;
  }
  if (pair_.distanceAt(t, u) <= resolution_) addPlace(t, u, true);
  return x;
}

/// Adds a pair of parameters if the segments are within the resolution there: the parameter that is
/// an end of its segment stays, the other moves to the foot.
void Search::addIfNear(double t, double u) {
  bool const isEndT = t == 0.0 || t == 1.0, isEndU = u == 0.0 || u == 1.0;
  if (isEndT && isEndU) {
    if (pair_.distanceAt(t, u) <= resolution_) return addPlace(t, u, false);
  }
  FootPair const foot = isEndU && !isEndT ? pair_.footOnA(t, u) : pair_.footOnB(t, u);
  if (foot.distance <= resolution_) addPlace(foot.t, foot.u, false);
  if (isEndT && isEndU) {
    FootPair const other = pair_.footOnA(t, u);
    if (other.distance <= resolution_) addPlace(other.t, other.u, false);
  }
}

}  // namespace

void findApproaches(SegmentPair const& pair, double resolution, Approaches& found) {
  SearchPiece const a(Part{pair.a, 0.0, 1.0}), b(Part{pair.b, 0.0, 1.0});
  if (!areNear(a.box, b.box, resolution)) return;
  Part partsA[3], partsB[3];
  int const countA = straightParts(pair.a, resolution, partsA);
  int const countB = straightParts(pair.b, resolution, partsB);
  Search search(pair, resolution, found);
  if (countA <= 1 && countB <= 1) return search.search(a, b);
  for (int i = 0; i < max(1, countA); ++i) {
    for (int k = 0; k < max(1, countB); ++k) search.search(partsA[i], partsB[k], 3 * i + k);
  }
}

bool findOwnApproaches(SegmentPair const& pair, double width, double resolution,
                       Approaches& found) {
  Part parts[3];
  int const count = straightParts(pair.a, width, parts);
  Search search(pair, resolution, found);
  for (int i = 0; i < count; ++i) {
    for (int k = i + 1; k < count; ++k) search.search(parts[i], parts[k], 3 * i + k);
  }
  return count > 0;
}

}  // namespace crv::internal
