// Polylines by halving, by equal steps and by chords; steps of a given distance.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <list>

namespace {

using support::bezier;
using support::evenLine;
using support::OpenBezier;
using support::Point;
using support::pointLike;

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

std::vector<Point> byChords(GxBezier const& s, double chord, double startT) {
  GxList<Point> list;
  s.makeSegment(chord, list, startT);
  return support::valuesOf(list);
}

std::vector<Point> byTwoChords(GxBezier const& s, double longChord, double shortChord, double gap,
                               double startT) {
  GxList<Point> list;
  s.makeSegmentEx(longChord, shortChord, gap, list, startT);
  return support::valuesOf(list);
}

TEST(GxBezierPolyline, TheCurveStaysWithinTheToleranceAndAllFormsAgree) {
  support::Random random(2);
  for (int i = 0; i < 100; ++i) {
    GxBezier const s = i % 2 ? random.segment(100.0) : random.gridSegment(4);
    double const tol = i % 3 ? 0.1 : 0.004;
    std::vector<Point> const points = polyline(s, tol);
    for (int k = 0; k <= 200; ++k) {
      // Pieces that are points are left out, so that the next chord starts up to tol off.
      EXPECT_LE(distanceTo(points, s.bValue(k / 200.0)), 2.0 * tol);
    }
    std::list<Point> listed, timed;
    std::list<double> times;
    s.getPolyline(tol, listed);
    s.getPolyline(tol, timed, times, GxBezierPolylineCondition());
    EXPECT_TRUE(listed == timed && listed == std::list<Point>(points.begin(), points.end()));
    ASSERT_EQ(times.size(), points.size());
    double last = -1.0;
    auto point = points.begin();
    for (double const t : times) {
      EXPECT_NEAR_POINT(*point++, s.bValue(t), 1e-12);
      EXPECT_TRUE(last < t && std::ldexp(t, 40) == std::floor(std::ldexp(t, 40)));
      last = t;
    }
  }
}

TEST(GxBezierPolyline, LinesPointsAndPieces) {
  GxBezier const line = evenLine(0, 0, 9, 3);
  GxBezier const curl = bezier(0, 40, 40, -13, 30, 0, 30, 0);
  EXPECT_EQ(polyline(line, 0.0), (std::vector<Point>{{0, 0}, {9, 3}}));
  EXPECT_EQ(polyline(line, 10.0).size(), 1u) << "a point and a line adds nothing";
  EXPECT_NEAR_POINT(polyline(curl, 5.0).back(), curl.bValue(0.5), 1e-12) << "nor does a half";
  for (double const tol : {-1.0, support::kNaN}) EXPECT_EQ(polyline(curl, tol).size(), 2u);
  std::list<Point> points;
  std::list<double> times;
  // A piece that starts at 1/4 and covers 1/8 of its segment.
  OpenBezier(line).makePolyline(0.0, 0.25, 8, points, times, GxBezierPolylineCondition());
  EXPECT_BITS(points.back(), Point(9, 3));
  EXPECT_BITS(times.back(), 0.375);
}

TEST(GxBezierSpacing, StepsAndChordsHaveTheirLengthUpToTheEnd) {
  support::Random random(9);
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
    auto const count = static_cast<unsigned short>(i);
    std::list<Point> steps;
    s.makeSegment(count, steps);
    ASSERT_EQ(steps.size(), count == 0 ? 2u : count + 1u);
    EXPECT_TRUE(steps.front() == s[0] && steps.back() == s[3]);
    double t = 0.0;
    for (auto p = std::next(steps.begin()); std::next(p) != steps.end(); ++p) {
      EXPECT_BITS(*p, s.bValue(t += 1.0 / count));
    }
  }
}

TEST(GxBezierSpacing, LongChordsWhereTheGapAllowsShortOnesElsewhere) {
  GxBezier const line = evenLine(0, 0, 100, 50);
  GxBezier const hill = bezier(0, 0, 30, 60, 70, 60, 100, 0);
  GxBezier valley = hill;
  valley.flip();
  EXPECT_EQ(byTwoChords(line, 20, 4, 1e-6, 0.0), byChords(line, 20, 0.0));
  EXPECT_GT(byTwoChords(hill, 20, 4, 0.0, 0.0).size(), byChords(hill, 4, 0.0).size() - 2);
  EXPECT_EQ(byTwoChords(hill, 20, 4, 100, 0.0), byChords(hill, 20, 0.0));
  // Deliberate rule: a bulge below the chord is not measured.
  EXPECT_EQ(byTwoChords(valley, 20, 4, 0.0, 0.0), byChords(valley, 20, 0.0));
  EXPECT_EQ(byTwoChords(hill, 5, 5, 0.0, 0.2), byChords(hill, 5, 0.2)) << "no long chord";
  GxBezier const level = evenLine(0, 0, 10, 0);
  std::pair<Point, std::size_t> const edges[] = {// chord and start
                                                 {{3, 0}, 5},
                                                 {{11, 0}, 2},
                                                 {{3, 1}, 1},
                                                 {{3, 1.5}, 1},
                                                 {{3, support::kNaN}, 1}};
  for (auto const& k : edges) {
    EXPECT_EQ(byChords(level, k.first.xval(), k.first.yval()).size(), k.second);
  }
  EXPECT_EQ(byTwoChords(hill, 20, 4, 0.0, 1.0).size(), 1u);
  EXPECT_EQ(byTwoChords(pointLike(1, 1), 20, 4, 0.0, 0.0).size(), 1u);
}

TEST(GxBezierSpacing, TheGapIsThatOfThePieceWhoseEndIsNotRescaled) {
  OpenBezier const hill(bezier(0, 0, 30, 60, 70, 60, 100, 0));
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
  support::Random random(21);
  for (int i = 0; i < 300; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = random.uniform(0.1, 0.9);
    double const squared = random.uniform(0.5, 900.0);
    double t = -7.0, v = -7.0;
    int const code = s.findNextPos(t, startT, squared, i % 2);
    EXPECT_EQ(s.findNextPosFromPoint(v, startT, s.bValue(startT), squared, i % 2), code);
    if (code != 0) continue;
    for (double const landed : {t, v}) {
      EXPECT_NEAR(s.bValue(landed).squaredDistance(s.bValue(startT)), squared, 0.0101);
      EXPECT_EQ(landed > startT, i % 2);
    }
  }
}

TEST(GxBezierStep, ResultsAndLengthsWhereTheRoomIsSmall) {
  GxBezier const line = evenLine(0, 0, 10, 0);
  struct Case {
    GxBezier segment;
    double start, far, squared;
    int forward, result;
    double t, consumed;  // -7: untouched
  };
  Case const cases[] = {
      {line, 0.0, 1.0, 9.0, 1, 0, 0.3, 3.0},
      {line, 0.4, 0.4, 9.0, 1, -1, -7.0, 0.0},   // no range
      {line, 0.4, 1.0, 36.1, 1, -1, -7.0, 6.0},  // too little left
      {line, 0.4, 0.0, 16.1, 0, -1, -7.0, 4.0},
      {line, 0.0, 1.0, 100.0, 1, 0, 1.0, 10.0},  // just enough
      {line, 1.0, 0.0, 100.0, 0, 0, 0.0, 10.0},
      {pointLike(1, 1), 0.0, 1.0, 9.0, 1, -1, -7.0, 0.0},
      {line, 0.0, 0.5, 49.0, 1, -1, 0.5, 10.0},  // never met: 64 trials
  };
  double t = -7.0;
  for (Case const& k : cases) {
    double consumed = 0.0;
    t = -7.0;
    EXPECT_EQ(k.segment.findNextPos(t, k.start, k.far, k.squared, k.forward, consumed), k.result);
    EXPECT_NEAR(t, k.t, 0.001);
    EXPECT_NEAR(consumed, k.consumed, 0.01);
  }
  EXPECT_EQ(line.findNextPosFromPoint(t, 0.5, 0.5, Point(0, 0), 9.0, 1), -1);
  // Deliberate rule: a search that touched the end fails even where it meets the distance later.
  // Here x = 1000 (t - 0.95)^2, and the first trial is the end.
  GxBezier const hairpin = bezier(902.5, 0, 902.5 - 1900.0 / 3, 0, 902.5 - 2800.0 / 3, 0, 2.5, 0);
  EXPECT_EQ(hairpin.findNextPos(t, 0.9, 4.0, 1), -1);
  EXPECT_NEAR(hairpin.bValue(t).squaredDistance(hairpin.bValue(0.9)), 4.0, 0.0101);
}

}  // namespace
