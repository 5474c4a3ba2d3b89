// Positions compared, ordered and corrected.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

using OnStretch = int (*)(Position const&, Position const&, Position const&, int);
using OnStretchWith = int (*)(Position const&, Position const&, Position const&, Position const&,
                              int);

/// Both forms of a question whether a position lies on a stretch.
void defineBetween(py::module_& m, char const* name, OnStretch onStretch,
                   OnStretchWith onStretchWith) {
  m.def(
      name,
      [onStretch](Position const& p, Position const& a, Position const& b, bool closed) {
        return onStretch(p, a, b, closed) != 0;
      },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("closed"));
  m.def(
      name,
      [onStretchWith](Position const& p, Position const& a, Position const& b, Position const& c,
                      bool closed) { return onStretchWith(p, a, b, c, closed) != 0; },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("c"), py::arg("closed"));
}

}  // namespace

void bindPredicates(py::module_& m) {
  m.def(
      "isEqual",
      [](Curve const& curve, Position const& a, Position const& b, double tol) {
        return isEqual(curve, a, b, tol) != 0;
      },
      py::arg("curve"), py::arg("a"), py::arg("b"), py::arg("tol"));
  defineBetween(m, "isStrictBetweenPosition", isStrictBetweenPosition, isStrictBetweenPosition);
  defineBetween(m, "isBetweenPosition", isBetweenPosition, isBetweenPosition);
  defineBetween(m, "isBothInclusiveBetweenPosition", isBothInclusiveBetweenPosition,
                isBothInclusiveBetweenPosition);
  m.def("snapToAnchor", &snapToAnchor, py::arg("pos"), py::arg("tol"));
  m.def(
      "adjustBezierCurvePosition",
      [](Position const& start, Curve const& curve, double dt) {
        Position result;  // no position, and so it stays where nothing is stored
        adjustBezierCurvePosition(result, start, curve, dt);
        return onlyIf(result != Position(), result);
      },
      py::arg("start"), py::arg("curve"), py::arg("dt"));
}

}  // namespace python
