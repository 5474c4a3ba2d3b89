// The text of SVG paths.
#include "bindings/python/src/arrays.h"

namespace python {

void bindSvg(py::module_& m) {
  py::enum_<crv::PathFaultReason>(m, "PathFaultReason", "Why the reading of a path ended early.")
      .value("noMoveTo", crv::PathFaultReason::noMoveTo)
      .value("unknownCommand", crv::PathFaultReason::unknownCommand)
      .value("expectedNumber", crv::PathFaultReason::expectedNumber)
      .value("expectedFlag", crv::PathFaultReason::expectedFlag)
      .value("numberOutOfRange", crv::PathFaultReason::numberOutOfRange);
  Record<crv::PathFault>(m, "PathFault", "Where and why the reading of a path ended early.")
      .field("place", &crv::PathFault::place,
             "The place in the text, counted in characters from 0.")
      .field("reason", &crv::PathFault::reason, "What was wrong there.")
      .shown();
  Record<crv::ParsedPath>(m, "ParsedPath", "The curves of a path.")
      .field("curves", &crv::ParsedPath::curves, "A curve for each subpath, up to a fault.")
      .field("fault", &crv::ParsedPath::fault, "None where the whole text was read.")
      .shown();
  m.def("parsePath", &crv::parsePath, py::arg("text"),
        "The curves of the text of an SVG path; fault tells where and why reading ended early, or "
        "is None.");
  m.def("toPath", py::overload_cast<Curve const&>(&crv::toPath), py::arg("curve"),
        "The text of an SVG path, with the shortest numbers that read back to the bit.");
  m.def("toPath", py::overload_cast<std::vector<Curve> const&>(&crv::toPath), py::arg("curves"),
        "The same for several curves.");
}

}  // namespace python
