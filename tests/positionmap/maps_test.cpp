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

using support::Carried;
using support::MapHandle;
using support::Position;
using support::rawPosition;

Position const kUntouched = rawPosition(-7, 0.125);

struct Row {
  Position in;
  int code;
  Position out;
};

/// Maps every row, into a position of its own and in place.
void expectRows(MapHandle const& map, std::vector<Row> const& there,
                std::vector<Row> const& backAgain) {
  for (Row const& row : there) {
    SCOPED_TRACE("of " + support::text(row.in));
    Carried const c = support::forth(map, row.in);
    EXPECT_EQ(c.code, row.code);
    EXPECT_BITS(c.at, row.out);
    Position p = row.in;
    EXPECT_EQ(map->mapPosition(p, p), row.code);
    EXPECT_BITS(p, row.out.getSegmentNumber() == -7 ? row.in : row.out);
  }
  for (Row const& row : backAgain) {
    SCOPED_TRACE("inverse of " + support::text(row.in));
    Carried const c = support::back(map, row.in);
    EXPECT_EQ(c.code, row.code);
    EXPECT_BITS(c.at, row.out);
    Position p = row.in;
    EXPECT_EQ(map->inverseMapPosition(p, p), row.code);
    EXPECT_BITS(p, row.out.getSegmentNumber() == -7 ? row.in : row.out);
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
  std::vector<Row> const rows = {
      {{0, 0.25}, 0, {2, 0.75}}, {{1, 0.0}, 0, {2, 0.0}},   {{0, 0.0}, 0, {3, 0.0}},
      {{0, 5e-10}, 0, {3, 0.0}}, {{3, 5e-10}, 0, {0, 0.0}}, {{3, 0.5}, -1, {0, 0.0}},
      {{4, 0.0}, -1, {0, 0.0}},  {{-1, 0.5}, -1, {3, 0.0}},
  };
  expectRows(constructReversePositionMap(3), rows, rows);
  expectRows(constructReversePositionMap(0), {{{0, 0.0}, 0, {0, 0.0}}}, {});
}

TEST(PositionMaps, RotateCountsModuloWithTheSignOfTheDividend) {
  for (int const ignored : {1, -1, 0}) {
    expectRows(constructRotatePositionMap(ignored, 1, 4),
               {{{3, 0.5}, 0, {0, 0.5}},
                {{4, 0.0}, 0, {1, 0.0}},
                {{4, 1e-12}, -1, {1, 0.0}},
                {{-1, 0.5}, -1, {1, 0.0}}},
               {{{0, 0.5}, 0, {3, 0.5}}, {{4, 0.0}, 0, {3, 0.0}}});
  }
  expectRows(constructRotatePositionMap(1, 9, 4), {{{1, 0.5}, 0, {2, 0.5}}},
             {{{1, 0.5}, 0, {0, 0.5}}, {{0, 0.5}, 0, {-1, 0.5}}});
  expectRows(constructRotatePositionMap(1, 3, 0), {{{0, 0.0}, 0, {0, 0.0}}}, {});
}

TEST(PositionMaps, SingletonKnowsOnePosition) {
  expectRows(constructSingletonPositionMap(Position(2, 0.5), curveOf(3, 0)),
             {{{2, 0.5}, 0, {3, 0.0}}, {{2, 0.5 + 1e-12}, -1, kUntouched}},
             {{{3, 0.0}, 0, {2, 0.5}}, {{2, 0.5}, -1, kUntouched}});
}

TEST(PositionMaps, RangeStretchesThePiecesAtItsEnds) {
  GxBezierCurve curve = curveOf(5, 0);
  expectRows(rangeMap(curve, 0, 1, Position(1, 0.5), Position(3, 0.25)),
             {{{1, 0.75}, 0, {0, 0.5}},
              {{2, 0.375}, 0, {1, 0.375}},
              {{3, 0.125}, 0, {2, 0.5}},
              {{3, 0.25}, 0, {3, 0.0}},
              {{1, 0.5 + 5e-10}, 0, {0, 0.0}},
              {{3, 0.25 - 5e-10}, 0, {3, 0.0}},
              {{0, 0.875}, -1, {0, 0.0}},
              {{3, 0.5}, -1, {3, 0.0}}},
             {{{0, 0.5}, 0, {1, 0.75}},
              {{2, 0.5}, 0, {3, 0.125}},
              {{3, 0.0}, 0, {3, 0.25}},
              {{7, 0.5}, 0, {8, 0.5}},  // beyond the stretch, no failure
              {{-1, 0.5}, -1, {1, 0.5}}});
  expectRows(rangeMap(curve, 2, 1, Position(1, 0.25), Position(1, 0.75)),
             {{{1, 0.5}, 0, {2, 0.5}}, {{1, 0.25}, 0, {2, 0.0}}},
             {{{2, 0.5}, 0, {1, 0.5}}, {{3, 0.0}, 0, {1, 0.75}}});
  expectRows(rangeMap(curve, 2, 1, Position(1, 0.0), Position(2, 0.0)),
             {{{1, 5e-10}, 0, {2, 5e-10}}, {{2, 0.0}, 0, {3, 0.0}}}, {{{2, 0.25}, 0, {1, 0.25}}});
  Position const nearJoint(1, 1.0 - 5e-10);
  expectRows(rangeMap(curve, 0, 1, nearJoint, Position(3, 0.5)),
             {{rawPosition(1, 1.5), 0, Position(0, 0.0)}}, {{Position(0, 0.5), 0, nearJoint}});
  // An end piece without an inside: the inverse gives the start of the stretch.
  expectRows(rangeMap(curve, 0, 1, Position(1, 0.5), Position(2, 5e-10)), {{{2, 0.0}, 0, {2, 0.0}}},
             {{{1, 0.5}, 0, {1, 0.5}}});
}

TEST(PositionMaps, RangeRunsAcrossTheSeam) {
  GxBezierCurve curve = curveOf(4, 1);
  expectRows(rangeMap(curve, 0, 1, Position(3, 0.5), Position(1, 0.5)),
             {{{3, 0.75}, 0, {0, 0.5}},
              {{0, 0.25}, 0, {1, 0.25}},
              {{4, 0.0}, 0, {1, 0.0}},
              {{1, 0.25}, 0, {2, 0.5}},
              {{1, 0.5}, 0, {3, 0.0}},   // 1.0 of the last new segment
              {{2, 0.0}, -1, {0, 0.0}},  // nearer to the end: the start
              {{3, 0.25}, -1, {3, 0.0}}},
             {{{0, 0.5}, 0, {3, 0.75}},
              {{1, 0.25}, 0, {0, 0.25}},
              {{2, 0.5}, 0, {1, 0.25}},
              {{3, 0.0}, 0, {1, 0.5}},
              {{-1, 0.5}, -1, {3, 0.5}}});
  expectRows(rangeMap(curve, 0, 1, Position(3, 0.5), Position(1, 5e-10)), {{{1, 0.0}, 0, {3, 0.0}}},
             {});
  GxBezierCurve open = curveOf(4, 0);
  expectRows(rangeMap(open, 0, 1, Position(3, 0.5), Position(1, 0.5)),
             {{{4, 0.0}, 0, {1, 0.0}}, {{4, 0.5}, -1, {1, 0.0}}, {{-1, 0.5}, -1, {1, 0.0}}}, {});
}

TEST(PositionMaps, AStretchReadBackwardsIsReversedFirst) {
  GxBezierCurve curve = curveOf(3, 0);
  expectRows(rangeMap(curve, 1, 0, Position(2, 0.5), Position(0, 0.5)),
             {{{2, 0.25}, 0, {1, 0.5}},
              {{1, 0.25}, 0, {2, 0.75}},
              {{0, 0.75}, 0, {3, 0.5}},
              {{2, 0.75}, -1, {1, 0.0}},
              {{3, 0.5}, -1, {0, 0.0}}},  // the reversal failed: it speaks
             {{{1, 0.5}, 0, {2, 0.25}}, {{3, 0.5}, 0, {0, 0.75}}});
  // From the start of an open curve backwards: once round, from its end.
  expectRows(rangeMap(curve, 0, 0, Position(0, 0.0), Position(2, 0.5)),
             {{{2, 0.75}, 0, {0, 0.5}}, {{3, 0.0}, 0, {0, 0.0}}}, {{{0, 0.5}, 0, {2, 0.75}}});
  expectRows(rangeMap(curve, 0, 0, Position(3, 0.5), Position(0, 0.0)), {{{8, 0.5}, 0, {8, 0.5}}},
             {});
}

TEST(PositionMaps, TranslateReadsTheSeamFromOneSide) {
  GxBezierCurve curve = curveOf(3, 1);
  struct Case {
    int closed, forward;
    Position from, to;
  } const cases[] = {
      {1, 1, Position(3, 5e-10), Position(0, 0.0)}, {1, 0, Position(0, 5e-10), Position(3, 0.0)},
      {1, 1, Position(0, 0.0), Position(0, 0.0)},   {1, 0, Position(3, 0.0), Position(3, 0.0)},
      {0, 1, Position(3, 0.0), Position(3, 0.0)},   {1, 1, Position(3, 1e-8), Position(3, 1e-8)},
  };
  for (Case const& c : cases) EXPECT_BITS(translate(curve, c.closed, c.from, c.forward), c.to);
}

TEST(PositionMaps, CompositesWalkUntilAMapFails) {
  MapHandle const reversal = constructReversePositionMap(2);
  MapHandle const one = constructSingletonPositionMap(Position(0, 0.5), curveOf(5, 0));
  expectRows(constructCompositePositionMap(reversal, one),
             {{{1, 0.5}, 0, {5, 0.0}},
              {{0, 0.5}, -1, {1, 0.5}},  // what the reversal stored is left
              {{3, 0.0}, -1, {0, 0.0}}},
             {{{5, 0.0}, 0, {1, 0.5}}, {{1, 0.5}, -1, kUntouched}});
  expectRows(constructCompositePositionMap(reversal, MapHandle()), {{{1, 0.5}, -1, {0, 0.5}}},
             {{{1, 0.5}, -1, kUntouched}});
  expectRows(constructCompositePositionMap({}), {{{1, 0.5}, 0, kUntouched}},
             {{{1, 0.5}, 0, kUntouched}});
  expectRows(constructCompositePositionMap({reversal, constructIdentityPositionMap(), reversal}),
             {{{1, 0.25}, 0, {1, 0.25}}}, {{{1, 0.25}, 0, {1, 0.25}}});
}

TEST(PositionMaps, TransformMapsAListEvenIntoItself) {
  MapHandle const map = constructReversePositionMap(2);
  std::list<Position> positions;
  EXPECT_EQ(map->transform({}, positions, positions), 0);
  positions = {Position(9, 0.0), Position(0, 0.25)};
  EXPECT_EQ(map->transform({}, positions, positions), -1);
  std::list<Position> const expected = {Position(9, 0.0), Position(0, 0.25), Position(0, 0.0),
                                        Position(1, 0.75)};
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
    EXPECT_FALSE(map < copy || map > copy);
    EXPECT_EQ(map.detach(), nullptr);
    copy = map = constructIdentityPositionMap();
    EXPECT_TRUE(copy.isValid());
  }
}

TEST(PositionMaps, AnyNumbersGiveAnAnswer) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  double const inf = std::numeric_limits<double>::infinity();
  int const far = std::numeric_limits<int>::max();
  std::vector<Position> const odd = {
      Position(),         Position(0, nan),      Position(1, nan),        Position(1, -inf),
      Position(1, 0.5),   Position(far, 0x1p52), Position(-far, -0x1p52), rawPosition(far, 1.0),
      Position(-far, 0.5)};
  std::vector<MapHandle> maps;
  for (int const n : {0, 3, -3, far, -far - 1}) {
    maps.push_back(constructReversePositionMap(n));
    maps.push_back(constructRotatePositionMap(1, far, n));
    maps.push_back(constructRotatePositionMap(1, -far - 1, n));
  }
  for (int const closed : {0, 1}) {
    static GxBezierCurve curves[] = {curveOf(3, 0), curveOf(3, 1)};
    for (Position const& a : odd) {
      for (Position const& b : odd) {
        for (int const base : {0, far, -far - 1}) {
          for (int const forward : {0, 1}) {
            maps.push_back(
                constructRangePositionMap(curves[closed], closed, base, forward, a, b, b));
          }
        }
      }
    }
  }
  for (MapHandle const& map : maps) {
    for (Position const& p : odd) {
      EXPECT_LE(support::forth(map, p).code, 0);
      EXPECT_LE(support::back(map, p).code, 0);
    }
  }
}

}  // namespace
