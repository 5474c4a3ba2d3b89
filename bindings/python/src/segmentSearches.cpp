// Searches on one segment: nearest points, roots, crossings, lengths and steps.
#include "bindings/python/src/segments.h"

namespace python {

namespace {

using Class = py::class_<Segment>;
using OptionalT = std::optional<double>;

void bindNearest(Class& c) {
  c.def(
       "findNearestPoint",
       [](Segment const& s, Point const& p) {
         Point nearest;
         bool const isEnd = s.findNearestPoint(p, nearest) != 0;
         return std::pair(nearest, isEnd);
       },
       py::arg("p"), "The nearest point to p, and whether it is an end.")
      .def(
          "findNearestPointTValue",
          [](Segment const& s, Point const& p) {
            double t = 0.0;
            s.findNearestPointTValue(p, t);
            return t;
          },
          py::arg("p"), "The parameter of the point nearest to p.")
      .def(
          "findParameter",
          [](Segment const& s, Point const& p, double tol) {
            double const t = s.findParameter(p, 0.0, tol);
            return onlyIf(t != -1.0, t);
          },
          py::arg("p"), py::arg("tol"),
          "The parameter of a point on the segment, both coordinates within tol; None where 15 "
          "Newton steps find none.")
      .def(
          "findTValue",
          [](Segment const& s, Point const& p, double tol) {
            double t = 0.0;
            bool const found = s.findTValue(p, t, tol) != 0;
            return onlyIf(found, t);
          },
          py::arg("p"), py::arg("tol"),
          "The parameter of a point on the segment, one coordinate met exactly and the other "
          "within tol, or None.")
      .def(
          "findClosestPoints",
          [](Segment const& s, Segment const& other) {
            double t1 = 0.0, t2 = 0.0;
            double const squared = s.findClosestPoints(other, t1, t2);
            return std::tuple(squared, t1, t2);
          },
          py::arg("other"),
          "The least squared distance of samples of both segments, eleven each, and their "
          "parameters.");
}

void bindRoots(Class& c) {
  c.def(
       "findRoots",
       [](Segment const& s, double y, double lowerT, double upperT) {
         GxList<double> t;
         s.findRoots(t, y, lowerT, upperT);
         return t.toVector();
       },
       py::arg("y"), py::arg("lowerT") = 0.0, py::arg("upperT") = 1.0,
       "All parameters in [lowerT, upperT] at which the segment has height y, ascending; none for "
       "a level segment.")
      .def(
          "findRootPoints",
          [](Segment const& s, double y, double lowerT, double upperT) {
            GxList<Point> points;
            s.findRoots(points, y, lowerT, upperT);
            return points.toVector();
          },
          py::arg("y"), py::arg("lowerT") = 0.0, py::arg("upperT") = 1.0,
          "The points at which the segment has height y: findRoots of C++ with a list of points.")
      .def(
          "findInflectionPoint",
          [](Segment const& s) {
            double t = 0.0;
            bool const found = s.findInflectionPoint(t) != 0;
            return onlyIf(found, t);
          },
          "The first parameter in (0, 1) at which the curvature changes its sign, or None.");
}

void bindCrossings(Class& c) {
  c.def(
       "isIntersect",
       [](Segment const& s, Segment const& other) { return s.isIntersect(other) != 0; },
       py::arg("other"), "Whether the boxes of the control points overlap or touch.")
      .def(
          "findIntersections",
          [](Segment const& s, Segment const& other) {
            GxList<double> t, u;
            s.findIntersections(other, t, u);
            return std::pair(t.toVector(), u.toVector());
          },
          py::arg("other"),
          "The parameters of all crossings, on this segment in descending order and on the other; "
          "tangential contacts may be missing.")
      .def(
          "findIntersectionPoints",
          [](Segment const& s, Segment const& other) {
            GxList<Point> points;
            s.findIntersections(other, points);
            return points.toVector();
          },
          py::arg("other"),
          "The points of all crossings: findIntersections of C++ with a list of points.")
      .def(
          "findFirstIntersection",
          [](Segment const& s, Segment const& other, double tol) {
            std::pair<double, double> found;
            bool const crosses = s.findFirstIntersection(other, found, tol) != 0;
            return onlyIf(crosses, found);
          },
          py::arg("other"), py::arg("tol"),
          "The parameters of the first crossing along this segment, by polylines within tol, or "
          "None.")
      .def(
          "findYCStrongIntersection",
          [](Segment const& s, Point const& a, Point const& b) {
            GxList<double> t, along;
            s.findYCStrongIntersection(a, b, t, along);
            return std::pair(t.toVector(), along.toVector());
          },
          py::arg("a"), py::arg("b"),
          "The crossings with the line segment from a to b: the parameters on the segment and "
          "along the line; empty where a is b.")
      .def(
          "linearProcessing",
          [](Segment const& s, Point const& a, Point const& b) {
            GxList<double> t, along;
            s.linearProcessing(a, b, t, along);
            return std::pair(t.toVector(), along.toVector());
          },
          py::arg("a"), py::arg("b"),
          "The same for a segment that is a line within 1e-9; empty for any other.");
}

void bindLengths(Class& c) {
  c.def("length", py::overload_cast<double>(&Segment::length, py::const_), py::arg("startT") = 0.0,
        "The arc length from startT to the end, by chords; arcLength states its accuracy.")
      .def(
          "splitAtFixedLengthAfter",
          [](Segment const& s, double distance, int steps, double lo, double hi, double anchorT) {
            double const t = s.splitAtFixedLengthAfter(distance, steps, lo, hi, anchorT);
            return std::tuple(t, lo, hi);
          },
          py::arg("distance"), py::arg("steps"), py::arg("lo"), py::arg("hi"), py::arg("anchorT"),
          "The parameter in [lo, hi] at a straight distance, within 0.1, from the point at anchorT "
          "before it; with the bracket that is left.")
      .def(
          "splitAtFixedLengthBefore",
          [](Segment const& s, double distance, int steps, double lo, double hi, double anchorT) {
            double const t = s.splitAtFixedLengthBefore(distance, steps, lo, hi, anchorT);
            return std::tuple(t, lo, hi);
          },
          py::arg("distance"), py::arg("steps"), py::arg("lo"), py::arg("hi"), py::arg("anchorT"),
          "The same in a bracket that lies before the anchor.");
}

void bindSteps(Class& c) {
  c.def(
       "findNextPos",
       [](Segment const& s, double startT, double squaredDistance, bool forward, OptionalT farT) {
         double t = 0.0;
         int const code = farT ? s.findNextPos(t, startT, *farT, squaredDistance, forward)
                               : s.findNextPos(t, startT, squaredDistance, forward);
         return onlyIf(code == 0, t);
       },
       py::arg("startT"), py::arg("squaredDistance"), py::arg("forward") = true,
       py::arg("farT") = py::none(),
       "The next parameter at a straight distance, given as its square, from the point at startT; "
       "None where the segment ends before.")
      .def(
          "findNextPosAndLength",
          [](Segment const& s, double startT, double squaredDistance, bool forward,
             OptionalT farT) {
            double t = 0.0, consumed = 0.0;
            int const code =
                farT ? s.findNextPos(t, startT, *farT, squaredDistance, forward, consumed)
                     : s.findNextPos(t, startT, squaredDistance, forward, consumed);
            return std::pair(onlyIf(code == 0, t), consumed);
          },
          py::arg("startT"), py::arg("squaredDistance"), py::arg("forward") = true,
          py::arg("farT") = py::none(),
          "What findNextPos finds, and the arc length walked, which is told where nothing is "
          "found, too.")
      .def(
          "findNextPosFromPoint",
          [](Segment const& s, double startT, Point const& p, double squaredDistance, bool forward,
             OptionalT farT) {
            double t = 0.0;
            int const code =
                farT ? s.findNextPosFromPoint(t, startT, *farT, p, squaredDistance, forward)
                     : s.findNextPosFromPoint(t, startT, p, squaredDistance, forward);
            return onlyIf(code == 0, t);
          },
          py::arg("startT"), py::arg("p"), py::arg("squaredDistance"), py::arg("forward") = true,
          py::arg("farT") = py::none(),
          "The next parameter from startT on at a distance, given as its square, from the point p, "
          "or None.");
}

}  // namespace

void bindSearches(Class& c) {
  bindNearest(c);
  bindRoots(c);
  bindCrossings(c);
  bindLengths(c);
  bindSteps(c);
}

}  // namespace python
