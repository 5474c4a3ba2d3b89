// Draws points, polylines, chains of segments and words as SVG, for the examples.
//
// Shapes are given in curve units, y up. A view scales a box of the plane, equally in x and y, into
// a rectangle of the page and cuts off what lies outside; the page is measured in pixels, y down.
// Looks are CSS: "stroke:#c33;stroke-width:2".
#pragma once

#include "crv/crv.h"

#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace svg {

using Points = std::vector<GxCoord<double>>;

inline Points toPoints(GxList<GxCoord<double>> const& list) {
  Points points;
  for (unsigned i = 0; i < list.length(); ++i) points.push_back(list[i]);
  return points;
}

/// The start of every segment, and the end of the last.
inline Points joinsOf(GxBezierCurve const& curve) {
  Points joins;
  int const n = static_cast<int>(curve.length());
  for (int i = 0; i < n; ++i) joins.push_back(curve[i][0]);
  if (n > 0) joins.push_back(curve[n - 1][3]);
  return joins;
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
  double const x = points[0].xval();
  double const y = points[0].yval();
  Box box{x, y, x, y};
  for (GxCoord<double> const& p : points) {
    box = {min(box.minX, p.xval()), min(box.minY, p.yval()), max(box.maxX, p.xval()),
           max(box.maxY, p.yval())};
  }
  return box;
}

constexpr double kLegendPitch = 21;  // pixels

struct LegendRow {
  std::string look;
  std::string words;
  double length = 22;  // pixels; 0 for a dot
};

class Page {
 public:
  explicit Page(double width, double height = 0) : width_(width), height_(height) {
    body_.imbue(std::locale::classic());
    body_.setf(std::ios::fixed);
    body_.precision(2);
  }

  void setHeight(double height) { height_ = height; }

  /// From here on shapes are drawn in this rectangle of the page, with the box in its middle.
  void view(Box const& box, Box const& rectangle, double margin = 12) {
    endView();
    area_ = rectangle;
    double const wide = max(box.width(), 1e-300);
    double const high = max(box.height(), 1e-300);
    scale_ = min((area_.width() - 2 * margin) / wide, (area_.height() - 2 * margin) / high);
    if (!(scale_ < 1e300)) scale_ = 1;  // a single point has no size
    middle_ = box.middle();
    body_ << "<svg x=\"" << area_.minX << "\" y=\"" << area_.minY << "\" width=\"" << area_.width()
          << "\" height=\"" << area_.height() << "\">\n";
    inView_ = true;
  }
  void view(Box const& box) { view(box, {0, 0, width_, height_}, 24); }

  /// Where a point lies in the rectangle, in pixels.
  GxCoord<double> onPage(GxCoord<double> const& p) const {
    GxVector<double> const v = (p - middle_) * scale_;
    return {area_.width() / 2 + v.xval(), area_.height() / 2 - v.yval()};
  }

  /// Pixels for one curve unit.
  double scale() const { return scale_; }

  void dots(Points const& points, double radius, std::string const& look) {
    body_ << "<path style=\"" << look << ";stroke-width:" << 2 * radius << "\" d=\"";
    for (GxCoord<double> const& p : points) {
      if (isSeen(p, p)) put("M", p) << "h0";
    }
    body_ << "\"/>\n";
  }

  void polyline(Points const& points, std::string const& look) {
    body_ << "<path style=\"" << look << "\" d=\"";
    bool drawing = false;
    for (std::size_t i = 1; i < points.size(); ++i) {
      bool const seen = isSeen(points[i - 1], points[i]);
      if (seen && !drawing) put("M", points[i - 1]);
      if (seen) put("L", points[i]);
      drawing = seen;
    }
    body_ << "\"/>\n";
  }

  void chain(GxBezierCurve const& curve, std::string const& look) {
    body_ << "<path style=\"" << look << "\" d=\"";
    int drawn = -1;
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
      GxBezier const& s = curve[i];
      if (!isSeen(s)) continue;
      if (drawn < 0 || drawn != i - 1 || curve[drawn][3] != s[0]) put("M", s[0]);
      put("C", s[1]);
      put(" ", s[2]);
      put(" ", s[3]);
      drawn = i;
    }
    body_ << "\"/>\n";
  }

  /// Lines from the joins to the inner control points, which are dots.
  void handles(GxBezierCurve const& curve, double radius, std::string const& look) {
    Points ends;
    body_ << "<path style=\"" << look << "\" d=\"";
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
      GxBezier const& s = curve[i];
      if (!isSeen(s)) continue;
      for (int k = 0; k < 4; k += 2) {
        put("M", s[k]);
        put("L", s[k + 1]);
      }
      ends.insert(ends.end(), {s[1], s[2]});
    }
    body_ << "\"/>\n";
    dots(ends, radius, look);
  }

  /// Words beside a point of the view: dx pixels to the right of it, dy down.
  void label(GxCoord<double> const& p, double dx, double dy, std::string const& words,
             std::string const& look = "") {
    GxCoord<double> const place = onPage(p);
    write(place.xval() + dx, place.yval() + dy, words, look);
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
      body_ << "<path style=\"" << row.look << "\" d=\"M" << x + (22 - row.length) / 2 << " " << y
            << "h" << row.length << "\"/>\n";
      y += kLegendPitch;
    }
  }

  /// Writes the page, the whole of it or nothing; false when that cannot be done.
  bool save(std::string const& file) {
    endView();
    std::ostringstream head;
    head.imbue(std::locale::classic());
    head << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width_ << "\" height=\""
         << height_ << "\" viewBox=\"0 0 " << width_ << " " << height_
         << "\" font-family=\"Helvetica,Arial,sans-serif\" font-size=\"13\" fill=\"none\" "
            "stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
            "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    return replaceFile(file, head.str() + body_.str() + "</svg>\n");
  }

 private:
  std::ostream& put(char const* command, GxCoord<double> const& p) {
    GxCoord<double> const place = onPage(p);
    return body_ << command << place.xval() << " " << place.yval();
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
    body_ << "<text x=\"" << x << "\" y=\"" << y << "\" style=\"fill:#333;" << look << "\">";
    for (char const c : words) {
      if (c == '&' || c == '<') {
        body_ << (c == '&' ? "&amp;" : "&lt;");
      } else {
        body_ << c;
      }
    }
    body_ << "</text>\n";
  }

  void endView() {
    if (inView_) body_ << "</svg>\n";
    inView_ = false;
  }

  /// Writes a file beside the old one and renames it, so that a failure leaves the old one whole;
  /// what is no regular file, a device say, is written to as it is.
  static bool replaceFile(std::string const& file, std::string const& content) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path const target = fs::exists(file, error) ? fs::canonical(file, error) : fs::path(file);
    bool const inPlace = fs::exists(target, error) && !fs::is_regular_file(target, error);
    if (!inPlace && fs::exists(target, error) && !std::ofstream(target, std::ios::app))
      return false;
    fs::path scratch = target;
    if (!inPlace) scratch += ".part";
    std::ofstream out(scratch, std::ios::binary);
    out << content;
    out.close();
    if (inPlace) return !out.fail();
    if (!out.fail()) fs::rename(scratch, target, error);
    if (out.fail() || error) {
      std::error_code ignored;
      fs::remove(scratch, ignored);
      return false;
    }
    return true;
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
