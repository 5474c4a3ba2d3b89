// The lowest and the highest point of a segment, for operations that need no list of them.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// The parameters of the lowest and the highest point.
struct HeightExtremes {
  double lowest, highest;
};

/// The entries that GxBezier::getYMinMaxTValues appends to an empty list.
HeightExtremes heightExtremes(GxBezier const& s);

}  // namespace crv::internal
