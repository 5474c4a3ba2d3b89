#include "crv/accurate/internal/parallelMap.h"

#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/tangent.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace crv::internal {

namespace {

// Curve units, for coordinates of the order of 1: a point this little beyond the end of a part
// counts as its end, because near a cusp of the parallel rounding moves points along it.
constexpr double kAtEnd = 0x1p-32;

// Halvings that exhaust an interval of parameters.
constexpr int kMostHalvings = 54;

/// The zero of a decreasing function in [lo, hi], by bisection.
template <class Function>
double whereItFalls(double lo, double hi, Function const& function) {
  for (int i = 0; i < kMostHalvings; ++i) {
    double const middle = 0.5 * (lo + hi);
    (function(middle) > 0.0 ? lo : hi) = middle;
  }
  return 0.5 * (lo + hi);
}

Point directionAt(Cubic const& c, double t) {
  if (t == 0.0) return startDirection(c);
  if (t == 1.0) return endDirection(c);
  Point const velocity = derivativeAt(c, t);
  // At a cusp the direction of travel follows from the third derivative.
  return largestPart(velocity) > 0.0 ? velocity : c.p[3] - c.p[0] - (c.p[2] - c.p[1]) * 3.0;
}

class ParallelMap : public GxBezierCurvePositionMapBase {
 public:
  ParallelMap(std::shared_ptr<Chain const> source, std::vector<ParallelOrigin> segments,
              bool isClosed)
      : source_(std::move(source)), segments_(std::move(segments)), isClosed_(isClosed) {
    index_.reserve(segments_.size());
    for (std::size_t k = 0; k < segments_.size(); ++k) {
      ParallelOrigin const& origin = segments_[k];
      // A join is entered for every segment that begins between its sides.
      std::size_t const last = origin.to.segment;
      std::size_t segment = origin.from.segment;
      index_.push_back({segment, k});
      while (origin.isJoin && segment != last) {
        segment = segment + 1 == source_->size() ? 0 : segment + 1;
        index_.push_back({segment, k});
      }
    }
    std::sort(index_.begin(), index_.end());
  }

  int mapPosition(Position& out, Position const& in) const override {
    std::optional<Place> place = source_->placeOf(in);
    if (!place) return -1;
    if (place->t == 1.0 && source_->closed) place = Place{0, 0.0};
    if (mapPlace(out, *place)) return 0;
    // A joint is also the end of the segment before it.
    if (place->t > 0.0 || (place->segment == 0 && !source_->closed)) return -1;
    std::size_t const before = place->segment == 0 ? source_->size() : place->segment;
    return mapPlace(out, {before - 1, 1.0}) ? 0 : -1;
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
    out = source_->positionOf(found.segment, found.t);
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
    bool const isBetween =
        place.segment != origin.from.segment && place.segment != origin.to.segment;
    bool const isThere = isSame ? isIn && isOut : isIn || isOut || isBetween;
    return isThere ? std::optional<double>(0.0) : std::nullopt;
  }

  /// The parameter at which the normal at a place of the source crosses a segment of the parallel;
  /// nothing if that part of the segment was trimmed away.
  std::optional<double> across(ParallelOrigin const& origin, Place const& place) const {
    if (place.t < origin.from.t || place.t > origin.to.t) return std::nullopt;
    Cubic const& source = source_->segments[place.segment];
    Point const foot = pointAt(source, place.t);
    Point const direction = directionAt(source, place.t);
    double s = 0.0;
    if (place.t == origin.to.t) {
      s = 1.0;
    } else if (place.t > origin.from.t) {
      s = whereItFalls(0.0, 1.0,
                       [&](double x) { return dot(foot - pointAt(origin.c, x), direction); });
    }
    double const held = min(origin.s1, max(origin.s0, s));
    bool const isThere = distance(pointAt(origin.c, s), pointAt(origin.c, held)) <= kAtEnd;
    if (!isThere) return std::nullopt;
    return held == origin.s1 ? 1.0 : (held - origin.s0) / (origin.s1 - origin.s0);
  }

  /// The parameter of the source whose normal passes through the point at s of the parallel.
  double footAt(ParallelOrigin const& origin, double s) const {
    Cubic const& source = source_->segments[origin.from.segment];
    if (s == 0.0) return origin.from.t;
    if (s == 1.0) return origin.to.t;
    Point const p = pointAt(origin.c, s);
    return whereItFalls(origin.from.t, origin.to.t, [&](double t) {
      return dot(p - pointAt(source, t), directionAt(source, t));
    });
  }

  Position named(std::size_t segment, double t) const {
    if (t == 1.0) {
      ++segment;
      t = 0.0;
    }
    if (isClosed_ && segment == segments_.size()) segment = 0;
    return Position(static_cast<int>(segment), t);
  }

  std::shared_ptr<Chain const> source_;
  std::vector<ParallelOrigin> segments_;
  std::vector<std::pair<std::size_t, std::size_t>> index_;  // source segment, result segment
  bool isClosed_;
};

}  // namespace

Map parallelMap(std::shared_ptr<Chain const> source, std::vector<ParallelOrigin> segments,
                bool isClosed) {
  return new ParallelMap(std::move(source), std::move(segments), isClosed);
}

}  // namespace crv::internal
