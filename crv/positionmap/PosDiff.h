// The distance between two positions: whole segments and a fraction.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"

#include <utility>

/// A distance along a curve, counted in segments: first whole ones and the fraction second of one,
/// in [0, 1) where diff made it of normalised positions.
struct CRV_API PosDiff : std::pair<int, double> {
  /// Whole segments, and a fraction of one.
  PosDiff(int first, double second);

  /// 1 when the whole segments are equal and the fractions within 1e-9.
  int operator==(PosDiff const& other) const;

  /// 1 when this is the shorter; 0 when they are equal in the sense above.
  int operator<(PosDiff const& other) const;
};

/// The distance from a forwards to b or, where forward is 0, backwards to b. One that comes out
/// negative is lengthened by n segments, once: with n the number of segments of a closed curve this
/// is the way across the seam. On an open curve give the positions in the order of the walk.
CRV_API PosDiff diff(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b, int forward,
                     int n);

namespace crv {

/// part / whole, in segments; 0.0 when whole is below 1e-9 in magnitude. Beside `using namespace
/// std` and <ratio> or <chrono>, which have a template of this name, it must be called ::ratio.
CRV_API double ratio(PosDiff const& part, PosDiff const& whole);

}  // namespace crv

#ifndef CRV_NO_GLOBAL_NAMES
using crv::ratio;
#endif
