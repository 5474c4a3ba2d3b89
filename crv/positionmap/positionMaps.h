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

/// For a curve of n segments: (k, t) to (n - k - 1, 1 - t), normalised; the end and the start, t
/// within 1e-9, swap. Its own inverse. Outside: beyond the end (0, 0.0), before the start (n, 0.0).
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructReversePositionMap(int n);

// ---- positionMaps_rotate.cpp: a closed curve whose start moved by whole segments ----------------

/// For a closed curve of n segments: segment s becomes (s + k) modulo n, and the end (n, 0.0) goes
/// where the start goes. The remainder has the sign of its dividend: keep k within -n..n. direction
/// has no effect. Outside (before the start, or beyond the end): where the start goes. With n = 0
/// every remainder is 0.
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
/// closed or not. Where start or end cannot be read backwards (not on the curve), the map made is
/// the identity.
/// Outside, before the stretch: its start on the new curve, (base, 0.0); after it: its end; in the
/// gap that a stretch across the seam leaves out: its end when nearer in segments to start, else
/// its start. The inverse covers everything from base on and carries positions beyond the stretch
/// on with 0; before base it gives start with -1. A map of a closed curve refers to the curve,
/// which must outlive it and keep its number of segments; with closed 0 the map does not refer to
/// it.
/// With forward 0 the map is a composite of the reversal and of such a map of the reversed curve. A
/// position off the curve then stores what the reversal stores, (0, 0.0) or (n, 0.0), without base;
/// the inverse of a position before base stores start in the reversed numbering, and an inverse
/// beyond the reversed curve gives -1 with (0, 0.0) or (n, 0.0).
CRV_API GxHandle<GxBezierCurvePositionMapBase> constructRangePositionMap(
    GxBezierCurve const& curve, int closed, int base, int forward,
    GxBezierCurvePosition const& start, GxBezierCurvePosition const& end,
    GxBezierCurvePosition const& curveEnd);

// ---- positionMaps_translate.cpp: the seam read from one side ------------------------------------

namespace crv {

/// pos, or, when closed is non-zero and pos lies on the seam, the seam as a stretch reads it: the
/// end of the curve becomes its start when reading forwards, the start its end when reading
/// backwards (forward 0), t within 1e-9 of 0.
CRV_API GxBezierCurvePosition translate(GxBezierCurve const& curve, int closed,
                                        GxBezierCurvePosition const& pos, int forward);

}  // namespace crv

#ifndef CRV_NO_GLOBAL_NAMES
using crv::translate;
#endif
