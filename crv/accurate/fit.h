// Chains of few segments, through digitised samples or along a curve that has more.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <vector>

namespace crv {

/// What a fit may do.
struct FitOptions {
  double tolerance = 0.5;    ///< Curve units: how far a sample may lie from the curve.
  bool closed = false;       ///< Whether the samples run around a closed stroke.
  double cornerAngle = 0.0;  ///< Radians of turn, up to pi, that make a corner; 0: no corners.
};

/// A fitted curve and what was measured of it.
struct Fit {
  Curve curve;
  double worstDistance = 0.0;        ///< Of a sample from its foot; at most the tolerance.
  std::size_t worstSample = 0;       ///< The index of a sample that far away, the first of them.
  std::vector<std::size_t> corners;  ///< The indices of samples at corners, ascending.
  std::vector<Position> positions;   ///< The foot of every sample; feet never run back.
};

/// Fits a chain of cubic segments to samples in their order, with few segments.
///
/// Every sample lies within the tolerance of its foot. The curve starts at the first sample and, if
/// open, ends at the last, bit for bit; a closed one ends where it starts and has its closed flag
/// set. A last sample equal to the first of a closed stroke adds nothing and has its foot at the
/// seam, (0, 0.0). At every joint that is no corner, and at the seam of a closed curve unless the
/// first sample is a corner, the directions on both sides agree within 1e-6 radians, as long as the
/// samples there are more than 2^-26 S apart. No handle is longer than twice the diagonal of the
/// box of the samples.
///
/// A sample is a corner where the chords to the nearest samples before and after it that are a
/// tolerance away along the path, or farther, turn by cornerAngle or more; of several such samples
/// within one tolerance the sharpest counts. The curve passes corners exactly, with a direction of
/// its own on each side. The ends of an open stroke are no corners.
///
/// Samples may repeat, run back and cross; equal ones share a foot. Samples that are all equal give
/// one segment that is a point. No samples, a tolerance that is not above 0, samples that are not
/// finite or beyond the bounds of types.h give an empty result.
///
/// Cost: n log n for n samples; about 20 evaluations of a cubic each.
/// Method: from each joint the longest run of samples that one segment can follow, found by
/// galloping and bisection (see internal/segmentFit.h); its end direction starts the next one.
[[nodiscard]] CRV_API Fit fit(std::vector<Point> const& samples, FitOptions const& options);

/// A curve with fewer segments, and how it follows the one that it was made of.
struct Simplified {
  Curve curve;
  Map map;                     ///< From positions of the source to the curve, and back.
  double worstDistance = 0.0;  ///< Of a place of the source from its mapped place, at most.
};

/// Replaces stretches of a curve by fewer segments, where these stay within a tolerance.
///
/// Every place of the curve lies within worstDistance, which is at most the tolerance, of the place
/// that the map takes it to; the bound is that of the control points of differences. Positions that
/// follow each other are mapped to positions that do, and every position of the result is reached.
/// There are never more segments than before. The closed flag stays; the ends, the joints where the
/// direction turns by more than 0.1 radians, and the ends beside gaps keep their bits, and so do
/// segments that are one point or have a cusp. A stretch that takes no fewer segments stays as it
/// is. The seam of a closed curve stays a joint. Segments that were cut from one come back as one,
/// at tolerances down to rounding.
///
/// A tolerance that is not above 0 and unusable input give an empty curve; its map answers -1.
///
/// Method: each longest run of segments is replaced by the one cubic that they were cut from, or by
/// a cubic with the same ends and end directions. Where the fit above, through eight places of each
/// segment, takes fewer segments, that is used. The map has its knots at the feet of those places.
[[nodiscard]] CRV_API Simplified simplify(Curve const& curve, double tolerance);

}  // namespace crv
