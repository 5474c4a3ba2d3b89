// The arc length of a segment, measured by chords.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

struct ArcLength {
  double length;
  int evaluations;  // points of all measurements together
};

/// Measures the arc from startT to the end: the number of chords is doubled until two measurements
/// agree.
ArcLength measuredLength(Cubic const& s, double startT);

/// The length of count chords at equal parameter steps from startT to the end; one chord for a
/// count below 2.
double chordSum(Cubic const& s, int count, double startT);

}  // namespace crv::internal
