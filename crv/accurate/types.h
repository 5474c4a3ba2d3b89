// Results with a stated accuracy: the names that this room uses for the classes of the others.
//
// What holds in every header of the room:
// - S is the largest magnitude of a coordinate of all arguments, u is 2^-53, L the length of the
//   whole segment or curve. Errors are stated in these units, so that they hold at every scale.
//   Scaling all input by a power of two scales all results by it, to the bit.
// - S is 0 or lies between 2^-500 and 2^500. Input beyond, or not finite, gives an empty result at
//   once; where the result is a number it is NaN, a parameter 0, a predicate false.
// - Resolution is 2^-40 S unless the caller gives one: places nearer than that are one place.
// - A curve is closed when its closed flag is set. Gaps between its segments, and between its ends,
//   stay gaps.
// - Positions handed back are normalised: a joint is the start of the segment behind it, the end of
//   an open curve of n segments is (n, 0.0), the seam of a closed one (0, 0.0). Positions handed in
//   may name a joint or the seam either way.
// - Only square roots are taken, so that the results have the same bits under every mathematics
//   library.
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
