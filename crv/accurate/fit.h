// Fits chains of few segments to digitised samples, and to curves of many segments.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <vector>

namespace crv {

/// Parameters of a fit.
struct FitOptions {
  double tolerance = 0.5;    ///< Curve units: how far a sample may lie from the curve.
  bool closed = false;       ///< Whether the samples run around a closed stroke.
  double cornerAngle = 0.0;  ///< Radians of turn, up to pi, that make a corner; 0: no corners.
};

/// A fitted curve, and its distances from the samples.
struct Fit {
  Curve curve;
  double worstDistance = 0.0;        ///< Largest distance of a sample from its foot.
  std::size_t worstSample = 0;       ///< The index of the first sample at that distance.
  std::vector<std::size_t> corners;  ///< The indices of samples at corners, ascending.
  std::vector<Position> positions;   ///< The foot of every sample, in non-descending order.
};

/// Fits a chain of few cubic segments to samples, in their order.
///
/// Every sample lies within the tolerance of its foot. The curve starts at the first sample and, if
/// it is open, ends at the last one, bit for bit; a closed one ends where it starts and has its
/// closed flag set. If the last sample of a closed stroke equals the first, it is ignored and has
/// its foot at the seam, (0, 0.0). At every joint that is not a corner, and at the seam of a closed
/// curve unless the first sample is a corner, the directions on both sides agree within 1e-6
/// radians if the samples there are more than 2^-26 S apart. No handle is longer than twice the
/// diagonal of the box of the samples.
///
/// A sample is a corner if the path turns there by cornerAngle or more. The turn is measured
/// between the chords from the sample to the nearest samples before and after it that are at least
/// one tolerance away along the path, or to an end of an open stroke that is nearer. Of several
/// such samples within one tolerance only the sharpest is a corner. The curve passes through
/// corners exactly, with a direction of its own on each side. The ends of an open stroke are not
/// corners.
///
/// Samples may be repeated, and the stroke may run back and cross itself; equal neighbours share a
/// foot. If all samples are equal, the result is one segment that is a point. The result is empty
/// if there are no samples, if the tolerance is not above 0, or if samples are not finite or exceed
/// the bounds in types.h.
///
/// Cost: n log n for n samples; about 20 evaluations of a cubic each.
/// Method: from each joint, the longest run of samples that one segment can follow is found by
/// galloping and bisection (see internal/segmentFit.h); the next segment starts in the direction in
/// which it ends.
[[nodiscard]] CRV_API Fit fit(std::vector<Point> const& samples, FitOptions const& options);

/// A curve with fewer segments, and its map and distance from the source.
struct Simplified {
  Curve curve;
  Map map;                     ///< From positions of the source to the curve, and back.
  double worstDistance = 0.0;  ///< Bounds the distance of each point of the source from its image.
};

/// Replaces stretches of a curve by fewer segments within a tolerance.
///
/// Every point of the curve lies within worstDistance, which is at most the tolerance, of the point
/// to which the map takes it; the bound comes from the control points of differences. The map keeps
/// the order of positions and reaches every position of the result. There are never more segments
/// than before. The closed flag stays. The ends, the joints where the direction turns by more than
/// 0.1 radians, and the ends beside gaps keep their bits, and so do segments that are one point or
/// have a cusp. A stretch for which no fewer segments are found stays as it is. The seam of a
/// closed curve stays a joint. Segments that were cut from one segment become one again, even at
/// tolerances near rounding.
///
/// A tolerance that is not above 0 and unusable input give an empty curve, whose map returns -1.
///
/// Method: each longest run of segments is replaced by the one cubic that they were cut from, or by
/// a cubic with the same ends and end directions. If fit, applied to eight samples of each segment,
/// needs fewer segments, its result is used instead. The knots of the map are the feet of these
/// samples.
[[nodiscard]] CRV_API Simplified simplify(Curve const& curve, double tolerance);

}  // namespace crv
