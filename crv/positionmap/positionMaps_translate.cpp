#include "crv/positionmap/positionMaps.h"

#include "crv/foundation/tolerance.h"

namespace {

// Parameter: positions this close to the seam count as lying on it.
constexpr double kOnSeam = 1e-9;

}  // namespace

GxBezierCurvePosition crv::translate(GxBezierCurve const& curve, int closed,
                                     GxBezierCurvePosition const& pos, int forward) {
  if (!closed || !IS_ZERO(pos.getTValue(), kOnSeam)) return pos;
  long const segment = pos.getSegmentNumber();
  if (forward) return segment == static_cast<long>(curve.length()) ? curve.firstPos() : pos;
  return segment == 0 ? curve.lastPos() : pos;
}
