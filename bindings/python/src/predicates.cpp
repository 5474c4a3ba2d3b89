// Positions compared, ordered and corrected.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

using OnStretch = int (*)(Position const&, Position const&, Position const&, int);
using OnStretchWith = int (*)(Position const&, Position const&, Position const&, Position const&,
                              int);

/// Both forms of a question whether a position lies on a stretch.
void defineBetween(py::module_& m, char const* name, OnStretch onStretch,
                   OnStretchWith onStretchWith, char const* doc) {
  m.def(
      name,
      [onStretch](Position const& p, Position const& a, Position const& b, bool closed) {
        return onStretch(p, a, b, closed) != 0;
      },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("closed"), doc);
  m.def(
      name,
      [onStretchWith](Position const& p, Position const& a, Position const& b, Position const& c,
                      bool closed) { return onStretchWith(p, a, b, c, closed) != 0; },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("c"), py::arg("closed"),
      "The same for that of the two stretches between a and b which holds c; False where c chooses "
      "none.");
}

}  // namespace

void bindPredicates(py::module_& m) {
  m.def(
      "isEqual",
      [](Curve const& curve, Position const& a, Position const& b, double tol) {
        return isEqual(curve, a, b, tol) != 0;
      },
      py::arg("curve"), py::arg("a"), py::arg("b"), py::arg("tol"),
      "The same for positions on a curve: the end of a closed one is its start.");
  defineBetween(
      m, "isStrictBetweenPosition", isStrictBetweenPosition, isStrictBetweenPosition,
      "Whether p lies strictly inside the stretch from a to b, across the seam if closed.");
  defineBetween(m, "isBetweenPosition", isBetweenPosition, isBetweenPosition,
                "Whether p is a or lies strictly inside the stretch from a to b.");
  defineBetween(m, "isBothInclusiveBetweenPosition", isBothInclusiveBetweenPosition,
                isBothInclusiveBetweenPosition,
                "Whether p is a or b or lies inside the stretch from a to b.");
  m.def("snapToAnchor", &snapToAnchor, py::arg("pos"), py::arg("tol"),
        "The joint at an end of the position's segment if t lies within tol of it, else the "
        "position.");
  m.def(
      "adjustBezierCurvePosition",
      [](Position const& start, Curve const& curve, double dt) {
        Position result;  // no position, and so it stays where nothing is stored
        adjustBezierCurvePosition(result, start, curve, dt);
        return onlyIf(result != Position(), result);
      },
      py::arg("start"), py::arg("curve"), py::arg("dt"),
      "The position moved on by dt, at most 1 in magnitude; None on an empty curve or for a larger "
      "dt.");
}

}  // namespace python
