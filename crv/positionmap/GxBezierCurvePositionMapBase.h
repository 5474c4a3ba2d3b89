// The abstract position map, which takes positions on a curve before an edit to positions after it,
// and back.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/positionmap/GxHandle.h"

#include <list>

/// Carries positions of a curve before an edit to the curve after it, and back. Maps are immutable,
/// so any number of threads may use one at once. The functions of positionMaps.h make maps and
/// return them in handles; callers may derive their own.
class CRV_API GxBezierCurvePositionMapBase {
 public:
  GxBezierCurvePositionMapBase();
  virtual ~GxBezierCurvePositionMapBase();

  /// Stores in out where the position in lies after the edit. out may be in itself.
  ///    0  mapped
  ///   -1  in lies outside the range of the map; the function that made the map says what out then
  ///       holds: for most maps, the nearest end of that range
  [[nodiscard]] virtual int mapPosition(GxBezierCurvePosition& out,
                                        GxBezierCurvePosition const& in) const = 0;

  /// The same from the curve after the edit to the curve before it.
  [[nodiscard]] virtual int inverseMapPosition(GxBezierCurvePosition& out,
                                               GxBezierCurvePosition const& in) const = 0;

  /// Maps every position of in and appends the results, those that failed included, to out, which
  /// may be in itself. Returns the codes ORed: 0 when all were mapped. The first argument is
  /// ignored, so the single codes are not available.
  int transform(std::list<int> codes, std::list<GxBezierCurvePosition>& out,
                std::list<GxBezierCurvePosition> const& in) const;
};

CRV_EXTERN_TEMPLATE(GxHandle<GxBezierCurvePositionMapBase>);
