#include "tests/support/expect.h"

#include <algorithm>

namespace {

using namespace support;

Numbers rootsOf(double a, double b, double c, double d) {
  double roots[3];
  int const n = cubicRoots(a, b, c, d, roots);
  return Numbers(roots, roots + n);
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

}  // namespace
