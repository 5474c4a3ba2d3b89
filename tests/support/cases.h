// Reads tables of numbers, and the strokes, outlines and hard cases kept in tests/data.
#pragma once

#include "tests/support/bits.h"
#include "tests/support/shapes.h"
#include "tests/support/text.h"

#include <fstream>
#include <limits>
#include <stdexcept>
#include <utility>

namespace support {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The elements of a list, whose cursor stays.
template <class T>
std::vector<T> valuesOf(GxList<T> const& list) {
  std::vector<T> values;
  auto const add = [](T value, void* to) { static_cast<std::vector<T>*>(to)->push_back(value); };
  list.forEach(add, &values);
  return values;
}

template <class T>
GxList<T> listOf(std::vector<T> const& values) {
  GxList<T> list;
  for (T const& value : values) list.add(value);
  return list;
}

using Numbers = std::vector<double>;

/// The parts of a text that end in a character.
inline std::vector<std::string> partsOf(std::istream&& in, char end) {
  std::vector<std::string> parts;
  for (std::string part; std::getline(in, part, end);) parts.push_back(part);
  return parts;
}

/// The lines of a file of tests/data, found from the project's folder.
inline std::vector<std::string> linesOf(std::string const& name) {
  std::ifstream in("tests/data/" + name + ".txt");
  if (!in.good())
    throw std::runtime_error("tests/data/" + name + ".txt is not to be found from here");
  return partsOf(std::move(in), '\n');
}

inline std::vector<Numbers> numbersIn(std::vector<std::string> const& rows) {
  std::vector<Numbers> numbers;
  for (std::string const& row : rows) {
    numbers.emplace_back();
    std::istringstream words(row);
    for (std::string word; words >> word;) numbers.back().push_back(std::stod(word));
  }
  return numbers;
}

/// The rows of a table of numbers, "1 2 3; 4 5 6".
inline std::vector<Numbers> table(std::string const& text) {
  return numbersIn(partsOf(std::istringstream(text), ';'));
}

/// Eight coordinates as a segment.
inline GxBezier segmentOf(Numbers const& n) {
  return bezier(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7]);
}

/// Eight coordinates for each segment.
inline std::vector<GxBezier> segmentsOf(Numbers const& n) {
  std::vector<GxBezier> list;
  for (auto at = n.begin(); n.end() - at >= 8; at += 8) list.push_back(segmentOf({at, at + 8}));
  return list;
}

/// Two coordinates for each point.
inline std::vector<Point> pointsOf(Numbers const& n) {
  std::vector<Point> list;
  for (auto at = n.begin(); n.end() - at >= 2; at += 2) list.emplace_back(at[0], at[1]);
  return list;
}

/// A line of a file in hard_cases: its source, and the numbers of its three fields.
struct HardCase {
  std::string source;
  std::vector<Numbers> fields;
};

inline std::vector<HardCase> hardCases(std::string const& name) {
  std::vector<HardCase> cases;
  for (std::string const& line : linesOf("hard_cases/" + name)) {
    if (line[0] == '#') continue;
    auto parts = partsOf(std::istringstream(line), '|');
    parts.resize(4);
    cases.push_back({parts[0], numbersIn({parts.begin() + 1, parts.end()})});
  }
  return cases;
}

/// A polyline, "x y" a line.
inline GxList<Point> stroke(std::string const& name) {
  GxList<Point> points;
  for (Numbers const& n : numbersIn(linesOf("strokes/" + name))) points.add({n[0], n[1]});
  return points;
}

/// A contour, the eight coordinates of a segment a line.
inline GxBezierCurve outline(std::string const& name, int closed = 1) {
  GxBezierCurve curve;
  for (Numbers const& n : numbersIn(linesOf("outlines/" + name)))
    curve.getSegments().add(segmentOf(n));
  curve.setStrictIsClosed(closed);
  return curve;
}

}  // namespace support
