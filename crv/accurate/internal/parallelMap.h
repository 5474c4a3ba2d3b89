// The map between a curve and a parallel of it.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/types.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace crv::internal {

/// Where a segment of a parallel comes from.
struct ParallelOrigin {
  bool isJoin;
  Place from, to;  // the stretch of the source that it may show, or the sides of the joint
  Cubic c;         // of which it is the part from s0 to s1
  double s0, s1;
};

/// A map of positions of a curve to the places of a parallel that lie across from them, and back.
/// What was trimmed away gives -1, a joint any place of its join; a query takes about log n. Source
/// and parallel are given in one frame.
Map parallelMap(std::shared_ptr<Chain const> source, std::vector<ParallelOrigin> segments,
                bool isClosed);

}  // namespace crv::internal
