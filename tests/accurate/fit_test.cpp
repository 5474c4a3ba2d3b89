#include "tests/support/data.h"
#include "tests/support/positions.h"

#include <random>

namespace {

using namespace support;
using crv::Fit;
using crv::FitOptions;

/// The sine of the turn at a joint, or 2 where it turns back.
double turnAt(GxBezier const& a, GxBezier const& b) {
  Vector const in = (a[3] - a[2]).normalize();
  Vector const out = (b[1] - b[0]).normalize();
  return in * out > 0.0 ? std::fabs(in.xval() * out.yval() - in.yval() * out.xval()) : 2.0;
}

/// Checks every promise of a fit by measuring the resulting curve.
void expectPromises(std::vector<Point> const& samples, FitOptions const& options, Fit const& f) {
  int const n = static_cast<int>(f.curve.length());
  ASSERT_GT(n, 0);
  ASSERT_EQ(f.positions.size(), samples.size());
  EXPECT_TRUE(sameBits(f.curve[0][0], samples.front()));
  EXPECT_TRUE(sameBits(f.curve[n - 1][3], options.closed ? samples.front() : samples.back()));
  double worst = 0.0;
  double last = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    Position const& p = f.positions[i];
    double const at = flat(p);
    bool const isSeam = options.closed && at == 0.0;
    EXPECT_TRUE(at >= last || isSeam) << "sample " << i << " runs back";
    last = isSeam ? last : at;
    worst = std::max(worst, samples[i].distance(f.curve.locateCurvePosition(p)));
  }
  EXPECT_LE(worst, options.tolerance);
  EXPECT_NEAR(f.worstDistance, worst, 1e-12 * (1.0 + options.tolerance));
  for (int i = 0; i + 1 < n + options.closed; ++i) {
    GxBezier const& next = f.curve[(i + 1) % n];
    EXPECT_TRUE(sameBits(f.curve[i][3], next[0])) << "joint " << i;
    bool isCorner = false;
    for (std::size_t const c : f.corners) isCorner |= sameBits(samples[c], next[0]);
    bool const isPoint = f.curve[i].isAPoint(0.0);
    EXPECT_TRUE(isCorner || isPoint || turnAt(f.curve[i], next) < 1e-6) << "joint " << i;
  }
}

TEST(AccurateFit, StrokesAreFollowedWithinTheToleranceByFewSegments) {
  // The least number that lib2geom, paper.js or fit-curve needs at the same worst distance.
  struct {
    char const* name;
    unsigned long peersAtHalf, peersAtTwo;
  } const rows[] = {{"pen-sweeps", 175, 99},
                    {"pad-scribble", 99, 34},
                    {"gps-sailing", 58, 8},
                    {"island-sulawesi", 657, 302}};
  for (auto const& row : rows) {
    std::vector<Point> const samples = valuesOf(stroke(row.name));
    for (bool const closed : {false, true}) {
      for (double const tolerance : {0.5, 2.0, 1e-9}) {
        SCOPED_TRACE(row.name + text(tolerance));
        Fit const f = crv::fit(samples, {tolerance, closed, 0.0});
        expectPromises(samples, {tolerance, closed, 0.0}, f);
        if (closed || tolerance < 0.5) continue;
        EXPECT_LT(f.curve.length(), tolerance == 0.5 ? row.peersAtHalf : row.peersAtTwo);
      }
    }
  }
}

TEST(AccurateFit, ACircleTakesFewSegmentsHoweverManySamples) {
  for (int const count : {100, 1000, 20000}) {
    std::vector<Point> samples;
    for (int i = 0; i < count; ++i) {
      double const angle = 6.283185307179586 * i / count;
      samples.emplace_back(300.0 * std::cos(angle), 300.0 * std::sin(angle));
    }
    Fit const f = crv::fit(samples, {0.5, true, 1.0});
    expectPromises(samples, {0.5, true, 1.0}, f);
    EXPECT_TRUE(f.corners.empty());
    EXPECT_LE(f.curve.length(), 6u);
  }
}

TEST(AccurateFit, CornersAreFoundAndMetExactly) {
  // A square of side 100, a sample every 4: corners every 25 samples.
  std::vector<Point> samples;
  for (int i = 0; i < 100; ++i) {
    double const along = 4.0 * (i % 25);
    double const x[] = {along, 100.0, 100.0 - along, 0.0};
    samples.emplace_back(x[i / 25], x[(i / 25 + 3) % 4]);
  }
  for (bool const closed : {false, true}) {
    Fit const f = crv::fit(samples, {0.5, closed, 0.7});
    expectPromises(samples, {0.5, closed, 0.7}, f);
    EXPECT_EQ(f.curve.length(), 4u);
    EXPECT_EQ(f.corners, closed ? (std::vector<std::size_t>{0, 25, 50, 75})
                                : (std::vector<std::size_t>{25, 50, 75}));
  }
  EXPECT_TRUE(crv::fit(samples, {0.5, true, 1.6}).corners.empty());
  // Of two corners that are nearer than the tolerance one counts, even across the seam.
  std::vector<Point> cut = {{0.2, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0.2}};
  for (std::size_t i = 0; i < cut.size(); ++i) {
    EXPECT_EQ(crv::fit(cut, {0.5, true, 0.7}).corners.size(), 4u);
    std::rotate(cut.begin(), cut.begin() + 1, cut.end());
  }
}

TEST(AccurateFit, AwkwardSamplesAreFollowedAtEveryScale) {
  // Samples that made other fitters hang or fail; zigzag and jumbled ones.
  std::vector<std::vector<Point>> strokes;
  for (auto const& hard : hardCases("strokes")) strokes.push_back(pointsOf(hard.fields[0]));
  for (Numbers const& n : table("3 4; 415.74 324 493.93 325.49 420 324.2 460 325 416 324.1;"
                                "0 0 1 1 2 0 3 1 4 0 5 1; 0 0 9 0 0 0 9 0; 0 0 7 7")) {
    strokes.push_back(pointsOf(n));
  }
  std::mt19937 random(1);
  for (int k = 0; k < 200; ++k) {
    strokes.emplace_back();
    for (auto n = 2 + random() % 40; n != 0; --n) {
      strokes.back().emplace_back(random() % 17, random() % 17);
    }
  }
  for (std::vector<Point> const& samples : strokes) {
    SCOPED_TRACE(samples.size());
    for (bool const closed : {false, true}) {
      FitOptions const options{1.0, closed, closed ? 0.0 : 1.0};
      Fit const f = crv::fit(samples, options);
      expectPromises(samples, options, f);
      std::vector<Point> scaled;
      for (Point const& p : samples) scaled.emplace_back(p.xval() * 0x1p400, p.yval() * 0x1p400);
      Fit const g = crv::fit(scaled, {0x1p400, closed, options.cornerAngle});
      ASSERT_EQ(f.curve.length(), g.curve.length());
      for (int i = 0; i < static_cast<int>(f.curve.length()); ++i) {
        GxBezier s = f.curve[i];
        s.scale(0x1p400, 0x1p400);
        EXPECT_TRUE(s == g.curve[i]);
      }
    }
  }
}

TEST(AccurateFit, WhatCannotBeFittedGivesNothing) {
  std::vector<Point> const line = {{0, 0}, {1, 0}};
  for (double const tolerance : {0.0, -1.0, kNaN}) {
    EXPECT_EQ(crv::fit(line, {tolerance, false, 0.0}).curve.length(), 0u);
  }
  for (Point const& bad : {Point(kNaN, 0), Point(0, kInf), Point(0x1p501, 0), Point(0x1p-501, 0)}) {
    EXPECT_EQ(crv::fit({bad, bad}, {}).curve.length(), 0u);
  }
  EXPECT_EQ(crv::fit({}, {}).curve.length(), 0u);
  EXPECT_EQ(crv::fit(line, {kInf, true, kNaN}).positions.size(), 2u);
}

}  // namespace
