// The straight segment of a path.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A line with its handles at the thirds. Coordinates are divided before they are subtracted, so
/// that the difference cannot overflow.
inline Cubic straightThrough(Point const& from, Point const& to) {
  Point const third{to.x / 3.0 - from.x / 3.0, to.y / 3.0 - from.y / 3.0};
  return {{from, from + third, to - third, to}};
}

}  // namespace crv::internal
