// One segment and what can be asked of it.

#include "examples/gallery/room.h"

#include <list>

namespace gallery {
namespace {

/// A part of a pen stroke that bends both ways, with its highest and its lowest place inside.
GxBezier wave() {
  std::vector<crv::Point> const samples = readStroke("pen-waves.txt");
  double const tolerance = 0.05 * svg::boxOf(samples).width();
  for (GxBezier const& s : crv::fit(samples, {tolerance, false, 0.0}).curve) {
    GxList<double> t;
    s.getYMinMaxTValues(t);
    double bend = 0;
    bool const isInside = min(t[0], t[1]) > 0.1 && max(t[0], t[1]) < 0.9;
    if (isInside && s.findInflectionPoint(bend) == 1 && s.length(0.0) > 100.0) return s;
  }
  throw std::runtime_error("the stroke has no such segment");
}

/// The segments on show and their box.
struct Scene {
  GxBezier segment = wave();
  GxBezier mirrored = aroundMiddle(segment);
  svg::Box box = around(segment);

  /// A place of the box, in shares of its sides.
  crv::Point at(double x, double y) const {
    return {box.minX + x * box.width(), box.minY + y * box.height()};
  }

 private:
  /// Its tight box, widened.
  static svg::Box around(GxBezier const& s) {
    GxBezierCurve const curve{s};
    return svg::boxOf(curve, 0.12 * svg::boxOf(curve).height());
  }
  /// The segment upside down in its own box, so that the two cross.
  static GxBezier aroundMiddle(GxBezier const& s) {
    double const sum = s[0].yval() + s[3].yval();
    GxBezier turned = s;
    for (int i = 0; i < 4; ++i) turned(i) = crv::Point(s[i].xval(), sum - s[i].yval());
    return turned;
  }
};

/// What is drawn beside the segment.
struct Beside {
  svg::Points found;
  std::vector<svg::Points> lines;
  std::vector<GxBezier> segments;
};

/// A picture of the segment with its handles.
void show(Room& room, Scene const& scene, std::string const& name, std::string const& operation,
          std::string const& words, std::string const& returned, Beside const& beside) {
  GxBezierCurve const curve{scene.segment};
  Picture picture(scene.box);
  picture.handles(curve, 2.5, kGhost);
  picture.chain(curve, kBlue);
  for (GxBezier const& each : beside.segments) picture.chain(GxBezierCurve{each}, kOrange);
  for (svg::Points const& line : beside.lines) picture.polyline(line, kOrange);
  picture.dots(beside.found, 4, "stroke:#c2255c");
  room.show(name, operation, words, returned, picture);
}

void showValues(Room& room, Scene const& scene) {
  GxBezier const& segment = scene.segment;
  //! [GxBezier::bValue, dValue, ddValue]
  GxCoord<double> const point = segment.bValue(0.4);
  GxVector<double> const speed = segment.dValue(0.4);
  GxVector<double> const bend = segment.ddValue(0.4);
  //! [GxBezier::bValue, dValue, ddValue]
  show(room, scene, "GxBezier::bValue, dValue, ddValue", "nearest",
       "The point at t, and the first two derivatives.",
       say(say(point), ", (", speed.xval(), ", ", speed.yval(), "), (", bend.xval(), ", ",
           bend.yval(), ")"),
       {{point}, {{point, point + speed * 0.15}}, {}});

  double const t[] = {0.1, 0.3, 0.5, 0.7, 0.9};
  GxCoord<double> points[5];
  GxVector<double> speeds[5];
  //! [GxBezier::bValues, curvatureValue]
  segment.bValues(t, 5, points, speeds);
  GxCoord<double> const bent = segment.curvatureValue(t[2]);
  //! [GxBezier::bValues, curvatureValue]
  Beside many{{points, points + 5}, {}, {}};
  for (int i = 0; i < 5; ++i) many.lines.push_back({points[i], points[i] + speeds[i] * 0.12});
  show(room, scene, "GxBezier::bValues, curvatureValue", "flatten",
       "Many points and derivatives in one call; the bend of the slope.",
       say("at t 0.5 the slope changes by ", bent.xval(), ", x by ", bent.yval()), many);

  GxBezier left, right;
  //! [GxBezier::split]
  segment.split(left, right, 0.4);
  //! [GxBezier::split]
  show(room, scene, "GxBezier::split", "cut", "Two segments that share a point bit for bit.",
       say("joint ", say(right[0])), {{left[3]}, {}, {left}});

  //! [GxBezier::length]
  double const chords = segment.length(0.0);
  double const rest = segment.length(0.6);
  //! [GxBezier::length]
  show(room, scene, "GxBezier::length", "walk", "The length from t to the end, by chords.",
       say(chords, ", from t = 0.6 on ", rest), {{segment.bValue(0.6)}, {}, {}});

  //! [crv::arcLength, parameterAtLength]
  double const length = crv::arcLength(segment, 0.0, 1.0, 1e-9);
  double const half = crv::parameterAtLength(segment, 0.0, length / 2, 1e-9);
  //! [crv::arcLength, parameterAtLength]
  show(room, scene, "crv::arcLength, parameterAtLength", "walk",
       "The length to nine decimals, and the place half way.", say(length, ", half at t ", half),
       {{segment.bValue(half)}, {}, {}});

  //! [GxBezier::isALine, isAPoint]
  int const line = segment.isALine(1.0), point2 = segment.isAPoint(1.0);
  int const largeLine = segment.isALine(1000.0), largePoint = segment.isAPoint(1000.0);
  //! [GxBezier::isALine, isAPoint]
  show(room, scene, "GxBezier::isALine, isAPoint", "flatten", "How flat or small it is.",
       say("within 1: ", line, " and ", point2, "; within 1000 a line: ", largeLine,
           ", a point: ", largePoint),
       {{}, {{segment[0], segment[3]}}, {}});
}

void showPlaces(Room& room, Scene const& scene) {
  GxBezier const& segment = scene.segment;
  double minX, minY, maxX, maxY, hullX, hullY, hullToX, hullToY;
  //! [GxBezier::localMinMax, getConvexHull]
  segment.localMinMax(minX, minY, maxX, maxY);
  segment.getConvexHull(hullX, hullY, hullToX, hullToY);
  //! [GxBezier::localMinMax, getConvexHull]
  show(room, scene, "GxBezier::localMinMax, getConvexHull", "nearest",
       "The tight box, drawn; and that of the control points.",
       say("y from ", minY, " to ", maxY, "; from ", hullY, " to ", hullToY),
       {{}, {{{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}}}, {}});

  GxList<double> extremes;
  double top, topY, bottom, bottomY;
  //! [GxBezier::getYMinMaxTValues, getMaxYTValue, getMinYTValue]
  segment.getYMinMaxTValues(extremes);
  segment.getMaxYTValue(top, topY);
  segment.getMinYTValue(bottom, bottomY);
  //! [GxBezier::getYMinMaxTValues, getMaxYTValue, getMinYTValue]
  show(room, scene, "GxBezier::getYMinMaxTValues, getMaxYTValue, getMinYTValue", "nearest",
       "Where it is lowest and highest.",
       say("t ", extremes[0], " and ", extremes[1], ", heights ", bottomY, " and ", topY),
       {{segment.bValue(bottom), segment.bValue(top)}, {}, {}});

  double const height = segment.bValue(0.08).yval();
  GxList<GxCoord<double>> level;
  //! [GxBezier::findRoots]
  int const count = segment.findRoots(level, height, 0.0, 1.0);
  //! [GxBezier::findRoots]
  show(room, scene, "GxBezier::findRoots", "contacts", "Where the segment has a height.",
       say(count, " places at y = ", height),
       {svg::toPoints(level), {{{scene.box.minX, height}, {scene.box.maxX, height}}}, {}});

  GxVector<double> const down(0, -height);
  int roots = 0;
  double r1 = 0, r2 = 0, r3 = 0;
  //! [intersectBezierWithXAxis]
  intersectBezierWithXAxis(segment[0] + down, segment[1] + down, segment[2] + down,
                           segment[3] + down, roots, r1, r2, r3, 1e-9);
  //! [intersectBezierWithXAxis]
  show(room, scene, "intersectBezierWithXAxis", "contacts",
       "The same for a segment that was moved: where it meets the x axis.",
       say(roots, " parameters, the first ", r1), {{segment.bValue(r1)}, {}, {}});

  double t = 0;
  //! [GxBezier::findInflectionPoint]
  int const found = segment.findInflectionPoint(t);
  //! [GxBezier::findInflectionPoint]
  show(room, scene, "GxBezier::findInflectionPoint", "nearest", "Where the curvature changes sign.",
       say("code ", found, ", t ", t), {{segment.bValue(t)}, {}, {}});

  double least = 0;
  //! [GxBezier::isWellDefined, findRatio]
  int const runsOneWay = segment.isWellDefined();
  int const where = segment.findRatio(0.0, 1, least);  // mode 1: the least share
  //! [GxBezier::isWellDefined, findRatio]
  show(room, scene, "GxBezier::isWellDefined, findRatio", "nearest",
       "Whether x never runs back, and the least share of x in the direction.",
       say(runsOneWay, "; code ", where, ", share ", least), {});
}

void showSearches(Room& room, Scene const& scene) {
  GxBezier const& segment = scene.segment;
  GxCoord<double> const p = scene.at(0.45, 0.95);
  double t = 0;
  GxCoord<double> nearest;
  //! [GxBezier::findNearestPoint, findNearestPointTValue]
  int const isEnd = segment.findNearestPoint(p, nearest);
  segment.findNearestPointTValue(p, t);
  //! [GxBezier::findNearestPoint, findNearestPointTValue]
  show(room, scene, "GxBezier::findNearestPoint, findNearestPointTValue", "nearest",
       "The nearest point, and its parameter.", say("an end: ", isEnd, ", t ", t),
       {{p, nearest}, {{p, nearest}}, {}});

  GxCoord<double> const on = segment.bValue(0.3);
  double exact = 0;
  //! [GxBezier::findParameter, findTValue]
  double const near = segment.findParameter(on, 0.0, 1e-6);
  int const isFound = segment.findTValue(on, exact, 1e-6);
  //! [GxBezier::findParameter, findTValue]
  show(room, scene, "GxBezier::findParameter, findTValue", "nearest",
       "The parameter of a point that lies on the segment.",
       say(near, "; code ", isFound, ", t ", exact), {{on}, {}, {}});

  double lo = 0.1, hi = 1.0, low = 0.0, high = 0.9;
  //! [GxBezier::splitAtFixedLengthAfter, splitAtFixedLengthBefore]
  double const after = segment.splitAtFixedLengthAfter(150.0, 0, lo, hi, 0.1);
  double const before = segment.splitAtFixedLengthBefore(150.0, 0, low, high, 0.9);
  //! [GxBezier::splitAtFixedLengthAfter, splitAtFixedLengthBefore]
  show(room, scene, "GxBezier::splitAtFixedLengthAfter, splitAtFixedLengthBefore", "walk",
       "150 away from t = 0.1 onwards, and from t = 0.9 back, by bisection.",
       say("t ", after, " and ", before),
       {{segment.bValue(0.1), segment.bValue(after), segment.bValue(before), segment.bValue(0.9)},
        {{segment.bValue(0.1), segment.bValue(after)},
         {segment.bValue(before), segment.bValue(0.9)}},
        {}});

  double next = 0, fromPoint = 0;
  GxCoord<double> const hand = segment.bValue(0.2);
  //! [GxBezier::findNextPos, findNextPosFromPoint]
  int const code = segment.findNextPos(next, 0.3, 22500.0, 1);  // the square of 150
  int const second = segment.findNextPosFromPoint(fromPoint, 0.4, hand, 40000.0, 1);
  //! [GxBezier::findNextPos, findNextPosFromPoint]
  show(room, scene, "GxBezier::findNextPos, findNextPosFromPoint", "walk",
       "The next place 150 away from t = 0.3; the next from t = 0.4 on that is 200 away from a "
       "point.",
       say("codes ", code, " and ", second, ", t ", next, " and ", fromPoint),
       {{segment.bValue(0.3), segment.bValue(next), hand, segment.bValue(fromPoint)},
        {{segment.bValue(0.3), segment.bValue(next)}, {hand, segment.bValue(fromPoint)}},
        {}});
}

void showPairs(Room& room, Scene const& scene) {
  GxBezier const &segment = scene.segment, &other = scene.mirrored;
  GxList<GxCoord<double>> crossings;
  //! [GxBezier::isIntersect, findIntersections]
  int const boxesMeet = segment.isIntersect(other);
  int const found = segment.findIntersections(other, crossings);
  //! [GxBezier::isIntersect, findIntersections]
  show(room, scene, "GxBezier::isIntersect, findIntersections", "contacts",
       "Whether the boxes meet, and where the segments cross.",
       say(boxesMeet, "; code ", found, ", crossings: ", crossings.length()),
       {svg::toPoints(crossings), {}, {other}});

  std::pair<double, double> first;
  //! [GxBezier::findFirstIntersection]
  int const code = segment.findFirstIntersection(other, first, 0.1);
  //! [GxBezier::findFirstIntersection]
  show(room, scene, "GxBezier::findFirstIntersection", "contacts",
       "The first crossing on the way, by polylines.",
       say("code ", code, ", t ", first.first, " and ", first.second),
       {{segment.bValue(first.first)}, {}, {other}});

  GxBezier aside = segment;
  for (int i = 0; i < 4; ++i) aside(i) = other[i] + GxVector<double>(0, scene.box.height());
  double t1 = 0, t2 = 0;
  //! [GxBezier::findClosestPoints]
  double const squared = segment.findClosestPoints(aside, t1, t2);
  //! [GxBezier::findClosestPoints]
  svg::Points const pair = {segment.bValue(t1), aside.bValue(t2)};
  Scene wide = scene;
  wide.box.maxY += scene.box.height();
  show(room, wide, "GxBezier::findClosestPoints", "nearest", "The closest samples of two segments.",
       say("squared distance ", squared, " at ", t1, " and ", t2), {pair, {pair}, {aside}});

  crv::Point const a = scene.at(0, 0.2), b = scene.at(1, 0.8);
  GxList<double> t, along;
  //! [GxBezier::findYCStrongIntersection]
  int const count = segment.findYCStrongIntersection(a, b, t, along);
  //! [GxBezier::findYCStrongIntersection]
  svg::Points hits;
  for (unsigned i = 0; i < t.length(); ++i) hits.push_back(segment.bValue(t[i]));
  show(room, scene, "GxBezier::findYCStrongIntersection", "contacts",
       "Where it crosses a stretch of a line.",
       say("crossings: ", count, ", the first at t ", t[0]), {hits, {{a, b}}, {}});

  GxBezier const straight(segment[0], segment[0] + (segment[3] - segment[0]) * 0.25,
                          segment[0] + (segment[3] - segment[0]) * 0.5, segment[3]);
  crv::Point const c = scene.at(0.4, 0), d = scene.at(0.6, 1);
  GxList<double> straightT, lineT;
  //! [GxBezier::linearProcessing]
  int const crosses = straight.linearProcessing(c, d, straightT, lineT);
  //! [GxBezier::linearProcessing]
  show(room, scene, "GxBezier::linearProcessing", "contacts",
       "The same for a segment that is straight: the chord, as a cubic.",
       say("code ", crosses, ", t ", straightT[0]),
       {{straight.bValue(straightT[0])}, {{c, d}}, {straight}});
}

void showPolylines(Room& room, Scene const& scene) {
  GxBezier const& segment = scene.segment;
  GxList<GxCoord<double>> apart, adapted;
  //! [GxBezier::makeSegment, makeSegmentEx]
  segment.makeSegment(40.0, apart, 0.0);
  segment.makeSegmentEx(120.0, 40.0, 8.0, adapted, 0.0);
  //! [GxBezier::makeSegment, makeSegmentEx]
  show(room, scene, "GxBezier::makeSegment, makeSegmentEx", "flatten",
       "Points 40 apart, drawn; and 120 or 40 apart, as a gap of 8 allows.",
       say(apart.length(), " and ", adapted.length(), " points"),
       {svg::toPoints(apart), {svg::toPoints(apart)}, {}});

  std::vector<GxCoord<double>> halved;
  //! [GxBezier::getPolyline]
  segment.getPolyline(3.0, halved);
  //! [GxBezier::getPolyline]
  show(room, scene, "GxBezier::getPolyline", "flatten", "By halving, until every piece is a line.",
       say(halved.size(), " points"), {halved, {halved}, {}});

  //! [GxBezierPolylineCondition::isALine, isAPoint]
  GxBezierPolylineCondition const plain;
  int const isFlat = plain.isALine(segment, 3.0), isSmall = plain.isAPoint(segment, 3.0);
  //! [GxBezierPolylineCondition::isALine, isAPoint]
  show(room, scene, "GxBezierPolylineCondition::isALine, isAPoint", "flatten",
       "What ends the halving. A program may derive its own.",
       say("not yet flat: ", isFlat, ", not small: ", isSmall), {});
}

}  // namespace

Room segments() {
  Room room("Segments", "segments.cpp");
  Scene const scene;
  showValues(room, scene);
  showPlaces(room, scene);
  showSearches(room, scene);
  showPairs(room, scene);
  showPolylines(room, scene);
  return room;
}

}  // namespace gallery
