#include "crv/accurate/internal/rawOutline.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/gaps.h"
#include "crv/accurate/internal/joins.h"
#include "crv/accurate/internal/parting.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentParallel.h"
#include "crv/accurate/internal/smoothParts.h"
#include "crv/accurate/internal/tangent.h"

#include <cmath>

namespace crv::internal {

namespace {

// Curve units: the magnitude of the coordinates.
constexpr double kMagnitude = 1.0;

// The share of the tolerance that the error at a joint without a join may use.
constexpr double kSmoothShare = 1.0 / 16.0;

// The share of a segment's chord by which its parallel may be extended or shortened to meet the
// next one.
constexpr double kSmoothReach = 1.0 / 32.0;

// Parameter: the search for the crossing of two parallels at an inner corner starts this far from
// their ends, where the speed may be zero.
constexpr double kCrossing = 0x1p-4;

// The least speed of a parallel, relative to that of the source, where it may be extended or
// shortened.
constexpr double kLeastSpeed = 0.25;

// Curve units: ends of parallels this near to each other are always joined without a segment.
constexpr double kSamePoint = 0x1p-46;

bool areSame(Point const& p, Point const& q) { return p.x == q.x && p.y == q.y; }

/// The curvature at an end of a cubic; infinite or NaN if the handle there has no length.
double curvature(Cubic const& c, double t) {
  Point const velocity = derivativeAt(c, t);
  double const squaredSpeed = dot(velocity, velocity);
  return cross(velocity, secondDerivativeAt(c, t)) / (squaredSpeed * std::sqrt(squaredSpeed));
}

/// Whether the parallel may be extended or shortened along its tangent at an end of a part.
bool isGentleAt(SmoothPart const& part, double t, double distance, double gap, double tolerance) {
  if (gap > kSmoothReach * crv::internal::distance(part.c.start(), part.c.end())) return false;
  double const bend = curvature(part.c, t);
  double const speed = 1.0 - bend * distance;
  return speed >= kLeastSpeed && std::fabs(bend) * gap * gap <= kSmoothShare * tolerance * speed;
}

/// Whether two cubics, the second of which ends where the first starts, form a simple loop with the
/// line from the first to the second, and run clockwise around it.
bool isLoop(Cubic const& first, Cubic const& second) {
  Point const link = second.start() - first.end();
  auto const isRight = [&](Point const& p) { return cross(link, p - first.end()) <= 0.0; };
  bool const isConvex = isRight(first.p[1]) && isRight(first.p[2]) && isRight(second.p[1]) &&
                        isRight(second.p[2]) && cross(link, first.start() - first.end()) < 0.0;
  return isConvex && partAtStart(first, reversed(second), 0.0);
}

std::vector<SmoothPart> reversed(std::vector<SmoothPart> const& parts) {
  std::vector<SmoothPart> back;
  back.reserve(parts.size());
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    back.push_back({reversed(part->c), part->segment, part->t1, part->t0, Point{} - part->out,
                    Point{} - part->in, part->axis});
  }
  return back;
}

Place placeOn(SmoothPart const& part, double t) {
  return {part.segment, t == 1.0 ? part.t1 : part.t0 + t * (part.t1 - part.t0)};
}

}  // namespace

/// The transition between the parallels of two parts. from and to are their ends, which are equal
/// if they need no join.
struct RawOutline::Turn {
  Corner corner;
  Point from, to;
  Place before, behind;
};

RawOutline::Turn RawOutline::turnBetween(SmoothPart const& before, SmoothPart const& behind) const {
  Turn turn;
  turn.corner = {behind.c.start(), before.out, behind.in};
  turn.before = {before.segment, before.t1};
  turn.behind = {behind.segment, behind.t0};
  Corner const& corner = turn.corner;
  turn.from = before.c.end() + leftOf(corner.in) * distance_;
  turn.to = corner.joint + leftOf(corner.out) * distance_;
  double const cosine = dot(corner.in, corner.out);
  if (!(cosine > 0.0)) return turn;
  double const tangent = std::fabs(cross(corner.in, corner.out)) / (1.0 + cosine);
  double const gap = distance_ * tangent;
  double const tolerance = options_.tolerance;
  bool const isSmooth = 0.5 * gap * tangent <= kSmoothShare * tolerance &&
                        isGentleAt(before, 1.0, distance_, gap, tolerance) &&
                        isGentleAt(behind, 0.0, distance_, gap, tolerance);
  if (isSmooth || gap <= kSamePoint) {
    Point const middle = leftOf(corner.in) + leftOf(corner.out);
    turn.from = turn.to = corner.joint + middle * (distance_ / (1.0 + cosine));
  }
  return turn;
}

RawOutline::RawOutline(Chain const& curve, double distance, OffsetOptions const& options,
                       RawSides sides, Cap cap)
    : magnitude_(curve.magnitude()),
      distance_(distance),
      options_(options),
      sides_(sides),
      cap_(cap) {
  std::size_t const n = curve.size();
  segments_.reserve((sides == RawSides::left ? 2 : 4) * n);
  std::vector<std::size_t> const gaps = gapsOf(curve, kMagnitude);
  isSwept_ = options.join != Join::round || (cap != Cap::round && !gaps.empty());
  if (gaps.empty()) addRun(curve, 0, n, true);
  for (std::size_t i = 0; i < gaps.size(); ++i) {
    std::size_t const before = i == 0 ? gaps.back() : gaps[i - 1];
    addRun(curve, (before + 1) % n, (gaps[i] + n - before - 1) % n + 1, false);
  }
  addBackward();
}

bool RawOutline::isWhole(Chain const& curve) { return gapsOf(curve, kMagnitude).empty(); }

/// Adds the outline of segments without gaps between them, which may continue across the seam.
void RawOutline::addRun(Chain const& curve, std::size_t first, std::size_t count, bool isClosed) {
  Parts parts;
  parts.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t const k = (first + i) % curve.size();
    if (!isPoint(curve.segments[k])) appendSmoothParts(curve.segments[k], k, magnitude_, parts);
  }
  std::size_t const begin = segments_.size();
  if (parts.empty()) {
    if (sides_ == RawSides::left) return;
    Point const p = curve.segments[first].start();
    pen_ = p + Point{0.0, distance_};
    addCap(p, {1.0, 0.0});
    addCap(p, {-1.0, 0.0});
    return closeFrom(begin);
  }
  if (isClosed) {
    addSide(parts, true, true);
    closeFrom(begin);
    if (sides_ == RawSides::left) return;
    std::size_t const middle = segments_.size();
    addSide(reversed(parts), true, false);
    return closeFrom(middle);
  }
  addSide(parts, false, true);
  addCap(parts.back().c.end(), parts.back().out);
  Parts const back = reversed(parts);
  addSide(back, false, false);
  addCap(back.back().c.end(), back.back().out);
  closeFrom(begin);
}

/// Adds the parallel to the left of consecutive parts.
void RawOutline::addSide(Parts const& parts, bool isClosed, bool isWanted) {
  std::size_t const n = parts.size();
  Turn const around = turnBetween(parts.back(), parts.front());
  Turn before = around;
  if (!isClosed) {
    before.from = before.to = parts[0].c.start() + leftOf(parts[0].in) * distance_;
  }
  if (isClosed || isWanted) pen_ = before.from;
  goTo(before.from, false, {}, {});
  if (isClosed) addTurn(before, isWanted);
  for (std::size_t i = 0; i < n; ++i) {
    bool const isLast = i + 1 == n;
    Turn behind = isLast ? around : turnBetween(parts[i], parts[i + 1]);
    if (isLast && !isClosed) {
      behind.from = parts[i].c.end() + leftOf(parts[i].out) * distance_;
    }
    addPart(parts[i], before.to, behind.from, isWanted);
    goTo(behind.from, isWanted, behind.before, behind.before);
    if (!isLast) addTurn(behind, isWanted);
    before = behind;
  }
}

void RawOutline::addTurn(Turn const& turn, bool isWanted) {
  if (areSame(turn.from, turn.to)) return;
  if (!turn.corner.isOuter()) {
    if (isSwept_) goTo(turn.corner.joint, isWanted, turn.before, turn.behind);
    innerLink_ = segments_.size();
    return goTo(turn.to, isWanted, turn.before, turn.behind);
  }
  OffsetOptions options = options_;
  if (sides_ == RawSides::leftAmongBoth && !isWanted) options.join = Join::round;
  join_.clear();
  auto const error = appendJoin(turn.corner, distance_, options, turn.from, turn.to, join_);
  addJoin(error, isWanted, turn.before, turn.behind);
}

/// Leaves out a link at an inner corner if it closes a simple loop with the parallels on both
/// sides, which then end where they cross. The loop runs clockwise: all it does is lower a winding
/// number that is already below that of the outside.
void RawOutline::cutLoop(std::size_t link) {
  if (link == 0 || segments_[link - 1].next != link) return;
  RawSegment &before = segments_[link - 1], &behind = segments_[link + 1];
  bool const isBetween = before.kind == RawKind::parallel && behind.kind == RawKind::parallel &&
                         segments_[link].kind == RawKind::link;
  double s = 1.0 - kCrossing, u = kCrossing;
  if (!isBetween || !SegmentPair{before.c, behind.c}.findCrossing(s, u)) return;
  bool const isInside = s > before.s0 && s < 1.0 && u > 0.0 && u < 1.0;
  if (!isInside || !isLoop(part(before.c, s, 1.0), part(behind.c, 0.0, u))) return;
  before.s1 = s;
  behind.s0 = u;
  segments_.erase(segments_.begin() + static_cast<std::ptrdiff_t>(link));
  segments_.back().next = segments_.size();
}

void RawOutline::addPart(SmoothPart const& part, Point const& from, Point const& to,
                         bool isWanted) {
  pieces_.clear();
  reversed_.clear();
  appendParallel(part, distance_, options_.tolerance, from, to, pieces_,
                 isSwept_ ? &reversed_ : nullptr);
  auto reversed = reversed_.begin();
  for (ParallelPiece const& piece : pieces_) {
    for (; reversed != reversed_.end() && reversed->t0 < piece.t0; ++reversed) {
      addReversed(*reversed, part, isWanted);
    }
    Place const first = placeOn(part, piece.t0), last = placeOn(part, piece.t1);
    goTo(piece.c.start(), isWanted, first, first);
    add({piece.c, RawKind::parallel, isWanted, true, first, last, 0, piece.error});
    if (segments_.size() == innerLink_ + 2) cutLoop(innerLink_);
  }
  for (; reversed != reversed_.end(); ++reversed) addReversed(*reversed, part, isWanted);
}

/// Adds the centres of curvature of a stretch along which the parallel runs backwards, and notes
/// the chain around what lies between them and the parallel.
void RawOutline::addReversed(ReversedStretch const& stretch, SmoothPart const& part,
                             bool isWanted) {
  Place const first = placeOn(part, stretch.t0), last = placeOn(part, stretch.t1);
  std::vector<Cubic> const &parallel = stretch.parallel, &evolute = stretch.evolute;
  auto const linkOf = [&](Cubic const& c) {
    return RawSegment{c, RawKind::link, isWanted, false, first, last, 0, 0.0};
  };
  goTo(parallel.front().start(), isWanted, first, first);
  goTo(evolute.front().start(), isWanted, first, last);
  for (Cubic const& c : evolute) add(linkOf(c));
  goTo(parallel.back().end(), isWanted, first, last);
  std::size_t const begin = backward_.size();
  for (Cubic const& c : evolute) backward_.push_back(linkOf(c));
  backward_.push_back(linkOf(straight(evolute.back().end(), parallel.back().end())));
  for (auto c = parallel.rbegin(); c != parallel.rend(); ++c) {
    backward_.push_back(linkOf(reversed(*c)));
  }
  backward_.push_back(linkOf(straight(parallel.front().start(), evolute.front().start())));
  for (std::size_t i = begin; i < backward_.size(); ++i) backward_[i].next = i + 1 - begin;
  backward_.back().next = 0;
}

/// Adds the noted chains, in which next counts from the chain's first segment.
void RawOutline::addBackward() {
  std::size_t begin = segments_.size();
  for (RawSegment const& segment : backward_) {
    bool const isLast = segment.next == 0;
    segments_.push_back(segment);
    segments_.back().next += begin;
    if (isLast) begin = segments_.size();
  }
}

void RawOutline::addCap(Point const& end, Point const& direction) {
  join_.clear();
  auto const error = appendCap(end, direction, distance_, cap_, options_.tolerance, join_);
  addJoin(error, false, {}, {});
}

void RawOutline::addJoin(std::optional<double> error, bool isWanted, Place const& from,
                         Place const& to) {
  for (Cubic const& c : join_) {
    add({c, RawKind::join, isWanted, error.has_value(), from, to, 0, error.value_or(0.0)});
  }
}

/// Adds a line to a point, unless the outline ends there already. The places are those of a joint.
void RawOutline::goTo(Point const& p, bool isWanted, Place const& from, Place const& to) {
  if (areSame(pen_, p)) return;
  add({straight(pen_, p), RawKind::link, isWanted, false, from, to, 0, 0.0});
}

void RawOutline::add(RawSegment const& segment) {
  segments_.push_back(segment);
  segments_.back().next = segments_.size();
  pen_ = segment.c.end();
}

/// Closes the chain that begins with the given segment.
void RawOutline::closeFrom(std::size_t first) {
  if (first == segments_.size()) return;
  goTo(segments_[first].c.start(), false, {}, {});
  segments_.back().next = first;
}

}  // namespace crv::internal
