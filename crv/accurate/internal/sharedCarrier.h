// Two segments that are stretches of one cubic, and where that cubic crosses itself.
#pragma once

#include "crv/accurate/internal/clusterJudge.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"

namespace crv::internal {

/// Whether the control points of two segments are one by one within the resolution of each other,
/// in the same order or in reverse: then the whole segments are. Not for segments that turn back.
bool areOneSegment(SegmentPair const& pair, double resolution, SharedStretch& shared);

/// The longest stretch, between ends of the segments, over which the parameters of both are in
/// proportion and the control points of both stretches are one by one within the resolution. False
/// where there is none, and for straight segments.
bool findSharedCarrier(SegmentPair const& pair, double resolution, SharedStretch& shared);

/// Adds the meetings of two segments that share a carrier, besides the stretch: where the carrier
/// passes through its double point, and where ends meet that are not the same end of the carrier.
void addOtherMeetings(ClusterJudge const& judge, SegmentPair const& pair, double magnitude,
                      double resolution, SharedStretch const& shared, Meetings& found);

/// The pair of parameters, ascending, at which the cubic of a segment passes through its double
/// point, if it has one near the segment.
bool findDoublePoint(Cubic const& c, double& t, double& u);

/// Newton's method for the crossing of two segments near a pair of parameters, which is then held
/// to [0, 1]. False if an end stops short of the crossing by more than the resolution.
bool holdCrossing(SegmentPair const& pair, double resolution, double& t, double& u);

}  // namespace crv::internal
