// The bits of what the operations return, hashed: the same on every compiler, and in every thread.
#pragma once

#include "tests/support/data.h"
#include "tests/support/open.h"

#include <cstdint>
#include <cstring>
#include <iterator>

namespace support {

/// FNV-1a over the bits of results, every NaN counting as the same one.
class Hash {
 public:
  template <class... Results>
  void add(Results const&... results) {
    (put(results), ...);
  }

  std::uint64_t value() const { return value_; }
  long results() const { return results_; }

 private:
  void put(double x) {
    std::uint64_t bits = 0x7ff8000000000000u;
    if (x == x) std::memcpy(&bits, &x, sizeof bits);
    for (int i = 0; i < 8; ++i, bits >>= 8) {
      value_ = (value_ ^ (bits & 0xff)) * 0x100000001b3u;
    }
    ++results_;
  }
  void put(Point const& p) { add(p.xval(), p.yval()); }
  void put(Vector const& v) { add(v.xval(), v.yval()); }
  void put(GxBezier const& s) { add(s[0], s[1], s[2], s[3]); }
  void put(Position const& p) { add(static_cast<double>(p.getSegmentNumber()), p.getTValue()); }
  void put(GxBezierCurve const& c) { add(valuesOf(GxBezierCurve(c).getSegments())); }
  template <class T>
  void put(GxList<T> const& list) {
    put(valuesOf(list));
  }
  template <class Range>
  auto put(Range const& range) -> decltype(std::begin(range), void()) {
    for (auto const& each : range) put(each);
  }

  std::uint64_t value_ = 0xcbf29ce484222325u;
  long results_ = 0;
};

inline void addQueries(Hash& hash, OpenBezier s, Point const& p) {
  double t = -7.0, u = -7.0, box[4];
  GxList<double> list;
  s.findNearestPointTValue(p, t);
  hash.add(t, s.parameter(p, 0.3), s.findParameter(s.bValue(0.4), 0.0, 1e-6));
  s.getYMinMaxTValues(list);
  s.GxBezier::findRoots(list, p.yval(), 0.0, 1.0);
  s.localMinMax(box[0], box[1], box[2], box[3]);
  hash.add(list, box);
  hash.add(s.findTValue(p, t, 0.5));
  hash.add(s.findInflectionPoint(t), s.isWellDefined());
  hash.add(s.isSelfIntersect(t, u));
  hash.add(t, u);
}

inline void addWays(Hash& hash, OpenBezier s, OpenBezier const& other) {
  double lo = 0.0, hi = 1.0, t = -7.0, consumed = 0.0;
  hash.add(s.GxBezier::length(0.0), s.splitAtFixedLengthAfter(20.0, 0, lo, hi, 0.0));
  hash.add(lo, hi, s.findNextPos(t, 0.1, 400.0, 1, consumed));
  std::vector<Point> halved;
  GxList<Point> spaced;
  GxList<double> ours, theirs;
  s.getPolyline(0.5, halved);
  s.makeSegment(15.0, spaced, 0.0);
  s.findIntersections(other, ours, theirs);
  s.findYCStrongIntersection(other[0], other[3], ours, theirs);
  hash.add(t, consumed, halved, spaced, ours, theirs);
}

inline void addSegment(Hash& hash, OpenBezier const& s, OpenBezier const& other, double t,
                       Point const& p) {
  GxBezier left, right;
  s.split(left, right, t);
  hash.add(s.bValue(t), s.dValue(t), s.ddValue(t), s.curvatureValue(t), left, right);
  addQueries(hash, s, p);
  addWays(hash, s, other);
}

/// Where a map carries positions along a curve of n segments, and where back from there.
inline void addMap(Hash& hash, GxHandle<GxBezierCurvePositionMapBase> const& map, int n) {
  for (int i = -1; i <= 5 * n; ++i) {
    Position there(-7, 0.125), back(-7, 0.125);
    hash.add(map->mapPosition(there, Position(0, i * 0.2)));
    hash.add(map->inverseMapPosition(back, there), there);
    hash.add(back);
  }
}

inline void addEdits(Hash& hash, GxBezierCurve curve, Position const& from, Position const& to) {
  int const n = static_cast<int>(curve.length());
  GxHandle<GxBezierCurvePositionMapBase> map, rest;
  GxBezierCurve copy, second;
  for (int const forward : {1, 0}) {
    hash.add(copyGxBezierCurve(copy, curve, from, to, forward, map));
    addMap(hash, map, n);
  }
  hash.add(copy);
  reverseGxBezierCurve(copy, map);
  addMap(hash, map, static_cast<int>(copy.length()));
  arrangeBezierCurve(copy, to, from);
  hash.add(spliteGxBezierCurve(from, copy, second, map, rest));
  addMap(hash, constructCompositePositionMap(map, constructRotatePositionMap(1, 2, n)), n);
  addMap(hash, rest, n);
  hash.add(copy, second);
}

/// Steps along a curve both ways, with what each consumed.
inline void addWalk(Hash& hash, GxBezierCurve const& curve, double step) {
  for (int const forward : {1, 0}) {
    Position pos = forward ? curve.firstPos() : curve.lastPos();
    double consumed = 0.0;
    for (int i = 0; i < 60; ++i, hash.add(pos, consumed)) {
      if (curve.findNextPos(pos, pos, step, forward, consumed, i % 2) != 0) break;
    }
  }
}

inline void addTangents(Hash& hash, GxBezierCurve const& curve, Position const& pos) {
  Point p[3];
  Vector v[4];
  curve.getTriple(pos, p[0], p[1], p[2]);
  curve.findVelocityVectors(pos, v[0], v[1]);
  curve.getAccelerationVectors(pos, v[2], v[3]);
  hash.add(p, v);
}

/// A curve near another one, with a size of its steps: all but fits and offsets.
inline void addCurve(Hash& hash, GxBezierCurve curve, GxBezierCurve other, double step) {
  GxList<Point> points;
  std::vector<Point> halved;
  int valid = -1;
  curve.makeCurve(step, points, 0);
  curve.makeCurveEx(step, step * 0.2, step * 0.01, points);
  curve.findIntersections(other, points);
  curve.getPolyline(step * 0.1, halved);
  hash.add(points, halved, curve.curveLength(), curve.isClockwise(valid));
  Position marks[2], hit;
  for (unsigned i = 0; i < 2; ++i) {
    hash.add(curve.findNearestPointPos(points(i * 7 + 3) + Vector(step, i), marks[i]));
    hash.add(marks[i]);
    addTangents(hash, curve, marks[i]);
  }
  hash.add(curve.findFirstGeometricLineIntersection(points(9), Vector(0.3, -1.0), marks[0],
                                                    marks[1], hit, step * 0.01));
  hash.add(hit);
  addWalk(hash, curve, step);
  addEdits(hash, curve, marks[0], marks[1]);
  curve.makeNiceClosedCurve();
  curve.changeOrientation(1 - curve.isClockwise(valid));
  hash.add(curve);
}

}  // namespace support
