#include "crv/crv.h"

#include <cmath>
#include <iostream>

int main() {
  GxList<GxCoord<double>> stroke;  // what a pen reported
  for (int x = 0; x <= 300; ++x) stroke.add(GxCoord<double>(x, 40 * std::sin(x * 0.05)));

  GxBezierCurve curve(&stroke, 0.5);  // fitted; 0.5 is the square of the distance allowed
  GxList<GxCoord<double>> chords;
  curve.makeCurve(10.0, chords, 0);  // points 10 apart, carried across the joins
  std::vector<GxCoord<double>> polyline;
  curve.getPolyline(0.1, polyline);  // by halving, to within 0.1

  std::cout << stroke.length() << " points, " << curve.length() << " segments, length "
            << curve.curveLength() << "; out: " << chords.length() << " or " << polyline.size()
            << " points\n";
}
