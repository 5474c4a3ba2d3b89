// Turns a curve to run from one place to another.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

/// Turns a curve round so that it runs the right way between a and b.
///   ends that meet (GxBezierCurve::isClose, which moves them together): the curve is made to start
///   and end at b, and to reach a by the shorter way, counted in segments
///   other ends: the curve is reversed when b lies before a
/// The new start is the joint before b when b's t is at most 0.1, the joint after it from 0.9 on;
/// in between, b's segment is split and the curve gains one.
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxBezierCurvePosition const& a,
                                GxBezierCurvePosition const& b);

/// The same for the positions nearest to two points (GxBezierCurve::findNearestPointPos).
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxCoord<double> const& pa,
                                GxCoord<double> const& pb);
