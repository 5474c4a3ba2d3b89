// Makes position maps. Each function stands under the file that holds it and its map.
//
// If memory for a map cannot be allocated, the handle is null; composites and stretches read
// backwards may throw std::bad_alloc. "Outside" below means that the map returns -1 and stores the
// position named there.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/positionmap/GxBezierCurvePositionMapBase.h"
#include "crv/positionmap/GxHandle.h"

#include <list>

// ---- positionMaps_identity.cpp: everything stays where it is ------------------------------------

/// Maps every position to itself, both ways.
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructIdentityPositionMap();

// ---- positionMaps_composite.cpp: one map after another ------------------------------------------

/// Applies first, then second; the inverse undoes second, then first. A map that returns other than
/// 0 stops the chain; its code is returned and out keeps what it stored. A null handle stops the
/// chain with -1.
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructCompositePositionMap(
    GxHandle<GxBezierCurvePositionMapBase> const& first,
    GxHandle<GxBezierCurvePositionMapBase> const& second);

/// The same for a list of maps, from front to back. An empty list maps with 0 and stores nothing.
/// Prefer one list to composites of composites, which use stack for each level.
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructCompositePositionMap(
    std::list<GxHandle<GxBezierCurvePositionMapBase>> const& maps);

// ---- positionMaps_reverse.cpp: the curve run the other way --------------------------------------

/// Maps (k, t) on a curve of n segments to (n - k - 1, 1 - t), normalised; the end and the start,
/// to within 1e-9 in t, are exchanged. The map is its own inverse. Outside: beyond the end (0,
/// 0.0), before the start (n, 0.0).
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructReversePositionMap(int n);

// ---- positionMaps_rotate.cpp: a closed curve whose start moved by whole segments ----------------

/// Maps segment s of a closed curve of n segments to (s + k) modulo n, and the end (n, 0.0) to the
/// image of the start. The remainder has the sign of its dividend, so keep k within -n..n.
/// direction has no effect. Outside (before the start, or beyond the end): the image of the start.
/// With n = 0 every remainder is 0.
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructRotatePositionMap(int direction, int k,
                                                                          int n);

// ---- positionMaps_singleton.cpp: one position, and nothing else ---------------------------------

/// Maps pos to the end that the curve has now, and that end back to pos; positions are compared
/// exactly. Any other position is outside, and out is untouched.
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructSingletonPositionMap(
    GxBezierCurvePosition const& pos, GxBezierCurve const& curve);

// ---- positionMaps_range.cpp: a stretch of the old curve onto the new one ------------------------

/// Maps the stretch of a curve from start to end onto the segments of a new curve from number base
/// on: whole segments one to one, the pieces at both ends stretched to whole segments.
///   closed    non-zero: positions on the seam are read as translate reads them, when the stretch
///             is chosen and whenever a position is mapped
///   forward   0: the stretch is read against the curve, from start back to end
///   curveEnd  the curve's lastPos()
/// When end does not lie after start in the direction of reading, the stretch runs across the seam,
/// closed or not. If start or end is not on the curve, a map with forward 0 is the identity.
/// Outside: before the stretch, its start on the new curve, (base, 0.0); after it, its end; in the
/// gap that a stretch across the seam leaves out, the end of the stretch if the position is nearer
/// in segments to start, else its start. The inverse maps every position from base on, also beyond
/// the stretch, and returns 0; before base it stores start and returns -1. A map of a closed curve
/// refers to the curve, which must outlive it and keep its number of segments; with closed 0 the
/// map does not refer to it. With forward 0 the map is a composite of the reversal and of such a
/// map of the reversed curve. For a position off the curve it stores the result of the reversal,
/// (0, 0.0) or (n, 0.0), without base. The inverse of a position before base stores start in the
/// reversed numbering, and the inverse of one beyond the reversed curve returns -1 and stores (0,
/// 0.0) or (n, 0.0).
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructRangePositionMap(
    GxBezierCurve const& curve, int closed, int base, int forward,
    GxBezierCurvePosition const& start, GxBezierCurvePosition const& end,
    GxBezierCurvePosition const& curveEnd);

// ---- positionMaps_translate.cpp: the seam read from one side ------------------------------------

namespace crv {

/// Returns pos, except on the seam (t within 1e-9 of 0) if closed is non-zero: the end of the curve
/// then becomes its start if forward is non-zero, and the start becomes the end if forward is 0.
CRV_API GxBezierCurvePosition translate(GxBezierCurve const& curve, int closed,
                                        GxBezierCurvePosition const& pos, int forward);

}  // namespace crv

#ifndef CRV_NO_GLOBAL_NAMES
using crv::translate;
#endif
