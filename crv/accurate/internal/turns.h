// The order of the edges around each node.
#pragma once

#include "crv/accurate/internal/cutting.h"

namespace crv::internal {

/// Makes one edge of edges that coincide, and sorts the half-edges. Edges that leave in nearly the
/// same direction are followed until they are apart; between their nodes they do not cross.
Turns sortTurns(Cutting& cutting, double resolution);

}  // namespace crv::internal
