// Comparisons that print what differs: bits as hexadecimal doubles, points as pairs.
#pragma once

#include "crv/crv.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

using Point = GxCoord<double>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The elements of a list.
template <class T>
std::vector<T> valuesOf(GxList<T> const& list) {
  std::vector<T> values;
  for (unsigned i = 0; i < list.length(); ++i) values.push_back(list[i]);
  return values;
}

inline std::uint64_t bitsOf(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

inline std::string hex(double x) {
  char text[64];
  std::snprintf(text, sizeof text, "%a (%.17g)", x, x);
  return text;
}

inline std::string text(GxCoord<double> const& p) {
  return "(" + hex(p.xval()) + ", " + hex(p.yval()) + ")";
}

inline std::string text(GxBezierCurvePosition const& p) {
  return "(" + std::to_string(p.getSegmentNumber()) + ", " + hex(p.getTValue()) + ")";
}

/// Equal bit for bit; any NaN equals any NaN.
inline bool sameBits(double a, double b) {
  return bitsOf(a) == bitsOf(b) || (std::isnan(a) && std::isnan(b));
}

inline bool sameBits(GxCoord<double> const& p, GxCoord<double> const& q) {
  return sameBits(p.xval(), q.xval()) && sameBits(p.yval(), q.yval());
}

inline bool sameBits(GxBezier const& a, GxBezier const& b) {
  for (int i = 0; i < 4; ++i) {
    if (!sameBits(a[i], b[i])) return false;
  }
  return true;
}

inline ::testing::AssertionResult bitsMatch(double a, double b) {
  if (sameBits(a, b)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << hex(a) << " is not " << hex(b);
}

inline ::testing::AssertionResult bitsMatch(GxCoord<double> const& p, GxCoord<double> const& q) {
  if (sameBits(p, q)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << text(p) << " is not " << text(q);
}

inline ::testing::AssertionResult bitsMatch(GxBezier const& a, GxBezier const& b) {
  for (int i = 0; i < 4; ++i) {
    if (!sameBits(a[i], b[i])) {
      return ::testing::AssertionFailure()
             << "control point " << i << ": " << text(a[i]) << " is not " << text(b[i]);
    }
  }
  return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult near(GxCoord<double> const& p, GxCoord<double> const& q,
                                       double tol) {
  if (p.distance(q) <= tol) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << text(p) << " and " << text(q) << " are " << p.distance(q) << " apart";
}

}  // namespace support

#define EXPECT_BITS(a, b) EXPECT_TRUE(::support::bitsMatch(a, b))
#define EXPECT_NEAR_POINT(p, q, tol) EXPECT_TRUE(::support::near(p, q, tol))
#define ASSERT_NEAR_POINT(p, q, tol) ASSERT_TRUE(::support::near(p, q, tol))
