// Joins, which connect the parallels of two segments where the direction changes, and the caps of
// open curves.
#pragma once

#include "crv/accurate/offset.h"
#include "crv/bezier/internal/cubic.h"

#include <optional>
#include <vector>

namespace crv::internal {

/// A point at which a curve changes its direction. Directions are unit vectors; the parallel lies
/// on the left.
struct Corner {
  Point joint;
  Point in, out;

  /// Whether the parallel needs a join: whether the curve turns right, or back.
  bool isOuter() const;
};

/// Appends the join at an outer corner between two points at the distance from the joint; where the
/// curve turns back, the join is always round. Returns the largest error of the distance on a round
/// join, which is within the tolerance, or nothing for other joins, which do not keep the distance.
std::optional<double> appendJoin(Corner const& corner, double distance,
                                 OffsetOptions const& options, Point const& from, Point const& to,
                                 std::vector<Cubic>& join);

/// Appends the cap of a curve that ends at a point in a direction; returns the same as appendJoin.
std::optional<double> appendCap(Point const& end, Point const& direction, double distance, Cap cap,
                                double tolerance, std::vector<Cubic>& join);

}  // namespace crv::internal
