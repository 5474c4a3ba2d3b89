// The parallel of one cubic segment to its left, as cubics with a measured error.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// One cubic of a parallel.
struct ParallelPiece {
  Cubic c;
  double t0, t1;  // the stretch of the source that it grew from
  double error;   // how far its distance from the source is from the wanted one, at most
};

/// Appends the parallel of a segment at a distance to its left, from one point to another. The
/// segment is not one point and has no cusps inside; coordinates are of the order of 1.
///
/// Consecutive pieces join to the bit, or the stretch between them is left out, because the segment
/// turns to the left around centres that are nearer than the distance: its parallel runs back
/// there, and all of it and of the line across the gap is nearer to the segment than the distance.
/// The same holds before the first and behind the last piece.
///
/// Straight segments give straight pieces with the same parameters. Pieces stay within the
/// tolerance where rounding allows it.
void appendParallel(Cubic const& source, double distance, double tolerance, Point const& start,
                    Point const& end, std::vector<ParallelPiece>& pieces);

}  // namespace crv::internal
