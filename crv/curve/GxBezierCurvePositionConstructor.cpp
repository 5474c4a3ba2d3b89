#include "crv/curve/GxBezierCurvePositionConstructor.h"

GxBezierCurvePosition GxBezierCurvePositionConstructor::constructPosition(int segment,
                                                                          double t) const {
  return GxBezierCurvePosition(segment, t);
}

GxBezierCurvePosition GxBezierCurvePositionConstructor::constructDirectPosition(int segment,
                                                                                double t) const {
  GxBezierCurvePosition position;
  position.segment_ = segment;
  position.t_ = t;
  return position;
}
