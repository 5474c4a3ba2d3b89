// The areas that lists of closed curves bound.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

using Curves = std::vector<Curve>;
using Operation = crv::Region (*)(Curves const&, Curves const&, crv::FillRule);

void defineOperation(py::module_& m, char const* name, Operation operation) {
  m.def(name, operation, py::arg("a"), py::arg("b"),
        py::arg_v("rule", crv::FillRule::nonZero, "FillRule.nonZero"));
}

}  // namespace

void bindRegions(py::module_& m) {
  py::enum_<crv::FillRule>(m, "FillRule")
      .value("nonZero", crv::FillRule::nonZero)
      .value("evenOdd", crv::FillRule::evenOdd);
  Record<crv::Source>(m, "Source")
      .value("list", [](crv::Source const& s) { return static_cast<py::ssize_t>(s.list); })
      .value("curve", [](crv::Source const& s) { return static_cast<py::ssize_t>(s.curve); })
      .field("from_", &crv::Source::from)
      .field("to", &crv::Source::to)
      .field("backwards", &crv::Source::backwards)
      .shown();
  Record<crv::Region>(m, "Region")
      .field("curves", &crv::Region::curves)
      .field("sources", &crv::Region::sources)
      .shown();
  auto const rule = py::arg_v("rule", crv::FillRule::nonZero, "FillRule.nonZero");
  m.def("area", &crv::area, py::arg("curves"), rule);
  m.def("winding", &crv::winding, py::arg("curves"), py::arg("p"));
  m.def("contains", &crv::contains, py::arg("curves"), py::arg("p"), rule);
  defineOperation(m, "unite", crv::unite);
  defineOperation(m, "intersect", crv::intersect);
  defineOperation(m, "subtract", crv::subtract);
  defineOperation(m, "exclude", crv::exclude);
  m.def("simplified", &crv::simplified, py::arg("curves"), rule);
}

}  // namespace python
