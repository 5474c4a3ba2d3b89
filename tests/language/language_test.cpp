// The behaviour of values and containers that C++ programs expect.
#include "crv/crv.h"
#include "crv/io.h"
#include "tests/support/data.h"

#include <memory>
#include <set>
#include <sstream>
#include <type_traits>
#include <unordered_set>

#include <gtest/gtest.h>

namespace {

using namespace support;

template <class T>
constexpr bool movesWithoutThrowing = std::is_nothrow_move_constructible_v<T>&&
    std::is_nothrow_move_assignable_v<T>&& std::is_nothrow_swappable_v<T>;
static_assert(movesWithoutThrowing<GxList<double>> && movesWithoutThrowing<GxBezierCurve> &&
              movesWithoutThrowing<crv::Map>);

// A program's own operators are preferred to the library's.
struct Marked {};
[[maybe_unused]] Marked operator/(GxVector<double> const&, double) { return {}; }
static_assert(std::is_same_v<decltype(Vector() / 2.0), Marked>);

TEST(Language, PointsAndVectorsCalculate) {
  Point p(5, 7);
  Vector v(2, 4);
  EXPECT_EQ(p - v, Point(3, 3));
  EXPECT_EQ(2 * v, Vector(4, 8));
  EXPECT_NE(v, Vector(2, 5));
  EXPECT_EQ(p -= v, Point(3, 3));
  EXPECT_EQ(v -= Vector(1, 1), Vector(1, 3));
  EXPECT_EQ(v *= 3, Vector(3, 9));
  EXPECT_EQ(v /= 3, Vector(1, 3));
  auto const [x, y] = p;
  auto const [dx, dy] = v;
  auto const [segment, t] = Position(4, 0.5);
  EXPECT_EQ(x + y + dx + dy, 10);
  EXPECT_EQ(static_cast<double>(segment) + t, 4.5);
}

TEST(Language, ListsAreMadeOfWhatHoldsElementsAndBack) {
  GxList<double> const list{1, 2, 3};
  EXPECT_EQ(list.toVector(), (std::vector<double>{1, 2, 3}));
  std::set<double> const sorted{3, 1, 2};
  EXPECT_EQ(GxList<double>(sorted.begin(), sorted.end()), list);
  EXPECT_EQ(GxList<double>(list.toVector()), list);
  EXPECT_EQ(list(4), 2);
  EXPECT_EQ(GxList<double>{}.length(), 0u);
}

TEST(Language, MovesTakeElementsOverAndLeaveNothing) {
  GxList<double> list{1, 2, 3};
  list.moveTo(2);
  double const* const element = &list[1];
  list.moveTo(2);
  GxList<double> moved(std::move(list));
  EXPECT_EQ(moved.curElement(), 1) << "as a copy's, the cursor is at the first";
  EXPECT_EQ(&moved[1], element);
  EXPECT_EQ(list.length(), 0u);
  list.add(9);
  list = std::move(moved);
  EXPECT_EQ(&list[1], element);
  GxList<double>& same = list;
  list = std::move(same);
  EXPECT_EQ(list, (GxList<double>{1, 2, 3}));
  swap(list, moved);
  EXPECT_EQ(moved.length() + 10 * list.length(), 3u);

  GxBezierCurve curve{bezier(0, 0, 1, 0, 2, 0, 3, 0)}, other;
  curve.setStrictIsClosed(1);
  GxBezier const* const segment = &curve[0];
  swap(curve, other);
  GxBezierCurve taken(std::move(other));
  EXPECT_EQ(&taken[0], segment);
  EXPECT_EQ(taken.strictIsClosed() + 2 * other.strictIsClosed() + curve.strictIsClosed(), 1);
  other = std::move(taken);
  EXPECT_EQ(&other[0], segment);
  EXPECT_EQ(taken.length(), 0u);

  crv::Map map = constructIdentityPositionMap(), shared = map;
  crv::Map into(std::move(map));
  EXPECT_TRUE(into && !map && into == shared);
  shared = crv::Map();
  shared = std::move(into);
  EXPECT_TRUE(shared && !into);
  std::unique_ptr<GxBezierCurvePositionMapBase> const released(shared.detach());
  EXPECT_NE(released, nullptr) << "no share was left behind";
}

/// A list whose third copy throws stays as it was.
TEST(Language, AListSurvivesACopyThatThrowsWhileAnElementMoves) {
  struct Fragile {
    explicit Fragile(int given) : value(given) {}
    Fragile(Fragile const& other) : value(other.value) {
      if (other.isBrittle) throw std::runtime_error("copied");
    }
    int value;
    bool isBrittle = false;
  };
  GxList<Fragile> list;
  for (int const i : {0, 1, 2}) list.add(Fragile(i));
  list[2].isBrittle = true;
  EXPECT_THROW(list.move(2, 0), std::runtime_error);
  int sum = 0;
  for (Fragile const& f : list) sum = 10 * sum + f.value;
  EXPECT_EQ(sum, 12);
}

TEST(Language, ConstCurvesAnswerQueries) {
  GxBezierCurve const curve(
      std::vector<GxBezier>{bezier(0, 0, 1, 0, 2, 0, 3, 0), bezier(3, 0, 4, 0, 5, 0, 6, 0)});
  double x = 0, y = 0, maxX = 0, maxY = 0, t = 0, reach = 0;
  curve.getBoundingBox(x, y, maxX, maxY);
  for (GxBezier const& segment : curve) reach += segment(3).xval();
  EXPECT_EQ(reach, 9);
  EXPECT_EQ(curve.getSegments().length(), 2u);
  EXPECT_EQ(curve.whichSegment({4, 0}, t, 1e-9), 1);
  std::vector<Point> points;
  curve.getPolyline(0.1, points);
  Point nearest;
  EXPECT_EQ(curve.findNearestPoint({4, 1}, nearest), 1);
  GxList<Point> crossings;
  GxBezierCurve const across{bezier(1, -1, 1, 0, 1, 1, 1, 2)};
  EXPECT_EQ(curve.findIntersections(across, crossings), 1);
  EXPECT_NEAR(maxX + curve.curveLength() + points.back().xval() + nearest.xval(), 22, 1e-6);
  GxBezierCurve copy;
  crv::Map map;
  EXPECT_EQ(copyGxBezierCurve(copy, curve, {0, 0.0}, {1, 0.0}, crv::Sense::forward, map), 0);
  EXPECT_EQ(copy.length(), 1u);
  EXPECT_EQ(GxBezierCurve(points, 1.0)[0][0], points[0]);
}

TEST(Language, PositionsHashAndValuesAreWritten) {
  std::unordered_set<Position> const seen{{1, 0.5}, {1, -0.0}, {1, 0.0}, {2, 0.5}, {1, 0.5}};
  EXPECT_EQ(seen.size(), 3u);
  std::ostringstream out;
  out << Point(1, 2) << Vector(3, 4) << Position(5, 0.25)
      << GxBezierCurve{bezier(0, 0, 1, 0, 2, 0, 3, 0.5)};
  EXPECT_EQ(out.str(), "(1, 2)<3, 4>5 at 0.25open {[(0, 0) (1, 0) (2, 0) (3, 0.5)]}");
}

}  // namespace
