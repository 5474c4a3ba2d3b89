// Whether connected approaches of two segments are a stretch or one place, and which place.
#pragma once

#include "crv/accurate/internal/approachCluster.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"

namespace crv::internal {

/// Judges the clusters of two segments, for the arguments of findMeetings.
class ClusterJudge {
 public:
  ClusterJudge(SegmentPair const& pair, double magnitude, double resolution, Stretches told)
      : pair_(pair), magnitude_(magnitude), resolution_(resolution), told_(told) {}

  /// Adds the meeting or the stretch that a cluster is.
  void judge(ApproachCluster const& cluster, Meetings& found) const;

  /// Whether a stretch that the ends of the segments bound is long enough to be told.
  bool isTold(SharedStretch const& stretch) const;

  /// A place within the resolution of an end of a segment is that end, if the other segment is
  /// within the resolution there.
  FootPair snapped(FootPair place) const;

  /// Whether snapped leaves a place alone that is a point of both segments.
  bool isClearOfEnds(Point const& place) const;

  /// Whether the segments cross at a clear angle.
  bool isClear(double t, double u) const;

  /// Whether a segment may turn back within the resolution of a place.
  bool isSlow(double t, double u) const;

  /// Whether both parameters lie inside, and the segments change sides.
  bool crosses(FootPair const& place) const;

 private:
  bool isSineAbove(double least, double t, double u) const;
  double sideAt(double t, double& u) const;
  bool isBound(double t, double u) const;
  double lengthBetween(double t0, double t1) const;
  double whereSideIs(double level, double lo, double hi, double u) const;
  bool findOnlyPlace(ApproachCluster const& cluster, FootPair& place) const;
  bool isOnePlace(ApproachCluster const& cluster, double length, FootPair& place) const;
  FootPair placeOf(ApproachCluster const& cluster) const;
  double snappedParameter(Cubic const& c, double t) const;
  double sideBeyond(FootPair const& place, double direction) const;

  SegmentPair const& pair_;
  double const magnitude_;
  double const resolution_;
  Stretches const told_;
};

}  // namespace crv::internal
