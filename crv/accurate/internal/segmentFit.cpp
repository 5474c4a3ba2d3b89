#include "crv/accurate/internal/segmentFit.h"

#include "crv/accurate/internal/motion.h"

#include <cmath>

namespace crv::internal {

namespace {

// Rounds of solving and improving the feet; more rounds hardly ever make a fit succeed.
constexpr int kMaxRounds = 6;

// In squared tolerances, by round: a fit with a larger worst squared error hardly ever succeeds in
// later rounds.
constexpr double kHopeless[kMaxRounds] = {64.0, 16.0, 6.0, 3.0, 1.7, 1.0};

// The weight of an error along the tangent, relative to one along the normal. It keeps the ends of
// the curve from sliding along the samples.
constexpr double kTangentialWeight = 0.1;

// The weight, in samples, of the term that draws the control points towards even spacing.
constexpr double kPull = 0.005;

// The weight of the term that draws a free end towards its tangent: at least kLeastTurn samples,
// and kTurn times the number of samples. It gives the next segment a good start.
constexpr double kLeastTurn = 0.1;
constexpr double kTurn = 0.1;

// The length of the shortest handle, as a share of the path along the samples. With shorter handles
// the curve bends too sharply at the joint.
constexpr double kMinHandle = 0.05;

// Relative: a handle that was set to the shortest length may be shorter by rounding, up to this.
constexpr double kHandleRounding = 1e-6;

// Parameter: the longest step of a foot.
constexpr double kMaxFootStep = 0.2;

bool isZero(Point const& v) { return v.x == 0.0 && v.y == 0.0; }

double length(Point const& v) { return std::sqrt(dot(v, v)); }

/// The regularising terms: they draw the control points towards even spacing, and a free end
/// towards its tangent, which is zero or a unit vector. count is the number of samples.
ControlPointEquations pulls(Point const& tangent, double count) {
  double const turn = max(kLeastTurn, kTurn * count);
  // P1 is pulled towards a third of P3, P2 towards the middle between P1 and P3.
  constexpr double kP1[3] = {1.0, 0.0, -1.0 / 3.0};
  constexpr double kP2[3] = {-0.5, 1.0, -0.5};
  // The part of P3 - P2 across the tangent is pulled towards 0.
  constexpr double kP3[3] = {0.0, -1.0, 1.0};
  ControlPointEquations e{};
  for (int i = 0; i < 3; ++i) {
    for (int j = i; j < 3; ++j) {
      double const pull = kPull * (kP1[i] * kP1[j] + kP2[i] * kP2[j]);
      e.add(i, j, 1.0, pull, 0.0, pull);
      e.add(i, j, turn * kP3[i] * kP3[j], tangent.y * tangent.y, -tangent.x * tangent.y,
            tangent.x * tangent.x);
    }
  }
  return e;
}

}  // namespace

/// Stores the samples relative to the start, with parameters by chord length.
void SegmentFit::prepare(FitEnds const& ends, Point const* samples, std::size_t count) {
  ends_ = ends;
  ends_.end = ends.end - ends.start;
  pulls_ = pulls(ends.isEndGiven ? Point{0.0, 0.0} : ends.endTangent, static_cast<double>(count));
  samples_.resize(count);
  Point previous{0.0, 0.0};
  pathLength_ = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    Point const p = samples[i] - ends.start;
    pathLength_ += length(p - previous);
    samples_[i] = {p, pathLength_, 1.0, 0.0, 1.0, 0.0, 1.0};
    previous = p;
  }
  if (ends.isEndGiven) pathLength_ += length(ends_.end - previous);
  if (pathLength_ > 0.0) {
    for (Sample& s : samples_) s.t /= pathLength_;
  }
}

/// Moves every foot by one Newton step, but not past the foot before it, and estimates the errors
/// there. The foot of the last sample stays at a free end. Returns the worst squared distance along
/// the normal.
double SegmentFit::improveFeet() {
  Motion const motion(p1_, p2_, p3_);
  double worst = 0.0;
  double previous = 0.0;
  Sample const* const held = ends_.isEndGiven || samples_.empty() ? nullptr : &samples_.back();
  for (Sample& s : samples_) {
    double const t = s.t;
    Point const error = motion.place(t) - s.p;
    Point const first = motion.velocity(t);
    double const along = dot(error, first);
    double const squaredSpeed = dot(first, first);
    double const inverse = squaredSpeed > 0.0 ? 1.0 / squaredSpeed : 0.0;
    double step = 0.0;
    if (&s != held) {
      step = footStep(error, first, motion.acceleration(t));
      step = max(-kMaxFootStep, min(kMaxFootStep, step));
    }
    double const across = cross(first, error);
    double const moved = max(previous, min(1.0, t - step));
    // Where the foot was clamped, the remaining tangential error counts, too.
    double const left = along - squaredSpeed * (t - moved);
    s.squaredError = (across * across + left * left) * inverse;
    s.t = previous = moved;
    worst = max(worst, s.squaredError);
    double const w = s.weight * inverse;
    double const v = w * kTangentialWeight;
    s.mxx = w * first.y * first.y + v * first.x * first.x;
    s.mxy = (v - w) * first.x * first.y;
    s.myy = w * first.x * first.x + v * first.y * first.y;
  }
  return worst;
}

/// Increases the weights of samples with large errors, to reduce the worst error.
void SegmentFit::raiseWeights() {
  double const scale = 1.0 / (tolerance_ * tolerance_);
  double sum = 0.0;
  for (Sample& s : samples_) {
    s.weight *= 0.3 + min(s.squaredError * scale, 4.0);
    sum += s.weight;
  }
  double const norm = static_cast<double>(samples_.size()) / sum;
  for (Sample& s : samples_) s.weight *= norm;
}

/// The normal equations of the samples at their feet, with the regularising terms.
ControlPointEquations SegmentFit::equations() const {
  ControlPointEquations e = pulls_;
  for (Sample const& s : samples_) {
    double const t = s.t;
    double const r = 1.0 - t;
    double const w[3] = {3.0 * r * r * t, 3.0 * r * t * t, t * t * t};
    Point const p = {s.mxx * s.p.x + s.mxy * s.p.y, s.mxy * s.p.x + s.myy * s.p.y};
    for (int i = 0; i < 3; ++i) {
      for (int j = i; j < 3; ++j) e.add(i, j, w[i] * w[j], s.mxx, s.mxy, s.myy);
      e.b[2 * i] += w[i] * p.x;
      e.b[2 * i + 1] += w[i] * p.y;
    }
  }
  e.mirror();
  return e;
}

/// Finds the control points for the feet as they are.
bool SegmentFit::solve() {
  ControlPointEquations e = equations();
  bool const isStartTied = !isZero(ends_.startTangent);
  bool const isEndTied = ends_.isEndGiven && !isZero(ends_.endTangent);
  if (ends_.isEndGiven) {
    e.set(4, ends_.end.x);
    e.set(5, ends_.end.y);
  }
  Point const backwards = ends_.endTangent * -1.0;
  if (isEndTied) e.tie(2, ends_.end, backwards);
  if (isStartTied) e.tie(0, {0.0, 0.0}, ends_.startTangent);

  double x[6];
  if (!e.solve(x)) return false;
  double const shortest = kMinHandle * pathLength_;
  bool const isStartShort = isStartTied && x[0] < shortest;
  bool const isEndShort = isEndTied && x[2] < shortest;
  if (isStartShort) e.set(0, shortest);
  if (isEndShort) e.set(2, shortest);
  if (isStartShort || isEndShort) {
    if (!e.solve(x)) return false;
    x[0] = isStartTied ? max(x[0], shortest) : x[0];
    x[2] = isEndTied ? max(x[2], shortest) : x[2];
  }
  p1_ = isStartTied ? ends_.startTangent * x[0] : Point{x[0], x[1]};
  p2_ = isEndTied ? ends_.end + backwards * x[2] : Point{x[2], x[3]};
  p3_ = {x[4], x[5]};
  return true;
}

bool SegmentFit::areHandlesSound() const {
  double const shortest = kMinHandle * pathLength_ * (1.0 - kHandleRounding);
  double const longest = min(longestHandle_, pathLength_);
  double const first = dot(p1_, p1_);
  double const second = dot(p3_ - p2_, p3_ - p2_);
  return first >= shortest * shortest && second >= shortest * shortest &&
         first <= longest * longest && second <= longest * longest;
}

/// Computes the final control points and checks the distance of every sample from the result.
bool SegmentFit::settle(FitEnds const& ends, Point const* samples) {
  cubic_ = {{ends.start, ends.start + p1_, ends.start + p2_,
             ends.isEndGiven ? ends.end : ends.start + p3_}};
  double previous = 0.0;
  for (std::size_t i = 0; i < samples_.size(); ++i) {
    double const t = max(previous, samples_[i].t);
    if (!(squaredDistance(cubic_.point(t), samples[i]) <= tolerance_ * tolerance_)) return false;
    samples_[i].t = previous = t;
  }
  return true;
}

bool SegmentFit::fit(FitEnds const& ends, Point const* samples, std::size_t count) {
  prepare(ends, samples, count);
  double const squaredTolerance = tolerance_ * tolerance_;
  for (int round = 0; round < kMaxRounds; ++round) {
    if (!solve()) return false;
    double const worst = improveFeet();
    if (worst <= squaredTolerance && areHandlesSound() && settle(ends, samples)) return true;
    if (!(worst <= kHopeless[round] * squaredTolerance)) return false;
    if (round >= 2) raiseWeights();
  }
  return count == 0 && ends.isEndGiven && settle(ends, samples);
}

}  // namespace crv::internal
