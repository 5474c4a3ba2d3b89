#include "tests/support/expect.h"

#include <algorithm>

namespace {

using namespace support;

Numbers rootsOf(double a, double b, double c, double d) {
  double roots[3];
  int const n = cubicRoots(a, b, c, d, roots);
  return Numbers(roots, roots + n);
}

TEST(CubicRoots, KnownEquationsOfEveryDegree) {
  // Coefficients, then roots. (t - 1/2)^2 (t + 2) is exact in binary, then lowered and raised by
  // 2^-52.
  for (Row const k : table(R"(-2 12 -22 12  1 2 3; 1 0 0 -8  2; 1 0 0 0  0; 1 -3 3 -1  1;
            1 0 -1 0  -1 0 1; 1 -1 0 0  0 1; 1 1 -1.75 0.5  -2 0.5;
            1 1 -1.75 0x1.0000000000002p-1  -2;
            1 1 -1.75 0x1.ffffffffffffcp-2  -2 0.4999999905756782 0.5000000094243219;
            0 1 -2.0000000149011612 1.0000000149011612  1 1.0000000149011612; 0 2 -4 2  1; 0 1 0 1;
            0 1 -3 2  1 2; 0 0 2 -1  0.5; 0 0 0 1; 0 0 0 0; nan 1 1 1; 1 1 1 inf)")) {
    Numbers const found = rootsOf(k[0], k[1], k[2], k[3]);
    ASSERT_EQ(found.size() + 4, k.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], k[i + 4], 1e-14);
  }
}

TEST(CubicRoots, RandomRootsAreFoundAscendingAtEveryScale) {
  Random random(2);
  double const scales[] = {1.0, 1e-200, 1e200, -3e7};
  for (int i = 0; i < 80000; ++i) {
    double const a = scales[i % 4];
    Numbers r = {i % 5 ? random.uniform(-1, 2) : 0.0, random.uniform(-1, 2), random.uniform(-1, 2)};
    std::sort(r.begin(), r.end());
    if (r[1] - r[0] < 1e-3 || r[2] - r[1] < 1e-3) continue;
    double const pairs = r[0] * r[1] + r[0] * r[2] + r[1] * r[2];
    Numbers const found = rootsOf(a, -a * (r[0] + r[1] + r[2]), a * pairs, -a * r[0] * r[1] * r[2]);
    ASSERT_EQ(found.size(), 3u) << r[0] << ' ' << r[1] << ' ' << r[2];
    for (std::size_t k = 0; k < 3; ++k) {
      ASSERT_NEAR(found[k], r[k], 1e-9);
      ASSERT_EQ(found[k] == 0.0, r[k] == 0.0) << "exact without a constant term";
    }
  }
}

TEST(QuadraticSolve, RootsComeAscendingWithoutCancellationAndNoneLeavesThem) {
  for (Row const k : table(R"(1 -1e8 1  2 1e-8 1e8; -1 3 -2  2 1 2; 1e-20 2 -1  1 0.5 0.5;
            1 -1 0.2499999999  1 0.5 0.5; 0 0 1  0 7 8; 1 0 1  0 7 8)")) {
    int count = -1;
    double r1 = 7.0, r2 = 8.0;
    GxQuadraticSolver().quadraticSolve(&count, &r1, &r2, k[0], k[1], k[2], 1e-20, 1e-9);
    EXPECT_EQ(count, k[3]);
    EXPECT_DOUBLE_EQ(r1, k[4]);
    EXPECT_DOUBLE_EQ(r2, k[5]);
  }
}

}  // namespace
