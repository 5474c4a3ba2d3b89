#include "tools/crv/input.h"
#include "tools/crv/output.h"

namespace tool {

namespace {

// Shares of the longer side of the drawing.
constexpr double kMargin = 0.05;
constexpr double kPen = 1.0 / 400;
constexpr double kDot = 1.0 / 90;

constexpr double kLargestSide = 800;  // pixels

char const* const kForeground = "#1864ab";
char const* const kBackground = "#adb5bd";
char const* const kHandle = "#f08c00";
char const* const kMark = "#e03131";

struct Box {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
  bool isEmpty = true;

  void add(double x, double y) {
    minX = isEmpty ? x : crv::min(minX, x), maxX = isEmpty ? x : crv::max(maxX, x);
    minY = isEmpty ? y : crv::min(minY, y), maxY = isEmpty ? y : crv::max(maxY, y);
    isEmpty = false;
  }
  void add(Points const& points) {
    for (Point const& p : points) add(p.xval(), p.yval());
  }
  void add(std::vector<Curve> const& curves) {
    for (Curve const& curve : curves) {
      Point lo, hi;
      if (curve.getMinMax(lo, hi) != 0) continue;
      add(lo.xval(), lo.yval()), add(hi.xval(), hi.yval());
    }
  }
};

std::string at(Point const& p) { return shortest(p.xval()) + ' ' + shortest(p.yval()); }

std::string path(std::string const& d, std::string const& look) {
  return "<path " + look + " d=\"" + d + "\"/>\n";
}

std::string stroke(char const* colour, double width) {
  return std::string("stroke=\"") + colour + "\" stroke-width=\"" + shortest(width) + '"';
}

std::string dots(Points const& points, char const* colour, double size) {
  std::string d;
  for (Point const& p : points) d += 'M' + at(p) + "h0";
  return d.empty() ? d : path(d, stroke(colour, size) + " stroke-linecap=\"round\"");
}

/// Lines from the joints to the inner control points, which are dots, and the joints.
std::string handlesOf(std::vector<Curve> const& curves, double pen, double dot) {
  std::string lines;
  Points inner, joints;
  for (Curve const& curve : curves) {
    for (crv::Segment const& s : curve) {
      lines += 'M' + at(s[0]) + 'L' + at(s[1]) + 'M' + at(s[3]) + 'L' + at(s[2]);
      inner.insert(inner.end(), {s[1], s[2]});
      joints.insert(joints.end(), {s[0], s[3]});
    }
  }
  return path(lines, stroke(kHandle, pen / 2)) + dots(inner, kHandle, dot / 2) +
         dots(joints, kForeground, dot * 0.7);
}

}  // namespace

std::string svgOf(Result const& result, bool up) {
  Box box;
  box.add(result.background), box.add(result.curves), box.add(result.marks);
  for (Points const& polyline : result.polylines) box.add(polyline);
  double width = box.maxX - box.minX, height = box.maxY - box.minY;
  double const size = crv::max(width, height) > 0 ? crv::max(width, height) : 1.0;
  double const pen = result.look.width > 0 ? result.look.width : size * kPen;
  double const dot = size * kDot, margin = size * kMargin;
  double const left = box.minX - margin, top = (up ? -box.maxY : box.minY) - margin;
  width += 2 * margin, height += 2 * margin;
  double const pixels = kLargestSide / crv::max(width, height);

  std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" + shortest(left) + ' ' +
                     shortest(top) + ' ' + shortest(width) + ' ' + shortest(height) +
                     "\" width=\"" + shortest(std::ceil(width * pixels)) + "\" height=\"" +
                     shortest(std::ceil(height * pixels)) +
                     "\" fill=\"none\" stroke-linejoin=\"round\">\n";
  if (up) text += "<g transform=\"scale(1 -1)\">\n";
  if (!result.background.empty()) {
    text += path(crv::toPath(result.background), stroke(kBackground, pen));
  }
  // One path, so that the holes of areas are holes.
  std::string const fill = result.look.fill ? " fill=\"#d0ebff\" fill-rule=\"evenodd\"" : "";
  if (!result.curves.empty()) {
    text += path(crv::toPath(result.curves), stroke(kForeground, pen) + fill);
  }
  for (Points const& polyline : result.polylines) {
    std::string d;
    for (Point const& p : polyline) d += (d.empty() ? 'M' : 'L') + at(p);
    text += path(d, stroke(kForeground, pen) + fill);
  }
  if (result.look.handles) text += handlesOf(result.curves, pen, dot);
  text += dots(result.marks, kMark, dot);
  return text + (up ? "</g>\n" : "") + "</svg>\n";
}

}  // namespace tool
