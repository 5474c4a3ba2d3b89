// Reads the strokes and outlines kept in tests/data.
#pragma once

#include "crv/crv.h"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

/// The numbers of each line of a file of tests/data; no lines, and a failed test, without the file.
inline std::vector<std::vector<double>> numbersOf(std::string const& name) {
  std::ifstream in(std::string(CRV_SOURCE_DIR) + "/tests/data/" + name);
  EXPECT_TRUE(in.good()) << name << " is missing";
  std::vector<std::vector<double>> lines;
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::vector<double> numbers;
    for (std::string word; words >> word;) numbers.push_back(std::stod(word));
    lines.push_back(numbers);
  }
  return lines;
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
  for (auto const& n : numbersOf("outlines/" + name + ".txt")) {
    curve.getSegments().add(GxBezier(GxCoord<double>(n[0], n[1]), GxCoord<double>(n[2], n[3]),
                                     GxCoord<double>(n[4], n[5]), GxCoord<double>(n[6], n[7])));
  }
  curve.setStrictIsClosed(1);
  return curve;
}

}  // namespace support
