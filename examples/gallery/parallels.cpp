// Parallels and outlines of strokes.

#include "examples/gallery/room.h"

namespace gallery {
namespace {

void showOffsets(Room& room) {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");
  GxBezierCurve plain = letter;
  //! [GxBezierCurve::offset]
  plain.offset(-14.0, 1, 0);
  //! [GxBezierCurve::offset]
  Picture moved(letter, 25);
  moved.chain(letter, kInk);
  moved.chain(plain, kOrange);
  room.show("GxBezierCurve::offset", "offset&a=letter+g",
            "Each segment moved and joined; nothing trimmed.",
            say(letter.length(), " segments became ", plain.length()), moved);

  //! [crv::offset]
  crv::Offset const parallel = crv::offset(letter, -14.0, {0.05});
  //! [crv::offset]
  Picture trimmed(letter, 25);
  trimmed.chain(letter, kInk);
  for (crv::Piece const& piece : parallel.parallels) trimmed.chain(piece.curve, kBlue);
  room.show("crv::offset", "offset&a=letter+g", "At the distance, and nowhere nearer.",
            say(parallel.parallels.size(), " parallels, off by ", parallel.worstError), trimmed);

  double value = 0;
  //! [GxBezierCurve::calculateOffsetValue]
  int const code = letter.calculateOffsetValue(value, {0, 1}, 10.0, 1);
  //! [GxBezierCurve::calculateOffsetValue]
  Picture raised(letter, 25);
  raised.chain(letter, kInk);
  for (crv::Piece const& piece : crv::offset(letter, value).parallels)
    raised.chain(piece.curve, kBlue);
  room.show("GxBezierCurve::calculateOffsetValue", "offset&a=letter+g",
            "The distance that moves the top up by 10.", say("code ", code, ", distance ", value),
            raised);
}

void showStrokes(Room& room) {
  std::vector<crv::Point> const samples = readStroke("glyph-script-r.txt");
  GxBezierCurve const stroke = crv::fit(samples, {6.0, false, 1.0}).curve;
  //! [crv::strokeOutline, round]
  std::vector<crv::Curve> const pen = crv::strokeOutline(stroke, 50.0, crv::Cap::round, {0.1});
  //! [crv::strokeOutline, round]
  Picture round(stroke, 40);
  round.area(pen, kBlue, "#e7f5ff");
  round.chain(stroke, kInk);
  room.show("crv::strokeOutline, round", "offset", "What a round pen leaves; holes included.",
            say(pen.size(), " outlines"), round);

  //! [crv::strokeOutline, miter and square]
  crv::OffsetOptions options{0.1, crv::Join::miter, 4.0};
  std::vector<crv::Curve> const flat = crv::strokeOutline(stroke, 50.0, crv::Cap::square, options);
  //! [crv::strokeOutline, miter and square]
  Picture square(stroke, 40);
  square.area(flat, kOrange, "#fff4e6");
  square.chain(stroke, kInk);
  room.show("crv::strokeOutline, miter and square", "offset", "Joins to a tip, square caps.",
            say(flat.size(), " outlines"), square);
}

}  // namespace

Room parallels() {
  Room room("Parallels", "parallels.cpp");
  showOffsets(room);
  showStrokes(room);
  return room;
}

}  // namespace gallery
