// Carries marks through a cut, a parallel and a simplification. Writes marks.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");
  std::vector<crv::Position> marks = crv::evenPositions(letter, 24, 0.01);

  //! [carry]
  crv::Piece const piece = crv::stretch(letter, {4, 0.6}, {18, 0.5}, true);
  svg::Points onPiece;
  for (crv::Position const& mark : marks) {
    crv::Position now;
    if (piece.map->mapPosition(now, mark) != 0) continue;  // it is not on this piece
    onPiece.push_back(piece.curve.locateCurvePosition(now));
  }
  //! [carry]

  //! [chain]
  crv::Piece const turned = crv::reversed(piece.curve);
  crv::Map const both = constructCompositePositionMap(piece.map, turned.map);  // letter to turned
  crv::Position old;
  bool const isBack = both->inverseMapPosition(old, {3, 0.5}) == 0;  // and back
  //! [chain]

  //! [parallel]
  crv::Offset const ring = crv::offset(letter, 24.0);
  std::vector<svg::Points> links;
  for (crv::Piece const& parallel : ring.parallels) {
    for (crv::Position const& mark : marks) {
      crv::Position now;
      if (parallel.map->mapPosition(now, mark) != 0) continue;  // trimmed away
      links.push_back({letter.locateCurvePosition(mark), parallel.curve.locateCurvePosition(now)});
    }
  }
  //! [parallel]

  panels::Row page(2);
  svg::Box const box{0, -235, 515, 485};
  page.panel(0, box, "crv::stretch and its map",
             panels::say(onPiece.size(), " of ") + panels::say(marks.size(), " marks lie on it"));
  page.chain(letter, svg::kGhost);
  page.chain(piece.curve, svg::kBlue);
  page.dots(onPiece, 4, "stroke:#c2255c");
  page.panel(1, box, "crv::offset(letter, 24.0) and its map",
             panels::say(links.size(), " marks on the parallel"));
  page.chain(letter, svg::kInk);
  for (crv::Piece const& parallel : ring.parallels) page.chain(parallel.curve, svg::kBlue);
  for (svg::Points const& link : links) {
    page.polyline(link, "stroke:#c2255c;stroke-width:1.2");
    page.dots(link, 3, "stroke:#c2255c");
  }
  page.save("marks.svg");
  crv::Point const here = turned.curve.locateCurvePosition({3, 0.5});
  return isBack && here.distance(letter.locateCurvePosition(old)) < 1e-9 ? 0 : 1;
}
