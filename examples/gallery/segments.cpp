// One segment and what can be asked of it.

#include "examples/gallery/room.h"

namespace gallery {
namespace {

GxBezier const kSegment({60, 100}, {180, 620}, {420, -260}, {640, 300});

/// A picture of the segment with its handles; further dots are what was found.
void showSegment(Room& room, std::string const& name, std::string const& operation,
                 std::string const& words, std::string const& returned, svg::Points const& found,
                 std::vector<svg::Points> const& lines = {}) {
  GxBezierCurve const curve{kSegment};
  Picture picture(svg::Box{30, -20, 670, 420});
  picture.handles(curve, 2.5, kGhost);
  picture.chain(curve, kBlue);
  for (svg::Points const& line : lines) picture.polyline(line, kOrange);
  picture.dots(found, 4, "stroke:#c2255c");
  room.show(name, operation, words, returned, picture);
}

void showEvaluation(Room& room) {
  //! [GxBezier::bValue, dValue, ddValue]
  GxCoord<double> const point = kSegment.bValue(0.4);
  GxVector<double> const speed = kSegment.dValue(0.4);
  GxVector<double> const bend = kSegment.ddValue(0.4);
  //! [GxBezier::bValue, dValue, ddValue]
  showSegment(room, "GxBezier::bValue, dValue, ddValue", "nearest",
              "The point at t, and the first two derivatives.",
              say(say(point), ", (", speed.xval(), ", ", speed.yval(), "), (", bend.xval(), ", ",
                  bend.yval(), ")"),
              {point}, {{point, point + speed * 0.2}});

  GxBezier left, right;
  //! [GxBezier::split]
  kSegment.split(left, right, 0.4);
  //! [GxBezier::split]
  showSegment(room, "GxBezier::split", "cut", "Two segments that share a point bit for bit.",
              say("joint ", say(right[0])), {left[3]}, {{left[0], left[1], left[2], left[3]}});

  //! [GxBezier::length]
  double const chords = kSegment.length(0.0);
  double const exact = crv::arcLength(kSegment, 0.0, 1.0, 1e-9);
  double const half = crv::parameterAtLength(kSegment, 0.0, exact / 2, 1e-9);
  //! [GxBezier::length]
  showSegment(room, "GxBezier::length", "walk", "By chords, with a bound, and half way.",
              say(chords, ", ", exact, ", half at t ", half), {kSegment.bValue(half)});
}

void showPlaces(Room& room) {
  double minX, minY, maxX, maxY;
  //! [GxBezier::localMinMax, getYMinMaxTValues]
  GxList<double> extremes;
  kSegment.getYMinMaxTValues(extremes);
  kSegment.localMinMax(minX, minY, maxX, maxY);
  //! [GxBezier::localMinMax, getYMinMaxTValues]
  showSegment(room, "GxBezier::localMinMax, getYMinMaxTValues", "nearest",
              "The tight box, and where the segment is lowest and highest.",
              say("t ", extremes[0], " and ", extremes[1], ", y ", minY, " to ", maxY),
              {kSegment.bValue(extremes[0]), kSegment.bValue(extremes[1])},
              {{{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}}});

  //! [GxBezier::findRoots]
  GxList<GxCoord<double>> level;
  int const count = kSegment.findRoots(level, 190.0, 0.0, 1.0);
  //! [GxBezier::findRoots]
  showSegment(room, "GxBezier::findRoots", "contacts", "Where the segment has a height.",
              say(count, " places at y = 190"), svg::toPoints(level), {{{30, 190}, {670, 190}}});

  //! [GxBezier::findInflectionPoint]
  double t = 0;
  int const found = kSegment.findInflectionPoint(t);
  //! [GxBezier::findInflectionPoint]
  showSegment(room, "GxBezier::findInflectionPoint", "nearest", "Where the curvature changes sign.",
              say("code ", found, ", t ", t), {kSegment.bValue(t)});

  GxCoord<double> const p(300, 380);
  //! [GxBezier::findNearestPointTValue]
  double nearest = 0;
  kSegment.findNearestPointTValue(p, nearest);
  //! [GxBezier::findNearestPointTValue]
  showSegment(room, "GxBezier::findNearestPointTValue", "nearest",
              "The parameter nearest to a point.", say("t ", nearest),
              {p, kSegment.bValue(nearest)}, {{p, kSegment.bValue(nearest)}});

  //! [GxBezier::findNextPos]
  double next = 0;
  int const code = kSegment.findNextPos(next, 0.3, 10000.0, 1);  // the square of 100
  //! [GxBezier::findNextPos]
  showSegment(room, "GxBezier::findNextPos", "walk", "The next parameter 100 away from t = 0.3.",
              say("code ", code, ", t ", next), {kSegment.bValue(0.3), kSegment.bValue(next)},
              {{kSegment.bValue(0.3), kSegment.bValue(next)}});

  GxBezier const other({60, 300}, {250, 420}, {420, 380}, {660, 420});
  double t1 = 0, t2 = 0;
  //! [GxBezier::findClosestPoints]
  double const squared = kSegment.findClosestPoints(other, t1, t2);
  //! [GxBezier::findClosestPoints]
  svg::Points const pair = {kSegment.bValue(t1), other.bValue(t2)};
  GxList<GxCoord<double>> beside;
  other.makeSegment(20.0, beside, 0.0);
  showSegment(room, "GxBezier::findClosestPoints", "nearest",
              "The closest samples of two segments.",
              say("squared distance ", squared, " at ", t1, " and ", t2), pair,
              {pair, svg::toPoints(beside)});
}

}  // namespace

Room segments() {
  Room room("Segments", "segments.cpp");
  showEvaluation(room);
  showPlaces(room);
  return room;
}

}  // namespace gallery
