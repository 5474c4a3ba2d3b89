// Curves whose answers are known by hand, and seeded random ones.
#pragma once

#include "crv/crv.h"

#include <random>
#include <vector>

namespace support {

inline GxBezier bezier(double x0, double y0, double x1, double y1, double x2, double y2, double x3,
                       double y3) {
  return GxBezier({x0, y0}, {x1, y1}, {x2, y2}, {x3, y3});
}

/// Rises, falls and rises again in y: two extremes and one inflection, symmetric about (50, 50).
inline GxBezier sShape() { return bezier(0, 0, 40, 140, 60, -40, 100, 100); }

/// Crosses itself once, symmetric about x = 50.
inline GxBezier loop() { return bezier(0, 0, 150, 100, -50, 100, 100, 0); }

/// A quarter of a circle about the origin, to 2.8e-4 of its radius.
inline GxBezier quarterArc(double r) {
  double const k = 0.5522847498307936 * r;
  return bezier(r, 0, r, k, k, r, 0, r);
}

/// A straight segment parametrised evenly, and one with its handles on its ends.
inline GxBezier evenLine(double x0, double y0, double x3, double y3) {
  return bezier(x0, y0, x0 + (x3 - x0) / 3, y0 + (y3 - y0) / 3, x0 + (x3 - x0) * 2 / 3,
                y0 + (y3 - y0) * 2 / 3, x3, y3);
}
inline GxBezier retractedLine(double x0, double y0, double x3, double y3) {
  return bezier(x0, y0, x0, y0, x3, y3, x3, y3);
}

inline GxBezier pointLike(double x, double y) { return bezier(x, y, x, y, x, y, x, y); }

/// An open curve.
inline GxBezierCurve curveOf(std::vector<GxBezier> const& segments) {
  GxBezierCurve curve;
  for (GxBezier const& s : segments) curve.getSegments().add(s);
  return curve;
}

/// Four quarters about the origin, counter-clockwise from (r, 0).
inline GxBezierCurve circle(double r) {
  GxBezierCurve curve;
  GxBezier arc = quarterArc(r);
  for (int i = 0; i < 4; ++i) {
    curve.getSegments().add(arc);
    for (int k = 0; k < 4; ++k) arc[k] = GxCoord<double>(-arc[k].yval(), arc[k].xval());
  }
  return curve;
}

/// An open curve of segments along the x axis, each of a length, and waving by a height.
inline GxBezierCurve waves(int count, double length, double height) {
  GxBezierCurve curve;
  for (int i = 0; i < count; ++i) {
    curve.getSegments().add(bezier(length * i, 0, length * (i + 1 / 3.0), height,
                                   length * (i + 2 / 3.0), -height, length * (i + 1), 0));
  }
  return curve;
}

/// An open curve of even lines through points, two numbers each.
inline GxBezierCurve polygon(std::vector<double> const& n) {
  GxBezierCurve curve;
  for (std::size_t i = 2; i + 1 < n.size(); i += 2) {
    curve.getSegments().add(evenLine(n[i - 2], n[i - 1], n[i], n[i + 1]));
  }
  return curve;
}

inline GxBezierCurve closed(GxBezierCurve curve) {
  curve.setStrictIsClosed(1);
  return curve;
}

/// A closed curve of even lines through corners, two numbers each.
inline GxBezierCurve closedPolygon(std::vector<double> corners) {
  corners.insert(corners.end(), {corners[0], corners[1]});
  return closed(polygon(corners));
}

/// Uniform doubles in a range, the same on every platform (std distributions are not).
class Random {
 public:
  explicit Random(unsigned long long seed) : engine_(seed) {}

  double uniform(double low, double high) {
    return low + static_cast<double>(engine_() >> 11) * 0x1p-53 * (high - low);
  }
  int whole(int low, int high) {
    auto const span = static_cast<unsigned long long>(high - low) + 1;
    return low + static_cast<int>(engine_() % span);
  }
  GxCoord<double> point(double size) { return {uniform(-size, size), uniform(-size, size)}; }
  GxCoord<double> gridPoint(int n) { return {double(whole(-n, n)), double(whole(-n, n))}; }
  GxBezier segment(double size) {
    return GxBezier{point(size), point(size), point(size), point(size)};
  }
  /// Control points on a small grid: ties, straight pieces, cusps and coincident points abound.
  GxBezier gridSegment(int n) {
    return GxBezier{gridPoint(n), gridPoint(n), gridPoint(n), gridPoint(n)};
  }
  /// The i-th of many kinds: on a grid, with a handle on its start, with a cusp at 0.5.
  GxBezier ofManyKinds(int i) {
    GxBezier s = i % 3 == 0 ? gridSegment(3) : segment(1.0);
    if (i % 4 == 1) s[1] = s[0];
    if (i % 8 >= 6) s[3] = s[0] + (s[1] - s[2]);
    return s;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace support
