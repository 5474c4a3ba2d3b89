// The segments of a curve in a tree of boxes.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/curve/internal/boxTree.h"
#include "crv/foundation/GxList.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace crv::internal {

/// The segments of a list by number, and the tree of their boxes, which boxOf(segment) makes. The
/// list must outlive the tree, and its segments must stay as they are.
template <class Segment>
class SegmentTree {
 public:
  template <class Segments, class BoxOf>
  SegmentTree(Segments& segments, BoxOf const& boxOf) : boxes_({}) {
    std::vector<Box> boxes;
    boxes.reserve(segments.length());
    segments_.reserve(segments.length());
    for (Segment& segment : segments) {
      segments_.push_back(&segment);
      boxes.push_back(boxOf(segment));
    }
    boxes_ = BoxTree(std::move(boxes));
  }

  Segment& operator[](std::size_t i) const { return *segments_[i]; }
  BoxTree const& boxes() const { return boxes_; }

 private:
  std::vector<Segment*> segments_;
  BoxTree boxes_;
};

}  // namespace crv::internal
