// A rigorous bound on the distance of a cubic from the parallel of another one.
#pragma once

#include "crv/accurate/internal/motion.h"
#include "crv/bezier/internal/cubic.h"

#include <initializer_list>

namespace crv::internal {

/// The point of a source at t, and the point of a cubic at s, which lies approximately on the
/// source's normal there.
struct Station {
  double t, s;
  Point gap;                       // from the source's point to the cubic's
  Point sourceVelocity, velocity;  // derivatives by t and by s
};

/// Bounds the distance of a cubic from the parallel to the left of a source: each point of either
/// is that near to a point of the other, in the same order along both. Coordinates are of the order
/// of 1.
/// Method: between two stations, points of the two curves are paired by linear interpolation of the
/// parameters. The squared distance of a pair and its derivative along the source are polynomials,
/// which their Bernstein coefficients bound. If the squared distance is convex along the source
/// near the pair, its minimum is lower by at most the squared derivative over the convexity;
/// otherwise the derivative bounds the angle between the pair and the normal. If the bound exceeds
/// the tolerance, the interval is halved at a new station.
class ParallelError {
 public:
  /// Each halving takes one off intervalsLeft; at 0, no interval is halved any more.
  ParallelError(Motion const& source, Motion const& cubic, Point const& startGap, double distance,
                double tolerance, long& intervalsLeft)
      : source_(source),
        cubic_(cubic),
        startGap_(startGap),
        distance_(distance),
        tolerance_(tolerance),
        intervalsLeft_(intervalsLeft) {}

  /// A bound for the whole cubic and the source from t0 to t1, given some stations in between. If
  /// no bound at or below the tolerance is found, the result exceeds the tolerance and need not be
  /// a bound.
  double bound(double t0, double t1, std::initializer_list<Station> stations) const;

  Station stationAt(double t, double s) const;

 private:
  double between(Station const& from, Station const& to, int halvings) const;
  double footAt(double t, double s) const;
  double shiftAt(Station const& station) const;
  double boundOf(Station const& from, Station const& to) const;

  Motion const& source_;
  Motion const& cubic_;
  Point startGap_;  // from the start of the source to that of the cubic
  double distance_;
  double tolerance_;
  long& intervalsLeft_;
};

}  // namespace crv::internal
