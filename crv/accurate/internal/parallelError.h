// A sure bound of how far a cubic is from the parallel of another one.
#pragma once

#include "crv/accurate/internal/motion.h"
#include "crv/bezier/internal/cubic.h"

#include <initializer_list>

namespace crv::internal {

/// The place of a source at t, paired with the place of a cubic at s, which lies nearly on the
/// source's normal there.
struct Station {
  double t, s;
  Point gap;                       // from the source to the cubic
  Point sourcePlace;               // relative to the start of the source
  Point sourceVelocity, velocity;  // by t and by s
};

/// Bounds the distance of a cubic from the parallel to the left of a source, each place of one from
/// a place of the other, in order along both. Coordinates are of the order of 1.
/// Method: from one station to the next both are taken at parameters that run evenly. The squared
/// distance there and its slope along the source are polynomials, which the coefficients of their
/// Bernstein forms bound. Where the squared distance to the source is convex near by, its least
/// value is below by no more than the squared slope over the convexity; elsewhere the parallel
/// itself is away by no more than the slope tells. Where that is too much, the middle becomes a
/// station.
class ParallelError {
 public:
  ParallelError(Motion const& source, Motion const& cubic, Point const& startGap, double distance,
                double tolerance)
      : source_(source),
        cubic_(cubic),
        startGap_(startGap),
        distance_(distance),
        tolerance_(tolerance) {}

  /// A bound over the whole cubic and the source from t0 to t1, with some stations in between; it
  /// is more than the tolerance where none at or below that was found, and then may not hold for
  /// all of it.
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
};

}  // namespace crv::internal
