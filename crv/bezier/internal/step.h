// A step along a segment for walks of many steps, which share their measurements.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// The lengths that a walk measured last and the points that it evaluated so far.
class StepWork {
 public:
  /// What s.length(startT) gives; not measured anew while s, which must not change, and startT stay
  /// the same.
  double length(GxBezier const& s, double startT);

  /// Counts points evaluated one by one, each of which takes as long as four in a row.
  void countSinglePoints(int n) { points_ += 4.0 * n; }

  double points() const { return points_; }

 private:
  struct Measured {
    GxBezier const* segment = nullptr;
    double startT = 0.0;
    double length = 0.0;
  };

  Measured whole_;
  Measured rest_;
  double points_ = 0.0;
};

/// Where a step may lead, from the start to the limit.
struct StepRange {
  double start;
  double limit;
  int forward;
};

/// GxBezier::findNextPos; consumed may be null.
int findNextPos(GxBezier const& segment, StepRange const& range, double squaredDistance, double& t,
                double* consumed, StepWork& work);

}  // namespace crv::internal
