// The distance between two positions: whole segments and a fraction.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"

#include <utility>

/// A distance along a curve: first is the number of whole segments, second the fraction of one
/// more. The fraction lies in [0, 1) where diff computed it from normalised positions.
struct CRV_API PosDiff : std::pair<int, double> {
  /// A distance of whole segments and a fraction of one.
  PosDiff(int first, double second);

  /// Returns 1 when the whole segments are equal and the fractions differ by less than 1e-9.
  int operator==(PosDiff const& other) const;

  /// Returns 1 when this distance is shorter, and 0 when both are equal in the sense of ==.
  int operator<(PosDiff const& other) const;
};

/// Returns the distance from a forwards to b or, where forward is 0, backwards to b. A negative
/// distance is lengthened by n segments, once: where n is the number of segments of a closed curve,
/// this is the distance across the seam. On an open curve, b must follow a in that direction.
CRV_API PosDiff diff(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b, int forward,
                     int n);

namespace crv {

/// Returns part / whole, both counted in segments, or 0.0 when whole is below 1e-9 in magnitude.
/// After `using namespace std`, with <ratio> or <chrono>, which declare a template of this name, it
/// must be called as ::ratio.
CRV_API double ratio(PosDiff const& part, PosDiff const& whole);

}  // namespace crv

#ifndef CRV_NO_GLOBAL_NAMES
using crv::ratio;
#endif
