// Positions along a curve, and the maps that carry them.

#include "examples/gallery/room.h"

#include <list>

namespace gallery {
namespace {

using crv::Position;

/// The letter, a stretch of it, and positions that are looked at; green where the answer is yes.
void show(Room& room, GxBezierCurve const& letter, std::string const& name,
          std::string const& words, std::string const& returned,
          std::vector<Position> const& places, GxBezierCurve const& stretch = {}) {
  Picture picture(letter, 20);
  picture.chain(letter, kGhost);
  picture.chain(stretch, kBlue);
  svg::Points points;
  for (Position const& at : places) points.push_back(letter.locateCurvePosition(at));
  picture.dots(points, 4, "stroke:#c2255c");
  room.show(name, "copy&a=letter+g", words, returned, picture);
}

void showPlaces(Room& room, GxBezierCurve const& letter) {
  //! [GxBezierCurve::firstPos, lastPos, locateCurvePosition]
  Position const first = letter.firstPos(), last = letter.lastPos();
  crv::Point const point = letter.locateCurvePosition({6, 0.5});
  //! [GxBezierCurve::firstPos, lastPos, locateCurvePosition]
  show(room, letter, "GxBezierCurve::firstPos, lastPos, locateCurvePosition",
       "A position is a segment and a parameter; here is the point at (6, 0.5).",
       say(say(first), ", ", say(last), ", ", say(point)), {{6, 0.5}});

  GxBezierCurvePositionConstructor const make;
  //! [GxBezierCurvePositionConstructor::constructPosition, constructDirectPosition]
  Position const normal = make.constructPosition(4, 1.0);
  Position const direct = make.constructDirectPosition(4, 1.0);
  //! [GxBezierCurvePositionConstructor::constructPosition, constructDirectPosition]
  show(room, letter, "GxBezierCurvePositionConstructor::constructPosition, constructDirectPosition",
       "The end of segment 4, normalised and as it is written.",
       say(say(normal), " and ", say(direct)), {normal});

  //! [GxBezierCurvePosition::isEqual, reverseSense, isCompatibleSense]
  int const isSame = normal.isEqual(direct, 1e-9);
  int const opposite = Position::reverseSense(letter.getSense({2, 0.0}, {9, 0.5}));
  int const fits = Position::isCompatibleSense(opposite, crv::Sense::backward);
  //! [GxBezierCurvePosition::isEqual, reverseSense, isCompatibleSense]
  show(room, letter, "GxBezierCurvePosition::isEqual, reverseSense, isCompatibleSense",
       "Whether two positions are one place, and which way it is between two.",
       say("one place: ", isSame, ", the opposite of forward: ", opposite, ", as asked: ", fits),
       {{2, 0.0}, {9, 0.5}});

  //! [GxBezierCurve::getSense]
  int const sense = letter.getSense({9, 0.5}, {2, 0.0});
  //! [GxBezierCurve::getSense]
  show(room, letter, "GxBezierCurve::getSense", "From (9, 0.5) to (2, 0.0).",
       say("sense ", sense, ": ", sense == crv::Sense::backward ? "backward" : "forward"),
       {{2, 0.0}, {9, 0.5}});

  //! [isEqual of two positions]
  int const onCurve = isEqual(letter, letter.firstPos(), letter.lastPos(), 1e-9);
  int const asWritten = isEqual(letter.firstPos(), letter.lastPos(), 1e-9);
  //! [isEqual of two positions]
  show(room, letter, "isEqual of two positions",
       "The end of a closed curve is its start; as numbers they differ.",
       say(onCurve, " on the curve, ", asWritten, " as numbers"), {letter.firstPos()});

  //! [snapToAnchor]
  Position const snapped = snapToAnchor({7, 0.98}, 0.05);
  //! [snapToAnchor]
  show(room, letter, "snapToAnchor", "The joint near (7, 0.98).", say(snapped), {snapped});

  Position moved;
  //! [adjustBezierCurvePosition]
  adjustBezierCurvePosition(moved, {0, 0.25}, letter, -0.5);
  //! [adjustBezierCurvePosition]
  show(room, letter, "adjustBezierCurvePosition", "Half a segment back, across the seam.",
       say(moved), {{0, 0.25}, moved});

  //! [diff, ratio]
  PosDiff const part = diff({18, 0.5}, {3, 0.25}, 1, static_cast<int>(letter.length()));
  double const share = crv::ratio(part, PosDiff(static_cast<int>(letter.length()), 0.0));
  //! [diff, ratio]
  show(room, letter, "diff, ratio", "How far it is across the seam, counted in segments.",
       say(part.first, " segments and ", part.second, ", ", share, " of the whole"),
       {{18, 0.5}, {3, 0.25}}, crv::stretch(letter, {18, 0.5}, {3, 0.25}, true).curve);
}

void showOrder(Room& room, GxBezierCurve const& letter) {
  Position const a(18, 0.5), b(3, 0.25), p(1, 0.5), q(10, 0.0);
  GxBezierCurve const part = crv::stretch(letter, a, b, true).curve;
  //! [isStrictBetweenPosition, isBetweenPosition]
  int const isInside = isStrictBetweenPosition(p, a, b, 1),
            endIsNot = isBetweenPosition(b, a, b, 1);
  int const isBeside = isStrictBetweenPosition(q, a, b, 1);
  //! [isStrictBetweenPosition, isBetweenPosition]
  show(room, letter, "isStrictBetweenPosition, isBetweenPosition",
       "Whether positions lie on a stretch across the seam; the end counts only if asked for.",
       say(isInside, " for (1, 0.5), ", endIsNot, " for the end, ", isBeside, " for (10, 0)"),
       {p, q, b}, part);

  //! [isBothInclusiveBetweenPosition]
  int const endIs = isBothInclusiveBetweenPosition(b, a, b, 1);
  int const other = isBothInclusiveBetweenPosition(q, a, b, {9, 0.0}, 1);
  //! [isBothInclusiveBetweenPosition]
  show(room, letter, "isBothInclusiveBetweenPosition",
       "Both ends count; a third position may choose the stretch, here the other one.",
       say(endIs, " for the end, ", other, " for (10, 0) on the stretch that holds (9, 0)"), {b, q},
       part);
}

/// Where (5, 0.25) lies after a map, and where it came from.
std::string through(crv::Map const& map, Position const& at) {
  Position there, back;
  int const code = map->mapPosition(there, at);
  int const codeBack = map->inverseMapPosition(back, there);
  return say(say(at), " lies at ", say(there), ", code ", code, "; back at ", say(back), ", code ",
             codeBack);
}

void showMaps(Room& room, GxBezierCurve const& letter) {
  int const n = static_cast<int>(letter.length());
  Position const at(5, 0.25);
  //! [constructIdentityPositionMap]
  crv::Map const same = constructIdentityPositionMap();
  //! [constructIdentityPositionMap]
  show(room, letter, "constructIdentityPositionMap", "Everything stays where it is.",
       through(same, at), {at});

  //! [constructReversePositionMap]
  crv::Map const reverse = constructReversePositionMap(n);
  //! [constructReversePositionMap]
  show(room, letter, "constructReversePositionMap", "The curve run the other way.",
       through(reverse, at), {at});

  //! [constructRotatePositionMap]
  crv::Map const rotate = constructRotatePositionMap(1, 3, n);
  //! [constructRotatePositionMap]
  show(room, letter, "constructRotatePositionMap", "A start that is three segments earlier.",
       through(rotate, at), {at, {n - 3, 0.0}});

  //! [constructCompositePositionMap]
  crv::Map const both = constructCompositePositionMap(reverse, rotate);
  //! [constructCompositePositionMap]
  show(room, letter, "constructCompositePositionMap", "One map after the other.", through(both, at),
       {at});

  //! [constructSingletonPositionMap]
  crv::Map const one = constructSingletonPositionMap(at, letter);
  //! [constructSingletonPositionMap]
  show(room, letter, "constructSingletonPositionMap", "One position, to the curve's end.",
       through(one, at), {at});

  //! [constructRangePositionMap]
  crv::Map const range =
      constructRangePositionMap(letter, 1, 0, 1, {4, 0.5}, {12, 0.5}, letter.lastPos());
  //! [constructRangePositionMap]
  GxBezierCurve const part = crv::stretch(letter, {4, 0.5}, {12, 0.5}, true).curve;
  show(room, letter, "constructRangePositionMap", "A stretch, which becomes a curve of its own.",
       through(range, at), {at}, part);

  Position there, back;
  //! [GxBezierCurvePositionMapBase::mapPosition, inverseMapPosition]
  int const code = range->mapPosition(there, {8, 0.5});
  int const codeBack = range->inverseMapPosition(back, there);
  //! [GxBezierCurvePositionMapBase::mapPosition, inverseMapPosition]
  show(room, letter, "GxBezierCurvePositionMapBase::mapPosition, inverseMapPosition",
       "A position on the stretch, and the way back.",
       say("codes ", code, " and ", codeBack, ", ", say(there), " and ", say(back)), {back}, part);

  std::list<Position> const marks = {{5, 0.5}, {8, 0.0}, {20, 0.5}};
  std::list<Position> carried;
  //! [GxBezierCurvePositionMapBase::transform]
  int const codes = range->transform({}, carried, marks);
  //! [GxBezierCurvePositionMapBase::transform]
  show(room, letter, "GxBezierCurvePositionMapBase::transform",
       "Many at once; one of these three lies off the stretch.",
       say("codes ", codes, ", the first at ", say(carried.front())), {marks.begin(), marks.end()},
       part);

  //! [crv::translate]
  Position const seam = crv::translate(letter, 1, letter.firstPos(), 0);
  //! [crv::translate]
  show(room, letter, "crv::translate", "The seam as a stretch reads it that runs backwards.",
       say(seam), {letter.firstPos()});

  GxBezierCurve turned = letter;
  crv::Map map;
  //! [reverseGxBezierCurve]
  int const done = reverseGxBezierCurve(turned, map);
  //! [reverseGxBezierCurve]
  show(room, letter, "reverseGxBezierCurve", "Reversed, with a map.",
       say("code ", done, "; ", through(map, at)), {at});
}

}  // namespace

Room positions() {
  Room room("Positions and maps", "positions.cpp");
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");
  showPlaces(room, letter);
  showOrder(room, letter);
  showMaps(room, letter);
  return room;
}

}  // namespace gallery
