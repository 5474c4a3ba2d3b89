// Contacts of a curve with a line segment, for a curve whose boxes are known.
#pragma once

#include "crv/accurate/curveContacts.h"
#include "crv/accurate/internal/chain.h"
#include "crv/curve/internal/boxTree.h"

#include <vector>

namespace crv::internal {

/// See contacts(curve, a, b, resolution). tree holds the boxes of the segments, and magnitude is
/// that of the chain. The time grows as log n, plus the time for the segments near the line.
std::vector<LineContact> lineContacts(Chain const& chain, BoxTree const& tree, double magnitude,
                                      crv::Point const& a, crv::Point const& b, double resolution);

}  // namespace crv::internal
