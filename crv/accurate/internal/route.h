// Walks along a curve across its joints and its seam, for contacts of curves.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>

namespace crv::internal {

/// The segments of a curve in unit scale, computed when needed, and walks along them.
class Route {
 public:
  Route(Chain const& chain, UnitScale const& scale) : chain_(chain), scale_(scale) {}

  Chain const& chain() const { return chain_; }
  std::size_t size() const { return chain_.size(); }
  Cubic operator[](std::size_t i) const { return scale_.scaled(chain_.segments[i]); }
  Point at(Place const& place) const { return pointAt((*this)[place.segment], place.t); }

  /// The place with t below 1: a joint is the start of the segment after it, the seam the start of
  /// the first one. The end of a segment before a gap has no position of its own and becomes the
  /// last parameter below 1. Only the end of an open curve keeps t = 1.
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

  /// Whether the next segment, also across the seam, starts farther away than the resolution.
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

  /// Whether the curve stays within reach of a point all the way between two normalised places; on
  /// a closed curve, in at least one of the two directions.
  bool staysNear(Point const& centre, double reach, Place const& p, Place const& q) const;

  std::size_t next(std::size_t segment) const { return segment + 1 == size() ? 0 : segment + 1; }
  std::size_t previous(std::size_t segment) const { return (segment == 0 ? size() : segment) - 1; }

  /// The first segment in a direction, the given one included, that leaves the resolution around
  /// its start; goes around the seam, too. Gives up after a few segments.
  std::size_t skipPoints(std::size_t segment, bool forward) const;

  /// The point at which the curve first leaves a circle, forwards or backwards from a normalised
  /// place; nothing if it ends or has a gap before.
  std::optional<Point> exit(Point const& centre, double radius, Place const& from,
                            bool forward) const;

 private:
  bool staysNearForwards(Point const& centre, double reach, Place const& p, Place const& q) const;

  Chain const& chain_;
  UnitScale const& scale_;
};

/// Where a cubic leaves a circle first, if it does.
std::optional<Point> exitOf(Cubic const& c, Point const& centre, double radius);

/// Whether two curves cross at a point that lies on both and is an end of neither: whether the two
/// branches of the second curve leave to different sides of the first. The branches are followed
/// until they are all farther apart than the resolution.
bool routesCross(Route const& a, Place const& atA, Route const& b, Place const& atB,
                 double resolution);

/// The same of two segments, at a pair of parameters inside both.
bool segmentsCross(SegmentPair const& pair, double t, double u, double resolution);

}  // namespace crv::internal
