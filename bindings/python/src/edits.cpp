// Cuts, fits, parallels and curves taken apart, with maps from the source.
#include "bindings/python/src/maps.h"

namespace python {

namespace {

void bindCuts(py::module_& m) {
  Record<crv::Piece>(m, "Piece", "A result of an edit.")
      .field("curve", &crv::Piece::curve, "The curve.")
      .value(
          "map", [](crv::Piece const& piece) { return PositionMap{piece.map}; },
          "The map from positions of the source to the curve.")
      .shown();
  m.def("cut", &crv::cut, py::arg("curve"), py::arg("cuts"),
        "The pieces between the cuts, given in any order, each with its map; cuts off the curve "
        "count for nothing.");
  m.def("withJoint", &crv::withJoint, py::arg("curve"), py::arg("position"),
        "The same shape with one more joint; the curve as it is where there is one already or off "
        "the curve.");
  m.def("stretch", &crv::stretch, py::arg("curve"), py::arg("start"), py::arg("to"),
        py::arg("forward") = true,
        "The part of a curve from one position to another, as an open curve with its map; empty "
        "where the curve does not lead there.");
  m.def("reversed", &crv::reversed, py::arg("curve"), "The curve run the other way, with its map.");
}

void bindFits(py::module_& m) {
  Record<crv::Fit>(m, "Fit", "A curve through samples.")
      .field("curve", &crv::Fit::curve, "The curve.")
      .field("worstDistance", &crv::Fit::worstDistance,
             "The distance of the farthest sample from the curve.")
      .field("worstSample", &crv::Fit::worstSample, "The number of that sample.")
      .field("corners", &crv::Fit::corners, "The numbers of the samples that are corners.")
      .field("positions", &crv::Fit::positions,
             "The position on the curve that belongs to each sample.")
      .shown();
  m.def(
      "fit",
      [](Points const& samples, double tolerance, bool closed, double cornerAngle) {
        return crv::fit(samples, {tolerance, closed, cornerAngle});
      },
      py::arg("samples"), py::arg("tolerance") = 0.5, py::arg("closed") = false,
      py::arg("cornerAngle") = 0.0,
      "Few segments through samples, no sample farther than the tolerance. Corners are turns "
      "sharper than cornerAngle, in radians, 0 for none. No samples, and unusable input, give an "
      "empty curve.");
  Record<crv::Simplified>(m, "Simplified", "A curve with fewer segments.")
      .field("curve", &crv::Simplified::curve, "The curve.")
      .value(
          "map", [](crv::Simplified const& simplified) { return PositionMap{simplified.map}; },
          "The map from positions of the source to the curve.")
      .field("worstDistance", &crv::Simplified::worstDistance,
             "No place of the source moved by more than this.")
      .shown();
  m.def("simplify", &crv::simplify, py::arg("curve"), py::arg("tolerance"),
        "The same shape within a tolerance in fewer segments, with a map; corners and ends stay.");
}

void bindOffsets(py::module_& m) {
  py::enum_<crv::Join>(m, "Join", "How parallels go around a convex corner.")
      .value("round", crv::Join::round)
      .value("miter", crv::Join::miter)
      .value("bevel", crv::Join::bevel);
  py::enum_<crv::Cap>(m, "Cap", "How the outline of a stroke ends.")
      .value("butt", crv::Cap::butt)
      .value("round", crv::Cap::round)
      .value("square", crv::Cap::square);
  Record<crv::Offset>(m, "Offset", "The parallels of a curve.")
      .field("parallels", &crv::Offset::parallels,
             "The pieces that keep the distance, each with its map from the source.")
      .field("worstError", &crv::Offset::worstError,
             "How far they are from the true parallel at most.")
      .shown();
  m.def(
      "offset",
      [](Curve const& curve, double distance, double tolerance, crv::Join join, double miterLimit) {
        return crv::offset(curve, distance, {tolerance, join, miterLimit});
      },
      py::arg("curve"), py::arg("distance"), py::arg("tolerance") = 0.01,
      py::arg_v("join", crv::Join::round, "Join.round"), py::arg("miterLimit") = 4.0,
      "The parallel of a curve at a distance, to the left for a positive one, nowhere nearer; an "
      "empty list where nothing is left or the input is unusable.");
  m.def(
      "strokeOutline",
      [](Curve const& curve, double width, crv::Cap cap, double tolerance, crv::Join join,
         double miterLimit) {
        return crv::strokeOutline(curve, width, cap, {tolerance, join, miterLimit});
      },
      py::arg("curve"), py::arg("width"), py::arg_v("cap", crv::Cap::round, "Cap.round"),
      py::arg("tolerance") = 0.01, py::arg_v("join", crv::Join::round, "Join.round"),
      py::arg("miterLimit") = 4.0,
      "The outlines of what a pen of a width leaves along a curve, holes clockwise.");
}

using Separate = int (*)(Curve const&, GxList<Curve>&);

void defineSeparate(py::module_& m, char const* name, Separate separate, char const* doc) {
  m.def(
      name,
      [separate](Curve const& curve) {
        GxList<Curve> pieces;
        require(separate(curve, pieces), "the curve is empty");
        return pieces.toVector();
      },
      py::arg("curve"), doc);
}

}  // namespace

void bindEdits(py::module_& m) {
  bindCuts(m);
  bindFits(m);
  bindOffsets(m);
  Record<crv::Loop>(m, "Loop", "A simple closed part of a curve.")
      .field("piece", &crv::Loop::piece, "The curve and its map.")
      .field("clockwise", &crv::Loop::clockwise, "Whether it runs clockwise, with y up.")
      .shown();
  Record<crv::Separated>(m, "Separated", "What a curve that crosses itself consists of.")
      .field("loops", &crv::Separated::loops, "The simple closed curves.")
      .field("rests", &crv::Separated::rests, "What closes nothing.")
      .shown();
  m.def("separate", &crv::separate, py::arg("curve"), py::arg("resolution") = 0.0,
        "Cuts a curve at its crossings with itself and joins the ends to simple closed curves. "
        "Empty and unusable curves give nothing.");
  defineSeparate(m, "seperateSelfIntersections", seperateSelfIntersections,
                 "The pieces of separate as a list of curves; raises Error for an empty curve.");
  defineSeparate(m, "seperateSelfIntersectionsForOpenCurve", seperateSelfIntersectionsForOpenCurve,
                 "The same, a closed curve being taken as open at its seam.");
}

}  // namespace python
