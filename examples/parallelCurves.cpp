// Draws a letter's outline with its parallels on both sides, and looks closely at a sharp corner,
// inside which a parallel crosses itself: offset joins what comes apart and trims nothing. Writes
// parallelCurves.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <cmath>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct Parallel {
  double distance;
  GxBezierCurve curve;
  svg::Points crossings;
  std::string look;
};

/// Where segments that are no neighbours cross.
svg::Points selfCrossings(GxBezierCurve const& curve) {
  GxList<GxCoord<double>> points;
  int const n = static_cast<int>(curve.length());
  for (int i = 0; i < n; ++i) {
    int const before = i == 0 ? n - 1 : n;  // the last is the first one's neighbour
    for (int j = i + 2; j < before; ++j) curve[i].findIntersections(curve[j], points);
  }
  return svg::toPoints(points);
}

Parallel parallelTo(GxBezierCurve const& letter, double distance) {
  GxBezierCurve curve(letter);
  curve.offset(distance, 1, 1);  // positive distances lie to the left, here within
  bool const near = std::fabs(distance) < 10;
  std::string const colour =
      distance > 0 ? (near ? "#f08c00" : "#d9480f") : (near ? "#4dabf7" : "#1864ab");
  return {distance, curve, selfCrossings(curve), "stroke:" + colour + ";stroke-width:"};
}

void draw(svg::Page& page, GxBezierCurve const& letter, std::vector<Parallel> const& parallels,
          double pen) {
  for (Parallel const& p : parallels) page.chain(p.curve, p.look + std::to_string(1.3 * pen));
  page.chain(letter, "stroke:#212529;stroke-width:" + std::to_string(2.6 * pen));
  for (Parallel const& p : parallels) page.dots(p.crossings, 2.6 * pen, "stroke:#c2255c");
}

}  // namespace

int main() {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");
  std::vector<Parallel> parallels;
  for (double const distance : {5.0, -5.0, 20.0, -20.0}) {
    parallels.push_back(parallelTo(letter, distance));
  }

  svg::Page page(900, 620);
  page.view({5, -230, 510, 478}, {0, 0, 500, 620}, 14);
  draw(page, letter, parallels, 1);
  svg::Box const zoomed{540, 270, 860, 590};
  page.view({55, 140, 155, 240}, zoomed, 0);
  draw(page, letter, parallels, 1.6);
  page.frame(zoomed, "stroke:#adb5bd");
  std::vector<svg::LegendRow> rows{
      {"stroke:#212529;stroke-width:2.6", std::to_string(letter.length()) + " segments: a letter"}};
  for (Parallel const& p : parallels) {
    rows.push_back(
        {p.look + "2", (p.distance > 0 ? "+" : "") + std::to_string(static_cast<int>(p.distance)) +
                           ": " + std::to_string(p.curve.length()) + " segments, crosses itself " +
                           std::to_string(p.crossings.size()) + " times"});
  }
  rows.push_back({"stroke:#c2255c;stroke-width:6", "a crossing: inside a sharp corner,", 0});
  page.legend(540, 60, rows);
  page.text(572, 60 + 21 * 6 + 4.5, "or where both sides of a thin stem meet");
  page.text(540, 256, "A sharp corner, larger:");
  page.save("parallelCurves.svg");
  for (Parallel const& p : parallels) {
    std::cout << "by " << p.distance << ": " << p.curve.length() << " segments, "
              << p.crossings.size() << " crossings\n";
  }
}
