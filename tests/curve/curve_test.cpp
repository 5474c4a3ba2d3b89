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

TEST(GxBezierCurvePosition, ComparesFieldsExactlyAndSumsWithinATolerance) {
  Position const end = rawPosition(1, 1.0), next(2, 0.0), near(2, 0x1p-40);
  for (Position const& p : {Position(), end, next, near, Position(3, 0.0)}) {
    for (Position const& q : {Position(), end, next, near, Position(3, 0.0)}) {
      auto const a = std::make_pair(p.getSegmentNumber(), p.getTValue());
      auto const b = std::make_pair(q.getSegmentNumber(), q.getTValue());
      EXPECT_TRUE((p < q) == (a < b) && (p <= q) == (a <= b) && (p == q) == (a == b));
      EXPECT_TRUE((p > q) == (a > b) && (p >= q) == (a >= b) && (p != q) == (a != b));
    }
  }
  EXPECT_TRUE(end.isEqual(next, 1e-9)) << "both are 2 as a number";
  EXPECT_TRUE(next.isEqual(near, -1e-9) && !isEqual(next, near, -1e-9)) << "one takes magnitudes";
  EXPECT_FALSE(next.isEqual(near, 0x1p-40)) << "a difference on the tolerance is outside";
  for (int const sense : {0, 1, 2, 7}) {
    EXPECT_EQ(Position::reverseSense(sense), sense == 1 ? 2 : sense == 2 ? 1 : sense);
    EXPECT_EQ(Position::isCompatibleSense(1, sense), sense < 2);
  }
  for (Row const row : table("1.5000000009 0; 1.500000002 1; 1.499999998 2; 0.7 2")) {
    EXPECT_EQ(GxBezierCurve().getSense({1, 0.5}, at(row[0])), row[1]);
  }
}

TEST(GxBezierCurve, IsAValueAndLocatesPositionsUpToTheEndAndElseTheOrigin) {
  GxBezierCurve curve = curveOf({sShape(), evenLine(100, 100, 200, 100)});
  for (Row const row : table("0.5 50 50; 2.7 200 100; 3 0 0; -0.5 0 0")) {
    EXPECT_BITS(curve.locateCurvePosition(at(row[0])), Point(row[1], row[2]));
  }
  curve.setStrictIsClosed(7);
  GxBezierCurve copy = curve;
  EXPECT_EQ(copy.strictIsClosed(), 7);
  copy.setStrictIsClosed(0);
  EXPECT_TRUE(copy == curve && !(copy != curve)) << "the flag is not compared";
  copy.moveCurve(Vector(1, -2));
  EXPECT_TRUE(copy != curve);
  copy.resize(2, 3), copy.flip();
  EXPECT_BITS(copy[0], bezier(2, 6, 82, -414, 122, 126, 202, -294));
}

TEST(GxBezierCurve, IsCloseSnapsEndsThatMeet) {
  for (double const gap : {0.5, 0.5000001}) {  // ends 0.5 apart meet
    GxBezierCurve curve = polygon({0, 0, 50, 80, 0, gap});
    EXPECT_EQ(curve.isClose(), gap == 0.5);
    EXPECT_EQ(curve[0][0] == Point(0, 0.25) && curve[1][3] == Point(0, 0.25), gap == 0.5);
    EXPECT_EQ(curve.strictIsClosed(), 0);
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

TEST(GxBezierCurve, LengthIsTheSumAndALineIsExactlyParallel) {
  EXPECT_NEAR(curveOf({quarterArc(100), evenLine(0, 100, 0, 40)}).curveLength(), 217.0796, 0.1);
  for (double const off : {0.0, 1e-12}) {  // turning back is straight
    EXPECT_EQ(OpenCurve(polygon({0, 0, 96, 48, 48, 24 + off})).isALine(), off == 0.0);
  }
}

}  // namespace
