// Lines, solvers, tolerances, rotations, Bernstein weights, and the names of modes and codes.
#include "bindings/python/src/arrays.h"

#include <memory>

namespace python {

namespace {

void bindLines(py::module_& m) {
  m.def(
      "intersect",
      [](Point const& a1, Point const& a2, Point const& b1, Point const& b2) {
        Point out;
        bool const meets = intersect(out, a1, a2, b1, b2) == 0;
        return onlyIf(meets, out);
      },
      py::arg("a1"), py::arg("a2"), py::arg("b1"), py::arg("b2"),
      "Where the line through a1 and a2 meets the line through b1 and b2; None where they are "
      "parallel or not numbers.");
  m.def(
      "pointOnLineSegment",
      [](Point const& p, Point const& a, Point const& b, double tol) {
        return pointOnLineSegment(p, a, b, tol) != 0;
      },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("tol"),
      "Whether p lies no farther than tol from the line segment from a to b.");
  m.def(
      "quickCheckPointOnLine",
      [](Point const& p, Point const& a, Point const& b, double tol) {
        return quickCheckPointOnLine(p, a, b, tol) != 0;
      },
      py::arg("p"), py::arg("a"), py::arg("b"), py::arg("tol"),
      "Whether p lies no farther than tol from the unlimited line through a and b.");
  m.def(
      "isEqual", [](Point const& p, Point const& q, double tol) { return isEqual(p, q, tol) != 0; },
      py::arg("p"), py::arg("q"), py::arg("tol"),
      "Whether two points are no farther apart than tol; two positions nearer than tol, counted in "
      "segments; or two positions on a curve, across its seam if it is closed.");
  m.def("closestToLineSegment", closestToLineSegment, py::arg("a"), py::arg("b"), py::arg("p"),
        "The point of the line segment from a to b that is nearest to p.");
  m.def("distanceToLineSegment", distanceToLineSegment, py::arg("a"), py::arg("b"), py::arg("p"),
        "The distance from p to the line segment from a to b.");
  m.def("angle", crv::angle, py::arg("a"), py::arg("b"), py::arg("c"),
        "The angle at b from a to c in radians, in [-pi, pi], counter-clockwise positive; where a "
        "is b, from the x direction.");
  m.def("Are3PointsCCW", Are3PointsCCW, py::arg("a"), py::arg("b"), py::arg("c"),
        "The turn at b on the way a, b, c, as a Turn; 0 where it is straight, exactly, or not a "
        "number.");
  m.def(
      "isPointInBox",
      [](Point const& p, double minX, double minY, double maxX, double maxY, double tol) {
        return isPointInBox(p, minX, minY, maxX, maxY, tol) != 0;
      },
      py::arg("p"), py::arg("minX"), py::arg("minY"), py::arg("maxX"), py::arg("maxY"),
      py::arg("tol"), "Whether p lies in the box with these bounds, each widened by tol.");
  m.def(
      "pointsAverage",
      [](Point p, Point q) {
        pointsAverage(p, q);
        return p;
      },
      py::arg("p"), py::arg("q"), "The point in the middle between p and q.");
}

void bindSolvers(py::module_& m) {
  m.def(
      "cubicRoots",
      [](double a, double b, double c, double d) {
        double roots[3];
        int const count = cubicRoots(a, b, c, d, roots);
        return Numbers(roots, roots + count);
      },
      py::arg("a"), py::arg("b"), py::arg("c"), py::arg("d"),
      "The distinct real roots of a x^3 + b x^2 + c x + d, at most three; an empty array without "
      "any, and where a coefficient is not a number.");
  py::class_<GxQuadraticSolver>(m, "GxQuadraticSolver",
                                "Solves quadratic equations; it has no state.")
      .def(py::init<>(), "A solver.")
      .def(
          "quadraticSolve",
          [](GxQuadraticSolver const& solver, double a, double b, double c, double tolLeading,
             double tolDiscriminant) {
            int count = 0;
            double roots[2] = {0.0, 0.0};
            solver.quadraticSolve(&count, &roots[0], &roots[1], a, b, c, tolLeading,
                                  tolDiscriminant);
            return Numbers(roots, roots + count);
          },
          py::arg("a"), py::arg("b"), py::arg("c"), py::arg("tolLeading") = kZeroTolerance,
          py::arg("tolDiscriminant") = kZeroTolerance,
          "The real roots of a x^2 + b x + c. An a below tolLeading makes the equation linear, a "
          "discriminant below tolDiscriminant in magnitude counts as 0.");
  m.attr("kZeroTolerance") = kZeroTolerance;
  m.def(
      "IS_ZERO", [](double x, double tol) { return IS_ZERO(x, tol) != 0; }, py::arg("x"),
      py::arg("tol") = kZeroTolerance, "Whether the magnitude of x is below tol.");
  m.def(
      "IS_EQUAL", [](double a, double b, double tol) { return IS_EQUAL(a, b, tol) != 0; },
      py::arg("a"), py::arg("b"), py::arg("tol") = kZeroTolerance,
      "Whether a and b differ by less than tol.");
}

void bindBernstein(py::module_& m) {
  m.def("factln", factln, py::arg("n"),
        "The natural logarithm of n factorial; 0 for a negative n.");
  m.def("bico", bico, py::arg("n"), py::arg("k"), "The binomial coefficient n over k.");
  m.def("blendValue", blendValue, py::arg("t"), py::arg("i"), py::arg("n"),
        "The Bernstein weight i of degree n at t.");
  m.def(
      "initBlendArray",
      [](unsigned short n) {
        std::unique_ptr<double*[]> const rows(initBlendArray(n));
        if (rows == nullptr) throw std::bad_alloc();
        Array table({n + std::size_t{1}, std::size_t{4}});
        for (int i = 0; i <= n; ++i) {
          std::unique_ptr<double[]> const row(rows[static_cast<std::size_t>(i)]);
          std::copy(row.get(), row.get() + 4, table.mutable_data(i));
        }
        return table;
      },
      py::arg("n"), "The four cubic Bernstein weights at 0, 1/n, 2/n, ..., 1, a row each.");
}

/// Names for whole numbers; each converts to the int that operations use.
void bindCodes(py::module_& m) {
  using namespace crv;
  py::enum_<Sense::Value>(m, "Sense", "The sense from one position to another.", py::arithmetic())
      .value("coinciding", Sense::coinciding)
      .value("forward", Sense::forward)
      .value("backward", Sense::backward);
  py::enum_<Outcome::Value>(m, "Outcome",
                            "What an operation of C++ returns that either succeeds or fails.",
                            py::arithmetic())
      .value("done", Outcome::done)
      .value("failed", Outcome::failed);
  py::enum_<OffsetMode::Value>(m, "OffsetMode", "The mode of GxBezierCurve.offset.",
                               py::arithmetic())
      .value("plain", OffsetMode::plain)
      .value("cutFirst", OffsetMode::cutFirst)
      .value("onlyCut", OffsetMode::onlyCut);
  py::enum_<SpacingMode::Value>(m, "SpacingMode", "The mode of GxBezierCurve.makeCurve.",
                                py::arithmetic())
      .value("acrossJoints", SpacingMode::acrossJoints)
      .value("eachSegment", SpacingMode::eachSegment);
  py::enum_<StepMode::Value>(m, "StepMode", "The mode of GxBezierCurve.findNextPos.",
                             py::arithmetic())
      .value("oneChord", StepMode::oneChord)
      .value("shortChords", StepMode::shortChords);
  py::enum_<Turn::Value>(m, "Turn", "What Are3PointsCCW returns.", py::arithmetic())
      .value("clockwise", Turn::clockwise)
      .value("straight", Turn::straight)
      .value("counterClockwise", Turn::counterClockwise);
  py::enum_<XRange::Value>(m, "XRange", "What GxBezierCurve.wellDefinedDetection returns.",
                           py::arithmetic())
      .value("runsBack", XRange::runsBack)
      .value("coversInterval", XRange::coversInterval)
      .value("startsInside", XRange::startsInside)
      .value("endsInside", XRange::endsInside)
      .value("liesInside", XRange::liesInside);
}

}  // namespace

void bindFoundation(py::module_& m) {
  bindLines(m);
  bindSolvers(m);
  bindBernstein(m);
  bindCodes(m);
  py::class_<Gx2DTrans>(m, "Gx2DTrans", "A transform of the plane: an abstract base.")
      .def("image", &Gx2DTrans::image, py::arg("p"), "The image of the point p.")
      .def("__mul__", [](Gx2DTrans const& t, Point const& p) { return t * p; });
  py::class_<Gx2DRotate, Gx2DTrans>(m, "Gx2DRotate", "A rotation about the origin.")
      .def(py::init<double>(), py::arg("angle"), "Takes the angle in radians, counter-clockwise.");
}

}  // namespace python
