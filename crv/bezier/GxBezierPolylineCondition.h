// The condition under which the halving of a segment into a polyline ends; callers may override it.
#pragma once

#include "crv/export.h"

class GxBezier;

/// Decides which pieces of a segment count as lines and points when it is halved into a polyline.
/// Derive from it to apply other criteria. It has no virtual destructor: do not delete a derived
/// condition through a pointer to this class.
class CRV_API GxBezierPolylineCondition {
 public:
  GxBezierPolylineCondition();
  /// A copy.
  GxBezierPolylineCondition(GxBezierPolylineCondition const& other);

  /// Does nothing, since a condition has no state.
  GxBezierPolylineCondition& operator=(GxBezierPolylineCondition const& other);

  /// Returns non-zero when the chord may replace the segment. This class calls GxBezier::isALine.
  virtual int isALine(GxBezier const& segment, double tol) const;

  /// Returns non-zero when the segment may be left out. This class calls GxBezier::isAPoint. It is
  /// called before isALine.
  virtual int isAPoint(GxBezier const& segment, double tol) const;
};
