// The shapes that the command reads, and the refusal of what it cannot read.
#pragma once

#include "crv/crv.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace tool {

using crv::Curve;
using crv::Point;
using Points = std::vector<Point>;

/// Why an argument or an input is refused, in one line.
struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A stroke or a curve.
struct Shape {
  Curve curve;     // of a stroke: its samples, joined by lines
  Points samples;  // of a stroke; a curve has none
};

using Drawing = std::vector<Shape>;

/// The curves of a drawing, strokes as lines.
inline std::vector<Curve> curvesOf(Drawing const& drawing) {
  std::vector<Curve> curves;
  for (Shape const& shape : drawing) curves.push_back(shape.curve);
  return curves;
}

/// The longer side of the box around all control points.
inline double sizeOf(Drawing const& drawing) {
  double loX = 0.0, loY = 0.0, hiX = 0.0, hiY = 0.0;
  bool isFirst = true;
  for (Shape const& shape : drawing) {
    double minX, minY, maxX, maxY;
    shape.curve.getBoundingBox(minX, minY, maxX, maxY);
    loX = isFirst ? minX : crv::min(loX, minX), hiX = isFirst ? maxX : crv::max(hiX, maxX);
    loY = isFirst ? minY : crv::min(loY, minY), hiY = isFirst ? maxY : crv::max(hiY, maxY);
    isFirst = false;
  }
  return crv::max(hiX - loX, hiY - loY);
}

}  // namespace tool
