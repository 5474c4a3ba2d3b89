// A chain of segments along a stroke.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/segmentFit.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// Fits a chain to the points of a stroke, in a frame where coordinates are of the order of 1.
/// Method: from each joint, the longest run of points that one segment can follow is found by
/// galloping and bisection; the next segment starts in the direction in which it ends.
class ChainFit {
 public:
  /// Keeps a reference to points, of which there is at least one; consecutive ones, and the last
  /// and the first of a closed stroke, differ.
  ChainFit(std::vector<Point> const& points, double tolerance);

  /// Fits the whole stroke, exactly at its ends and at corners, the ascending indices of points at
  /// which the curve has a direction of its own on either side.
  void fitStroke(std::vector<std::size_t> const& corners, bool closed);

  /// Moves every foot to the nearest point around it, keeping the feet in order.
  void improveFeet();

  std::vector<Cubic> const& segments() const { return segments_; }

  /// The foot of a point. Feet never run back.
  Place const& foot(std::size_t point) const { return feet_[point]; }

  /// The distance of a point from its foot.
  double distance(std::size_t point) const;

 private:
  void fitStretch(std::size_t first, std::size_t last, Point const& startTangent,
                  Point const& endTangent);
  std::size_t longestRun(FitEnds const& ends, std::size_t next, std::size_t left);
  bool tryRun(FitEnds ends, std::size_t next, std::size_t left, std::size_t count);
  Point tangentBehind(std::size_t next, std::size_t left, std::size_t count) const;
  Point seamTangent();
  double squaredError(std::size_t point, Place const& foot) const;
  void improveFoot(std::size_t point, Place foot, Place const& before, Place const& after);

  std::vector<Point> const& points_;
  SegmentFit trial_;
  SegmentFit best_;
  std::vector<Cubic> segments_;
  std::vector<Place> feet_;
  std::size_t guess_;
};

}  // namespace crv::internal
