// The places where two cubic segments come within the resolution of each other, in raw pieces.
#pragma once

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/shortList.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A pair of parameters, or stretches of them, at which two segments are within the resolution.
/// The same place may be found as several approaches.
struct Approach {
  double t0, t1, u0, u1;  // t0 <= t1; u0 > u1 where the segments run against each other
  bool isRoot;            // the segments change sides here; t0 == t1, u0 == u1
  int runs;               // which runs of straight segments that turn back; 0 of others
};

/// Two segments that cross, and do nothing else, have nine at most.
using Approaches = ShortList<Approach, 9>;

/// Appends all approaches of two segments whose coordinates have a magnitude of at most 1: at
/// least one in each connected set of pairs (t, u) with |A(t) - B(u)| <= resolution, and every
/// place within it where the segments change sides, or an approach that covers it.
void findApproaches(SegmentPair const& pair, double resolution, Approaches& found);

/// For a pair of one segment with itself: false unless the segment is straight within the
/// resolution; then the approaches of its runs between the places where it turns back, t before u.
bool findOwnApproaches(SegmentPair const& pair, double resolution, Approaches& found);

}  // namespace crv::internal
