// A curve that crosses itself, taken apart into simple closed curves.
#pragma once

#include "crv/accurate/cut.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// A simple closed curve that runs the way of its source.
struct Loop {
  Piece piece;
  bool clockwise;  ///< Its winding number is -1, else 1.
};

/// What a curve consists of.
struct Separated {
  std::vector<Loop> loops;   ///< In the order of their lowest places on the source.
  std::vector<Piece> rests;  ///< What closes nothing: of an open curve one, from start to end.
};

/// Cuts a curve at all its crossings with itself and joins the ends anew: where two branches cross,
/// each goes on along the other one. Together the pieces are the source, every stretch of it once,
/// and they cross neither themselves nor each other; at the crossings they touch. A place at which
/// three branches or more cross is taken as one. Places where the curve touches or overlaps itself
/// are not cut, so pieces may still change sides along a stretch that they share; and loops that
/// stay within the resolution remain part of their neighbour.
///
/// A closed curve gives loops only, an open one loops and one rest. Loops are closed bit for bit
/// and have their closed flag set; the one that the start of a closed curve is on begins there,
/// others begin at their lowest crossing. Gaps between segments stay gaps. Maps take positions of
/// the source to the piece, -1 where they are on another one, and back.
///
/// The resolution is read as in contacts.h. Empty and unusable curves give nothing. Cost: that of
/// selfContacts, and k log k for k crossings.
/// Method: H. Seifert, "Ueber das Geschlecht von Knoten" (1935): the circles that a diagram
/// decomposes into.
[[nodiscard]] CRV_API Separated separate(Curve const& curve, double resolution = 0.0);

}  // namespace crv

/// Appends the pieces of a curve that crosses itself, open or closed, to a list: the loops in the
/// order of their lowest places, then the rest; see crv::separate. Returns how many these are, 0
/// for unusable curves, and -1 for an empty curve. The list must not be that of the curve.
CRV_API int seperateSelfIntersections(GxBezierCurve const& curve, GxList<GxBezierCurve>& pieces);

/// The same, a closed curve being taken as open at its seam.
CRV_API int seperateSelfIntersectionsForOpenCurve(GxBezierCurve const& curve,
                                                  GxList<GxBezierCurve>& pieces);
