// Asks two overlapping letters where they cross, which place of one is nearest to a point, and
// where a walk along the other first meets a line. Writes nearestAndCrossings.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <iostream>
#include <string>

namespace {

std::string countOf(unsigned long n, std::string const& what) { return std::to_string(n) + what; }

}  // namespace

int main() {
  GxBezierCurve s = readOutline("roman-capital-s-thirds.txt");
  GxBezierCurve f = readOutline("italic-f-thirds.txt");
  f.moveCurve({92, 114});

  GxList<GxCoord<double>> crossings;
  s.findIntersections(f, crossings);

  GxCoord<double> const query(620, 300);
  GxCoord<double> nearest;
  s.findNearestPoint(query, nearest);

  GxCoord<double> const origin(-60, 120);
  GxVector<double> const direction(720, -60);
  GxBezierCurvePosition const from(0, 0.4);  // a segment, and a parameter on it
  GxBezierCurvePosition met;
  GxBezierCurve walked;
  GxHandle<GxBezierCurvePositionMapBase> map;
  if (f.findFirstGeometricLineIntersection(origin, direction, from, f.lastPos(), met, 1e-8) != 0 ||
      copyGxBezierCurve(walked, f, from, met, 1, map) != 0) {
    std::cerr << "the walk meets no line\n";
    return 1;
  }

  svg::Page page(800, 600);
  page.view({-60, -110, 660, 820}, {0, 0, 500, 600}, 8);
  page.chain(walked, "stroke:#ffd8a8;stroke-width:9");
  page.polyline({origin, origin + direction}, "stroke:#868e96;stroke-width:1.5");
  page.chain(s, "stroke:#1864ab;stroke-width:2.5");
  page.chain(f, "stroke:#e8590c;stroke-width:2.5");
  page.polyline({query, nearest}, "stroke:#2b8a3e;stroke-width:1.5;stroke-dasharray:2 5");
  page.dots({query, nearest}, 5, "stroke:#2b8a3e");
  page.dots({query}, 3, "stroke:#fff");
  page.dots(svg::toPoints(crossings), 4.5, "stroke:#212529");
  page.dots({f.locateCurvePosition(from)}, 5, "stroke:#e8590c");
  page.dots({f.locateCurvePosition(met)}, 6, "stroke:#c2255c");
  page.legend(510, 190,
              {{"stroke:#1864ab;stroke-width:2.5", countOf(s.length(), " segments: a letter")},
               {"stroke:#e8590c;stroke-width:2.5", countOf(f.length(), " segments: another")},
               {"stroke:#212529;stroke-width:9", countOf(crossings.length(), " crossings"), 0},
               {"stroke:#2b8a3e;stroke-width:10", "the point nearest to the ring", 0},
               {"stroke:#868e96;stroke-width:1.5", "a line"},
               {"stroke:#ffd8a8;stroke-width:9", "a walk from a position,"},
               {"stroke:#c2255c;stroke-width:12", "and where it first meets the line", 0}});
  page.save("nearestAndCrossings.svg");
  std::cout << crossings.length() << " crossings; nearest point " << nearest.distance(query)
            << " away; the walk meets the line at (" << met.getSegmentNumber() << ", "
            << met.getTValue() << ")\n";
}
