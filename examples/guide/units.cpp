// Takes a drawing with y down and of eight units, and brings it to the size and sense that the
// plain operations want. Writes units.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

int main() {
  GxBezierCurve letter = readOutline("roman-g-outer.txt");
  letter.resize(1.0 / 64, -1.0 / 64);  // a letter of ten units, y down, as a page has it
  std::string const text = crv::toPath(letter);

  //! [down]
  GxBezierCurve const onPage = crv::parsePath(text).curves.at(0);  // y down, as SVG draws
  bool const looksClockwise = !crv::isClockwise(onPage);           // the sense is told for y up
  GxBezierCurve upright = onPage;
  upright.flip();  // y up: now left is left, and clockwise is clockwise
  //! [down]

  //! [scale]
  GxBezierCurve large = upright;
  large.resize(64, 64);  // a power of two: exact, there and back
  large.offset(16.0, 1, 0);
  large.resize(1.0 / 64, 1.0 / 64);
  //! [scale]

  //! [accurate]
  crv::Offset const any = crv::offset(upright, 0.25, {1e-4});  // right at every scale
  //! [accurate]

  GxBezierCurve small = upright;
  small.offset(0.25, 1, 0);  // below 0.5: ignored

  panels::Row page(3);
  svg::Box box = svg::boxOf(upright);
  box = {box.minX - 0.5, box.minY - 0.5, box.maxX + 0.5, box.maxY + 0.5};
  page.panel(0, box, "small.offset(0.25, 1, 0)", "nothing: below 0.5 is ignored");
  page.chain(upright, svg::kInk);
  page.chain(small, svg::kBlue);
  page.panel(1, box, "resize, offset(16.0, 1, 0), resize", "done 64 times as large");
  page.chain(upright, svg::kInk);
  page.chain(large, svg::kBlue);
  page.panel(2, box, "crv::offset(letter, 0.25, {1e-4})",
             panels::say(any.worstError, " off at most, no scaling", 2));
  page.chain(upright, svg::kInk);
  for (crv::Piece const& piece : any.parallels) page.chain(piece.curve, svg::kOrange);
  page.save("units.svg");
  return small == upright && looksClockwise == crv::isClockwise(upright) ? 0 : 1;
}
