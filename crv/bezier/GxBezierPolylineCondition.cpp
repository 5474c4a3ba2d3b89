#include "crv/bezier/GxBezierPolylineCondition.h"

#include "crv/bezier/GxBezier.h"

GxBezierPolylineCondition::GxBezierPolylineCondition() = default;

GxBezierPolylineCondition::GxBezierPolylineCondition(GxBezierPolylineCondition const&) = default;

GxBezierPolylineCondition& GxBezierPolylineCondition::operator=(GxBezierPolylineCondition const&) {
  return *this;
}

int GxBezierPolylineCondition::isALine(GxBezier const& segment, double tol) const {
  return segment.isALine(tol);
}

int GxBezierPolylineCondition::isAPoint(GxBezier const& segment, double tol) const {
  return segment.isAPoint(tol);
}
