#include "crv/accurate/internal/rayCrossings.h"

namespace crv::internal {

namespace {

// Halvings after which a part is a point up to rounding.
constexpr int kMostHalvings = 60;

int crossingsOf(Cubic const& c, Point const& p, int halvings) {
  Box const box = c.hull();
  if (!isBeside(box, p)) return 0;
  if (box.minX > p.x || halvings == 0) return int(c.p[3].y > p.y) - int(c.p[0].y > p.y);
  Cubic left, right;
  c.split(0.5, left, right);
  return crossingsOf(left, p, halvings - 1) + crossingsOf(right, p, halvings - 1);
}

}  // namespace

int crossings(Cubic const& c, Point const& p) { return crossingsOf(c, p, kMostHalvings); }

}  // namespace crv::internal
