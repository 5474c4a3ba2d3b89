// Compiled as C++20, where comparisons are also tried with their operands exchanged: none may be
// ambiguous, and none may warn.
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

namespace {

TEST(GxBezierCurveComparison, IsUnambiguousInNewerStandards) {
  static_assert(__cplusplus > 201703L, "this file is compiled as C++20 or later");
  GxBezierCurve curve = support::circle(9), other = support::circle(8);
  GxBezierCurve const same(curve);
  EXPECT_TRUE(same == curve && curve == same && curve == curve && same == same);
  EXPECT_FALSE(same != curve || curve != same || curve != curve || same != same);
  EXPECT_TRUE(same != other && other != same && curve != other && GxBezierCurve() != same);
  EXPECT_TRUE(same != GxBezierCurve() && curve != GxBezierCurve() && GxBezierCurve() != curve);
  EXPECT_FALSE(same == GxBezierCurve() || curve == GxBezierCurve() || GxBezierCurve() == curve);
}

}  // namespace
