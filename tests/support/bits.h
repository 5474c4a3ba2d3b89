// Results compared bit for bit; any NaN equals any NaN.
#pragma once

#include "crv/crv.h"

#include <cmath>

namespace support {

inline bool sameBits(double a, double b) {
  return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

inline bool sameBits(GxCoord<double> const& p, GxCoord<double> const& q) {
  return sameBits(p.xval(), q.xval()) && sameBits(p.yval(), q.yval());
}

inline bool sameBits(GxVector<double> const& v, GxVector<double> const& w) {
  return sameBits(v.xval(), w.xval()) && sameBits(v.yval(), w.yval());
}

inline bool sameBits(GxBezierCurvePosition const& p, GxBezierCurvePosition const& q) {
  return p.getSegmentNumber() == q.getSegmentNumber() && sameBits(p.getTValue(), q.getTValue());
}

bool sameBits(GxBezier const& a, GxBezier const& b);

/// The first n of two chains of control points, or of segments.
template <class A, class B>
bool sameBits(A const& a, B const& b, int n) {
  for (int i = 0; i < n; ++i) {
    if (!sameBits(a[i], b[i])) return false;
  }
  return true;
}

inline bool sameBits(GxBezier const& a, GxBezier const& b) { return sameBits(a, b, 4); }

inline bool sameBits(GxBezierCurve const& a, GxBezierCurve const& b) {
  return a.length() == b.length() && a.strictIsClosed() == b.strictIsClosed() &&
         sameBits(a, b, static_cast<int>(a.length()));
}

}  // namespace support
