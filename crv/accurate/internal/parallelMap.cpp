#include "crv/accurate/internal/parallelMap.h"

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/tangent.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace crv::internal {

namespace {

// Curve units: the magnitude of the coordinates.
constexpr double kMagnitude = 1.0;

// Curve units: points this near to each other differ by no more than rounding errors.
constexpr double kRoundingReach = 0x1p-46;

// Newton steps for the parameter at which a normal crosses a cubic near one of its ends.
constexpr int kEndSteps = 4;

// Parameter: the largest distance of that crossing from the end.
constexpr double kFarthestEnd = 0.125;

// In units of the distance of that crossing from the end: the part of the cubic next to the end
// that is stretched or compressed, so that the end of the cubic belongs to the end of the source.
constexpr double kStretched = 4.0;

// Halvings that exhaust an interval of parameters.
constexpr int kMostHalvings = 54;

/// The zero of a decreasing function in [from, to], by bisection; an end itself if the zero is as
/// near to it as the halvings can tell.
template <class Function>
double whereItFalls(double from, double to, Function const& function) {
  double lo = from, hi = to;
  for (int i = 0; i < kMostHalvings; ++i) {
    double const middle = 0.5 * (lo + hi);
    (function(middle) > 0.0 ? lo : hi) = middle;
  }
  if (lo == from) return from;
  return hi == to ? to : 0.5 * (lo + hi);
}

Point directionAt(Cubic const& c, double t) {
  if (t == 0.0) return startDirection(c);
  if (t == 1.0) return endDirection(c);
  Point const velocity = derivativeAt(c, t);
  // At a cusp the direction of travel follows from the third derivative.
  return largestPart(velocity) > 0.0 ? velocity : c.p[3] - c.p[0] - (c.p[2] - c.p[1]) * 3.0;
}

/// Maps [0, 1] to an interval whose ends differ a little from 0 and 1, and changes only the
/// neighbourhoods of the ends.
class Stretching {
 public:
  Stretching(double from, double to)
      : from_(from),
        to_(to),
        first_(kStretched * std::fabs(from)),
        last_(1.0 - kStretched * std::fabs(1.0 - to)) {}

  double from() const { return from_; }
  double to() const { return to_; }

  double forth(double s) const {
    if (s < first_) return from_ + (first_ - from_) * (s / first_);
    if (s > last_) return to_ - (to_ - last_) * ((1.0 - s) / (1.0 - last_));
    return s;
  }
  double back(double x) const {
    if (x < first_) return first_ * ((x - from_) / (first_ - from_));
    if (x > last_) return 1.0 - (1.0 - last_) * ((to_ - x) / (to_ - last_));
    return x;
  }

 private:
  double from_, to_;
  double first_, last_;  // between them nothing changes
};

class ParallelMap : public GxBezierCurvePositionMapBase {
 public:
  ParallelMap(std::shared_ptr<ParallelSource const> source, std::vector<ParallelOrigin> segments,
              bool isClosed)
      : source_(std::move(source)), segments_(std::move(segments)), isClosed_(isClosed) {
    index_.reserve(segments_.size());
    for (std::size_t k = 0; k < segments_.size(); ++k) {
      ParallelOrigin const& origin = segments_[k];
      index_.push_back({origin.from.segment, k});
      if (origin.to.segment != origin.from.segment) index_.push_back({origin.to.segment, k});
    }
    std::sort(index_.begin(), index_.end());
  }

  int mapPosition(Position& out, Position const& in) const override {
    Chain const& chain = source_->chain();
    std::optional<Place> place = chain.placeOf(in);
    if (!place) return -1;
    if (place->t == 1.0 && chain.closed) place = Place{0, 0.0};
    place = source_->onMovingSegment(*place);
    if (mapPlace(out, *place)) return 0;
    // A joint is also the end of the segment before it.
    std::size_t const before = (place->segment == 0 ? chain.size() : place->segment) - 1;
    if (place->t > 0.0 || chain.endsBehind(before, kMagnitude)) return -1;
    return mapPlace(out, source_->onMovingSegment({before, 1.0})) ? 0 : -1;
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    std::optional<Place> const place = placeAmong(segments_.size(), in);
    if (!place) return -1;
    ParallelOrigin const& origin = segments_[place->segment];
    Place found = origin.to;
    if (!origin.isJoin) {
      double const s = origin.s0 + (origin.s1 - origin.s0) * place->t;
      found = {origin.from.segment, footAt(origin, s)};
    }
    if (found.t == 1.0 && source_->chain().hasGapBehind(found.segment, kMagnitude)) {
      found.t = kLastParameter;
    }
    out = source_->chain().positionOf(found.segment, found.t);
    return 0;
  }

 private:
  bool mapPlace(Position& out, Place const& place) const {
    auto i = std::lower_bound(index_.begin(), index_.end(),
                              std::pair<std::size_t, std::size_t>(place.segment, 0));
    for (; i != index_.end() && i->first == place.segment; ++i) {
      ParallelOrigin const& origin = segments_[i->second];
      std::optional<double> const s = origin.isJoin ? onJoin(origin, place) : across(origin, place);
      if (!s) continue;
      out = named(i->second, *s);
      return true;
    }
    return false;
  }

  /// The parameter 0 if a place belongs to the joint of a join, else nothing.
  static std::optional<double> onJoin(ParallelOrigin const& origin, Place const& place) {
    bool const isIn = place.segment == origin.from.segment && place.t >= origin.from.t;
    bool const isOut = place.segment == origin.to.segment && place.t <= origin.to.t;
    bool const isSame = origin.from.segment == origin.to.segment && origin.from.t <= origin.to.t;
    bool const isThere = isSame ? isIn && isOut : isIn || isOut;
    return isThere ? std::optional<double>(0.0) : std::nullopt;
  }

  /// The parameter, on a segment of the parallel, of the point that belongs to a place of the
  /// source; nothing if that point was trimmed away by more than rounding.
  std::optional<double> across(ParallelOrigin const& origin, Place const& place) const {
    if (place.t < origin.from.t || place.t > origin.to.t) return std::nullopt;
    double const first = footAt(origin, origin.s0), last = footAt(origin, origin.s1);
    if (place.t == first) return 0.0;
    if (place.t == last) return 1.0;
    double const s = crossingAt(origin, place.t);
    double const held = min(origin.s1, max(origin.s0, s));
    bool const isInside = place.t > first && place.t < last;
    bool const isThere =
        isInside || distance(pointAt(origin.c, s), pointAt(origin.c, held)) <= kRoundingReach;
    if (!isThere) return std::nullopt;
    return held == origin.s1 ? 1.0 : (held - origin.s0) / (origin.s1 - origin.s0);
  }

  /// The parameter of the cubic whose point belongs to the parameter t of the source: where the
  /// normal crosses the cubic, moved so that both ends belong to the ends.
  double crossingAt(ParallelOrigin const& origin, double t) const {
    if (t == origin.from.t) return 0.0;
    if (t == origin.to.t) return 1.0;
    Cubic const& source = sourceOf(origin);
    Point const foot = pointAt(source, t), direction = directionAt(source, t);
    Stretching const normals = normalsOf(origin);
    return normals.back(whereItFalls(normals.from(), normals.to(), [&](double x) {
      return dot(foot - pointAt(origin.c, x), direction);
    }));
  }

  /// The inverse of crossingAt.
  double footAt(ParallelOrigin const& origin, double s) const {
    if (s == 0.0) return origin.from.t;
    if (s == 1.0) return origin.to.t;
    Cubic const& source = sourceOf(origin);
    Point const p = pointAt(origin.c, normalsOf(origin).forth(s));
    return whereItFalls(origin.from.t, origin.to.t, [&](double t) {
      return dot(p - pointAt(source, t), directionAt(source, t));
    });
  }

  /// The parameters at which the normals at the ends of the stretch cross the cubic. They differ
  /// from 0 and 1 where the parallel was extended or shortened to meet the next one at a joint.
  Stretching normalsOf(ParallelOrigin const& origin) const {
    Cubic const& source = sourceOf(origin);
    double from = 0.0, to = 1.0;
    if (origin.from.t == 0.0) {
      from = normalNear(0.0, source.start(), startDirection(source), origin.c);
    }
    if (origin.to.t == 1.0) to = normalNear(1.0, source.end(), endDirection(source), origin.c);
    return {from, to};
  }

  /// The parameter of c, near its end 0 or 1, at which the normal at a place crosses it.
  static double normalNear(double end, Point const& foot, Point const& direction, Cubic const& c) {
    if (std::fabs(dot(foot - pointAt(c, end), direction)) <= kRoundingReach) return end;
    double x = end;
    for (int i = 0; i < kEndSteps; ++i) {
      double const speed = dot(derivativeAt(c, x), direction);
      if (speed > 0.0) x += dot(foot - pointAt(c, x), direction) / speed;
      x = min(end + kFarthestEnd, max(end - kFarthestEnd, x));
    }
    return x;
  }

  Position named(std::size_t segment, double t) const {
    if (t == 1.0) {
      ++segment;
      t = 0.0;
    }
    if (isClosed_ && segment == segments_.size()) segment = 0;
    return Position(static_cast<int>(segment), t);
  }

  Cubic const& sourceOf(ParallelOrigin const& origin) const {
    return source_->chain().segments[origin.from.segment];
  }

  std::shared_ptr<ParallelSource const> source_;
  std::vector<ParallelOrigin> segments_;
  std::vector<std::pair<std::size_t, std::size_t>> index_;  // source segment, result segment
  bool isClosed_;
};

}  // namespace

ParallelSource::ParallelSource(Chain chain) : chain_(std::move(chain)) {
  std::vector<Cubic> const& segments = chain_.segments;
  if (std::none_of(segments.begin(), segments.end(), isPoint)) return;
  std::size_t const n = segments.size();
  joints_.resize(n);
  // Twice around, because points at the start of a closed curve may belong to its end.
  std::optional<Place> joint;
  for (std::size_t i = 0; i < 2 * n; ++i) {
    std::size_t const k = i % n;
    if (!isPoint(segments[k])) joint = Place{k, 1.0};
    joints_[k] = joint;
    if (chain_.endsBehind(k, kMagnitude)) joint.reset();
  }
  joint.reset();
  for (std::size_t i = 2 * n; i-- > 0;) {
    std::size_t const k = i % n;
    if (chain_.endsBehind(k, kMagnitude)) joint.reset();
    if (!isPoint(segments[k])) joint = Place{k, 0.0};
    if (!joints_[k]) joints_[k] = joint;
  }
}

Place ParallelSource::onMovingSegment(Place const& place) const {
  bool const isMoving = joints_.empty() || !isPoint(chain_.segments[place.segment]);
  return isMoving ? place : joints_[place.segment].value_or(place);
}

Map parallelMap(std::shared_ptr<ParallelSource const> source, std::vector<ParallelOrigin> segments,
                bool isClosed) {
  return new ParallelMap(std::move(source), std::move(segments), isClosed);
}

}  // namespace crv::internal
