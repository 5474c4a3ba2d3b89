// What maps do with single positions, odd rules and all.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

#include <list>

namespace {

using namespace support;

double const kUntouched = -6.875;

/// Maps positions into one of their own and in place. Rows of three: what is mapped, the code and
/// what is stored, positions as one number each.
void expectRows(MapHandle const& map, std::string const& there, std::string const& backAgain = "") {
  for (bool const isBack : {false, true}) {
    for (Row const row : table(isBack ? backAgain : there)) {
      Carried const c = isBack ? back(map, at(row[0])) : forth(map, at(row[0]));
      EXPECT_EQ(c.code, row[1]);
      EXPECT_BITS(c.at, at(row[2]));
      Position p = at(row[0]);
      EXPECT_EQ(isBack ? map->inverseMapPosition(p, p) : map->mapPosition(p, p), row[1]);
      EXPECT_BITS(p, at(row[2] == kUntouched ? row[0] : row[2]));
    }
  }
}

GxBezierCurve curveOf(int segments, int closed) {
  GxBezierCurve curve = support::curveOf(std::vector<GxBezier>(static_cast<std::size_t>(segments)));
  curve.setStrictIsClosed(closed);
  return curve;
}

MapHandle rangeMap(GxBezierCurve& curve, int base, int forward, double start, double end) {
  return constructRangePositionMap(curve, curve.strictIsClosed(), base, forward, at(start), at(end),
                                   curve.lastPos());
}

TEST(PositionMaps, ReverseSwapsTheEnds) {
  std::string const rows =
      "0.25 0 2.75; 1 0 2; 0 0 3; 5e-10 0 3; 3.0000000005 0 0; 3.5 -1 0; 4 -1 0; -0.5 -1 3";
  expectRows(constructReversePositionMap(3), rows, rows);
  expectRows(constructReversePositionMap(0), "0 0 0");
}

TEST(PositionMaps, RotateCountsModuloWithTheSignOfTheDividend) {
  for (int const ignored : {1, -1}) {
    expectRows(constructRotatePositionMap(ignored, 1, 4),
               "3.5 0 0.5; 4 0 1; 4.000000000001 -1 1; -0.5 -1 1", "0.5 0 3.5; 4 0 3");
  }
  expectRows(constructRotatePositionMap(1, 9, 4), "1.5 0 2.5", "1.5 0 0.5; 0.5 0 -0.5");
}

TEST(PositionMaps, RangeStretchesThePiecesAtItsEnds) {
  GxBezierCurve curve = curveOf(5, 0);
  // Back from beyond the stretch is no failure.
  expectRows(rangeMap(curve, 0, 1, 1.5, 3.25),
             "1.75 0 0.5; 2.375 0 1.375; 3.125 0 2.5; 3.25 0 3; 1.5000000005 0 0; 3.2499999995 0 "
             "3; 0.875 -1 0; 3.5 -1 3",
             "0.5 0 1.75; 2.5 0 3.125; 3 0 3.25; 7.5 0 8.5; -0.5 -1 1.5");
  expectRows(rangeMap(curve, 2, 1, 1.25, 1.75), "1.5 0 2.5; 1.25 0 2", "2.5 0 1.5; 3 0 1.75");
  expectRows(rangeMap(curve, 2, 1, 1, 2), "2 0 3", "2.25 0 1.25");
  MapHandle const fromJoint = rangeMap(curve, 0, 1, 2 - 5e-10, 3.5);
  EXPECT_BITS(forth(fromJoint, rawPosition(1, 1.5)).at, at(0));
  EXPECT_BITS(back(fromJoint, at(0.5)).at, at(2 - 5e-10));
  // An end piece without an inside: the inverse gives the start of the stretch.
  expectRows(rangeMap(curve, 0, 1, 1.5, 2 + 5e-10), "2 0 2", "1.5 0 1.5");
}

TEST(PositionMaps, RangeRunsAcrossTheSeam) {
  GxBezierCurve curve = curveOf(4, 1);
  // Outside and nearer to the end: the start.
  expectRows(rangeMap(curve, 0, 1, 3.5, 1.5),
             "3.75 0 0.5; 0.25 0 1.25; 4 0 1; 1.25 0 2.5; 1.5 0 3; 2 -1 0; 3.25 -1 3",
             "0.5 0 3.75; 1.25 0 0.25; 2.5 0 1.25; 3 0 1.5; -0.5 -1 3.5");
  expectRows(rangeMap(curve, 0, 1, 3.5, 1 + 5e-10), "1 0 3");
  // Behind other segments, the way back can be a turn off, or lost.
  expectRows(rangeMap(curve, 2, 1, 2.5, 1.5), "3.25 0 3.25", "3.25 0 -0.75");
  expectRows(rangeMap(curve, 2, 0, 1.5, 2.5), "0.25 0 3.75", "3.75 -1 4");
  curve.setStrictIsClosed(0);
  expectRows(rangeMap(curve, 0, 1, 3.5, 1.5), "4 0 1; 4.5 -1 1; -0.5 -1 1");
  // From the end of an open curve: the map leaves out the way round that the copy takes.
  expectRows(rangeMap(curve, 0, 1, 4, 0.5), "0.25 0 0.5");
}

TEST(PositionMaps, AStretchReadBackwardsIsReversedFirst) {
  GxBezierCurve curve = curveOf(3, 0);
  // Of the last one the reversal fails: it speaks.
  expectRows(rangeMap(curve, 1, 0, 2.5, 0.5),
             "2.25 0 1.5; 1.25 0 2.75; 0.75 0 3.5; 2.75 -1 1; 3.5 -1 0", "1.5 0 2.25; 3.5 0 0.75");
  // From the start of an open curve backwards: once round, from its end.
  expectRows(rangeMap(curve, 0, 0, 0, 2.5), "2.75 0 0.5; 3 0 0", "0.5 0 2.75");
  expectRows(rangeMap(curve, 0, 0, 3.5, 0), "8.5 0 8.5");
}

TEST(PositionMaps, TranslateReadsTheSeamFromOneSide) {
  GxBezierCurve curve = curveOf(3, 1);
  for (Row const row : table("1 1 3.0000000005 0; 1 0 5e-10 3; 1 1 0 0; 1 0 3 3; 0 1 3 3;"
                             "1 1 3.00000001 3.00000001")) {
    EXPECT_BITS(translate(curve, int(row[0]), at(row[2]), int(row[1])), at(row[3]));
  }
}

TEST(PositionMaps, SingletonsKnowOnePositionAndCompositesWalkUntilAMapFails) {
  MapHandle const reversal = constructReversePositionMap(2);
  MapHandle const one = constructSingletonPositionMap({0, 0.5}, curveOf(5, 0));
  expectRows(one, "0.5 0 5; 0.500000000001 -1 -6.875", "5 0 0.5; 0.5 -1 -6.875");
  // What the reversal stored is left.
  expectRows(constructCompositePositionMap(reversal, one), "1.5 0 5; 0.5 -1 1.5; 3 -1 0",
             "5 0 1.5; 1.5 -1 -6.875");
  expectRows(constructCompositePositionMap({}), "1.5 0 -6.875", "1.5 0 -6.875");
  expectRows(constructCompositePositionMap({reversal, constructIdentityPositionMap(), reversal}),
             "1.25 0 1.25", "1.25 0 1.25");
}

TEST(PositionMaps, TransformMapsAListEvenIntoItself) {
  std::list<Position> positions{at(9), at(0.25)};
  EXPECT_EQ(constructReversePositionMap(2)->transform({}, positions, positions), -1);
  EXPECT_TRUE(positions == (std::list<Position>{at(9), at(0.25), at(0), at(1.75)}));
  EXPECT_EQ(constructIdentityPositionMap()->transform({}, positions, {at(1)}), 0);
}

}  // namespace
