// Winding numbers: of points by the crossings of a ray, of faces by crossing edges.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/turns.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// How often a cubic crosses the ray from p towards higher x: 1 for each time upwards, -1 for
/// each time downwards. The sum over a closed curve is its winding number around p, which is not on
/// it. A point at the height of p counts as below.
int crossings(Cubic const& c, Point const& p);

/// Sets the winding numbers on both sides of all edges: face by face, or, where places as near to
/// each other as the resolution have turns that no plane has, by rays from both sides of each edge.
void findWindings(Cutting& cutting, Turns const& turns);

}  // namespace crv::internal
