// The overridable judge of what counts as a line or a point when a segment is flattened.
#pragma once

#include "crv/export.h"

class GxBezier;

/// Decides where the halving of a segment into a polyline ends; derive from it to impose other
/// criteria. It has no virtual destructor: do not delete a derived condition through this class.
class CRV_API GxBezierPolylineCondition {
 public:
  GxBezierPolylineCondition();
  /// A copy.
  GxBezierPolylineCondition(GxBezierPolylineCondition const& other);

  /// Changes nothing: a condition has no state.
  GxBezierPolylineCondition& operator=(GxBezierPolylineCondition const& other);

  /// Non-zero when the segment may stand as one chord; here GxBezier::isALine.
  virtual int isALine(GxBezier const& segment, double tol) const;

  /// Non-zero when the segment may be left out; here GxBezier::isAPoint. Asked first.
  virtual int isAPoint(GxBezier const& segment, double tol) const;
};
