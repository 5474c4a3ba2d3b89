#include <crv/crv.h>

int main() {
  GxList<GxCoord<double>> points;
  for (int i = 0; i < 9; ++i) points.add(GxCoord<double>(i, i * i));
  GxBezierCurve curve(&points, 0.01);
  return curve.curveLength() > 64.0 ? 0 : 1;
}
