// From raw approaches to meetings: those that are connected are one, and each is judged once.
#include "crv/accurate/internal/meetings.h"

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentSearch.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace crv::internal {

namespace {

// Relative to the largest coordinate: two curves this near touch up to rounding.
constexpr double kExact = 0x1p-48;

// Relative to the largest coordinate: segments this near where they are parallel touch there, and
// roots near by are rounding.
constexpr double kRounded = 0x1p-51;

// Relative to the largest coordinate: approaches farther apart than this are asked no further
// whether they are connected.
constexpr double kFarApart = 0x1p-6;

// Share of the resolution within which approaches are connected: places that are as far apart as
// the resolution, up to rounding, do not part a cluster.
constexpr double kSlack = 1.0625;

// Approaches that come next in order and may be connected to one: nine passes through one place.
constexpr std::size_t kNeighbours = 12;

// Sine of the angle from which on a root is a crossing without another look.
constexpr double kClearSine = 0x1p-16;

// Places of a long stretch at which the side is asked: two crossings nearer to each other than this
// share of it are none.
constexpr int kSamples = 64;

// Share of the resolution: segments farther apart than this all along do not touch in one place.
constexpr double kTouching = 0x1p-6;

// Derivative relative to the largest coordinate: a segment that turns back has less than this.
constexpr double kTurnsBack = 0x1p-24;

bool isEnd(double t) { return t == 0.0 || t == 1.0; }

double between(double a, double b, double s) { return a + (b - a) * s; }

/// Approaches that are connected.
struct Cluster {
  double t0, t1, u0, u1;  // the outermost pairs of parameters, in order of t
  int sense;              // 1 or -1 of a stretch, 0 of single places
  std::vector<Approach> members;
};

class Clusters {
 public:
  Clusters(SegmentPair const& pair, double magnitude, double resolution, Stretches told)
      : pair_(pair), magnitude_(magnitude), resolution_(resolution), told_(told) {}

  std::vector<Cluster> collect(std::vector<Approach>& approaches) const;
  void judge(Cluster const& cluster, Meetings& found) const;
  bool keepNear(double t0, double u0, double t1, double u1) const;
  FootPair snapped(FootPair place) const;
  bool crosses(FootPair const& place) const;

 private:
  int senseOf(Approach const& approach) const;
  bool areConnected(Approach const& p, Approach const& q) const;
  double sideAt(double t, double& u) const;
  bool isBound(double t, double u) const;
  double lengthOf(Cluster const& cluster) const;
  double whereSideIs(double level, double lo, double hi, double u) const;
  bool findOnlyPlace(Cluster const& cluster, FootPair& place) const;
  FootPair placeOf(Cluster const& cluster) const;
  double snappedParameter(Cubic const& c, double t) const;
  bool isClear(FootPair const& place) const;
  double sideBeyond(FootPair const& place, double direction) const;

  SegmentPair const& pair_;
  double const magnitude_;
  double const resolution_;
  Stretches const told_;
};

/// Stretches no longer than the resolution have no sense of their own.
int Clusters::senseOf(Approach const& p) const {
  if (p.t0 == p.t1 || p.u0 == p.u1) return 0;
  double const length = distance(pointAt(pair_.a, p.t0), pointAt(pair_.a, p.t1));
  if (length <= 4.0 * resolution_) return 0;
  return p.u0 < p.u1 ? 1 : -1;
}

/// Whether the segments keep within the resolution between two pairs of parameters.
bool Clusters::keepNear(double t0, double u0, double t1, double u1) const {
  double const wayA = squaredDistance(pointAt(pair_.a, t0), pointAt(pair_.a, t1));
  double const wayB = squaredDistance(pointAt(pair_.b, u0), pointAt(pair_.b, u1));
  double const far = kFarApart * magnitude_;
  if (wayA > far * far || wayB > far * far) return false;
  for (double const s : {0.5, 0.25, 0.75}) {
    double const t = between(t0, t1, s), u = between(u0, u1, s);
    if (!(pair_.footOnB(t, u).distance <= kSlack * resolution_)) return false;
    if (!(pair_.footOnA(t, u).distance <= kSlack * resolution_)) return false;
  }
  return true;
}

bool Clusters::areConnected(Approach const& p, Approach const& q) const {
  if (p.runs != q.runs) return false;
  if (q.t0 >= p.t1) return keepNear(p.t1, p.u1, q.t0, q.u0);
  double const u = between(p.u0, p.u1, (q.t0 - p.t0) / (p.t1 - p.t0));
  return keepNear(q.t0, u, q.t0, q.u0);
}

std::vector<Cluster> Clusters::collect(std::vector<Approach>& approaches) const {
  std::sort(approaches.begin(), approaches.end(), [](Approach const& p, Approach const& q) {
    if (p.t0 != q.t0) return p.t0 < q.t0;
    if (p.u0 != q.u0) return p.u0 < q.u0;
    return p.t1 < q.t1;
  });
  std::vector<Cluster> clusters;
  for (Approach const& p : approaches) {
    int const sense = senseOf(p);
    Cluster* home = nullptr;
    std::size_t const last = clusters.size();
    std::size_t const first = last > kNeighbours ? last - kNeighbours : 0;
    for (std::size_t k = last; k-- > first && home == nullptr;) {
      Cluster& cluster = clusters[k];
      if (sense * cluster.sense < 0) continue;
      bool const isConnected = areConnected({cluster.t0, cluster.t1, cluster.u0, cluster.u1, false,
                                             cluster.members[0].runs},
                                            p) ||
                               areConnected(cluster.members.back(), p);
      if (isConnected) home = &cluster;
    }
    if (home == nullptr) {
      clusters.push_back({p.t0, p.t1, p.u0, p.u1, sense, {p}});
      continue;
    }
    home->members.push_back(p);
    if (home->sense == 0) home->sense = sense;
    if (p.t1 > home->t1 || (p.t1 == home->t1 && home->sense * (p.u1 - home->u1) > 0.0)) {
      home->t1 = p.t1;
      home->u1 = p.u1;
    }
  }
  return clusters;
}

/// The signed distance of A(t) from b, positive to the left of b; u becomes the foot.
double Clusters::sideAt(double t, double& u) const {
  u = pair_.footOnB(t, u).u;
  Point const direction = derivativeAt(pair_.b, u);
  double const speed = std::sqrt(dot(direction, direction));
  if (!(speed > 0.0)) return 0.0;
  return cross(direction, pointAt(pair_.a, t) - pointAt(pair_.b, u)) / speed;
}

/// Whether a stretch ends here because a segment ends or turns back.
bool Clusters::isBound(double t, double u) const {
  if (isEnd(t) || isEnd(u)) return true;
  Point const da = derivativeAt(pair_.a, t), db = derivativeAt(pair_.b, u);
  double const least = kTurnsBack * magnitude_;
  return dot(da, da) <= least * least || dot(db, db) <= least * least;
}

double Clusters::lengthOf(Cluster const& c) const {
  if (c.t0 == c.t1) return 0.0;
  double length = 0.0;
  for (int i = 0; i < 4; ++i) {
    length += distance(pointAt(pair_.a, between(c.t0, c.t1, 0.25 * i)),
                       pointAt(pair_.a, between(c.t0, c.t1, 0.25 * (i + 1))));
  }
  return length;
}

/// For a long cluster at an end of which the segments move apart: whether they meet in one place of
/// it only, and where. They do if they change sides once, or never and touch.
bool Clusters::findOnlyPlace(Cluster const& c, FootPair& place) const {
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
      bool const isExactEnd =
          (isEnd(end.t) || isEnd(end.u)) && end.t >= zeroFrom && end.t <= zeroTo;
      if (isExactEnd) {
        place = end;
        return true;
      }
    }
    if (zeroTo > zeroFrom) place = pair_.footOnB(0.5 * (zeroFrom + zeroTo), place.u);
    return place.distance <= resolution_;
  }
  // The middle of the stretch in which the segments are nearest: at small angles and at crossings
  // of high order, rounding blurs the crossing itself.
  double const level = kTouching * resolution_ * lastSide;
  double const before = whereSideIs(-level, c.t0, toT, fromU);
  place = pair_.footOnB(0.5 * (before + whereSideIs(level, fromT, c.t1, fromU)), fromU);
  return place.distance <= resolution_;
}

/// The t in a bracket at which a is at a signed distance from b, by bisection.
double Clusters::whereSideIs(double level, double lo, double hi, double u) const {
  bool const rises = sideAt(hi, u) > level;
  for (int i = 0; i < 60 && hi > lo; ++i) {
    double const t = 0.5 * (lo + hi);
    if ((sideAt(t, u) > level) == rises) {
      hi = t;
    } else {
      lo = t;
    }
  }
  return lo;
}

/// The end of a segment that is one place with t: the segment stays near it in between, too.
double Clusters::snappedParameter(Cubic const& c, double t) const {
  double const end = t < 0.5 ? 0.0 : 1.0;
  Point const place = t < 0.5 ? c.p[0] : c.p[3];
  for (double const s : {t, between(t, end, 0.5)}) {
    if (distance(pointAt(c, s), place) > resolution_) return t;
  }
  return end;
}

/// A place within the resolution of an end of a segment is that end.
FootPair Clusters::snapped(FootPair place) const {
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

/// The one pair of parameters that stands for a short cluster: an end that touches exactly, else
/// the middle root where the sides change, else the place of touching or the nearest end.
FootPair Clusters::placeOf(Cluster const& c) const {
  std::vector<FootPair> roots;
  FootPair nearestEnd = {0.0, 0.0, 2.0 * resolution_}, nearest = nearestEnd;
  for (Approach const& p : c.members) {
    for (bool const last : {false, true}) {
      double const t = last ? p.t1 : p.t0, u = last ? p.u1 : p.u0;
      FootPair const foot = {t, u, pair_.distanceAt(t, u)};
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
  if (roots.size() == 1 && isClear(roots[0])) return snapped(roots[0]);

  double const reach = kLongStretch * magnitude_;
  auto const belongs = [&](double t, double u) {
    return t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0 &&
           distance(pointAt(pair_.a, t), pointAt(pair_.a, nearest.t)) <= reach &&
           pair_.distanceAt(t, u) <= max(nearest.distance, kExact * magnitude_);
  };
  double t = 0.5 * (c.t0 + c.t1), u = 0.5 * (c.u0 + c.u1);
  bool const isTangent = pair_.findTangency(t, u) && belongs(t, u);
  FootPair const tangency = {t, u, pair_.distanceAt(t, u)};
  if (isTangent && tangency.distance <= kRounded * magnitude_) return snapped(tangency);
  if (roots.size() % 2 == 1) return snapped(roots[roots.size() / 2]);
  t = 0.5 * (c.t0 + c.t1);
  u = 0.5 * (c.u0 + c.u1);
  if (roots.empty() && pair_.findCrossing(t, u) && belongs(t, u)) {
    return snapped({t, u, pair_.distanceAt(t, u)});
  }
  if (isTangent) return snapped(tangency);
  if (nearestEnd.distance <= resolution_) return nearestEnd;
  return snapped(roots.empty() ? nearest : roots[0]);
}

/// The side of b on which a lies a little farther on, or farther back.
double Clusters::sideBeyond(FootPair const& place, double direction) const {
  double side = 0.0, u = place.u;
  double const room = direction > 0.0 ? 1.0 - place.t : place.t;
  for (double share = 0x1p-24; share <= 1.0; share *= 2.0) {
    side = sideAt(place.t + direction * room * share, u);
    if (std::fabs(side) > 4.0 * resolution_) break;
  }
  return side;
}

bool Clusters::isClear(FootPair const& place) const {
  Point const da = derivativeAt(pair_.a, place.t), db = derivativeAt(pair_.b, place.u);
  double const sine = cross(da, db);
  return sine * sine > kClearSine * kClearSine * dot(da, da) * dot(db, db);
}

bool Clusters::crosses(FootPair const& place) const {
  if (isEnd(place.t) || isEnd(place.u)) return false;
  if (isClear(place)) return true;
  double const before = sideBeyond(place, -1.0), after = sideBeyond(place, 1.0);
  return (before < 0.0 && after > 0.0) || (before > 0.0 && after < 0.0);
}

void Clusters::judge(Cluster const& cluster, Meetings& found) const {
  double const length = lengthOf(cluster);
  bool const isLong = length > max(kLongStretch * magnitude_, 4.0 * resolution_);
  bool const mayBeShort = told_ == Stretches::all && cluster.sense != 0;
  FootPair place = {0.0, 0.0, -1.0};
  if (isLong || mayBeShort) {
    FootPair const first = snapped({cluster.t0, cluster.u0, 0.0});
    FootPair const last = snapped({cluster.t1, cluster.u1, 0.0});
    bool const isProper = first.t < last.t && first.u != last.u;
    bool const isBounded = isBound(first.t, first.u) && isBound(last.t, last.u);
    if (isProper && (isBounded || (isLong && !findOnlyPlace(cluster, place)))) {
      found.stretches.push_back({first.t, last.t, first.u, last.u});
      return;
    }
  }
  place = isLong && place.distance >= 0.0 ? snapped(place) : placeOf(cluster);
  found.points.push_back({place.t, place.u, crosses(place)});
}

/// Whether a meeting lies in a stretch, its ends included.
bool isCovered(SegmentPair const& pair, Meeting const& m, SharedStretch const& s,
               double resolution) {
  auto const isWithin = [&](Cubic const& c, double t, double lo, double hi) {
    if (t >= lo && t <= hi) return true;
    return distance(pointAt(c, t), pointAt(c, t < lo ? lo : hi)) <= 2.0 * resolution &&
           std::fabs(t - (t < lo ? lo : hi)) < 0.25;
  };
  return isWithin(pair.a, m.t, s.t0, s.t1) &&
         isWithin(pair.b, m.u, min(s.u0, s.u1), max(s.u0, s.u1));
}

/// What is left to be done when all clusters are judged: order, and meetings in stretches or at one
/// place with others are dropped.
void tidy(Clusters const& clusters, SegmentPair const& pair, double resolution, Meetings& found) {
  auto const covered = [&](Meeting const& m) {
    return std::any_of(found.stretches.begin(), found.stretches.end(),
                       [&](SharedStretch const& s) { return isCovered(pair, m, s, resolution); });
  };
  auto& points = found.points;
  points.erase(std::remove_if(points.begin(), points.end(), covered), points.end());
  std::sort(points.begin(), points.end(),
            [](Meeting const& m, Meeting const& n) { return m.t != n.t ? m.t < n.t : m.u < n.u; });
  // What is one place in spite of that: an end stands for it.
  std::size_t kept = 0;
  for (Meeting const& m : points) {
    Meeting* const last = kept > 0 ? &points[kept - 1] : nullptr;
    if (last == nullptr || !clusters.keepNear(last->t, last->u, m.t, m.u)) {
      points[kept++] = m;
    } else if (!isEnd(last->t) && !isEnd(last->u)) {
      *last = m;
    }
  }
  points.resize(kept);
  std::sort(found.stretches.begin(), found.stretches.end(),
            [](SharedStretch const& s, SharedStretch const& w) {
              return s.t0 != w.t0 ? s.t0 < w.t0 : s.t1 < w.t1;
            });
}

void judgeAll(SegmentPair const& pair, std::vector<Approach>& approaches, double magnitude,
              double resolution, Stretches told, Meetings& found) {
  if (approaches.empty()) return;
  Clusters const clusters(pair, magnitude, resolution, told);
  for (Cluster const& cluster : clusters.collect(approaches)) clusters.judge(cluster, found);
  tidy(clusters, pair, resolution, found);
}

/// The pair of parameters in [0, 1] at which a segment passes through its double point, if it does:
/// with P(t) = a t^3 + b t^2 + c t + p0 and p = t + u, q = t u, P(t) = P(u) says that
/// a (p^2 - q) + b p + c is zero.
bool findDoublePoint(Cubic const& s, double resolution, double& t, double& u) {
  Point const c = (s.p[1] - s.p[0]) * 3.0;
  Point const b = (s.p[2] - s.p[1] * 2.0 + s.p[0]) * 3.0;
  Point const a = (s.p[3] - s.p[0]) - (s.p[2] - s.p[1]) * 3.0;
  double const ab = cross(a, b);
  double const p = -cross(a, c) / ab;
  Point const rest = b * p + c;
  double const q = p * p + dot(rest, a) / dot(a, a);
  double const discriminant = p * p - 4.0 * q;
  if (!(discriminant > 0.0) || !(std::fabs(p) <= 4.0)) return false;
  double const root = std::sqrt(discriminant);
  t = 0.5 * (p - root);
  u = 0.5 * (p + root);
  SegmentPair const pair = {s, s};
  double polishedT = t, polishedU = u;
  if (pair.findCrossing(polishedT, polishedU) && polishedT < polishedU) {
    t = polishedT;
    u = polishedU;
  }
  // An end that stops short of the double point may still be within the resolution.
  double const heldT = min(1.0, max(0.0, t)), heldU = min(1.0, max(0.0, u));
  if (heldT == t && heldU == u) return true;
  FootPair const foot = heldT != t ? pair.footOnB(heldT, heldU) : pair.footOnA(heldT, heldU);
  t = foot.t;
  u = foot.u;
  return foot.distance <= resolution && t < u;
}

}  // namespace

void findMeetings(Cubic const& a, Cubic const& b, double magnitude, double resolution,
                  Stretches told, Meetings& found) {
  SegmentPair const pair = {a, b};
  std::vector<Approach> approaches;
  findApproaches(pair, resolution, approaches);
  judgeAll(pair, approaches, magnitude, resolution, told, found);
}

void findOwnMeetings(Cubic const& c, double magnitude, double resolution, Meetings& found) {
  SegmentPair const pair = {c, c};
  std::vector<Approach> approaches;
  if (findOwnApproaches(pair, resolution, approaches)) {
    return judgeAll(pair, approaches, magnitude, resolution, Stretches::all, found);
  }
  double t = 0.0, u = 1.0;
  if (!findDoublePoint(c, resolution, t, u)) return;
  Clusters const clusters(pair, magnitude, resolution, Stretches::all);
  FootPair const place = clusters.snapped({t, u, 0.0});
  found.points.push_back({place.t, place.u, clusters.crosses(place)});
}

}  // namespace crv::internal
