// Steps along a curve.

#include "examples/gallery/room.h"

#include <optional>

namespace gallery {
namespace {

void showPositions(Room& room, std::string const& name, std::string const& words,
                   GxBezierCurve const& curve, std::vector<crv::Position> const& places,
                   std::string const& returned) {
  svg::Points points;
  for (crv::Position const& at : places) points.push_back(curve.locateCurvePosition(at));
  Picture picture(curve);
  picture.chain(curve, kGhost);
  picture.dots(points, 3, "stroke:#1864ab");
  room.show(name, "walk", words, returned, picture);
}

}  // namespace

Room walks() {
  Room room("Walks", "walks.cpp");
  GxBezierCurve const curve = crv::fit(readStroke("pen-waves.txt"), {6.0, false, 0.0}).curve;

  //! [crv::evenPositions]
  std::vector<crv::Position> const even = crv::evenPositions(curve, 50, 0.01);
  //! [crv::evenPositions]
  showPositions(room, "crv::evenPositions", "Equal lengths along a pen stroke.", curve, even,
                say(even.size(), " positions, ", crv::arcLength(curve, 0.01) / 50, " apart"));

  std::vector<crv::Position> chords;
  //! [crv::walk]
  for (auto at = std::optional(curve.firstPos()); at;
       at = crv::walk(curve, *at, 60.0, crv::Measure::chord, 0.01))
    chords.push_back(*at);
  //! [crv::walk]
  showPositions(room, "crv::walk", "Equal straight distances.", curve, chords,
                say(chords.size(), " positions, each 60 from the one before"));

  std::vector<crv::Position> steps;
  //! [GxBezierCurve::findNextPos]
  for (crv::Position at = curve.firstPos(), next; curve.findNextPos(at, next, 60.0, 1, 0) == 0;
       at = next)
    steps.push_back(next);
  //! [GxBezierCurve::findNextPos]
  showPositions(room, "GxBezierCurve::findNextPos", "The plain step, one chord each.", curve, steps,
                say(steps.size(), " steps of about 60, the last to ", say(steps.back())));

  crv::Point const pen = curve.locateCurvePosition({2, 0.5}) + crv::Vector(0, 40);
  crv::Position far;
  //! [GxBezierCurve::findNextPosFromPoint]
  int const code = curve.findNextPosFromPoint(pen, {2, 0.5}, far, 100.0, 1);
  //! [GxBezierCurve::findNextPosFromPoint]
  showPositions(room, "GxBezierCurve::findNextPosFromPoint",
                "The first place from (2, 0.5) on that is 100 away from a point.", curve,
                {{2, 0.5}, far}, say("code ", code, ", ", say(far)));
  return room;
}

}  // namespace gallery
