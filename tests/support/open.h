// Opens the protected methods of the two classes.
#pragma once

#include "crv/crv.h"

namespace support {

struct OpenBezier : GxBezier {
  using GxBezier::GxBezier;
  OpenBezier(GxBezier const& other) : GxBezier(other) {}

  using GxBezier::checkChordGapDist;
  using GxBezier::compFunc;
  using GxBezier::crossingCount;
  using GxBezier::findRoots;
  using GxBezier::generate5DBezier;
  using GxBezier::genericSplit;
  using GxBezier::getNextTValue;
  using GxBezier::isFlatEnough;
  using GxBezier::length;
  using GxBezier::makePolyline;
  using GxBezier::parameter;
  using GxBezier::recursivelyIntersect;
  using GxBezier::value;
};

struct OpenCurve : GxBezierCurve {
  using GxBezierCurve::GxBezierCurve;
  OpenCurve(GxBezierCurve const& other) : GxBezierCurve(other) {}

  using GxBezierCurve::bezierPolyFit;
  using GxBezierCurve::findSegment;
  using GxBezierCurve::findTangent;
  using GxBezierCurve::isALine;
  using GxBezierCurve::isCollinear;
  using GxBezierCurve::leastSquareErr;
};

}  // namespace support
