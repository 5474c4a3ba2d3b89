// Examines the contacts of each curve with itself, and of nearby parts of two curves.
#include "crv/accurate/internal/simpleCurves.h"

#include "crv/accurate/curveContacts.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace crv::internal {

namespace {

bool isSimple(Curve const& curve, double resolution) {
  CurveContacts const found = selfContacts(curve, resolution);
  return found.points.empty() && found.overlaps.empty();
}

/// A segment of a closed curve between its two neighbours, as an open curve.
Curve neighbourhood(Curve const& curve, int segment) {
  int const n = static_cast<int>(curve.length());
  Curve part;
  for (int k = segment - 1; k < segment - 1 + std::min(n, 3); ++k) {
    part.getSegments().add(curve[(k + n) % n]);
  }
  return part;
}

bool crossOrCoincide(Curve const& a, Curve const& b, double resolution) {
  CurveContacts const found = contacts(a, b, resolution);
  return !found.overlaps.empty() ||
         std::any_of(found.points.begin(), found.points.end(),
                     [](CurveContact const& c) { return c.kind == ContactKind::crossing; });
}

/// Whether no two curves cross or share a stretch. Of each, only the segments with boxes that
/// overlap are examined, with their neighbours, so that the time grows with their number.
bool areApart(std::vector<Curve> const& curves, double resolution) {
  std::vector<Box> boxes;
  std::vector<std::pair<std::size_t, int>> segments;
  for (std::size_t i = 0; i < curves.size(); ++i) {
    for (int k = 0; k < static_cast<int>(curves[i].length()); ++k) {
      boxes.push_back(cubic(curves[i][k]).hull());
      segments.push_back({i, k});
    }
  }
  bool areAllApart = true;
  BoxTree const tree(std::move(boxes));
  BoxTree::visitOwnOverlaps(tree, [&](std::size_t p, std::size_t q) {
    auto const [i, k] = segments[p];
    auto const [j, l] = segments[q];
    if (!areAllApart || i == j) return;
    areAllApart =
        !crossOrCoincide(neighbourhood(curves[i], k), neighbourhood(curves[j], l), resolution);
  });
  return areAllApart;
}

}  // namespace

bool areSimple(std::vector<Curve> const& curves, double resolution) {
  return areApart(curves, resolution) &&
         std::all_of(curves.begin(), curves.end(),
                     [&](Curve const& curve) { return isSimple(curve, resolution); });
}

}  // namespace crv::internal
