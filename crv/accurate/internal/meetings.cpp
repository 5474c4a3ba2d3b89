// From raw approaches to meetings: those that are connected are one, and each is judged once.
#include "crv/accurate/internal/meetings.h"

#include "crv/accurate/internal/approachCluster.h"
#include "crv/accurate/internal/clusterJudge.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentSearch.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace crv::internal {

namespace {

// Two cubics cross in nine places at most.
constexpr std::size_t kMostLone = 9;

bool isEnd(double t) { return t == 0.0 || t == 1.0; }

bool isBefore(Meeting const& m, Meeting const& n) { return m.t != n.t ? m.t < n.t : m.u < n.u; }

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
void tidy(SegmentPair const& pair, double magnitude, double resolution, Meetings& found) {
  auto const covered = [&](Meeting const& m) {
    return std::any_of(found.stretches.begin(), found.stretches.end(),
                       [&](SharedStretch const& s) { return isCovered(pair, m, s, resolution); });
  };
  auto& points = found.points;
  points.shrink(
      std::size_t(std::remove_if(points.begin(), points.end(), covered) - points.begin()));
  std::sort(points.begin(), points.end(), isBefore);
  // What is one place in spite of that: an end stands for it.
  std::size_t kept = 0;
  for (Meeting const& m : points) {
    Meeting* const last = kept > 0 ? &points[kept - 1] : nullptr;
    if (last == nullptr || !keepNear(pair, magnitude, resolution, last->t, last->u, m.t, m.u)) {
      points[kept++] = m;
    } else if (!isEnd(last->t) && !isEnd(last->u)) {
      *last = m;
    }
  }
  points.shrink(kept);
  std::sort(found.stretches.begin(), found.stretches.end(),
            [](SharedStretch const& s, SharedStretch const& w) {
              return s.t0 != w.t0 ? s.t0 < w.t0 : s.t1 < w.t1;
            });
}

/// Adds the crossings at clear angles, far from the ends and from each other, which need no further
/// look; false, and nothing added, if there are others.
bool addLoneCrossings(ClusterJudge const& judge, SegmentPair const& pair,
                      Approaches const& approaches, double magnitude, Meetings& found) {
  std::size_t const n = approaches.size();
  if (n > kMostLone) return false;
  double const far = kFarApart * magnitude;
  Point places[kMostLone];
  for (std::size_t i = 0; i < n; ++i) {
    Approach const& p = approaches[i];
    if (!p.isRoot || !judge.isClear(p.t0, p.u0)) return false;
    places[i] = pointAt(pair.a, p.t0);
    if (!judge.isClearOfEnds(places[i])) return false;
    for (std::size_t k = 0; k < i; ++k) {
      if (squaredDistance(places[i], places[k]) <= 2.0 * far * far) return false;
    }
  }
  for (Approach const& p : approaches) found.points.push_back({p.t0, p.u0, true});
  std::sort(found.points.begin(), found.points.end(), isBefore);
  return true;
}

void judgeAll(SegmentPair const& pair, Approaches& approaches, double magnitude, double resolution,
              Stretches told, Meetings& found) {
  if (approaches.empty()) return;
  ClusterJudge const judge(pair, magnitude, resolution, told);
  if (addLoneCrossings(judge, pair, approaches, magnitude, found)) return;
  for (auto const& cluster : collectClusters(pair, magnitude, resolution, approaches)) {
    judge.judge(cluster, found);
  }
  tidy(pair, magnitude, resolution, found);
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
  Approaches approaches;
  findApproaches(pair, resolution, approaches);
  judgeAll(pair, approaches, magnitude, resolution, told, found);
}

void findOwnMeetings(Cubic const& c, double magnitude, double resolution, Meetings& found) {
  SegmentPair const pair = {c, c};
  Approaches approaches;
  if (findOwnApproaches(pair, resolution, approaches)) {
    return judgeAll(pair, approaches, magnitude, resolution, Stretches::all, found);
  }
  double t = 0.0, u = 1.0;
  if (!findDoublePoint(c, resolution, t, u)) return;
  ClusterJudge const judge(pair, magnitude, resolution, Stretches::all);
  FootPair const place = judge.snapped({t, u, 0.0});
  found.points.push_back({place.t, place.u, judge.crosses(place)});
}

}  // namespace crv::internal
