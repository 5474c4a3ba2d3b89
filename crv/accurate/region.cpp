// Operations on areas: the boundary of a result consists of the edges between inside and outside.
#include "crv/accurate/region.h"

#include "crv/accurate/internal/arrangement.h"
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/outlines.h"
#include "crv/accurate/internal/segmentArea.h"
#include "crv/accurate/internal/simpleCurves.h"
#include "crv/accurate/internal/sum.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace crv {

namespace {

using internal::Arrangement;
using internal::Counts;
using internal::kNone;
using internal::Outlines;
using internal::Path;
using internal::PathPart;

// The number of repetitions with a coarser resolution if boundaries do not close, and the factor
// between resolutions.
constexpr int kMostPasses = 4;
constexpr double kCoarser = 4.0;

// Limit of how often a boundary is arranged again where parts of it may lie within the resolution
// of each other. The first time joins these parts, the second time those that the first one has
// moved near to each other.
constexpr int kMostRefinements = 2;

enum class Operation { unite, intersect, subtract, exclude };

bool isInside(int winding, FillRule rule) {
  return rule == FillRule::nonZero ? winding != 0 : winding % 2 != 0;
}

bool isInside(Counts const& windings, Operation operation, FillRule rule) {
  bool const isInA = isInside(windings[0], rule), isInB = isInside(windings[1], rule);
  switch (operation) {
    case Operation::unite: return isInA || isInB;
    case Operation::intersect: return isInA && isInB;
    case Operation::subtract: return isInA && !isInB;
    case Operation::exclude: break;
  }
  return isInA != isInB;
}

/// For each edge of an arrangement: 1 if only its left side is inside, -1 if only its right side
/// is, else 0.
template <class IsInside>
std::vector<signed char> boundaryEdges(Arrangement const& plane, IsInside const& isInside) {
  std::vector<signed char> kept;
  kept.reserve(plane.edges().size());
  for (internal::Edge const& edge : plane.edges()) {
    kept.push_back(static_cast<signed char>(int(isInside(edge.left)) - int(isInside(edge.right))));
  }
  return kept;
}

bool areClosed(std::vector<Path> const& paths) {
  return std::all_of(paths.begin(), paths.end(), [](Path const& path) { return path.isClosed; });
}

Curve curveOf(Path const& path) {
  Curve curve;
  for (PathPart const& part : path.parts) curve.getSegments().add(internal::segment(part.c));
  curve.setStrictIsClosed(1);
  return curve;
}

/// Whether paths neither touch themselves nor cross or share a stretch, at a resolution and at the
/// default one of each.
bool areSimple(std::vector<Path> const& paths, double resolution) {
  std::vector<Curve> curves;
  for (Path const& path : paths) curves.push_back(curveOf(path));
  return internal::areSimple(curves, resolution) && internal::areSimple(curves, 0.0);
}

/// A part of a part of a segment, as a part of that segment.
PathPart partOf(PathPart const& whole, PathPart const& part) {
  auto const at = [&](double t) {
    if (whole.isBackwards) t = 1.0 - t;
    return t == 1.0 ? whole.to : whole.from + (whole.to - whole.from) * t;
  };
  double const from = at(part.from), to = at(part.to);
  return {whole.segment, std::min(from, to), std::max(from, to),
          whole.isBackwards != part.isBackwards, part.c};
}

/// Arranges closed paths once more, so that parts of them that lie within the resolution of each
/// other are joined. Returns false if the boundary does not close.
bool refineOnce(std::vector<Path>& paths, double resolution) {
  std::vector<internal::ArrangedSegment> segments;
  std::vector<PathPart> parts;
  for (Path const& path : paths) {
    std::size_t const first = segments.size();
    for (PathPart const& part : path.parts) {
      segments.push_back({part.c, segments.size() + 1, 0});
      parts.push_back(part);
    }
    if (segments.size() > first) segments.back().next = first;
  }
  if (segments.empty()) return false;
  Arrangement const plane(std::move(segments), resolution);
  auto const kept = boundaryEdges(plane, [](Counts const& windings) { return windings[0] > 0; });
  std::vector<Path> refined = plane.paths(kept);
  if (!areClosed(refined)) return false;
  for (Path& path : refined) {
    for (PathPart& part : path.parts) part = partOf(parts[part.segment], part);
  }
  paths = std::move(refined);
  return true;
}

void refine(std::vector<Path>& paths, double resolution) {
  for (int i = 0; i < kMostRefinements && !areSimple(paths, resolution); ++i) {
    if (!refineOnce(paths, resolution)) return;
  }
}

/// The boundary, with the inside on its left. If it does not close because too many points are as
/// near to each other as the resolution, it is computed again with a coarser resolution.
std::vector<Path> boundary(Outlines& outlines, std::vector<Curve> const& a,
                           std::vector<Curve> const* b, Operation operation, FillRule rule) {
  double resolution = 0.0;
  for (int pass = 0;; ++pass) {
    Arrangement const plane(std::move(outlines.segments), resolution);
    auto const kept = boundaryEdges(
        plane, [&](Counts const& windings) { return isInside(windings, operation, rule); });
    std::vector<Path> paths = plane.paths(kept);
    bool const isClosed = areClosed(paths);
    if (isClosed && !plane.isCertain()) refine(paths, plane.resolution());
    if (isClosed || pass == kMostPasses) return paths;
    // The margin of the plane is included, so resolutions grow by a little more than the factor.
    resolution = kCoarser * plane.scale().resolution / plane.scale().factor;
    outlines = Outlines(a, b);
  }
}

Source sourceOf(PathPart const& part, internal::Origin const& origin) {
  if (origin.list == kNone) return {kNone, kNone, {}, {}, part.isBackwards};
  int const segment = static_cast<int>(origin.segment);
  return {origin.list, origin.curve, Position(segment, part.from), Position(segment, part.to),
          part.isBackwards};
}

Region regionOf(std::vector<Path> const& paths, Outlines const& outlines) {
  Region region;
  region.curves.reserve(paths.size());
  region.sources.reserve(paths.size());
  for (Path const& path : paths) {
    region.curves.push_back(curveOf(path));
    region.sources.emplace_back();
    region.sources.back().reserve(path.parts.size());
    for (PathPart const& part : path.parts) {
      region.sources.back().push_back(sourceOf(part, outlines.origins[part.segment]));
    }
    if (!path.isClosed) {
      internal::Cubic const gap =
          internal::straight(path.parts.back().c.end(), path.parts.front().c.start());
      region.curves.back().getSegments().add(internal::segment(gap));
      region.sources.back().push_back({kNone, kNone, {}, {}, false});
    }
  }
  return region;
}

Region combined(std::vector<Curve> const& a, std::vector<Curve> const* b, Operation operation,
                FillRule rule) {
  Outlines outlines(a, b);
  if (outlines.segments.empty()) return {};
  return regionOf(boundary(outlines, a, b, operation, rule), outlines);
}

}  // namespace

double area(std::vector<Curve> const& curves, FillRule rule) {
  Outlines outlines(curves, nullptr);
  if (!internal::isUsable(outlines.magnitude())) return std::numeric_limits<double>::quiet_NaN();
  if (outlines.segments.empty()) return 0.0;
  internal::Sum twice;
  for (Path const& path : boundary(outlines, curves, nullptr, Operation::unite, rule)) {
    internal::Point const origin = path.parts[0].c.start();
    for (PathPart const& part : path.parts) {
      twice.add(cross(part.c.start() - origin, part.c.end() - part.c.start()));
      twice.add(internal::twiceAreaOverChord(part.c));
    }
  }
  return 0.5 * twice.value();
}

Region unite(std::vector<Curve> const& a, std::vector<Curve> const& b, FillRule rule) {
  return combined(a, &b, Operation::unite, rule);
}

Region intersect(std::vector<Curve> const& a, std::vector<Curve> const& b, FillRule rule) {
  return combined(a, &b, Operation::intersect, rule);
}

Region subtract(std::vector<Curve> const& a, std::vector<Curve> const& b, FillRule rule) {
  return combined(a, &b, Operation::subtract, rule);
}

Region exclude(std::vector<Curve> const& a, std::vector<Curve> const& b, FillRule rule) {
  return combined(a, &b, Operation::exclude, rule);
}

Region simplified(std::vector<Curve> const& curves, FillRule rule) {
  return combined(curves, nullptr, Operation::unite, rule);
}

}  // namespace crv
