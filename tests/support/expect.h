// Comparisons that print what differs, exactly.
#pragma once

#include "tests/support/cases.h"

#include <gtest/gtest.h>

namespace support {

/// A row that is told with whatever fails while it lives.
struct Row : Numbers {
  Row(Numbers const& n) : Numbers(n), trace(__FILE__, __LINE__, testing::PrintToString(n)) {}
  testing::ScopedTrace trace;
};

template <class A, class B>
::testing::AssertionResult bitsMatch(A const& a, B const& b) {
  if (sameBits(a, b)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << text(a) << " is not " << text(b);
}

inline ::testing::AssertionResult near(Point const& p, Point const& q, double tol) {
  if (p.distance(q) <= tol) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << text(p) << " and " << text(q) << " are " << p.distance(q) << " apart";
}

}  // namespace support

#define EXPECT_BITS(a, b) EXPECT_TRUE(::support::bitsMatch(a, b))
#define EXPECT_NEAR_POINT(p, q, tol) EXPECT_TRUE(::support::near(p, q, tol))
#define ASSERT_NEAR_POINT(p, q, tol) ASSERT_TRUE(::support::near(p, q, tol))
