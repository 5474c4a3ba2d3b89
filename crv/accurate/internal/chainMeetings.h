// The meetings of two curves, or of one with itself, combined from the meetings of their segments
// across joints and seams.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/curve/internal/boxTree.h"

#include <vector>

namespace crv::internal {

/// A point where two curves meet, as normalised places on both.
struct ChainMeeting {
  Place first, second;
  bool crosses;
};

/// A stretch that two curves share, forwards along the first from `from` to `to`, where the second
/// runs from `otherFrom` to `otherTo`. The places have t in [0, 1]; ends keep the segment on which
/// the stretch lies.
struct ChainStretch {
  Place from, to, otherFrom, otherTo;
  bool sameSense;
};

struct ChainMeetings {
  std::vector<ChainMeeting> points;     // ascending in the first place, then in the second
  std::vector<ChainStretch> stretches;  // ascending in from
};

/// The boxes of the segments of a curve, for the meetings below.
BoxTree boxTree(Chain const& chain, double margin);

/// The meetings of two curves; `treeOfA` holds boxes that are wider by the resolution.
ChainMeetings findMeetings(Chain const& a, BoxTree const& treeOfA, Chain const& b,
                           BoxTree const& treeOfB, UnitScale const& scale);

/// The meetings of a curve, whose boxes stand in a tree, with a chain of one segment.
ChainMeetings findLineMeetings(Chain const& a, BoxTree const& treeOfA, Chain const& line,
                               UnitScale const& scale);

/// The meetings of a curve with itself, first before second.
ChainMeetings findSelfMeetings(Chain const& chain, BoxTree const& wideTree, BoxTree const& tree,
                               UnitScale const& scale);

}  // namespace crv::internal
