// Groups of approaches of two segments that belong to one point or one stretch.
#pragma once

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentSearch.h"
#include "crv/foundation/tolerance.h"

#include <vector>

namespace crv::internal {

/// Connected approaches: between any two of them the segments stay within the resolution.
struct ApproachCluster {
  double t0, t1, u0, u1;  // the outermost pairs of parameters, in order of t
  int sense;              // 1 or -1 for a stretch, 0 for single points
  std::vector<Approach> members;
};

/// Points farther apart than this count as not connected: a share of the largest coordinate, or the
/// length over which two graphs that diverge with a slope of 2^-8 stay within the resolution.
inline double farApart(double magnitude, double resolution) {
  return max(0x1p-6 * magnitude, 0x1p8 * resolution);
}

/// Whether the segments stay within the resolution between two pairs of parameters.
bool keepNear(SegmentPair const& pair, double magnitude, double resolution, double t0, double u0,
              double t1, double u1);

/// Sorts the approaches and groups them into clusters.
std::vector<ApproachCluster> collectClusters(SegmentPair const& pair, double magnitude,
                                             double resolution, Approaches& approaches);

}  // namespace crv::internal
