// One cubic segment along a stretch of the parallel of another.
#pragma once

#include "crv/accurate/internal/motion.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A stretch of the parallel of a segment: the parameters of the segment at its ends, and its ends
/// with their directions of travel, which are unit vectors.
struct ParallelStretch {
  double t0, t1;
  Point start, startTangent;
  Point end, endTangent;
};

/// Fits cubics to stretches of the parallel of one segment.
/// Method: the directions at the ends are those of the segment (W. Tiller and E. G. Hanson,
/// "Offsets of two-dimensional profiles", IEEE Computer Graphics and Applications 4 (1984)); the
/// lengths of the two handles minimise the squares of the distances along the normals, at feet that
/// are improved in each round. (Raph Levien, "Parallel curves of cubic Beziers" (2022), computes
/// them from area and moment instead.)
class ParallelFit {
 public:
  /// The distance is positive to the left. Coordinates are of the order of 1.
  ParallelFit(Cubic const& source, double distance, double tolerance)
      : source_(source), motion_(motionOf(source)), distance_(distance), tolerance_(tolerance) {}

  /// Fits one cubic. Returns whether its distance is within the tolerance; if so, it is cubic(),
  /// and error() bounds the error of the distance.
  bool fit(ParallelStretch const& stretch);

  /// Makes cubic() the straight line between the ends of a stretch, with an error() that may exceed
  /// the tolerance.
  void connect(ParallelStretch const& stretch);

  Cubic const& cubic() const { return cubic_; }
  double error() const { return error_; }

  /// Whether no fit can succeed any more because bounding the errors took too long.
  bool isExhausted() const { return intervalsLeft_ == 0; }

 private:
  static constexpr int kSamples = 3;

  // Guard: the number of intervals that are halved to bound errors, which take about a tenth of a
  // second. It is reached only if rounding keeps the bounds above the tolerance.
  static constexpr long kMostIntervals = 1L << 20;

  struct Sample {
    Point place;  // on the parallel
    Point tangent;
    double t;      // of the source
    double s;      // of the cubic, where it crosses the normal at t
    double error;  // the distance of that crossing beyond the parallel
  };

  void prepare(ParallelStretch const& stretch);
  double startHandle(double t, double width) const;
  void place(ParallelStretch const& stretch);
  Sample sampleAt(double t, double s) const;
  double improveFoot(Motion const& motion, Sample& sample) const;
  double measure();
  bool keepsTolerance(ParallelStretch const& stretch);
  bool improveHandles(ParallelStretch const& stretch, double hopeless);

  Cubic const source_;
  Motion const motion_;
  double const distance_;
  double const tolerance_;
  Sample samples_[kSamples] = {};
  double handles_[2] = {};
  double chord_ = 0.0;
  double shortest_ = 0.0;  // of a handle
  double farthestStep_ = 0.0;
  Cubic cubic_ = {};
  double error_ = 0.0;
  long intervalsLeft_ = kMostIntervals;
};

}  // namespace crv::internal
