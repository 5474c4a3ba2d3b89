// Marks places on the outline of a letter, cuts it in two, reverses one of the pieces, and carries
// the marks along with the maps that the edits hand back. Writes carryAMark.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Position = GxBezierCurvePosition;

constexpr char const* kLetter = "roman-g-outer.txt";
constexpr char const* kPicture = "carryAMark.svg";

struct Mark {
  std::string name;
  Position on;
  double dx, dy;  // of its name beside its dot, in pixels
};

std::vector<Mark> const kMarks = {
    {"a", Position(10, 0.9), 5, -8},  {"b", Position(14, 0.5), 8, 4},
    {"c", Position(17, 0.25), 8, 8},  {"d", Position(21, 0.3), -14, 13},
    {"e", Position(0, 0.0), 6, -9},   {"f", Position(3, 0.45), -4, -9},
    {"g", Position(7, 0.5), -14, -4}, {"h", Position(8, 0.9), -6, 18},
};

/// One of the four curves, and the map that carries the marks to it.
struct Exhibit {
  std::string title;
  std::string note;
  GxBezierCurve const* curve;
  crv::Map map;
  std::string colour;
  double startDx, startDy;  // of the word at the curve's start, in pixels
};

struct Carried {
  bool isThere;
  Position at;
};

Carried carry(Exhibit const& exhibit, Mark const& mark) {
  Carried c{false, Position()};
  c.isThere = exhibit.map->mapPosition(c.at, mark.on) == 0;
  return c;
}

std::string words(Carried const& c) {
  if (!c.isThere) return "not on it";
  char text[40];
  std::snprintf(text, sizeof text, "(%ld, %.3f)", c.at.getSegmentNumber(), c.at.getTValue());
  return text;
}

// ---- The picture --------------------------------------------------------------------------------

// Pixels.
constexpr double kWidth = 1000;
constexpr double kTop = 58;
constexpr double kPanel = 250;
constexpr double kPanelHeight = 370;
constexpr double kRow = 20;
constexpr double kDot = 4.5;

constexpr char const* kGhost = "stroke:#dee2e6;stroke-width:1.5";
constexpr char const* kMarkLook = "stroke:#212529";
constexpr char const* kHollow = "stroke:#fff";
constexpr char const* kLeftBehind = "stroke:#adb5bd";
constexpr char const* kNameLook = "font-weight:bold;font-size:14px;fill:#212529";
constexpr char const* kPaleNameLook = "font-weight:bold;font-size:14px;fill:#adb5bd";
constexpr char const* kNoteLook = "fill:#868e96;font-size:12px";

std::string pen(std::string const& colour, double width) {
  return "stroke:" + colour + ";stroke-width:" + std::to_string(width);
}

/// The point of an arrow head on a segment that shows the way it runs.
constexpr double kArrowAt = 0.6;

void arrowHead(svg::Page& page, GxBezier const& segment, std::string const& colour) {
  GxVector<double> const back = segment.dValue(kArrowAt).normalize() * (-9 / page.scale());
  GxVector<double> const side = back.ortho(1) * 0.6;
  GxCoord<double> const tip = segment.bValue(kArrowAt);
  page.polyline({tip + back + side, tip, tip + back + -side}, pen(colour, 2.5));
}

/// Arrow heads along a curve, clear of each other and of the marks.
void drawDirection(svg::Page& page, GxBezierCurve const& curve, svg::Points taken,
                   std::string const& colour) {
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
    GxCoord<double> const tip = curve[i].bValue(kArrowAt);
    bool isFree = true;
    for (GxCoord<double> const& p : taken) isFree &= tip.distance(p) * page.scale() > 34;
    if (!isFree) continue;
    arrowHead(page, curve[i], colour);
    taken.push_back(tip);
  }
}

/// A ring at the place where the numbers of the segments begin.
void drawStart(svg::Page& page, Exhibit const& exhibit) {
  GxCoord<double> const start = (*exhibit.curve)[0][0];
  page.dots({start}, 8, pen(exhibit.colour, 1));
  page.dots({start}, 6, kHollow);
  page.label(start, exhibit.startDx, exhibit.startDy, "start",
             "font-size:12px;fill:" + exhibit.colour);
}

/// A curve in a panel, over the ghost of the letter, with the marks that lie on it.
void drawExhibit(svg::Page& page, Exhibit const& exhibit, GxBezierCurve const& letter,
                 double left) {
  page.view(svg::boxOf(letter), {left, kTop, left + kPanel, kTop + kPanelHeight}, 24);
  page.chain(letter, kGhost);
  GxBezierCurve const& curve = *exhibit.curve;
  page.chain(curve, pen(exhibit.colour, 2.5));
  drawStart(page, exhibit);
  svg::Points marked;
  for (Mark const& mark : kMarks) {
    Carried const c = carry(exhibit, mark);
    marked.push_back(c.isThere ? curve.locateCurvePosition(c.at)
                               : letter.locateCurvePosition(mark.on));
    page.dots({marked.back()}, kDot, c.isThere ? kMarkLook : kLeftBehind);
    if (!c.isThere) page.dots({marked.back()}, kDot - 1.5, kHollow);
    page.label(marked.back(), mark.dx, mark.dy, mark.name, c.isThere ? kNameLook : kPaleNameLook);
  }
  drawDirection(page, curve, marked, exhibit.colour);
}

/// Every mark's position on every curve.
void drawTable(svg::Page& page, std::vector<Exhibit> const& exhibits) {
  double y = kTop + kPanelHeight + 30;
  for (Mark const& mark : kMarks) {
    for (std::size_t i = 0; i < exhibits.size(); ++i) {
      double const x = kPanel * static_cast<double>(i) + 24;
      Carried const c = carry(exhibits[i], mark);
      page.text(x, y, mark.name, c.isThere ? kNameLook : kPaleNameLook);
      page.text(x + 24, y, words(c), c.isThere ? "" : kNoteLook);
    }
    y += kRow;
  }
}

void drawAll(std::vector<Exhibit> const& exhibits) {
  svg::Page page(kWidth, kTop + kPanelHeight + 30 + kRow * static_cast<double>(kMarks.size()));
  for (std::size_t i = 0; i < exhibits.size(); ++i) {
    double const left = kPanel * static_cast<double>(i);
    page.text(left + 24, 30, exhibits[i].title,
              "font-weight:bold;font-size:15px;fill:" + exhibits[i].colour);
    page.text(left + 24, 49, exhibits[i].note, kNoteLook);
    drawExhibit(page, exhibits[i], *exhibits[0].curve, left);
  }
  drawTable(page, exhibits);
  page.save(kPicture);
}

}  // namespace

int main() {
  GxBezierCurve letter = readOutline(kLetter);

  auto const pieces = crv::cut(letter, {Position(4, 0.6), Position(10, 0.5)});
  if (pieces.size() != 2) {
    std::cerr << "cannot read " << kLetter << "\n";
    return 1;
  }
  auto const reversed = crv::reversed(pieces[1].curve);

  std::vector<Exhibit> const exhibits = {
      {"a letter, marked", "eight positions (segment, t)", &letter, constructIdentityPositionMap(),
       "#1864ab", -8, 26},
      {"cut in two: a piece", "its map carries the marks along", &pieces[0].curve, pieces[0].map,
       "#9c36b5", 12, 4},
      {"the other piece", "across the seam of the letter", &pieces[1].curve, pieces[1].map,
       "#2b8a3e", -44, 6},
      {"that piece, reversed", "two maps, one after the other", &reversed.curve,
       constructCompositePositionMap(pieces[1].map, reversed.map), "#d9480f", 12, 4}};

  double farthest = 0;
  for (Exhibit const& exhibit : exhibits) {
    for (Mark const& mark : kMarks) {
      Carried const c = carry(exhibit, mark);
      if (!c.isThere) continue;
      GxCoord<double> const was = letter.locateCurvePosition(mark.on);
      farthest = max(farthest, was.distance(exhibit.curve->locateCurvePosition(c.at)));
    }
  }
  drawAll(exhibits);
  for (Mark const& mark : kMarks) {
    std::cout << mark.name;
    for (Exhibit const& exhibit : exhibits) std::cout << "   " << words(carry(exhibit, mark));
    std::cout << "\n";
  }
  std::cout << "no mark moved by more than " << farthest << "\n";
}
