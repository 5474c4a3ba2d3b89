// Memory that runs out: every operation that allocates is run with its first allocation failing,
// then its second, and so on until it ends without one that fails.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <list>
#include <new>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// What the operators below count; the property tests run in one thread.
struct Memory {
  long live = 0;           // blocks not yet freed
  long untilFailure = -1;  // allocations still granted; negative: all of them
  bool failed = false;
  std::array<void*, 64> granted{};  // the last blocks granted while failing was armed
  std::size_t grants = 0;

  void* allocate(std::size_t size) {
    if (untilFailure == 0) {
      failed = true;
      return nullptr;
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
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

void* operator new(std::size_t size) { return theMemory.allocateOrThrow(size); }
void* operator new[](std::size_t size) { return theMemory.allocateOrThrow(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return theMemory.allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return theMemory.allocate(size);
}
void operator delete(void* block) noexcept { theMemory.free(block); }
void operator delete[](void* block) noexcept { theMemory.free(block); }
void operator delete(void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }

namespace {

using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;
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

template <class T>
unsigned walkedLength(GxList<T> const& list) {
  unsigned n = 0;
  if (list.first()) {
    for (++n; list.next(); ++n) {
    }
  }
  unsigned back = 0;
  if (list.first()) {
    for (++back; list.prev(); ++back) {
    }
  }
  return n == back ? n : ~0u;
}

/// What operations work on. Every list holds something before.
struct World {
  GxBezierCurve curve;
  GxBezierCurve other;
  GxList<Point> stroke;
  GxList<Point> points;
  GxList<double> numbers;
  GxList<double> moreNumbers;
  GxList<GxBezier> segments;
  std::list<Point> chain;
  std::list<double> parameters;
  std::list<Position> positions;
  std::vector<Point> row;
  MapHandle map;
  MapHandle secondMap;
  std::list<MapHandle> maps;

  World() {
    curve = support::curveOf({support::sShape(), support::evenLine(100, 100, 160, 90),
                              support::bezier(160, 90, 150, 10, 60, -90, 4, 2)});
    other = support::curveOf({support::loop(), support::bezier(100, 0, 140, 60, 20, 80, 0, 40)});
    for (int i = 0; i < 12; ++i) stroke.add(Point(i * 9.0, (i * i * 7) % 31));
    points.add(Point(1, 2));
    numbers.add(3.0);
    moreNumbers.add(4.0);
    segments.add(support::loop());
    segments.add(support::sShape());
    chain = {Point(5, 6), Point(5, 7)};  // some operations take off the last point
    parameters = {0.5, 0.6};
    positions = {Position(1, 0.5), Position(1, 0.6)};
    row = {Point(7, 8), Point(7, 9)};
    map = constructIdentityPositionMap();
    maps = {map, constructReversePositionMap(3)};
  }

  /// Every list can be walked, and still starts with what it held.
  void expectWhole() const {
    EXPECT_EQ(walkedLength(points), points.length());
    EXPECT_EQ(walkedLength(numbers), numbers.length());
    EXPECT_EQ(walkedLength(moreNumbers), moreNumbers.length());
    EXPECT_EQ(walkedLength(segments), segments.length());
    ASSERT_TRUE(points.length() && numbers.length() && moreNumbers.length() &&
                segments.length() >= 2);
    EXPECT_EQ(points[0], Point(1, 2));
    EXPECT_EQ(numbers[0], 3.0);
    EXPECT_EQ(moreNumbers[0], 4.0);
    EXPECT_EQ(segments[0], support::loop());
    ASSERT_FALSE(chain.empty() || row.empty() || parameters.empty() || positions.empty());
    EXPECT_EQ(chain.front(), Point(5, 6));
    EXPECT_EQ(row.front(), Point(7, 8));
    EXPECT_EQ(parameters.front(), 0.5);
    EXPECT_EQ(positions.front(), Position(1, 0.5));
  }

  bool hasCurvesOf(World const& w) const {
    return curve == w.curve && curve.strictIsClosed() == w.curve.strictIsClosed() &&
           other == w.other && other.strictIsClosed() == w.other.strictIsClosed();
  }
};

GxBezierCurve overlapping(double gap) {
  return support::curveOf({support::bezier(0, 0, 30, 60, 70, 60, 100, 0),
                           support::bezier(100, 0, 80, -70, 30, -60, gap, gap)});
}

struct Operation {
  char const* name;
  void (*run)(World&);
};

Operation const kOperations[] = {
    {"list add", [](World& w) { w.numbers.add(1.0); }},
    {"list insert", [](World& w) { w.segments.insert(support::loop(), 1); }},
    {"list copy", [](World& w) { GxList<GxBezier> const copy(w.segments); }},
    {"list assign", [](World& w) { w.curve.getSegments() = w.segments; }},
    {"list move", [](World& w) { w.curve.getSegments().move(0, 2); }},
    {"curve copy", [](World& w) { GxBezierCurve const copy(w.curve); }},
    {"curve assign", [](World& w) { w.curve = w.other; }},
    {"set segments", [](World& w) { w.curve.setSegments(w.segments); }},
    {"fit", [](World& w) { w.curve.makeBezierPolyFit(&w.stroke, 0.5); }},
    {"fit anew", [](World& w) { w.curve = GxBezierCurve(&w.stroke, 0.5); }},
    {"steps", [](World& w) { w.curve[0].makeSegment(6, w.chain); }},
    {"chords", [](World& w) { w.curve[0].makeSegment(30.0, w.points, 0.0); }},
    {"adaptive chords", [](World& w) { w.curve[0].makeSegmentEx(30, 10, 2, w.points, 0.0); }},
    {"halving", [](World& w) { w.curve[0].getPolyline(2.0, w.chain); }},
    {"halving to a vector", [](World& w) { w.curve[0].getPolyline(2.0, w.row); }},
    {"halving by a condition",
     [](World& w) {
       w.curve[0].getPolyline(2.0, w.chain, w.parameters, GxBezierPolylineCondition());
     }},
    {"curve chords", [](World& w) { w.curve.makeCurve(30.0, w.points, 0); }},
    {"curve chords, other mode", [](World& w) { w.curve.makeCurve(30.0, w.points, 1); }},
    {"curve adaptive chords", [](World& w) { w.curve.makeCurveEx(30.0, 10.0, 2.0, w.points); }},
    {"curve steps", [](World& w) { w.curve.makeSegments(3, w.chain); }},
    {"curve halving",
     [](World& w) {
       std::list<Point> out;
       w.curve.getPolyline(2.0, out);
     }},
    {"curve halving to a vector",
     [](World& w) {
       std::vector<Point> out;
       w.curve.getPolyline(2.0, out);
     }},
    {"curve halving by a condition",
     [](World& w) {
       std::list<Point> out;
       std::list<Position> at;
       w.curve.getPolyline(2.0, out, at, GxBezierPolylineCondition());
     }},
    {"crossings", [](World& w) { w.curve[0].findIntersections(w.other[0], w.points); }},
    {"crossing parameters",
     [](World& w) { w.curve[0].findIntersections(w.other[0], w.numbers, w.moreNumbers); }},
    {"do they cross", [](World& w) { w.curve[0].isIntersect(w.other[0]); }},
    {"first crossing",
     [](World& w) {
       std::pair<double, double> at;
       w.curve[0].findFirstIntersection(w.other[0], at, 2.0);
     }},
    {"closest points",
     [](World& w) {
       double t1 = 0.0;
       double t2 = 0.0;
       w.curve[0].findClosestPoints(w.other[0], t1, t2);
     }},
    {"line crossings",
     [](World& w) {
       w.curve[0].findYCStrongIntersection(Point(0, 50), Point(100, 50), w.numbers, w.moreNumbers);
     }},
    {"line along a line",
     [](World& w) {
       w.curve[1].linearProcessing(Point(100, 100), Point(160, 90), w.numbers, w.moreNumbers);
     }},
    {"roots", [](World& w) { w.curve[0].findRoots(w.numbers, 50.0, 0.0, 1.0); }},
    {"root points", [](World& w) { w.curve[0].findRoots(w.points, 50.0, 0.0, 1.0); }},
    {"extremes", [](World& w) { w.curve[0].getYMinMaxTValues(w.numbers); }},
    {"parameter of a point",
     [](World& w) {
       double t = 0.0;
       w.curve[0].findTValue(Point(50, 50), t, 1.0);
     }},
    {"loop", [](World& w) { w.other[0].cleanSelfIntersection(w.segments); }},
    {"curve crossings", [](World& w) { w.curve.findIntersections(w.other, w.points); }},
    {"curve distance", [](World& w) { w.curve.getMinSqDistance(w.other); }},
    {"first line crossing",
     [](World& w) {
       Position result;
       w.curve.findFirstGeometricLineIntersection(Point(0, 50), GxVector<double>(1, 0),
                                                  w.curve.firstPos(), w.curve.lastPos(), result,
                                                  1e-6);
     }},
    {"nearest",
     [](World& w) {
       Position at;
       w.curve.findNearestPointPos(Point(50, 40), at);
     }},
    {"extend",
     [](World& w) {
       Point out;
       w.curve.extendLine(out, 300.0, 1e-6);
       w.curve.wellDefinedDetection(10.0, 90.0);
     }},
    {"orientation", [](World& w) { w.curve.changeOrientation(0); }},
    {"other orientation", [](World& w) { w.curve.changeOrientation(1); }},
    {"reverse", [](World& w) { w.curve.reverse(); }},
    {"close", [](World& w) { w.curve.makeClosedCurve(); }},
    {"close nicely", [](World& w) { w.curve.makeNiceClosedCurve(); }},
    {"offset", [](World& w) { w.curve.offset(8.0, 1, 0); }},
    {"cut and offset", [](World& w) { w.curve.offset(8.0, 0, 1); }},
    {"cut", [](World& w) { w.curve.offset(8.0, 1, 2); }},
    {"identity map", [](World& w) { w.map = constructIdentityPositionMap(); }},
    {"reverse map", [](World& w) { w.map = constructReversePositionMap(3); }},
    {"rotate map", [](World& w) { w.map = constructRotatePositionMap(1, 1, 3); }},
    {"singleton map",
     [](World& w) { w.map = constructSingletonPositionMap(Position(1, 0.5), w.curve); }},
    {"range map",
     [](World& w) {
       w.map = constructRangePositionMap(w.curve, 0, 1, 1, Position(0, 0.5), Position(2, 0.5),
                                         w.curve.lastPos());
     }},
    {"range map across the seam",
     [](World& w) {
       w.map = constructRangePositionMap(w.curve, 1, 1, 1, Position(2, 0.5), Position(0, 0.5),
                                         w.curve.lastPos());
     }},
    {"composite map", [](World& w) { w.map = constructCompositePositionMap(w.map, w.map); }},
    {"composite map of a list", [](World& w) { w.map = constructCompositePositionMap(w.maps); }},
    {"detach",
     [](World& w) {
       w.maps.clear();
       delete w.map.detach();
     }},
    {"transform", [](World& w) { w.map->transform({}, w.positions, w.positions); }},
    {"copy edit",
     [](World& w) {
       copyGxBezierCurve(w.other, w.curve, Position(0, 0.5), Position(2, 0.5), 1, w.map);
     }},
    {"copy edit backwards",
     [](World& w) {
       copyGxBezierCurve(w.other, w.curve, Position(2, 0.5), Position(0, 0.5), 0, w.map);
     }},
    {"copy edit onto itself",
     [](World& w) {
       copyGxBezierCurve(w.curve, w.curve, Position(2, 0.5), Position(0, 0.5), 1, w.map);
     }},
    {"reverse edit", [](World& w) { reverseGxBezierCurve(w.curve, w.map); }},
    {"split edit",
     [](World& w) { spliteGxBezierCurve(Position(1, 0.5), w.curve, w.other, w.map, w.secondMap); }},
    {"split edit, third segment",
     [](World& w) { spliteGxBezierCurve(Position(2, 0.5), w.curve, w.other, w.map, w.secondMap); }},
    {"split edit at the start",
     [](World& w) {
       spliteGxBezierCurve(w.curve.firstPos(), w.curve, w.other, w.map, w.secondMap);
     }},
    {"split edit at the end",
     [](World& w) {
       spliteGxBezierCurve(w.curve.lastPos(), w.curve, w.other, w.map, w.secondMap);
     }},
    {"turn an open curve",
     [](World& w) { arrangeBezierCurve(w.curve, Position(2, 0.5), Position(0, 0.5)); }},
};

TEST(Allocation, WhatFailsChangesNothingAndLeaksNothing) {
  for (Operation const& operation : kOperations) {
    SCOPED_TRACE(operation.name);
    World const before;
    World whole;
    operation.run(whole);
    bool failed = true;
    for (long n = 0; failed && !HasFailure(); ++n) {
      long const live = theMemory.live;
      {
        World w;
        MapHandle const oldMap = w.map;
        bool const threw = runsOut([&] { operation.run(w); }, n);
        failed = theMemory.failed;
        EXPECT_TRUE(failed || !threw);
        w.expectWhole();
        if (threw) {
          EXPECT_TRUE(w.hasCurvesOf(before)) << "allocation " << n;
          EXPECT_TRUE(w.map == oldMap) << "allocation " << n;
          operation.run(w);
        }
        EXPECT_TRUE(w.hasCurvesOf(whole)) << "allocation " << n;
        EXPECT_EQ(walkedLength(w.curve.getSegments()), w.curve.length());
        EXPECT_EQ(walkedLength(w.other.getSegments()), w.other.length());
      }
      EXPECT_EQ(theMemory.live, live) << "allocation " << n;
    }
  }
}

TEST(Allocation, EveryWayOfClosingChangesNothingWhenItFails) {
  for (double const gap : {0.0, 4.0, 9.0, 10.5, 12.0, 13.0, 60.0}) {
    for (int turn = 0; turn < 2; ++turn) {
      GxBezierCurve before = overlapping(gap);
      if (turn) before.reverse();
      GxBezierCurve curve(before);
      if (!runsOut([&] { curve.makeNiceClosedCurve(); }, 0)) continue;
      EXPECT_TRUE(curve == before) << gap;
      EXPECT_EQ(curve.strictIsClosed(), 0) << gap;
    }
  }
}

TEST(Allocation, TurningAnOutlineLosesNoPartOfIt) {
  GxBezierCurve const outline = support::outline("roman-g-outer");
  Position const a(3, 0.5);
  Position const b(1, 0.4);
  GxBezierCurve whole(outline);
  arrangeBezierCurve(whole, a, b);
  bool failed = true;
  for (long n = 0; failed; ++n) {
    GxBezierCurve curve(outline);
    runsOut([&] { arrangeBezierCurve(curve, a, b); }, n);
    failed = theMemory.failed;
    EXPECT_NEAR(curve.curveLength(), whole.curveLength(), 1e-4 * whole.curveLength());
  }
}

TEST(Allocation, ABlendTableThatRunsOutIsNull) {
  constexpr unsigned short kSteps = 9;
  for (long n = 0; n <= kSteps + 1; ++n) {
    long const live = theMemory.live;
    double** table = nullptr;
    runsOut([&] { table = initBlendArray(kSteps); }, n);
    EXPECT_TRUE(theMemory.failed);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(theMemory.live - live, n) << "the table and the rows made so far";
    for (std::size_t i = 0; i < theMemory.grants; ++i) theMemory.free(theMemory.granted[i]);
  }
}

TEST(Allocation, AMapWithoutMemoryIsANullHandle) {
  for (long n = 0; n < 2; ++n) {
    MapHandle map;
    EXPECT_FALSE(runsOut([&] { map = constructReversePositionMap(3); }, n));
    EXPECT_TRUE(theMemory.failed);
    EXPECT_TRUE(map.isNull());
    GxBezierCurve curve = overlapping(9.0);
    GxBezierCurve reversed(curve);
    reversed.reverse();
    EXPECT_FALSE(
        runsOut([&] { reverseGxBezierCurve(curve, map); }, n + static_cast<long>(curve.length())));
    EXPECT_TRUE(map.isNull() && curve == reversed) << "edited all the same";
  }
}

}  // namespace
