// A curve prepared for many queries.
#pragma once

#include "crv/accurate/curveContacts.h"
#include "crv/accurate/nearest.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <memory>
#include <optional>
#include <vector>

namespace crv {

/// Built once, asked often: a query takes about the logarithm of the number of segments. Keeps what
/// it needs; the curve may be moved from or die. Copies share it, and may be asked by several
/// threads at once. Method: a tree over the boxes of the control points, the nearer boxes first.
class CRV_API CurveSearch {
 public:
  /// Takes linear time.
  explicit CurveSearch(Curve const& curve);

  /// The result of nearest(curve, p).
  [[nodiscard]] std::optional<NearestOnCurve> nearest(Point const& p) const;

  /// Every local minimum of the distance from p along the curve that is at most a given distance,
  /// in ascending order of position. A joint counts if no place next to it is nearer, an end of an
  /// open curve if it is no farther than what follows it, where segments are one point the first
  /// position of their place, and of the two sides of a gap the nearer. Minima that rounding cannot
  /// tell apart are one. None for an empty curve, a distance below 0 or unusable input.
  [[nodiscard]] std::vector<NearestOnCurve> within(Point const& p, double distance) const;

  /// The result of contacts(curve, a, b) with a line segment.
  [[nodiscard]] std::vector<LineContact> contacts(Point const& a, Point const& b) const;

 private:
  struct Table;
  std::shared_ptr<Table const> table_;
};

}  // namespace crv
