// The map of an edit whose result consists of parts of the source's segments, such as a cut.
#pragma once

#include "crv/accurate/types.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The part of a source segment, from one parameter to another, that became one segment of the
/// result. Equal parameters stand for a point.
struct Span {
  std::size_t segment;
  double from;
  double to;
  bool joinsNext;  // there is no gap behind this part on the source
};

/// The parts of a result in the order of the source.
struct Spans {
  std::vector<Span> parts;  // after the seam of a closed source, numbers go on from n
  std::vector<std::size_t>
      order;                   // by segment of the result: its part; empty: in the order of parts
  std::size_t sourceSize = 0;  // n, the number of segments of the source
  bool isSourceClosed = false;
  bool isResultClosed = false;
  bool isBackwards = false;  // the result runs against the source; order is empty then
};

/// A map of positions of the source to the result and back, linear in t within each part; it stores
/// the parts and refers to no curve. The time of a query grows as log n. Positions that are not on
/// a part, or not on the result, give -1 and leave out untouched.
Map spanMap(Spans spans);

}  // namespace crv::internal
