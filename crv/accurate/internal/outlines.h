// Lists of curves as closed outlines, segment by segment.
#pragma once

#include "crv/accurate/internal/planeGraph.h"
#include "crv/accurate/types.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The origin of a segment of an outline.
struct Origin {
  std::size_t list;  // kNone for a line that closes a gap
  std::size_t curve, segment;
};

/// The segments of lists of curves, with lines that close the gaps wider than the resolution. For
/// unusable input there are no segments.
class Outlines {
 public:
  /// All curves of up to two lists, the second of which may be null.
  Outlines(std::vector<Curve> const& a, std::vector<Curve> const* b);

  /// The largest coordinate; NaN when one is not finite.
  double magnitude() const { return magnitude_; }

  std::vector<ArrangedSegment> segments;
  std::vector<Origin> origins;  // by segment

 private:
  void add(Curve const& curve, std::size_t list, std::size_t number);

  double magnitude_;
};

}  // namespace crv::internal
