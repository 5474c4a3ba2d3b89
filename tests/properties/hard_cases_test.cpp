// Inputs that other libraries hung, crashed or failed on, put through every operation that takes
// their shape: each answers in time, with finite results that keep what is promised of them.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <list>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::MapHandle;
using support::Point;
using support::Position;
using support::valuesOf;
using Curve = GxBezierCurve;
using Points = std::vector<Point>;
using Vector = GxVector<double>;

// Seconds of processor time for a few calls; builds that are not for use are slower.
#ifdef NDEBUG
constexpr double kMostSeconds = 1.0;
#else
constexpr double kMostSeconds = 10.0;
#endif

// Beyond this size a segment crosses itself in millions of places; where the nearest point is this
// near, the search for it may end.
constexpr double kCrossesItself = 1e7;
constexpr double kNearEnough = 0.7072;

bool isFinite(double x) { return std::isfinite(x); }
bool isFinite(Point const& p) { return isFinite(p.xval()) && isFinite(p.yval()); }
bool isFinite(Vector const& v) { return isFinite(v.xval()) && isFinite(v.yval()); }
bool isFinite(GxBezier const& s) {
  return isFinite(s[0]) && isFinite(s[1]) && isFinite(s[2]) && isFinite(s[3]);
}
template <class Range>
bool areFinite(Range const& range) {
  return std::all_of(std::begin(range), std::end(range), [](auto const& x) { return isFinite(x); });
}
bool isFinite(Curve c) { return areFinite(valuesOf(c.getSegments())); }

bool isParameter(double t) { return 0.0 <= t && t <= 1.0; }
bool isOn(Curve const& c, Position const& p) {
  return c.firstPos() <= p && p <= c.lastPos() && p.getTValue() < 1.0;
}

/// The greater side of the box of the control points, at least a hair.
double sizeOf(Curve c) {
  double box[4];
  c.getBoundingBox(box[0], box[1], box[2], box[3]);
  return std::max({box[2] - box[0], box[3] - box[1], 1e-3});
}
double sizeOf(GxBezier const& s) { return sizeOf(support::curveOf({s})); }

std::vector<Position> positionsOn(Curve const& c) {
  int const n = static_cast<int>(c.length());
  return {c.firstPos(), c.lastPos(), Position(0, 0.3), Position(n / 2, 0.5), Position(n - 1, 0.9)};
}

template <class Operation>
void inTime(char const* name, Operation const& operation) {
  SCOPED_TRACE(name);
  std::clock_t const start = std::clock();
  operation();
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, kMostSeconds);
}

/// What a segment is asked alone, and not by way of a curve.
void askSegment(GxBezier s) {
  double const size = sizeOf(s);
  double t = 0.5, ratio = 0.0, lo[2] = {0.0, 0.0}, hi[2] = {1.0, 1.0}, loop[2] = {};
  GxList<double> parameters;
  GxList<GxBezier> pieces;
  for (double const u : {-0.25, 0.0, 1e-12, 0.5, 1.0, 1.5}) {
    GxBezier left, right;
    s.split(left, right, u);
    EXPECT_TRUE(isFinite(s.bValue(u)) && isFinite(s.dValue(u)) && isFinite(s.ddValue(u)));
    EXPECT_TRUE(isFinite(s.curvatureValue(u)) && isFinite(left) && isFinite(right));
    s.findParameter(s.bValue(u), 0.0, size * 1e-6);
    s.findRoots(parameters, s.bValue(u).yval(), 0.0, 1.0);
  }
  s.getYMinMaxTValues(parameters);
  for (double const u : valuesOf(parameters)) EXPECT_TRUE(isParameter(u));
  s.findInflectionPoint(t);
  s.isWellDefined();
  for (int mode = 0; mode < 4; ++mode) s.findRatio(0.0, mode, ratio);
  EXPECT_TRUE(isParameter(t) && isFinite(ratio));
  EXPECT_TRUE(isParameter(s.splitAtFixedLengthAfter(size * 0.3, 50, lo[0], hi[0], 0.0)));
  EXPECT_TRUE(isParameter(s.splitAtFixedLengthBefore(size * 0.3, 50, lo[1], hi[1], 1.0)));
  s.isSelfIntersect(loop[0], loop[1]);
  s.cleanSelfIntersection(pieces);
  EXPECT_TRUE(areFinite(valuesOf(pieces)) && pieces.length() >= 1);
}

/// Both segments with each other, as all operations on pairs take them.
void cross(GxBezier a, GxBezier b) {
  GxList<double> aParams, bParams;
  std::pair<double, double> first;
  double t[2] = {};
  inTime("crossing", [&] { a.findIntersections(b, aParams, bParams); });
  inTime("first crossing", [&] { a.findFirstIntersection(b, first, sizeOf(a) * 1e-5); });
  EXPECT_GE(a.findClosestPoints(b, t[0], t[1]), 0.0);
  a.findYCStrongIntersection(b[0], b[3], aParams, bParams);
  a.linearProcessing(b[0], b[3], aParams, bParams);
  ASSERT_EQ(aParams.length(), bParams.length());
  aParams.join(bParams);
  for (double const u : valuesOf(aParams)) EXPECT_TRUE(isParameter(u));
}

void divide(Curve c) {
  double const size = sizeOf(c);
  GxList<Point> divided;
  std::list<Point> chain;
  std::list<Position> at;
  Points row;
  for (int const mode : {0, 1}) c.makeCurve(size / 100, divided, mode);
  c.makeCurveEx(size / 50, size / 200, size / 1000, divided);
  c.makeSegments(20, chain);
  EXPECT_TRUE(areFinite(valuesOf(divided)) && areFinite(chain));
  for (double const share : {1e-2, 1e-6}) {
    c.getPolyline(size * share, row);
    c.getPolyline(size * share, chain, at, GxBezierPolylineCondition());
    EXPECT_TRUE(areFinite(row) && Points(chain.begin(), chain.end()) == row);
    EXPECT_EQ(at.size(), row.size());
    for (Position const& p : at) EXPECT_TRUE(isOn(c, p));
  }
}

void measure(Curve c, Points points) {
  double const size = sizeOf(c);
  Curve const same(c);
  double box[4], t = -1.0;
  int k = -1;
  Point low, high;
  c.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
  EXPECT_TRUE(box[0] <= box[2] && box[1] <= box[3] && c.getMinMax(low, high) == 0);
  for (auto const extreme : {&Curve::getCurveMaxY, &Curve::getCurveMinY}) {
    EXPECT_TRUE((c.*extreme)(t, k) == 0 && isOn(c, Position(k, t)));
  }
  EXPECT_GE(c.curveLength(), 0.0);
  for (int i = 0; i < static_cast<int>(c.length()); ++i) {
    points.insert(points.end(), {c[i][1], c[i][3], c[i].bValue(0.4) + Vector(0, size * 0.2)});
  }
  for (Point const& p : points) {
    Point nearest;
    Position at;
    EXPECT_TRUE(c.findNearestPoint(p, nearest) >= 0 && c.findNearestPointPos(p, at) >= 0);
    EXPECT_TRUE(isFinite(nearest) && isOn(c, at));
    EXPECT_LE(p.distance(nearest), std::max(kNearEnough, p.distance(c[0][0]) * (1 + 1e-9)));
    EXPECT_LE(c.whichSegment(p, t, size * 1e-6), static_cast<int>(c.length()));
  }
  EXPECT_EQ(same.getMinSqDistance(c), 0.0);
  for (Position const& p : positionsOn(c)) {
    Point handles[3];
    Vector v[6];
    EXPECT_EQ(c.getTriple(p, handles[0], handles[1], handles[2]), 0);
    EXPECT_EQ(c.getVelocityVectors(p, v[0], v[1]) | c.findVelocityVectors(p, v[2], v[3]), 0);
    EXPECT_EQ(c.getAccelerationVectors(p, v[4], v[5]), 0);
    EXPECT_TRUE(areFinite(handles) && areFinite(v));
  }
}

void crossLines(Curve const& c) {
  double const size = sizeOf(c);
  Point const p = c[0].bValue(0.4);
  std::vector<Position> const ends = positionsOn(c);
  for (Vector const& v : {Vector(1, 0), Vector(size, -size), Vector(0, 0)}) {
    for (unsigned i = 0; i < 25; ++i) {
      Position const &from = ends[i / 5], &to = ends[i % 5];
      Position at[3];
      int const codes[] = {
          c.findFirstGeometricLineIntersection(p, v, from, to, at[0], 1e-9),
          c.findFirstGeometricLineIntersectionEx(p, v, from, to, at[1], 1e-9),
          c.findFirstGeometricLineIntersectionWithEndpointCheck(p, v, from, to, at[2])};
      for (int k = 0; k < 3; ++k) EXPECT_EQ(codes[k], isOn(c, at[k]) ? 0 : -1);
    }
  }
  for (double const x : {p.xval(), p.xval() - size, p.xval() + size}) {
    Point out;
    EXPECT_LE(c.extendLine(out, x, 1e-9), 1);
    EXPECT_TRUE(isFinite(out) && c.wellDefinedDetection(p.xval(), x) <= 7);
  }
}

void change(Curve const& c) {
  int valid = -1;
  c.isClockwise(valid);
  EXPECT_EQ(Curve(c).changeOrientation(1), valid - 1);
  for (auto const close : {&Curve::makeClosedCurve, &Curve::makeNiceClosedCurve}) {
    Curve closed(c);
    closed.setStrictIsClosed(0);
    (closed.*close)();
    EXPECT_TRUE(closed.strictIsClosed() && isFinite(closed));
    EXPECT_NEAR_POINT(closed.locateCurvePosition(closed.lastPos()), closed[0][0], 0.1);
  }
  for (int i = 0; i < 16; ++i) {
    Curve parallel(c);
    parallel.offset(sizeOf(c) * (i < 8 ? 0.1 : 40), i % 2, i / 2 % 4);
    EXPECT_TRUE(isFinite(parallel) && parallel.length() >= c.length());
  }
}

/// Steps over a whole curve, and by every other way of walking.
void walk(Curve const& c) {
  double const step = sizeOf(c) / 20;
  for (int const forward : {1, 0}) {
    Position const start = forward ? c.firstPos() : positionsOn(c).back();
    Position const limit = forward ? c.lastPos() : c.firstPos();
    Position at = start, to;
    double consumed = 0.0;
    for (int i = 0, code = 0; i < 30 && code == 0; ++i) {
      inTime("a step", [&] { code = c.findNextPos(at, to, step, forward, 0); });
      EXPECT_TRUE(code != 0 || (isOn(c, to) && (forward ? at < to : to < at)));
      at = to;
    }
    inTime("other steps", [&] {
      c.findNextPos(start, limit, to, step, forward);
      c.findNextPos(start, to, step, forward, consumed, 0);
      c.findNextPos(start, limit, to, step, consumed, forward);
      c.findNextPosFromPoint(c[0][1], start, to, step, forward);
      c.findNextPosFromPoint(c[0][1], start, limit, to, step, forward);
    });
    inTime("short chords", [&] { c.findNextPos(start, to, step, forward, consumed, 1); });
    c.findNextPos(start, to, std::min(step, 60.0), forward, 1);
    EXPECT_TRUE(isOn(c, to) && isFinite(consumed));
  }
}

/// Carries the inner positions of a curve by a map to another curve, and back.
void carry(MapHandle const& map, Curve const& from, Curve const& onto) {
  double const tolerance = sizeOf(from) * 1e-6;
  for (Position const& p : positionsOn(from)) {
    Position there, back;
    if (p.getTValue() == 0.0 || map->mapPosition(there, p) != 0) continue;
    EXPECT_NEAR_POINT(onto.locateCurvePosition(there), from.locateCurvePosition(p), tolerance);
    EXPECT_EQ(map->inverseMapPosition(back, there), 0);
    EXPECT_NEAR_POINT(from.locateCurvePosition(back), from.locateCurvePosition(p), tolerance);
  }
}

void edit(Curve c) {
  MapHandle map, secondMap;
  for (Position const& p : positionsOn(c)) {
    for (Position const& q : positionsOn(c)) {
      for (int const forward : {1, 0}) {
        Curve copy, arranged(c);
        int const code = copyGxBezierCurve(copy, c, p, q, forward, map);
        EXPECT_TRUE(isFinite(copy) && !map.isNull());
        if (code == 0 && (forward ? p < q : q < p)) carry(map, c, copy);
        arrangeBezierCurve(arranged, p, q);
        EXPECT_TRUE(isFinite(arranged) && arranged.length() - c.length() <= 1);
      }
    }
    Curve first(c), second;
    EXPECT_EQ(spliteGxBezierCurve(p, first, second, map, secondMap), 0);
    EXPECT_TRUE(isFinite(first) && isFinite(second));
    if (p.getTValue() == 0.0 || p.getSegmentNumber() > 1) continue;
    carry(map, c, first);
    carry(secondMap, c, second);
  }
  Curve const before(c);
  reverseGxBezierCurve(c, map);
  carry(map, before, c);
}

void askCurve(Curve const& c, Points const& points) {
  GxList<Point> crossings;
  inTime("dividing", [&] { divide(c); });
  inTime("measuring", [&] { measure(c, points); });
  inTime("crossing lines", [&] { crossLines(c); });
  inTime("changing", [&] { change(c); });
  inTime("editing", [&] { edit(c); });
  inTime("crossing itself", [&] {
    if (sizeOf(c) < kCrossesItself) Curve(c).findIntersections(c, crossings);
  });
  EXPECT_TRUE(areFinite(valuesOf(crossings)));
  walk(c);
}

void fit(Points const& stroke) {
  GxList<Point> points;
  for (Point const& p : stroke) points.add(p);
  for (double const error : {1e-6, 0.5, 100.0}) {
    inTime("fitting", [&] {
      Curve const curve(&points, error);
      EXPECT_TRUE(isFinite(curve) && (curve.length() != 0) == (points.length() > 1));
    });
  }
}

TEST(HardCases, SegmentsAndCurvesAnswerEveryQuestion) {
  auto cases = support::hardCases("curves");
  for (char const* const name : {"segments", "lines", "loops"}) {
    for (support::HardCase const& hard : support::hardCases(name)) cases.push_back(hard);
  }
  ASSERT_GE(cases.size(), 145u);
  for (support::HardCase const& hard : cases) {
    SCOPED_TRACE(hard.source);
    std::vector<double> const& n = hard.fields[1];
    auto others = support::segmentsOf(n);
    if (n.size() == 4) others = {support::retractedLine(n[0], n[1], n[2], n[3])};
    Points const asked = support::pointsOf(hard.fields[2]);
    Curve curve;
    Points handles, polyline;
    for (GxBezier const& s : support::segmentsOf(hard.fields[0])) {
      for (GxBezier const& other : others) {
        cross(s, other);
        cross(other, s);
      }
      curve.getSegments().add(s);
      handles.insert(handles.end(), {s[0], s[1], s[2], s[3]});
      s.getPolyline(sizeOf(s) * 1e-4, polyline);
    }
    askCurve(curve, asked);
    for (GxBezier const& other : others) curve.getSegments().add(other);
    curve.setStrictIsClosed(1);
    askCurve(curve, asked);
    for (GxBezier const& s : valuesOf(curve.getSegments())) askSegment(s);
    fit(handles);
    fit(polyline);
  }
}

TEST(HardCases, StrokesAreFitted) {
  auto const strokes = support::hardCases("strokes");
  EXPECT_EQ(strokes.size(), 5u);
  for (support::HardCase const& c : strokes) fit(support::pointsOf(c.fields[0]));
}

}  // namespace
