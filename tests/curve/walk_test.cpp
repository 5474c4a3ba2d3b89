// Walking along a curve.
#include "tests/support/expect.h"

namespace {

using namespace support;

TEST(GxBezierCurveWalk, StepsAlongACoastLandAtTheirDistanceAndAddUp) {
  GxList<Point> const points = stroke("island-sulawesi");
  GxBezierCurve coast(&points, 2.0);
  for (int const forward : {1, 0}) {
    Position pos = forward ? coast.firstPos() : coast.lastPos();
    Position const end = forward ? coast.lastPos() : coast.firstPos();
    Position to;
    double sum = 0.0;
    for (double used; coast.findNextPos(pos, to, 1.0, forward, used, 0) == 0; pos = to) {
      sum += used;
      if (pos.getSegmentNumber() != to.getSegmentNumber()) continue;
      Point const from = coast.locateCurvePosition(pos);  // a step leaves a hundredth, squared
      ASSERT_NEAR(1.0, from.squaredDistance(coast.locateCurvePosition(to)), 0.0100001);
    }
    // The form with a limit adds to the sum, here the whole remaining length.
    EXPECT_EQ(-1, coast.findNextPos(pos, end, to, 1e9, sum, forward));
    EXPECT_NEAR(coast.curveLength(), sum, 1.0);
  }
}

}  // namespace
