#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::kInf;
using support::kNaN;
using support::Random;

std::vector<double> rootsOf(double a, double b, double c, double d) {
  double roots[3] = {kNaN, kNaN, kNaN};
  int const n = cubicRoots(a, b, c, d, roots);
  return std::vector<double>(roots, roots + n);
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

TEST(CubicRoots, RandomRootsAreFoundAscendingAtEveryScale) {
  Random random(2);
  for (double const scale : {1.0, 1e-200, 1e200, -3e7}) {
    for (int i = 0; i < 20000; ++i) {
      double r[3] = {i % 4 ? random.uniform(-1, 2) : 0.0, random.uniform(-1, 2),
                     random.uniform(-1, 2)};
      std::sort(r, r + 3);
      if (r[1] - r[0] < 1e-3 || r[2] - r[1] < 1e-3) continue;
      std::vector<double> const found =
          rootsOf(scale, -scale * (r[0] + r[1] + r[2]),
                  scale * (r[0] * r[1] + r[0] * r[2] + r[1] * r[2]), -scale * r[0] * r[1] * r[2]);
      ASSERT_EQ(found.size(), 3u) << r[0] << ' ' << r[1] << ' ' << r[2];
      for (std::size_t k = 0; k < 3; ++k) {
        ASSERT_NEAR(found[k], r[k], 1e-9);
        ASSERT_EQ(found[k] == 0.0, r[k] == 0.0) << "exact without a constant term";
      }
    }
  }
}

TEST(QuadraticSolve, RootsComeAscendingWithoutCancellationAndNoneLeavesThem) {
  struct Case {
    double a, b, c;
    int count;
    double r1, r2;
  };
  Case const cases[] = {
      {1.0, -1e8, 1.0, 2, 1e-8, 1e8},         {-1.0, 3.0, -2.0, 2, 1.0, 2.0},
      {0.0, 2.0, -1.0, 1, 0.5, 0.5},          {1e-20, 2.0, -1.0, 1, 0.5, 0.5},
      {1.0, -1.0, 0.25 - 1e-10, 1, 0.5, 0.5}, {1.0, -1.0, 0.25, 1, 0.5, 0.5},
      {0.0, 0.0, 1.0, 0, 7.0, 8.0},           {1.0, 0.0, 1.0, 0, 7.0, 8.0},
  };
  for (Case const& k : cases) {
    int count = -1;
    double r1 = 7.0, r2 = 8.0;
    GxQuadraticSolver().quadraticSolve(&count, &r1, &r2, k.a, k.b, k.c, 1e-20, 1e-9);
    EXPECT_EQ(count, k.count);
    EXPECT_DOUBLE_EQ(r1, k.r1);
    EXPECT_DOUBLE_EQ(r2, k.r2);
  }
}

}  // namespace
