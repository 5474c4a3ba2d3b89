// Values for a debugger to show: see gdb.sh.
#include "crv/crv.h"

int main() {
  GxBezierCurve curve{GxBezier({0, 0}, {1, 0}, {2, 0}, {3, 0.5})};
  curve.setStrictIsClosed(1);
  GxCoord<double> const p = curve[0][3];
  GxVector<double> const v = p - curve[0][0];
  GxBezierCurvePosition const position(2, 0.25);
  GxList<double> const list{1, 2};
  crv::Map const map = constructIdentityPositionMap(), none;
  return v.xval() + list[0] + position.getTValue() > 0 && map && !none ? 0 : 1;  // break here
}
