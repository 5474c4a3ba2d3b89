// Makes positions, normalised or exactly as given.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"

/// A stateless maker of positions.
class CRV_API GxBezierCurvePositionConstructor {
 public:
  /// The position made by the normalising constructor.
  GxBezierCurvePosition constructPosition(int segment, double t) const;

  /// A position with exactly these fields, normalised or not.
  GxBezierCurvePosition constructDirectPosition(int segment, double t) const;
};
