// The parallel of one cubic segment to its left, as cubics with a bound on their error.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// One cubic of a parallel.
struct ParallelPiece {
  Cubic c;
  double t0, t1;  // the stretch of the source of which it is the parallel
  double error;   // bounds the error of its distance from the source
};

/// Appends the parallel of a segment at a distance to its left, from one point to another. The
/// segment is not one point and has no cusps inside; coordinates are of the order of 1.
///
/// Consecutive pieces join bit for bit, unless the stretch between them is left out because the
/// segment's centres of curvature there lie to the left and nearer than the distance. The parallel
/// of such a stretch runs backwards, and both it and the line across the gap are nearer to the
/// segment than the distance. Such a stretch may also be left out before the first and after the
/// last piece.
///
/// Straight segments give straight pieces with the same parameters. Pieces stay within the
/// tolerance where rounding allows it.
void appendParallel(Cubic const& source, double distance, double tolerance, Point const& start,
                    Point const& end, std::vector<ParallelPiece>& pieces);

}  // namespace crv::internal
