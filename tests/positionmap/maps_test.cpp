#include "tests/support/data.h"
#include "tests/support/positions.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <list>
#include <new>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Allocations of this program so far, and how many more succeed.
std::atomic<long> allocations{0};
std::atomic<long> allocationsLeft{std::numeric_limits<long>::max()};

void* allocate(std::size_t size) {
  ++allocations;
  return --allocationsLeft < 0 ? nullptr : std::malloc(size != 0 ? size : 1);
}

/// Not inlined: gcc takes free beside a new-expression for a mistake.
[[gnu::noinline]] void release(void* p) { std::free(p); }

}  // namespace

void* operator new(std::size_t size) {
  if (void* const p = allocate(size)) return p;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return allocate(size); }
void operator delete(void* p) noexcept { release(p); }
void operator delete(void* p, std::size_t) noexcept { release(p); }
void operator delete(void* p, std::nothrow_t const&) noexcept { release(p); }

namespace {

using support::at;
using support::Carried;
using support::MapHandle;
using support::Position;

double const kUntouched = -6.875;

/// Maps positions into one of their own and in place. Rows of three: what is mapped, the code and
/// what is stored, positions as one number each.
void expectRows(MapHandle const& map, std::string const& there, std::string const& backAgain = "") {
  for (auto const* rows : {&there, &backAgain}) {
    bool const isBack = rows == &backAgain;
    for (auto const& row : support::table(*rows)) {
      SCOPED_TRACE(testing::Message() << (isBack ? "inverse of " : "of ") << row[0]);
      Carried const c = isBack ? support::back(map, at(row[0])) : support::forth(map, at(row[0]));
      EXPECT_EQ(c.code, row[1]);
      EXPECT_BITS(c.at, at(row[2]));
      Position p = at(row[0]);
      EXPECT_EQ(isBack ? map->inverseMapPosition(p, p) : map->mapPosition(p, p), row[1]);
      EXPECT_BITS(p, at(row[2] == kUntouched ? row[0] : row[2]));
    }
  }
}

GxBezierCurve curveOf(int segments, int closed) {
  GxBezierCurve curve;
  for (int i = 0; i < segments; ++i) curve.getSegments().add(GxBezier());
  curve.setStrictIsClosed(closed);
  return curve;
}

MapHandle rangeMap(GxBezierCurve& curve, int base, int forward, Position const& start,
                   Position const& end) {
  return constructRangePositionMap(curve, curve.strictIsClosed(), base, forward, start, end,
                                   curve.lastPos());
}

TEST(PositionMaps, ReverseSwapsTheEnds) {
  std::string const rows =
      "0.25 0 2.75; 1 0 2; 0 0 3; 5e-10 0 3; 3.0000000005 0 0; 3.5 -1 0; 4 -1 0; -0.5 -1 3";
  expectRows(constructReversePositionMap(3), rows, rows);
  expectRows(constructReversePositionMap(0), "0 0 0");
}

TEST(PositionMaps, RotateCountsModuloWithTheSignOfTheDividend) {
  for (int const ignored : {1, -1, 0}) {
    expectRows(constructRotatePositionMap(ignored, 1, 4),
               "3.5 0 0.5; 4 0 1; 4.000000000001 -1 1; -0.5 -1 1", "0.5 0 3.5; 4 0 3");
  }
  expectRows(constructRotatePositionMap(1, 9, 4), "1.5 0 2.5", "1.5 0 0.5; 0.5 0 -0.5");
  expectRows(constructRotatePositionMap(1, 3, 0), "0 0 0");
}

TEST(PositionMaps, RangeStretchesThePiecesAtItsEnds) {
  GxBezierCurve curve = curveOf(5, 0);
  // Back from beyond the stretch is no failure.
  expectRows(rangeMap(curve, 0, 1, {1, 0.5}, {3, 0.25}),
             "1.75 0 0.5; 2.375 0 1.375; 3.125 0 2.5; 3.25 0 3; 1.5000000005 0 0; 3.2499999995 0 "
             "3; 0.875 -1 0; 3.5 -1 3",
             "0.5 0 1.75; 2.5 0 3.125; 3 0 3.25; 7.5 0 8.5; -0.5 -1 1.5");
  expectRows(rangeMap(curve, 2, 1, {1, 0.25}, {1, 0.75}), "1.5 0 2.5; 1.25 0 2",
             "2.5 0 1.5; 3 0 1.75");
  expectRows(rangeMap(curve, 2, 1, {1, 0.0}, {2, 0.0}), "2 0 3", "2.25 0 1.25");
  Position const nearJoint(1, 1.0 - 5e-10);
  MapHandle const fromJoint = rangeMap(curve, 0, 1, nearJoint, {3, 0.5});
  EXPECT_BITS(support::forth(fromJoint, support::rawPosition(1, 1.5)).at, at(0));
  EXPECT_BITS(support::back(fromJoint, at(0.5)).at, nearJoint);
  // An end piece without an inside: the inverse gives the start of the stretch.
  expectRows(rangeMap(curve, 0, 1, {1, 0.5}, {2, 5e-10}), "2 0 2", "1.5 0 1.5");
}

TEST(PositionMaps, RangeRunsAcrossTheSeam) {
  GxBezierCurve curve = curveOf(4, 1);
  // Outside and nearer to the end: the start.
  expectRows(rangeMap(curve, 0, 1, {3, 0.5}, {1, 0.5}),
             "3.75 0 0.5; 0.25 0 1.25; 4 0 1; 1.25 0 2.5; 1.5 0 3; 2 -1 0; 3.25 -1 3",
             "0.5 0 3.75; 1.25 0 0.25; 2.5 0 1.25; 3 0 1.5; -0.5 -1 3.5");
  expectRows(rangeMap(curve, 0, 1, {3, 0.5}, {1, 5e-10}), "1 0 3");
  curve.setStrictIsClosed(0);
  expectRows(rangeMap(curve, 0, 1, {3, 0.5}, {1, 0.5}), "4 0 1; 4.5 -1 1; -0.5 -1 1");
}

TEST(PositionMaps, AStretchReadBackwardsIsReversedFirst) {
  GxBezierCurve curve = curveOf(3, 0);
  // Of the last one the reversal fails: it speaks.
  expectRows(rangeMap(curve, 1, 0, {2, 0.5}, {0, 0.5}),
             "2.25 0 1.5; 1.25 0 2.75; 0.75 0 3.5; 2.75 -1 1; 3.5 -1 0", "1.5 0 2.25; 3.5 0 0.75");
  // From the start of an open curve backwards: once round, from its end.
  expectRows(rangeMap(curve, 0, 0, {0, 0.0}, {2, 0.5}), "2.75 0 0.5; 3 0 0", "0.5 0 2.75");
  expectRows(rangeMap(curve, 0, 0, {3, 0.5}, {0, 0.0}), "8.5 0 8.5");
}

TEST(PositionMaps, TranslateReadsTheSeamFromOneSide) {
  GxBezierCurve curve = curveOf(3, 1);
  for (auto const& row : support::table(
           "1 1 3.0000000005 0; 1 0 5e-10 3; 1 1 0 0; 1 0 3 3; 0 1 3 3; 1 1 3.25 3.25")) {
    EXPECT_BITS(translate(curve, int(row[0]), at(row[2]), int(row[1])), at(row[3]));
  }
  EXPECT_BITS(translate(curve, 1, {3, 1e-8}, 1), Position(3, 1e-8));
}

TEST(PositionMaps, SingletonsKnowOnePositionAndCompositesWalkUntilAMapFails) {
  MapHandle const reversal = constructReversePositionMap(2);
  MapHandle const one = constructSingletonPositionMap({0, 0.5}, curveOf(5, 0));
  expectRows(one, "0.5 0 5; 0.500000000001 -1 -6.875", "5 0 0.5; 0.5 -1 -6.875");
  // What the reversal stored is left.
  expectRows(constructCompositePositionMap(reversal, one), "1.5 0 5; 0.5 -1 1.5; 3 -1 0",
             "5 0 1.5; 1.5 -1 -6.875");
  expectRows(constructCompositePositionMap(reversal, MapHandle()), "1.5 -1 0.5", "1.5 -1 -6.875");
  expectRows(constructCompositePositionMap({}), "1.5 0 -6.875", "1.5 0 -6.875");
  expectRows(constructCompositePositionMap({reversal, constructIdentityPositionMap(), reversal}),
             "1.25 0 1.25", "1.25 0 1.25");
}

TEST(PositionMaps, TransformMapsAListEvenIntoItself) {
  MapHandle const map = constructReversePositionMap(2);
  std::list<Position> positions;
  EXPECT_EQ(map->transform({}, positions, positions), 0);
  positions = {at(9), at(0.25)};
  EXPECT_EQ(map->transform({}, positions, positions), -1);
  std::list<Position> const expected = {at(9), at(0.25), at(0), at(1.75)};
  EXPECT_TRUE(positions == expected);
}

TEST(PositionMaps, MappingAllocatesNothing) {
  GxBezierCurve curve = curveOf(9, 1);
  std::vector<MapHandle> const maps = {rangeMap(curve, 2, 1, Position(1, 0.5), Position(7, 0.5)),
                                       rangeMap(curve, 2, 0, Position(1, 0.5), Position(7, 0.5)),
                                       constructRotatePositionMap(1, 3, 9),
                                       constructSingletonPositionMap(Position(1, 0.5), curve)};
  long const before = allocations;
  for (MapHandle const& map : maps) {
    for (int segment = -1; segment <= 10; ++segment) {
      support::forth(map, Position(segment, 0.25));
      support::back(map, Position(segment, 0.25));
    }
  }
  EXPECT_EQ(allocations, before);
}

TEST(PositionMaps, WithoutMemoryTheHandleIsNull) {
  GxBezierCurve curve = curveOf(3, 0);
  for (long const left : {0, 1}) {  // no map, no counter
    allocationsLeft = left;
    MapHandle map = rangeMap(curve, 0, 1, Position(0, 0.0), Position(1, 0.0));
    MapHandle const backwards = rangeMap(curve, 0, 0, Position(1, 0.0), Position(0, 0.0));
    MapHandle copy(map);
    allocationsLeft = std::numeric_limits<long>::max();
    EXPECT_TRUE(map.isNull() && backwards.isNull() && copy.isNull() && copy == map);
    copy = map = constructIdentityPositionMap();
    EXPECT_TRUE(copy.isValid());
  }
}

}  // namespace
