// The bits of what the operations return, hashed: the same on every compiler, and in every thread.
#pragma once

#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <cstdint>
#include <list>
#include <vector>

namespace support {

/// FNV-1a over the bits of results, every NaN counting as the same one.
class Hash {
 public:
  void add(double x) {
    std::uint64_t bits = x != x ? 0x7ff8000000000000u : bitsOf(x);
    for (int i = 0; i < 8; ++i, bits >>= 8) {
      value_ = (value_ ^ (bits & 0xff)) * 0x100000001b3u;
    }
    ++results_;
  }
  void add(Point const& p) {
    add(p.xval());
    add(p.yval());
  }
  void add(GxVector<double> const& v) {
    add(v.xval());
    add(v.yval());
  }
  void add(GxBezier const& s) {
    for (int i = 0; i < 4; ++i) add(s[i]);
  }
  void add(GxBezierCurvePosition const& p) {
    add(static_cast<double>(p.getSegmentNumber()));
    add(p.getTValue());
  }
  void add(GxBezierCurve const& curve) {
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) add(curve[i]);
  }
  template <class T>
  void add(GxList<T> const& list) {
    for (unsigned i = 0; i < list.length(); ++i) add(list[i]);
  }

  std::uint64_t value() const { return value_; }
  long results() const { return results_; }

 private:
  std::uint64_t value_ = 0xcbf29ce484222325u;
  long results_ = 0;
};

inline void addEvaluation(Hash& hash, OpenBezier const& s, double t) {
  hash.add(s.bValue(t));
  hash.add(s.dValue(t));
  hash.add(s.ddValue(t));
  hash.add(s.curvatureValue(t));
  GxBezier left;
  GxBezier right;
  s.split(left, right, t);
  hash.add(left);
  hash.add(right);
}

inline void addQueries(Hash& hash, OpenBezier s, Point const& p) {
  double t = -7.0;
  s.findNearestPointTValue(p, t);
  hash.add(t);
  hash.add(s.parameter(p, 0.3));
  hash.add(s.findParameter(s.bValue(0.4), 0.0, 1e-6));
  GxList<double> list;
  s.getYMinMaxTValues(list);
  s.GxBezier::findRoots(list, p.yval(), 0.0, 1.0);
  hash.add(list);
  double box[4];
  s.localMinMax(box[0], box[1], box[2], box[3]);
  for (double const x : box) hash.add(x);
  hash.add(s.findTValue(p, t, 0.5));
  hash.add(s.findInflectionPoint(t));
  hash.add(s.isWellDefined());
  double u = -7.0;
  hash.add(s.isSelfIntersect(t, u));
  hash.add(t);
  hash.add(u);
}

inline void addLengths(Hash& hash, OpenBezier const& s) {
  hash.add(s.GxBezier::length(0.0));
  double lo = 0.0;
  double hi = 1.0;
  hash.add(s.splitAtFixedLengthAfter(20.0, 0, lo, hi, 0.0));
  hash.add(lo);
  hash.add(hi);
  double t = -7.0;
  double consumed = 0.0;
  hash.add(s.findNextPos(t, 0.1, 400.0, 1, consumed));
  hash.add(t);
  hash.add(consumed);
}

inline void addPolylines(Hash& hash, OpenBezier const& s) {
  std::vector<Point> halved;
  s.getPolyline(0.5, halved);
  for (Point const& p : halved) hash.add(p);
  GxList<Point> spaced;
  s.makeSegment(15.0, spaced, 0.0);
  hash.add(spaced);
}

inline void addCrossings(Hash& hash, OpenBezier s, OpenBezier const& other) {
  GxList<double> ours;
  GxList<double> theirs;
  s.findIntersections(other, ours, theirs);
  s.findYCStrongIntersection(other[0], other[3], ours, theirs);
  hash.add(ours);
  hash.add(theirs);
}

inline void addSegment(Hash& hash, OpenBezier const& s, OpenBezier const& other, double t,
                       Point const& p) {
  addEvaluation(hash, s, t);
  addQueries(hash, s, p);
  addLengths(hash, s);
  addPolylines(hash, s);
  addCrossings(hash, s, other);
}

/// Where a map carries positions along a curve of n segments, and where back from there.
inline void addMap(Hash& hash, GxHandle<GxBezierCurvePositionMapBase> const& map, int n) {
  for (int i = -1; i <= 5 * n; ++i) {
    GxBezierCurvePosition there(-7, 0.125);
    GxBezierCurvePosition back(-7, 0.125);
    hash.add(map->mapPosition(there, GxBezierCurvePosition(0, i * 0.2)));
    hash.add(map->inverseMapPosition(back, there));
    hash.add(there);
    hash.add(back);
  }
}

inline void addEdits(Hash& hash, GxBezierCurve curve, GxBezierCurvePosition const& from,
                     GxBezierCurvePosition const& to) {
  int const n = static_cast<int>(curve.length());
  GxHandle<GxBezierCurvePositionMapBase> map;
  GxHandle<GxBezierCurvePositionMapBase> rest;
  GxBezierCurve copy;
  GxBezierCurve second;
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
  hash.add(copy);
  hash.add(second);
}

/// Steps along a curve both ways, with what each consumed.
inline void addWalk(Hash& hash, GxBezierCurve const& curve, double step) {
  for (int const forward : {1, 0}) {
    GxBezierCurvePosition pos = forward ? curve.firstPos() : curve.lastPos();
    for (int i = 0; i < 60; ++i) {
      double consumed = 0.0;
      if (curve.findNextPos(pos, pos, step, forward, consumed, i % 2) != 0) break;
      hash.add(pos);
      hash.add(consumed);
    }
  }
}

inline void addTangents(Hash& hash, GxBezierCurve const& curve, GxBezierCurvePosition const& pos) {
  Point p[3];
  GxVector<double> v[4];
  curve.getTriple(pos, p[0], p[1], p[2]);
  curve.findVelocityVectors(pos, v[0], v[1]);
  curve.getAccelerationVectors(pos, v[2], v[3]);
  for (Point const& each : p) hash.add(each);
  for (GxVector<double> const& each : v) hash.add(each);
}

/// A curve near another one, with a size of its steps: all but fits and offsets.
inline void addCurve(Hash& hash, GxBezierCurve curve, GxBezierCurve other, double step) {
  GxList<Point> points;
  curve.makeCurve(step, points, 0);
  curve.makeCurveEx(step, step * 0.2, step * 0.01, points);
  curve.findIntersections(other, points);
  hash.add(points);
  std::vector<Point> halved;
  curve.getPolyline(step * 0.1, halved);
  for (Point const& p : halved) hash.add(p);
  hash.add(curve.curveLength());
  int valid = -1;
  hash.add(curve.isClockwise(valid));

  GxBezierCurvePosition marks[2];
  for (unsigned i = 0; i < 2; ++i) {
    hash.add(curve.findNearestPointPos(points(i * 7 + 3) + GxVector<double>(step, i), marks[i]));
    hash.add(marks[i]);
    addTangents(hash, curve, marks[i]);
  }
  GxBezierCurvePosition hit;
  hash.add(curve.findFirstGeometricLineIntersection(points(9), GxVector<double>(0.3, -1.0),
                                                    marks[0], marks[1], hit, step * 0.01));
  hash.add(hit);
  addWalk(hash, curve, step);
  addEdits(hash, curve, marks[0], marks[1]);
  curve.makeNiceClosedCurve();
  curve.changeOrientation(1 - curve.isClockwise(valid));
  hash.add(curve);
}

}  // namespace support
