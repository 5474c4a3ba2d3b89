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

/// Answers many queries about one curve; the time of a query grows about with the logarithm of the
/// number of segments. It copies the curve, which may then be changed or destroyed. Copies of this
/// object share that data, and several threads may query them at once. Method: a tree over the
/// boxes of the control points, searched nearer boxes first.
class CRV_API CurveSearch {
 public:
  /// Copies the curve; takes time linear in the number of segments.
  explicit CurveSearch(Curve const& curve);

  /// The result of nearest(curve, p).
  [[nodiscard]] std::optional<NearestOnCurve> nearest(Point const& p) const;

  /// All local minima, along the curve, of the distance from p that are at most a given distance,
  /// in ascending order of position. A joint is a minimum if no point next to it on either side is
  /// nearer, and an end of an open curve if no point next to it is nearer. Several segments that
  /// are one point are reported at their first position, and of the two sides of a gap only the
  /// nearer one is reported. Minima that rounding cannot distinguish are one minimum. Returns none
  /// for an empty curve, a distance below 0 or unusable input.
  [[nodiscard]] std::vector<NearestOnCurve> within(Point const& p, double distance) const;

  /// The result of contacts(curve, a, b) with a line segment.
  [[nodiscard]] std::vector<LineContact> contacts(Point const& a, Point const& b) const;

 private:
  struct Table;
  std::shared_ptr<Table const> table_;
};

}  // namespace crv
