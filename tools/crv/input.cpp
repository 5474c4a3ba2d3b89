#include "tools/crv/input.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <system_error>

namespace tool {

namespace {

// Curve units. Operations with a stated accuracy take coordinates up to 2^500; this leaves room
// for the transforms of an SVG file.
constexpr double kLargestCoordinate = 1e100;

constexpr std::size_t kLongestQuote = 40;

/// Whether an argument is the text of a path itself, such as "M0 0L9 9", and no file.
bool isPath(std::string const& argument) {
  std::error_code fault;  // a long path is no name of a file
  std::size_t const number = argument.find_first_not_of(" \t", 1);
  return (argument[0] == 'M' || argument[0] == 'm') && number != std::string::npos &&
         std::string_view("+-.0123456789").find(argument[number]) != std::string_view::npos &&
         argument.find_first_of(" \t,") != std::string::npos &&
         !std::filesystem::exists(argument, fault);
}

std::string contentOf(std::string const& file) {
  std::ostringstream content;
  if (file == "-") {
    content << std::cin.rdbuf();
  } else {
    std::ifstream in(file, std::ios::binary);
    // A folder opens, but cannot be read.
    if (!in || in.peek() == std::ifstream::traits_type::eof()) {
      if (!in.is_open() || in.bad()) throw Refusal(file + ": cannot be read");
      return {};
    }
    content << in.rdbuf();
  }
  return content.str();
}

char const* wordsOf(crv::PathFaultReason reason) {
  switch (reason) {
    case crv::PathFaultReason::noMoveTo: return "a path starts with M or m";
    case crv::PathFaultReason::unknownCommand: return "unknown command";
    case crv::PathFaultReason::expectedNumber: return "expected a number";
    case crv::PathFaultReason::expectedFlag: return "expected a flag, 0 or 1";
    case crv::PathFaultReason::numberOutOfRange: return "a number is out of range";
  }
  return "";
}

/// The beginning of a text, without what a terminal would obey.
std::string quoteOf(std::string_view text) {
  std::string part(text.substr(0, kLongestQuote));
  for (char& each : part) {
    if (static_cast<unsigned char>(each) < ' ' || each == '\x7F') each = '?';
  }
  return '"' + part + '"';
}

/// The samples of a stroke joined by lines; a single sample is one segment that is a point.
Curve linesThrough(Points const& samples) {
  Curve curve;
  Point last = samples.front();
  for (std::size_t i = samples.size() == 1 ? 0 : 1; i < samples.size(); ++i) {
    Point const& next = samples[i];
    crv::Vector const third = (next - last) / 3.0;
    curve.getSegments().add(crv::Segment(last, last + third, next - third, next));
    last = next;
  }
  return curve;
}

/// Gathers the lines of a file into strokes and curves.
class ShapeBuilder {
 public:
  void addSample(Point const& p) {
    if (!segments_.empty()) finish();
    samples_.push_back(p);
  }

  void addSegment(crv::Segment const& s) {
    if (!samples_.empty() || (!segments_.empty() && segments_.back()[3] != s[0])) finish();
    segments_.push_back(s);
  }

  void finish() {
    if (!samples_.empty()) drawing_.push_back({linesThrough(samples_), samples_});
    if (!segments_.empty()) {
      Curve curve(segments_);
      curve.setStrictIsClosed(segments_.front()[0] == segments_.back()[3]);
      drawing_.push_back({curve, {}});
    }
    samples_.clear(), segments_.clear();
  }

  Drawing take() {
    finish();
    return std::move(drawing_);
  }

 private:
  Points samples_;
  std::vector<crv::Segment> segments_;
  Drawing drawing_;
};

}  // namespace

std::string shortest(double number) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

std::vector<double> takeNumbers(std::string_view& text) {
  std::vector<double> numbers;
  for (;;) {
    std::size_t const start = text.find_first_not_of(" \t\r\n,;");
    if (start == std::string_view::npos) return text = {}, numbers;
    std::string_view const rest = text.substr(start + (text[start] == '+' ? 1 : 0));
    double number = 0.0;
    auto const [end, fault] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (fault != std::errc() || !(std::fabs(number) <= kLargestCoordinate)) {
      text.remove_prefix(start);
      return numbers;
    }
    numbers.push_back(number);
    text = rest.substr(static_cast<std::size_t>(end - rest.data()));
  }
}

Drawing readNumbers(std::string_view text, std::string const& name) {
  ShapeBuilder shapes;
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    bool const isEmpty = line.find_first_not_of(" \t\r") == std::string_view::npos;
    std::string_view rest = line = line.substr(0, line.find('#'));
    std::vector<double> const n = takeNumbers(rest);
    if (n.size() == 2 && rest.empty()) {
      shapes.addSample({n[0], n[1]});
    } else if (n.size() == 8 && rest.empty()) {
      shapes.addSegment({{n[0], n[1]}, {n[2], n[3]}, {n[4], n[5]}, {n[6], n[7]}});
    } else if (!n.empty() || !rest.empty()) {
      throw Refusal(name + ":" + std::to_string(number) +
                    ": expected x and y, or the eight coordinates of a segment, but found " +
                    quoteOf(line));
    } else if (isEmpty) {
      shapes.finish();
    }
  }
  return shapes.take();
}

std::vector<Curve> readPath(std::string_view text, std::string const& name) {
  crv::ParsedPath path = crv::parsePath(text);
  if (path.fault) {
    throw Refusal(name + ": " + wordsOf(path.fault->reason) + " at character " +
                  std::to_string(path.fault->place) + " of the path, before " +
                  quoteOf(text.substr(path.fault->place)));
  }
  return std::move(path.curves);
}

Drawing readDrawing(std::string const& file) {
  bool const isGiven = isPath(file);
  std::string const content = isGiven ? file : contentOf(file);
  std::string const name = file == "-" ? "standard input" : isGiven ? "the path given" : file;
  std::string_view text = content;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  std::size_t const start = text.find_first_not_of(" \t\r\n");
  char const first = start == std::string_view::npos ? ' ' : text[start];
  Drawing drawing;
  if (first == '<') {
    drawing = readSvg(text, name);
  } else if (first == 'M' || first == 'm') {
    for (Curve& curve : readPath(text, name)) drawing.push_back({std::move(curve), {}});
  } else {
    drawing = readNumbers(text, name);
  }
  if (drawing.empty()) throw Refusal(name + ": holds no points and no curves");
  return drawing;
}

Drawing readDrawings(std::vector<std::string> const& files) {
  Drawing all;
  for (std::string const& file : files) {
    for (Shape& shape : readDrawing(file)) all.push_back(std::move(shape));
  }
  return all;
}

Points readPoints(std::string const& file) {
  Points points;
  for (Shape const& shape : readDrawing(file)) {
    if (shape.samples.empty()) throw Refusal(file + ": expected points, but found curves");
    points.insert(points.end(), shape.samples.begin(), shape.samples.end());
  }
  return points;
}

Point readPoint(std::string const& text) {
  std::string_view rest = text;
  std::vector<double> const n = takeNumbers(rest);
  if (n.size() != 2 || !rest.empty()) throw Refusal("expected x,y but found " + quoteOf(text));
  return {n[0], n[1]};
}

}  // namespace tool
