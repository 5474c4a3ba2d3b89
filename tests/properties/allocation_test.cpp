// Memory that runs out: every operation that allocates is run with its first allocation failing,
// then its second, and so on until it ends without one that fails.
#include "crv/crv.h"
#include "tests/support/data.h"

#include <array>
#include <cstdlib>
#include <list>
#include <new>

namespace {

/// What the operators below count; the property tests run in one thread.
struct Memory {
  long live = 0;           // blocks not yet freed
  long untilFailure = -1;  // allocations still granted; negative: all of them
  bool failed = false;
  std::array<void*, 64> granted{};  // the last blocks granted while failing was armed
  std::size_t grants = 0;

  // Not inlined: beside a delete-expression, gcc takes malloc for a mistake.
  [[gnu::noinline]] void* allocate(std::size_t size) {
    failed = failed || untilFailure == 0;
    void* const block = untilFailure == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) return nullptr;
    ++live;
    if (untilFailure > 0) {
      --untilFailure;
      granted[grants++ % granted.size()] = block;
    }
    return block;
  }
  void* allocateOrThrow(std::size_t size) {
    if (void* const block = allocate(size)) return block;
    throw std::bad_alloc();
  }
  void free(void* block) {
    if (block != nullptr) --live;
    std::free(block);
  }
};

Memory theMemory;

}  // namespace

void* operator new(std::size_t n) { return theMemory.allocateOrThrow(n); }
void* operator new[](std::size_t n) { return theMemory.allocateOrThrow(n); }
void* operator new(std::size_t n, std::nothrow_t const&) noexcept { return theMemory.allocate(n); }
void* operator new[](std::size_t n, std::nothrow_t const& t) noexcept { return operator new(n, t); }
void operator delete(void* block) noexcept { theMemory.free(block); }
void operator delete[](void* block) noexcept { theMemory.free(block); }
void operator delete(void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }

namespace {

using namespace support;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

/// Lets an operation fail in its n-th allocation, n from 0; true when it threw std::bad_alloc.
template <class Operation>
bool runsOut(Operation const& operation, long n) {
  bool threw = false;
  theMemory.failed = false;
  theMemory.grants = 0;
  theMemory.untilFailure = n;
  try {
    operation();
  } catch (std::bad_alloc const&) {
    threw = true;
  }
  theMemory.untilFailure = -1;
  return threw;
}

/// Whether a list can be walked both ways, and starts with what it held.
template <class T>
bool isWhole(GxList<T> const& list, T const& head) {
  unsigned there = 0, back = 0;
  for (int more = list.first(); more != 0; more = list.next()) ++there;
  for (int more = list.first(); more != 0; more = list.prev()) ++back;
  return there == list.length() && back == there && there != 0 && list[0] == head;
}

/// What operations work on. Every list of results holds something before.
struct World {
  GxBezierCurve curve =
      curveOf({sShape(), evenLine(100, 100, 160, 90), bezier(160, 90, 150, 10, 60, -90, 4, 2)});
  GxBezierCurve other = curveOf({loop(), bezier(100, 0, 140, 60, 20, 80, -9, 40)});
  GxList<Point> stroke, points = listOf<Point>({{1, 2}});
  GxList<double> numbers = listOf<double>({3.0}), more = listOf<double>({4.0});
  GxList<GxBezier> segments = listOf<GxBezier>({loop(), sShape()});
  std::list<Point> chain{Point(5, 6), Point(5, 7)};  // some operations take off the last point
  std::list<double> parameters{0.5, 0.6};
  std::list<Position> positions{Position(1, 0.5), Position(1, 0.6)};
  std::vector<Point> row{Point(7, 8), Point(7, 9)};
  MapHandle map = constructIdentityPositionMap(), secondMap;
  std::list<MapHandle> maps{map, constructReversePositionMap(3)};

  World() {
    for (int i = 0; i < 12; ++i) stroke.add(Point(i * 9.0, (i * i * 7) % 31));
  }

  bool isWholeStill() const {
    return isWhole(points, Point(1, 2)) && isWhole(numbers, 3.0) && isWhole(more, 4.0) &&
           isWhole(segments, loop()) && chain.front() == Point(5, 6) && parameters.front() == 0.5 &&
           positions.front() == Position(1, 0.5) && row.front() == Point(7, 8);
  }

  bool hasCurvesOf(World& w) {
    return curve == w.curve && curve.strictIsClosed() == w.curve.strictIsClosed() &&
           other == w.other && other.strictIsClosed() == w.other.strictIsClosed() &&
           isWhole(curve.getSegments(), w.curve[0]) && isWhole(other.getSegments(), w.other[0]);
  }
};

Position const kA(0, 0.5), kB(1, 0.5), kC(2, 0.5);
Point const kLeft(0, 50), kRight(100, 50);
GxBezierPolylineCondition const kCondition;

/// A call as it is written, and to be run.
using Operation = std::pair<char const*, void (*)(World&)>;
#define OPERATION(...) \
  std::make_pair(      \
      #__VA_ARGS__, +[](World& w) { __VA_ARGS__; })

Operation const kOperations[] = {
    OPERATION(w.numbers.add(1.0)),
    OPERATION(w.segments.insert(loop(), 1)),
    OPERATION(GxList<GxBezier> const copy(w.segments)),
    OPERATION(w.curve.getSegments() = w.segments),
    OPERATION(w.curve.getSegments().move(0, 2)),
    OPERATION(GxBezierCurve const copy(w.curve)),
    OPERATION(w.curve = w.other),
    OPERATION(w.curve.setSegments(w.segments)),
    OPERATION(w.curve.makeBezierPolyFit(&w.stroke, 0.5)),
    OPERATION(w.curve = GxBezierCurve(&w.stroke, 0.5)),
    OPERATION(w.curve[0].makeSegment(6, w.chain)),
    OPERATION(w.curve[0].makeSegment(30.0, w.points, 0.0)),
    OPERATION(w.curve[0].makeSegmentEx(30, 10, 2, w.points, 0.0)),
    OPERATION(w.curve[0].getPolyline(2.0, w.chain), w.curve[0].getPolyline(2.0, w.row)),
    OPERATION(w.curve[0].getPolyline(2.0, w.chain, w.parameters, kCondition)),
    OPERATION(w.curve.makeCurve(30.0, w.points, 0), w.curve.makeCurve(30.0, w.points, 1)),
    OPERATION(w.curve.makeCurveEx(30.0, 10.0, 2.0, w.points)),
    OPERATION(w.curve.makeSegments(3, w.chain)),
    OPERATION(std::list<Point> chain; std::vector<Point> row; w.curve.getPolyline(2.0, chain);
              w.curve.getPolyline(2.0, row)),
    OPERATION(std::list<Point> chain; std::list<Position> at;
              w.curve.getPolyline(2.0, chain, at, kCondition)),
    OPERATION(w.curve[0].findIntersections(w.other[0], w.points)),
    OPERATION(w.curve[0].findIntersections(w.other[0], w.numbers, w.more)),
    OPERATION(std::pair<double, double> t; w.curve[0].findFirstIntersection(w.other[0], t, 2.0)),
    OPERATION(w.curve[0].findYCStrongIntersection(kLeft, kRight, w.numbers, w.more)),
    OPERATION(w.curve[1].linearProcessing({100, 100}, {160, 90}, w.numbers, w.more)),
    OPERATION(w.curve[0].findRoots(w.numbers, 50.0, 0.0, 1.0)),
    OPERATION(w.curve[0].findRoots(w.points, 50.0, 0.0, 1.0)),
    OPERATION(w.curve[0].getYMinMaxTValues(w.numbers)),
    OPERATION(double t, y; w.curve[0].getMaxYTValue(t, y), w.curve[0].getMinYTValue(t, y)),
    OPERATION(w.other[0].cleanSelfIntersection(w.segments)),
    OPERATION(w.curve.findIntersections(w.other, w.points)),
    OPERATION(double t; int k; w.curve.getCurveMaxY(t, k), w.curve.getCurveMinY(t, k)),
    OPERATION(w.other.wellDefinedDetection(10.0, 90.0)),
    OPERATION(w.curve.changeOrientation(0)),
    OPERATION(w.curve.changeOrientation(1)),
    OPERATION(w.curve.reverse()),
    OPERATION(w.curve.makeClosedCurve()),
    OPERATION(w.curve.makeNiceClosedCurve()),
    OPERATION(w.curve.offset(8.0, 1, 0)),
    OPERATION(w.curve.offset(8.0, 0, 1)),
    OPERATION(w.curve.offset(8.0, 1, 2)),
    OPERATION(w.map = constructCompositePositionMap(w.map, w.map)),
    OPERATION(w.map = constructCompositePositionMap(w.maps)),
    OPERATION(w.map->transform({}, w.positions, w.positions)),
    OPERATION(copyGxBezierCurve(w.other, w.curve, kA, kC, 1, w.map)),
    OPERATION(copyGxBezierCurve(w.other, w.curve, kC, kA, 0, w.map)),
    OPERATION(copyGxBezierCurve(w.curve, w.curve, kC, kA, 1, w.map)),
    OPERATION(reverseGxBezierCurve(w.curve, w.map)),
    OPERATION(spliteGxBezierCurve(kB, w.curve, w.other, w.map, w.secondMap)),
    OPERATION(spliteGxBezierCurve(kC, w.curve, w.other, w.map, w.secondMap)),
    OPERATION(spliteGxBezierCurve({0, 0.0}, w.curve, w.other, w.map, w.secondMap)),
    OPERATION(spliteGxBezierCurve({3, 0.0}, w.curve, w.other, w.map, w.secondMap)),
    OPERATION(arrangeBezierCurve(w.curve, kC, kA)),
};

TEST(Allocation, WhatFailsChangesNothingAndLeaksNothing) {
  for (Operation const& operation : kOperations) {
    World before, whole;
    operation.second(whole);
    bool failed = true;
    for (long n = 0; failed && !HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message() << operation.first << ", allocation " << n);
      long const live = theMemory.live;
      {
        World w;
        MapHandle const oldMap = w.map;
        bool const threw = runsOut([&] { operation.second(w); }, n);
        failed = theMemory.failed;
        EXPECT_TRUE(n > 0 ? failed || !threw : failed) << "nothing allocated";
        EXPECT_TRUE(w.isWholeStill());
        if (threw) {
          EXPECT_TRUE(w.hasCurvesOf(before) && w.map == oldMap);
          operation.second(w);
        }
        EXPECT_TRUE(w.hasCurvesOf(whole));
      }
      EXPECT_EQ(theMemory.live, live);
    }
  }
}

TEST(Allocation, EveryWayOfClosingChangesNothingWhenItFails) {
  for (Row const row : table("14.2 14.2; 9.9 14.2; 14.2 9.9; 12 12")) {
    GxBezierCurve const before =
        polygon({0, 0, 100, 0, row[0], 80, row[0], -row[1]});  // crosses itself
    GxBezierCurve curve(before);
    EXPECT_TRUE(runsOut([&] { curve.makeNiceClosedCurve(); }, 0));
    EXPECT_TRUE(curve == before && curve.strictIsClosed() == 0) << row[0];
  }
}

TEST(Allocation, TurningAnOutlineLosesNoPartOfIt) {
  GxBezierCurve const letter = outline("roman-g-outer");
  double const length = GxBezierCurve(letter).curveLength();
  bool failed = true;
  for (long n = 0; failed; ++n) {
    GxBezierCurve curve(letter);
    runsOut([&] { arrangeBezierCurve(curve, Position(3, 0.5), Position(1, 0.4)); }, n);
    failed = theMemory.failed;
    EXPECT_NEAR(curve.curveLength(), length, 1e-4 * length);
  }
}

TEST(Allocation, ABlendTableThatRunsOutIsNull) {
  constexpr unsigned short kSteps = 9;
  for (long n = 0; n <= kSteps + 1; ++n) {
    long const live = theMemory.live;
    double** table = nullptr;
    EXPECT_FALSE(runsOut([&] { table = initBlendArray(kSteps); }, n));
    EXPECT_TRUE(theMemory.failed && table == nullptr);
    EXPECT_EQ(theMemory.live - live, n) << "the table and the rows made so far";
    for (std::size_t i = 0; i < theMemory.grants; ++i) theMemory.free(theMemory.granted[i]);
  }
}

Operation const kMakersOfMaps[] = {
    OPERATION(w.map = constructIdentityPositionMap()),
    OPERATION(w.map = constructReversePositionMap(3)),
    OPERATION(w.map = constructRotatePositionMap(1, 1, 3)),
    OPERATION(w.map = constructSingletonPositionMap(kB, w.curve)),
    OPERATION(w.map = constructRangePositionMap(w.curve, 0, 1, 1, kA, kC, {3, 0.0})),
    OPERATION(w.map = constructRangePositionMap(w.curve, 1, 1, 1, kC, kA, {3, 0.0})),
    OPERATION(w.map = constructRangePositionMap(w.curve, 0, 1, 0, kC, kA, {3, 0.0})),
};

TEST(Allocation, AMapWithoutMemoryIsANullHandle) {
  for (long n = 0; n < 2; ++n) {  // no map, no counter
    long const live = theMemory.live;
    {
      World w;
      for (Operation const& make : kMakersOfMaps) {
        EXPECT_FALSE(runsOut([&] { make.second(w); }, n)) << make.first;
        EXPECT_TRUE(theMemory.failed && w.map.isNull() && MapHandle(w.map) == w.map);
      }
      GxBezierCurve reversed(w.curve);
      reversed.reverse();
      EXPECT_FALSE(runsOut([&] { reverseGxBezierCurve(w.curve, w.map); }, n + 3));
      EXPECT_TRUE(theMemory.failed && w.map.isNull() && w.curve == reversed) << "edited anyway";
    }
    EXPECT_EQ(theMemory.live, live);
  }
}

}  // namespace
