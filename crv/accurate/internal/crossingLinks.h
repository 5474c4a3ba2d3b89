// The crossings of a curve with itself, and how its branches go on where they are linked anew.
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
  std::size_t next;  // the pass through the same crossing behind which the branch goes on
};

/// The passes through the crossings among the meetings of a curve with itself, ascending. Branches
/// are linked so that each goes on along another one and none of them cross. Crossings at one place
/// are one; a branch that goes straight on through it has no pass.
std::vector<Pass> linkCrossings(Chain const& chain, ChainMeetings const& meetings,
                                UnitScale const& scale);

}  // namespace crv::internal
