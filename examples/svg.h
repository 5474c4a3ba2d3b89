// Draws points, polylines, chains of segments and words as SVG, for the examples.
//
// Shapes are given in curve units, y up. A view scales a box of the plane, equally in x and y, into
// a rectangle of the page and cuts off what lies outside; the page is measured in pixels, y down.
// Looks are CSS: "stroke:#c33;stroke-width:2".
#pragma once

#include "crv/crv.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace svg {

using Points = std::vector<GxCoord<double>>;

// Looks.
constexpr char const* kInk = "stroke:#212529;stroke-width:2";
constexpr char const* kGhost = "stroke:#ced4da;stroke-width:1.5";
constexpr char const* kBlue = "stroke:#1864ab;stroke-width:2";
constexpr char const* kOrange = "stroke:#e8590c;stroke-width:2";
constexpr char const* kGreen = "stroke:#2b8a3e;stroke-width:2";
constexpr char const* kRed = "stroke:#c2255c;stroke-width:2";
constexpr char const* kGrey = "stroke:#adb5bd";

inline Points toPoints(GxList<GxCoord<double>> const& list) {
  Points points;
  for (unsigned i = 0; i < list.length(); ++i) points.push_back(list[i]);
  return points;
}

inline std::vector<GxBezier> segmentsOf(GxBezierCurve const& curve) {
  std::vector<GxBezier> segments;
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) segments.push_back(curve[i]);
  return segments;
}

/// The start of every segment, and the end of the last.
inline Points jointsOf(GxBezierCurve const& curve) {
  Points joints;
  for (GxBezier const& s : segmentsOf(curve)) joints.push_back(s[0]);
  if (curve.length() > 0) joints.push_back(curve[static_cast<int>(curve.length()) - 1][3]);
  return joints;
}

/// A rectangle, in curve units or in pixels.
struct Box {
  double minX, minY, maxX, maxY;
  double width() const { return maxX - minX; }
  double height() const { return maxY - minY; }
  GxCoord<double> middle() const { return {minX + width() / 2, minY + height() / 2}; }
};

/// The box of one or more points.
inline Box boxOf(Points const& points) {
  Box box{points[0].xval(), points[0].yval(), points[0].xval(), points[0].yval()};
  for (GxCoord<double> const& p : points) {
    box = {min(box.minX, p.xval()), min(box.minY, p.yval()), max(box.maxX, p.xval()),
           max(box.maxY, p.yval())};
  }
  return box;
}

/// The tight box of a curve, widened on every side.
inline Box boxOf(GxBezierCurve const& curve, double by = 0) {
  Box box{};
  curve.getLocalBoundingBox(box.minX, box.minY, box.maxX, box.maxY);
  return {box.minX - by, box.minY - by, box.maxX + by, box.maxY + by};
}

struct LegendRow {
  std::string look;
  std::string words;
  double length = 22;  // pixels; 0 for a dot
};

class Page {
 public:
  Page(double width, double height) : width_(width), height_(height) {
    body_.setf(std::ios::fixed);
    body_.precision(2);
  }

  /// From here on shapes are drawn in this rectangle of the page, with the box in its middle.
  void view(Box const& box, Box const& rectangle, double margin = 12) {
    endView();
    area_ = rectangle;
    scale_ = min((area_.width() - 2 * margin) / max(box.width(), 1e-300),
                 (area_.height() - 2 * margin) / max(box.height(), 1e-300));
    if (!(scale_ < 1e300)) scale_ = 1;  // a single point has no size
    middle_ = box.middle();
    body_ << "<svg x=\"" << area_.minX << "\" y=\"" << area_.minY << "\" width=\"" << area_.width()
          << "\" height=\"" << area_.height() << "\">\n";
    inView_ = true;
  }

  /// Pixels for one curve unit.
  double scale() const { return scale_; }

  void dots(Points const& points, double radius, std::string const& look) {
    startPath(look + ";stroke-width:" + std::to_string(2 * radius));
    for (GxCoord<double> const& p : points) {
      if (isSeen(p, p)) put("M", p) << "h0";
    }
    body_ << "\"/>\n";
  }

  void polyline(Points const& points, std::string const& look) {
    startPath(look);
    bool isDrawing = false;
    for (std::size_t i = 1; i < points.size(); ++i) {
      bool const seen = isSeen(points[i - 1], points[i]);
      if (seen && !isDrawing) put("M", points[i - 1]);
      if (seen) put("L", points[i]);
      isDrawing = seen;
    }
    body_ << "\"/>\n";
  }

  void chain(GxBezierCurve const& curve, std::string const& look) {
    startPath(look);
    GxBezier const* previous = nullptr;
    std::vector<GxBezier> const segments = segmentsOf(curve);
    for (GxBezier const& s : segments) {
      bool const seen = isSeen(s);
      if (seen && (!previous || (*previous)[3] != s[0])) put("M", s[0]);
      if (seen) put("C", s[1]), put(" ", s[2]), put(" ", s[3]);
      previous = seen ? &s : nullptr;
    }
    body_ << "\"/>\n";
  }

  /// An area: its boundaries with a pen, filled, and its holes, which run clockwise, left white.
  void area(std::vector<GxBezierCurve> const& curves, std::string const& pen,
            std::string const& fill) {
    for (bool const isHole : {false, true}) {
      for (GxBezierCurve const& curve : curves) {
        if (crv::isClockwise(curve) != isHole) continue;
        chain(curve, pen + ";fill:" + (isHole ? "#fff" : fill));
      }
    }
  }

  /// Lines from the joints to the inner control points, which are dots.
  void handles(GxBezierCurve const& curve, double radius, std::string const& look) {
    Points ends;
    for (GxBezier const& s : segmentsOf(curve)) {
      if (!isSeen(s)) continue;
      polyline({s[0], s[1]}, look);
      polyline({s[2], s[3]}, look);
      ends.insert(ends.end(), {s[1], s[2]});
    }
    dots(ends, radius, look);
  }

  /// Words beside a point of the view: dx pixels to the right of it, dy down.
  void label(GxCoord<double> const& p, double dx, double dy, std::string const& words,
             std::string const& look = "") {
    write(onPage(p).xval() + dx, onPage(p).yval() + dy, words, look);
  }

  /// Ends the view: words at a point of the page.
  void text(double x, double y, std::string const& words, std::string const& look = "") {
    endView();
    write(x, y, words, look);
  }

  /// Ends the view: a line around a rectangle of the page.
  void frame(Box const& r, std::string const& look) {
    endView();
    body_ << "<rect x=\"" << r.minX << "\" y=\"" << r.minY << "\" width=\"" << r.width()
          << "\" height=\"" << r.height() << "\" style=\"" << look << "\"/>\n";
  }

  /// Ends the view: rows downwards from a point of the page.
  void legend(double x, double y, std::vector<LegendRow> const& rows) {
    for (LegendRow const& row : rows) {
      text(x + 32, y + 4.5, row.words);
      startPath(row.look);
      body_ << "M" << x + (22 - row.length) / 2 << " " << y << "h" << row.length << "\"/>\n";
      y += 21;
    }
  }

  /// Ends the view: the whole page as text.
  std::string document() {
    endView();
    std::ostringstream out;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width_ << "\" height=\""
        << height_ << "\" viewBox=\"0 0 " << width_ << " " << height_
        << "\" font-family=\"Helvetica,Arial,sans-serif\" font-size=\"13\" fill=\"none\" "
           "stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
        << body_.str() << "</svg>\n";
    return out.str();
  }

  /// Throws std::runtime_error when the file cannot be written.
  void save(std::string const& file) {
    std::ofstream out(file);
    out << document();
    out.close();
    if (!out) throw std::runtime_error("cannot write " + file);
  }

 private:
  /// Where a point lies in the rectangle, in pixels.
  GxCoord<double> onPage(GxCoord<double> const& p) const {
    GxVector<double> const v = (p - middle_) * scale_;
    return {area_.width() / 2 + v.xval(), area_.height() / 2 - v.yval()};
  }

  void startPath(std::string const& look) { body_ << "<path style=\"" << look << "\" d=\""; }

  std::ostream& put(char const* command, GxCoord<double> const& p) {
    return body_ << command << onPage(p).xval() << " " << onPage(p).yval();
  }

  /// Whether the box of two points touches the view, the breadth of a pen allowed for.
  bool isSeen(GxCoord<double> const& p, GxCoord<double> const& q) const {
    double const pen = 8;
    GxCoord<double> const a = onPage(p);
    GxCoord<double> const b = onPage(q);
    return max(a.xval(), b.xval()) > -pen && min(a.xval(), b.xval()) < area_.width() + pen &&
           max(a.yval(), b.yval()) > -pen && min(a.yval(), b.yval()) < area_.height() + pen;
  }
  bool isSeen(GxBezier const& segment) const {
    double minX, minY, maxX, maxY;
    segment.getConvexHull(minX, minY, maxX, maxY);
    return isSeen({minX, minY}, {maxX, maxY});
  }

  void write(double x, double y, std::string const& words, std::string const& look) {
    body_ << "<text x=\"" << x << "\" y=\"" << y << "\" style=\"fill:#333;" << look << "\">"
          << words << "</text>\n";
  }

  void endView() {
    if (inView_) body_ << "</svg>\n";
    inView_ = false;
  }

  double width_;
  double height_;
  std::ostringstream body_;
  Box area_{0, 0, 0, 0};
  GxCoord<double> middle_;
  double scale_ = 1;
  bool inView_ = false;
};

}  // namespace svg
