#include "crv/accurate/internal/segmentParallel.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/parallelFit.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/smoothParts.h"
#include "crv/accurate/internal/tangent.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace crv::internal {

namespace {

// The cosine of the largest turn for which one cubic is tried, about 100 degrees.
constexpr double kLargestTurn = -0.2;

// The sine of a turn: a stretch that turns less is split in the middle, one that turns more at half
// its turn.
constexpr double kSmallTurn = 0.3;

// Parameter, relative to a stretch: it is not split nearer than this to its ends.
constexpr double kFirstSplit = 0x1p-10;

// Guards: the depth of splitting, and the number of pieces. They are reached only if rounding, or a
// tolerance below it, keeps fits from succeeding.
constexpr int kMostSplits = 64;
constexpr std::size_t kMostPieces = 1000;

// The factor by which the tolerance is enlarged where a limit on pieces or on the work
// of bounding errors is reached.
constexpr double kCoarser = 16.0;

// The parameters at which the curvature equals 1 / distance are isolated by halving, down to
// intervals of 2^-kFinestPart; from intervals of 2^-kCoarsestRoot on, a change of sign is refined
// by bisection.
constexpr int kFinestPart = 10;
constexpr int kCoarsestRoot = 3;
constexpr int kRootHalvings = 40;

// The share of an interval by which its ends are moved inwards, because the curvature is not
// defined at an end whose handle has no length.
constexpr double kEndShare = 0x1p-20;

// Parameter: parallels of stretches shorter than this are left out.
constexpr double kShortest = 0x1p-30;

// How often the parallel or the evolute of a reversed stretch is halved.
constexpr int kMostHalvings = 6;

class SegmentParallel {
 public:
  SegmentParallel(SmoothPart const& part, double distance, double tolerance, Point const& start,
                  Point const& end, std::vector<ParallelPiece>& pieces,
                  std::vector<ReversedStretch>* reversed)
      : source_(part.c),
        edges_(part.c),
        distance_(distance),
        tolerance_(tolerance),
        start_(start),
        end_(end),
        in_(part.in),
        out_(part.out),
        axis_(part.axis),
        fit_(part.c, distance, tolerance),
        pieces_(pieces),
        reversed_(reversed),
        most_(pieces.size() + kMostPieces) {}

  /// Returns false if the number of pieces, or the work of bounding errors, reached its limit.
  bool append();

 private:
  using Range = std::pair<double, double>;

  /// A point of the parallel and its centre of curvature, with their velocities.
  struct Fold {
    Point parallel, parallelVelocity, centre, centreVelocity;
  };

  bool isStopped() const { return pieces_.size() >= most_ || fit_.isExhausted(); }
  bool appendStraight();
  std::vector<Range> findReversed() const;
  void findReversed(Edges const& edges, double t0, double t1, int depth,
                    std::vector<Range>& found) const;
  void addReversed(double t0, double t1, std::vector<Range>& found) const;
  bool isReversed(double t) const;
  Point direction(double t) const;
  ParallelStretch stretchBetween(double t0, double t1) const;
  void appendStretch(double t0, double t1, int depth);
  Fold foldAt(double t) const;
  template <class At>
  void appendPath(double t0, double t1, Point const& start, Point const& end, int halvings,
                  At const& at, std::vector<Cubic>& path) const;
  void appendReversed(double t0, double t1);

  Cubic const& source_;
  Edges const edges_;
  double const distance_;
  double const tolerance_;
  Point const start_, end_;
  Point const in_, out_;  // the directions at the ends
  std::optional<Point> const axis_;
  ParallelFit fit_;
  std::vector<ParallelPiece>& pieces_;
  std::vector<ReversedStretch>* const reversed_;
  std::size_t const most_;
};

/// If the segment is straight, and its translation keeps the tolerance, appends the translation and
/// returns true. The translation of a tiny segment may not keep it, because rounding errors turn
/// the directions at the ends away from the axis.
bool SegmentParallel::appendStraight() {
  if (!axis_) return false;
  Point const normal = leftOf(edges_.alongSum(*axis_) < 0.0 ? Point{} - *axis_ : *axis_);
  Point const move = normal * distance_;
  Point const first = start_ - source_.start(), last = end_ - source_.end();
  double const farthest = std::sqrt(max(dot(first, first), dot(last, last)));
  double const nearest = min(dot(first, normal), dot(last, normal));
  double const error = max(farthest - distance_, distance_ - nearest);
  if (error > tolerance_) return false;
  pieces_.push_back(
      {{{start_, source_.p[1] + move, source_.p[2] + move, end_}}, 0.0, 1.0, max(0.0, error)});
  return true;
}

bool SegmentParallel::isReversed(double t) const {
  Point const first = derivativeAt(source_, t);
  Point const second = secondDerivativeAt(source_, t);
  double const squaredSpeed = dot(first, first);
  return distance_ * cross(first, second) > squaredSpeed * std::sqrt(squaredSpeed);
}

/// Finds the stretches with a centre of curvature on the parallel's side that is nearer than the
/// distance; the parallel runs backwards there. The segment turns one way between its inflections.
std::vector<SegmentParallel::Range> SegmentParallel::findReversed() const {
  std::vector<Range> found;
  double inflections[2];
  int const count = edges_.turning().roots(inflections);
  double from = 0.0;
  for (int i = 0; i <= count; ++i) {
    double const to = i < count ? inflections[i] : 1.0;
    findReversed(count == 0 ? edges_ : edges_.stretch(from, to), from, to, 0, found);
    from = to;
  }
  return found;
}

void SegmentParallel::findReversed(Edges const& edges, double t0, double t1, int depth,
                                   std::vector<Range>& found) const {
  Quadratic const turning = edges.turning();
  double const a = distance_ * turning.c0, b = distance_ * turning.c1, c = distance_ * turning.c2;
  double const most = max(a, max(b, c));
  if (most <= 0.0) return;
  // The speed is 3 times, and the cross product of the derivatives 18 times, the value computed
  // from the edges.
  Point const chord = edges.e[0] + edges.e[1] + edges.e[2];
  double const length = std::sqrt(dot(chord, chord));
  double const slowest = length > 0.0 ? edges.leastAlong(chord) / length : 0.0;
  if (slowest > 0.0 && 1.5 * slowest * slowest * slowest >= most) return;
  double const fastest = edges.largest();
  if (1.5 * fastest * fastest * fastest < min(a, min(b, c))) return addReversed(t0, t1, found);
  double const middle = 0.5 * (t0 + t1);
  if (depth == kFinestPart) {
    // The curvature peaks where the velocity, which is almost linear here, is least.
    Point const change = edges.e[2] - edges.e[0];
    double const share = -dot(edges.e[0], change) / dot(change, change);
    double const peak = share > 0.0 && share < 1.0 ? t0 + (t1 - t0) * share : middle;
    addReversed(t0, peak, found);
    return addReversed(peak, t1, found);
  }
  if (depth >= kCoarsestRoot &&
      isReversed(t0 + kEndShare * (t1 - t0)) != isReversed(t1 - kEndShare * (t1 - t0))) {
    return addReversed(t0, t1, found);
  }
  findReversed(edges.stretch(0.0, 0.5), t0, middle, depth + 1, found);
  findReversed(edges.stretch(0.5, 1.0), middle, t1, depth + 1, found);
}

/// Adds the reversed part of a stretch inside which at most one end of a reversed part lies.
void SegmentParallel::addReversed(double t0, double t1, std::vector<Range>& found) const {
  double const inside = kEndShare * (t1 - t0);
  bool const atStart = isReversed(t0 + inside), atEnd = isReversed(t1 - inside);
  if (!atStart && !atEnd) return;
  double lo = t0, hi = t1;
  for (int i = 0; i < kRootHalvings && atStart != atEnd; ++i) {
    double const t = 0.5 * (lo + hi);
    (isReversed(t) == atStart ? lo : hi) = t;
  }
  double const root = 0.5 * (lo + hi);
  double const from = atStart ? t0 : root, to = atEnd ? t1 : root;
  if (!found.empty() && found.back().second == from) {
    found.back().second = to;
  } else {
    found.push_back({from, to});
  }
}

ParallelStretch SegmentParallel::stretchBetween(double t0, double t1) const {
  ParallelStretch s;
  s.t0 = t0;
  s.t1 = t1;
  s.startTangent = t0 == 0.0 ? in_ : direction(t0);
  s.endTangent = t1 == 1.0 ? out_ : direction(t1);
  s.start = t0 == 0.0 ? start_ : pointAt(source_, t0) + leftOf(s.startTangent) * distance_;
  s.end = t1 == 1.0 ? end_ : pointAt(source_, t1) + leftOf(s.endTangent) * distance_;
  return s;
}

/// The direction of travel at an inner parameter.
Point SegmentParallel::direction(double t) const {
  Point const velocity = derivativeAt(source_, t);
  return largestPart(velocity) > 0.0 ? unitVector(velocity) : in_;
}

/// The parameter, relative to the stretch, at which a stretch that one cubic cannot follow is
/// split: its inflection, or half its turn.
double splitOf(Edges const& edges, Point const& startTangent, Point const& endTangent) {
  double t[2];
  if (edges.turning().roots(t) == 1 && t[0] > 0.125 && t[0] < 0.875) return t[0];
  double const sine = cross(startTangent, endTangent), cosine = dot(startTangent, endTangent);
  if (std::fabs(sine) < kSmallTurn && cosine > 0.0) return 0.5;
  Point const bisector =
      cosine > -0.5 ? startTangent + endTangent : leftOf(startTangent - endTangent);
  int const count = edges.across(bisector).roots(t);
  for (int i = 0; i < count; ++i) {
    if (t[i] > kFirstSplit && t[i] < 1.0 - kFirstSplit) return t[i];
  }
  return 0.5;
}

void SegmentParallel::appendStretch(double t0, double t1, int depth) {
  ParallelStretch const stretch = stretchBetween(t0, t1);
  Edges const edges = edges_.stretch(t0, t1);
  Point const bisector = stretch.startTangent + stretch.endTangent;
  bool const turnsLittle = dot(stretch.startTangent, stretch.endTangent) > kLargestTurn &&
                           edges.leastAlong(bisector) >= 0.0;
  if (turnsLittle && fit_.fit(stretch)) {
    pieces_.push_back({fit_.cubic(), t0, t1, fit_.error()});
    return;
  }
  double const middle = t0 + (t1 - t0) * splitOf(edges, stretch.startTangent, stretch.endTangent);
  bool const isOver = depth == kMostSplits || isStopped();
  if (isOver || !(middle > t0 && middle < t1)) {
    fit_.connect(stretch);
    pieces_.push_back({fit_.cubic(), t0, t1, fit_.error()});
    return;
  }
  appendStretch(t0, middle, depth + 1);
  appendStretch(middle, t1, depth + 1);
}

/// The point of the parallel and the centre of curvature at a parameter inside a reversed stretch.
SegmentParallel::Fold SegmentParallel::foldAt(double t) const {
  Point const v = derivativeAt(source_, t), a = secondDerivativeAt(source_, t);
  Point const normal = leftOf(direction(t)), place = pointAt(source_, t);
  double const squaredSpeed = dot(v, v), speed = std::sqrt(squaredSpeed), turning = cross(v, a);
  double const radius = turning > 0.0 ? min(distance_, squaredSpeed * speed / turning) : 0.0;
  double change = 0.0;  // of the radius
  if (turning > 0.0) {
    Point const third = (source_.p[3] - source_.p[0] - (source_.p[2] - source_.p[1]) * 3.0) * 6.0;
    change = (3.0 * speed * dot(v, a) - radius * cross(v, third)) / turning;
  }
  double const slowing = speed > 0.0 ? turning * distance_ / (squaredSpeed * speed) : 0.0;
  return {place + normal * distance_, v * (1.0 - slowing), place + normal * radius,
          normal * change};
}

/// Appends cubics that follow a path by its velocities at the ends, halved until three points of
/// each are within the tolerance.
template <class At>
void SegmentParallel::appendPath(double t0, double t1, Point const& start, Point const& end,
                                 int halvings, At const& at, std::vector<Cubic>& path) const {
  double const width = t1 - t0, inside = kEndShare * width, third = width * (1.0 / 3.0);
  Cubic const c = {
      {start, start + at(t0 + inside).second * third, end - at(t1 - inside).second * third, end}};
  double error = 0.0;
  for (double const share : {0.25, 0.5, 0.75}) {
    error = max(error, internal::distance(pointAt(c, share), at(t0 + share * width).first));
  }
  if (error <= tolerance_) return path.push_back(c);
  // Where the curvature changes suddenly, the velocities may lead the cubic far away.
  if (halvings == kMostHalvings) return path.push_back(straight(start, end));
  double const middle = 0.5 * (t0 + t1);
  Point const between = at(middle).first;
  appendPath(t0, middle, start, between, halvings + 1, at, path);
  appendPath(middle, t1, between, end, halvings + 1, at, path);
}

void SegmentParallel::appendReversed(double t0, double t1) {
  ParallelStretch const s = stretchBetween(t0, t1);
  ReversedStretch reversed = {t0, t1, {}, {}};
  auto const parallelAt = [this](double t) {
    Fold const fold = foldAt(t);
    return std::pair(fold.parallel, fold.parallelVelocity);
  };
  auto const centreAt = [this](double t) {
    Fold const fold = foldAt(t);
    return std::pair(fold.centre, fold.centreVelocity);
  };
  appendPath(t0, t1, s.start, s.end, 0, parallelAt, reversed.parallel);
  appendPath(t0, t1, centreAt(t0).first, centreAt(t1).first, 0, centreAt, reversed.evolute);
  reversed_->push_back(std::move(reversed));
}

bool SegmentParallel::append() {
  if (appendStraight()) return true;
  double from = 0.0;
  for (Range const& range : findReversed()) {
    if (range.first - from > kShortest) appendStretch(from, range.first, 0);
    if (reversed_ != nullptr) appendReversed(range.first, range.second);
    from = range.second;
  }
  if (1.0 - from > kShortest) appendStretch(from, 1.0, 0);
  return !isStopped();
}

}  // namespace

void appendParallel(SmoothPart const& source, double distance, double tolerance, Point const& start,
                    Point const& end, std::vector<ParallelPiece>& pieces,
                    std::vector<ReversedStretch>* reversed) {
  std::size_t const first = pieces.size(),
                    firstReversed = reversed != nullptr ? reversed->size() : 0;
  for (;; tolerance *= kCoarser) {
    SegmentParallel parallel(source, distance, tolerance, start, end, pieces, reversed);
    if (parallel.append() || tolerance >= distance) return;
    pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(first), pieces.end());
    if (reversed != nullptr) {
      reversed->erase(reversed->begin() + static_cast<std::ptrdiff_t>(firstReversed),
                      reversed->end());
    }
  }
}

}  // namespace crv::internal
