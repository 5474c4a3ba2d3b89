// Curves as points.

#include "examples/gallery/room.h"

#include <list>

namespace gallery {
namespace {

/// Shows a polyline over its curve.
void showPoints(Room& room, std::string const& name, std::string const& words,
                GxBezierCurve const& curve, svg::Points const& points,
                std::string const& more = "") {
  Picture picture(curve);
  picture.chain(curve, kGhost);
  picture.polyline(points, kBlue);
  picture.dots(points, 2.5, "stroke:#1864ab");
  room.show(name, "flatten&a=letter+f", words, say(points.size(), " points", more), picture);
}

}  // namespace

Room polylines() {
  Room room("Polylines", "polylines.cpp");
  GxBezierCurve const letter = readOutline("italic-f-thirds.txt");

  //! [GxBezierCurve::getPolyline]
  std::vector<GxCoord<double>> halved;
  letter.getPolyline(3.0, halved);
  //! [GxBezierCurve::getPolyline]
  showPoints(room, "GxBezierCurve::getPolyline", "By halving, until every piece is a line.", letter,
             halved);

  //! [crv::flatten]
  crv::Polyline const flat = crv::flatten(letter, 3.0);
  //! [crv::flatten]
  showPoints(room, "crv::flatten", "Few chords within a measured bound.", letter, flat.points,
             say(", no place farther than ", flat.worstDistance));

  //! [GxBezierCurve::makeCurve]
  GxList<GxCoord<double>> spaced;
  letter.makeCurve(50.0, spaced, 0);
  //! [GxBezierCurve::makeCurve]
  showPoints(room, "GxBezierCurve::makeCurve", "One straight distance from point to point.", letter,
             svg::toPoints(spaced), ", 50 apart");

  //! [GxBezierCurve::makeCurveEx]
  GxList<GxCoord<double>> adapted;
  letter.makeCurveEx(80.0, 20.0, 3.0, adapted);
  //! [GxBezierCurve::makeCurveEx]
  showPoints(room, "GxBezierCurve::makeCurveEx", "Long chords where the gap allows, else short.",
             letter, svg::toPoints(adapted), ", 80 or 20 apart");

  //! [GxBezierCurve::makeSegments]
  std::list<GxCoord<double>> equal;
  letter.makeSegments(4, equal);
  //! [GxBezierCurve::makeSegments]
  showPoints(room, "GxBezierCurve::makeSegments", "Equal steps of the parameter on each segment.",
             letter, svg::Points(equal.begin(), equal.end()), ", 4 steps a segment");
  return room;
}

}  // namespace gallery
