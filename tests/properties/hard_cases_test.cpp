// Inputs that other libraries hung, crashed or failed on, put through every operation that takes
// their shape: each answers in time, and with finite results.
#include "crv/crv.h"
#include "tests/support/data.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using Vector = GxVector<double>;

// Seconds for one operation; builds that are not for use are slower.
#ifdef NDEBUG
constexpr double kMostSeconds = 1.0;
#else
constexpr double kMostSeconds = 10.0;
#endif

struct Shape {
  std::string source;
  std::vector<GxBezier> a;
  std::vector<GxBezier> b;
};

std::vector<GxBezier> segmentsOf(std::vector<double> const& numbers) {
  std::vector<GxBezier> list;
  for (std::size_t i = 0; i + 8 <= numbers.size(); i += 8) {
    auto const at = numbers.begin() + static_cast<std::ptrdiff_t>(i);
    list.push_back(support::segmentOf(std::vector<double>(at, at + 8)));
  }
  return list;
}

/// Every case; a line counts as the straight segment between its ends.
std::vector<Shape> const& shapes() {
  static std::vector<Shape> const all = [] {
    std::vector<Shape> list;
    for (char const* name : {"segments", "lines", "loops", "curves"}) {
      for (support::HardCase const& c : support::hardCases(name)) {
        Shape shape{c.source, segmentsOf(c.fields[0]), segmentsOf(c.fields[1])};
        if (auto const& n = c.fields[1]; n.size() == 4) {
          shape.b = {
              GxBezier(Point(n[0], n[1]), Point(n[0], n[1]), Point(n[2], n[3]), Point(n[2], n[3]))};
        }
        list.push_back(shape);
      }
    }
    return list;
  }();
  return all;
}

template <class Operation>
void inTime(char const* name, Operation const& operation) {
  auto const start = std::chrono::steady_clock::now();
  operation();
  std::chrono::duration<double> const taken = std::chrono::steady_clock::now() - start;
  EXPECT_LT(taken.count(), kMostSeconds) << name;
}

bool isFinite(double x) { return std::isfinite(x); }
bool isFinite(Point const& p) { return isFinite(p.xval()) && isFinite(p.yval()); }
bool isFinite(Vector const& v) { return isFinite(v.xval()) && isFinite(v.yval()); }
bool isFinite(GxBezier const& s) {
  return isFinite(s[0]) && isFinite(s[1]) && isFinite(s[2]) && isFinite(s[3]);
}
template <class T>
bool isFinite(GxList<T> const& list) {
  for (unsigned i = 0; i < list.length(); ++i) {
    if (!isFinite(list[i])) return false;
  }
  return true;
}
template <class Range>
bool areFinite(Range const& points) {
  return std::all_of(points.begin(), points.end(), [](auto const& p) { return isFinite(p); });
}

bool areParameters(GxList<double> const& list) {
  for (unsigned i = 0; i < list.length(); ++i) {
    if (!(0.0 <= list[i] && list[i] <= 1.0)) return false;
  }
  return true;
}

/// The greater side of the box of a shape, at least a hair.
double sizeOf(GxBezier const& s) {
  double minX, minY, maxX, maxY;
  s.getConvexHull(minX, minY, maxX, maxY);
  return std::max({maxX - minX, maxY - minY, 1e-3});
}
void evaluateAndSplit(GxBezier const& s) {
  for (double const t : {-0.25, 0.0, 1e-12, 0.5, 1.0, 1.5}) {
    EXPECT_TRUE(isFinite(s.bValue(t)) && isFinite(s.dValue(t)) && isFinite(s.ddValue(t)));
    s.curvatureValue(t);
    GxBezier left;
    GxBezier right;
    s.split(left, right, t);
    EXPECT_TRUE(isFinite(left) && isFinite(right));
  }
}

void measure(GxBezier s, double size) {
  double t = 0.5;
  double y = 0.0;
  double box[4];
  GxList<double> extremes;
  GxList<double> roots;
  s.getYMinMaxTValues(extremes);
  EXPECT_TRUE(isFinite(extremes));
  s.getMaxYTValue(t, y);
  EXPECT_TRUE(isFinite(y));
  s.getMinYTValue(t, y);
  EXPECT_TRUE(isFinite(y));
  s.localMinMax(box[0], box[1], box[2], box[3]);
  EXPECT_TRUE(box[0] <= box[2] && box[1] <= box[3]);
  s.findRoots(roots, y, 0.0, 1.0);
  s.findRoots(roots, s.bValue(0.5).yval(), 0.0, 1.0);
  EXPECT_TRUE(areParameters(roots));
  s.findInflectionPoint(t);
  double ratio = 0.0;
  s.isWellDefined();
  for (int mode = 0; mode < 4; ++mode) s.findRatio(0.0, mode, ratio);
  EXPECT_GE(s.length(0.0), 0.0);
  double lo = 0.0;
  double hi = 1.0;
  EXPECT_TRUE(isFinite(s.splitAtFixedLengthAfter(size * 0.3, 50, lo, hi, 0.0)));
  lo = 0.0;
  hi = 1.0;
  EXPECT_TRUE(isFinite(s.splitAtFixedLengthBefore(size * 0.3, 50, lo, hi, 1.0)));
}

void findPoints(GxBezier s, double size) {
  Point const middle = s.bValue(0.5);
  for (Point const& p : {s[0], s[1], s[2], s[3], middle, middle + Vector(size, -size)}) {
    Point nearest;
    double t = -1.0;
    s.findNearestPoint(p, nearest);
    s.findNearestPointTValue(p, t);
    EXPECT_TRUE(isFinite(nearest) && 0.0 <= t && t <= 1.0);
    s.findParameter(p, 0.0, size * 1e-6);
    s.findTValue(p, t, size * 1e-6);
  }
}

void divide(GxBezier const& s, double size) {
  GxList<Point> points;
  std::list<Point> chain;
  std::vector<Point> row;
  std::list<double> parameters;
  s.makeSegment(100, chain);
  s.makeSegment(size / 100, points, 0.0);
  s.makeSegmentEx(size / 50, size / 200, size / 1000, points, 0.0);
  for (double const share : {1e-2, 1e-6}) {
    s.getPolyline(size * share, chain);
    s.getPolyline(size * share, row);
    s.getPolyline(size * share, chain, parameters, GxBezierPolylineCondition());
  }
  EXPECT_TRUE(isFinite(points) && areFinite(chain) && areFinite(row) && areFinite(parameters));
}

void step(GxBezier const& s, double size) {
  double const squared = size * size * 0.01;
  for (int const forward : {1, 0}) {
    double const start = forward ? 0.0 : 1.0;
    double t = start;
    double consumed = 0.0;
    s.findNextPos(t, start, squared, forward);
    s.findNextPos(t, start, 1.0 - start, squared, forward);
    s.findNextPos(t, start, squared, forward, consumed);
    s.findNextPos(t, start, 1.0 - start, squared, forward, consumed);
    s.findNextPosFromPoint(t, start, s[0], squared, forward);
    s.findNextPosFromPoint(t, start, 1.0 - start, s[0], squared, forward);
    EXPECT_TRUE(isFinite(t) && isFinite(consumed));
  }
}

void undoLoop(GxBezier s) {
  double t1 = 0.0;
  double t2 = 0.0;
  GxList<GxBezier> pieces;
  s.isSelfIntersect(t1, t2);
  s.cleanSelfIntersection(pieces);
  EXPECT_TRUE(isFinite(pieces) && pieces.length() >= 1);
}

TEST(HardCases, SegmentsAnswerEveryQuestion) {
  ASSERT_GE(shapes().size(), 130u);
  for (Shape const& shape : shapes()) {
    SCOPED_TRACE(shape.source);
    for (auto const* side : {&shape.a, &shape.b}) {
      for (GxBezier const& s : *side) {
        double const size = sizeOf(s);
        inTime("evaluating and splitting", [&] { evaluateAndSplit(s); });
        inTime("measuring", [&] { measure(s, size); });
        inTime("finding points", [&] { findPoints(s, size); });
        inTime("dividing", [&] { divide(s, size); });
        inTime("stepping", [&] { step(s, size); });
        inTime("undoing loops", [&] { undoLoop(s); });
      }
    }
  }
}

/// Both segments with each other, as all pairs of operations take them.
void cross(GxBezier a, GxBezier b) {
  GxList<double> aParams;
  GxList<double> bParams;
  GxList<Point> points;
  inTime("crossing", [&] { a.findIntersections(b, aParams, bParams); });
  EXPECT_EQ(aParams.length(), bParams.length());
  EXPECT_TRUE(areParameters(aParams) && areParameters(bParams));
  inTime("crossing points", [&] { a.findIntersections(b, points); });
  EXPECT_TRUE(isFinite(points));
  inTime("asking", [&] { a.isIntersect(b); });
  std::pair<double, double> first;
  inTime("first crossing", [&] { a.findFirstIntersection(b, first, sizeOf(a) * 1e-3); });
  double t1 = 0.0;
  double t2 = 0.0;
  inTime("closest points", [&] { EXPECT_TRUE(a.findClosestPoints(b, t1, t2) >= 0.0); });
  inTime("line", [&] {
    a.findYCStrongIntersection(b[0], b[3], aParams, bParams);
    a.linearProcessing(b[0], b[3], aParams, bParams);
  });
  EXPECT_EQ(aParams.length(), bParams.length());
}

TEST(HardCases, PairsOfSegmentsCross) {
  for (Shape const& shape : shapes()) {
    SCOPED_TRACE(shape.source);
    for (GxBezier const& a : shape.a) {
      for (GxBezier const& b : shape.b) {
        cross(a, b);
        cross(b, a);
      }
    }
  }
}

TEST(HardCases, PointListsAreFitted) {
  std::vector<std::pair<std::string, GxList<Point>>> strokes;
  for (support::HardCase const& c : support::hardCases("strokes")) {
    GxList<Point> points;
    for (std::size_t i = 0; i + 2 <= c.fields[0].size(); i += 2) {
      points.add(Point(c.fields[0][i], c.fields[0][i + 1]));
    }
    strokes.emplace_back(c.source, points);
  }
  ASSERT_EQ(strokes.size(), 5u);
  for (Shape const& shape : shapes()) {
    GxList<Point> polyline;
    GxList<Point> handles;
    for (GxBezier const& s : shape.a) {
      s.makeSegment(sizeOf(s) / 40, polyline, 0.0);
      for (int i = 0; i < 4; ++i) handles.add(s[i]);
    }
    strokes.emplace_back(shape.source, polyline);
    strokes.emplace_back(shape.source, handles);
  }
  for (auto const& stroke : strokes) {
    SCOPED_TRACE(stroke.first);
    for (double const error : {1e-6, 0.5, 100.0}) {
      inTime("fit", [&] {
        GxBezierCurve const curve(&stroke.second, error);
        EXPECT_EQ(curve.length() != 0, stroke.second.length() > 1);
      });
    }
  }
}

}  // namespace
