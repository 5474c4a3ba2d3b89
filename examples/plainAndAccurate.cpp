// Asks three questions about a small letter twice, of the plain operations, whose tolerances suit
// drawings of some hundred units, and of those with a stated accuracy. Writes plainAndAccurate.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;

constexpr double kSize = 8;          // curve units: the height of the letter
constexpr double kTolerance = 8e-3;  // a thousandth of it
constexpr int kSteps = 40;

constexpr char const* kPlain = "#d9480f";
constexpr char const* kAccurate = "#1864ab";

// Pixels.
constexpr double kPanel = 280;
constexpr double kPanelHeight = 330;

std::string text(char const* format, double a, double b) {
  char words[80];
  std::snprintf(words, sizeof words, format, a, b);
  return words;
}

/// The letter in a panel, with dots and lines of one colour, and words above it.
void draw(svg::Page& page, GxBezierCurve const& letter, int column, bool isAccurate,
          svg::Points const& dots, std::vector<svg::Points> const& lines,
          std::string const& words) {
  std::string const colour = isAccurate ? kAccurate : kPlain;
  double const left = kPanel * column;
  double const top = isAccurate ? kPanelHeight + 70 : 40;
  page.view(svg::boxOf(svg::jointsOf(letter)), {left, top, left + kPanel, top + kPanelHeight}, 22);
  page.chain(letter, "stroke:#ced4da;stroke-width:2");
  for (svg::Points const& line : lines) page.polyline(line, "stroke:" + colour);
  page.dots(dots, 2.4, "stroke:" + colour);
  page.text(left + 24, top + 4, words, "font-weight:bold;fill:" + colour);
  std::cout << words << "\n";
}

/// From each point of a grid to the nearest place of the letter.
void drawNearest(svg::Page& page, GxBezierCurve const& letter, bool isAccurate) {
  svg::Points feet;
  std::vector<svg::Points> lines;
  int wrong = 0;
  svg::Box const box = svg::boxOf(svg::jointsOf(letter));
  for (int i = 0; i < 9; ++i) {
    for (int k = 0; k < 9; ++k) {
      Point const p(box.minX + box.width() * i / 8, box.minY + box.height() * k / 8);
      auto const nearest = crv::nearest(letter, p);
      Point foot = nearest->point;
      if (!isAccurate) letter.findNearestPoint(p, foot);
      wrong += static_cast<int>(p.distance(foot) > nearest->distance + 1e-4 * kSize);
      feet.push_back(foot);
      lines.push_back({p, foot});
    }
  }
  draw(page, letter, 0, isAccurate, feet, lines,
       text("nearest: %.0f of %.0f are not", wrong, static_cast<double>(feet.size())));
}

/// Steps of one length around the letter.
void drawSteps(svg::Page& page, GxBezierCurve const& letter, bool isAccurate) {
  crv::CurveLengths const lengths(letter, 1e-9);
  double const step = lengths.total() / kSteps;
  svg::Points dots;
  double shortest = step;
  double longest = step;
  Position at(0, 0.0);
  for (int i = 0; i < kSteps; ++i) {
    dots.push_back(letter.locateCurvePosition(at));
    Position next;
    if (isAccurate) {
      next = *crv::walk(letter, at, step, crv::Measure::length, 1e-9);
    } else if (letter.findNextPos(at, next, step, 1, 1) != 0) {
      break;
    }
    double way = lengths.lengthAt(next) - lengths.lengthAt(at);
    if (way < 0) way += lengths.total();
    shortest = min(shortest, way);
    longest = max(longest, way);
    at = next;
  }
  draw(page, letter, 1, isAccurate, dots, {},
       text("steps: %.0f to %.0f %%", 100 * shortest / step, 100 * longest / step));
}

/// Chords no farther from the letter than the tolerance.
void drawPolyline(svg::Page& page, GxBezierCurve const& letter, bool isAccurate) {
  svg::Points points;
  letter.getPolyline(kTolerance, points);
  if (isAccurate) points = crv::flatten(letter, kTolerance).points;
  draw(page, letter, 2, isAccurate, points, {points},
       text("polyline: %.0f chords within %g", static_cast<double>(points.size()) - 1, kTolerance));
}

}  // namespace

int main() {
  GxBezierCurve letter = readOutline("roman-g-outer.txt");
  if (letter.length() == 0) return 1;
  double const factor = kSize / svg::boxOf(svg::jointsOf(letter)).height();
  for (int i = 0; i < static_cast<int>(letter.length()); ++i) {
    for (int k = 0; k < 4; ++k) letter[i][k].scale(factor, factor);
  }

  svg::Page page(3 * kPanel, 2 * kPanelHeight + 80);
  page.text(
      24, 22,
      "A letter 8 units high: the plain operations above, those with a stated accuracy below");
  for (bool const isAccurate : {false, true}) {
    drawNearest(page, letter, isAccurate);
    drawSteps(page, letter, isAccurate);
    drawPolyline(page, letter, isAccurate);
  }
  page.save("plainAndAccurate.svg");
}
