// Decides whether connected approaches of two segments are a shared stretch or a point, and which
// point.
#pragma once

#include "crv/accurate/internal/approachCluster.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"

namespace crv::internal {

/// Classifies the clusters of two segments; the arguments are those of findMeetings.
class ClusterJudge {
 public:
  ClusterJudge(SegmentPair const& pair, double magnitude, double resolution, Stretches told)
      : pair_(pair), magnitude_(magnitude), resolution_(resolution), told_(told) {}

  /// Adds the meeting or the stretch that a cluster represents.
  void judge(ApproachCluster const& cluster, Meetings& found) const;

  /// Whether a cluster is so short that it is reported as a point.
  bool isShort(ApproachCluster const& cluster) const;

  /// Whether a stretch between ends of the segments is long enough to be reported.
  bool isTold(SharedStretch const& stretch) const;

  /// Whether a stretch is longer than leastStretch, whichever stretches are to be reported.
  bool isLong(SharedStretch const& stretch) const;

  /// Moves a pair of parameters to an end of a segment, if the end is within the resolution of it
  /// and of the other segment.
  FootPair snapped(FootPair place) const;

  /// Whether a point on both segments is so far from all ends that snapped leaves it alone.
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
  bool isBounded(SharedStretch const& stretch) const;
  SharedStretch stretchOf(ApproachCluster const& cluster) const;
  double lengthBetween(double t0, double t1) const;
  double whereSideIs(double level, double lo, double hi, double u) const;
  bool findOnlyPlace(ApproachCluster const& cluster, FootPair& place) const;
  bool isOnePlace(ApproachCluster const& cluster, double length, FootPair& place) const;
  FootPair placeOf(ApproachCluster const& cluster) const;
  bool crosses(ApproachCluster const& cluster, FootPair const& place) const;
  double snappedParameter(Cubic const& c, double t) const;
  double sideBeyond(FootPair const& place, double direction) const;

  SegmentPair const& pair_;
  double const magnitude_;
  double const resolution_;
  Stretches const told_;
};

}  // namespace crv::internal
