// Reads outlines of letters and strokes from tests/data, for the examples.
#pragma once

#include "crv/crv.h"

#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// A closed outline, the eight coordinates of a segment a line; no segments without the file.
inline GxBezierCurve readOutline(std::string const& name) {
  GxBezierCurve curve;
  std::ifstream in(CRV_SOURCE_DIR "/tests/data/outlines/" + name);
  std::array<double, 8> c;
  while (in >> c[0] >> c[1] >> c[2] >> c[3] >> c[4] >> c[5] >> c[6] >> c[7]) {
    curve.getSegments().add(GxBezier({c[0], c[1]}, {c[2], c[3]}, {c[4], c[5]}, {c[6], c[7]}));
  }
  curve.setStrictIsClosed(1);
  return curve;
}

/// A stroke, "x y" a line; no points without the file.
inline std::vector<GxCoord<double>> readStroke(std::string const& name) {
  std::vector<GxCoord<double>> points;
  std::ifstream in(CRV_SOURCE_DIR "/tests/data/strokes/" + name);
  for (std::string line; std::getline(in, line);) {
    std::istringstream numbers(line);
    double x = 0, y = 0;
    if (numbers >> x >> y) points.emplace_back(x, y);
  }
  return points;
}
