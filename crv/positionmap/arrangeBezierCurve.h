// Makes a curve run from one position to another.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

/// Gives a curve the start and the direction that suit a stretch from a to b.
///
/// If the ends do not meet (GxBezierCurve::isClose, which moves them together if they do), the
/// curve is only reversed, when b lies before a.
///
/// If the ends meet, the curve is made to start and end at b, and then reversed when the distance
/// from a forwards to b is shorter than that from b forwards to a. The new start is the joint
/// before b if b's t is at most 0.1, and the joint after it if t is at least 0.9; otherwise b's
/// segment is split, and the curve gains a segment. Trap: the distances are counted in segments,
/// with the positions as numbered before the new start was made, and the number of segments after
/// it. If b's segment was split, the curve may therefore run the longer way: a closed square with a
/// = (0, 0.2) and b = (2, 0.5) is reversed and reaches a after 2.8 sides instead of 2.2.
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxBezierCurvePosition const& a,
                                GxBezierCurvePosition const& b);

/// The same for the positions nearest to two points (GxBezierCurve::findNearestPointPos).
CRV_API void arrangeBezierCurve(GxBezierCurve& curve, GxCoord<double> const& pa,
                                GxCoord<double> const& pb);
