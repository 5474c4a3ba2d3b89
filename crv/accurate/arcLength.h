// Arc lengths of segments and curves, and the places at given lengths.
//
// No length lies farther from the true one than the accuracy asked for, or than 64 u L where that
// is more; an accuracy at or below 0 stands for 64 u L. Cusps, turn-backs, points and straight
// lines are ordinary input. Gaps between segments have no length. For unusable input, an accuracy
// or a parameter that is NaN included, lengths are NaN, parameters 0, positions (-1, 0.0).
//
// Method: Gauss-Legendre quadrature with 8, 20 or 32 nodes, as a bound of its error asks for, cut
// above the complex zeros of the velocity where 32 are too few; straight segments in closed form.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace crv {

/// The length from t0 to t1, negative where t1 < t0. Parameters are held to [0, 1]. The cost grows
/// with the logarithm of the accuracy.
[[nodiscard]] CRV_API double arcLength(Segment const& segment, double t0, double t1,
                                       double accuracy);

/// The length of a curve; 0 for an empty one. L is the length of the whole curve.
[[nodiscard]] CRV_API double arcLength(Curve const& curve, double accuracy);

/// The parameter at a signed length from t0, held at 0 and 1 where the segment ends before. The
/// length from t0 to the result is within the accuracy, plus what half an ulp of the result moves.
[[nodiscard]] CRV_API double parameterAtLength(Segment const& segment, double t0, double length,
                                               double accuracy);

/// The lengths along one curve, measured once. Keeps what it needs; the curve may go. Copies share
/// it.
class CRV_API CurveLengths {
 public:
  /// Linear in the number of segments.
  CurveLengths(Curve const& curve, double accuracy);

  /// The length of the curve, as arcLength gives it.
  [[nodiscard]] double total() const;

  /// The length from the curve's start to a position: 0 at (0, 0.0), the total at (n, 0.0), also of
  /// a closed curve; NaN for a position that is not on the curve. Takes one measurement in a
  /// segment.
  [[nodiscard]] double lengthAt(Position const& position) const;

  /// The position at a length from the curve's start: modulo the total on a closed curve, held at
  /// the ends of an open one; the first such position where stretches have no length. Takes the
  /// logarithm of the number of segments. (-1, 0.0) for an empty curve or a length that is not
  /// finite.
  [[nodiscard]] Position positionAt(double length) const;

 private:
  struct Table;
  std::shared_ptr<Table const> table_;
};

/// Positions that divide the curve into count equal lengths: count + 1 of them, from the start to
/// the end of an open curve, count of a closed one, from the seam on. Each lies within twice the
/// accuracy of its share of the true length. None for a count of 0, an empty curve or unusable
/// input. A curve without length has all of them at its start, but for the end.
[[nodiscard]] CRV_API std::vector<Position> evenPositions(Curve const& curve, std::size_t count,
                                                          double accuracy);

}  // namespace crv
