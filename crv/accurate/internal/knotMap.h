// The map between two curves whose parameters are related linearly from knot to knot.
#pragma once

#include "crv/accurate/types.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// A stretch of a segment of the source, and the stretch of a segment of the result that it became.
struct KnotSpan {
  std::size_t segment;
  double t0, t1;
  std::size_t resultSegment;
  double s0, s1;
};

/// The properties of a curve that a map needs.
struct KnotCurve {
  std::size_t size = 0;
  bool isClosed = false;
  std::vector<std::size_t> gaps;  // the segments before gaps, ascending
};

/// A map that is linear in the parameters of each span; spans are in order on both curves and cover
/// them. The time of a query grows as log n for n spans.
Map knotMap(std::vector<KnotSpan> spans, KnotCurve source, KnotCurve result);

}  // namespace crv::internal
