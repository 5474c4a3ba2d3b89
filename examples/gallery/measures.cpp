// Nearest places, lengths, directions, boxes and areas.

#include "examples/gallery/room.h"

#include <cmath>

namespace gallery {
namespace {

void showNearest(Room& room, GxBezierCurve const& letter) {
  crv::Point const p(300, 470);
  //! [crv::nearest]
  auto const nearest = crv::nearest(letter, p);
  //! [crv::nearest]
  Picture one(letter, 40);
  one.chain(letter, kInk);
  one.polyline({p, nearest->point}, kRed);
  one.dots({p, nearest->point}, 3.5, "stroke:#c2255c");
  room.show("crv::nearest", "nearest&a=letter+S", "The place of a letter nearest to a point.",
            say(say(nearest->position), ", ", nearest->distance, " away"), one);

  //! [CurveSearch::within]
  crv::CurveSearch const search(letter);
  auto const minima = search.within(p, 260.0);
  //! [CurveSearch::within]
  Picture many(letter, 40);
  many.chain(letter, kInk);
  for (crv::NearestOnCurve const& place : minima) many.polyline({p, place.point}, kBlue);
  for (crv::NearestOnCurve const& place : minima) many.dots({place.point}, 3, "stroke:#1864ab");
  many.dots({p}, 3.5, "stroke:#c2255c");
  room.show("CurveSearch::within", "nearest&a=letter+S",
            "Every local minimum of the distance up to 260.", say(minima.size(), " places"), many);

  //! [GxBezierCurve::findNearestPointPos]
  GxBezierCurvePosition at;
  int const code = letter.findNearestPointPos(p, at);
  //! [GxBezierCurve::findNearestPointPos]
  Picture plain(letter, 40);
  plain.chain(letter, kInk);
  plain.polyline({p, letter.locateCurvePosition(at)}, kOrange);
  plain.dots({p, letter.locateCurvePosition(at)}, 3.5, "stroke:#e8590c");
  room.show("GxBezierCurve::findNearestPointPos", "nearest&a=letter+S", "The plain search.",
            say("code ", code, ", ", say(at)), plain);
}

void showMeasures(Room& room, GxBezierCurve const& letter) {
  //! [CurveLengths]
  crv::CurveLengths const lengths(letter, 0.001);
  double const total = lengths.total();
  crv::Position const third = lengths.positionAt(total / 3);
  //! [CurveLengths]
  Picture length(letter);
  length.chain(letter, kGhost);
  length.chain(crv::stretch(letter, letter.firstPos(), third, true).curve, kRed);
  room.show("CurveLengths", "walk&a=letter+S", "Lengths along the curve: the first third.",
            say("total ", total, ", a third at ", say(third)), length);

  //! [crv::directions]
  crv::Directions const way = crv::directions(letter, {11, 0.0});
  //! [crv::directions]
  crv::Point const joint = letter.locateCurvePosition({11, 0.0});
  Picture directions(letter);
  directions.chain(letter, kInk);
  directions.polyline({joint + way.in * -150.0, joint}, kBlue);
  directions.polyline({joint, joint + way.out * 150.0}, kRed);
  room.show("crv::directions", "nearest&a=letter+S",
            "Blue: the way into a joint, red: the way out.",
            say("in (", way.in.xval(), ", ", way.in.yval(), "), out (", way.out.xval(), ", ",
                way.out.yval(), ")"),
            directions);

  //! [GxBezierCurve::getLocalBoundingBox]
  double minX, minY, maxX, maxY;
  letter.getLocalBoundingBox(minX, minY, maxX, maxY);
  //! [GxBezierCurve::getLocalBoundingBox]
  Picture box(letter, 20);
  box.chain(letter, kInk);
  box.polyline({{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}}, kBlue);
  room.show("GxBezierCurve::getLocalBoundingBox", "nearest&a=letter+S", "The tight box.",
            say(minX, " to ", maxX, ", ", minY, " to ", maxY), box);

  //! [crv::signedArea]
  double const area = crv::signedArea(letter);
  bool const isClockwise = crv::isClockwise(letter);
  //! [crv::signedArea]
  Picture filled(letter);
  filled.chain(letter, std::string(kInk) + ";fill:#e7f5ff");
  room.show("crv::signedArea", "reverse&a=letter+S", "Positive for counter-clockwise, with y up.",
            say(area, isClockwise ? ", clockwise" : ", counter-clockwise"), filled);
}

void showPlain(Room& room, GxBezierCurve const& letter) {
  //! [GxBezierCurve::findVelocityVectors]
  GxVector<double> in, out;
  int const code = letter.findVelocityVectors({11, 0.0}, in, out);
  //! [GxBezierCurve::findVelocityVectors]
  crv::Point const joint = letter.locateCurvePosition({11, 0.0});
  Picture plain(letter);
  plain.chain(letter, kInk);
  plain.polyline({joint + -in, joint}, kBlue);
  plain.polyline({joint, joint + out}, kRed);
  room.show("GxBezierCurve::findVelocityVectors", "nearest&a=letter+S",
            "Derivatives on both sides of a joint.",
            say("code ", code, ", in (", in.xval(), ", ", in.yval(), "), out (", out.xval(), ", ",
                out.yval(), ")"),
            plain);

  double t = 0;
  int segment = 0;
  //! [GxBezierCurve::getCurveMaxY]
  int const found = letter.getCurveMaxY(t, segment);
  //! [GxBezierCurve::getCurveMaxY]
  Picture top(letter);
  top.chain(letter, kInk);
  top.dots({letter.locateCurvePosition({segment, t})}, 4, "stroke:#c2255c");
  room.show("GxBezierCurve::getCurveMaxY", "nearest&a=letter+S", "The highest place.",
            say("code ", found, ", segment ", segment, ", t ", t), top);

  GxBezierCurve other = readOutline("sans-k-thirds.txt");
  other.moveCurve({460, 0});
  //! [GxBezierCurve::getMinSqDistance]
  double const squared = letter.getMinSqDistance(other);
  //! [GxBezierCurve::getMinSqDistance]
  Picture pair(svg::Box{50, -30, 940, 720});
  pair.chain(letter, kInk);
  pair.chain(other, kOrange);
  room.show("GxBezierCurve::getMinSqDistance", "nearest&a=letter+S",
            "The least squared distance, from samples.",
            say(squared, ", the square of ", std::sqrt(squared)), pair);
}

}  // namespace

Room measures() {
  Room room("Measures", "measures.cpp");
  GxBezierCurve const letter = readOutline("roman-capital-s-thirds.txt");
  showNearest(room, letter);
  showMeasures(room, letter);
  showPlain(room, letter);
  return room;
}

}  // namespace gallery
