// Edits of curves that return a map of positions: copy a stretch, reverse, split.
//
// The map that an edit returns takes a position on the curve before the edit to the curve after it,
// and back (GxBezierCurvePositionMapBase); the object that the handle referred to before is
// released.
#pragma once

#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/positionmap/GxBezierCurvePositionMapBase.h"
#include "crv/positionmap/GxHandle.h"

/// Appends a copy of the stretch of src from start to end to dst, cutting the segments that hold
/// them; with forward 0 the stretch is run backwards, from start back to end, and so is its copy.
/// Where end does not come after start in that direction, the stretch runs across the seam, also
/// on an open curve. dst keeps its closed flag. dst may be src, but the map of a stretch across the
/// seam or read backwards then takes the number of segments after the append for the number before.
///    0  copied; map is that of constructRangePositionMap, base being dst's segments before
///   -1  start and end coincide (one segment, t within 1e-9): dst is unchanged, map is the one of
///       constructSingletonPositionMap, which takes start, as translate reads it, to dst's end:
///       (3, 0.0) of 3 closed segments is read as (0, 0.0)
///   -1  start or end is not on src: dst and map are unchanged
/// Trap: the map of a stretch of a strictly closed src refers to src, which must outlive it and
/// keep its number of segments; a map of crv::stretch refers to no curve.
[[nodiscard]] CRV_API int copyGxBezierCurve(GxBezierCurve& dst, GxBezierCurve const& src,
                                            GxBezierCurvePosition const& start,
                                            GxBezierCurvePosition const& end, int forward,
                                            GxHandle<GxBezierCurvePositionMapBase>& map);

/// Reverses a curve, which keeps its closed flag; the map is that of constructReversePositionMap.
/// Always 0.
CRV_API int reverseGxBezierCurve(GxBezierCurve& curve, GxHandle<GxBezierCurvePositionMapBase>& map);

/// Cuts first at pos: first keeps the part before pos, second is replaced by the part after it.
/// Both keep their closed flags.
///   inside segment 0 or 1   the plain cut; at a joint first ends with it
///   at the start            first becomes one segment of four equal points, second the old curve
///                           with its flag
///   at the end              first stays, second becomes an open curve of one such segment
///   from segment 2 on       the cut as callers know it, not the plain one: with k the segment of
///                           pos, first is segments 1 .. k - 2 and the piece of k up to pos (none
///                           at a joint); second is the piece of k from pos on, segments k .. n - 1
///                           whole, and segment 0
/// Both maps are made for the plain cut in every case: firstMap takes the stretch before pos to
/// first, secondMap that after pos to second. They refer to no curve.
///    0  cut
///   -1  pos is not on first, first is empty, or first is second: nothing is changed
/// Trap: from segment 2 on, the segment before the cut is lost and the maps do not describe the
/// parts; crv::cut works at every segment.
[[nodiscard]] CRV_API int spliteGxBezierCurve(GxBezierCurvePosition const& pos,
                                              GxBezierCurve& first, GxBezierCurve& second,
                                              GxHandle<GxBezierCurvePositionMapBase>& firstMap,
                                              GxHandle<GxBezierCurvePositionMapBase>& secondMap);
