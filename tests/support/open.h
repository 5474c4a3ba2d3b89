// Opens the protected methods of the two classes.
#pragma once

#include "crv/crv.h"

namespace support {

struct OpenBezier : GxBezier {
  using GxBezier::GxBezier;
  OpenBezier(GxBezier const& other) : GxBezier(other) {}

  using GxBezier::checkChordGapDist, GxBezier::compFunc, GxBezier::crossingCount,
      GxBezier::findRoots, GxBezier::generate5DBezier, GxBezier::genericSplit,
      GxBezier::getNextTValue, GxBezier::isFlatEnough, GxBezier::length, GxBezier::makePolyline,
      GxBezier::parameter, GxBezier::recursivelyIntersect, GxBezier::value;
};

struct OpenCurve : GxBezierCurve {
  using GxBezierCurve::GxBezierCurve;
  OpenCurve(GxBezierCurve const& other) : GxBezierCurve(other) {}

  using GxBezierCurve::bezierPolyFit, GxBezierCurve::findSegment, GxBezierCurve::findTangent,
      GxBezierCurve::isALine, GxBezierCurve::isCollinear, GxBezierCurve::leastSquareErr;
};

}  // namespace support
