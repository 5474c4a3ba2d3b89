// Positions made, compared exactly and carried through maps.
#pragma once

#include "crv/crv.h"
#include "tests/support/expect.h"

#include <cmath>

#include <gtest/gtest.h>

namespace support {

using Position = GxBezierCurvePosition;
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

inline ::testing::AssertionResult bitsMatch(Position const& p, Position const& q) {
  if (p.getSegmentNumber() == q.getSegmentNumber() && sameBits(p.getTValue(), q.getTValue())) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << text(p) << " is not " << text(q);
}

/// What a map returned and stored; where it stored nothing, (-7, 0.125).
struct Carried {
  int code;
  Position at;
};

inline Carried forth(MapHandle const& map, Position const& p) {
  Carried c{0, rawPosition(-7, 0.125)};
  c.code = map->mapPosition(c.at, p);
  return c;
}

inline Carried back(MapHandle const& map, Position const& p) {
  Carried c{0, rawPosition(-7, 0.125)};
  c.code = map->inverseMapPosition(c.at, p);
  return c;
}

}  // namespace support
