// Segments as arrays.
#pragma once

#include "bindings/python/src/arrays.h"

#include <list>

namespace python {

/// A segment of a (4, 2) array; throws ValueError for another shape.
Segment segmentOf(py::handle source);

/// The control points as a (4, 2) array.
Array arrayOf(Segment const& s);

/// The caller's condition as Python holds it: one that may be deleted as this class.
class Condition : public GxBezierPolylineCondition {
 public:
  virtual ~Condition() = default;
};

/// Adds the searches on a segment: nearest points, roots, crossings, lengths and steps.
void bindSearches(py::class_<Segment>& c);

}  // namespace python
