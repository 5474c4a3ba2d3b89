// Cuts a letter in pieces, takes a stretch of it, and adds a joint. Writes cut.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <array>
#include <vector>

int main() {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");

  //! [cut]
  std::vector<crv::Position> const cuts = {{2, 0.5}, {9, 0.3}, {15, 0.0}};
  std::vector<crv::Piece> const pieces = crv::cut(letter, cuts);  // closed: as many as cuts
  // pieces[0].curve, pieces[0].map: where positions of the letter lie on it
  //! [cut]

  //! [stretch]
  crv::Piece const part = crv::stretch(letter, {20, 0.5}, {3, 0.5}, true);  // across the seam
  crv::Piece const joint = crv::withJoint(letter, {5, 0.25});               // one segment more
  //! [stretch]

  //! [plain]
  GxBezierCurve copy;
  crv::Map map;
  bool const isCopied = copyGxBezierCurve(copy, letter, {2, 0.5}, {9, 0.3}, 1, map) == 0;
  //! [plain]

  panels::Row page(2);
  svg::Box const box = svg::boxOf(letter);
  svg::Box const wide{box.minX - 60, box.minY - 60, box.maxX + 60, box.maxY + 60};
  std::array<char const*, 3> const looks = {svg::kBlue, svg::kOrange, svg::kGreen};
  std::array<crv::Vector, 3> const away = {crv::Vector(-30, 10), {30, -40}, {20, 40}};
  page.panel(0, wide, "crv::cut(letter, cuts)",
             panels::say(pieces.size(), " pieces of a closed curve, drawn apart"));
  page.chain(letter, svg::kGhost);
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    GxBezierCurve moved = pieces[i].curve;
    moved.moveCurve(away[i % 3]);
    page.chain(moved, looks[i % 3]);
    page.dots({svg::jointsOf(moved).front(), svg::jointsOf(moved).back()}, 3.5, looks[i % 3]);
  }
  page.panel(1, wide, "crv::stretch(letter, {20, 0.5}, {3, 0.5}, true)",
             panels::say(part.curve.length(), " segments, across the seam; the ring is the seam"));
  page.chain(letter, svg::kGhost);
  page.chain(part.curve, svg::kRed);
  page.dots(svg::jointsOf(part.curve), 3, "stroke:#c2255c");
  page.dots({letter[0][0]}, 7, "stroke:#212529");
  page.dots({letter[0][0]}, 5, "stroke:#fff");
  page.save("cut.svg");
  return pieces.size() == 3 && isCopied && joint.curve.length() == letter.length() + 1 ? 0 : 1;
}
