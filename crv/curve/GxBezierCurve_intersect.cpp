// The crossings of two curves are those of all pairs of segments whose boxes overlap.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/segmentTree.h"

using crv::internal::BoxTree;
using crv::internal::SegmentTree;

int GxBezierCurve::findIntersections(GxBezierCurve const& other,
                                     GxList<GxCoord<double>>& points) const {
  auto const hull = [](GxBezier const& s) { return crv::internal::cubic(s).hull(); };
  SegmentTree<GxBezier const> const ours(segments_, hull);
  SegmentTree<GxBezier const> const theirs(other.segments_, hull);
  BoxTree::visitOverlaps(theirs.boxes(), ours.boxes(), [&](std::size_t j, std::size_t i) {
    ours[i].findIntersections(theirs[j], points);
  });
  // Deliberate: points that the caller put there count, too.
  return points.length() != 0;
}
