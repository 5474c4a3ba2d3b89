// Polylines by halving, by equal steps and by chords; steps of a given distance.
#include "tests/support/expect.h"
#include "tests/support/open.h"

#include <list>

namespace {

using namespace support;
using Points = std::vector<Point>;

Points polyline(GxBezier const& s, double tol) {
  Points points;
  s.getPolyline(tol, points);
  return points;
}

/// By chords of one length, or where the gap is given also by short ones.
Points byChords(GxBezier const& s, double chord, double startT, double shortChord = 0,
                double gap = -1) {
  GxList<Point> list;
  if (gap < 0.0) s.makeSegment(chord, list, startT);
  if (gap >= 0.0) s.makeSegmentEx(chord, shortChord, gap, list, startT);
  return valuesOf(list);
}

TEST(GxBezierPolyline, TheCurveStaysWithinTheToleranceAndAllFormsAgree) {
  Random random(2);
  for (int i = 0; i < 100; ++i) {
    GxBezier const s = i % 2 ? random.segment(100.0) : random.gridSegment(4);
    double const tol = i % 3 ? 0.1 : 0.004;
    Points const points = polyline(s, tol);
    std::list<Point> listed, timed;
    std::list<double> times;
    s.getPolyline(tol, listed);
    s.getPolyline(tol, timed, times, GxBezierPolylineCondition());
    EXPECT_TRUE(listed == timed && listed == std::list<Point>(points.begin(), points.end()));
    Numbers const t(times.begin(), times.end());
    ASSERT_EQ(t.size(), points.size());
    for (std::size_t k = 1; k < t.size(); ++k) {
      EXPECT_NEAR_POINT(points[k], s.bValue(t[k]), 1e-12);
      EXPECT_LT(t[k - 1], t[k]);
      for (double u = 0.0; u < 1.0; u += 0.125) {
        // Pieces that are points are left out, so that the next chord starts up to tol off.
        Point const p = s.bValue(t[k - 1] + u * (t[k] - t[k - 1]));
        EXPECT_LE(distanceToLineSegment(points[k - 1], points[k], p), 2.0 * tol);
      }
    }
  }
}

TEST(GxBezierPolyline, LinesPointsAndPieces) {
  GxBezier const line = evenLine(0, 0, 9, 3), curl = bezier(0, 40, 40, -13, 30, 0, 30, 0);
  EXPECT_EQ(polyline(line, 0.0), (Points{{0, 0}, {9, 3}}));
  EXPECT_EQ(polyline(line, 10.0).size(), 1u) << "a point and a line adds nothing";
  EXPECT_NEAR_POINT(polyline(curl, 5.0).back(), curl.bValue(0.5), 1e-12) << "nor does a half";
  std::list<Point> points;
  std::list<double> times;
  // A piece that starts at 1/4 and covers 1/8 of its segment.
  OpenBezier(line).makePolyline(0.0, 0.25, 8, points, times, GxBezierPolylineCondition());
  EXPECT_BITS(points.back(), Point(9, 3));
  EXPECT_BITS(times.back(), 0.375);
}

TEST(GxBezierSpacing, StepsAndChordsHaveTheirLengthUpToTheEnd) {
  Random random(9);
  for (int i = 0; i < 60; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = i % 3 ? 0.0 : 0.3;
    Points const points = byChords(s, 7.0, startT);
    EXPECT_TRUE(points.front() == s.bValue(startT) && points.back() == s[3]);
    for (std::size_t k = 1; k < points.size(); ++k) {
      double const chord = points[k].distance(points[k - 1]);
      EXPECT_TRUE(chord < 7.1 && (chord > 6.9 || k + 1 == points.size())) << chord;
    }
    std::list<Point> steps;
    s.makeSegment(static_cast<unsigned short>(i), steps);
    ASSERT_EQ(steps.size(), static_cast<std::size_t>(i == 0 ? 2 : i + 1));
    EXPECT_TRUE(steps.front() == s[0] && steps.back() == s[3]);
    double t = 0.0;
    for (auto p = std::next(steps.begin()); std::next(p) != steps.end(); ++p) {
      EXPECT_BITS(*p, s.bValue(t += 1.0 / i));
    }
  }
}

TEST(GxBezierSpacing, LongChordsWhereTheGapAllowsShortOnesElsewhere) {
  GxBezier const line = evenLine(0, 0, 100, 0), hill = bezier(0, 0, 30, 60, 70, 60, 100, 0);
  GxBezier valley = hill;
  valley.flip();
  EXPECT_EQ(byChords(line, 20, 0.0, 4, 1e-6), byChords(line, 20, 0.0));
  EXPECT_EQ(byChords(hill, 20, 0.0, 4, 100), byChords(hill, 20, 0.0));
  EXPECT_GT(byChords(hill, 20, 0.0, 4, 0.0).size(), byChords(hill, 4, 0.0).size() - 2);
  // Deliberate: a bulge below the chord is not measured.
  EXPECT_EQ(byChords(valley, 20, 0.0, 4, 0.0), byChords(valley, 20, 0.0));
  EXPECT_EQ(byChords(line, 60, 0.0).size(), 3u);
  // Deliberate: 150 of 200 units, at twice the pace of a whole segment, count as all of them.
  EXPECT_EQ(byChords(line, 150, -1.0, 150, 0.0).size(), 2u) << "plain where neither is longer";
  for (GxBezier const& s : {line, pointLike(1, 1)}) {
    double const startT = s == line ? 1.0 : 0.0;  // nothing is left
    EXPECT_EQ(byChords(s, 30, startT).size() + byChords(s, 30, startT, 4, 0.0).size(), 2u);
  }
}

TEST(GxBezierSpacing, TheGapIsThatOfThePieceWhoseEndIsNotRescaled) {
  // Over x = 100 t lies y = 100 t (1 - t), 25 (to - from)^2 above a chord of slope 1 - from - to.
  OpenBezier const arch(bezier(0, 0, 100 / 3.0, 100 / 3.0, 200 / 3.0, 100 / 3.0, 100, 0));
  for (Point const& range : {Point(0.0, 1.0), Point(0.0, 0.4), Point(0.5, 0.75), Point(0.8, 0.9)}) {
    double const from = range.xval(), to = from + range.yval() * (1.0 - from);
    double const gap = 25.0 * (to - from) * (to - from) / std::hypot(1.0, 1.0 - from - to);
    EXPECT_EQ(arch.checkChordGapDist(from, range.yval(), gap * 1.0001), 1);
    EXPECT_EQ(arch.checkChordGapDist(from, range.yval(), gap * 0.9999), 0);
  }
}

TEST(GxBezierStep, LandsAtItsDistanceOnTheRightSide) {
  Random random(21);
  for (int i = 0; i < 300; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = random.uniform(0.1, 0.9), squared = random.uniform(0.5, 900.0);
    double t = -7.0, v = -7.0, consumed = 0.0;
    int const code = s.findNextPos(t, startT, squared, i % 2, consumed);
    EXPECT_EQ(s.findNextPosFromPoint(v, startT, s.bValue(startT), squared, i % 2), code);
    if (code != 0) continue;
    EXPECT_NEAR(consumed, std::fabs(s.length(startT) - s.length(t)), 1e-9);
    for (double const landed : {t, v}) {
      EXPECT_NEAR(s.bValue(landed).squaredDistance(s.bValue(startT)), squared, 0.0101);
      EXPECT_EQ(landed > startT, i % 2);
    }
  }
}

TEST(GxBezierStep, ResultsAndLengthsWhereTheRoomIsSmall) {
  GxBezier const line = evenLine(0, 0, 10, 0);
  // Start, far end, squared distance | result, parameter (-7: untouched), length consumed.
  for (Row const k : table("0 1 9  0 0.3 3;      0.4 0.4 9  -1 -7 0;"    // no range
                           "0.4 1 36.1  -1 -7 6;  0.4 0 16.1  -1 -7 4;"  // too little left
                           "0 1 100  0 1 10;  1 0 100  0 0 10;"          // just enough
                           "0 0.5 49  -1 0.5 10")) {                     // never met: 64 trials
    int const forward = k[0] <= k[1];
    double t = -7.0, consumed = 0.0;
    EXPECT_EQ(line.findNextPos(t, k[0], k[1], k[2], forward, consumed), k[3]);
    EXPECT_NEAR_POINT(Point(t, consumed), Point(k[4], k[5]), 0.01);
  }
  double t = -7.0;
  EXPECT_EQ(pointLike(1, 1).findNextPos(t, 0.0, 9.0, 1), -1);
  EXPECT_EQ(line.findNextPosFromPoint(t, 0.5, 0.5, Point(0, 0), 9.0, 1), -1);
  // Deliberate: a search that touched the end fails even where it meets the distance later.
  // Here x = 1000 (t - 0.95)^2, and the first trial is the end.
  GxBezier const hairpin = bezier(902.5, 0, 902.5 - 1900.0 / 3, 0, 902.5 - 2800.0 / 3, 0, 2.5, 0);
  EXPECT_EQ(hairpin.findNextPos(t, 0.9, 4.0, 1), -1);
  EXPECT_NEAR(hairpin.bValue(t).squaredDistance(hairpin.bValue(0.9)), 4.0, 0.0101);
}

}  // namespace
