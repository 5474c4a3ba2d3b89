// The text of SVG paths.
#include "bindings/python/src/arrays.h"

namespace python {

void bindSvg(py::module_& m) {
  py::enum_<crv::PathFaultReason>(m, "PathFaultReason")
      .value("noMoveTo", crv::PathFaultReason::noMoveTo)
      .value("unknownCommand", crv::PathFaultReason::unknownCommand)
      .value("expectedNumber", crv::PathFaultReason::expectedNumber)
      .value("expectedFlag", crv::PathFaultReason::expectedFlag)
      .value("numberOutOfRange", crv::PathFaultReason::numberOutOfRange);
  Record<crv::PathFault>(m, "PathFault")
      .field("place", &crv::PathFault::place)
      .field("reason", &crv::PathFault::reason)
      .shown();
  Record<crv::ParsedPath>(m, "ParsedPath")
      .field("curves", &crv::ParsedPath::curves)
      .field("fault", &crv::ParsedPath::fault)
      .shown();
  m.def("parsePath", &crv::parsePath, py::arg("text"),
        "The curves of a path; fault tells where and why reading ended early, or is None.");
  m.def("toPath", py::overload_cast<Curve const&>(&crv::toPath), py::arg("curve"));
  m.def("toPath", py::overload_cast<std::vector<Curve> const&>(&crv::toPath), py::arg("curves"));
}

}  // namespace python
