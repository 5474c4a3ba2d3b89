#include "bindings/python/src/arrays.h"

PYBIND11_MODULE(_crv, m) {
  using namespace python;
  m.doc() =
      "Plane curves made of cubic Bezier segments.\n\n"
      "Names, arguments and results are those of the C++ library, with these differences: points\n"
      "and vectors are arrays of two numbers, lists of points (n, 2) arrays, segments (4, 2) and\n"
      "curves (n, 4, 2) arrays where they are made or read; what C++ stores in its arguments is\n"
      "returned; a search that finds nothing returns None, and an operation that refuses raises\n"
      "crv.Error. Arguments of a wrong type raise TypeError, arrays of a wrong shape ValueError "
      "or\n"
      "TypeError. Lengths and tolerances are in the units of the points.";
  m.attr("__version__") = CRV_VERSION;
  py::register_exception<Failure>(m, "Error", PyExc_ValueError).attr("__doc__") =
      "An operation refused, such as an edit at a position that is not on the curve.";
  bindFoundation(m);
  bindSegment(m);
  bindPosition(m);
  bindCurve(m);
  bindMaps(m);
  bindPredicates(m);
  bindMeasures(m);
  bindContacts(m);
  bindEdits(m);
  bindRegions(m);
  bindSvg(m);
  m.attr("Segment") = m.attr("GxBezier");
  m.attr("Curve") = m.attr("GxBezierCurve");
  m.attr("Position") = m.attr("GxBezierCurvePosition");
  m.attr("GxBezierCurvePositionMapBase") = m.attr("Map");
}
