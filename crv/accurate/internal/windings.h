// Winding numbers of points, by the crossings of a ray, and of faces, from their neighbours.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/turns.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// The signed number of crossings of a cubic with the ray from p towards higher x: 1 for each
/// upward crossing, -1 for each downward one. The sum over a closed curve is its winding number
/// around p, if p is not on it. A point at the height of p counts as below.
int crossings(Cubic const& c, Point const& p);

/// Sets the winding numbers on both sides of all edges, face by face. Points as near to each other
/// as the resolution may lead to an order of edges that is wrong; then rays from both sides of each
/// edge decide instead. Returns whether the order is possible in a plane.
bool findWindings(Cutting& cutting, Turns const& turns, double resolution);

}  // namespace crv::internal
