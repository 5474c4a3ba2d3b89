// Comparisons of positions on open and closed curves, and corrections of positions.
//
// A stretch runs from a to b. On a closed curve (closed non-zero) it may run past the curve's end
// and on from its start; on an open one a stretch with b before a is empty. Positions need not lie
// on a curve: they are compared as they are. Two positions coincide, below, when they have the same
// segment number and t within 1e-9: (2, 1.0) and (3, 0.0) do not, although they name one place. A
// position whose t is NaN coincides with none; segment numbers are compared first, so that it can
// lie strictly inside a stretch that covers its whole segment.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"

/// 1 when segment + t of both differ by less than tol, strictly; on a strictly closed curve, whose
/// end is its start, also when they do after one of them is moved on by one lap.
CRV_API int isEqual(GxBezierCurve const& curve, GxBezierCurvePosition const& a,
                    GxBezierCurvePosition const& b, double tol);

/// 1 when p lies strictly inside the stretch from a to b; 0 for every p when a and b coincide.
CRV_API int isStrictBetweenPosition(GxBezierCurvePosition const& p, GxBezierCurvePosition const& a,
                                    GxBezierCurvePosition const& b, int closed);

/// 1 when p coincides with a or lies strictly inside the stretch from a to b.
CRV_API int isBetweenPosition(GxBezierCurvePosition const& p, GxBezierCurvePosition const& a,
                              GxBezierCurvePosition const& b, int closed);

/// 1 when p coincides with a or with b or lies strictly inside the stretch from a to b.
CRV_API int isBothInclusiveBetweenPosition(GxBezierCurvePosition const& p,
                                           GxBezierCurvePosition const& a,
                                           GxBezierCurvePosition const& b, int closed);

/// Of the two stretches between a and b, takes the one that contains c; 1 when p lies strictly
/// inside it. 0 for every p when c coincides with a or b and so selects no stretch.
CRV_API int isStrictBetweenPosition(GxBezierCurvePosition const& p, GxBezierCurvePosition const& a,
                                    GxBezierCurvePosition const& b, GxBezierCurvePosition const& c,
                                    int closed);

/// 1 when p coincides with a, whatever c is, or lies strictly inside the stretch that contains c.
CRV_API int isBetweenPosition(GxBezierCurvePosition const& p, GxBezierCurvePosition const& a,
                              GxBezierCurvePosition const& b, GxBezierCurvePosition const& c,
                              int closed);

/// 1 when p coincides with a or b, whatever c is, or lies strictly inside the stretch that contains
/// c.
CRV_API int isBothInclusiveBetweenPosition(GxBezierCurvePosition const& p,
                                           GxBezierCurvePosition const& a,
                                           GxBezierCurvePosition const& b,
                                           GxBezierCurvePosition const& c, int closed);

/// The joint at the start or the end of pos's segment when t lies within tol of 0 or of 1, else pos
/// itself. The end of segment k is (k + 1, 0.0), also at the end of a curve.
CRV_API GxBezierCurvePosition snapToAnchor(GxBezierCurvePosition const& pos, double tol);

/// Stores the position from, with t increased by dt, at most 1 in magnitude. On an open curve the
/// result stops at the ends; on a strictly closed one it continues across the seam, but a result of
/// exactly (n, 0.0) is kept. On an empty curve, or with a larger dt, result is untouched; a dt of
/// NaN stores a position whose t is NaN.
CRV_API void adjustBezierCurvePosition(GxBezierCurvePosition& result,
                                       GxBezierCurvePosition const& from,
                                       GxBezierCurve const& curve, double dt);
