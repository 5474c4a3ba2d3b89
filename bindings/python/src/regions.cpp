// The areas that lists of closed curves bound.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

using Curves = std::vector<Curve>;
using Operation = crv::Region (*)(Curves const&, Curves const&, crv::FillRule);

void defineOperation(py::module_& m, char const* name, Operation operation, char const* doc) {
  m.def(name, operation, py::arg("a"), py::arg("b"),
        py::arg_v("rule", crv::FillRule::nonZero, "FillRule.nonZero"), doc);
}

}  // namespace

void bindRegions(py::module_& m) {
  py::enum_<crv::FillRule>(m, "FillRule",
                           "Which places a list of curves encloses: those with a winding number "
                           "other than 0, or an odd one.")
      .value("nonZero", crv::FillRule::nonZero)
      .value("evenOdd", crv::FillRule::evenOdd);
  Record<crv::Source>(m, "Source", "Where a segment of a result came from.")
      .value(
          "list", [](crv::Source const& s) { return static_cast<py::ssize_t>(s.list); },
          "0 for the first list of curves, 1 for the second.")
      .value(
          "curve", [](crv::Source const& s) { return static_cast<py::ssize_t>(s.curve); },
          "The number of the curve in its list.")
      .field("from_", &crv::Source::from, "Where the stretch begins on it.")
      .field("to", &crv::Source::to, "Where the stretch ends on it.")
      .field("backwards", &crv::Source::backwards, "Whether the result runs against it.")
      .shown();
  Record<crv::Region>(
      m, "Region", "An area: simple closed curves, outer ones counter-clockwise, holes clockwise.")
      .field("curves", &crv::Region::curves, "The curves.")
      .field("sources", &crv::Region::sources, "Where each segment of each curve came from.")
      .shown();
  auto const rule = py::arg_v("rule", crv::FillRule::nonZero, "FillRule.nonZero");
  m.def("area", &crv::area, py::arg("curves"), rule,
        "The area that closed curves bound under a fill rule; NaN for unusable input.");
  m.def("winding", &crv::winding, py::arg("curves"), py::arg("p"),
        "How often the curves go around p, counter-clockwise positive.");
  m.def("contains", &crv::contains, py::arg("curves"), py::arg("p"), rule,
        "Whether p lies inside the curves under a fill rule.");
  defineOperation(m, "unite", crv::unite,
                  "The places in either area. Open curves are closed by straight lines; unusable "
                  "input gives an empty area.");
  defineOperation(m, "intersect", crv::intersect, "The places in both areas.");
  defineOperation(m, "subtract", crv::subtract, "The places in the first area, not in the second.");
  defineOperation(m, "exclude", crv::exclude, "The places in one area, not in both.");
  m.def("simplified", &crv::simplified, py::arg("curves"), rule,
        "The area that curves bound, without crossings.");
}

}  // namespace python
