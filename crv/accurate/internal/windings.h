// Winding numbers of the faces of an arrangement.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/turns.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// Sets the winding numbers on both sides of all edges, face by face. Points as near to each other
/// as the resolution may lead to an order of edges that is wrong; then rays from both sides of each
/// edge decide instead. Returns whether the order is possible in a plane.
bool findWindings(Cutting& cutting, Turns const& turns, double resolution);

}  // namespace crv::internal
