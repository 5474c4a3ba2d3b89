// Groups the approaches of two segments by connectedness.
#include "crv/accurate/internal/approachCluster.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/way.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <cstddef>

namespace crv::internal {

namespace {

// Relative to the largest coordinate: bounds the rounding error of the distance of two points.
constexpr double kNoise = 0x1p-49;

// Share of the resolution by which the distance of connected points may exceed it because the
// segments are curved: kCurved times the square of the resolution relative to the largest
// coordinate, but at most kMostCurved.
constexpr double kCurved = 0x1p9;
constexpr double kMostCurved = 0x1p-4;

// Squared ratio: a path between two points may lead away from its start up to twice as far as its
// end.
constexpr double kLongestDetour = 4.0;

// In units of the resolution: stretches up to this length have no sense of their own.
constexpr double kNoSense = 4.0;

// The number of clusters, next in order, that may be connected to an approach; up to nine branches
// pass through one point.
constexpr std::size_t kNeighbours = 12;

double between(double a, double b, double s) { return a + (b - a) * s; }

class Collection {
 public:
  Collection(SegmentPair const& pair, double magnitude, double resolution)
      : pair_(pair), magnitude_(magnitude), resolution_(resolution) {}

  void add(Approach const& approach);
  std::vector<ApproachCluster>& clusters() { return clusters_; }

 private:
  int senseOf(Approach const& approach) const;
  bool areConnected(Approach const& p, Approach const& q) const;
  ApproachCluster* homeOf(Approach const& approach, int sense);

  SegmentPair const& pair_;
  double const magnitude_;
  double const resolution_;
  std::vector<ApproachCluster> clusters_;
};

/// The sense of an approach: 1 or -1 for a stretch, 0 for a stretch too short to have one.
int Collection::senseOf(Approach const& p) const {
  if (p.t0 == p.t1 || p.u0 == p.u1) return 0;
  double const length = distance(pointAt(pair_.a, p.t0), pointAt(pair_.a, p.t1));
  if (length <= kNoSense * resolution_) return 0;
  return p.u0 < p.u1 ? 1 : -1;
}

bool Collection::areConnected(Approach const& p, Approach const& q) const {
  if (p.runs != q.runs) return false;
  if (q.t0 >= p.t1 || p.t0 == p.t1) {
    return keepNear(pair_, magnitude_, resolution_, p.t1, p.u1, q.t0, q.u0);
  }
  double const guess = between(p.u0, p.u1, (q.t0 - p.t0) / (p.t1 - p.t0));
  double const u = pair_.footOnB(q.t0, guess).u;
  return keepNear(pair_, magnitude_, resolution_, q.t0, u, q.t0, q.u0);
}

/// The cluster to which an approach is connected, if there is one.
ApproachCluster* Collection::homeOf(Approach const& p, int sense) {
  std::size_t const last = clusters_.size();
  std::size_t const first = last > kNeighbours ? last - kNeighbours : 0;
  for (std::size_t k = last; k-- > first;) {
    ApproachCluster& cluster = clusters_[k];
    if (sense * cluster.sense < 0) continue;
    Approach const whole = {cluster.t0, cluster.t1, cluster.u0,
                            cluster.u1, false,      cluster.members[0].runs};
    // At a cusp the path from the end of the cluster to the approach may run back.
    Approach const end = {cluster.t1, cluster.t1, cluster.u1, cluster.u1, false, whole.runs};
    for (Approach const& part : {whole, cluster.members.back(), end}) {
      if (areConnected(part, p)) return &cluster;
    }
  }
  return nullptr;
}

void Collection::add(Approach const& p) {
  int const sense = senseOf(p);
  ApproachCluster* const home = homeOf(p, sense);
  if (home == nullptr) {
    clusters_.push_back({p.t0, p.t1, p.u0, p.u1, sense, {p}});
    return;
  }
  home->members.push_back(p);
  if (home->sense == 0) home->sense = sense;
  if (p.t1 > home->t1 || (p.t1 == home->t1 && home->sense * (p.u1 - home->u1) > 0.0)) {
    home->t1 = p.t1;
    home->u1 = p.u1;
  }
}

}  // namespace

bool keepNear(SegmentPair const& pair, double magnitude, double resolution, double t0, double u0,
              double t1, double u1) {
  if (t0 == t1 && u0 == u1) return true;
  double const wayA = squaredDistance(pointAt(pair.a, t0), pointAt(pair.a, t1));
  double const wayB = squaredDistance(pointAt(pair.b, u0), pointAt(pair.b, u1));
  double const far = farApart(magnitude, resolution);
  if (wayA > far * far || wayB > far * far) return false;
  // A loop returns to its starting point, but leaves it in between.
  double const bulge = leastStretch(magnitude, resolution);
  double const reach = max(kLongestDetour * max(wayA, wayB), bulge * bulge);
  double const relative = resolution / magnitude;
  double const curved = min(kMostCurved, kCurved * relative * relative);
  double const apart = resolution + curved * resolution + kNoise * magnitude;
  Point const start = pointAt(pair.a, t0);
  bool areEven = true;
  for (double const s : {0.5, 0.25, 0.75}) {
    double const t = between(t0, t1, s), u = between(u0, u1, s);
    if (!(squaredDistance(start, pointAt(pair.a, t)) <= reach)) return false;
    if (!(squaredDistance(start, pointAt(pair.b, u)) <= reach)) return false;
    if (pair.distanceAt(t, u) <= apart) continue;
    if (!(pair.footOnB(t, u).distance <= apart)) return false;
    if (!(pair.footOnA(t, u).distance <= apart)) return false;
    areEven = false;
  }
  if (areEven) return true;
  // A near foot may lie on another branch of a small loop, so the stretches of both segments are
  // compared. They start and end at feet, because pairs of graphs over one place of the axis may be
  // farther apart than the graphs.
  auto const partnerOf = [&](double t, double u) {
    return pair.distanceAt(t, u) <= apart ? u : pair.footOnB(t, u).u;
  };
  Cubic const stretchOfA = part(pair.a, t0, t1);
  Cubic const stretchOfB = part(pair.b, partnerOf(t0, u0), partnerOf(t1, u1));
  return areSideBySide({{stretchOfA, {}}, 1}, {{stretchOfB, {}}, 1}, apart);
}

std::vector<ApproachCluster> collectClusters(SegmentPair const& pair, double magnitude,
                                             double resolution, Approaches& approaches) {
  introsort(approaches, [](Approach const& p, Approach const& q) {
    if (p.t0 != q.t0) return p.t0 < q.t0;
    if (p.u0 != q.u0) return p.u0 < q.u0;
    return p.t1 < q.t1;
  });
  Collection collection(pair, magnitude, resolution);
  for (Approach const& approach : approaches) collection.add(approach);
  return std::move(collection.clusters());
}

}  // namespace crv::internal
