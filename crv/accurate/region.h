// The areas that lists of closed curves bound: how large they are, what they contain, and their
// union, intersection and difference.
//
// An area is what the curves of a list wind around as the rule says. Curves may cross, touch, share
// stretches, lie in each other and run back on themselves. Open curves are closed by a straight
// line, and so are gaps between segments.
//
// Stretches nearer to each other than the resolution r = 2^-40 S become one, and places within 2 r
// of each other one node. Boundaries of results are stretches of their sources up to rounding, but
// where they were moved onto such nodes, they lie within 3 r of them; areas are right within 3 r
// times the perimeter. At the tip of a sliver, what is moved is a short segment of its own.
// Input that is not finite, or of a magnitude beyond 2^500 or below 2^-500, has the area NaN, winds
// around nothing, contains nothing and gives results without curves. Cost: n log n for n segments
// that meet few others each, and k log k for k meetings; identical segments are arranged once.
//
// Where so many places lie within r of each other that a boundary does not close, coarser
// resolutions, up to 512 r, make one place of them. Results are closed always, but where cusps lie
// 2^-53 S to 2^-27 S apart they may touch themselves within r. Method: see internal/arrangement.h.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <vector>

namespace crv {

/// What is inside: places with a winding number other than zero, or with an odd one.
enum class FillRule { nonZero, evenOdd };

/// The stretch of a curve that became a segment of a result: of that segment of list 0 or 1 to
/// which `from` belongs. A line that closes a gap has list and curve -1 as std::size_t, from and to
/// are then meaningless.
struct Source {
  std::size_t list;
  std::size_t curve;
  Position from, to;  ///< `from` is before `to`; the end of segment k is (k + 1, 0.0).
  bool backwards;     ///< The segment of the result runs from `to` to `from`.
};

/// The boundary of an area: simple closed curves that cross neither each other nor themselves.
/// Outer boundaries run counter-clockwise, those of holes clockwise. Curves may touch each other in
/// places, but share no stretch. Ends of neighbouring segments are equal bit for bit.
struct Region {
  std::vector<Curve> curves;
  std::vector<std::vector<Source>> sources;  ///< sources[i][k]: of segment k of curves[i].
};

/// The area that the curves bound.
[[nodiscard]] CRV_API double area(std::vector<Curve> const& curves, FillRule rule);

/// How often the curves wind around a point, counter-clockwise. On a curve, within 2^-40 S, it is
/// the one of the winding numbers around the point with the larger magnitude.
[[nodiscard]] CRV_API int winding(std::vector<Curve> const& curves, Point const& p);

/// Whether a point is inside, or within 2^-40 S of one of the curves.
[[nodiscard]] CRV_API bool contains(std::vector<Curve> const& curves, Point const& p,
                                    FillRule rule);

/// The places in either area.
[[nodiscard]] CRV_API Region unite(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                   FillRule rule);

/// The places in both areas.
[[nodiscard]] CRV_API Region intersect(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                       FillRule rule);

/// The places in the first area that are not in the second.
[[nodiscard]] CRV_API Region subtract(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                      FillRule rule);

/// The places in one of the areas, not in both.
[[nodiscard]] CRV_API Region exclude(std::vector<Curve> const& a, std::vector<Curve> const& b,
                                     FillRule rule);

/// The same area without crossings.
[[nodiscard]] CRV_API Region simplified(std::vector<Curve> const& curves, FillRule rule);

}  // namespace crv
