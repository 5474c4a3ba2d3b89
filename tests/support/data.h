// Reads the strokes and outlines kept in tests/data.
#pragma once

#include "crv/crv.h"

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

/// The lines of a file of tests/data; no lines, and a failed test, without the file.
inline std::vector<std::string> linesOf(std::string const& name) {
  std::ifstream in(std::string(CRV_SOURCE_DIR) + "/tests/data/" + name);
  EXPECT_TRUE(in.good()) << name << " is missing";
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

inline std::vector<double> numbersIn(std::string const& line) {
  std::istringstream words(line);
  std::vector<double> numbers;
  for (std::string word; words >> word;) numbers.push_back(std::stod(word));
  return numbers;
}

/// The rows of a table of numbers, "1 2 3; 4 5 6".
inline std::vector<std::vector<double>> table(std::string const& text) {
  std::vector<std::vector<double>> rows;
  std::istringstream in(text);
  for (std::string row; std::getline(in, row, ';');) rows.push_back(numbersIn(row));
  return rows;
}

/// The numbers of each line of a file of tests/data.
inline std::vector<std::vector<double>> numbersOf(std::string const& name) {
  std::vector<std::vector<double>> numbers;
  for (std::string const& line : linesOf(name)) numbers.push_back(numbersIn(line));
  return numbers;
}

/// Eight coordinates as a segment.
inline GxBezier segmentOf(std::vector<double> const& n) {
  return GxBezier(GxCoord<double>(n[0], n[1]), GxCoord<double>(n[2], n[3]),
                  GxCoord<double>(n[4], n[5]), GxCoord<double>(n[6], n[7]));
}

/// Eight coordinates for each segment.
inline std::vector<GxBezier> segmentsOf(std::vector<double> const& n) {
  std::vector<GxBezier> list;
  for (auto at = n.begin(); n.end() - at >= 8; at += 8) list.push_back(segmentOf({at, at + 8}));
  return list;
}

/// Two coordinates for each point.
inline std::vector<GxCoord<double>> pointsOf(std::vector<double> const& n) {
  std::vector<GxCoord<double>> list;
  for (std::size_t i = 0; i + 2 <= n.size(); i += 2) list.emplace_back(n[i], n[i + 1]);
  return list;
}

/// The segments of a contour, eight coordinates a line.
inline std::vector<GxBezier> segments(std::string const& outline) {
  std::vector<GxBezier> list;
  for (auto const& n : numbersOf("outlines/" + outline + ".txt")) list.push_back(segmentOf(n));
  return list;
}

/// A line of a file in hard_cases: its source, and the numbers of its three fields.
struct HardCase {
  std::string source;
  std::vector<double> fields[3];
};

inline std::vector<HardCase> hardCases(std::string const& name) {
  std::vector<HardCase> cases;
  for (std::string const& line : linesOf("hard_cases/" + name + ".txt")) {
    if (line[0] == '#') continue;
    std::istringstream in(line);
    HardCase hard;
    std::getline(in, hard.source, '|');
    std::string field;
    for (auto& numbers : hard.fields) {
      if (std::getline(in, field, '|')) numbers = numbersIn(field);
    }
    cases.push_back(hard);
  }
  return cases;
}

/// A polyline, "x y" a line.
inline GxList<GxCoord<double>> stroke(std::string const& name) {
  GxList<GxCoord<double>> points;
  for (auto const& n : numbersOf("strokes/" + name + ".txt")) {
    points.add(GxCoord<double>(n[0], n[1]));
  }
  return points;
}

/// A closed contour, the eight coordinates of a segment a line.
inline GxBezierCurve outline(std::string const& name) {
  GxBezierCurve curve;
  for (GxBezier const& segment : segments(name)) curve.getSegments().add(segment);
  curve.setStrictIsClosed(1);
  return curve;
}

}  // namespace support
