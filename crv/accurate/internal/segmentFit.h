// Fits one cubic segment to an ordered run of samples.
#pragma once

#include "crv/accurate/internal/controlPointEquations.h"
#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// The end conditions of a segment to be fitted. Tangents are unit vectors in the direction of
/// travel, or zero where the fit may choose. A given end has the end tangent exactly; a free end is
/// only drawn towards it.
struct FitEnds {
  Point start;
  Point startTangent;
  bool isEndGiven;
  Point end;
  Point endTangent;
};

/// Fits segments to runs of samples, each within a tolerance of its foot on the segment; the feet
/// never run back. Coordinates are expected to be of the order of 1. The object keeps its memory
/// from one fit to the next.
/// Method: least squares with true-distance feet. Every sample weighs its distance along the
/// curve's normal in full and that along the tangent a little (tangent distance minimization: Wang,
/// Pottmann, Liu, "Fitting B-spline curves to point clouds by curvature-based squared distance
/// minimization", ACM Transactions on Graphics 25 (2006)), weights grow with the error (Lawson's
/// algorithm), and a weak term for even spacing of the control points decides where samples are
/// few.
class SegmentFit {
 public:
  /// No handle becomes longer than longestHandle or than the path along the samples.
  SegmentFit(double tolerance, double longestHandle)
      : tolerance_(tolerance), longestHandle_(longestHandle) {}

  /// Fits one segment to samples[0..count-1], in their order; unless the end is given, the segment
  /// ends near the last sample. Returns whether every sample is within the tolerance and both
  /// handles have an acceptable length; if not, cubic() and foot() are undefined. With a given end
  /// and no samples it always succeeds.
  bool fit(FitEnds const& ends, Point const* samples, std::size_t count);

  /// The segment found.
  Cubic const& cubic() const { return cubic_; }

  /// The parameter of the foot of sample i.
  double foot(std::size_t i) const { return samples_[i].t; }

 private:
  struct Sample {
    Point p;   // relative to the start
    double t;  // the foot
    double weight;
    double squaredError;
    double mxx, mxy, myy;  // the weighted metric of its error
  };

  void prepare(FitEnds const& ends, Point const* samples, std::size_t count);
  double improveFeet();
  void raiseWeights();
  ControlPointEquations equations() const;
  bool solve();
  bool areHandlesSound() const;
  bool settle(FitEnds const& ends, Point const* samples);

  double tolerance_;
  double longestHandle_;
  std::vector<Sample> samples_;
  ControlPointEquations pulls_{};
  FitEnds ends_{};            // relative to the start
  double pathLength_ = 0.0;   // of the polyline through start, samples and end
  Point p1_{}, p2_{}, p3_{};  // relative to the start
  Cubic cubic_{};
};

}  // namespace crv::internal
