// Arc lengths of segments and curves, and the positions at given arc lengths.
//
// The error of every length is at most the accuracy that the caller asks for, in curve units, or 64
// u L if that is more; an accuracy at or below 0 means 64 u L. Cusps, turn-backs, points and
// straight lines are ordinary input. Gaps between segments have no length. Unusable input, which
// includes an accuracy or a parameter that is NaN, gives a length of NaN, a parameter of 0 and the
// position (-1, 0.0).
//
// Method: Gauss-Legendre quadrature with 8, 12, 20, 32 or 48 nodes, chosen by a bound of its
// error. Where 48 nodes are too few, the interval is divided next to the complex zeros of the
// velocity. Straight segments are measured in closed form.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace crv {

/// The length from t0 to t1, negative if t1 < t0. Parameters are clamped to [0, 1]. The cost grows
/// with the logarithm of the accuracy.
[[nodiscard]] CRV_API double arcLength(Segment const& segment, double t0, double t1,
                                       double accuracy);

/// The length of a curve; 0 for an empty one. L is the length of the whole curve.
[[nodiscard]] CRV_API double arcLength(Curve const& curve, double accuracy);

/// The parameter at a signed length from t0; 0 or 1 if the segment ends before that length is
/// reached. The length from t0 to the result is exact to within the accuracy plus the length that
/// half an ulp of the result covers.
[[nodiscard]] CRV_API double parameterAtLength(Segment const& segment, double t0, double length,
                                               double accuracy);

/// The lengths along one curve, measured once for many queries. It copies the data that it needs,
/// so the curve may be changed or destroyed. Copies of this object share that data.
class CRV_API CurveLengths {
 public:
  /// Measures the segments; takes time linear in their number.
  CurveLengths(Curve const& curve, double accuracy);

  /// The length of the curve, as arcLength gives it.
  [[nodiscard]] double total() const;

  /// The length from the curve's start to a position: 0 at (0, 0.0) and the total at (n, 0.0), on a
  /// closed curve, too; NaN for a position that is not on the curve. It takes one measurement in a
  /// segment.
  [[nodiscard]] double lengthAt(Position const& position) const;

  /// The position at a length from the curve's start. The length counts modulo the total on a
  /// closed curve, and is clamped to the ends of an open one. If segments without length make
  /// several positions possible, it is the first of them. The time grows with the logarithm of the
  /// number of segments. Returns (-1, 0.0) for an empty curve or a length that is not finite.
  [[nodiscard]] Position positionAt(double length) const;

 private:
  struct Table;
  std::shared_ptr<Table const> table_;
};

/// Positions that divide the curve into count parts of equal length: count + 1 positions, from the
/// start to the end, on an open curve, and count positions, starting at the seam, on a closed one.
/// The length up to each position is exact to within twice the accuracy. Returns no positions for a
/// count of 0, an empty curve or unusable input. On a curve without length all positions except the
/// end lie at its start.
[[nodiscard]] CRV_API std::vector<Position> evenPositions(Curve const& curve, std::size_t count,
                                                          double accuracy);

}  // namespace crv
