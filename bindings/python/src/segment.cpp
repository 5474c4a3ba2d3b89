// One cubic segment.
#include "bindings/python/src/segments.h"

namespace python {

Segment segmentOf(py::handle source) {
  Array const array = arrayOf(source);
  if (!array || array.ndim() != 2 || array.shape(0) != 4 || array.shape(1) != 2) {
    throw py::value_error("a segment is made of a (4, 2) array");
  }
  Segment s;
  for (int i = 0; i < 4; ++i) s(i) = {array.at(i, 0), array.at(i, 1)};
  return s;
}

Array arrayOf(Segment const& s) {
  Array array({4, 2});
  for (int i = 0; i < 4; ++i) {
    array.mutable_at(i, 0) = s[i].xval(), array.mutable_at(i, 1) = s[i].yval();
  }
  return array;
}

namespace {

int controlPoint(int i) {
  if (i < -4 || i > 3) throw py::index_error("a segment has four control points");
  return i < 0 ? i + 4 : i;
}

/// A condition that Python classes may override.
class OverriddenCondition : public Condition {
 public:
  int isALine(Segment const& segment, double tol) const override {
    PYBIND11_OVERRIDE(int, Condition, isALine, segment, tol);
  }
  int isAPoint(Segment const& segment, double tol) const override {
    PYBIND11_OVERRIDE(int, Condition, isAPoint, segment, tol);
  }
};

using Class = py::class_<Segment>;

void bindValues(Class& c) {
  c.def(py::init(&segmentOf), py::arg("points"),
        "Takes four points as a (4, 2) array: the ends and the handles between; ValueError for "
        "another shape.")
      .def(py::init<>(), "Places all four points at the origin.")
      .def(py::init<Point const&, Point const&, Point const&, Point const&>(), py::arg("p0"),
           py::arg("p1"), py::arg("p2"), py::arg("p3"),
           "Takes the start, the two inner control points and the end.")
      .def_property(
          "points", py::overload_cast<Segment const&>(&arrayOf),
          [](Segment& s, Array const& points) { s = segmentOf(points); },
          "The control points as a (4, 2) array, a copy; assigning replaces them.")
      .def("__eq__", [](Segment const& a, Segment const& b) { return (a == b) != 0; })
      .def("__eq__", [](Segment const&, py::object const&) { return false; })
      .def("__len__", [](Segment const&) { return 4; })
      .def("__getitem__", [](Segment const& s, int i) { return s[controlPoint(i)]; })
      .def("__setitem__", [](Segment& s, int i, Point const& p) { s(controlPoint(i)) = p; })
      .def("__array__", [](Segment const& s) { return arrayOf(s); })
      .def("__repr__",
           [](Segment const& s) {
             return "GxBezier(" + std::string(py::repr(arrayOf(s).attr("tolist")())) + ")";
           })
      .def(py::pickle([](Segment const& s) { return py::make_tuple(arrayOf(s)); },
                      [](py::tuple const& state) { return segmentOf(state[0]); }))
      .def("reverse", &Segment::reverse,
           "Runs the segment the other way, in place: t becomes 1 - t.")
      .def("scale", &Segment::scale, py::arg("sx"), py::arg("sy"),
           "Multiplies all x by sx and all y by sy, in place.")
      .def("flip", &Segment::flip, "Mirrors the segment in the x axis, in place.")
      .def("bValue", &Segment::bValue, py::arg("t"),
           "The point at t; outside [0, 1] the cubic goes on.")
      .def("dValue", &Segment::dValue, py::arg("t"), "The first derivative at t.")
      .def("ddValue", &Segment::ddValue, py::arg("t"), "The second derivative at t.")
      .def("curvatureValue", &Segment::curvatureValue, py::arg("t"),
           "The change of the slope dy/dx with t, and dx/dt; both 0 where the tangent is vertical.")
      .def(
          "bValues",
          [](Segment const& s, Numbers const& t) {
            std::pair<Points, std::vector<Vector>> found(t.size(), t.size());
            s.bValues(t.data(), static_cast<int>(t.size()), found.first.data(),
                      found.second.data());
            return found;
          },
          py::arg("t"),
          "The points and the first derivatives at many parameters, as two (n, 2) arrays.")
      .def(
          "split",
          [](Segment const& s, double t) {
            std::pair<Segment, Segment> parts;
            s.split(parts.first, parts.second, t);
            return parts;
          },
          py::arg("t"),
          "The parts over [0, t] and [t, 1] as two segments; they share their joint bit for bit.");
}

void bindForm(Class& c) {
  c.def(
       "isALine", [](Segment const& s, double tol) { return s.isALine(tol) != 0; }, py::arg("tol"),
       "Whether each handle lies within tol of the chord or of its own end point.")
      .def(
          "isAPoint", [](Segment const& s, double tol) { return s.isAPoint(tol) != 0; },
          py::arg("tol"), "Whether all four points coincide within tol, handles with their ends.")
      .def(
          "isWellDefined", [](Segment const& s) { return s.isWellDefined() != 0; },
          "Whether x never runs back, so that every vertical line meets the segment once at most; "
          "False for a point or a vertical line.")
      .def(
          "findRatio",
          [](Segment const& s, int mode) {
            double ratio = 0.0;
            int const code = s.findRatio(0.0, mode, ratio);
            return onlyIf(code != -1, std::pair(ratio, code));
          },
          py::arg("mode"),
          "The x component of the unit tangent: in mode 1 its minimum, in mode 2 its maximum, else "
          "an average; with the code that says where. None for a point.")
      .def(
          "isSelfIntersect",
          [](Segment const& s) {
            std::pair<double, double> t(0.0, 0.0);
            bool const crosses = s.isSelfIntersect(t.first, t.second) != 0;
            return onlyIf(crosses, t);
          },
          "The two parameters at which the segment crosses itself, in no order; None where it does "
          "not.")
      .def(
          "cleanSelfIntersection",
          [](Segment const& s) {
            GxList<Segment> list;
            s.cleanSelfIntersection(list);
            return list.toVector();
          },
          "The segment as a list, cut in the middle of its loop if it has one.");
}

void bindExtremes(Class& c) {
  c.def(
       "getYMinMaxTValues",
       [](Segment const& s) {
         GxList<double> t;
         s.getYMinMaxTValues(t);
         return std::pair(t[0], t[1]);
       },
       "The parameters of the lowest and the highest point.")
      .def(
          "getMaxYTValue",
          [](Segment const& s) {
            std::pair<double, double> found;
            s.getMaxYTValue(found.first, found.second);
            return found;
          },
          "The parameter and the height of the highest point.")
      .def(
          "getMinYTValue",
          [](Segment const& s) {
            std::pair<double, double> found;
            s.getMinYTValue(found.first, found.second);
            return found;
          },
          "The parameter and the height of the lowest point.")
      .def(
          "localMinMax",
          [](Segment const& s) {
            std::tuple<double, double, double, double> b;
            s.localMinMax(std::get<0>(b), std::get<1>(b), std::get<2>(b), std::get<3>(b));
            return b;
          },
          "The tight box of the segment: minX, minY, maxX, maxY.")
      .def(
          "getConvexHull",
          [](Segment const& s) {
            std::tuple<double, double, double, double> b;
            s.getConvexHull(std::get<0>(b), std::get<1>(b), std::get<2>(b), std::get<3>(b));
            return b;
          },
          "The box of the control points: minX, minY, maxX, maxY.");
}

void bindPolylines(Class& c) {
  c.def(
       "makeSegment",
       [](Segment const& s, unsigned short count) {
         std::list<Point> out;
         s.makeSegment(count, out);
         return Points(out.begin(), out.end());
       },
       py::kw_only(), py::arg("count"), "Count + 1 points at equal steps of the parameter.")
      .def(
          "makeSegment",
          [](Segment const& s, double chord, double startT) {
            GxList<Point> out;
            s.makeSegment(chord, out, startT);
            return out.toVector();
          },
          py::kw_only(), py::arg("chord"), py::arg("startT") = 0.0,
          "Points one chord apart, within 0.1, from startT on; the last chord may be shorter.")
      .def(
          "makeSegmentEx",
          [](Segment const& s, double longChord, double shortChord, double gap, double startT) {
            GxList<Point> out;
            s.makeSegmentEx(longChord, shortChord, gap, out, startT);
            return out.toVector();
          },
          py::arg("longChord"), py::arg("shortChord"), py::arg("gap"), py::arg("startT") = 0.0,
          "Points a long chord apart where the curve stays within gap of it, a short chord "
          "elsewhere.")
      .def(
          "getPolyline",
          [](Segment const& s, double tol) {
            Points out;
            s.getPolyline(tol, out);
            return out;
          },
          py::arg("tol"),
          "Points by halving until every piece is a line within tol; the chord for a negative "
          "tolerance.")
      .def(
          "getPolyline",
          [](Segment const& s, double tol, Condition const& condition) {
            std::list<Point> out;
            std::list<double> t;
            s.getPolyline(tol, out, t, condition);
            return std::pair(Points(out.begin(), out.end()), Numbers(t.begin(), t.end()));
          },
          py::arg("tol"), py::arg("condition"),
          "The same by a condition of the caller, with the parameters of the points.");
}

}  // namespace

void bindSegment(py::module_& m) {
  Class c(m, "GxBezier",
          "A cubic Bezier segment: start, two inner control points, end. Also called Segment.");
  py::class_<Condition, OverriddenCondition>(
      m, "GxBezierPolylineCondition",
      "Decides when the halving of a segment into a polyline ends; a class derived from it may "
      "decide otherwise.")
      .def(py::init<>(), "The condition of getPolyline itself.")
      .def("isALine", &Condition::isALine, py::arg("segment"), py::arg("tol"),
           "Not 0 where the chord may replace the segment; here GxBezier.isALine.")
      .def(
          "isAPoint", &Condition::isAPoint, py::arg("segment"), py::arg("tol"),
          "Not 0 where the segment may be left out; here GxBezier.isAPoint. Asked before isALine.");
  bindValues(c);
  bindForm(c);
  bindExtremes(c);
  bindPolylines(c);
  bindSearches(c);
  m.def(
      "intersectBezierWithXAxis",
      [](Point const& p0, Point const& p1, Point const& p2, Point const& p3, double tol) {
        int count = 0;
        double roots[3] = {0.0, 0.0, 0.0};
        intersectBezierWithXAxis(p0, p1, p2, p3, count, roots[0], roots[1], roots[2], tol);
        return Numbers(roots, roots + count);
      },
      py::arg("p0"), py::arg("p1"), py::arg("p2"), py::arg("p3"), py::arg("tol") = kZeroTolerance,
      "The parameters at which the cubic with these control points meets the x axis, ascending.");
}

}  // namespace python
