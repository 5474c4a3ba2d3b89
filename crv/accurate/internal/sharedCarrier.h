// Segments that are stretches of one cubic, their carrier, and the double point of a carrier.
#pragma once

#include "crv/accurate/internal/clusterJudge.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"

namespace crv::internal {

/// Whether corresponding control points of two segments, in the same order or reversed, are within
/// the resolution of each other, so that the whole segments are. Stores the shared stretch. False
/// for straight segments that turn back.
bool areOneSegment(SegmentPair const& pair, double resolution, SharedStretch& shared);

/// Finds the longest stretch between ends of the segments on which the parameters of both are
/// proportional and corresponding control points are within the resolution. Returns false if there
/// is none, and for straight segments.
bool findSharedCarrier(SegmentPair const& pair, double resolution, SharedStretch& shared);

/// Adds the meetings of two segments with a common carrier other than the shared stretch: at the
/// double point of the carrier, and where ends meet that are different points of the carrier.
void addOtherMeetings(ClusterJudge const& judge, SegmentPair const& pair, double magnitude,
                      double resolution, SharedStretch const& shared, Meetings& found);

/// The pair of parameters, ascending, at which the cubic of a segment passes through its double
/// point, if it has one near the segment.
bool findDoublePoint(Cubic const& c, double& t, double& u);

/// Refines a crossing of two segments near a pair of parameters by Newton's method and clamps the
/// parameters to [0, 1]. Returns false if a segment ends before the crossing by more than the
/// resolution, or if the segments are not within the resolution of each other there.
bool holdCrossing(SegmentPair const& pair, double resolution, double& t, double& u);

}  // namespace crv::internal
