// Divides a straight segment at the zeros of its velocity, a quadratic along the line.
#include "crv/accurate/internal/straightParts.h"

#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>

namespace crv::internal {

int straightParts(Cubic const& c, double width, Part parts[3]) {
  parts[0] = {c, 0.0, 1.0};
  Point const chord = c.p[3] - c.p[0], edge = c.p[1] - c.p[0];
  double const extent =
      std::fabs(chord.x) + std::fabs(chord.y) + std::fabs(edge.x) + std::fabs(edge.y);
  if (std::fabs(cross(chord, edge)) > 2.0 * width * extent) return 0;
  int farthest = 1;
  for (int i = 2; i < 4; ++i) {
    if (squaredDistance(c.p[0], c.p[i]) > squaredDistance(c.p[0], c.p[farthest])) farthest = i;
  }
  Point const axis = c.p[farthest] - c.p[0];
  double const most = width * (std::fabs(axis.x) + std::fabs(axis.y));
  for (Point const& p : c.p) {
    if (std::fabs(cross(axis, p - c.p[0])) > most) return 0;
  }
  double const d0 = dot(axis, c.p[1] - c.p[0]), d1 = dot(axis, c.p[2] - c.p[1]);
  double const d2 = dot(axis, c.p[3] - c.p[2]);
  // The derivative is d0 (1 - s)^2 + 2 d1 s (1 - s) + d2 s^2.
  double const discriminant = d1 * d1 - d0 * d2;
  if (!(discriminant > 0.0)) return 1;
  double const root = std::sqrt(discriminant);
  double const q = d0 - d1 + ((d0 - d1) < 0.0 ? -root : root);
  double first = d0 / q, second = q / (d0 - 2.0 * d1 + d2);
  if (!(first <= second)) std::swap(first, second);
  int count = 1;
  for (double const t : {first, second}) {
    Part const last = parts[count - 1];
    if (!(t > last.t0 && t < 1.0)) continue;
    last.split((t - last.t0) / (1.0 - last.t0), parts[count - 1], parts[count]);
    parts[count - 1].t1 = parts[count].t0 = t;
    ++count;
  }
  return count;
}

}  // namespace crv::internal
