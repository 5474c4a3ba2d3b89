// Paths of SVG: the grammar by a table, arcs by their equation, and writing and reading again.
#include "crv/svg.h"
#include "tests/support/data.h"

#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

using namespace support;

/// A field of the table without the blanks around it.
std::string field(std::string text) {
  for (auto const& [word, character] : {std::pair("\\n", "\n"), std::pair("\\t", "\t")}) {
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word)) {
      text.replace(at, 2, character);
    }
  }
  return text;
}

std::string trimmed(std::string const& text) {
  auto const first = text.find_first_not_of(' ');
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::string faultIn(crv::ParsedPath const& path) {
  char const* const reasons[] = {"noMoveTo", "unknownCommand", "expectedNumber", "expectedFlag",
                                 "numberOutOfRange"};
  if (!path.fault) return "";
  return std::to_string(path.fault->place) + " " + reasons[static_cast<int>(path.fault->reason)];
}

std::string pathsOf(crv::ParsedPath const& path) {
  std::string paths;
  for (GxBezierCurve const& curve : path.curves) {
    paths += (paths.empty() ? "" : " ") + crv::toPath(curve);
  }
  return paths;
}

TEST(SvgPath, GrammarIsReadAsTheTableHasIt) {
  for (std::string const& line : linesOf("paths")) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields = partsOf(std::istringstream(line), '|');
    fields.resize(3);
    std::string text = field(fields[0]);
    if (!text.empty()) text.pop_back();  // the blank before the bar
    crv::ParsedPath const path = crv::parsePath(text);
    EXPECT_EQ(pathsOf(path), trimmed(fields[1])) << line;
    EXPECT_EQ(faultIn(path), trimmed(fields[2])) << line;
  }
}

TEST(SvgPath, OutlinesComeBackToTheBit) {
  std::vector<GxBezierCurve> outlines;
  for (auto const& entry : std::filesystem::directory_iterator("tests/data/outlines")) {
    outlines.push_back(outline(entry.path().stem().string()));
    for (double const scale : {1.0 / 3.0, 1e-300, 0x1p900}) {
      outlines.push_back(outlines.back());
      outlines.back().resize(scale, -scale);
    }
  }
  crv::ParsedPath const back = crv::parsePath(crv::toPath(outlines));
  ASSERT_EQ(back.curves.size(), outlines.size());
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    EXPECT_TRUE(sameBits(back.curves[i], outlines[i]));
  }
}

TEST(SvgPath, CurvesWithGapsAreWrittenAsTheyAre) {
  GxBezierCurve gap;
  for (double const x : {0.0, 5.0}) gap.getSegments().add(bezier(x, 0, x, 1, x + 1, 1, x + 1, 0));
  gap.setStrictIsClosed(1);
  EXPECT_EQ(crv::toPath(gap), "M0 0C0 1 1 1 1 0M5 0C5 1 6 1 6 0");
  gap.getSegments()(1)[2] = {std::nan(""), 0};
  EXPECT_EQ(crv::toPath(gap), "");
  EXPECT_EQ(crv::toPath(GxBezierCurve()), "");
}

/// The largest deviation of an arc's points from the ellipse, in larger radii.
double deviation(GxBezierCurve const& arc, Point const& centre, double rx, double ry,
                 double angle) {
  double worst = 0.0;
  for (unsigned i = 0; i < arc.length(); ++i) {
    for (int k = 0; k <= 64; ++k) {
      Point p = arc[static_cast<int>(i)].bValue(k / 64.0);
      p.rotate(-angle, centre);
      Vector const d = p - centre;
      double const off = std::hypot(d.xval() / rx, d.yval() / ry) - 1.0;
      worst = std::max(worst, std::fabs(off) * std::min(rx, ry) / std::max(rx, ry));
    }
  }
  return worst;
}

/// Four arcs join two places of an ellipse turned by 30 degrees; each keeps to its ellipse and runs
/// the way its flags say.
TEST(SvgPath, ArcsKeepToTheEllipse) {
  double const rx = 5, ry = 2, angle = std::acos(-1.0) / 6;
  auto const onEllipse = [&](double t) {
    Point p(rx * std::cos(t), ry * std::sin(t));
    p.rotate(angle, Point());
    return p;
  };
  for (double const width : {0.01, 0.7, 1.5, 1.58, 2.5, 3.1, 3.14159}) {
    Point const from = onEllipse(0.3), to = onEllipse(0.3 + width);
    Point const mirrored(from.xval() + to.xval(), from.yval() + to.yval());
    for (int flags = 0; flags < 4; ++flags) {
      bool const isLarge = flags & 1, isSweep = flags & 2;
      char text[200];
      std::snprintf(text, sizeof text, "M%.17g %.17gA5 2 30 %d %d %.17g %.17g", from.xval(),
                    from.yval(), isLarge, isSweep, to.xval(), to.yval());
      crv::ParsedPath const path = crv::parsePath(text);
      ASSERT_EQ(path.curves.size(), 1u) << text;
      GxBezierCurve arc = path.curves[0];
      Point const centre = isLarge == isSweep ? mirrored : Point();
      EXPECT_LT(deviation(arc, centre, rx, ry, angle), 4.3e-6) << text;
      double const turn = isLarge ? 2 * std::acos(-1.0) - width : width;
      EXPECT_LE(arc.length(), std::ceil(2 * turn / (std::acos(-1.0) / 4)) + 1) << text;
      EXPECT_TRUE(arc[static_cast<int>(arc.length()) - 1][3] == to);
      Vector const start = arc[0][1] - arc[0][0];
      EXPECT_EQ(start.cross(from - centre) < 0, isSweep) << text;
      double const area = crv::signedArea(arc), segmentArea = (turn - std::sin(turn)) * rx * ry / 2;
      EXPECT_NEAR(area, isSweep ? segmentArea : -segmentArea, 3e-4) << text;
    }
  }
}

/// Radii too small for the chord are enlarged together: half an ellipse remains.
TEST(SvgPath, SmallRadiiAreEnlarged) {
  crv::ParsedPath const path = crv::parsePath("M0 0A1 .5-90 0 1 0 8");
  ASSERT_EQ(path.curves.size(), 1u);
  EXPECT_LT(deviation(path.curves[0], {0, 4}, 2, 4, 0), 4.3e-6);
}

}  // namespace
