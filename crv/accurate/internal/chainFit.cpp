#include "crv/accurate/internal/chainFit.h"

#include "crv/accurate/internal/motion.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// The number of samples of the first trial.
constexpr std::size_t kFirstRun = 8;

// The search for the longest run ends when the bracket is no wider than the run divided by this.
constexpr std::size_t kRunPrecision = 16;

// The tangent at the end of a run is estimated from samples on both sides, up to the run's length
// divided by this.
constexpr std::size_t kTangentReach = 8;

// Newton steps that take a foot to the nearest place.
constexpr int kFootSteps = 4;

// The longest handle, as a multiple of the diagonal of the box of all samples. With longer handles
// the curve overshoots.
constexpr double kLongestHandle = 2.0;

// Stands for a tangent that the fit may choose.
constexpr Point kAnyTangent = {0.0, 0.0};

bool isZero(Point const& v) { return v.x == 0.0 && v.y == 0.0; }

Point unit(Point const& v) {
  double const length = std::sqrt(dot(v, v));
  return length > 0.0 ? v * (1.0 / length) : kAnyTangent;
}

double boxDiagonal(std::vector<Point> const& points) {
  Box box = {points[0].x, points[0].y, points[0].x, points[0].y};
  for (Point const& p : points) box = united(box, {p.x, p.y, p.x, p.y});
  return distance({box.minX, box.minY}, {box.maxX, box.maxY});
}

}  // namespace

ChainFit::ChainFit(std::vector<Point> const& points, double tolerance)
    : points_(points),
      trial_(tolerance, kLongestHandle * boxDiagonal(points)),
      best_(trial_),
      feet_(points.size()),
      guess_(kFirstRun) {}

void ChainFit::fitStroke(std::vector<std::size_t> const& corners, bool closed) {
  if (points_.size() == 1) {
    Point const& p = points_[0];
    segments_.push_back({{p, p, p, p}});
    return;
  }
  bool const isSeamSmooth = closed && (corners.empty() || corners.front() != 0);
  Point const seam = isSeamSmooth ? seamTangent() : kAnyTangent;
  Point startTangent = seam;
  std::size_t first = 0;
  for (std::size_t const corner : corners) {
    if (corner == 0) continue;
    fitStretch(first, corner, startTangent, kAnyTangent);
    startTangent = kAnyTangent;
    first = corner;
  }
  fitStretch(first, closed ? points_.size() : points_.size() - 1, startTangent, seam);
}

void ChainFit::improveFeet() {
  Place const end = {segments_.size() - 1, 1.0};
  for (std::size_t i = 1; i < points_.size(); ++i) {
    Place const before = feet_[i - 1];
    Place const after = i + 1 < feet_.size() ? feet_[i + 1] : end;
    improveFoot(i, feet_[i], before, after);
    // Beside a joint the nearest place may lie on the other segment.
    auto const [segment, t] = feet_[i];
    if (t == 1.0 && segment < after.segment) improveFoot(i, {segment + 1, 0.0}, before, after);
    if (t == 0.0 && segment > before.segment) improveFoot(i, {segment - 1, 1.0}, before, after);
  }
}

double ChainFit::distance(std::size_t point) const {
  return std::sqrt(squaredError(point, feet_[point]));
}

/// Appends segments that run exactly from one point to another; last may be the number of points,
/// for the first point of a closed stroke. Tangents are unit vectors, or zero where the fit may
/// choose.
void ChainFit::fitStretch(std::size_t first, std::size_t last, Point const& startTangent,
                          Point const& endTangent) {
  FitEnds ends{points_[first], startTangent, false, points_[last % points_.size()], endTangent};
  feet_[first] = {segments_.size(), 0.0};
  std::size_t next = first + 1;
  for (bool isDone = false; !isDone;) {
    std::size_t const left = last - next;  // points before the end
    std::size_t const run = longestRun(ends, next, left);
    isDone = run > left;
    if (run == 0) {
      // A segment that ends at the next point always fits.
      best_.fit({ends.start, ends.startTangent, true, points_[next], kAnyTangent}, nullptr, 0);
      feet_[next++] = {segments_.size(), 1.0};
    }
    for (std::size_t i = 0; i < std::min(run, left); ++i) {
      feet_[next++] = {segments_.size(), best_.foot(i)};
    }
    Cubic const& c = best_.cubic();
    segments_.push_back(c);
    ends.start = c.end();
    ends.startTangent = unit(c.p[3] - c.p[2]);
  }
  if (last < points_.size()) feet_[last] = {segments_.size() - 1, 1.0};
}

/// Stores in best_ the segment that follows the longest run of points from next on, found by
/// galloping and bisection, and returns the number of points. left + 1 means all remaining points
/// and the end of the stretch; 0 means that not even one point can be followed.
std::size_t ChainFit::longestRun(FitEnds const& ends, std::size_t next, std::size_t left) {
  std::size_t const most = left + 1;
  std::size_t fits = 0;
  std::size_t fails = most + 1;
  std::size_t count = std::min(guess_, most);
  while (count > fits && count < fails) {
    (tryRun(ends, next, left, count) ? fits : fails) = count;
    if (fails > most) {
      count = std::min(fits + fits / 3 + 1, most);
    } else if (fails - fits > 1 + fits / kRunPrecision) {
      count = fits + (fails - fits) / 2;
    }
  }
  if (fits > 0) guess_ = fits;
  return fits;
}

bool ChainFit::tryRun(FitEnds ends, std::size_t next, std::size_t left, std::size_t count) {
  ends.isEndGiven = count > left;
  if (!ends.isEndGiven) ends.endTangent = tangentBehind(next, left, count);
  bool const fits = trial_.fit(ends, points_.data() + next, std::min(count, left));
  if (fits) std::swap(trial_, best_);
  return fits;
}

/// The direction of the stroke at the end of a run, halfway between the chords to points before
/// and behind it.
Point ChainFit::tangentBehind(std::size_t next, std::size_t left, std::size_t count) const {
  std::size_t const last = next + count - 1;
  std::size_t const reach =
      std::max<std::size_t>(1, std::min(count / kTangentReach, left + 1 - count));
  Point const in = points_[last] - points_[last - reach];
  Point const out = points_[(last + reach) % points_.size()] - points_[last];
  return unit(unit(in) + unit(out));
}

/// The direction of a closed stroke at its first point: that of a segment fitted to the points on
/// both sides, or of the chord between the neighbours if none fits.
Point ChainFit::seamTangent() {
  std::size_t const n = points_.size();
  std::size_t const run = longestRun({points_[0], kAnyTangent, false, {}, {}}, 1, n - 1);
  std::size_t const reach = std::max<std::size_t>(1, std::min(run, n - 1) / 2);
  std::vector<Point> around;
  for (std::size_t i = n - reach; i <= n + reach; ++i) around.push_back(points_[i % n]);
  Point tangent = kAnyTangent;
  if (trial_.fit({around[0], kAnyTangent, false, {}, {}}, &around[1], 2 * reach)) {
    tangent = unit(motionOf(trial_.cubic()).velocity(trial_.foot(reach - 1)));
  }
  if (isZero(tangent)) tangent = unit(points_[1] - points_[n - 1]);
  return isZero(tangent) ? unit(points_[1] - points_[0]) : tangent;
}

double ChainFit::squaredError(std::size_t point, Place const& foot) const {
  return squaredDistance(segments_[foot.segment].point(foot.t), points_[point]);
}

/// Improves a foot by Newton's method, between the feet before and after it, and keeps the nearest
/// point found.
void ChainFit::improveFoot(std::size_t point, Place foot, Place const& before, Place const& after) {
  Cubic const& c = segments_[foot.segment];
  Motion const motion = motionOf(c);
  double const lowest = before.segment == foot.segment ? before.t : 0.0;
  double const highest = after.segment == foot.segment ? after.t : 1.0;
  double best = squaredError(point, feet_[point]);
  for (int i = 0; i < kFootSteps; ++i) {
    Point const error = c.point(foot.t) - points_[point];
    double const step = footStep(error, motion.velocity(foot.t), motion.acceleration(foot.t));
    foot.t = std::max(lowest, std::min(highest, foot.t - step));
    double const d = squaredError(point, foot);
    if (!(d < best)) return;
    best = d;
    feet_[point] = foot;
  }
}

}  // namespace crv::internal
