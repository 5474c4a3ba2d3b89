// The crossings of a curve with itself, and a new linking of the branches at each of them.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// A place where a curve passes through one of its crossings.
struct Pass {
  Place place;
  Point point;       // the same for all passes through the crossing
  std::size_t next;  // the pass through the same crossing after which the branch continues
};

/// The passes through all crossings of a curve with itself, ascending. The branches are linked so
/// that each continues along another one and no two linked branches cross. Crossings at one point
/// are one crossing; a branch that continues along itself there has no pass.
std::vector<Pass> linkCrossings(Chain const& chain, ChainMeetings const& meetings,
                                UnitScale const& scale);

}  // namespace crv::internal
