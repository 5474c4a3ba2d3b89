// The map between a curve and a parallel of it.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/types.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace crv::internal {

/// A curve of which parallels are made. A segment that is a point belongs to a joint, as does each
/// position on it.
class ParallelSource {
 public:
  /// The coordinates are of the order of 1.
  explicit ParallelSource(Chain chain);

  Chain const& chain() const { return chain_; }

  /// The place itself, unless its segment is a point. Then it is the end of the last segment before
  /// it that is not a point, or, if a gap or the start lies between, the start of the first one
  /// behind it.
  Place onMovingSegment(Place const& place) const;

 private:
  Chain chain_;
  // For each segment that is a point, the place of the joint to which it belongs. The vector is
  // empty if no segment is a point.
  std::vector<std::optional<Place>> joints_;
};

/// The origin of a segment of a parallel.
struct ParallelOrigin {
  bool isJoin;
  Place from, to;  // the stretch of the source that it may show, or the sides of the joint
  Cubic c;         // of which it is the part from s0 to s1
  double s0, s1;
};

/// A map of positions of a curve to the corresponding points of a parallel, on the normals of the
/// curve, and back. Near an end of a parallel that was extended or shortened to meet the next one,
/// the points are moved along it, so that the ends correspond. Positions whose parallel points were
/// trimmed away give -1, and a joint is mapped to some point of its join. The time of a query grows
/// as log n for n segments, and with the number of segments that stem from one segment of the
/// source. Source and parallel are given in one coordinate frame.
Map parallelMap(std::shared_ptr<ParallelSource const> source, std::vector<ParallelOrigin> segments,
                bool isClosed);

}  // namespace crv::internal
