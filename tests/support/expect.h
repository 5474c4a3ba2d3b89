// Comparisons that print what differs: numbers as hexadecimal and decimal, points as pairs.
#pragma once

#include "crv/crv.h"
#include "tests/support/bits.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;
using Vector = GxVector<double>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The elements of a list.
template <class T>
std::vector<T> valuesOf(GxList<T> const& list) {
  std::vector<T> values;
  for (unsigned i = 0; i < list.length(); ++i) values.push_back(list[i]);
  return values;
}

template <class T>
GxList<T> listOf(std::vector<T> const& values) {
  GxList<T> list;
  for (T const& value : values) list.add(value);
  return list;
}

inline std::string text(double x) {
  char text[64];
  std::snprintf(text, sizeof text, "%a (%.17g)", x, x);
  return text;
}

inline std::string text(Point const& p) {
  return "(" + text(p.xval()) + ", " + text(p.yval()) + ")";
}

inline std::string text(Position const& p) {
  return "(" + std::to_string(p.getSegmentNumber()) + ", " + text(p.getTValue()) + ")";
}

inline std::string text(GxBezier const& s) {
  return text(s[0]) + " " + text(s[1]) + " " + text(s[2]) + " " + text(s[3]);
}

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
