// A chain of segments.
#include "bindings/python/src/curves.h"

namespace python {

namespace {

Curve curveOf(Array const& array, bool closed) {
  bool const isEmpty = array.size() == 0;
  if (!isEmpty && (array.ndim() != 3 || array.shape(1) != 4 || array.shape(2) != 2)) {
    throw py::value_error("a curve is made of an (n, 4, 2) array");
  }
  std::vector<Segment> segments;
  for (py::ssize_t i = 0; i < array.size(); i += 8) {
    double const* const n = array.data() + i;
    segments.emplace_back(Point(n[0], n[1]), Point(n[2], n[3]), Point(n[4], n[5]),
                          Point(n[6], n[7]));
  }
  Curve curve(segments);
  curve.setStrictIsClosed(closed);
  return curve;
}

Array arrayOf(Curve const& curve) {
  Array array({static_cast<std::size_t>(curve.length()), std::size_t{4}, std::size_t{2}});
  double* to = array.mutable_data();
  for (Segment const& s : curve) {
    for (int i = 0; i < 4; ++i) *to++ = s[i].xval(), *to++ = s[i].yval();
  }
  return array;
}

int segmentNumber(Curve const& curve, int i) {
  int const n = static_cast<int>(curve.length());
  if (i < -n || i >= n) throw py::index_error("the curve has no such segment");
  return i < 0 ? i + n : i;
}

void bindMaking(CurveClass& c) {
  c.def(py::init<>())
      .def(py::init([](Points const& points, double error) { return Curve(points, error); }),
           py::arg("points"), py::arg("error"), "Fits an open curve; error is a squared distance.")
      .def(py::init([](std::vector<Segment> const& segments, bool closed) {
             Curve curve(segments);
             curve.setStrictIsClosed(closed);
             return curve;
           }),
           py::arg("segments"), py::arg("closed") = false)
      .def(py::init(&curveOf), py::arg("points"), py::arg("closed") = false, "An (n, 4, 2) array.")
      .def(
          "makeBezierPolyFit",
          [](Curve& curve, Points const& points, double error) {
            GxList<Point> const list(points);
            curve.makeBezierPolyFit(&list, error);
          },
          py::arg("points"), py::arg("error"))
      .def(py::pickle(
          [](Curve const& curve) { return py::make_tuple(arrayOf(curve), curve.strictIsClosed()); },
          [](py::tuple const& state) {
            Curve curve = curveOf(state[0].cast<Array>(), false);
            curve.setStrictIsClosed(state[1].cast<int>());
            return curve;
          }))
      .def("__repr__", [](Curve const& curve) {
        return "<GxBezierCurve of " + std::to_string(curve.length()) +
               (curve.length() == 1 ? " segment, " : " segments, ") +
               (curve.strictIsClosed() != 0 ? "closed>" : "open>");
      });
}

void bindSegments(CurveClass& c) {
  c.def_property("points", py::overload_cast<Curve const&>(&arrayOf),
                 [](Curve& curve, Array const& points) {
                   curve.setSegments(curveOf(points, false).getSegments());
                 })
      .def_property(
          "closed", [](Curve const& curve) { return curve.strictIsClosed() != 0; },
          [](Curve& curve, bool closed) { curve.setStrictIsClosed(closed); })
      .def("__array__", [](Curve const& curve) { return arrayOf(curve); })
      .def("__eq__", [](Curve const& a, Curve const& b) { return (a == b) != 0; })
      .def("__eq__", [](Curve const&, py::object const&) { return false; })
      .def("__len__", &Curve::length)
      .def("length", &Curve::length)
      .def("__getitem__",
           [](Curve const& curve, int i) { return Segment(curve[segmentNumber(curve, i)]); })
      .def("__setitem__",
           [](Curve& curve, int i, Segment const& s) { curve(segmentNumber(curve, i)) = s; })
      .def("__iter__",
           [](Curve const& curve) { return py::iter(py::cast(curve.getSegments().toVector())); })
      .def(
          "append", [](Curve& curve, Segment const& s) { curve.getSegments().add(s); },
          py::arg("segment"))
      .def(
          "getSegments", [](Curve const& curve) { return curve.getSegments().toVector(); },
          "Copies of the segments.")
      .def(
          "setSegments",
          [](Curve& curve, std::vector<Segment> const& segments) {
            curve.setSegments(GxList<Segment>(segments));
          },
          py::arg("segments"))
      .def("firstPos", &Curve::firstPos)
      .def("lastPos", &Curve::lastPos)
      .def("strictIsClosed", [](Curve const& curve) { return curve.strictIsClosed() != 0; })
      .def(
          "setStrictIsClosed", [](Curve& curve, bool closed) { curve.setStrictIsClosed(closed); },
          py::arg("closed"))
      .def("getSense", &Curve::getSense, py::arg("a"), py::arg("b"))
      .def("locateCurvePosition", &Curve::locateCurvePosition, py::arg("pos"));
}

void bindMoving(CurveClass& c) {
  c.def("moveCurve", &Curve::moveCurve, py::arg("v"))
      .def("resize", &Curve::resize, py::arg("sx"), py::arg("sy"))
      .def("flip", &Curve::flip)
      .def("reverse", &Curve::reverse)
      .def("isClose", [](Curve& curve) { return curve.isClose() != 0; })
      .def("makeClosedCurve", [](Curve& curve) { return curve.makeClosedCurve() != 0; })
      .def("makeNiceClosedCurve", [](Curve& curve) { return curve.makeNiceClosedCurve() != 0; })
      .def(
          "isClockwise",
          [](Curve const& curve) {
            int valid = 0;
            bool const isClockwise = curve.isClockwise(valid) != 0;
            return onlyIf(valid != 0, isClockwise);
          },
          "None where no orientation is found.")
      .def(
          "changeOrientation",
          [](Curve& curve, bool clockwise) {
            require(curve.changeOrientation(clockwise), "the orientation cannot be decided");
          },
          py::arg("clockwise"))
      .def("offset", &Curve::offset, py::arg("distance"), py::arg("side") = 1, py::arg("mode") = 0)
      .def(
          "calculateOffsetValue",
          [](Curve const& curve, Vector const& direction, double distance, bool outwards) {
            double value = 0.0;
            int const code = curve.calculateOffsetValue(value, direction, distance, outwards);
            return onlyIf(code == 0, value);
          },
          py::arg("direction"), py::arg("distance"), py::arg("outwards"));
}

void bindMeasuring(CurveClass& c) {
  c.def("curveLength", &Curve::curveLength)
      .def("getBoundingBox",
           [](Curve const& curve) {
             std::tuple<double, double, double, double> b;
             curve.getBoundingBox(std::get<0>(b), std::get<1>(b), std::get<2>(b), std::get<3>(b));
             return b;
           })
      .def("getLocalBoundingBox",
           [](Curve const& curve) {
             std::tuple<double, double, double, double> b;
             curve.getLocalBoundingBox(std::get<0>(b), std::get<1>(b), std::get<2>(b),
                                       std::get<3>(b));
             return b;
           })
      .def("getMinMax",
           [](Curve const& curve) {
             std::pair<Point, Point> box;
             bool const found = curve.getMinMax(box.first, box.second) == 0;
             return onlyIf(found, box);
           })
      .def(
          "getCurveMaxY",
          [](Curve const& curve) {
            std::pair<int, double> at;
            bool const found = curve.getCurveMaxY(at.second, at.first) == 0;
            return onlyIf(found, at);
          },
          "The segment and the parameter.")
      .def("getCurveMinY",
           [](Curve const& curve) {
             std::pair<int, double> at;
             bool const found = curve.getCurveMinY(at.second, at.first) == 0;
             return onlyIf(found, at);
           })
      .def(
          "extendLine",
          [](Curve const& curve, double x, double tol) {
            Point out;
            int const code = curve.extendLine(out, x, tol);
            return onlyIf(code != -1, std::pair(out, code));
          },
          py::arg("x"), py::arg("tol"), "The point and the code, or None.")
      .def("wellDefinedDetection", &Curve::wellDefinedDetection, py::arg("lo"), py::arg("hi"));
}

void bindPolylines(CurveClass& c) {
  c.def(
       "makeCurve",
       [](Curve const& curve, double step, int mode) {
         GxList<Point> out;
         curve.makeCurve(step, out, mode);
         return out.toVector();
       },
       py::arg("step"), py::arg("mode") = 0)
      .def(
          "makeCurveEx",
          [](Curve const& curve, double step, double shortStep, double gap) {
            GxList<Point> out;
            curve.makeCurveEx(step, shortStep, gap, out);
            return out.toVector();
          },
          py::arg("step"), py::arg("shortStep"), py::arg("gap"))
      .def(
          "makeSegments",
          [](Curve const& curve, unsigned short count) {
            std::list<Point> out;
            curve.makeSegments(count, out);
            return Points(out.begin(), out.end());
          },
          py::arg("count"))
      .def(
          "getPolyline",
          [](Curve const& curve, double tolerance) {
            Points out;
            curve.getPolyline(tolerance, out);
            return out;
          },
          py::arg("tolerance"), "Points by halving; with a condition their positions, too.")
      .def(
          "getPolyline",
          [](Curve const& curve, double tolerance, Condition const& condition) {
            std::list<Point> out;
            std::list<Position> positions;
            curve.getPolyline(tolerance, out, positions, condition);
            return std::pair(Points(out.begin(), out.end()),
                             std::vector<Position>(positions.begin(), positions.end()));
          },
          py::arg("tolerance"), py::arg("condition"));
}

}  // namespace

void bindCurve(py::module_& m) {
  CurveClass c(m, "GxBezierCurve");
  bindMaking(c);
  bindSegments(c);
  bindMoving(c);
  bindMeasuring(c);
  bindPolylines(c);
  bindSearches(c);
}

}  // namespace python
