// Cuts, fits, parallels and curves taken apart, with maps from the source.
#include "bindings/python/src/maps.h"

namespace python {

namespace {

void bindCuts(py::module_& m) {
  Record<crv::Piece>(m, "Piece")
      .field("curve", &crv::Piece::curve)
      .value("map", [](crv::Piece const& piece) { return PositionMap{piece.map}; })
      .shown();
  m.def("cut", &crv::cut, py::arg("curve"), py::arg("cuts"));
  m.def("withJoint", &crv::withJoint, py::arg("curve"), py::arg("position"));
  m.def("stretch", &crv::stretch, py::arg("curve"), py::arg("start"), py::arg("to"),
        py::arg("forward") = true);
  m.def("reversed", &crv::reversed, py::arg("curve"));
}

void bindFits(py::module_& m) {
  Record<crv::Fit>(m, "Fit")
      .field("curve", &crv::Fit::curve)
      .field("worstDistance", &crv::Fit::worstDistance)
      .field("worstSample", &crv::Fit::worstSample)
      .field("corners", &crv::Fit::corners)
      .field("positions", &crv::Fit::positions)
      .shown();
  m.def(
      "fit",
      [](Points const& samples, double tolerance, bool closed, double cornerAngle) {
        return crv::fit(samples, {tolerance, closed, cornerAngle});
      },
      py::arg("samples"), py::arg("tolerance") = 0.5, py::arg("closed") = false,
      py::arg("cornerAngle") = 0.0);
  Record<crv::Simplified>(m, "Simplified")
      .field("curve", &crv::Simplified::curve)
      .value("map", [](crv::Simplified const& simplified) { return PositionMap{simplified.map}; })
      .field("worstDistance", &crv::Simplified::worstDistance)
      .shown();
  m.def("simplify", &crv::simplify, py::arg("curve"), py::arg("tolerance"));
}

void bindOffsets(py::module_& m) {
  py::enum_<crv::Join>(m, "Join")
      .value("round", crv::Join::round)
      .value("miter", crv::Join::miter)
      .value("bevel", crv::Join::bevel);
  py::enum_<crv::Cap>(m, "Cap")
      .value("butt", crv::Cap::butt)
      .value("round", crv::Cap::round)
      .value("square", crv::Cap::square);
  Record<crv::Offset>(m, "Offset")
      .field("parallels", &crv::Offset::parallels)
      .field("worstError", &crv::Offset::worstError)
      .shown();
  m.def(
      "offset",
      [](Curve const& curve, double distance, double tolerance, crv::Join join, double miterLimit) {
        return crv::offset(curve, distance, {tolerance, join, miterLimit});
      },
      py::arg("curve"), py::arg("distance"), py::arg("tolerance") = 0.01,
      py::arg_v("join", crv::Join::round, "Join.round"), py::arg("miterLimit") = 4.0);
  m.def(
      "strokeOutline",
      [](Curve const& curve, double width, crv::Cap cap, double tolerance, crv::Join join,
         double miterLimit) {
        return crv::strokeOutline(curve, width, cap, {tolerance, join, miterLimit});
      },
      py::arg("curve"), py::arg("width"), py::arg_v("cap", crv::Cap::round, "Cap.round"),
      py::arg("tolerance") = 0.01, py::arg_v("join", crv::Join::round, "Join.round"),
      py::arg("miterLimit") = 4.0);
}

using Separate = int (*)(Curve const&, GxList<Curve>&);

void defineSeparate(py::module_& m, char const* name, Separate separate) {
  m.def(
      name,
      [separate](Curve const& curve) {
        GxList<Curve> pieces;
        require(separate(curve, pieces), "the curve is empty");
        return pieces.toVector();
      },
      py::arg("curve"));
}

}  // namespace

void bindEdits(py::module_& m) {
  bindCuts(m);
  bindFits(m);
  bindOffsets(m);
  Record<crv::Loop>(m, "Loop")
      .field("piece", &crv::Loop::piece)
      .field("clockwise", &crv::Loop::clockwise)
      .shown();
  Record<crv::Separated>(m, "Separated")
      .field("loops", &crv::Separated::loops)
      .field("rests", &crv::Separated::rests)
      .shown();
  m.def("separate", &crv::separate, py::arg("curve"), py::arg("resolution") = 0.0);
  defineSeparate(m, "seperateSelfIntersections", seperateSelfIntersections);
  defineSeparate(m, "seperateSelfIntersectionsForOpenCurve", seperateSelfIntersectionsForOpenCurve);
}

}  // namespace python
