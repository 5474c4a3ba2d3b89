// Where curves meet each other, lines and themselves.

#include "examples/gallery/room.h"

namespace gallery {
namespace {

template <class Contacts>
svg::Points pointsOf(Contacts const& contacts) {
  svg::Points points;
  for (auto const& contact : contacts) points.push_back(contact.point);
  return points;
}

void showPair(Room& room) {
  GxBezierCurve const at = readOutline("roman-at-thirds.txt");
  GxBezierCurve const w = readOutline("bold-w-ends.txt");
  svg::Box const box{20, -20, 1170, 720};
  //! [crv::contacts of two curves]
  crv::CurveContacts const met = crv::contacts(at, w);
  //! [crv::contacts of two curves]
  Picture pair(box);
  pair.chain(at, kBlue);
  pair.chain(w, kOrange);
  pair.dots(pointsOf(met.points), 3, "stroke:#212529");
  room.show("crv::contacts of two curves", "contacts&a=letter+@&b=letter+W",
            "Each contact once, with its kind.",
            say(met.points.size(), " contacts, ", met.overlaps.size(), " overlaps"), pair);

  //! [GxBezierCurve::findIntersections]
  GxList<GxCoord<double>> points;
  int const found = at.findIntersections(w, points);
  //! [GxBezierCurve::findIntersections]
  Picture plain(box);
  plain.chain(at, kBlue);
  plain.chain(w, kOrange);
  plain.dots(svg::toPoints(points), 3, "stroke:#212529");
  room.show("GxBezierCurve::findIntersections", "contacts&a=letter+@&b=letter+W",
            "The plain search: points alone.",
            say("code ", found, ", ", points.length(), " points"), plain);

  //! [crv::contacts of a copy]
  GxBezierCurve const copy = crv::stretch(at, {3, 0.5}, {9, 0.5}, true).curve;
  crv::CurveContacts const shared = crv::contacts(at, copy);
  //! [crv::contacts of a copy]
  Picture overlap(at);
  overlap.chain(copy, "stroke:#ffd8a8;stroke-width:7");
  overlap.chain(at, kBlue);
  room.show("crv::contacts of a copy", "contacts", "A stretch that both share is one overlap.",
            say(shared.points.size(), " contacts, ", shared.overlaps.size(), " overlap from ",
                say(shared.overlaps.at(0).from), " to ", say(shared.overlaps.at(0).to)),
            overlap);
}

void showLines(Room& room) {
  GxBezierCurve const curve = readOutline("italic-ampersand-outer-thirds.txt");
  crv::Point const a(100, 100), b(830, 520);
  //! [crv::contacts with a line]
  std::vector<crv::LineContact> const hits = crv::contacts(curve, a, b);
  //! [crv::contacts with a line]
  Picture line(curve, 20);
  line.chain(curve, kBlue);
  line.polyline({a, b}, kInk);
  line.dots(pointsOf(hits), 3, "stroke:#c2255c");
  room.show("crv::contacts with a line", "contacts", "In order along the line.",
            say(hits.size(), " contacts, the first at ", say(hits.at(0).position)), line);

  crv::Position const from = curve.firstPos();
  //! [GxBezierCurve::findFirstGeometricLineIntersection]
  crv::Position met;
  int const code =
      curve.findFirstGeometricLineIntersection(a, b - a, from, curve.lastPos(), met, 1e-8);
  //! [GxBezierCurve::findFirstGeometricLineIntersection]
  Picture first(curve, 20);
  first.chain(curve, kGhost);
  first.chain(crv::stretch(curve, from, met, true).curve, kOrange);
  first.polyline({a, b}, kInk);
  first.dots({curve.locateCurvePosition(met)}, 3.5, "stroke:#c2255c");
  room.show("GxBezierCurve::findFirstGeometricLineIntersection", "contacts",
            "Where a walk from the start first meets a line.", say("code ", code, ", ", say(met)),
            first);

  crv::Position inFrame, orEnd;
  //! [GxBezierCurve::findFirstGeometricLineIntersectionEx]
  int const other = curve.findFirstGeometricLineIntersectionEx(a, b - a, {12, 0.0}, curve.lastPos(),
                                                               inFrame, 1e-8);
  //! [GxBezierCurve::findFirstGeometricLineIntersectionEx]
  Picture second(curve, 20);
  second.chain(curve, kGhost);
  second.chain(crv::stretch(curve, {12, 0.0}, inFrame, true).curve, kOrange);
  second.polyline({a, b}, kInk);
  room.show("GxBezierCurve::findFirstGeometricLineIntersectionEx", "contacts",
            "The same in the frame of the line, here from segment 12 on.",
            say("code ", other, ", ", say(inFrame)), second);

  crv::Point const below(100, -500);
  //! [GxBezierCurve::findFirstGeometricLineIntersectionWithEndpointCheck]
  int const ended = curve.findFirstGeometricLineIntersectionWithEndpointCheck(
      below, {1, 0}, from, curve.lastPos(), orEnd);
  //! [GxBezierCurve::findFirstGeometricLineIntersectionWithEndpointCheck]
  Picture third(curve, 20);
  third.chain(curve, kGhost);
  third.dots({curve.locateCurvePosition(curve.lastPos())}, 3.5, "stroke:#c2255c");
  room.show("GxBezierCurve::findFirstGeometricLineIntersectionWithEndpointCheck", "contacts",
            "A line that the curve does not meet: its end counts only where it is on the line.",
            say("code ", ended), third);
}

void showKnots(Room& room) {
  GxBezierCurve const scribble = crv::fit(readStroke("pad-scribble.txt"), {}).curve;
  //! [crv::selfContacts]
  crv::CurveContacts const knots = crv::selfContacts(scribble);
  //! [crv::selfContacts]
  Picture picture(scribble);
  picture.chain(scribble, kBlue);
  picture.dots(pointsOf(knots.points), 3, "stroke:#212529");
  room.show("crv::selfContacts", "contacts", "Where a scribble crosses itself.",
            say(knots.points.size(), " contacts on ", scribble.length(), " segments"), picture);

  // Fitted coarsely, a turn of the scribble is one segment with a loop.
  GxBezier const loop = crv::fit(readStroke("pad-scribble.txt"), {100.0, false, 0.0}).curve[0];
  double t1 = 0, t2 = 0;
  GxList<GxBezier> parts;
  //! [GxBezier::isSelfIntersect, cleanSelfIntersection]
  int const isLoop = loop.isSelfIntersect(t1, t2);
  loop.cleanSelfIntersection(parts);
  //! [GxBezier::isSelfIntersect, cleanSelfIntersection]
  Picture single(GxBezierCurve{loop}, 15);
  single.chain(GxBezierCurve{loop}, kBlue);
  single.chain(GxBezierCurve{parts[0]}, kOrange);
  single.dots({loop.bValue(t1)}, 3.5, "stroke:#c2255c");
  room.show("GxBezier::isSelfIntersect, cleanSelfIntersection", "contacts",
            "The loop of one segment, and the segment cut in the middle of it.",
            say("code ", isLoop, ", t ", t1, " and ", t2, ", ", parts.length(), " parts"), single);
}

}  // namespace

Room meetings() {
  Room room("Contacts", "meetings.cpp");
  showPair(room);
  showLines(room);
  showKnots(room);
  return room;
}

}  // namespace gallery
