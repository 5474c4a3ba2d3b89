// Contacts of a curve with a line segment, for a curve whose boxes are known.
#pragma once

#include "crv/accurate/curveContacts.h"
#include "crv/accurate/internal/chain.h"
#include "crv/curve/internal/boxTree.h"

#include <vector>

namespace crv::internal {

/// See contacts(curve, a, b, resolution); the tree is that of the boxes of the segments, and the
/// magnitude that of the chain. Takes about log n for the segments near the line.
std::vector<LineContact> lineContacts(Chain const& chain, BoxTree const& tree, double magnitude,
                                      crv::Point const& a, crv::Point const& b, double resolution);

}  // namespace crv::internal
