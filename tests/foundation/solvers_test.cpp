#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Random;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<double> rootsOf(double a, double b, double c, double d) {
  double roots[3] = {kNaN, kNaN, kNaN};
  int const n = cubicRoots(a, b, c, d, roots);
  return std::vector<double>(roots, roots + n);
}

/// The coefficients of scale * (t - r0)(t - r1)(t - r2).
std::vector<double> rootsOfProduct(double scale, double r0, double r1, double r2) {
  return rootsOf(scale, -scale * (r0 + r1 + r2), scale * (r0 * r1 + r0 * r2 + r1 * r2),
                 -scale * r0 * r1 * r2);
}

TEST(CubicRoots, KnownEquationsOfEveryDegree) {
  struct Case {
    double a, b, c, d;
    std::vector<double> roots;
  };
  Case const cases[] = {
      {1, -6, 11, -6, {1, 2, 3}}, {-2, 12, -22, 12, {1, 2, 3}},
      {1, 0, 0, -8, {2}},         {1, 0, 0, 0, {0}},
      {1, -3, 3, -1, {1}},                                // triple
      {1, 0, -1, 0, {-1, 0, 1}},  {1, -1, 0, 0, {0, 1}},  // a double root at 0
      {0, 1, -3, 2, {1, 2}},      {0, 1, -2, 1, {1}},
      {0, 1, 0, 1, {}},           {0, 0, 2, -1, {0.5}},
      {0, 0, 0, 1, {}},           {0, 0, 0, 0, {}},
      {1e-17, 1, -3, 2, {1, 2}},  // a leading coefficient that vanishes beside the others
      {kNaN, 1, 1, 1, {}},        {1, 1, 1, kInf, {}},
  };
  for (Case const& k : cases) {
    std::vector<double> const found = rootsOf(k.a, k.b, k.c, k.d);
    ASSERT_EQ(found.size(), k.roots.size()) << k.a << ' ' << k.b << ' ' << k.c << ' ' << k.d;
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], k.roots[i], 1e-14);
  }
}

TEST(CubicRoots, ADoubleRootComesOnceAndACloseOneTwice) {
  // (t - 1/2)^2 (t + 2), exact in binary; then lowered and raised by a hair.
  std::vector<double> const touching = rootsOf(1.0, 1.0, -1.75, 0.5);
  ASSERT_EQ(touching.size(), 2u);
  EXPECT_DOUBLE_EQ(touching[0], -2.0);
  EXPECT_DOUBLE_EQ(touching[1], 0.5);

  double const hair = 0x1p-52;
  EXPECT_EQ(rootsOf(1.0, 1.0, -1.75, 0.5 + hair).size(), 1u);
  std::vector<double> const apart = rootsOf(1.0, 1.0, -1.75, 0.5 - hair);
  ASSERT_EQ(apart.size(), 3u);
  // f is 2.5 (t - 1/2)^2 - hair there.
  EXPECT_NEAR(apart[1], 0.5 - std::sqrt(hair / 2.5), 1e-14);
  EXPECT_NEAR(apart[2], 0.5 + std::sqrt(hair / 2.5), 1e-14);
}

TEST(CubicRoots, ARootIsExactlyZeroWithoutConstantTerm) {
  Random random(1);
  for (int i = 0; i < 10000; ++i) {
    double const a = random.uniform(-1, 1);
    double const b = random.uniform(-1, 1);
    std::vector<double> const roots = rootsOf(a, b, random.uniform(-1, 1), 0.0);
    int const zeros = static_cast<int>(std::count(roots.begin(), roots.end(), 0.0));
    ASSERT_EQ(zeros, 1);
  }
}

TEST(CubicRoots, RandomRootsAreFoundAscendingAtEveryScale) {
  Random random(2);
  for (double const scale : {1.0, 1e-200, 1e200, -3e7}) {
    for (int i = 0; i < 20000; ++i) {
      double r[3] = {random.uniform(-1, 2), random.uniform(-1, 2), random.uniform(-1, 2)};
      std::sort(r, r + 3);
      if (r[1] - r[0] < 1e-3 || r[2] - r[1] < 1e-3) continue;
      std::vector<double> const found = rootsOfProduct(scale, r[0], r[1], r[2]);
      ASSERT_EQ(found.size(), 3u) << r[0] << ' ' << r[1] << ' ' << r[2];
      for (std::size_t k = 0; k < 3; ++k) ASSERT_NEAR(found[k], r[k], 1e-9);
    }
  }
}

TEST(CubicRoots, AnyDoublesGiveAnswersInOrder) {
  Random random(3);
  double const special[] = {0.0, -0.0, 1.0, -1.0, 1e-300, 5e-324, 1e300, -1.7e308, 1e-9, 3.0};
  for (int i = 0; i < 10000; ++i) {
    double k[4];
    for (double& x : k) x = special[random.whole(0, 9)];
    std::vector<double> const roots = rootsOf(k[0], k[1], k[2], k[3]);
    ASSERT_TRUE(std::is_sorted(roots.begin(), roots.end()));
    ASSERT_TRUE(std::adjacent_find(roots.begin(), roots.end()) == roots.end());
  }
}

struct Quadratic {
  int count = -1;
  double r1 = 7.0;
  double r2 = 8.0;

  Quadratic(double a, double b, double c) {
    GxQuadraticSolver().quadraticSolve(&count, &r1, &r2, a, b, c, 1e-20, 1e-9);
  }
};

TEST(QuadraticSolve, RootsComeAscendingWithoutCancellation) {
  Quadratic const far(1.0, -1e8, 1.0);
  EXPECT_EQ(far.count, 2);
  EXPECT_DOUBLE_EQ(far.r1, 1e-8);
  EXPECT_DOUBLE_EQ(far.r2, 1e8);
  Quadratic const negative(-1.0, 3.0, -2.0);
  EXPECT_EQ(negative.count, 2);
  EXPECT_DOUBLE_EQ(negative.r1, 1.0);
  EXPECT_DOUBLE_EQ(negative.r2, 2.0);
}

TEST(QuadraticSolve, SingleRootsFillBothOutputsAndNoneLeavesThem) {
  for (Quadratic const& q : {Quadratic(0.0, 2.0, -1.0), Quadratic(1e-20, 2.0, -1.0),
                             Quadratic(1.0, -1.0, 0.25 - 1e-10), Quadratic(1.0, -1.0, 0.25)}) {
    EXPECT_EQ(q.count, 1);
    EXPECT_DOUBLE_EQ(q.r1, 0.5);
    EXPECT_DOUBLE_EQ(q.r2, 0.5);
  }
  for (Quadratic const& q : {Quadratic(0.0, 0.0, 1.0), Quadratic(1.0, 0.0, 1.0)}) {
    EXPECT_EQ(q.count, 0);
    EXPECT_EQ(q.r1, 7.0);
    EXPECT_EQ(q.r2, 8.0);
  }
}

}  // namespace
