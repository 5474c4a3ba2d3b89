// Asks a letter for its nearest places, its size, its area and its directions. Writes measure.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

int main() {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");

  //! [nearest]
  crv::Point const pen(180, 20);
  auto const nearest = crv::nearest(letter, pen);  // nothing for an empty curve
  if (!nearest) return 1;
  // nearest->position, nearest->point, nearest->distance
  //! [nearest]

  //! [many]
  crv::CurveSearch const search(letter);  // once
  svg::Points queries, feet;
  for (double x = 0; x <= 500; x += 50) {
    queries.emplace_back(x, 520);
    feet.push_back(search.nearest(queries.back())->point);  // often
  }
  //! [many]

  //! [measure]
  double const length = crv::arcLength(letter, 0.001);  // to within 0.001
  double const area = crv::signedArea(letter);          // negative: it runs clockwise
  crv::Directions const way = crv::directions(letter, nearest->position);
  double minX, minY, maxX, maxY;
  letter.getLocalBoundingBox(minX, minY, maxX, maxY);  // the tight box
  //! [measure]

  //! [plain]
  GxBezierCurvePosition at;
  GxCoord<double> point;
  if (letter.findNearestPointPos(pen, at) >= 0) point = letter.locateCurvePosition(at);
  double const chords = letter.curveLength();  // by chords, which agree within 0.1
  //! [plain]

  panels::Row page(2);
  svg::Box const box{minX, minY, maxX, 530};
  page.panel(0, box, "crv::nearest, crv::CurveSearch",
             panels::say(nearest->distance, " from the pen to the letter"));
  page.chain(letter, svg::kInk);
  for (std::size_t i = 0; i < queries.size(); ++i) {
    page.polyline({queries[i], feet[i]}, "stroke:#74c0fc;stroke-width:1.2");
  }
  page.dots(queries, 3, "stroke:#1864ab");
  page.polyline({pen, nearest->point}, svg::kRed);
  page.dots({pen, nearest->point}, 4, "stroke:#c2255c");
  page.label(pen, -34, 18, "pen", "fill:#c2255c");
  page.panel(1, box, "arcLength, signedArea, directions, box",
             panels::say(length, " long (by chords ", 7) + panels::say(chords, "), area ", 7) +
                 panels::say(area, "", 7));
  page.polyline({{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}},
                "stroke:#2b8a3e;stroke-width:1.5;stroke-dasharray:5 5");
  page.chain(letter, svg::kInk + std::string(";fill:#e7f5ff"));
  page.polyline({nearest->point, nearest->point + way.out * 120.0}, svg::kRed);
  page.dots({nearest->point}, 4, "stroke:#c2255c");
  page.label(nearest->point + way.out * 120.0, 0, 18, "way.out", "fill:#c2255c");
  page.save("measure.svg");
  return point.distance(nearest->point) < 1.0 ? 0 : 1;
}
