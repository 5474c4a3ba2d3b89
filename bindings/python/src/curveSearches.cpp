// Searches on a curve: nearest points, crossings, directions and steps.
#include "bindings/python/src/curves.h"

#include <cmath>

namespace python {

namespace {

using OptionalPosition = std::optional<Position>;
using TwoVectors = std::pair<Vector, Vector>;

void bindNearest(CurveClass& c) {
  c.def(
       "whichSegment",
       [](Curve const& curve, Point const& p, double tolerance) {
         double t = 0.0;
         int const segment = curve.whichSegment(p, t, tolerance);
         return onlyIf(segment != -1, std::pair(segment, t));
       },
       py::arg("p"), py::arg("tolerance"),
       "The segment that passes p within tolerance and the parameter there, or None.")
      .def(
          "findNearestPoint",
          [](Curve const& curve, Point const& p) {
            Point nearest;
            bool const found = curve.findNearestPoint(p, nearest) != -1;
            return onlyIf(found, nearest);
          },
          py::arg("p"),
          "A point of the curve near p; the search is content with one 0.7 away. None for an empty "
          "curve.")
      .def(
          "findNearestPointPos",
          [](Curve const& curve, Point const& p) {
            Position pos;
            bool const found = curve.findNearestPointPos(p, pos) != -1;
            return onlyIf(found, pos);
          },
          py::arg("p"),
          "The position of a point near p, searched in the same way. None for an empty curve.")
      .def("getMinSqDistance", &Curve::getMinSqDistance, py::arg("other"),
           "The least squared distance to another curve, from samples; 0.0 where either is empty.");
}

void bindCrossings(CurveClass& c) {
  c.def(
       "findIntersections",
       [](Curve const& curve, Curve const& other) {
         GxList<Point> points;
         curve.findIntersections(other, points);
         return points.toVector();
       },
       py::arg("other"),
       "The points at which two curves cross; a crossing on a joint may come more than once.")
      .def(
          "findFirstGeometricLineIntersection",
          [](Curve const& curve, Point const& p, Vector const& v, Position const& start,
             Position const& towards, double tolerance) {
            Position result;
            int const code =
                curve.findFirstGeometricLineIntersection(p, v, start, towards, result, tolerance);
            return onlyIf(code == 0, result);
          },
          py::arg("p"), py::arg("v"), py::arg("start"), py::arg("towards"), py::arg("tolerance"),
          "The first position from start towards another at which the curve meets the line through "
          "p along v, or None.")
      .def(
          "findFirstGeometricLineIntersectionEx",
          [](Curve const& curve, Point const& p, Vector const& v, Position const& start,
             Position const& towards, double tolerance) {
            Position result;
            int const code =
                curve.findFirstGeometricLineIntersectionEx(p, v, start, towards, result, tolerance);
            return onlyIf(code == 0, result);
          },
          py::arg("p"), py::arg("v"), py::arg("start"), py::arg("towards"), py::arg("tolerance"),
          "Does the same in the frame of the line.")
      .def(
          "findFirstGeometricLineIntersectionWithEndpointCheck",
          [](Curve const& curve, Point const& p, Vector const& v, Position const& start,
             Position const& towards) {
            Position result;
            int const code = curve.findFirstGeometricLineIntersectionWithEndpointCheck(
                p, v, start, towards, result);
            return onlyIf(code == 0, result);
          },
          py::arg("p"), py::arg("v"), py::arg("start"), py::arg("towards"),
          "Does the same with a tolerance of 1e-8; the far end counts if it lies within 0.001 of "
          "the line.");
}

using VectorsAt = int (Curve::*)(Position const&, Vector&, Vector&) const;

/// A method that stores the vectors on both sides of a position.
void defineVectors(CurveClass& c, char const* name, VectorsAt method, char const* doc) {
  c.def(
      name,
      [method](Curve const& curve, Position const& pos) {
        TwoVectors sides;
        bool const found = (curve.*method)(pos, sides.first, sides.second) == 0;
        return onlyIf(found, sides);
      },
      py::arg("pos"), doc);
}

void bindDirections(CurveClass& c) {
  c.def(
      "getTriple",
      [](Curve const& curve, Position const& pos) {
        // At the start of an open curve there is no handle before.
        Point point, after, before(std::nan(""), std::nan(""));
        bool const found = curve.getTriple(pos, point, before, after) == 0;
        return onlyIf(found, std::tuple(point, before, after));
      },
      py::arg("pos"),
      "The point at a position and the handles before and after it; None off the curve. At the "
      "start of an open curve the handle before is not a number.");
  defineVectors(c, "getVelocityVectors", &Curve::getVelocityVectors,
                "The first derivatives on both sides of a position, the first one backwards along "
                "the curve; None off the curve.");
  defineVectors(c, "findVelocityVectors", &Curve::findVelocityVectors,
                "The first derivatives on both sides of a position, both in the direction of "
                "travel; None off the curve.");
  defineVectors(c, "getAccelerationVectors", &Curve::getAccelerationVectors,
                "The second derivatives on both sides of a position, the first one negated; None "
                "off the curve.");
}

void bindSteps(CurveClass& c) {
  c.def(
       "findNextPos",
       [](Curve const& curve, Position const& start, double d, bool forward, int mode) {
         Position to;
         bool const found = curve.findNextPos(start, to, d, forward, mode) == 0;
         return onlyIf(found, to);
       },
       py::arg("start"), py::arg("d"), py::arg("forward") = true, py::arg("mode") = 0,
       "The next position at a straight distance d, or None where the curve ends before. The mode "
       "is a StepMode.")
      .def(
          "findNextPos",
          [](Curve const& curve, Position const& start, double d, bool forward,
             Position const& limit) {
            Position to;
            bool const found = curve.findNextPos(start, limit, to, d, forward) == 0;
            return onlyIf(found, to);
          },
          py::arg("start"), py::arg("d"), py::arg("forward") = true, py::kw_only(),
          py::arg("limit"), "The same as far as a limit.")
      .def(
          "findNextPosAndLength",
          [](Curve const& curve, Position const& start, double d, bool forward, int mode) {
            Position to;
            double consumed = 0.0;
            bool const found = curve.findNextPos(start, to, d, forward, consumed, mode) == 0;
            return std::pair(onlyIf(found, to), consumed);
          },
          py::arg("start"), py::arg("d"), py::arg("forward") = true, py::arg("mode") = 0,
          "What findNextPos finds, and the arc length walked.")
      .def(
          "findNextPosAndLength",
          [](Curve const& curve, Position const& start, double d, bool forward,
             Position const& limit) {
            Position to;
            double consumed = 0.0;
            bool const found = curve.findNextPos(start, limit, to, d, consumed, forward) == 0;
            return std::pair(onlyIf(found, to), consumed);
          },
          py::arg("start"), py::arg("d"), py::arg("forward") = true, py::kw_only(),
          py::arg("limit"), "The same as far as a limit.")
      .def(
          "findNextPosFromPoint",
          [](Curve const& curve, Point const& p, Position const& start, double d, bool forward,
             OptionalPosition const& limit) {
            Position to;
            int const code = limit ? curve.findNextPosFromPoint(p, start, *limit, to, d, forward)
                                   : curve.findNextPosFromPoint(p, start, to, d, forward);
            return onlyIf(code == 0, to);
          },
          py::arg("p"), py::arg("start"), py::arg("d"), py::arg("forward") = true,
          py::arg("limit") = py::none(),
          "The next position from start on at a straight distance d from the point p, or None.");
}

}  // namespace

void bindSearches(CurveClass& c) {
  bindNearest(c);
  bindCrossings(c);
  bindDirections(c);
  bindSteps(c);
}

}  // namespace python
