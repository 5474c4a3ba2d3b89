// Points and straight lines, here of digitised strokes, and transforms of the plane.

#include "examples/gallery/room.h"

namespace gallery {
namespace {

using crv::Point;

/// The image of a curve's control points.
template <class Transform>
GxBezierCurve image(Transform const& transform, GxBezierCurve curve) {
  for (GxBezier& s : curve) {
    for (int i = 0; i < 4; ++i) s(i) = transform * s[i];
  }
  return curve;
}

void show(Room& room, svg::Points const& stroke, std::string const& name, std::string const& words,
          std::string const& returned, svg::Points const& dots,
          std::vector<svg::Points> const& lines = {}) {
  Picture picture(svg::boxOf(stroke));
  picture.polyline(stroke, kGhost);
  for (svg::Points const& line : lines) picture.polyline(line, kBlue);
  picture.dots(dots, 4, "stroke:#c2255c");
  room.show(name, "fit&stroke=Malta", words, returned, picture);
}

void showLines(Room& room, svg::Points const& coast) {
  std::size_t const quarter = coast.size() / 4;
  Point const a = coast[0], b = coast[quarter], c = coast[2 * quarter], d = coast[3 * quarter];
  Point met;
  //! [intersect of two lines]
  int const code = intersect(met, a, c, b, d);
  //! [intersect of two lines]
  show(room, coast, "intersect of two lines", "Where two lines across the island meet.",
       say("code ", code, ", ", say(met)), {met}, {{a, c}, {b, d}});

  Point const p = coast[quarter / 2];
  //! [closestToLineSegment, distanceToLineSegment]
  Point const foot = closestToLineSegment(a, b, p);
  double const distance = distanceToLineSegment(a, b, p);
  //! [closestToLineSegment, distanceToLineSegment]
  show(room, coast, "closestToLineSegment, distanceToLineSegment",
       "How far a sample lies from the chord of a bay.", say(say(foot), ", ", distance, " away"),
       {p, foot}, {{a, b}, {p, foot}});

  //! [pointOnLineSegment, quickCheckPointOnLine]
  int const onSegment = pointOnLineSegment(met, a, b, 1.0);
  int const onLine = quickCheckPointOnLine(met, a, c, 1.0);
  //! [pointOnLineSegment, quickCheckPointOnLine]
  show(room, coast, "pointOnLineSegment, quickCheckPointOnLine",
       "Whether the dot lies on the one segment, and on the other's line.",
       say(onSegment, " and ", onLine), {met}, {{a, b}, {a, c}});

  //! [crv::angle]
  double const angle = crv::angle(a, b, c);
  //! [crv::angle]
  show(room, coast, "crv::angle", "The angle at a sample.", say(angle, " radians"), {a, b, c},
       {{a, b, c}});

  //! [Are3PointsCCW]
  int const isLeft = Are3PointsCCW(a, b, c) == crv::Turn::counterClockwise;
  //! [Are3PointsCCW]
  show(room, coast, "Are3PointsCCW", "The turn from the first by the second to the third.",
       isLeft ? "counter-clockwise" : "clockwise", {a, b, c}, {{a, b, c}});

  svg::Box const box = svg::boxOf({a, b, c});
  //! [isPointInBox]
  int const isInside = isPointInBox(d, box.minX, box.minY, box.maxX, box.maxY, 0.0);
  //! [isPointInBox]
  show(room, coast, "isPointInBox", "Whether a sample lies in the box of three others.",
       say(isInside), {d},
       {{{box.minX, box.minY},
         {box.maxX, box.minY},
         {box.maxX, box.maxY},
         {box.minX, box.maxY},
         {box.minX, box.minY}}});

  Point first = a, last = b;
  //! [pointsAverage, isEqual]
  int const wasOne = isEqual(first, last, 1e-9);
  pointsAverage(first, last);
  int const isOne = isEqual(first, last, 1e-9);
  //! [pointsAverage, isEqual]
  show(room, coast, "pointsAverage, isEqual", "Two samples, moved onto their midpoint.",
       say("one point: ", wasOne, ", then ", isOne, ", at ", say(first)), {a, b, first}, {{a, b}});
}

void showTransforms(Room& room, GxBezierCurve const& letter) {
  GxBezierCurve moved = letter;
  //! [GxBezierCurve::moveCurve, resize, flip]
  moved.resize(0.6, 0.6);
  moved.flip();
  moved.moveCurve({500, 250});
  //! [GxBezierCurve::moveCurve, resize, flip]
  Picture picture(svg::Box{0, -150, 950, 480});
  picture.chain(letter, kGhost);
  picture.chain(moved, kBlue);
  room.show("GxBezierCurve::moveCurve, resize, flip", "copy&a=letter+g",
            "Smaller, upside down, and to the right.",
            say("starts at ", say(moved.locateCurvePosition(moved.firstPos()))), picture);

  GxBezierCurve others = letter;
  //! [GxBezier::reverse, scale, flip]
  for (GxBezier& s : others) s.reverse(), s.scale(0.8, 0.5), s.flip();
  //! [GxBezier::reverse, scale, flip]
  Picture changed(svg::Box{0, -250, 500, 480});
  changed.chain(letter, kGhost);
  changed.chain(others, kOrange);
  room.show("GxBezier::reverse, scale, flip", "reverse&a=letter+g",
            "The same for each segment, which is run the other way, too.",
            say("segment 0 starts at ", say(others[0][0])), changed);

  //! [Gx2DTrans::image, Gx2DRotate::image]
  Gx2DRotate const rotate(0.4);
  Point const turned = rotate.image(letter[0][0]);
  //! [Gx2DTrans::image, Gx2DRotate::image]
  Picture rotated(svg::Box{-200, -200, 500, 600});
  rotated.chain(letter, kGhost);
  rotated.chain(image(rotate, letter), kBlue);
  room.show("Gx2DTrans::image, Gx2DRotate::image", "copy&a=letter+g",
            "Turned about the origin by 0.4 radians.",
            say("the start ", say(letter[0][0]), " is at ", say(turned)), rotated);

  Gx2DMatrix<double> slant, upright;
  //! [GxMatrix::set, Gx2DMatrix::invert]
  slant.set(0, 0, 1.0), slant.set(1, 1, 1.0), slant.set(0, 1, 0.35);
  int const hasInverse = slant.invert(upright);
  Point const back = upright * (slant * letter[0][0]);
  //! [GxMatrix::set, Gx2DMatrix::invert]
  Picture slanted(svg::Box{-50, -220, 680, 480});
  slanted.chain(letter, kGhost);
  slanted.chain(image(slant, letter), kBlue);
  room.show("GxMatrix::set, Gx2DMatrix::invert", "copy&a=letter+g",
            "Slanted by a matrix, and back.",
            say("an inverse: ", hasInverse, "; the start is back at ", say(back)), slanted);
}

}  // namespace

Room points() {
  Room room("Points and transforms", "points.cpp");
  showLines(room, readStroke("island-malta.txt"));
  showTransforms(room, readOutline("roman-g-outer.txt"));
  return room;
}

}  // namespace gallery
