// A curve as plain values, and its positions as places on segments.
#pragma once

#include "crv/accurate/internal/scale.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/curve/GxBezierCurve.h"
#include "crv/curve/GxBezierCurvePosition.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// A parameter in [0, 1] of an existing segment.
struct Place {
  std::size_t segment;
  double t;
};

/// The order along a curve.
inline bool isBefore(Place const& p, Place const& q) {
  return p.segment != q.segment ? p.segment < q.segment : p.t < q.t;
}
inline bool areEqual(Place const& p, Place const& q) {
  return p.segment == q.segment && p.t == q.t;
}

/// The place of a position on a curve of so many segments, with t below 1 except at the curve's
/// end, which is 1.0 on the last segment also where the curve is closed; nothing for a position
/// that is not on the curve.
inline std::optional<Place> placeAmong(std::size_t segments,
                                       GxBezierCurvePosition const& position) {
  long const n = static_cast<long>(segments);
  long const given = position.getSegmentNumber();
  if (given < -1 || given > n) return std::nullopt;
  GxBezierCurvePosition const p(static_cast<int>(given), position.getTValue());
  long const segment = p.getSegmentNumber();
  double const t = p.getTValue();
  if (n == 0 || segment < 0 || segment > n || !(t >= 0.0 && t < 1.0)) return std::nullopt;
  if (segment < n) return Place{static_cast<std::size_t>(segment), t};
  if (t > 0.0) return std::nullopt;
  return Place{segments - 1, 1.0};
}

// Parameter: the last one before 1. It names the end of a segment before a gap, because 1.0 is
// the start of the next segment.
constexpr double kLastParameter = 1.0 - 0x1p-53;

/// The segments of a curve and its closed flag, copied: reading a curve moves its list's cursor.
struct Chain {
  std::vector<Cubic> segments;
  bool closed = false;

  Chain() = default;
  explicit Chain(GxBezierCurve const& curve) : closed(curve.strictIsClosed() != 0) {
    auto const n = static_cast<unsigned>(curve.length());
    segments.reserve(n);
    for (unsigned i = 0; i < n; ++i) segments.push_back(cubic(curve[static_cast<int>(i)]));
  }

  std::size_t size() const { return segments.size(); }

  /// The largest coordinate; NaN when one is not finite.
  double magnitude() const {
    Magnitude magnitude;
    for (Cubic const& c : segments) magnitude.add(c);
    return magnitude.value();
  }

  /// The normalised position of a parameter in [0, 1] of a segment, the seam being (0, 0.0). Given
  /// as the place behind the last segment, the end is normalised alike.
  GxBezierCurvePosition positionOf(std::size_t segment, double t) const {
    if (t == 1.0) {
      ++segment;
      t = 0.0;
    }
    if (closed && segment == size()) segment = 0;
    return GxBezierCurvePosition(static_cast<int>(segment), t);
  }

  /// Whether there is a gap of more than 16 u S between a segment and the next one, around the seam
  /// of a closed curve, too.
  bool hasGapBehind(std::size_t segment, double magnitude) const {
    bool const isLast = segment + 1 == size();
    if (isLast && !closed) return false;
    Point const gap = segments[segment].end() - segments[isLast ? 0 : segment + 1].start();
    return max(std::fabs(gap.x), std::fabs(gap.y)) > 16.0 * kRounding * magnitude;
  }

  /// Whether there is such a gap, or the end of an open curve.
  bool endsBehind(std::size_t segment, double magnitude) const {
    return (segment + 1 == size() && !closed) || hasGapBehind(segment, magnitude);
  }

  /// The position of a parameter in [0, 1] of a segment; an end before a gap has the last one
  /// before it, because behind it the next segment starts.
  GxBezierCurvePosition positionOn(std::size_t segment, double t, double magnitude) const {
    bool const isAtGap = t == 1.0 && hasGapBehind(segment, magnitude);
    return positionOf(segment, isAtGap ? 1.0 - kRounding : t);
  }

  /// The place of a position on this curve; see placeAmong.
  std::optional<Place> placeOf(GxBezierCurvePosition const& position) const {
    return placeAmong(size(), position);
  }
};

}  // namespace crv::internal
