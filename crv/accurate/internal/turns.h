// The order of the edges around each node.
#pragma once

#include "crv/accurate/internal/cutting.h"

namespace crv::internal {

/// Merges edges that coincide, and sorts the half-edges around each node. Edges that leave in
/// nearly the same direction are followed until they separate; they do not cross between their
/// nodes.
Turns sortTurns(Cutting& cutting, double resolution);

}  // namespace crv::internal
