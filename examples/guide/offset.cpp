// Offsets a letter plainly and with a stated error, and expands a stroke. Writes offset.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  GxBezierCurve const letter = readOutline("sans-k-thirds.txt");

  //! [plain]
  GxBezierCurve plain = letter;
  plain.offset(28.0, 1, 0);  // to the left of the direction of travel; replaces the curve
  //! [plain]

  //! [accurate]
  crv::OffsetOptions options;
  options.tolerance = 0.1;  // how far the distance may be off
  options.join = crv::Join::round;
  // The letter runs counter-clockwise: its inside is on the left.
  crv::Offset const inside = crv::offset(letter, 28.0, options);
  crv::Offset const outside = crv::offset(letter, -28.0, options);
  // inside.parallels: none, one or several pieces, each with a map; inside.worstError
  //! [accurate]

  GxBezierCurve const zigzag{{{0, 0}, {40, 90}, {80, 180}, {120, 200}},
                             {{120, 200}, {130, 100}, {140, 60}, {150, 0}},
                             {{150, 0}, {190, 60}, {230, 150}, {320, 130}}};
  //! [stroke]
  std::vector<crv::Curve> const pen = crv::strokeOutline(zigzag, 40.0, crv::Cap::round, options);
  //! [stroke]
  crv::OffsetOptions pointed = options;
  pointed.join = crv::Join::miter;

  panels::Row page(3);
  svg::Box const box{30, -40, 525, 740};
  page.panel(0, box, "plain.offset(28.0, 1, 0)", "moved and joined, not trimmed");
  page.chain(letter, svg::kInk);
  page.chain(plain, svg::kBlue);
  page.panel(1, box, "crv::offset(letter, 28.0), -28.0",
             panels::say(outside.parallels.size(), " outside, ") +
                 panels::say(inside.parallels.size(), " inside; off by ") +
                 panels::say(max(outside.worstError, inside.worstError), "", 2));
  page.chain(letter, svg::kInk);
  for (crv::Piece const& piece : outside.parallels) page.chain(piece.curve, svg::kBlue);
  for (crv::Piece const& piece : inside.parallels) page.chain(piece.curve, svg::kOrange);
  page.panel(2, {-40, -60, 360, 560}, "crv::strokeOutline(zigzag, 40.0)",
             "round; miter joins and square caps");
  for (bool const isPointed : {false, true}) {
    GxBezierCurve middle = zigzag;
    std::vector<crv::Curve> outline =
        isPointed ? crv::strokeOutline(zigzag, 40.0, crv::Cap::square, pointed) : pen;
    crv::Vector const up(0, isPointed ? 0 : 290);
    middle.moveCurve(up);
    for (crv::Curve& curve : outline) curve.moveCurve(up);
    page.area(outline, svg::kRed, "#fff0f6");
    page.chain(middle, "stroke:#212529;stroke-width:1");
  }
  page.save("offset.svg");
  return outside.worstError <= 0.1 && inside.worstError <= 0.1 && pen.size() == 1 ? 0 : 1;
}
