// Results with a stated accuracy: lengths, walks, directions, polylines, nearest places.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

void bindLengths(py::module_& m) {
  m.def("arcLength", py::overload_cast<Segment const&, double, double, double>(&crv::arcLength),
        py::arg("segment"), py::arg("t0") = 0.0, py::arg("t1") = 1.0, py::arg("accuracy") = 0.0);
  m.def("arcLength", py::overload_cast<Curve const&, double>(&crv::arcLength), py::arg("curve"),
        py::arg("accuracy") = 0.0);
  m.def("parameterAtLength", &crv::parameterAtLength, py::arg("segment"), py::arg("t0"),
        py::arg("length"), py::arg("accuracy") = 0.0);
  m.def("evenPositions", &crv::evenPositions, py::arg("curve"), py::arg("count"),
        py::arg("accuracy") = 0.0);
  py::class_<crv::CurveLengths>(m, "CurveLengths")
      .def(py::init<Curve const&, double>(), py::arg("curve"), py::arg("accuracy") = 0.0)
      .def("total", &crv::CurveLengths::total)
      .def("lengthAt", &crv::CurveLengths::lengthAt, py::arg("position"))
      .def("positionAt", &crv::CurveLengths::positionAt, py::arg("length"));
  py::enum_<crv::Measure>(m, "Measure")
      .value("length", crv::Measure::length)
      .value("chord", crv::Measure::chord);
  m.def("walk", &crv::walk, py::arg("curve"), py::arg("start"), py::arg("distance"),
        py::arg_v("measure", crv::Measure::length, "Measure.length"), py::arg("accuracy") = 0.0);
}

void bindDirections(py::module_& m) {
  Record<crv::Directions>(m, "Directions")
      .field("in_", &crv::Directions::in)
      .field("out", &crv::Directions::out)
      .shown();
  m.def("directions", &crv::directions, py::arg("curve"), py::arg("position"));
  m.def("signedArea", &crv::signedArea, py::arg("curve"));
  m.def("isClockwise", &crv::isClockwise, py::arg("curve"));
}

void bindNearest(py::module_& m) {
  Record<crv::NearestOnSegment>(m, "NearestOnSegment")
      .field("t", &crv::NearestOnSegment::t)
      .field("point", &crv::NearestOnSegment::point)
      .field("distance", &crv::NearestOnSegment::distance)
      .shown();
  Record<crv::NearestOnCurve>(m, "NearestOnCurve")
      .field("position", &crv::NearestOnCurve::position)
      .field("point", &crv::NearestOnCurve::point)
      .field("distance", &crv::NearestOnCurve::distance)
      .shown();
  m.def("nearest", py::overload_cast<Segment const&, Point const&>(&crv::nearest),
        py::arg("segment"), py::arg("p"));
  m.def("nearest", py::overload_cast<Curve const&, Point const&>(&crv::nearest), py::arg("curve"),
        py::arg("p"));
}

}  // namespace

void bindMeasures(py::module_& m) {
  bindLengths(m);
  bindDirections(m);
  bindNearest(m);
  Record<crv::Polyline>(m, "Polyline")
      .field("points", &crv::Polyline::points)
      .field("positions", &crv::Polyline::positions)
      .field("worstDistance", &crv::Polyline::worstDistance)
      .shown();
  m.def("flatten", &crv::flatten, py::arg("curve"), py::arg("tolerance"));
}

}  // namespace python
