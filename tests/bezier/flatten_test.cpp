// Polylines by halving, by equal steps and by chords; steps of a given distance.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <cmath>
#include <limits>
#include <list>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::OpenBezier;
using support::Random;

double const kNaN = std::nan("");

std::vector<Point> polyline(GxBezier const& s, double tol) {
  std::vector<Point> points;
  s.getPolyline(tol, points);
  return points;
}

double distanceTo(std::vector<Point> const& line, Point const& p) {
  double least = p.distance(line[0]);
  for (std::size_t i = 1; i < line.size(); ++i) {
    least = std::fmin(least, distanceToLineSegment(line[i - 1], line[i], p));
  }
  return least;
}

std::vector<Point> pointsOf(GxList<Point> const& list) {
  std::vector<Point> points;
  for (unsigned i = 0; i < list.length(); ++i) points.push_back(list[i]);
  return points;
}

std::vector<Point> byChords(GxBezier const& s, double chord, double startT) {
  GxList<Point> list;
  s.makeSegment(chord, list, startT);
  return pointsOf(list);
}

std::vector<Point> byTwoChords(GxBezier const& s, double longChord, double shortChord, double gap,
                               double startT) {
  GxList<Point> list;
  s.makeSegmentEx(longChord, shortChord, gap, list, startT);
  return pointsOf(list);
}

struct NeverALine : GxBezierPolylineCondition {
  int isALine(GxBezier const&, double) const override { return 0; }
};

TEST(GxBezierPolyline, TheCurveStaysWithinTheToleranceAndAllFormsAgree) {
  Random random(2);
  for (int i = 0; i < 100; ++i) {
    GxBezier const s = i % 2 ? random.segment(100.0) : random.gridSegment(4);
    double const tol = i % 3 ? 0.1 : 0.004;
    std::vector<Point> const points = polyline(s, tol);
    for (int k = 0; k <= 200; ++k) {
      // Pieces that are points are left out, so that the next chord starts up to tol off.
      EXPECT_LE(distanceTo(points, s.bValue(k / 200.0)), 2.0 * tol);
    }
    std::list<Point> listed;
    std::list<Point> timed;
    std::list<double> times;
    s.getPolyline(tol, listed);
    s.getPolyline(tol, timed, times, GxBezierPolylineCondition());
    EXPECT_TRUE(listed == timed);
    ASSERT_EQ(timed.size(), points.size());
    ASSERT_EQ(times.size(), points.size());
    auto t = times.begin();
    auto p = timed.begin();
    for (Point const& point : points) {
      EXPECT_BITS(point, *p++);
      EXPECT_NEAR_POINT(point, s.bValue(*t), 1e-12);
      EXPECT_EQ(std::ldexp(*t, 40), std::floor(std::ldexp(*t, 40)));
      EXPECT_TRUE(t == times.begin() || *std::prev(t) < *t);
      ++t;
    }
  }
}

TEST(GxBezierPolyline, LinesPointsAndConditions) {
  GxBezier const line = support::evenLine(0, 0, 9, 3);
  EXPECT_EQ(polyline(line, 0.0).size(), 2u);
  EXPECT_EQ(polyline(support::pointLike(4, 4), 0.0).size(), 1u);
  // What is a point and a line adds nothing; so does a second half that is a point.
  EXPECT_EQ(polyline(line, 10.0).size(), 1u);
  GxBezier const hook = support::bezier(0, 0, 30, 0, 30, 0, 30, 0);
  std::vector<Point> const hooked = polyline(hook, 4.0);
  ASSERT_EQ(hooked.size(), 2u);
  EXPECT_BITS(hooked[1], Point(30, 0));  // a line at once
  GxBezier const curl = support::bezier(0, 40, 40, -13, 30, 0, 30, 0);
  std::vector<Point> const curled = polyline(curl, 5.0);
  EXPECT_TRUE(curled.back() != curl[3]);
  EXPECT_NEAR_POINT(curled.back(), curl.bValue(0.5), 1e-12);

  std::list<Point> points(1, Point(7, 7));
  std::list<double> times;
  support::sShape().getPolyline(1.0, points, times, NeverALine());
  EXPECT_EQ(points.size(), 2u);  // every piece ends as a point
  EXPECT_BITS(points.back(), Point(0, 0));
  EXPECT_EQ(times, std::list<double>(1, 0.0));

  // A piece that starts at 1/4 and covers 1/8 of its segment.
  OpenBezier(line).makePolyline(0.0, 0.25, 8, points, times, GxBezierPolylineCondition());
  EXPECT_BITS(points.back(), Point(9, 3));
  EXPECT_BITS(times.back(), 0.375);
}

TEST(GxBezierPolyline, AnyToleranceAndAnyDoublesEnd) {
  for (double const tol : {-1.0, -1e-300, kNaN}) {
    EXPECT_EQ(polyline(support::sShape(), tol).size(), 2u);
  }
  GxBezier tiny = support::sShape();
  tiny.scale(1e-16, 1e-16);
  for (int i = 0; i < 4; ++i) tiny(i) += GxVector<double>(1.0, 1.0);
  EXPECT_GT(polyline(tiny, 0.0).size(), 2u);
  double const inf = std::numeric_limits<double>::infinity();
  for (double const odd : {kNaN, inf, -inf}) {
    for (int i = 0; i < 4; ++i) {
      GxBezier s = support::sShape();
      s(i) = Point(odd, -odd);
      for (double const tol : {0.0, 0.1, inf}) EXPECT_LT(polyline(s, tol).size(), 100u);
    }
  }
}

TEST(GxBezierSpacing, EqualStepsAccumulateTheirParameter) {
  GxBezier const s = support::sShape();
  for (unsigned const count : {0u, 1u, 10u, 1000u}) {
    std::list<Point> points;
    s.makeSegment(static_cast<unsigned short>(count), points);
    ASSERT_EQ(points.size(), count == 0 ? 2u : count + 1u);
    EXPECT_BITS(points.front(), s[0]);
    EXPECT_BITS(points.back(), s[3]);
    double t = 0.0;
    for (auto p = std::next(points.begin()); std::next(p) != points.end(); ++p) {
      EXPECT_BITS(*p, s.bValue(t += 1.0 / count));
    }
  }
}

TEST(GxBezierSpacing, ChordsHaveTheirLengthUpToTheEnd) {
  Random random(9);
  for (int i = 0; i < 60; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = i % 3 ? 0.0 : 0.3;
    std::vector<Point> const points = byChords(s, 7.0, startT);
    EXPECT_BITS(points.front(), s.bValue(startT));
    EXPECT_BITS(points.back(), s[3]);
    for (std::size_t k = 1; k + 1 < points.size(); ++k) {
      EXPECT_NEAR(points[k].distance(points[k - 1]), 7.0, 0.1);
    }
    EXPECT_LT(points.back().distance(points[points.size() - 2]), 7.1);
  }
}

TEST(GxBezierSpacing, ChordsAtTheEdges) {
  GxBezier const line = support::evenLine(0, 0, 10, 0);
  EXPECT_EQ(byChords(line, 3.0, 0.0).size(), 5u);
  EXPECT_EQ(byChords(line, 11.0, 0.0).size(), 2u);
  EXPECT_EQ(byChords(line, 3.0, 1.0).size(), 1u);
  EXPECT_EQ(byChords(line, 3.0, 1.5).size(), 1u);
  EXPECT_EQ(byChords(support::pointLike(1, 1), 3.0, 0.0).size(), 1u);
  EXPECT_EQ(byChords(line, 0.0, 0.0).back().xval(), 10.0);
  EXPECT_EQ(byChords(line, 3.0, kNaN).size(), 1u);
  GxBezier odd = support::sShape();
  odd(1) = Point(kNaN, 0.0);
  EXPECT_LT(byChords(odd, 3.0, 0.0).size(), 5e6);
  EXPECT_LT(byTwoChords(odd, 9.0, 3.0, 1.0, 0.0).size(), 5e6);
}

TEST(GxBezierSpacing, LongChordsWhereTheGapAllowsShortOnesElsewhere) {
  GxBezier const line = support::evenLine(0, 0, 100, 50);
  GxBezier const hill = support::bezier(0, 0, 30, 60, 70, 60, 100, 0);
  GxBezier valley = hill;
  valley.flip();
  auto const count = [](GxBezier const& s, double gap) {
    return byTwoChords(s, 20.0, 4.0, gap, 0.0).size();
  };
  EXPECT_EQ(count(line, 1e-6), byChords(line, 20.0, 0.0).size());
  EXPECT_GT(count(hill, 0.0), byChords(hill, 4.0, 0.0).size() - 2);
  EXPECT_EQ(count(hill, 100.0), byChords(hill, 20.0, 0.0).size());
  // Deliberate rule: a bulge below the chord is not measured.
  EXPECT_EQ(count(valley, 0.0), byChords(valley, 20.0, 0.0).size());
  // No long chord: plain ones.
  EXPECT_EQ(byTwoChords(hill, 5.0, 5.0, 0.0, 0.2), byChords(hill, 5.0, 0.2));
  EXPECT_EQ(byTwoChords(hill, 20.0, 4.0, 0.0, 1.0).size(), 1u);
  EXPECT_EQ(byTwoChords(support::pointLike(1, 1), 20.0, 4.0, 0.0, 0.0).size(), 1u);
}

TEST(GxBezierSpacing, TheGapIsThatOfThePieceWhoseEndIsNotRescaled) {
  OpenBezier const hill(support::bezier(0, 0, 30, 60, 70, 60, 100, 0));
  for (Point const& range : {Point(0.0, 1.0), Point(0.0, 0.4), Point(0.5, 0.75), Point(0.8, 0.9)}) {
    double const from = range.xval();
    double const to = from + range.yval() * (1.0 - from);
    double height = 0.0;
    for (int k = 0; k <= 10000; ++k) {
      Point const p = hill.bValue(from + (to - from) * k / 10000.0);
      height = std::fmax(height, distanceToLineSegment(hill.bValue(from), hill.bValue(to), p));
    }
    EXPECT_EQ(hill.checkChordGapDist(from, range.yval(), height * 1.0001), 1);
    EXPECT_EQ(hill.checkChordGapDist(from, range.yval(), height * 0.9999), 0);
  }
}

TEST(GxBezierStep, LandsAtItsDistanceOnTheRightSide) {
  Random random(21);
  int found = 0;
  for (int i = 0; i < 300; ++i) {
    GxBezier const s = random.segment(100.0);
    int const forward = i % 2;
    double const startT = random.uniform(0.1, 0.9);
    Point const start = s.bValue(startT);
    double const squared = random.uniform(0.5, 900.0);
    double t = -7.0, u = -7.0, v = -7.0, consumed = 1000.0;
    int const codes[] = {s.findNextPos(t, startT, squared, forward),
                         s.findNextPos(u, startT, squared, forward, consumed),
                         s.findNextPosFromPoint(v, startT, start, squared, forward)};
    EXPECT_EQ(codes[0], codes[1]);
    EXPECT_BITS(t, u);
    for (double const landed : {codes[0] ? -7.0 : t, codes[2] ? -7.0 : v}) {
      if (landed == -7.0) continue;
      ++found;
      EXPECT_NEAR(s.bValue(landed).squaredDistance(start), squared, 0.0101);
      EXPECT_TRUE(forward ? landed > startT : landed < startT);
    }
    double const arc = std::fabs(s.length(startT) - s.length(t));
    EXPECT_TRUE(codes[0] != 0 || std::fabs(consumed - 1000.0 - arc) < 1e-9);
  }
  EXPECT_GT(found, 300);
}

TEST(GxBezierStep, ResultsAndLengthsWhereTheRoomIsSmall) {
  GxBezier const line = support::evenLine(0, 0, 10, 0);
  struct Case {
    GxBezier segment;
    double start, far, squared;
    int forward, result;
    double t, consumed;  // -7: untouched
  };
  Case const cases[] = {
      {line, 0.0, 1.0, 9.0, 1, 0, 0.3, 3.0},
      {line, 1.0, 0.0, 9.0, 0, 0, 0.7, 3.0},
      {line, 0.4, 0.4, 9.0, 1, -1, -7.0, 0.0},   // no range
      {line, 0.4, 1.0, 36.1, 1, -1, -7.0, 6.0},  // too little left
      {line, 0.4, 0.0, 16.1, 0, -1, -7.0, 4.0},
      {line, 0.0, 1.0, 100.0, 1, 0, 1.0, 10.0},  // just enough
      {line, 1.0, 0.0, 100.0, 0, 0, 0.0, 10.0},
      {support::pointLike(1, 1), 0.0, 1.0, 9.0, 1, -1, -7.0, 0.0},
      {line, 0.0, 0.5, 49.0, 1, -1, 0.5, 10.0},  // never met: 64 trials
  };
  for (Case const& k : cases) {
    double t = -7.0, u = -7.0, consumed = 0.0;
    EXPECT_EQ(k.segment.findNextPos(t, k.start, k.far, k.squared, k.forward), k.result);
    EXPECT_EQ(k.segment.findNextPos(u, k.start, k.far, k.squared, k.forward, consumed), k.result);
    EXPECT_NEAR(t, k.t, 0.001);
    EXPECT_BITS(u, t);
    EXPECT_NEAR(consumed, k.consumed, 0.01);
  }
  double t = -7.0;
  EXPECT_EQ(line.findNextPosFromPoint(t, 0.5, 0.5, Point(0, 0), 9.0, 1), -1);
  EXPECT_EQ(t, -7.0);
  // Deliberate rule: a search that touched the end fails even where it meets the distance later.
  // Here x = 1000 (t - 0.95)^2, and the first trial is the end.
  GxBezier const hairpin =
      support::bezier(902.5, 0, 902.5 - 1900.0 / 3, 0, 902.5 - 2800.0 / 3, 0, 2.5, 0);
  EXPECT_EQ(hairpin.findNextPos(t, 0.9, 4.0, 1), -1);
  EXPECT_NEAR(hairpin.bValue(t).squaredDistance(hairpin.bValue(0.9)), 4.0, 0.0101);
  for (double const odd : {kNaN, std::numeric_limits<double>::infinity(), -1.0}) {
    EXPECT_EQ(line.findNextPos(t, 0.5, odd, 1), -1);
    EXPECT_EQ(line.findNextPosFromPoint(t, 0.5, Point(0, 0), odd, 0), -1);
  }
}

}  // namespace
