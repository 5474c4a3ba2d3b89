// Questions to curves that stay as they are.
#include "crv/crv.h"
#include "crv/io.h"

#include <iostream>

double heightOf(GxBezierCurve const& curve) {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
  curve.getLocalBoundingBox(minX, minY, maxX, maxY);
  return maxY - minY;
}

int main() {
  GxBezierCurve const curve{{{0, 0}, {1, 4}, {3, 4}, {4, 0}}, {{4, 0}, {5, -4}, {7, -4}, {8, 0}}};
  for (GxBezier const& segment : curve)
    std::cout << segment << " long " << segment.length(0) << '\n';
  auto const [x, y] = curve.locateCurvePosition({1, 0.5});
  GxCoord<double> nearest;
  if (curve.findNearestPoint({x, y - 1}, nearest) < 0) return 1;
  std::cout << heightOf(curve) << " high, near " << nearest << '\n';
  return heightOf(curve) == 6 && nearest.distance({x, y}) < 1e-6 ? 0 : 1;
}
