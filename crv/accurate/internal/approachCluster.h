// Approaches of two segments that belong to one place or to one stretch.
#pragma once

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentSearch.h"

#include <vector>

namespace crv::internal {

/// Approaches that are connected: between any two of them the segments keep within the resolution.
struct ApproachCluster {
  double t0, t1, u0, u1;  // the outermost pairs of parameters, in order of t
  int sense;              // 1 or -1 of a stretch, 0 of single places
  std::vector<Approach> members;
};

// Relative to the largest coordinate: places farther apart than this are asked no further whether
// they are connected.
constexpr double kFarApart = 0x1p-6;

/// Whether the segments keep within the resolution between two pairs of parameters.
bool keepNear(SegmentPair const& pair, double magnitude, double resolution, double t0, double u0,
              double t1, double u1);

/// Puts the approaches in order and in clusters.
std::vector<ApproachCluster> collectClusters(SegmentPair const& pair, double magnitude,
                                             double resolution, Approaches& approaches);

}  // namespace crv::internal
