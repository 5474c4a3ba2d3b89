// Positions on curves, and the distances between them.
#include "bindings/python/src/arrays.h"

#include <functional>

#include <pybind11/operators.h>

namespace python {

void bindPosition(py::module_& m) {
  auto const direct = [](int segment, double t) {
    return GxBezierCurvePositionConstructor().constructDirectPosition(segment, t);
  };
  py::class_<Position>(m, "GxBezierCurvePosition",
                       "A place on a curve: the number of a segment and the parameter on it. A "
                       "tuple serves as one. Also called Position.")
      .def(py::init<>(), "Makes no position: segment -1.")
      .def(py::init<int, double>(), py::arg("segment"), py::arg("t"),
           "Takes a segment and a parameter; whole numbers are carried from t to the segment.")
      .def(py::init([](py::tuple const& pair) {
             if (pair.size() != 2) throw py::value_error("a position is made of (segment, t)");
             return Position(pair[0].cast<int>(), pair[1].cast<double>());
           }),
           "Takes a tuple (segment, t); ValueError for another length.")
      .def("getSegmentNumber", &Position::getSegmentNumber, "The number of the segment.")
      .def("getTValue", &Position::getTValue, "The parameter on the segment.")
      .def_property_readonly("segment", &Position::getSegmentNumber, "The number of the segment.")
      .def_property_readonly("t", &Position::getTValue, "The parameter on the segment.")
      .def("__eq__", [](Position const& a, Position const& b) { return (a == b) != 0; })
      .def("__eq__", [](Position const&, py::object const&) { return false; })
      .def("__lt__", [](Position const& a, Position const& b) { return (a < b) != 0; })
      .def("__le__", [](Position const& a, Position const& b) { return (a <= b) != 0; })
      .def("__gt__", [](Position const& a, Position const& b) { return (a > b) != 0; })
      .def("__ge__", [](Position const& a, Position const& b) { return (a >= b) != 0; })
      .def(
          "__hash__",
          [](Position const& p) { return static_cast<py::ssize_t>(std::hash<Position>()(p) >> 1); })
      .def("__iter__",
           [](Position const& p) {
             return py::iter(py::make_tuple(p.getSegmentNumber(), p.getTValue()));
           })
      .def("__repr__",
           [](Position const& p) {
             return "GxBezierCurvePosition(" + std::to_string(p.getSegmentNumber()) + ", " +
                    std::string(py::repr(py::float_(p.getTValue()))) + ")";
           })
      .def(py::pickle(
          [](Position const& p) { return py::make_tuple(p.getSegmentNumber(), p.getTValue()); },
          [direct](py::tuple const& state) {
            return direct(state[0].cast<int>(), state[1].cast<double>());
          }))
      .def(
          "isEqual",
          [](Position const& a, Position const& b, double tol) { return a.isEqual(b, tol) != 0; },
          py::arg("p"), py::arg("tol"), "Whether segment + t of both differ by less than tol.")
      .def_static("reverseSense", &Position::reverseSense, py::arg("sense"),
                  "The opposite of a sense; other numbers than 1 and 2 stay.")
      .def_static(
          "isCompatibleSense", [](int a, int b) { return Position::isCompatibleSense(a, b) != 0; },
          py::arg("a"), py::arg("b"), "Whether two senses are equal or one of them is 0.");
  py::implicitly_convertible<py::tuple, Position>();

  using Constructor = GxBezierCurvePositionConstructor;
  py::class_<Constructor>(m, "GxBezierCurvePositionConstructor",
                          "Makes positions, normalised or as given; it has no state.")
      .def(py::init<>(), "A constructor of positions.")
      .def("constructPosition", &Constructor::constructPosition, py::arg("segment"), py::arg("t"),
           "The position with whole numbers carried from t to the segment.")
      .def("constructDirectPosition", &Constructor::constructDirectPosition, py::arg("segment"),
           py::arg("t"), "The position with exactly these fields.");
  m.def(
      "isEqual",
      [](Position const& a, Position const& b, double tol) { return isEqual(a, b, tol) != 0; },
      py::arg("a"), py::arg("b"), py::arg("tol"),
      "Whether segment + t of two positions differ by less than tol.");

  py::class_<PosDiff>(m, "PosDiff",
                      "A distance along a curve: whole segments and a fraction of one.")
      .def(py::init<int, double>(), py::arg("first"), py::arg("second"),
           "Takes the whole segments and the fraction.")
      .def_property_readonly(
          "first", [](PosDiff const& d) { return d.first; }, "The whole segments.")
      .def_property_readonly(
          "second", [](PosDiff const& d) { return d.second; }, "The fraction of one more.")
      .def("__eq__", [](PosDiff const& a, PosDiff const& b) { return (a == b) != 0; })
      .def("__eq__", [](PosDiff const&, py::object const&) { return false; })
      .def("__lt__", [](PosDiff const& a, PosDiff const& b) { return (a < b) != 0; })
      .def("__repr__", [](PosDiff const& d) {
        return "PosDiff(" + std::to_string(d.first) + ", " +
               std::string(py::repr(py::float_(d.second))) + ")";
      });
  m.def("diff", &diff, py::arg("a"), py::arg("b"), py::arg("forward"), py::arg("n"),
        "The distance from a to b, forwards or backwards; across the seam of a closed curve of n "
        "segments where it is negative.");
  m.def("ratio", &crv::ratio, py::arg("part"), py::arg("whole"),
        "One distance as a share of another; 0.0 where the whole is nothing.");
}

}  // namespace python
