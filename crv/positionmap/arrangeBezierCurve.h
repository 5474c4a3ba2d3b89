// Makes a curve run from one position to another.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

/// Gives a curve the start and the direction that suit a stretch from a to b.
///   ends that meet (GxBezierCurve::isClose, which moves them together): the curve is made to start
///   and end at b, then reversed when the way from a forwards to b is shorter than the way from b
///   forwards to a. Both ways are counted in segments: the positions as numbered before the new
///   start was made, the number of segments as it is after it. Where b's segment was split, the
///   way chosen may therefore be the longer one: a closed square with a = (0, 0.2), b = (2, 0.5)
///   is reversed and reaches a after 2.8 sides instead of 2.2
///   other ends: the curve is reversed when b lies before a
/// The new start is the joint before b when b's t is at most 0.1, the joint after it from 0.9 on;
/// in between, b's segment is split and the curve gains one.
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxBezierCurvePosition const& a,
                                GxBezierCurvePosition const& b);

/// The same for the positions nearest to two points (GxBezierCurve::findNearestPointPos).
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxCoord<double> const& pa,
                                GxCoord<double> const& pb);
