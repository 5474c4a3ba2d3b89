#include "tests/support/expect.h"
#include "tests/support/shapes.h"

namespace {

using namespace support;
using Position = GxBezierCurvePosition;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

TEST(CompositeMap, ANullHandleEndsItWithWhatTheMapBeforeStored) {
  MapHandle const reversal = constructReversePositionMap(4);
  MapHandle const composites[] = {constructCompositePositionMap(reversal, MapHandle()),
                                  constructCompositePositionMap(MapHandle(), reversal)};
  for (MapHandle const& map : composites) {
    bool const isNullLast = map == composites[0];
    Position out(9, 0.5);
    EXPECT_EQ(map->mapPosition(out, Position(1, 0.25)), -1);
    EXPECT_EQ(out, isNullLast ? Position(2, 0.75) : Position(9, 0.5));
    out = Position(9, 0.5);
    EXPECT_EQ(map->inverseMapPosition(out, Position(1, 0.25)), -1);
    EXPECT_EQ(out, isNullLast ? Position(9, 0.5) : Position(2, 0.75));
  }
}

TEST(RangeMap, AStretchAcrossTheSeamStartsWithItsOwnStart) {
  GxBezierCurve curve = circle(10);
  MapHandle const map = constructRangePositionMap(curve, 1, 0, 1, Position(2, 0.5),
                                                  Position(1, 0.5), curve.lastPos());
  Position out;
  EXPECT_EQ(map->mapPosition(out, Position(2, 0.5)), 0);
  EXPECT_EQ(out, Position(0, 0.0));
}

TEST(ArrangeBezierCurve, EqualPositionsLeaveAnOpenCurveAsItIs) {
  GxBezierCurve curve = polygon({0, 0, 10, 0, 20, 5});
  arrangeBezierCurve(curve, Position(1, 0.5), Position(1, 0.5));
  EXPECT_EQ(curve(0)[0], GxCoord<double>(0, 0));
}

TEST(Handle, APlainPointerBecomesAHandle) {
  struct Counted {
    int& alive;
    explicit Counted(int& n) : alive(n) { ++alive; }
    ~Counted() { --alive; }
  };
  int alive = 0;
  {
    GxHandle<Counted> const handle = new Counted(alive);
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
