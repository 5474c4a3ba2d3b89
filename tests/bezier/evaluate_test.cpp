// Evaluation, subdivision, flatness, control polygons, the run of x, and the Bernstein helpers.
#include "tests/support/expect.h"
#include "tests/support/open.h"

#include <memory>

namespace {

using namespace support;

TEST(GxBezierEvaluate, EndsSumsAndPartsAgreeInsideAndOutside) {
  Random random(12);
  for (int i = 0; i < 2000; ++i) {
    OpenBezier const s(i % 2 ? random.segment(1e3) : random.gridSegment(5));
    double const t = random.uniform(-0.5, 1.5), u = random.uniform(0.0, 1.0);
    ASSERT_TRUE(sameBits(s.bValue(-0.0), s[0]) && sameBits(s.bValue(1.0), s[3]));
    ASSERT_NEAR_POINT(s.value(&s[0], t, 3), s.bValue(t), 1e-10);
    ASSERT_NEAR_POINT(s.value(&s[0], t, 1), s[0] + (s[1] - s[0]) * t, 1e-10);
    GxBezier left, right, inPlace = s;
    s.split(left, right, t);
    ASSERT_TRUE(inPlace.split(inPlace, t) == right) << "split into itself";
    ASSERT_TRUE(left[0] == s[0] && left[3] == right[0] && right[3] == s[3]);
    ASSERT_NEAR_POINT(left.bValue(u), s.bValue(u * t), 1e-9);
    ASSERT_NEAR_POINT(right.bValue(u), s.bValue(t + u * (1 - t)), 1e-9);
  }
}

}  // namespace
