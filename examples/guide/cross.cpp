// Finds where two letters meet, where a line meets them, and where a scribble crosses itself.
// Writes cross.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <algorithm>

int main() {
  GxBezierCurve const s = readOutline("roman-capital-s-thirds.txt");
  GxBezierCurve k = readOutline("sans-k-thirds.txt");
  k.moveCurve({60, 20});

  //! [contacts]
  crv::CurveContacts const met = crv::contacts(s, k);
  std::size_t crossings = 0;
  for (crv::CurveContact const& c : met.points) {
    // c.first on s, c.second on k, c.point, c.kind
    if (c.kind == crv::ContactKind::crossing) ++crossings;
  }
  // met.overlaps: stretches that both curves share
  //! [contacts]

  //! [line]
  crv::Point const a(20, 200), b(640, 420);
  std::vector<crv::LineContact> const hits = crv::contacts(k, a, b);  // in order along the line
  //! [line]

  crv::Fit const scribble = crv::fit(readStroke("pad-scribble.txt"), {});
  //! [self]
  crv::CurveContacts const knots = crv::selfContacts(scribble.curve);
  //! [self]

  //! [plain]
  GxList<GxCoord<double>> points;
  bool const theyMeet = s.findIntersections(k, points) != 0;
  //! [plain]

  panels::Row page(2);
  svg::Points marks, hitPoints, knotPoints;
  for (crv::CurveContact const& c : met.points) marks.push_back(c.point);
  for (crv::LineContact const& c : hits) hitPoints.push_back(c.point);
  for (crv::CurveContact const& c : knots.points) knotPoints.push_back(c.point);
  page.panel(0, {20, -22, 640, 720}, "crv::contacts(s, k), crv::contacts(k, a, b)",
             panels::say(met.points.size(), " contacts, ") +
                 panels::say(crossings, " of them crossings; the line meets k ") +
                 panels::say(hits.size(), " times"));
  page.polyline({a, b}, "stroke:#868e96;stroke-width:1.5");
  page.chain(s, svg::kBlue);
  page.chain(k, svg::kOrange);
  page.dots(marks, 4, "stroke:#212529");
  page.dots(hitPoints, 4, "stroke:#c2255c");
  page.panel(1, svg::boxOf(scribble.curve), "crv::selfContacts(scribble)",
             panels::say(knots.points.size(), " crossings with itself"));
  page.chain(scribble.curve, "stroke:#1864ab;stroke-width:1.2");
  page.dots(knotPoints, 2.5, "stroke:#212529");
  page.save("cross.svg");
  return theyMeet && !hits.empty() && crossings == met.points.size() ? 0 : 1;
}
