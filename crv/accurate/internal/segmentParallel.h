// The parallel of one cubic segment to its left, as cubics with a bound on their error.
#pragma once

#include "crv/accurate/internal/smoothParts.h"
#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// One cubic of a parallel.
struct ParallelPiece {
  Cubic c;
  double t0, t1;  // the stretch of the source of which it is the parallel
  double error;   // bounds the error of its distance from the source
};

/// A stretch of a segment whose parallel runs backwards: that, and the centres of curvature, both
/// by ascending parameters. Three points of each cubic are within the tolerance.
struct ReversedStretch {
  double t0, t1;
  std::vector<Cubic> parallel, evolute;
};

/// Appends the parallel of a part of a segment, called the segment here, at a distance to its left,
/// from one point to another. Coordinates are of the order of 1.
///
/// Consecutive pieces join bit for bit, except around stretches of the segment whose centres of
/// curvature lie to the left and nearer than the distance. The parallel of such a stretch runs
/// backwards, and both it and the line between its ends are nearer to the segment than the
/// distance. These stretches, which may also be the first or the last one, are appended to reversed
/// unless it is null.
///
/// Straight segments give straight pieces with the same parameters. Pieces stay within the
/// tolerance where rounding allows it.
void appendParallel(SmoothPart const& source, double distance, double tolerance, Point const& start,
                    Point const& end, std::vector<ParallelPiece>& pieces,
                    std::vector<ReversedStretch>* reversed);

}  // namespace crv::internal
