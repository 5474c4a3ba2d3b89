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

  GxBezierCurvePosition at;
  GxCoord<double> point;
  //! [GxBezierCurve::findNearestPointPos, findNearestPoint]
  int const code = letter.findNearestPointPos(p, at);
  int const sameCode = letter.findNearestPoint(p, point);
  //! [GxBezierCurve::findNearestPointPos, findNearestPoint]
  Picture plain(letter, 40);
  plain.chain(letter, kInk);
  plain.polyline({p, point}, kOrange);
  plain.dots({p, point}, 3.5, "stroke:#e8590c");
  room.show("GxBezierCurve::findNearestPointPos, findNearestPoint", "nearest&a=letter+S",
            "The plain search.", say("codes ", code, " and ", sameCode, ", ", say(at)), plain);

  crv::Point const on = letter.locateCurvePosition({7, 0.5});
  double t = 0;
  //! [GxBezierCurve::whichSegment]
  int const segment = letter.whichSegment(on, t, 0.001);
  //! [GxBezierCurve::whichSegment]
  Picture holder(letter, 40);
  holder.chain(letter, kInk);
  holder.chain(GxBezierCurve{letter[segment]}, kOrange);
  holder.dots({on}, 3.5, "stroke:#c2255c");
  room.show("GxBezierCurve::whichSegment", "nearest&a=letter+S", "The segment that holds a point.",
            say("segment ", segment, ", t ", t), holder);

  //! [CurveSearch::nearest, contacts]
  auto const place = search.nearest({150, 300});
  std::vector<crv::LineContact> const hits = search.contacts({0, 300}, {500, 380});
  //! [CurveSearch::nearest, contacts]
  Picture prepared(letter, 40);
  prepared.chain(letter, kInk);
  prepared.polyline({{0, 300}, {500, 380}}, kBlue);
  for (crv::LineContact const& each : hits) prepared.dots({each.point}, 3, "stroke:#1864ab");
  prepared.dots({{150, 300}, place->point}, 3.5, "stroke:#c2255c");
  room.show("CurveSearch::nearest, contacts", "nearest&a=letter+S",
            "Many queries on one curve: a place, and the contacts with a line.",
            say(say(place->position), ", ", hits.size(), " contacts"), prepared);
}

void showMeasures(Room& room, GxBezierCurve const& letter) {
  //! [CurveLengths::total, lengthAt, positionAt]
  crv::CurveLengths const lengths(letter, 0.001);
  double const total = lengths.total(), half = lengths.lengthAt({11, 0.0});
  crv::Position const third = lengths.positionAt(total / 3);
  //! [CurveLengths::total, lengthAt, positionAt]
  Picture length(letter);
  length.chain(letter, kGhost);
  length.chain(crv::stretch(letter, letter.firstPos(), third, true).curve, kRed);
  room.show("CurveLengths::total, lengthAt, positionAt", "walk&a=letter+S",
            "Lengths along the curve: the first third.",
            say("total ", total, ", a third at ", say(third), ", ", half, " up to (11, 0)"),
            length);

  //! [GxBezierCurve::curveLength]
  double const chords = letter.curveLength();
  //! [GxBezierCurve::curveLength]
  Picture measured(letter);
  measured.chain(letter, kInk);
  room.show("GxBezierCurve::curveLength", "walk&a=letter+S", "The length, by chords.",
            say(chords, " instead of ", total), measured);

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

  double minX, minY, maxX, maxY, hullX, hullY, hullToX, hullToY;
  crv::Point low, high;
  //! [GxBezierCurve::getLocalBoundingBox, getBoundingBox, getMinMax]
  letter.getLocalBoundingBox(minX, minY, maxX, maxY);
  letter.getBoundingBox(hullX, hullY, hullToX, hullToY);
  int const hasBox = letter.getMinMax(low, high);
  //! [GxBezierCurve::getLocalBoundingBox, getBoundingBox, getMinMax]
  Picture box(letter, 20);
  box.chain(letter, kInk);
  box.polyline({{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}}, kBlue);
  box.polyline({{hullX, hullY}, {hullToX, hullY}, {hullToX, hullToY}, {hullX, hullToY}}, kGhost);
  room.show("GxBezierCurve::getLocalBoundingBox, getBoundingBox, getMinMax", "nearest&a=letter+S",
            "The tight box, the box of the control points, and the tight one as two points.",
            say(minX, " to ", maxX, ", ", minY, " to ", maxY, "; code ", hasBox, ", ", say(low),
                " to ", say(high)),
            box);

  //! [crv::signedArea, isClockwise]
  double const area = crv::signedArea(letter);
  bool const isClockwise = crv::isClockwise(letter);
  //! [crv::signedArea, isClockwise]
  Picture filled(letter);
  filled.chain(letter, std::string(kInk) + ";fill:#e7f5ff");
  room.show("crv::signedArea, isClockwise", "reverse&a=letter+S",
            "Positive for counter-clockwise, with y up.",
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

  double t = 0, lowT = 0;
  int segment = 0, lowSegment = 0;
  //! [GxBezierCurve::getCurveMaxY, getCurveMinY]
  int const found = letter.getCurveMaxY(t, segment);
  int const foundLow = letter.getCurveMinY(lowT, lowSegment);
  //! [GxBezierCurve::getCurveMaxY, getCurveMinY]
  Picture top(letter);
  top.chain(letter, kInk);
  top.dots(
      {letter.locateCurvePosition({segment, t}), letter.locateCurvePosition({lowSegment, lowT})}, 4,
      "stroke:#c2255c");
  room.show("GxBezierCurve::getCurveMaxY, getCurveMinY", "nearest&a=letter+S",
            "The highest and the lowest place.",
            say("codes ", found, " and ", foundLow, ", segments ", segment, " and ", lowSegment,
                ", t ", t, " and ", lowT),
            top);

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

void showHandles(Room& room, GxBezierCurve const& letter) {
  crv::Point point, before, after;
  GxVector<double> in, out, bendIn, bendOut;
  //! [GxBezierCurve::getTriple, getVelocityVectors, getAccelerationVectors]
  int const code = letter.getTriple({11, 0.0}, point, before, after);
  int const speeds = letter.getVelocityVectors({11, 0.0}, in, out);
  int const bends = letter.getAccelerationVectors({11, 0.0}, bendIn, bendOut);
  //! [GxBezierCurve::getTriple, getVelocityVectors, getAccelerationVectors]
  Picture handles(letter);
  handles.chain(letter, kInk);
  handles.polyline({before, point, after}, kBlue);
  handles.dots({before, after}, 3, "stroke:#1864ab");
  room.show("GxBezierCurve::getTriple, getVelocityVectors, getAccelerationVectors",
            "nearest&a=letter+S", "A joint with its handles, and both derivatives there.",
            say("codes ", code, speeds, bends, ", speeds ", in.length(), " and ", out.length(),
                ", bends ", bendIn.length(), " and ", bendOut.length()),
            handles);

  GxBezierCurve const ridge = crv::fit(readStroke("pen-waves.txt"), {6.0, false, 0.0}).curve;
  double minX, minY, maxX, maxY;
  ridge.getLocalBoundingBox(minX, minY, maxX, maxY);
  double const margin = 0.1 * (maxX - minX);
  crv::Point reached;
  //! [GxBezierCurve::extendLine, wellDefinedDetection]
  int const side = ridge.extendLine(reached, ridge[0][0].xval() - margin, 1e-9);
  int const range = ridge.wellDefinedDetection(minX + margin, maxX - margin);
  //! [GxBezierCurve::extendLine, wellDefinedDetection]
  Picture interval(ridge, margin);
  interval.chain(ridge, kInk);
  interval.polyline({ridge[0][0], reached}, kOrange);
  for (double const x : {minX + margin, maxX - margin})
    interval.polyline({{x, minY - margin}, {x, maxY + margin}}, kGhost);
  room.show("GxBezierCurve::extendLine, wellDefinedDetection", "nearest",
            "The start tangent prolonged to the left, and the curve against an interval of x.",
            say("codes ", side, " and ", range,
                range == crv::XRange::runsBack ? ", some segment runs back" : ", one way"),
            interval);
}

}  // namespace

Room measures() {
  Room room("Measures", "measures.cpp");
  GxBezierCurve const letter = readOutline("roman-capital-s-thirds.txt");
  showNearest(room, letter);
  showMeasures(room, letter);
  showPlain(room, letter);
  showHandles(room, letter);
  return room;
}

}  // namespace gallery
