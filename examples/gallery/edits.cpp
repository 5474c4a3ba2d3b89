// Cuts, copies, reversals and closings, with the marks that they carry.

#include "examples/gallery/room.h"

#include <array>

namespace gallery {
namespace {

/// A curve with the marks of its source that its map carries.
void drawEdit(Picture& picture, GxBezierCurve const& source, GxBezierCurve const& curve,
              crv::Map const& map, char const* look) {
  picture.chain(curve, look);
  svg::Points marks;
  for (crv::Position const& mark : crv::evenPositions(source, 16, 0.01)) {
    crv::Position now;
    if (map->mapPosition(now, mark) == 0) marks.push_back(curve.locateCurvePosition(now));
  }
  picture.dots(marks, 2.5, "stroke:#c2255c");
}

void showCuts(Room& room, GxBezierCurve const& letter) {
  //! [crv::cut]
  std::vector<crv::Piece> const pieces = crv::cut(letter, {{1, 0.5}, {10, 0.2}, {20, 0.7}});
  //! [crv::cut]
  Picture cut(letter);
  std::array<char const*, 3> const looks = {kBlue, kOrange, kGreen};
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    drawEdit(cut, letter, pieces[i].curve, pieces[i].map, looks[i % 3]);
  }
  room.show("crv::cut", "cut&a=letter+%26", "Three cuts of a closed curve.",
            say(pieces.size(), " pieces of ", pieces[0].curve.length(), ", ",
                pieces[1].curve.length(), " and ", pieces[2].curve.length(), " segments"),
            cut);

  //! [crv::stretch]
  crv::Piece const part = crv::stretch(letter, {28, 0.5}, {8, 0.5}, true);
  //! [crv::stretch]
  Picture stretch(letter);
  stretch.chain(letter, kGhost);
  drawEdit(stretch, letter, part.curve, part.map, kBlue);
  room.show("crv::stretch", "copy&a=letter+%26", "A part, here across the seam, with its marks.",
            say(part.curve.length(), " segments"), stretch);

  //! [copyGxBezierCurve]
  GxBezierCurve copy;
  crv::Map map;
  int const code = copyGxBezierCurve(copy, letter, {2, 0.5}, {14, 0.5}, 1, map);
  //! [copyGxBezierCurve]
  Picture plain(letter);
  plain.chain(letter, kGhost);
  drawEdit(plain, letter, copy, map, kOrange);
  room.show("copyGxBezierCurve", "copy&a=letter+%26",
            "The plain copy of a stretch, with its marks.",
            say("code ", code, ", ", copy.length(), " segments"), plain);

  GxBezierCurve first = letter, second;
  crv::Map firstMap, secondMap;
  //! [spliteGxBezierCurve]
  int const split = spliteGxBezierCurve({1, 0.5}, first, second, firstMap, secondMap);
  //! [spliteGxBezierCurve]
  Picture parts(letter);
  drawEdit(parts, letter, first, firstMap, kBlue);
  drawEdit(parts, letter, second, secondMap, kOrange);
  room.show("spliteGxBezierCurve", "cut&a=letter+%26", "The plain cut, here in segment 1.",
            say("code ", split, ", ", first.length(), " and ", second.length(), " segments"),
            parts);

  //! [crv::withJoint]
  crv::Piece const joint = crv::withJoint(letter, {5, 0.25});
  //! [crv::withJoint]
  Picture joined(letter);
  joined.chain(joint.curve, kBlue);
  joined.dots(svg::jointsOf(joint.curve), 2.5, "stroke:#1864ab");
  joined.dots({letter.locateCurvePosition({5, 0.25})}, 4, "stroke:#c2255c");
  room.show("crv::withJoint", "cut&a=letter+%26", "The same shape with one more joint.",
            say(letter.length(), " segments became ", joint.curve.length()), joined);
}

void showSenses(Room& room, GxBezierCurve const& letter) {
  //! [crv::reversed]
  crv::Piece const back = crv::reversed(letter);
  //! [crv::reversed]
  Picture reversed(letter);
  drawEdit(reversed, letter, back.curve, back.map, kBlue);
  room.show("crv::reversed", "reverse&a=letter+%26", "Run the other way; marks stay in place.",
            say("area ", crv::signedArea(letter), " became ", crv::signedArea(back.curve)),
            reversed);

  GxBezierCurve sense = letter;
  int valid = 0;
  //! [GxBezierCurve::isClockwise, changeOrientation, reverse]
  int const wasClockwise = sense.isClockwise(valid);
  int const changed = sense.changeOrientation(1), isClockwise = sense.isClockwise(valid);
  sense.reverse();
  //! [GxBezierCurve::isClockwise, changeOrientation, reverse]
  Picture oriented(letter);
  oriented.chain(sense, kOrange);
  room.show("GxBezierCurve::isClockwise, changeOrientation, reverse", "reverse&a=letter+%26",
            "Made to run clockwise, then reversed.",
            say(wasClockwise, "; code ", changed, ", then ", isClockwise), oriented);

  GxBezierCurve turned = letter;
  //! [arrangeBezierCurve]
  arrangeBezierCurve(turned, crv::Position(6, 0.0), crv::Position(20, 0.5));
  //! [arrangeBezierCurve]
  Picture arranged(letter);
  arranged.chain(turned, kBlue);
  arranged.dots({turned[0][0]}, 4, "stroke:#c2255c");
  room.show("arrangeBezierCurve", "reverse&a=letter+%26",
            "A closed curve with a new start, the red dot.",
            say(letter.length(), " segments, then ", turned.length()), arranged);

  std::vector<crv::Point> const samples = readStroke("island-malta.txt");
  GxBezierCurve bay = crv::fit({samples.begin(), samples.begin() + 31}, {6.0, false, 0.0}).curve;
  std::size_t const before = bay.length();
  //! [GxBezierCurve::isClose, makeClosedCurve]
  int const meets = bay.isClose();
  int const isClosed = bay.makeClosedCurve();
  //! [GxBezierCurve::isClose, makeClosedCurve]
  Picture closed(bay);
  closed.chain(bay, std::string(kBlue) + ";fill:#e7f5ff");
  GxBezierCurve nice = crv::fit({samples.begin(), samples.begin() + 38}, {6.0, false, 0.0}).curve;
  //! [GxBezierCurve::makeNiceClosedCurve]
  int const isNice = nice.makeNiceClosedCurve();
  //! [GxBezierCurve::makeNiceClosedCurve]
  Picture trimmed(nice);
  trimmed.chain(nice, std::string(kBlue) + ";fill:#e7f5ff");
  room.show("GxBezierCurve::makeNiceClosedCurve", "reverse",
            "Ends that overlap or nearly meet are trimmed first.",
            say("code ", isNice, ", ", nice.length(), " segments"), trimmed);
  room.show(
      "GxBezierCurve::isClose, makeClosedCurve", "reverse",
      "A straight segment bridges ends that do not meet.",
      say("meets: ", meets, "; code ", isClosed, ", ", before, " segments became ", bay.length()),
      closed);
}

}  // namespace

Room edits() {
  Room room("Edits", "edits.cpp");
  GxBezierCurve const letter = readOutline("italic-ampersand-outer-thirds.txt");
  showCuts(room, letter);
  showSenses(room, letter);
  return room;
}

}  // namespace gallery
