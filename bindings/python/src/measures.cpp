// Results with a stated accuracy: lengths, walks, directions, polylines, nearest places.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

void bindLengths(py::module_& m) {
  m.def("arcLength", py::overload_cast<Segment const&, double, double, double>(&crv::arcLength),
        py::arg("segment"), py::arg("t0") = 0.0, py::arg("t1") = 1.0, py::arg("accuracy") = 0.0,
        "The length of a segment from t0 to t1, within the accuracy; 0 asks for what rounding "
        "allows. NaN for unusable input.");
  m.def("arcLength", py::overload_cast<Curve const&, double>(&crv::arcLength), py::arg("curve"),
        py::arg("accuracy") = 0.0,
        "The length of a curve, within the accuracy; 0.0 for an empty curve, NaN for unusable "
        "input.");
  m.def("parameterAtLength", &crv::parameterAtLength, py::arg("segment"), py::arg("t0"),
        py::arg("length"), py::arg("accuracy") = 0.0,
        "The parameter at a signed length from t0, held at 0 and 1; 0 for unusable input.");
  m.def("evenPositions", &crv::evenPositions, py::arg("curve"), py::arg("count"),
        py::arg("accuracy") = 0.0,
        "Positions that divide the curve into count equal lengths: count + 1 on an open curve, "
        "count on a closed one. An empty list for a count of 0 or unusable input.");
  py::class_<crv::CurveLengths>(m, "CurveLengths", "The lengths along one curve, measured once.")
      .def(py::init<Curve const&, double>(), py::arg("curve"), py::arg("accuracy") = 0.0,
           "Measures the curve within an accuracy; the curve may change afterwards.")
      .def("total", &crv::CurveLengths::total, "The length of the curve; NaN for unusable input.")
      .def("lengthAt", &crv::CurveLengths::lengthAt, py::arg("position"),
           "The length from the start to a position; NaN off the curve.")
      .def("positionAt", &crv::CurveLengths::positionAt, py::arg("length"),
           "The position at a length from the start: modulo the total on a closed curve, held at "
           "the ends of an open one. Segment -1 for an empty curve.");
  py::enum_<crv::Measure>(m, "Measure",
                          "How the distance of a walk is measured: along the curve or straight.")
      .value("length", crv::Measure::length)
      .value("chord", crv::Measure::chord);
  m.def("walk", &crv::walk, py::arg("curve"), py::arg("start"), py::arg("distance"),
        py::arg_v("measure", crv::Measure::length, "Measure.length"), py::arg("accuracy") = 0.0,
        "Where a walk from a position ends after a distance, negative for backwards; None where "
        "the curve ends before, and for unusable input.");
}

void bindDirections(py::module_& m) {
  Record<crv::Directions>(m, "Directions",
                          "The directions of travel on both sides of a position, unit vectors.")
      .field("in_", &crv::Directions::in, "The direction of arrival; zero where no segment moves.")
      .field("out", &crv::Directions::out,
             "The direction of departure; zero where no segment moves.")
      .shown();
  m.def(
      "directions", &crv::directions, py::arg("curve"), py::arg("position"),
      "The directions in which the curve arrives at a position and leaves it; zero off the curve.");
  m.def("signedArea", &crv::signedArea, py::arg("curve"),
        "The area enclosed, positive for counter-clockwise with y up; 0 for an empty curve, NaN "
        "for unusable input.");
  m.def("isClockwise", &crv::isClockwise, py::arg("curve"), "Whether the signed area is negative.");
}

void bindNearest(py::module_& m) {
  Record<crv::NearestOnSegment>(m, "NearestOnSegment",
                                "The place of a segment that is nearest to a point.")
      .field("t", &crv::NearestOnSegment::t, "The parameter, in [0, 1].")
      .field("point", &crv::NearestOnSegment::point, "The point at t.")
      .field("distance", &crv::NearestOnSegment::distance, "Its distance.")
      .shown();
  Record<crv::NearestOnCurve>(m, "NearestOnCurve",
                              "The place of a curve that is nearest to a point.")
      .field("position", &crv::NearestOnCurve::position, "The position on the curve.")
      .field("point", &crv::NearestOnCurve::point, "The point at the position.")
      .field("distance", &crv::NearestOnCurve::distance, "Its distance.")
      .shown();
  m.def("nearest", py::overload_cast<Segment const&, Point const&>(&crv::nearest),
        py::arg("segment"), py::arg("p"),
        "The place of a segment nearest to p; for unusable input t is 0, the rest NaN.");
  m.def("nearest", py::overload_cast<Curve const&, Point const&>(&crv::nearest), py::arg("curve"),
        py::arg("p"),
        "The place of a curve nearest to p; None for an empty curve or unusable input.");
}

}  // namespace

void bindMeasures(py::module_& m) {
  bindLengths(m);
  bindDirections(m);
  bindNearest(m);
  Record<crv::Polyline>(m, "Polyline", "A curve as points, within a tolerance.")
      .field("points", &crv::Polyline::points, "The points, as an (n, 2) array.")
      .field("positions", &crv::Polyline::positions, "The position of each point on the curve.")
      .field("worstDistance", &crv::Polyline::worstDistance,
             "No place of the curve lies farther than this from its chord.")
      .shown();
  m.def("flatten", &crv::flatten, py::arg("curve"), py::arg("tolerance"),
        "Few points within a tolerance of the curve, with their positions; none for an empty curve "
        "or unusable input.");
}

}  // namespace python
