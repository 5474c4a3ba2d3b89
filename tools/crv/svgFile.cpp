// SVG documents: which elements are shapes, and the transforms above them.
#include "tools/crv/input.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include <pugixml.hpp>

namespace tool {

namespace {

constexpr double kRadiansPerDegree = 3.141592653589793 / 180.0;

/// The affine map of the matrix (a c e; b d f).
struct Transform {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Point operator()(Point const& p) const {
    return {a * p.xval() + c * p.yval() + e, b * p.xval() + d * p.yval() + f};
  }
  /// First the other one, then this one.
  Transform operator*(Transform const& o) const {
    return {a * o.a + c * o.b, b * o.a + d * o.b,     a * o.c + c * o.d,
            b * o.c + d * o.d, a * o.e + c * o.f + e, b * o.e + d * o.f + f};
  }
  bool isIdentity() const { return a == 1 && b == 0 && c == 0 && d == 1 && e == 0 && f == 0; }
};

/// One function of a transform list; nothing known gives false.
bool transformOf(std::string_view function, std::vector<double> n, Transform& t) {
  if (function == "matrix" && n.size() == 6) {
    t = {n[0], n[1], n[2], n[3], n[4], n[5]};
  } else if (function == "translate" && (n.size() == 1 || n.size() == 2)) {
    t = {1, 0, 0, 1, n[0], n.size() == 2 ? n[1] : 0.0};
  } else if (function == "scale" && (n.size() == 1 || n.size() == 2)) {
    t = {n[0], 0, 0, n.back(), 0, 0};
  } else if (function == "rotate" && (n.size() == 1 || n.size() == 3)) {
    n.resize(3);
    double const c = std::cos(n[0] * kRadiansPerDegree), s = std::sin(n[0] * kRadiansPerDegree);
    t = Transform{1, 0, 0, 1, n[1], n[2]} * Transform{c, s, -s, c, 0, 0} *
        Transform{1, 0, 0, 1, -n[1], -n[2]};
  } else if (function == "skewX" && n.size() == 1) {
    t = {1, 0, std::tan(n[0] * kRadiansPerDegree), 1, 0, 0};
  } else if (function == "skewY" && n.size() == 1) {
    t = {1, std::tan(n[0] * kRadiansPerDegree), 0, 1, 0, 0};
  } else {
    return false;
  }
  return true;
}

class Reader {
 public:
  explicit Reader(std::string name) : name_(std::move(name)) {}

  void read(pugi::xml_node const& node) {
    std::string const path = pathOf(node);
    if (path.empty() || isHidden(node)) return;
    Transform const transform = transformAbove(node);
    for (Curve& curve : readPath(path, name_)) {
      if (!transform.isIdentity()) {
        for (crv::Segment& s : curve) {
          for (int i = 0; i < 4; ++i) s(i) = transform(s[i]);
        }
      }
      drawing.push_back({std::move(curve), {}});
    }
  }

  Drawing drawing;

 private:
  static bool isHidden(pugi::xml_node node) {
    for (; node; node = node.parent()) {
      std::string_view const element = node.name();
      for (char const* hidden : {"defs", "symbol", "clipPath", "mask", "pattern", "marker"}) {
        if (element == hidden) return true;
      }
      std::string_view const style = node.attribute("style").value();
      if (std::string_view(node.attribute("display").value()) == "none" ||
          style.find("display:none") != std::string_view::npos) {
        return true;
      }
    }
    return false;
  }

  Transform transformAbove(pugi::xml_node node) const {
    Transform all;
    for (; node; node = node.parent()) {
      bool const isNested = std::string_view(node.name()) == "svg" && node.parent().parent();
      if (isNested) all = Transform{1, 0, 0, 1, length(node, "x"), length(node, "y")} * all;
      all = listed(node.attribute("transform").value()) * all;
    }
    return all;
  }

  Transform listed(std::string_view const list) const {
    Transform all;
    std::string_view rest = list;
    for (;;) {
      std::size_t const start = rest.find_first_not_of(" \t\r\n,");
      if (start == std::string_view::npos) return all;
      std::size_t const open = rest.find('('), close = rest.find(')');
      Transform one;
      bool known = open < close && close != std::string_view::npos;
      if (known) {
        std::string_view const function = rest.substr(start, open - start);
        std::string_view numbers = rest.substr(open + 1, close - open - 1);
        std::vector<double> const n = takeNumbers(numbers);
        known = transformOf(function.substr(0, function.find_last_not_of(" \t\r\n") + 1), n, one) &&
                numbers.empty();
      }
      if (!known) throw Refusal(name_ + ": cannot read the transform \"" + std::string(list) + '"');
      all = all * one;
      rest.remove_prefix(close + 1);
    }
  }

  /// A length in user units, which may be written as pixels.
  double length(pugi::xml_node const& node, char const* attribute) const {
    std::string_view rest = node.attribute(attribute).value();
    if (rest.empty()) return 0.0;
    std::vector<double> const n = takeNumbers(rest);
    if (n.size() != 1 || (!rest.empty() && rest != "px")) {
      throw Refusal(name_ + ": cannot read " + attribute + "=\"" +
                    node.attribute(attribute).value() + "\" of <" + node.name() + '>');
    }
    return n[0];
  }

  /// The shape of an element as the text of a path; empty for what draws nothing.
  std::string pathOf(pugi::xml_node const& node) const {
    std::string_view const element = node.name();
    if (element == "path") return node.attribute("d").value();
    if (element == "polyline" || element == "polygon") {
      std::string const points = node.attribute("points").value();
      return points.empty() ? "" : "M" + points + (element == "polygon" ? "Z" : "");
    }
    auto const at = [&](char const* attribute) { return length(node, attribute); };
    if (element == "line") return joined({"M", at("x1"), at("y1"), "L", at("x2"), at("y2")});
    if (element == "circle") return ellipse(at("cx"), at("cy"), at("r"), at("r"));
    if (element == "ellipse") return ellipse(at("cx"), at("cy"), at("rx"), at("ry"));
    if (element == "rect") return rectangle(node);
    return "";
  }

  struct Word {
    Word(char const* word) : text(word) {}
    Word(double number) : text(shortest(number)) {}
    std::string text;
  };
  static std::string joined(std::initializer_list<Word> words) {
    std::string all;
    for (Word const& word : words) all += word.text + ' ';
    return all;
  }

  static std::string ellipse(double cx, double cy, double rx, double ry) {
    if (!(rx > 0.0 && ry > 0.0)) return "";
    return joined(
        {"M", cx - rx, cy, "A", rx, ry, "0 0 1", cx + rx, cy, rx, ry, "0 0 1", cx - rx, cy, "Z"});
  }

  std::string rectangle(pugi::xml_node const& node) const {
    double const x = length(node, "x"), y = length(node, "y");
    double const w = length(node, "width"), h = length(node, "height");
    if (!(w > 0.0 && h > 0.0)) return "";
    double rx = length(node, "rx"), ry = length(node, "ry");
    // One radius stands for both, and neither exceeds half the side.
    if (!node.attribute("rx")) rx = ry;
    if (!node.attribute("ry")) ry = rx;
    rx = crv::min(rx, w / 2), ry = crv::min(ry, h / 2);
    if (!(rx > 0.0 && ry > 0.0)) return joined({"M", x, y, "h", w, "v", h, "h", -w, "Z"});
    return joined({"M",     x + rx,     y,          "H", x + w - rx, "A", rx, ry,
                   "0 0 1", x + w,      y + ry,     "V", y + h - ry, "A", rx, ry,
                   "0 0 1", x + w - rx, y + h,      "H", x + rx,     "A", rx, ry,
                   "0 0 1", x,          y + h - ry, "V", y + ry,     "A", rx, ry,
                   "0 0 1", x + rx,     y,          "Z"});
  }

  std::string name_;
};

struct Walker : pugi::xml_tree_walker {
  explicit Walker(Reader& reader) : reader_(reader) {}
  bool for_each(pugi::xml_node& node) override {
    reader_.read(node);
    return true;
  }

 private:
  Reader& reader_;
};

}  // namespace

Drawing readSvg(std::string_view text, std::string const& name) {
  pugi::xml_document document;
  pugi::xml_parse_result const result = document.load_buffer(text.data(), text.size());
  if (!result) {
    throw Refusal(name + ": not an SVG file: " + result.description() + " at character " +
                  std::to_string(result.offset));
  }
  Reader reader(name);
  Walker walker(reader);
  document.traverse(walker);
  return std::move(reader.drawing);
}

}  // namespace tool
