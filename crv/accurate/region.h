// Operations on the areas that lists of closed curves bound: size, winding number, containment,
// union, intersection and difference.
//
// The fill rule decides by the winding number of the curves of a list which points belong to the
// area. Curves may cross, touch, share stretches, lie inside each other and run back on themselves.
// Open curves are closed by a straight line, and gaps between segments are closed in the same way.
//
// Segments of results are stretches of their sources up to rounding, 64 u S with u = 2^-53, also
// where outlines cross, touch, coincide or share edges. Only stretches that are not equal, but
// nearer to each other than the resolution r = 2^-40 S for more than 2^-16 S, become one (2^-14 S
// where they meet at an end of one of them), and points within 2 r of each other become one node.
// A segment whose end was moved onto such a node lies within 4 r of its source. Some segments lie 4
// to 23 r away in 4 of 1,000 results of random curves with slightly moved copies of themselves. The
// error of areas is at most 4 r times the perimeter. At the tip of a sliver, the part that was
// moved is a short segment of its own. Input that is not finite, or of a magnitude beyond 2^500 or
// below 2^-500, has the area NaN, the winding number 0 everywhere, contains no point and gives
// results without curves.
//
// The time grows as n log n for n segments that each meet few others, plus k log k for k meetings;
// copies of a segment, reversed or not, are arranged once. A letter of a word of 10,000 takes 3
// times as long as one of a word of 10, because the data exceed the caches.
//
// If so many points lie within r of each other that a boundary does not close, the operation is
// repeated at coarser resolutions, up to 512 r. Where the order of stretches around a point is not
// certain, and the result touches itself or two of its curves cross or share a stretch, it is
// arranged again to join what lies within r. Results are always closed and, where outlines are like
// those of letters, simple. Of random curves with handles on the same few points as their ends, or
// on copies of these 2^-53 S to 2^-3 S away, 8 of 1,000 results touch or cross themselves within r.
//
// Where nodes are so near to each other that the order of the edges around them is impossible in a
// plane, or leads to wrong winding numbers, each edge is judged by rays, and the time grows as k n:
// 200 slivers that cross within 10 r of one point take 40 times as long as others. Method: see
// internal/arrangement.h.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <vector>

namespace crv {

/// The rule for inside: points with a non-zero winding number, or with an odd one.
enum class FillRule { nonZero, evenOdd };

/// The stretch of a source curve, in list 0 (the first argument) or 1, that became a segment of a
/// result. It lies on the segment to which `from` belongs. For a line that closes a gap, list and
/// curve are -1 as std::size_t, and from and to are meaningless.
struct Source {
  std::size_t list;
  std::size_t curve;
  Position from, to;  ///< `from` is before `to`; the end of segment k is (k + 1, 0.0).
  bool backwards;     ///< The segment of the result runs from `to` to `from`.
};

/// The boundary of an area: simple closed curves that cross neither each other nor themselves.
/// Outer boundaries run counter-clockwise, those of holes clockwise. Curves may touch each other in
/// single points, but share no stretch. Ends of neighbouring segments are equal bit for bit.
struct Region {
  std::vector<Curve> curves;
  std::vector<std::vector<Source>> sources;  ///< sources[i][k] is that of segment k of curves[i].
};

/// The area that the curves bound.
[[nodiscard]] CRV_API double area(std::vector<Curve> const& curves, FillRule rule);

/// The winding number of the curves around a point, counter-clockwise positive. Within 2^-40 S of a
/// curve, it is the winding number next to the point that has the largest magnitude.
[[nodiscard]] CRV_API int winding(std::vector<Curve> const& curves, Point const& p);

/// True when a point is inside, or within 2^-40 S of one of the curves.
[[nodiscard]] CRV_API bool contains(std::vector<Curve> const& curves, Point const& p,
                                    FillRule rule);

/// The union of two areas.
[[nodiscard]] CRV_API Region unite(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                   FillRule rule);

/// The intersection of two areas.
[[nodiscard]] CRV_API Region intersect(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                       FillRule rule);

/// The difference of two areas: the points of the first that are not in the second.
[[nodiscard]] CRV_API Region subtract(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                      FillRule rule);

/// The symmetric difference of two areas: the points in exactly one of them.
[[nodiscard]] CRV_API Region exclude(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                     FillRule rule);

/// The same area without crossings.
[[nodiscard]] CRV_API Region simplified(std::vector<Curve> const& curves, FillRule rule);

}  // namespace crv
