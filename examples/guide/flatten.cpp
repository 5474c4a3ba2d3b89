// Turns a letter into polylines in three ways. Writes flatten.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  GxBezierCurve const letter = readOutline("roman-capital-s-thirds.txt");

  //! [plain]
  std::vector<GxCoord<double>> halved;
  letter.getPolyline(4.0, halved);  // by halving, until pieces are lines within 4

  GxList<GxCoord<double>> spaced;
  letter.makeCurve(40.0, spaced, 0);  // points 40 apart, carried across the joints
  //! [plain]

  //! [accurate]
  crv::Polyline const few = crv::flatten(letter, 4.0);
  // few.points, few.positions: where on the curve each point lies; few.worstDistance <= 4
  //! [accurate]

  panels::Row page(3);
  svg::Box const box = svg::boxOf(letter);
  struct {
    char const* title;
    svg::Points points;
    std::string note;
  } const ways[] = {
      {"letter.getPolyline(4.0, out)", halved, ""},
      {"crv::flatten(letter, 4.0)", few.points, panels::say(few.worstDistance, " away at most", 3)},
      {"letter.makeCurve(40.0, out, 0)", svg::toPoints(spaced), "each 40 from the one before"},
  };
  for (int i = 0; i < 3; ++i) {
    page.panel(i, box, ways[i].title,
               panels::say(ways[i].points.size(), " points  ") + ways[i].note);
    page.chain(letter, svg::kGhost);
    page.polyline(ways[i].points, svg::kBlue);
    page.dots(ways[i].points, 3, "stroke:#1864ab");
  }
  page.save("flatten.svg");
  return few.worstDistance <= 4.0 && few.points.size() == few.positions.size() ? 0 : 1;
}
