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
  c.def(py::init<>(), "Makes an empty, open curve.")
      .def(py::init([](Points const& points, double error) { return Curve(points, error); }),
           py::arg("points"), py::arg("error"),
           "Fits an open curve to points; error is a squared distance. Fewer than two points give "
           "an empty curve.")
      .def(py::init([](std::vector<Segment> const& segments, bool closed) {
             Curve curve(segments);
             curve.setStrictIsClosed(closed);
             return curve;
           }),
           py::arg("segments"), py::arg("closed") = false, "Takes a list of segments.")
      .def(py::init(&curveOf), py::arg("points"), py::arg("closed") = false,
           "Takes an (n, 4, 2) array; ValueError for another shape.")
      .def(
          "makeBezierPolyFit",
          [](Curve& curve, Points const& points, double error) {
            GxList<Point> const list(points);
            curve.makeBezierPolyFit(&list, error);
          },
          py::arg("points"), py::arg("error"),
          "Appends a fit of points; error is a squared distance. Fewer than two points append "
          "nothing.")
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
  c.def_property(
       "points", py::overload_cast<Curve const&>(&arrayOf),
       [](Curve& curve, Array const& points) {
         curve.setSegments(curveOf(points, false).getSegments());
       },
       "The control points as an (n, 4, 2) array, a copy; assigning replaces the segments.")
      .def_property(
          "closed", [](Curve const& curve) { return curve.strictIsClosed() != 0; },
          [](Curve& curve, bool closed) { curve.setStrictIsClosed(closed); },
          "Whether the curve is to be treated as closed.")
      .def("__array__", [](Curve const& curve) { return arrayOf(curve); })
      .def("__eq__", [](Curve const& a, Curve const& b) { return (a == b) != 0; })
      .def("__eq__", [](Curve const&, py::object const&) { return false; })
      .def("__len__", &Curve::length)
      .def("length", &Curve::length, "The number of segments.")
      .def("__getitem__",
           [](Curve const& curve, int i) { return Segment(curve[segmentNumber(curve, i)]); })
      .def("__setitem__",
           [](Curve& curve, int i, Segment const& s) { curve(segmentNumber(curve, i)) = s; })
      .def("__iter__",
           [](Curve const& curve) { return py::iter(py::cast(curve.getSegments().toVector())); })
      .def(
          "append", [](Curve& curve, Segment const& s) { curve.getSegments().add(s); },
          py::arg("segment"), "Appends a copy of a segment.")
      .def(
          "getSegments", [](Curve const& curve) { return curve.getSegments().toVector(); },
          "Copies of the segments, as a list.")
      .def(
          "setSegments",
          [](Curve& curve, std::vector<Segment> const& segments) {
            curve.setSegments(GxList<Segment>(segments));
          },
          py::arg("segments"), "Replaces the segments by copies; the curve stays open or closed.")
      .def("firstPos", &Curve::firstPos, "The position of the start, (0, 0.0).")
      .def("lastPos", &Curve::lastPos, "The position of the end, (n, 0.0) for n segments.")
      .def(
          "strictIsClosed", [](Curve const& curve) { return curve.strictIsClosed() != 0; },
          "Whether the curve is to be treated as closed, as it was set.")
      .def(
          "setStrictIsClosed", [](Curve& curve, bool closed) { curve.setStrictIsClosed(closed); },
          py::arg("closed"), "Sets whether the curve is to be treated as closed.")
      .def("getSense", &Curve::getSense, py::arg("a"), py::arg("b"),
           "The sense from a to b, as a Sense: 1 forward, 2 backward, 0 where they coincide.")
      .def("locateCurvePosition", &Curve::locateCurvePosition, py::arg("pos"),
           "The point at a position; the origin for a position off the curve.");
}

void bindMoving(CurveClass& c) {
  c.def("moveCurve", &Curve::moveCurve, py::arg("v"), "Moves the curve by v, in place.")
      .def("resize", &Curve::resize, py::arg("sx"), py::arg("sy"),
           "Multiplies all x by sx and all y by sy, in place.")
      .def("flip", &Curve::flip, "Mirrors the curve in the x axis, in place.")
      .def("reverse", &Curve::reverse, "Runs the curve the other way, in place.")
      .def(
          "isClose", [](Curve& curve) { return curve.isClose() != 0; },
          "Whether the ends lie within 0.5 of each other; if so both are moved onto their "
          "midpoint.")
      .def(
          "makeClosedCurve", [](Curve& curve) { return curve.makeClosedCurve() != 0; },
          "Closes the curve, with a straight segment where the ends do not meet; False for an "
          "empty curve and one that encloses nothing.")
      .def(
          "makeNiceClosedCurve", [](Curve& curve) { return curve.makeNiceClosedCurve() != 0; },
          "Does the same, but trims end segments that overlap or nearly meet.")
      .def(
          "isClockwise",
          [](Curve const& curve) {
            int valid = 0;
            bool const isClockwise = curve.isClockwise(valid) != 0;
            return onlyIf(valid != 0, isClockwise);
          },
          "Whether the outline runs clockwise, with y up; None where no orientation is found.")
      .def(
          "changeOrientation",
          [](Curve& curve, bool clockwise) {
            require(curve.changeOrientation(clockwise), "the orientation cannot be decided");
          },
          py::arg("clockwise"),
          "Reverses the curve if it does not run as wanted; raises Error where the orientation "
          "cannot be decided.")
      .def("offset", &Curve::offset, py::arg("distance"), py::arg("side") = 1, py::arg("mode") = 0,
           "Replaces the curve by its parallel, to the left for a positive distance; nothing is "
           "trimmed, distances below 0.5 are ignored. The mode is an OffsetMode.")
      .def(
          "calculateOffsetValue",
          [](Curve const& curve, Vector const& direction, double distance, bool outwards) {
            double value = 0.0;
            int const code = curve.calculateOffsetValue(value, direction, distance, outwards);
            return onlyIf(code == 0, value);
          },
          py::arg("direction"), py::arg("distance"), py::arg("outwards"),
          "The distance for offset that moves the place farthest in a direction by a distance; "
          "None for an empty curve or no direction.");
}

void bindMeasuring(CurveClass& c) {
  c.def("curveLength", &Curve::curveLength, "The length by chords; arcLength states its accuracy.")
      .def(
          "getBoundingBox",
          [](Curve const& curve) {
            std::tuple<double, double, double, double> b;
            curve.getBoundingBox(std::get<0>(b), std::get<1>(b), std::get<2>(b), std::get<3>(b));
            return b;
          },
          "The box of the control points: minX, minY, maxX, maxY; zeros for an empty curve.")
      .def(
          "getLocalBoundingBox",
          [](Curve const& curve) {
            std::tuple<double, double, double, double> b;
            curve.getLocalBoundingBox(std::get<0>(b), std::get<1>(b), std::get<2>(b),
                                      std::get<3>(b));
            return b;
          },
          "The tight box: minX, minY, maxX, maxY; zeros for an empty curve.")
      .def(
          "getMinMax",
          [](Curve const& curve) {
            std::pair<Point, Point> box;
            bool const found = curve.getMinMax(box.first, box.second) == 0;
            return onlyIf(found, box);
          },
          "The tight box as two points; None for an empty curve.")
      .def(
          "getCurveMaxY",
          [](Curve const& curve) {
            std::pair<int, double> at;
            bool const found = curve.getCurveMaxY(at.second, at.first) == 0;
            return onlyIf(found, at);
          },
          "The segment and the parameter of the highest place; None for an empty curve.")
      .def(
          "getCurveMinY",
          [](Curve const& curve) {
            std::pair<int, double> at;
            bool const found = curve.getCurveMinY(at.second, at.first) == 0;
            return onlyIf(found, at);
          },
          "The segment and the parameter of the lowest place; None for an empty curve.")
      .def(
          "extendLine",
          [](Curve const& curve, double x, double tol) {
            Point out;
            int const code = curve.extendLine(out, x, tol);
            return onlyIf(code != -1, std::pair(out, code));
          },
          py::arg("x"), py::arg("tol"),
          "The point at which the start tangent meets the vertical line through x, and 0 if the "
          "line lies before the start, else 1; None without a direction.")
      .def("wellDefinedDetection", &Curve::wellDefinedDetection, py::arg("lo"), py::arg("hi"),
           "How the range of x lies against the interval from lo to hi, as an XRange; 0 where a "
           "segment runs back.");
}

void bindPolylines(CurveClass& c) {
  c.def(
       "makeCurve",
       [](Curve const& curve, double step, int mode) {
         GxList<Point> out;
         curve.makeCurve(step, out, mode);
         return out.toVector();
       },
       py::arg("step"), py::arg("mode") = 0,
       "Points at a straight distance of step from each other, within 0.1. The mode is a "
       "SpacingMode.")
      .def(
          "makeCurveEx",
          [](Curve const& curve, double step, double shortStep, double gap) {
            GxList<Point> out;
            curve.makeCurveEx(step, shortStep, gap, out);
            return out.toVector();
          },
          py::arg("step"), py::arg("shortStep"), py::arg("gap"),
          "The same with chords of length step where the curve stays within gap of them, of length "
          "shortStep elsewhere.")
      .def(
          "makeSegments",
          [](Curve const& curve, unsigned short count) {
            std::list<Point> out;
            curve.makeSegments(count, out);
            return Points(out.begin(), out.end());
          },
          py::arg("count"),
          "Count + 1 points at equal steps of the parameter for every segment, joints once.")
      .def(
          "getPolyline",
          [](Curve const& curve, double tolerance) {
            Points out;
            curve.getPolyline(tolerance, out);
            return out;
          },
          py::arg("tolerance"), "Points by halving until every piece is a line within tolerance.")
      .def(
          "getPolyline",
          [](Curve const& curve, double tolerance, Condition const& condition) {
            std::list<Point> out;
            std::list<Position> positions;
            curve.getPolyline(tolerance, out, positions, condition);
            return std::pair(Points(out.begin(), out.end()),
                             std::vector<Position>(positions.begin(), positions.end()));
          },
          py::arg("tolerance"), py::arg("condition"),
          "The same by a condition of the caller, with the positions of the points.");
}

}  // namespace

void bindCurve(py::module_& m) {
  CurveClass c(m, "GxBezierCurve",
               "A chain of segments, open or closed, and a sequence of them. Also called Curve.");
  bindMaking(c);
  bindSegments(c);
  bindMoving(c);
  bindMeasuring(c);
  bindPolylines(c);
  bindSearches(c);
}

}  // namespace python
