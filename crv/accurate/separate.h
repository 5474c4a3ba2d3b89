// The decomposition of a curve that crosses itself into simple closed curves.
#pragma once

#include "crv/accurate/cut.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// A simple closed curve that runs in the direction of its source.
struct Loop {
  Piece piece;
  bool clockwise;  ///< True if its winding number is -1; otherwise it is 1.
};

/// The parts of a curve.
struct Separated {
  std::vector<Loop> loops;   ///< In the order of their lowest positions on the source.
  std::vector<Piece> rests;  ///< For an open curve the part left, from start to end; else none.
};

/// Cuts a curve at all its crossings with itself and joins the ends anew: where two branches cross,
/// each continues along the other one. The pieces together contain every stretch of the source
/// once. They cross neither themselves nor each other; at the crossings they touch. A point at
/// which three or more branches cross is one crossing. The curve is not cut where it touches or
/// overlaps itself, so pieces may still change sides along a stretch that they share, and loops
/// that stay within the resolution remain part of their neighbour.
///
/// A closed curve gives only loops, an open one loops and one rest. Loops are closed bit for bit
/// and have their closed flag set. The loop that contains the start of a closed curve begins there;
/// other loops begin at their lowest crossing. Gaps between segments stay gaps. The map of a piece
/// takes positions of the source to the piece, and back; it returns -1 for positions on other
/// pieces.
///
/// The resolution means the same as in contacts.h. Empty and unusable curves give no pieces. The
/// time is that of selfContacts, plus k log k for k crossings.
/// Method: H. Seifert, "Ueber das Geschlecht von Knoten" (1935): the circles that a diagram
/// decomposes into.
[[nodiscard]] CRV_API Separated separate(Curve const& curve, double resolution = 0.0);

}  // namespace crv

/// Appends the pieces of a curve that crosses itself, open or closed, to a list: the loops in the
/// order of their lowest positions, then the rest; see crv::separate. Returns the number of pieces,
/// 0 for unusable curves, and -1 for an empty curve.
CRV_API int seperateSelfIntersections(GxBezierCurve const& curve, GxList<GxBezierCurve>& pieces);

/// Does the same, but takes a closed curve as open at its seam.
CRV_API int seperateSelfIntersectionsForOpenCurve(GxBezierCurve const& curve,
                                                  GxList<GxBezierCurve>& pieces);
