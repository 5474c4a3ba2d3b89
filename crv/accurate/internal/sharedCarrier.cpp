// Stretches of one cubic are recognised by their ends: each end of one segment that lies on the
// other gives a pair of parameters, and if the segments share their carrier, the control points of
// both stretches between two such pairs agree.
#include "crv/accurate/internal/sharedCarrier.h"

#include "crv/accurate/internal/approachCluster.h"
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/straightParts.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <vector>

namespace crv::internal {

namespace {

// Parameter: double points whose mean parameter lies farther than this from 0 are ignored.
constexpr double kFarthestMiddle = 2.0;

// In units of the square root of the resolution, by which parameters next to a cusp may differ
// while their points are within the resolution of each other: control points farther apart than
// this do not come to agree when the ends of stretches are refined.
constexpr double kFarOff = 64.0;

// Relative to the difference of the parameters of a double point: the foot of a place on the other
// branch differs from it by more, a foot on the same branch by less.
constexpr double kLeastWay = 0.25;

// Steps of Newton's method that take the ends of a stretch to rounding.
constexpr int kRefinements = 3;

struct Pair {
  double t, u;
};

bool areNear(Cubic const& a, Cubic const& b, double reach) {
  for (int i = 0; i < 4; ++i) {
    if (!(squaredDistance(a.p[i], b.p[i]) <= reach * reach)) return false;
  }
  return true;
}

/// The parameters of the local minima of the distance from a point that are within reach, and of
/// the ends that are.
std::vector<double> feetOn(Cubic const& c, Point const& p, double reach) {
  std::vector<double> feet;
  for (double const end : {0.0, 1.0}) {
    if (squaredDistance(pointAt(c, end), p) <= reach * reach) feet.push_back(end);
  }
  for (Foot const& foot : localMinima(c, p, reach * reach).inside) feet.push_back(foot.t);
  return feet;
}

std::vector<Pair> endsOnTheOther(SegmentPair const& pair, double reach) {
  std::vector<Pair> pairs;
  for (double const end : {0.0, 1.0}) {
    for (double const u : feetOn(pair.b, pointAt(pair.a, end), reach)) pairs.push_back({end, u});
    for (double const t : feetOn(pair.a, pointAt(pair.b, end), reach)) pairs.push_back({t, end});
  }
  return pairs;
}

/// Moves an end of a stretch along the segment inside which it lies, so that the control points of
/// both stretches agree best. Next to a cusp the point alone does not determine the parameter.
void refineEnd(SegmentPair const& pair, Pair const& start, Pair& end) {
  auto const isInside = [](double parameter) { return parameter > 0.0 && parameter < 1.0; };
  bool const isOnA = isInside(end.t), isOnB = isInside(end.u);
  if (isOnA == isOnB) return;
  Cubic const& c = isOnA ? pair.a : pair.b;
  double const from = isOnA ? start.t : start.u;
  double& to = isOnA ? end.t : end.u;
  Cubic const own = part(c, from, to);
  Cubic const other = isOnA ? part(pair.b, start.u, end.u) : part(pair.a, start.t, end.t);
  double along = 0.0, squared = 0.0;
  for (int k = 1; k < 4; ++k) {
    double const r = k < 3 ? from : to, s = k < 2 ? from : to;
    Point const motion = (blossom(c, r, s, 1.0) - blossom(c, r, s, 0.0)) * k;
    along += dot(motion, other.p[k] - own.p[k]);
    squared += dot(motion, motion);
  }
  double const refined = to + along / squared;
  if (isInside(refined)) to = refined;
}

/// Whether the segments agree on the stretch between two pairs of parameters. If they do not, but
/// nearly, the parameters are refined first.
bool areOneStretch(SegmentPair const& pair, double resolution, Pair& p, Pair& q) {
  auto const agree = [&](double reach) {
    return areNear(part(pair.a, p.t, q.t), part(pair.b, p.u, q.u), reach);
  };
  if (agree(resolution)) return true;
  if (!agree(kFarOff * std::sqrt(resolution))) return false;
  for (int i = 0; i < kRefinements; ++i) {
    refineEnd(pair, p, q);
    refineEnd(pair, q, p);
  }
  return p.t < q.t && agree(resolution);
}

}  // namespace

bool areOneSegment(SegmentPair const& pair, double resolution, SharedStretch& shared) {
  bool const isSame = areNear(pair.a, pair.b, resolution);
  if (!isSame && !areNear(pair.a, reversed(pair.b), resolution)) return false;
  Part parts[3];
  if (straightParts(pair.a, resolution, parts) > 1) return false;
  if (straightParts(pair.b, resolution, parts) > 1) return false;
  shared = {0.0, 1.0, isSame ? 0.0 : 1.0, isSame ? 1.0 : 0.0};
  return true;
}

bool findSharedCarrier(SegmentPair const& pair, double resolution, SharedStretch& shared) {
  Part parts[3];
  if (straightParts(pair.a, resolution, parts) > 0) return false;
  if (straightParts(pair.b, resolution, parts) > 0) return false;
  std::vector<Pair> const ends = endsOnTheOther(pair, resolution);
  shared = {0.0, 0.0, 0.0, 0.0};
  for (Pair const& start : ends) {
    for (Pair const& end : ends) {
      if (!(end.t - start.t > shared.t1 - shared.t0) || start.u == end.u) continue;
      Pair p = start, q = end;
      if (areOneStretch(pair, resolution, p, q)) shared = {p.t, q.t, p.u, q.u};
    }
  }
  return shared.t1 > shared.t0;
}

bool findDoublePoint(Cubic const& s, double& t, double& u) {
  // With P(t) = a t^3 + b t^2 + c t + p0, p = t + u and q = t u, P(t) = P(u) says that
  // a (p^2 - q) + b p + c is zero.
  Point const c = (s.p[1] - s.p[0]) * 3.0;
  Point const b = (s.p[2] - s.p[1] * 2.0 + s.p[0]) * 3.0;
  Point const a = (s.p[3] - s.p[0]) - (s.p[2] - s.p[1]) * 3.0;
  double const p = -cross(a, c) / cross(a, b);
  Point const rest = b * p + c;
  double const q = p * p + dot(rest, a) / dot(a, a);
  double const discriminant = p * p - 4.0 * q;
  if (!(discriminant > 0.0) || !(std::fabs(p) <= 2.0 * kFarthestMiddle)) return false;
  double const root = std::sqrt(discriminant);
  t = 0.5 * (p - root);
  u = 0.5 * (p + root);
  return true;
}

bool holdCrossing(SegmentPair const& pair, double resolution, double& t, double& u) {
  double const wayBefore = u - t;
  double polishedT = t, polishedU = u;
  if (pair.findCrossing(polishedT, polishedU) && (polishedU - polishedT) * wayBefore > 0.0) {
    t = polishedT;
    u = polishedU;
  }
  // A segment that ends before the double point may still pass it within the resolution.
  double const heldT = min(1.0, max(0.0, t)), heldU = min(1.0, max(0.0, u));
  bool const isInside = heldT == t && heldU == u;
  double const gap = isInside ? pair.distanceAt(t, u) : 2.0 * resolution;
  if (gap <= kExact) return true;
  // Where the branches cross at a small angle, a computed place may be off along its branch.
  FootPair const foot = heldT != t ? pair.footOnB(heldT, heldU) : pair.footOnA(heldT, heldU);
  bool const isOther = (foot.u - foot.t) * wayBefore > kLeastWay * (wayBefore * wayBefore);
  if (isInside && !isOther) return gap <= resolution;
  t = foot.t;
  u = foot.u;
  return foot.distance <= resolution;
}

void addOtherMeetings(ClusterJudge const& judge, SegmentPair const& pair, double magnitude,
                      double resolution, SharedStretch const& s, Meetings& found) {
  double const ratio = (s.u1 - s.u0) / (s.t1 - s.t0);
  auto const partnerOf = [&](double t) { return s.u0 + (t - s.t0) * ratio; };
  // The branches of a loop that is narrower than the resolution are connected by its tip.
  auto const isOnStretch = [&](Pair const& p) {
    auto const isConnectedTo = [&](double t) {
      double const partner = min(1.0, max(0.0, partnerOf(t)));
      return keepNear(pair, magnitude, resolution, t, partner, p.t, p.u);
    };
    return isConnectedTo(p.t) || isConnectedTo(0.5 * (p.t + s.t0 + (p.u - s.u0) / ratio));
  };
  auto const add = [&](Pair const& p) {
    FootPair const place = judge.snapped({p.t, p.u, pair.distanceAt(p.t, p.u)});
    found.points.push_back({place.t, place.u, judge.crosses(place)});
  };
  for (double const t : {0.0, 1.0}) {
    for (double const u : {0.0, 1.0}) {
      if (pair.distanceAt(t, u) <= resolution && !isOnStretch({t, u})) add({t, u});
    }
  }
  // The double point is computed on the segment with the longer share of the carrier, where it is
  // more exact.
  bool const isOnA = std::fabs(ratio) >= 1.0;
  double x = 0.0, y = 0.0;
  if (!findDoublePoint(isOnA ? pair.a : pair.b, x, y)) return;
  Pair passes[2];
  int count = 0;
  for (Pair const& p : {Pair{x, y}, Pair{y, x}}) {
    double t = isOnA ? p.t : s.t0 + (p.t - s.u0) / ratio, u = isOnA ? partnerOf(p.u) : p.u;
    bool const isInside = t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0;
    if (!holdCrossing(pair, resolution, t, u)) continue;
    if (!isOnStretch({t, u})) {
      passes[count++] = {t, u};
    } else if (isInside) {
      // A loop narrower than the resolution has no crossing in either pass.
      return;
    }
  }
  for (int i = 0; i < count; ++i) add(passes[i]);
}

}  // namespace crv::internal
