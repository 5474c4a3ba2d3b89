// Unites, intersects, subtracts and excludes two letters. Writes weld.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  GxBezierCurve const s = readOutline("roman-capital-s-thirds.txt");
  GxBezierCurve f = readOutline("italic-f-thirds.txt");
  f.moveCurve({92, 114});

  //! [weld]
  std::vector<crv::Curve> const a = {s}, b = {f};  // an area each: outlines and holes
  crv::Region const welded = crv::unite(a, b, crv::FillRule::nonZero);
  crv::Region const shared = crv::intersect(a, b, crv::FillRule::nonZero);
  crv::Region const rest = crv::subtract(a, b, crv::FillRule::nonZero);
  crv::Region const either = crv::exclude(a, b, crv::FillRule::nonZero);
  //! [weld]

  //! [source]
  crv::Source const& source = welded.sources[0][3];  // of segment 3 of the first outline
  // list 0 is a, 1 is b; then the curve in it, and the stretch from source.from to source.to
  //! [source]

  //! [ask]
  bool const isInside = crv::contains(welded.curves, {300, 300}, crv::FillRule::nonZero);
  double const area = crv::area(welded.curves, crv::FillRule::nonZero);
  //! [ask]

  struct {
    char const* title;
    crv::Region const* region;
  } const results[] = {{"crv::unite", &welded},
                       {"crv::intersect", &shared},
                       {"crv::subtract", &rest},
                       {"crv::exclude", &either}};
  panels::Row page(4);
  for (int i = 0; i < 4; ++i) {
    std::vector<crv::Curve> const& curves = results[i].region->curves;
    page.panel(i, {-10, -100, 640, 830}, results[i].title,
               panels::say(curves.size(), " outlines, area ") +
                   panels::say(crv::area(curves, crv::FillRule::nonZero), "", 6));
    page.chain(s, svg::kGhost);
    page.chain(f, svg::kGhost);
    page.area(curves, svg::kBlue, "#d0ebff");
  }
  page.save("weld.svg");
  double const both = crv::area(shared.curves, crv::FillRule::nonZero) +
                      crv::area(either.curves, crv::FillRule::nonZero);
  return std::fabs(area - both) < 1e-6 * area && isInside && source.list < 2 ? 0 : 1;
}
