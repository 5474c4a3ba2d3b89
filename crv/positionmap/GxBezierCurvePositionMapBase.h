// The abstract position map: where a position of a curve lies after an edit, and where it was.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/positionmap/GxHandle.h"

#include <list>

/// Carries positions of a curve before an edit to the curve after it, and back. Maps do not change
/// once made, so that any number of threads may map through one. The functions of positionMaps.h
/// make them and hand them out through handles; callers may derive their own.
class CRV_API GxBezierCurvePositionMapBase {
 public:
  GxBezierCurvePositionMapBase();
  virtual ~GxBezierCurvePositionMapBase();

  /// Stores in out where the position in lies after the edit. out may be in itself.
  ///    0  mapped
  ///   -1  in lies outside what the map covers; out holds what the map's maker says: for most, the
  ///       nearest end of what is covered
  [[nodiscard]] virtual int mapPosition(GxBezierCurvePosition& out,
                                        GxBezierCurvePosition const& in) const = 0;

  /// The same from the curve after the edit to the curve before it.
  [[nodiscard]] virtual int inverseMapPosition(GxBezierCurvePosition& out,
                                               GxBezierCurvePosition const& in) const = 0;

  /// Maps every position of in and appends the results, those that failed included, to out, which
  /// may be in itself. Returns the codes ORed: 0 when all were mapped. The first argument is
  /// ignored: the single codes are not handed out.
  int transform(std::list<int> codes, std::list<GxBezierCurvePosition>& out,
                std::list<GxBezierCurvePosition> const& in) const;
};

CRV_EXTERN_TEMPLATE(GxHandle<GxBezierCurvePositionMapBase>);
