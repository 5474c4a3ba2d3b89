// Classifies clusters of approaches.
#include "crv/accurate/internal/clusterJudge.h"

#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/scale.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace crv::internal {

namespace {

// Relative to the largest coordinate: segments this near to each other where they are parallel
// touch there, and changes of side nearby are rounding errors.
constexpr double kRounded = 0x1p-51;

// Sine of the angle from which a change of side is a crossing without further checks.
constexpr double kClearSine = 0x1p-16;

// Squared derivative divided by the resolution: slower segments may turn back within the resolution
// of a point, since in unit scale second derivatives are as large as 24.
constexpr double kStraightOn = 0x1p11;

// Sine of an angle: bounds the rounding error of the angle between segments that touch.
constexpr double kParallelSine = 0x1p-30;

// The number of intervals into which a long stretch is divided to count changes of side. Two
// changes within one interval cancel.
constexpr int kSamples = 64;

// The side next to a point is taken where the segments are this many resolutions apart. The search
// starts at kFirstShare of the way to the end of the segment and doubles the distance.
constexpr double kApart = 4.0;
constexpr double kFirstShare = 0x1p-24;

// Bisections that exhaust a bracket.
constexpr int kMostBisections = 60;

// In units of the resolution: segments that are nowhere nearer to each other than this do not
// touch.
constexpr double kTouching = 0x1p-6;

// Relative to the largest coordinate: a connected set up to this long is not a stretch if the
// segments meet in it only at an end of one of them. It is shorter where two graphs touch in third
// order.
constexpr double kLongerStretch = 0x1p-14;

// Derivative, relative to the largest coordinate: where a segment turns back, it is below this.
constexpr double kTurnsBack = 0x1p-24;

bool isEnd(double t) { return t == 0.0 || t == 1.0; }

bool isProper(SharedStretch const& s) { return s.t0 < s.t1 && s.u0 != s.u1; }

double between(double a, double b, double s) { return a + (b - a) * s; }

/// The only approach of a cluster at which the segments change sides; null if there are none or
/// several.
Approach const* onlyRoot(ApproachCluster const& c) {
  Approach const* root = nullptr;
  for (Approach const& p : c.members) {
    if (p.isRoot && root != nullptr) return nullptr;
    if (p.isRoot) root = &p;
  }
  return root;
}

}  // namespace

/// The signed distance of A(t) from b, positive to the left of b. u is the starting value of the
/// foot and receives it.
double ClusterJudge::sideAt(double t, double& u) const {
  u = pair_.footOnB(t, u).u;
  Point const direction = derivativeAt(pair_.b, u);
  double const speed = std::sqrt(dot(direction, direction));
  if (!(speed > 0.0)) return 0.0;
  return cross(direction, pointAt(pair_.a, t) - pointAt(pair_.b, u)) / speed;
}

/// Whether a segment ends or turns back here, which bounds a stretch.
bool ClusterJudge::isBound(double t, double u) const {
  if (isEnd(t) || isEnd(u)) return true;
  Point const da = derivativeAt(pair_.a, t), db = derivativeAt(pair_.b, u);
  double const least = kTurnsBack * magnitude_;
  return dot(da, da) <= least * least || dot(db, db) <= least * least;
}

double ClusterJudge::lengthBetween(double t0, double t1) const {
  if (t0 == t1) return 0.0;
  double length = 0.0;
  for (int i = 0; i < 4; ++i) {
    length += distance(pointAt(pair_.a, between(t0, t1, 0.25 * i)),
                       pointAt(pair_.a, between(t0, t1, 0.25 * (i + 1))));
  }
  return length;
}

bool ClusterJudge::isTold(SharedStretch const& s) const {
  double const magnitude = told_ == Stretches::onlyLong ? magnitude_ : 0.0;
  return lengthBetween(s.t0, s.t1) > leastStretch(magnitude, resolution_);
}

bool ClusterJudge::isLong(SharedStretch const& s) const {
  return lengthBetween(s.t0, s.t1) > leastStretch(magnitude_, resolution_);
}

/// For a long cluster at an end of which the segments move apart: if they change sides once in it,
/// or touch without changing sides, stores that point and returns true.
bool ClusterJudge::findOnlyPlace(ApproachCluster const& c, FootPair& place) const {
  double const noise = kExact * magnitude_;
  int changes = 0, lastSide = 0;
  double lastT = c.t0, fromT = c.t0, toT = c.t1, fromU = c.u0;
  double least = resolution_ * 2.0, zeroFrom = 2.0, zeroTo = -1.0;
  for (int i = 0; i <= kSamples; ++i) {
    double const t = between(c.t0, c.t1, double(i) / kSamples);
    double u = between(c.u0, c.u1, double(i) / kSamples);
    double const side = sideAt(t, u);
    if (std::fabs(side) < least) {
      least = std::fabs(side);
      place = {t, u, least};
    }
    if (std::fabs(side) <= noise) {
      zeroFrom = min(zeroFrom, t);
      zeroTo = t;
      continue;
    }
    int const sign = side > 0.0 ? 1 : -1;
    if (lastSide * sign < 0) {
      ++changes;
      fromT = lastT;
      toT = t;
      fromU = u;
    }
    lastSide = sign;
    lastT = t;
  }
  if (lastSide == 0 || changes > 1) return false;
  if (changes == 0) {
    if (least > kTouching * resolution_) return false;
    for (FootPair const& end : {snapped({c.t0, c.u0, 0.0}), snapped({c.t1, c.u1, 0.0})}) {
      bool const isExact =
          (end.t >= zeroFrom && end.t <= zeroTo) || pair_.distanceAt(end.t, end.u) <= noise;
      if (isExact && (isEnd(end.t) || isEnd(end.u))) {
        place = end;
        return true;
      }
    }
    if (zeroTo > zeroFrom) place = pair_.footOnB(0.5 * (zeroFrom + zeroTo), place.u);
    return place.distance <= resolution_;
  }
  if (Approach const* const root = onlyRoot(c)) {
    place = {root->t0, root->u0, pair_.distanceAt(root->t0, root->u0)};
    if (isSineAbove(kParallelSine, place.t, place.u)) return true;
  }
  // The crossing is taken in the middle of the stretch in which the segments are nearest, because
  // at small angles and at crossings of high order rounding errors obscure the crossing itself.
  // Where the segments do not part evenly on both sides, that middle is not a crossing, and the
  // change of side itself is taken.
  double const level = kTouching * resolution_ * lastSide;
  double const before = whereSideIs(-level, c.t0, toT, fromU);
  place = pair_.footOnB(0.5 * (before + whereSideIs(level, fromT, c.t1, fromU)), fromU);
  if (place.distance > noise) place = pair_.footOnB(whereSideIs(0.0, fromT, toT, fromU), fromU);
  return place.distance <= resolution_;
}

/// The t in a bracket at which the signed distance of a from b has a given value, by bisection.
double ClusterJudge::whereSideIs(double level, double lo, double hi, double u) const {
  bool const rises = sideAt(hi, u) > level;
  for (int i = 0; i < kMostBisections && hi > lo; ++i) {
    double const t = 0.5 * (lo + hi);
    if ((sideAt(t, u) > level) == rises) {
      hi = t;
    } else {
      lo = t;
    }
  }
  return lo;
}

/// Returns the parameter of an end if the segment between t and that end stays within the
/// resolution of the end, else t.
double ClusterJudge::snappedParameter(Cubic const& c, double t) const {
  double const end = t < 0.5 ? 0.0 : 1.0;
  Point const place = t < 0.5 ? c.p[0] : c.p[3];
  for (double const s : {t, between(t, end, 0.5)}) {
    if (distance(pointAt(c, s), place) > resolution_) return t;
  }
  return end;
}

FootPair ClusterJudge::snapped(FootPair place) const {
  double const t = snappedParameter(pair_.a, place.t), u = snappedParameter(pair_.b, place.u);
  if (isEnd(t) && isEnd(u) && pair_.distanceAt(t, u) <= resolution_) {
    return {t, u, pair_.distanceAt(t, u)};
  }
  FootPair foot = place;
  if (isEnd(t) && !isEnd(place.t)) {
    foot = pair_.footOnB(t, place.u);
  } else if (isEnd(u) && !isEnd(place.u)) {
    foot = pair_.footOnA(place.t, u);
  }
  return foot.distance <= resolution_ ? foot : place;
}

bool ClusterJudge::isClearOfEnds(Point const& place) const {
  double const squared = resolution_ * resolution_;
  for (Cubic const* const c : {&pair_.a, &pair_.b}) {
    if (squaredDistance(place, c->p[0]) <= 2.0 * squared) return false;
    if (squaredDistance(place, c->p[3]) <= 2.0 * squared) return false;
  }
  return true;
}

/// The pair of parameters that represents a short cluster: an end that lies exactly on the other
/// segment, else the middle one of an odd number of changes of side, else the tangency or the
/// nearest end.
FootPair ClusterJudge::placeOf(ApproachCluster const& c) const {
  std::vector<FootPair> roots;
  FootPair nearestEnd = {0.0, 0.0, 2.0 * resolution_}, nearest = nearestEnd;
  for (Approach const& p : c.members) {
    for (bool const last : {false, true}) {
      double const t = last ? p.t1 : p.t0, u = last ? p.u1 : p.u0;
      FootPair foot = {t, u, pair_.distanceAt(t, u)};
      // Two points of graphs over one place of the axis may be farther apart than the graphs.
      if (foot.distance > resolution_) foot = pair_.footOnB(t, u);
      if (foot.distance < nearest.distance) nearest = foot;
      FootPair const end = snapped(foot);
      bool const isCorner = isEnd(end.t) && isEnd(end.u);
      bool const wasCorner = isEnd(nearestEnd.t) && isEnd(nearestEnd.u);
      bool const isBetter = isCorner != wasCorner ? isCorner : end.distance < nearestEnd.distance;
      if ((isEnd(end.t) || isEnd(end.u)) && end.distance <= resolution_ &&
          (isBetter || nearestEnd.distance > resolution_)) {
        nearestEnd = end;
      }
      if (p.isRoot && !last) roots.push_back(foot);
    }
  }
  if (nearestEnd.distance <= kExact * magnitude_) return nearestEnd;
  if (roots.size() == 1 && isClear(roots[0].t, roots[0].u)) return snapped(roots[0]);

  double const reach = kLongStretch * magnitude_;
  auto const belongs = [&](double t, double u) {
    return t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0 &&
           distance(pointAt(pair_.a, t), pointAt(pair_.a, nearest.t)) <= reach &&
           pair_.distanceAt(t, u) <= max(nearest.distance, kExact * magnitude_);
  };
  double t = 0.5 * (c.t0 + c.t1), u = 0.5 * (c.u0 + c.u1);
  bool const isTangent =
      pair_.findTangency(t, u) && belongs(t, u) && !isSineAbove(kParallelSine, t, u);
  FootPair const tangency = {t, u, pair_.distanceAt(t, u)};
  if (isTangent && tangency.distance <= kRounded * magnitude_) return snapped(tangency);
  if (roots.size() % 2 == 1) return snapped(roots[roots.size() / 2]);
  t = 0.5 * (c.t0 + c.t1);
  u = 0.5 * (c.u0 + c.u1);
  if (roots.empty() && pair_.findCrossing(t, u) && belongs(t, u)) {
    return snapped({t, u, pair_.distanceAt(t, u)});
  }
  // Newton's methods fail where three crossings coincide, and where the resolution is wide they
  // may end too far from the places examined.
  double before = c.u0, after = c.u1;
  if (roots.empty() && sideAt(c.t0, before) * sideAt(c.t1, after) < 0.0) {
    FootPair const foot = pair_.footOnB(whereSideIs(0.0, c.t0, c.t1, before), before);
    if (foot.distance <= resolution_) return snapped(foot);
  }
  if (isTangent) return snapped(tangency);
  if (nearestEnd.distance <= resolution_) return nearestEnd;
  return snapped(roots.empty() ? nearest : roots[0]);
}

/// The side of b on which a lies next to a point, forwards or backwards along a.
double ClusterJudge::sideBeyond(FootPair const& place, double direction) const {
  double side = 0.0, u = place.u;
  double const room = direction > 0.0 ? 1.0 - place.t : place.t;
  for (double share = kFirstShare; share <= 1.0; share *= 2.0) {
    double const next = sideAt(place.t + direction * room * share, u);
    // The side is not defined beyond the end of b.
    if (isEnd(u) && side != 0.0) break;
    side = next;
    if (std::fabs(side) > kApart * resolution_) break;
  }
  return side;
}

bool ClusterJudge::isSineAbove(double least, double t, double u) const {
  Point const da = derivativeAt(pair_.a, t), db = derivativeAt(pair_.b, u);
  double const sine = cross(da, db);
  return sine * sine > least * least * dot(da, da) * dot(db, db);
}

bool ClusterJudge::isSlow(double t, double u) const {
  Point const da = derivativeAt(pair_.a, t), db = derivativeAt(pair_.b, u);
  return min(dot(da, da), dot(db, db)) <= kStraightOn * resolution_;
}

bool ClusterJudge::isClear(double t, double u) const {
  return isSineAbove(kClearSine, t, u) && !isSlow(t, u);
}

bool ClusterJudge::crosses(FootPair const& place) const {
  if (isEnd(place.t) || isEnd(place.u)) return false;
  if (isClear(place.t, place.u)) return true;
  // Where a segment turns back, the sides of its branches are determined separately.
  if (isSlow(place.t, place.u)) return segmentsCross(pair_, place.t, place.u, resolution_);
  double const before = sideBeyond(place, -1.0), after = sideBeyond(place, 1.0);
  return (before < 0.0 && after > 0.0) || (before > 0.0 && after < 0.0);
}

/// Whether the segments cross at the place of a cluster. If they are apart at both ends of the
/// cluster, they do so if they change sides from one end to the other.
bool ClusterJudge::crosses(ApproachCluster const& c, FootPair const& place) const {
  if (isEnd(place.t) || isEnd(place.u)) return false;
  if (c.sense == 0 || isSlow(place.t, place.u)) return crosses(place);
  double u0 = c.u0, u1 = c.u1;
  double const before = sideAt(c.t0, u0), after = sideAt(c.t1, u1);
  if (min(std::fabs(before), std::fabs(after)) <= kTouching * resolution_) return crosses(place);
  return before * after < 0.0;
}

/// Whether a long cluster is reported as the only point at which the segments meet, which is
/// stored.
bool ClusterJudge::isOnePlace(ApproachCluster const& cluster, double length,
                              FootPair& place) const {
  if (told_ != Stretches::evenMet) return findOnlyPlace(cluster, place);
  return length <= kLongerStretch * magnitude_ && findOnlyPlace(cluster, place) &&
         (isEnd(place.t) || isEnd(place.u));
}

/// The stretch between the ends of a cluster.
SharedStretch ClusterJudge::stretchOf(ApproachCluster const& cluster) const {
  FootPair const first = snapped({cluster.t0, cluster.u0, 0.0});
  FootPair const last = snapped({cluster.t1, cluster.u1, 0.0});
  return {first.t, last.t, first.u, last.u};
}

bool ClusterJudge::isBounded(SharedStretch const& s) const {
  return isBound(s.t0, s.u0) && isBound(s.t1, s.u1);
}

bool ClusterJudge::isShort(ApproachCluster const& cluster) const {
  if (lengthBetween(cluster.t0, cluster.t1) > leastStretch(magnitude_, resolution_)) return false;
  SharedStretch const s = stretchOf(cluster);
  return told_ == Stretches::onlyLong || !isProper(s) || !isBounded(s);
}

void ClusterJudge::judge(ApproachCluster const& cluster, Meetings& found) const {
  double const length = lengthBetween(cluster.t0, cluster.t1);
  bool const isLong = length > leastStretch(magnitude_, resolution_);
  bool const mayBeShort = told_ != Stretches::onlyLong && cluster.sense != 0;
  FootPair place = {0.0, 0.0, -1.0};
  if (isLong || mayBeShort) {
    SharedStretch const s = stretchOf(cluster);
    bool const isStretch = isBounded(s) || (isLong && !isOnePlace(cluster, length, place));
    if (isProper(s) && isStretch) {
      found.stretches.push_back(s);
      return;
    }
  }
  place = isLong && place.distance >= 0.0 ? snapped(place) : placeOf(cluster);
  found.points.push_back({place.t, place.u, crosses(cluster, place)});
}

}  // namespace crv::internal
