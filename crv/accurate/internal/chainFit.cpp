#include "crv/accurate/internal/chainFit.h"

#include "crv/accurate/internal/motion.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// Samples that the first segment is tried with.
constexpr std::size_t kFirstRun = 8;

// The search for the longest run ends when the bracket is this part of the run.
constexpr std::size_t kRunPrecision = 16;

// The tangent at the end of a run is taken from this part of the run on both sides.
constexpr std::size_t kTangentReach = 8;

// Newton steps that take a foot to the nearest place.
constexpr int kFootSteps = 4;

// The longest handle, as a part of the diagonal of the box of all samples: longer ones swing out.
constexpr double kLongestHandle = 2.0;

// Where the fit may choose.
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

/// Appends segments from one point to another, which may be one beyond the last point for the
/// first one; they meet both exactly. Tangents are unit vectors, or zero where the fit may
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
      // A segment that ends at the next point always serves.
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

/// The number of points from next on that one segment can follow, by galloping and bisection;
/// best_ is the segment. left + 1 stands for all that are left and the end, 0 for not even one.
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

/// The direction of a closed stroke at its first point: of a segment that follows the places on
/// both sides, or else of the chord between the neighbours.
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

/// Follows Newton's method from a foot on, between two others, and keeps what is nearer.
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
