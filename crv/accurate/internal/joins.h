// What connects the parallels of two segments where the direction changes, and the caps of open
// curves.
#pragma once

#include "crv/accurate/offset.h"
#include "crv/bezier/internal/cubic.h"

#include <optional>
#include <vector>

namespace crv::internal {

/// A place at which a curve changes its direction, as the parallel to its left sees it. Directions
/// are unit vectors.
struct Corner {
  Point joint;
  Point in, out;

  /// Whether the parallel has to go around the joint: the curve turns right, or back.
  bool isOuter() const;
};

/// Appends the join at an outer corner from one point to another, which are at the distance from
/// the joint; turns back are always round. Returns how far a round join lies outside of the
/// distance at worst, which is within the tolerance; nothing if the join leaves the distance.
std::optional<double> appendJoin(Corner const& corner, double distance,
                                 OffsetOptions const& options, Point const& from, Point const& to,
                                 std::vector<Cubic>& join);

/// Appends the cap of a curve that ends at a point with a direction; returns as above.
std::optional<double> appendCap(Point const& end, Point const& direction, double distance, Cap cap,
                                double tolerance, std::vector<Cubic>& join);

}  // namespace crv::internal
