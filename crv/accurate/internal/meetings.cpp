// Combines connected approaches to clusters, and classifies each cluster as a point or a stretch.
#include "crv/accurate/internal/meetings.h"

#include "crv/accurate/internal/approachCluster.h"
#include "crv/accurate/internal/clusterJudge.h"
#include "crv/accurate/internal/searchParts.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentSearch.h"
#include "crv/accurate/internal/sharedCarrier.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace crv::internal {

namespace {

// Two cubics cross in nine places at most.
constexpr std::size_t kMostLone = 9;

// A meeting belongs to an end of a stretch if it is within this many resolutions of it, and within
// kSameBranch of its parameter: farther away the segment has returned to the same point.
constexpr double kEndReach = 2.0;
constexpr double kSameBranch = 0.25;

// Relative to the size of a segment, or to the largest coordinate if that is less: where a segment
// turns back, its sides are within the default resolution over a length of 2^-16 S only if it is
// straighter than this.
constexpr double kNearlyStraight = 0x1p-13;

bool isEnd(double t) { return t == 0.0 || t == 1.0; }

constexpr auto isBefore = [](Meeting const& m, Meeting const& n) {
  return m.t != n.t ? m.t < n.t : m.u < n.u;
};

/// Whether a meeting belongs to a stretch, ends included. A meeting at which a segment passes
/// through a point of the stretch a second time does not.
bool isCovered(SegmentPair const& pair, Meeting const& m, SharedStretch const& s, double magnitude,
               double resolution) {
  auto const isWithin = [&](Cubic const& c, double t, double lo, double hi) {
    if (t >= lo && t <= hi) return true;
    return distance(pointAt(c, t), pointAt(c, t < lo ? lo : hi)) <= kEndReach * resolution &&
           std::fabs(t - (t < lo ? lo : hi)) < kSameBranch;
  };
  if (!isWithin(pair.a, m.t, s.t0, s.t1)) return false;
  if (!isWithin(pair.b, m.u, min(s.u0, s.u1), max(s.u0, s.u1))) return false;
  // The branches of a loop that is narrower than the resolution are connected by its tip.
  double const share = (m.u - s.u0) / (s.u1 - s.u0);
  auto const isConnectedTo = [&](double near) {
    double const t = min(s.t1, max(s.t0, near)), along = (t - s.t0) / (s.t1 - s.t0);
    FootPair const partner = pair.footOnB(t, s.u0 + (s.u1 - s.u0) * along);
    return partner.distance > kEndReach * resolution ||
           keepNear(pair, magnitude, resolution, t, partner.u, m.t, m.u);
  };
  return isConnectedTo(m.t) || isConnectedTo(0.5 * (m.t + s.t0 + (s.t1 - s.t0) * share));
}

/// Sorts the meetings, and drops those that belong to stretches or are at one point with another
/// one.
void tidy(SegmentPair const& pair, double magnitude, double resolution, Meetings& found) {
  auto const covered = [&](Meeting const& m) {
    return std::any_of(found.stretches.begin(), found.stretches.end(), [&](SharedStretch const& s) {
      return isCovered(pair, m, s, magnitude, resolution);
    });
  };
  auto& points = found.points;
  points.shrink(
      std::size_t(std::remove_if(points.begin(), points.end(), covered) - points.begin()));
  introsort(points, isBefore);
  // Of several meetings at one point, one at an end of a segment is kept.
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
  introsort(found.stretches, [](SharedStretch const& s, SharedStretch const& w) {
    return s.t0 != w.t0 ? s.t0 < w.t0 : s.t1 < w.t1;
  });
}

/// If all approaches are crossings at clear angles, far from the ends and from each other, adds
/// them without further checks and returns true. Otherwise adds nothing and returns false.
bool addLoneCrossings(ClusterJudge const& judge, SegmentPair const& pair,
                      Approaches const& approaches, double magnitude, double resolution,
                      Meetings& found) {
  std::size_t const n = approaches.size();
  if (n > kMostLone) return false;
  double const far = farApart(magnitude, resolution);
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
  introsort(found.points, isBefore);
  return true;
}

/// The parameter at which a segment that turns back next to t is slowest, by one step of Newton's
/// method; t itself if the step is too long.
double tipNear(Cubic const& c, double t) {
  Point const velocity = derivativeAt(c, t), acceleration = secondDerivativeAt(c, t);
  double const tip = t - dot(velocity, acceleration) / dot(acceleration, acceleration);
  return std::fabs(tip - t) < kSameBranch ? min(1.0, max(0.0, tip)) : t;
}

/// Joins short clusters that share an end where one of the segments turns back. Two clusters in
/// which the segments run in the same sense, or in none, are not joined.
void joinAtTips(ClusterJudge const& judge, SegmentPair const& pair, double magnitude,
                double resolution, std::vector<ApproachCluster>& clusters) {
  auto const keep = [&](FootPair const& p, FootPair const& q) {
    return keepNear(pair, magnitude, resolution, p.t, p.u, q.t, q.u);
  };
  auto const areOne = [&](double t0, double u0, double t1, double u1) {
    FootPair const p = {t0, u0, 0.0}, q = {t1, u1, 0.0};
    if (keep(p, q)) return true;
    // The tip may lie farther away from both pairs than the resolution.
    double const t = 0.5 * (t0 + t1), u = 0.5 * (u0 + u1);
    if (!judge.isSlow(t, u)) return false;
    FootPair const tipOfA = pair.footOnB(tipNear(pair.a, t), u0);
    FootPair const tipOfB = pair.footOnA(t0, tipNear(pair.b, u));
    return (tipOfA.distance <= resolution && keep(p, tipOfA) && keep(tipOfA, q)) ||
           (tipOfB.distance <= resolution && keep(p, tipOfB) && keep(tipOfB, q));
  };
  for (std::size_t next = 1; next < clusters.size(); ++next) {
    ApproachCluster const& q = clusters[next];
    for (std::size_t i = next; i-- > 0;) {
      ApproachCluster& p = clusters[i];
      if (p.sense * q.sense > 0 || (p.sense == 0 && q.sense == 0)) continue;
      if (p.members[0].runs != q.members[0].runs) continue;
      bool const shareTip = areOne(p.t1, p.u1, q.t0, q.u0) || areOne(p.t0, p.u0, q.t0, q.u0) ||
                            areOne(p.t1, p.u1, q.t1, q.u1);
      if (!shareTip || !judge.isShort(p) || !judge.isShort(q)) continue;
      if (q.t1 > p.t1) {
        p.t1 = q.t1;
        p.u1 = q.u1;
      }
      p.sense = 0;
      p.members.insert(p.members.end(), q.members.begin(), q.members.end());
      clusters.erase(clusters.begin() + std::ptrdiff_t(next--));
      break;
    }
  }
}

void judgeAll(SegmentPair const& pair, Approaches& approaches, double magnitude, double resolution,
              Stretches told, Meetings& found) {
  if (approaches.empty()) return;
  ClusterJudge const judge(pair, magnitude, resolution, told);
  if (addLoneCrossings(judge, pair, approaches, magnitude, resolution, found)) return;
  auto clusters = collectClusters(pair, magnitude, resolution, approaches);
  joinAtTips(judge, pair, magnitude, resolution, clusters);
  for (ApproachCluster const& cluster : clusters) judge.judge(cluster, found);
  tidy(pair, magnitude, resolution, found);
}

/// Adds the shared stretch of two segments with a common carrier, and their other meetings.
void addShared(ClusterJudge const& judge, SegmentPair const& pair, double magnitude,
               double resolution, SharedStretch const& shared, Meetings& found) {
  addOtherMeetings(judge, pair, magnitude, resolution, shared, found);
  tidy(pair, magnitude, resolution, found);
  found.stretches.push_back(shared);
}

}  // namespace

void findMeetings(Cubic const& a, Cubic const& b, double magnitude, double resolution,
                  Stretches told, Meetings& found) {
  if (areApart(a, b, resolution)) return;
  SegmentPair const pair = {a, b};
  ClusterJudge const judge(pair, magnitude, resolution, told);
  SharedStretch shared = {};
  if (areOneSegment(pair, resolution, shared) && judge.isTold(shared)) {
    return addShared(judge, pair, magnitude, resolution, shared, found);
  }
  Approaches approaches;
  findApproaches(pair, resolution, approaches);
  bool const isAlong = std::any_of(approaches.begin(), approaches.end(),
                                   [](Approach const& p) { return p.t0 < p.t1; });
  // Segments that continue each other smoothly agree on any short stretch, so only a long one shows
  // that they have a common carrier.
  if (isAlong && findSharedCarrier(pair, resolution, shared) && judge.isLong(shared)) {
    return addShared(judge, pair, magnitude, resolution, shared, found);
  }
  judgeAll(pair, approaches, magnitude, resolution, told, found);
}

void findOwnMeetings(Cubic const& c, double magnitude, double resolution, Stretches told,
                     Meetings& found) {
  SegmentPair const pair = {c, c};
  Approaches approaches;
  if (findOwnApproaches(pair, resolution, resolution, approaches)) {
    return judgeAll(pair, approaches, magnitude, resolution, Stretches::all, found);
  }
  double const width = kNearlyStraight * min(magnitude, sizeOf(c.hull()));
  if (findOwnApproaches(pair, width, resolution, approaches)) {
    judgeAll(pair, approaches, magnitude, resolution, told, found);
    if (!found.stretches.empty()) return;
    found.points.clear();
  }
  double t = 0.0, u = 1.0;
  if (!findDoublePoint(c, t, u) || !holdCrossing(pair, resolution, t, u) || !(t < u)) return;
  // The branches of a short loop that is narrower than the resolution are connected by its tip.
  double const tip = 0.5 * (t + u), length = distance(pointAt(c, t), pointAt(c, tip));
  bool const isShort = length <= leastStretch(magnitude, resolution);
  if (isShort && keepNear(pair, magnitude, resolution, t, u, tip, tip)) return;
  ClusterJudge const judge(pair, magnitude, resolution, Stretches::all);
  FootPair place = judge.snapped({t, u, 0.0});
  // Ends that meet stand for a crossing up to which both sides stay within the resolution.
  double const gap = pair.distanceAt(0.0, 1.0);
  if (gap <= resolution && keepNear(pair, magnitude, resolution, 0.0, 1.0, place.t, place.u)) {
    place = {0.0, 1.0, gap};
  }
  // A double point is always a crossing, also at an angle so small that its sides are not distinct.
  found.points.push_back({place.t, place.u, !isEnd(place.t) && !isEnd(place.u)});
}

}  // namespace crv::internal
