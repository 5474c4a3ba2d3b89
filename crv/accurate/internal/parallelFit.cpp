#include "crv/accurate/internal/parallelFit.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/parallelError.h"
#include "crv/accurate/internal/tangent.h"

#include <cmath>

namespace crv::internal {

namespace {

// Rounds of measuring and solving; more rounds hardly ever make a fit succeed.
constexpr int kMaxRounds = 5;

// In tolerances, by round: if the handles found in a round leave a larger error, to first order,
// the fit hardly ever succeeds.
constexpr double kHopeless[kMaxRounds - 1] = {8.0, 3.0, 1.5, 1.0};

// The shortest handle, as a share of the chord.
constexpr double kMinHandle = 1e-3;

// The largest sum of both handles, as a multiple of the chord.
constexpr double kMaxHandles = 4.0;

// The share of a stretch by which the points where the first handles are computed lie inside its
// ends, because the curvature need not be defined at the ends.
constexpr double kInside = 0x1p-10;

// Parameter: errors are not reliable while a foot moves farther than this.
constexpr double kSettled = 0.02;

// Relative to the sum of the diagonal of the equations: keeps handles with little influence from
// moving.
constexpr double kRidge = 1e-3;

}  // namespace

/// The length of a handle that gives the cubic the velocity of the parallel.
double ParallelFit::startHandle(double t, double width) const {
  Point const first = motion_.velocity(t);
  Point const second = motion_.acceleration(t);
  double const speed = std::sqrt(dot(first, first));
  double const turn = speed > 0.0 ? distance_ * cross(first, second) / (speed * speed) : speed;
  return (speed - turn) * width * (1.0 / 3.0);
}

ParallelFit::Sample ParallelFit::sampleAt(double t, double s) const {
  Point const velocity = motion_.velocity(t);
  double const speed = std::sqrt(dot(velocity, velocity));
  Point const tangent = speed > 0.0 ? velocity * (1.0 / speed) : startDirection(source_);
  Point const place = source_.start() + motion_.place(t) + leftOf(tangent) * distance_;
  return {place, tangent, t, s, 0.0};
}

void ParallelFit::prepare(ParallelStretch const& stretch) {
  double const width = stretch.t1 - stretch.t0;
  for (int i = 0; i < kSamples; ++i) {
    double const s = 0.2 + 0.3 * i;
    samples_[i] = sampleAt(stretch.t0 + s * width, s);
  }
  chord_ = distance(stretch.start, stretch.end);
  shortest_ = kMinHandle * chord_;
  handles_[0] = max(shortest_, startHandle(stretch.t0 + kInside * width, width));
  handles_[1] = max(shortest_, startHandle(stretch.t1 - kInside * width, width));
}

void ParallelFit::place(ParallelStretch const& stretch) {
  cubic_ = {{stretch.start, stretch.start + stretch.startTangent * handles_[0],
             stretch.end - stretch.endTangent * handles_[1], stretch.end}};
}

/// Moves the foot of a sample by a Newton step and estimates the remaining error to first order.
/// Returns the step.
double ParallelFit::improveFoot(Motion const& motion, Sample& sample) const {
  Point const gap = (sample.place - cubic_.start()) - motion.place(sample.s);
  Point const velocity = motion.velocity(sample.s);
  double const speed = dot(velocity, sample.tangent);
  double const step = speed > 0.0 ? dot(gap, sample.tangent) / speed : 0.0;
  double const s = min(1.0, max(0.0, sample.s + step));
  double const moved = s - sample.s;
  sample.s = s;
  sample.error = moved * cross(sample.tangent, velocity) - cross(sample.tangent, gap);
  return moved;
}

/// Improves all feet, and returns the worst error at a sample.
double ParallelFit::measure() {
  double worst = 0.0;
  farthestStep_ = 0.0;
  Motion const motion = motionOf(cubic_);
  for (Sample& sample : samples_) {
    farthestStep_ = max(farthestStep_, std::fabs(improveFoot(motion, sample)));
    worst = max(worst, std::fabs(sample.error));
  }
  return worst;
}

/// Whether the cubic is certainly within the tolerance of the parallel. If so, error_ bounds the
/// distance.
bool ParallelFit::keepsTolerance(ParallelStretch const& stretch) {
  Motion const motion = motionOf(cubic_);
  ParallelError const error(motion_, motion, cubic_.start() - source_.start(), distance_,
                            tolerance_, intervalsLeft_);
  auto const stationAt = [&](Sample const& sample) { return error.stationAt(sample.t, sample.s); };
  error_ = error.bound(stretch.t0, stretch.t1, {stationAt(samples_[1])});
  return error_ <= tolerance_;
}

void ParallelFit::connect(ParallelStretch const& stretch) {
  cubic_ = straight(stretch.start, stretch.end);
  Motion const motion = motionOf(cubic_);
  ParallelError const error(motion_, motion, cubic_.start() - source_.start(), distance_,
                            tolerance_, intervalsLeft_);
  error_ = error.bound(stretch.t0, stretch.t1, {});
}

/// Changes the handles so that the squares of the errors become least; false where they become too
/// long, or leave more than an error, to first order.
bool ParallelFit::improveHandles(ParallelStretch const& stretch, double hopeless) {
  double aa = 0.0, ab = 0.0, bb = 0.0, ae = 0.0, be = 0.0;
  Point effects[kSamples];  // of the two handles on the error of a sample
  for (int i = 0; i < kSamples; ++i) {
    Sample const& sample = samples_[i];
    double const s = sample.s, r = 1.0 - s;
    double const a = 3.0 * r * r * s * cross(sample.tangent, stretch.startTangent);
    double const b = -3.0 * r * s * s * cross(sample.tangent, stretch.endTangent);
    effects[i] = {a, b};
    aa += a * a;
    ab += a * b;
    bb += b * b;
    ae -= a * sample.error;
    be -= b * sample.error;
  }
  double const ridge = kRidge * (aa + bb);
  aa += ridge;
  bb += ridge;
  double const determinant = aa * bb - ab * ab;
  if (!(determinant > 0.0)) return false;
  double a = (ae * bb - be * ab) / determinant, b = (be * aa - ae * ab) / determinant;
  if (handles_[0] + a < shortest_) {
    a = shortest_ - handles_[0];
    b = (be - ab * a) / bb;
  }
  if (handles_[1] + b < shortest_) {
    b = shortest_ - handles_[1];
    a = max(shortest_ - handles_[0], (ae - ab * b) / aa);
  }
  double left = 0.0;
  for (int i = 0; i < kSamples; ++i) {
    left = max(left, std::fabs(samples_[i].error + dot(effects[i], {a, b})));
  }
  handles_[0] += a;
  handles_[1] += b;
  return left <= hopeless && handles_[0] + handles_[1] <= kMaxHandles * chord_;
}

bool ParallelFit::fit(ParallelStretch const& stretch) {
  prepare(stretch);
  for (int round = 0;; ++round) {
    place(stretch);
    double const worst = measure();
    if (farthestStep_ <= kSettled && worst <= tolerance_ && keepsTolerance(stretch)) return true;
    bool const isLast = round + 1 == kMaxRounds;
    if (isLast || !improveHandles(stretch, kHopeless[round] * tolerance_)) return false;
  }
}

}  // namespace crv::internal
