// Finds the stretches and points at which two cubic segments are within the resolution of each
// other.
#pragma once

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/shortList.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A pair of parameters, or of parameter intervals, at which two segments are within the
/// resolution. The same point may be found as several approaches.
struct Approach {
  double t0, t1, u0, u1;  // t0 <= t1; u0 > u1 where the segments run against each other
  bool isRoot;            // the segments change sides here; t0 == t1, u0 == u1
  int runs;               // the pair of runs, for straight segments that turn back; else 0
};

/// Two segments that only cross have at most nine approaches.
using Approaches = ShortList<Approach, 9>;

/// Appends all approaches of two segments whose coordinates have a magnitude of at most 1: at
/// least one in each connected set of pairs (t, u) with |A(t) - B(u)| <= resolution, and every
/// place within it where the segments change sides, or an approach that covers it.
void findApproaches(SegmentPair const& pair, double resolution, Approaches& found);

/// For a pair of one segment with itself: if the segment is straight within a width, appends the
/// approaches between its runs, which are divided where it turns back, with t before u. Returns
/// false for other segments.
bool findOwnApproaches(SegmentPair const& pair, double width, double resolution, Approaches& found);

}  // namespace crv::internal
