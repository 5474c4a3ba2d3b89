// Positions made, and carried through maps.
#pragma once

#include "crv/crv.h"
#include "tests/support/expect.h"

#include <cmath>

namespace support {

using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

/// A position with exactly these fields, normalised or not.
inline Position rawPosition(int segment, double t) {
  return GxBezierCurvePositionConstructor().constructDirectPosition(segment, t);
}

/// The position that is this one number.
inline Position at(double flat) {
  double const segment = std::floor(flat);
  return rawPosition(static_cast<int>(segment), flat - segment);
}

/// A position as one number.
inline double flat(Position const& p) {
  return static_cast<double>(p.getSegmentNumber()) + p.getTValue();
}

/// What a map returned and stored; where it stored nothing, (-7, 0.125).
struct Carried {
  int code = 0;
  Position at = rawPosition(-7, 0.125);
};

inline Carried forth(MapHandle const& map, Position const& p) {
  Carried c;
  c.code = map->mapPosition(c.at, p);
  return c;
}

inline Carried back(MapHandle const& map, Position const& p) {
  Carried c;
  c.code = map->inverseMapPosition(c.at, p);
  return c;
}

}  // namespace support
