// The common rules of crv/accurate, whose results have a stated accuracy, and its names for the
// classes of the other folders.
//
// Rules for every header of this folder:
// - S is the largest magnitude of a coordinate of all arguments, u is 2^-53, L the length of the
//   whole segment or curve. Errors are stated in these units, so that they hold at every scale.
//   Scaling all input by a power of two scales all results by the same power, bit for bit.
// - S is 0 or lies between 2^-500 and 2^500. Other input, and input that is not finite, is called
//   unusable and gives an empty result at once: a number is then NaN, a parameter 0, a predicate
//   false.
// - The resolution is 2^-40 S unless the caller gives one: points nearer to each other than that
//   count as one point.
// - A curve is closed when its closed flag is set. Gaps between its segments, and between its ends,
//   stay gaps.
// - Positions returned are normalised: a joint is the start of the segment after it, the end of an
//   open curve of n segments is (n, 0.0), the seam of a closed one (0, 0.0). Arguments may name a
//   joint or the seam by either of its positions.
// - The square root is the only function of the mathematics library that results depend on, so the
//   results have the same bits with every mathematics library.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxVector.h"
#include "crv/positionmap/GxBezierCurvePositionMapBase.h"
#include "crv/positionmap/GxHandle.h"

namespace crv {

using Point = GxCoord<double>;                       ///< A place in the plane.
using Vector = GxVector<double>;                     ///< A displacement.
using Segment = GxBezier;                            ///< One cubic.
using Curve = GxBezierCurve;                         ///< A chain of cubics.
using Position = GxBezierCurvePosition;              ///< A place on a curve: a segment and a t.
using Map = GxHandle<GxBezierCurvePositionMapBase>;  ///< Carries positions through an edit.

}  // namespace crv
