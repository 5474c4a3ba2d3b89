// Positions, and the curve as a container: values, whole-curve operations, measures.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

TEST(GxBezierCurvePosition, CarriesWithTheBitsOfSingleStepsAndStoresWhatCannotBeCarried) {
  for (double const t : {0x1p53, -0x1p53, 1e300, -HUGE_VAL, std::nan("")}) {
    EXPECT_BITS(Position(7, t), rawPosition(7, t));
  }
  EXPECT_EQ(Position(7, 1 - 0x1p53).getTValue(), 0.0);
  EXPECT_BITS(Position(5, 0.25 - 0x1p30), rawPosition(5 - (1 << 30), 0.25));
  Random random(1);
  for (int i = 0; i < 5000; ++i) {
    double const size = i % 3 == 0 ? 1e-17 : i % 3 == 1 ? 3.0 : 2000.0;
    double u = i == 0 ? -0.0 : i < 5 ? i - 3 : random.uniform(-size, size);
    Position const p = GxBezierCurvePositionConstructor().constructPosition(5, u);
    int segment = 5;
    for (; u < 0.0; --segment) u += 1.0;
    for (; u >= 1.0; ++segment) u -= 1.0;
    EXPECT_BITS(p, rawPosition(segment, u));
  }
}

TEST(GxBezierCurve, BoxesHoldEverySampleAndExtremesTouchThem) {
  GxBezierCurve curve = outline("roman-g-outer");
  double hull[4], box[4], t = 0.0;
  int k = 0;
  Point low, high;
  curve.getBoundingBox(hull[0], hull[1], hull[2], hull[3]);
  curve.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
  EXPECT_EQ(curve.getMinMax(low, high), 0);
  EXPECT_TRUE(low == Point(box[0], box[1]) && high == Point(box[2], box[3]));
  for (int i = 0; i < 50 * static_cast<int>(curve.length()); ++i) {
    Point const p = curve.locateCurvePosition({i / 50, i % 50 / 50.0});
    EXPECT_TRUE(isPointInBox(p, box[0], box[1], box[2], box[3], 1e-9));
    EXPECT_TRUE(isPointInBox(p, hull[0], hull[1], hull[2], hull[3], 0));
  }
  EXPECT_TRUE(curve.getCurveMinY(t, k) == 0 && curve[k].bValue(t).yval() == low.yval());
  EXPECT_TRUE(curve.getCurveMaxY(t, k) == 0 && curve[k].bValue(t).yval() == high.yval());
  // Of equally high segments the first wins; an empty curve leaves the outputs alone.
  EXPECT_EQ(polygon({0, 0, 10, 5, 20, 0, 30, 5}).getCurveMaxY(t, k), 0);
  EXPECT_TRUE(GxBezierCurve().getCurveMinY(t, k) == -1 && k == 0 && t == 1.0);
}

}  // namespace
