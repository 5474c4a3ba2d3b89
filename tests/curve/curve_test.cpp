// Positions, and the curve as a container: values, whole-curve operations, measures.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

template <class From, class To>
constexpr bool kConverts = std::is_convertible<From, To>::value;
static_assert(kConverts<Point const*, GxBezier> && kConverts<double, Gx2DRotate> &&
                  kConverts<Numbers&, GxBezier::Comperator> && kConverts<void*, GxRefCount> &&
                  kConverts<GxBezierCurvePositionMapBase*, MapHandle>,
              "what they are made of converts to them");

TEST(GxBezierCurvePosition, CarriesWithTheBitsOfSingleStepsAndStoresWhatCannotBeCarried) {
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
}

/// The nearest point by trying the segments one by one: the first, the last, then the others.
Point plainNearest(GxBezierCurve const& curve, Point const& p) {
  int const last = static_cast<int>(curve.length()) - 1;
  Point best, nearest;
  curve[0].findNearestPoint(p, best);
  auto const consider = [&](int k) {
    curve[k].findNearestPoint(p, nearest);
    if (p.squaredDistance(nearest) < p.squaredDistance(best)) best = nearest;
  };
  consider(last);
  for (int k = 1; k < last && !(p.squaredDistance(best) < 0.5); ++k) consider(k);
  return best;
}

TEST(GxBezierCurve, ManySegmentsAreSearchedAsIfOneByOne) {
  GxList<Point> const points = stroke("island-sri-lanka");
  GxBezierCurve coast(&points, 0.5), mirrored(coast);
  ASSERT_LT(100u, coast.length());
  for (GxBezier& s : mirrored.getSegments()) {
    for (int i = 0; i < 4; ++i) s[i] = Point(s[i].yval(), s[i].xval());
  }
  GxList<Point> crossings, plainCrossings;
  coast.findIntersections(mirrored, crossings);
  for (GxBezier const& theirs : mirrored.getSegments()) {
    for (GxBezier& ours : coast.getSegments()) ours.findIntersections(theirs, plainCrossings);
  }
  EXPECT_LT(10u, crossings.length());
  EXPECT_EQ(plainCrossings, crossings);

  double least = coast[0][0].squaredDistance(mirrored[0][0]);
  for (GxBezier const& s : coast.getSegments()) {
    for (double t = 0.0; t < 1.05; t += 0.1) {
      Point const p = s.bValue(t), best = plainNearest(mirrored, p);
      Point nearest;
      mirrored.findNearestPoint(p, nearest);
      ASSERT_EQ(best, nearest);
      least = min(least, p.squaredDistance(best));
    }
  }
  EXPECT_EQ(least, coast.getMinSqDistance(mirrored));
}

}  // namespace
