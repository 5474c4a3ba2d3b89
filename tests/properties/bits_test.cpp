// The same bits from every compiler at every optimisation level: a hash over a million results,
// recorded. Operations that call pow, sin, cos or atan2 are left out: those come with the system.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <cstdint>
#include <list>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::OpenBezier;
using support::Random;

// Found alike by g++ 12 and clang 14, at -O0 and -O3, on x86-64.
constexpr std::uint64_t kRecorded = 0x5fd6158dc872f48au;

/// FNV-1a over the bits of results, every NaN counting as the same one.
class Hash {
 public:
  void add(double x) {
    std::uint64_t bits = x != x ? 0x7ff8000000000000u : support::bitsOf(x);
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

void addEvaluation(Hash& hash, OpenBezier const& s, double t) {
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

void addQueries(Hash& hash, OpenBezier s, Point const& p) {
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

void addLengths(Hash& hash, OpenBezier const& s) {
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

void addPolylines(Hash& hash, OpenBezier const& s) {
  std::vector<Point> halved;
  s.getPolyline(0.5, halved);
  for (Point const& p : halved) hash.add(p);
  GxList<Point> spaced;
  s.makeSegment(15.0, spaced, 0.0);
  hash.add(spaced);
}

void addCrossings(Hash& hash, OpenBezier s, OpenBezier const& other) {
  GxList<double> ours;
  GxList<double> theirs;
  s.findIntersections(other, ours, theirs);
  s.findYCStrongIntersection(other[0], other[3], ours, theirs);
  hash.add(ours);
  hash.add(theirs);
}

void addSegment(Hash& hash, OpenBezier const& s, OpenBezier const& other, double t,
                Point const& p) {
  addEvaluation(hash, s, t);
  addQueries(hash, s, p);
  addLengths(hash, s);
  addPolylines(hash, s);
  addCrossings(hash, s, other);
}

TEST(SameBits, AMillionResultsHashToTheRecordedValue) {
  Hash hash;
  Random random(77);
  for (int i = 0; i < 12000; ++i) {
    double const size = i % 3 == 0 ? 10.0 : 100.0;
    GxBezier const s = i % 4 == 3 ? random.gridSegment(40) : random.segment(size);
    GxBezier const other = random.segment(size);
    double const t = random.uniform(-0.25, 1.25);
    addSegment(hash, s, other, t, random.point(size));
  }
  for (char const* const name : {"roman-capital-s-thirds", "bold-w-ends", "math-infinity-outer"}) {
    GxBezierCurve const curve = support::outline(name);
    int const n = static_cast<int>(curve.length());
    for (int i = 0; i < n; ++i) {
      addSegment(hash, curve[i], curve[(i + 3) % n], 0.37, curve[(i + 1) % n].bValue(0.4));
    }
  }
  EXPECT_GT(hash.results(), 1000000);
  EXPECT_EQ(hash.value(), kRecorded) << "this build's bits differ: 0x" << std::hex << hash.value();
}

}  // namespace
