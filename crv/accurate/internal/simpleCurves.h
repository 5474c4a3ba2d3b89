// Whether closed curves form a simple boundary.
#pragma once

#include "crv/accurate/types.h"

#include <vector>

namespace crv::internal {

/// Whether closed curves neither touch themselves nor cross or share a stretch. They may touch each
/// other in single points. The resolution is that of selfContacts.
bool areSimple(std::vector<Curve> const& curves, double resolution);

}  // namespace crv::internal
