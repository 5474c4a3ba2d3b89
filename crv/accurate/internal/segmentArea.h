// The area between a segment and its chord.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// Twice the signed area between a segment and its chord, positive where it bends to the right.
inline double twiceAreaOverChord(Cubic const& c) {
  Point const a = c.p[1] - c.p[0];
  Point const b = c.p[2] - c.p[0];
  Point const d = c.p[3] - c.p[0];
  return 0.1 * (3.0 * (cross(a, b) + cross(a, d)) + 6.0 * cross(b, d));
}

}  // namespace crv::internal
