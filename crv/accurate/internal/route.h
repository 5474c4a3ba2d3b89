// Walks along a curve over its joints and its seam, for the questions that contacts of curves
// raise.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>

namespace crv::internal {

/// The segments of a curve, scaled when they are asked for, with walks along them.
class Route {
 public:
  Route(Chain const& chain, UnitScale const& scale) : chain_(chain), scale_(scale) {}

  Chain const& chain() const { return chain_; }
  std::size_t size() const { return chain_.size(); }
  Cubic operator[](std::size_t i) const { return scale_.scaled(chain_.segments[i]); }
  Point at(Place const& place) const { return pointAt((*this)[place.segment], place.t); }

  /// The place with t below 1: a joint is the start of the segment behind it, the seam that of the
  /// first. The end of a segment before a gap has no position of its own and gets the last one
  /// below 1. Only the end of an open curve keeps t = 1.
  Place normalised(Place const& place) const {
    if (place.t != 1.0 || isLast(place.segment)) return place;
    if (isGapBehind(place.segment)) return keptOnSegment(place);
    return {next(place.segment), 0.0};
  }

  /// The place with t below 1 on the same segment; the end of an open curve keeps t = 1.
  Place keptOnSegment(Place const& place) const {
    if (place.t != 1.0 || isLast(place.segment)) return place;
    return {place.segment, 1.0 - kRounding};
  }

  /// Whether a segment ends an open curve.
  bool isLast(std::size_t segment) const { return !chain_.closed && segment + 1 == size(); }

  /// Whether the next segment, around the seam, too, starts farther away than the resolution.
  bool isGapBehind(std::size_t segment) const {
    Point const end = chain_.segments[segment].p[3], start = chain_.segments[next(segment)].p[0];
    return distance(end * scale_.factor, start * scale_.factor) > scale_.resolution;
  }

  bool isJoint(Place const& place) const { return place.t == 0.0 || place.t == 1.0; }

  /// Whether a normalised place is an end of an open curve.
  bool isEnd(Place const& place) const {
    if (chain_.closed) return false;
    return (place.segment == 0 && place.t == 0.0) || place.t == 1.0;
  }

  /// Whether the curve keeps within a distance of a point all the way between two normalised
  /// places, one way around or, if it is closed, the other.
  bool staysNear(Point const& centre, double reach, Place const& p, Place const& q) const;

  /// Where the curve leaves the circle of a radius about a point first, forwards or backwards from
  /// a normalised place; nothing where it ends or has a gap before.
  std::optional<Point> exit(Point const& centre, double radius, Place const& from,
                            bool forward) const;

 private:
  std::size_t next(std::size_t segment) const { return segment + 1 == size() ? 0 : segment + 1; }
  bool staysNearForwards(Point const& centre, double reach, Place const& p, Place const& q) const;

  Chain const& chain_;
  UnitScale const& scale_;
};

/// Whether two curves cross at a place where both have it, neither being at an end: whether the
/// branches of the second leave to different sides of the first. They are followed until all of
/// them are farther apart than the resolution.
bool routesCross(Route const& a, Place const& atA, Route const& b, Place const& atB,
                 double resolution);

/// The same of two segments, at a pair of parameters inside both.
bool segmentsCross(SegmentPair const& pair, double t, double u, double resolution);

}  // namespace crv::internal
