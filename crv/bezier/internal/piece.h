// A cubic as four plain control points: its box and its subdivision, for loops over many pieces.
#pragma once

#include "crv/bezier/internal/evaluate.h"
#include "crv/foundation/tolerance.h"

namespace crv::internal {

struct Box {
  double minX, minY, maxX, maxY;
};

/// The box of four control points.
inline Box hullOf(PlainPoint const* p) {
  return {
      min(p[0].x, min(p[1].x, min(p[2].x, p[3].x))), min(p[0].y, min(p[1].y, min(p[2].y, p[3].y))),
      max(p[0].x, max(p[1].x, max(p[2].x, p[3].x))), max(p[0].y, max(p[1].y, max(p[2].y, p[3].y)))};
}

/// Boxes that only touch overlap. Without branches: which side fails cannot be foreseen.
inline bool overlap(Box const& a, Box const& b) {
  bool const isApart = bool(int(a.minX > b.maxX) | int(a.minY > b.maxY) | int(b.minX > a.maxX));
  return bool(int(!isApart) & int(b.minY <= a.maxY));
}

/// Exact form: a + (b - a)*t, not (1 - t)*a + t*b.
inline PlainPoint between(PlainPoint const& a, PlainPoint const& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

/// De Casteljau's triangle of a cubic at t; the parts share their joint.
inline void splitCubic(PlainPoint const* p, double t, PlainPoint* left, PlainPoint* right) {
  left[0] = p[0];
  right[3] = p[3];
  PlainPoint const middle = between(p[1], p[2], t);
  left[1] = between(p[0], p[1], t);
  right[2] = between(p[2], p[3], t);
  right[1] = between(middle, right[2], t);
  left[2] = between(left[1], middle, t);
  left[3] = right[0] = between(left[2], right[1], t);
}

}  // namespace crv::internal
