// Curves as arrays.
#pragma once

#include "bindings/python/src/segments.h"

namespace python {

using CurveClass = py::class_<Curve>;

/// Adds the searches on a curve: nearest points, crossings, directions and steps.
void bindSearches(CurveClass& c);

}  // namespace python
