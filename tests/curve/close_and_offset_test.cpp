// Orientation, closing, the parallel curve, and the curve against an interval of x.
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using support::curveOf;
using support::evenLine;
using support::polygonalCurve;
using Points = std::vector<GxCoord<double>>;

char const* const kOutlines[] = {"bold-w-ends", "math-infinity-outer", "roman-g-outer",
                                 "roman-o-inner", "sans-k-thirds"};

/// Twice the area within the polygon of sampled points, positive when it runs counter-clockwise.
double signedArea(GxBezierCurve const& curve) {
  double sum = 0.0;
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
    for (int k = 0; k < 20; ++k) {
      GxCoord<double> const p = curve[i].bValue(k / 20.0);
      GxCoord<double> const q = curve[i].bValue((k + 1) / 20.0);
      sum += p.xval() * q.yval() - p.yval() * q.xval();
    }
  }
  return sum;
}

TEST(GxBezierCurveOrientation, AgreesWithTheAreaOfRealOutlines) {
  for (std::string const name : kOutlines) {
    SCOPED_TRACE(name);
    GxBezierCurve curve = support::outline(name);
    for (int turn = 0; turn < 2; ++turn) {
      int valid = 0;
      EXPECT_EQ(signedArea(curve) < 0, curve.isClockwise(valid) != 0);
      EXPECT_EQ(1, valid);
      EXPECT_EQ(0, curve.changeOrientation(signedArea(curve) > 0));  // the other way round
    }
    EXPECT_EQ(support::outline(name), curve);  // twice reversed
    EXPECT_EQ(1, curve.strictIsClosed());
  }
}

TEST(GxBezierCurveOrientation, FlatTopsStraightCurvesAndWhatHasNoTurn) {
  struct Case {
    GxBezierCurve curve;
    int clockwise, valid;
  };
  // Its handles run beyond its ends: level all around, but no line.
  GxBezier const level = bezier(0, 0, -10, 0, 40, 0, 30, 0);
  Case const cases[] = {{{}, 0, 0},
                        {polygonalCurve({{0, 0}, {5, 5}, {2, 2}}), 0, 1},
                        {polygonalCurve({{9, 9}, {9, 0}, {0, 0}, {0, 9}, {9, 9}}), 1, 1},
                        {polygonalCurve({{5, 9}, {0, 9}, {0, 0}, {9, 0}, {9, 9}, {5, 9}}), 0, 1},
                        {curveOf({level, level}), 0, 0}};
  for (Case const& c : cases) {
    GxBezierCurve curve(c.curve);
    int valid = 7;
    EXPECT_EQ(c.clockwise, curve.isClockwise(valid)) << c.curve.length();
    EXPECT_EQ(c.valid, valid);
    EXPECT_EQ(c.valid ? 0 : -1, curve.changeOrientation(c.clockwise));
    EXPECT_EQ(c.curve, curve);
  }
}

TEST(GxBezierCurveClosing, TheFlagIsSetAndEndsThatLieApartAreBridged) {
  struct Case {
    GxBezierCurve curve;
    int result, bridges;
  };
  Case const cases[] = {{curveOf({bezier(0, 0, 0, 20, 30, 20, 30, 0)}), 1, 1},
                        {curveOf({evenLine(0, 0, 30, 0)}), 0, 1},  // encloses nothing
                        {curveOf({support::pointLike(3, 4)}), 0, 0},
                        {polygonalCurve({{0, 0}, {30, 0}, {30, 30}, {0, 0.09}}), 1, 0},
                        {{}, 0, 0}};
  for (auto const close : {&GxBezierCurve::makeClosedCurve, &GxBezierCurve::makeNiceClosedCurve}) {
    for (Case const& c : cases) {
      GxBezierCurve curve(c.curve);
      EXPECT_EQ(c.result, (curve.*close)());
      if (c.bridges) {
        EXPECT_BITS(support::retractedLine(30, 0, 0, 0), curve[1]);
        curve.getSegments().remove(1);
      }
      EXPECT_EQ(c.curve, curve);
      EXPECT_EQ(c.curve.length() > 0, curve.strictIsClosed() != 0);
      EXPECT_EQ(curve.strictIsClosed(), (curve.*close)());  // once closed, nothing is done
      EXPECT_EQ(c.curve, curve);
    }
  }
}

TEST(GxBezierCurveClosing, NiceClosingTrimsEndsThatOverlap) {
  struct Case {
    Points vertices, expected;
  };
  Case const cases[] = {
      {{{0, 0}, {100, 0}, {50, 80}}, {{0, 0}, {100, 0}, {50, 80}, {0, 0}}},
      {{{0, 0}, {100, 0}, {50, 50}, {-5, -5}}, {{0, 0}, {100, 0}, {50, 50}, {0, 0}, {0, 0}}},
      {{{0, 0}, {100, 0}, {50, 50}, {5, 0}}, {{5, 0}, {100, 0}, {50, 50}, {5, 0}, {5, 0}}},
      {{{0, 0}, {100, 0}, {-60, 10}, {-5, 1}}, {{0, 0}, {100, 0}, {-60, 10}, {-5, 1}, {0, 0}}},
      {{{0, 0}, {100, 0}, {3, 3}, {5, 60}}, {{0, 0}, {100, 0}, {3, 3}, {0, 0}}},
      {{{0, 60}, {0, 3}, {100, 0}, {3, -3}}, {{3, -3}, {0, 3}, {100, 0}, {3, -3}}},
      {{{0, 0}, {100, 0}, {30, -80}, {30, -12}}, {{0, 0}, {100, 0}, {30, -80}, {30, -12}, {0, 0}}},
      {{{0, 0}, {100, 0}, {-60, -12.5}, {12, -12.5}},
       {{12, 0}, {100, 0}, {-60, -12.5}, {0, -12.5}, {12, 0}}},
      {{{0, 0}, {0, 6}, {100, 50}, {-10, 5}, {-4, 18}}, {{0, 6}, {100, 50}, {-10, 5}, {0, 6}}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(&c - cases);
    GxBezierCurve curve = polygonalCurve(c.vertices);
    EXPECT_EQ(1, curve.makeNiceClosedCurve());
    ASSERT_EQ(c.expected.size(), curve.length() + 1);
    for (std::size_t i = 1; i < c.expected.size(); ++i) {
      EXPECT_NEAR_POINT(c.expected[i - 1], curve[static_cast<int>(i - 1)][0], 1e-6);
      EXPECT_NEAR_POINT(c.expected[i], curve[static_cast<int>(i - 1)][3], 1e-6);
    }
  }
}

TEST(GxBezierCurveOffset, ACircleKeepsItsShape) {
  for (double const distance : {10.0, -10.0, 50.0, -300.0}) {
    GxBezierCurve curve = support::circle(100);
    GxBezierCurve negated(curve);
    curve.offset(distance, 1, 0);
    ASSERT_EQ(4u, curve.length());
    for (int i = 0; i < 4; ++i) {
      for (double t = 0.0; t <= 1.0; t += 0.125) {
        GxCoord<double> const p = curve[i].bValue(t);  // left of a counter-clockwise way is inside
        EXPECT_NEAR(std::fabs(100 - distance), p.distance({0, 0}),
                    1e-3 * std::fabs(distance) + 0.1);
      }
      EXPECT_BITS(curve[i][3], curve[(i + 1) % 4][0]);
    }
    negated.offset(-distance, 0, 0);
    EXPECT_EQ(curve, negated);
  }
}

TEST(GxBezierCurveOffset, ModesAndSmallDistances) {
  // The distance, the mode, whether it cuts and whether it offsets.
  for (auto const& row : support::table("10 0 0 1; 10 -3 0 1; 10 1 1 1; 10 2 1 0; 0.4 2 1 0;"
                                        "0.4 1 0 0; 10 3 0 0; -0.4 0 0 0")) {
    GxBezierCurve curve = curveOf({bezier(0, 0, 0, 100, 100, 100, 100, 0)});
    curve.offset(row[0], 1, int(row[1]));
    EXPECT_EQ(row[2], curve.length() > 1) << "mode " << row[1];
    EXPECT_EQ(row[3], curve[0][0] != GxCoord<double>(0, 0)) << "mode " << row[1];
  }
}

TEST(GxBezierCurveOffset, CutsAreMadeAtExtremesAcrossAChordThatFalls) {
  for (double const angle : {-0.7, 0.7}) {
    GxBezier arch = bezier(0, 0, 0, 100, 100, 100, 100, 0);
    for (int k = 0; k < 4; ++k) arch[k].rotate(angle, {0, 0});
    GxBezierCurve curve = curveOf({arch});
    curve.offset(0, 1, 2);
    bool const atTheTop = curve.length() == 2 && curve[0][3].distance(arch.bValue(0.5)) < 1e-6;
    EXPECT_EQ(angle < 0, atTheTop);  // a rising chord is turned up instead of level
  }
  GxBezier const wave = bezier(0, 0, 30, 120, 70, -120, 100, 0);
  GxBezierCurve curve = curveOf({wave});
  curve.offset(0, 1, 2);
  ASSERT_EQ(3u, curve.length());
  for (int i = 0; i < 2; ++i) {
    EXPECT_BITS(curve[i][3], curve[i + 1][0]);
    EXPECT_NEAR_POINT(wave.bValue(i == 0 ? 0.2113248654 : 0.7886751346), curve[i][3], 1e-6);
  }
}

TEST(GxBezierCurveOffset, GapsAreSnappedBridgedOrRounded) {
  struct Case {
    GxBezierCurve curve;
    unsigned long length;
    int at;         // the segment that was added
    double handle;  // its first handle
  };
  // An apex of 30 degrees at the first, or the second vertex: at the seam with the lesser limit, or
  // not.
  GxCoord<double> const a(0, 100), b(-26.794919243112, 0), d(26.794919243112, 0);
  double const gap = 20 * std::sin(M_PI * 75 / 180);
  Case const cases[] = {{curveOf({evenLine(0, 0, 50, 0), evenLine(51.9, 0, 99, 0)}), 3, 2, 0},
                        {curveOf({evenLine(0, 0, 50, 0), evenLine(52.1, 0, 99, 0)}), 4, 1, 0},
                        {polygonalCurve({a, b, d, a}), 6, 5, gap * 0.56568},
                        {polygonalCurve({d, a, b, d}), 6, 1, 20 * 0.56568}};
  for (Case const& c : cases) {
    GxBezierCurve curve(c.curve);
    curve.offset(-10, 1, 0);
    ASSERT_EQ(c.length, curve.length());
    EXPECT_NEAR(c.handle, curve[c.at][0].distance(curve[c.at][1]), 1e-6);
    EXPECT_NEAR(c.handle, curve[c.at][2].distance(curve[c.at][3]), 1e-6);
  }
}

TEST(GxBezierCurveOffset, RealOutlinesStayWholeOnBothSidesInEveryMode) {
  for (std::string const name : kOutlines) {
    for (double const distance : {5.0, -20.0}) {
      for (int const mode : {0, 1}) {
        SCOPED_TRACE(name + " by " + std::to_string(distance));
        GxBezierCurve curve = support::outline(name);
        double const before = signedArea(curve);
        curve.offset(distance, 1, mode);
        int const n = static_cast<int>(curve.length());
        for (int i = 0; i < n; ++i) EXPECT_BITS(curve[i][3], curve[(i + 1) % n][0]);
        EXPECT_EQ(distance > 0, signedArea(curve) < before);
      }
    }
  }
}

TEST(GxBezierCurveXRange, CodesAndTheFlagThatOutlivesACall) {
  GxBezierCurve const right = polygonalCurve({{0, 0}, {50, 5}, {100, 0}});
  GxBezierCurve const left = polygonalCurve({{100, 0}, {50, 5}, {0, 0}});
  GxBezierCurve const wrong = polygonalCurve({{100, 0}, {30, 5}, {50, 0}, {0, 0}});
  // The interval, the code, and that of the curve reversed.
  for (auto const& c :
       support::table("0 100 1 1; 80 20 1 1; 20 120 4 2; -20 80 2 4; -20 120 7 7")) {
    EXPECT_EQ(c[2], right.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[3], left.wellDefinedDetection(c[0], c[1]));
    // A reversed curve that fails leaves its mark on the next call, on any curve, and only there.
    EXPECT_EQ(0, wrong.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(0, GxBezierCurve().wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[3], right.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[2], right.wellDefinedDetection(c[0], c[1]));
  }
  // Only segments after the first must run to the right.
  EXPECT_EQ(1, polygonalCurve({{10, 0}, {0, 5}, {90, 0}}).wellDefinedDetection(20, 80));
}

TEST(GxBezierCurveXRange, TheStartIsProlonged) {
  // The segment, x, the result and the point. The fourth runs upright: level instead; the last is a
  // point and leaves the output alone.
  for (auto const& row :
       support::table("10 10 20 20 30 0 40 0 0 0 0 0; 10 10 20 20 30 0 40 0 30 1 30 30;"
                      "10 10 10 10 20 20 40 0 5 0 5 5; 10 10 10 20 20 20 40 0 5 0 5 10;"
                      "10 10 0 0 0 0 0 0 5 1 5 5; 10 10 10 10 10 10 10 10 5 -1 7 8")) {
    GxCoord<double> out(7, 8);
    EXPECT_EQ(row[9], curveOf({support::segmentOf(row)}).extendLine(out, row[8], 1e-9));
    EXPECT_NEAR_POINT(GxCoord<double>(row[10], row[11]), out, 1e-9);
  }
}

}  // namespace
