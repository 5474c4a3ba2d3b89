// Maps of positions.
#pragma once

#include "bindings/python/src/arrays.h"

namespace python {

/// A map that Python holds. The curve that it refers to, if any, is kept alive with it.
struct PositionMap {
  crv::Map handle;

  std::optional<Position> forwards(Position const& in) const {
    Position out;
    bool const isMapped = handle.isValid() && handle->mapPosition(out, in) == 0;
    return onlyIf(isMapped, out);
  }
  std::optional<Position> backwards(Position const& in) const {
    Position out;
    bool const isMapped = handle.isValid() && handle->inverseMapPosition(out, in) == 0;
    return onlyIf(isMapped, out);
  }
};

}  // namespace python
