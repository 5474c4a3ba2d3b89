// Makes positions, normalised or exactly as given.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"

/// Makes positions; it has no state.
class CRV_API GxBezierCurvePositionConstructor {
 public:
  /// Returns the position made by the normalising constructor.
  GxBezierCurvePosition constructPosition(int segment, double t) const;

  /// Returns a position with exactly these fields, normalised or not.
  GxBezierCurvePosition constructDirectPosition(int segment, double t) const;
};
