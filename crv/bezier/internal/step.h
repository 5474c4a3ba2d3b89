// The next parameter at a straight-line distance, for single steps and for walks of many steps,
// which share their measurements.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// Measures lengths for a walk, keeps the last ones, and counts the points evaluated so far.
class LengthCache {
 public:
  /// Returns s.length(startT). It is measured anew only for another segment or another startT; the
  /// segment must not change between the calls.
  double length(GxBezier const& s, double startT);

  /// Counts points evaluated one by one; each takes as long as four points of a measurement.
  void countSinglePoints(int n) { evaluations_ += 4.0 * n; }

  double evaluations() const { return evaluations_; }

 private:
  struct Measured {
    GxBezier const* segment = nullptr;
    double startT = 0.0;
    double length = 0.0;
  };

  Measured whole_;
  Measured rest_;
  double evaluations_ = 0.0;
};

/// The parameters between which a step is sought: from the start towards the limit.
struct StepRange {
  double start;
  double limit;
  int forward;
};

/// GxBezier::findNextPos; consumed may be null.
int findNextPos(GxBezier const& segment, StepRange const& range, double squaredDistance, double& t,
                double* consumed, LengthCache& lengths);

/// GxBezier::findNextPosFromPoint.
int findNextPosFromPoint(GxBezier const& segment, StepRange const& range,
                         GxCoord<double> const& reference, double squaredDistance, double& t);

}  // namespace crv::internal
