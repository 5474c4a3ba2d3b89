// Every operation of one segment.
#include "tests/support/open.h"

#include <list>
#include <utility>

#include "input.h"

namespace {

using namespace fuzz;
using Point = GxCoord<double>;
using support::OpenBezier;

bool isInUnit(double t) { return 0.0 <= t && t <= 1.0; }

bool isFinite(GxBezier const& s) {
  double sum = 0.0;
  for (int i = 0; i < 4; ++i) sum += 0.0 * s[i].xval() + 0.0 * s[i].yval();
  return sum == 0.0;
}

void evaluate(Input& in, OpenBezier& s) {
  double const t = in.parameter();
  s.bValue(t), s.dValue(t), s.ddValue(t), s.curvatureValue(t);
  Point const points[] = {s[0], s[1], s[2], s[3]};
  s.value(points, t, static_cast<unsigned short>(in.below(6)));
  Point left[4], right[4];
  s.genericSplit(points, static_cast<int>(in.below(4)), t, left, right);
  s.isFlatEnough(points, static_cast<int>(in.below(4)));
  s.crossingCount(points, 3);
  GxBezier a, b;
  s.GxBezier::split(a, b, t);
  require(sameBits(a[3], b[0]), "the parts share their joint");
  s.isALine(in.step()), s.isAPoint(in.step());
  a.reverse(), a.flip(), a.scale(in.raw(), in.coordinate());
}

void nearest(Input& in, OpenBezier& s) {
  Point const p = in.flip() ? in.point() : s.bValue(in.parameter());
  double t = -7.0;
  s.findNearestPointTValue(p, t);
  require(isInUnit(t) || !isFinite(s), "the nearest parameter is in [0, 1]");
  Point q;
  requireCode(s.findNearestPoint(p, q), 0, 1);
  double const u = s.findParameter(p, in.raw(), in.step());
  require(u == -1.0 || isInUnit(u), "a parameter, or -1");
  s.parameter(p, in.parameter());
  Point w[6];
  s.generate5DBezier(w, p);
  double roots[64];
  requireCode(s.findRoots(w, 5, static_cast<int>(in.below(70)), roots), 0, 64);
}

void extremes(Input& in, OpenBezier& s) {
  Appended<double> list(in, 7.0);
  int const before = static_cast<int>(list.length());
  double const lo = in.parameter(), hi = in.parameter();
  require(s.GxBezier::findRoots(list, in.coordinate(), lo, hi) >= before, "appended");
  Appended<Point> points(in, Point(1, 2));
  s.GxBezier::findRoots(points, in.coordinate(), 0.0, 1.0);
  GxList<double> fresh;
  require(s.getYMinMaxTValues(fresh) == 2, "two extremes");
  double t, y, box[4];
  s.getMaxYTValue(t, y), s.getMinYTValue(t, y);
  s.localMinMax(box[0], box[1], box[2], box[3]);
  s.getConvexHull(box[0], box[1], box[2], box[3]);
  if (s.findTValue(in.point(), t, in.step())) require(isInUnit(t), "a parameter");
  if (s.findInflectionPoint(t)) require(0.0 < t && t < 1.0, "inside");
}

void weights(Input& in, OpenBezier&) {
  blendValue(in.parameter(), in.extremeInt(), static_cast<unsigned short>(in.below(200)));
  factln(in.extremeInt());
  bico(in.extremeInt(), in.extremeInt());
  unsigned short const steps = static_cast<unsigned short>(in.below(200));
  double** const table = initBlendArray(steps);
  for (int i = 0; i <= steps; ++i) delete[] table[i];
  delete[] table;
  std::vector<double> values{in.coordinate(), in.coordinate()};
  GxBezier::Comperator const before(values);
  require(!before(0, 1) || !before(1, 0), "not before each other");
}

void lengths(Input& in, OpenBezier& s) {
  s.GxBezier::length(in.parameter());
  s.length(static_cast<int>(in.below(40)) - 3, in.parameter());
  double lo = in.parameter(), hi = in.parameter();
  int const steps = in.chance(4) ? in.extremeInt() : 0;
  s.splitAtFixedLengthAfter(in.step(), steps, lo, hi, in.parameter());
  s.splitAtFixedLengthBefore(in.step(), steps, lo, hi, in.parameter());
}

void polylines(Input& in, OpenBezier& s) {
  std::list<Point> list;
  s.makeSegment(static_cast<unsigned short>(in.below(300)), list);
  s.checkChordGapDist(in.parameter(), in.parameter(), in.step());
  s.getNextTValue(in.step(), in.step(), in.unit(), in.unit(), in.step(), in.parameter());
  if (!Input::isMeasurable(s)) return;
  Appended<Point> out(in, Point(1, 2));
  s.makeSegment(in.chord(s), out, in.startParameter());
  s.makeSegmentEx(in.chord(s), in.chord(s), in.step(), out, in.startParameter());
  std::list<Point> halved;
  std::list<double> tValues;
  s.getPolyline(in.halvingTolerance(s), halved, tValues, GxBezierPolylineCondition());
  require(halved.size() == tValues.size(), "a parameter for every point");
  for (double const t : tValues) require(isInUnit(t), "a parameter");
}

void walks(Input& in, OpenBezier& s) {
  double const d = in.step(), start = in.parameter(), far = in.parameter();
  int const forward = in.extremeInt();
  double t = -7.0, consumed = in.coordinate();
  int const codes[] = {
      s.findNextPos(t, start, d * d, forward),
      s.findNextPos(t, start, far, d * d, forward),
      s.findNextPos(t, start, d * d, forward, consumed),
      s.findNextPos(t, start, far, d, forward, consumed),
      s.findNextPosFromPoint(t, start, in.point(), d * d, forward),
      s.findNextPosFromPoint(t, start, far, in.point(), d, forward),
  };
  for (int const code : codes) requireCode(code, -1, 0);
}

void crossings(Input& in, OpenBezier& s) {
  OpenBezier other = in.relative(s);
  double const size = std::fmax(Input::extent(s), Input::extent(other));
  // Curves on each other meet all along: what that costs is bounded, but too much for a fuzzer.
  if (size > 1e4 || Input::magnitude(s) + Input::magnitude(other) > 1e9) return;
  GxList<double> mine = Appended<double>(in, 0.25), theirs = Appended<double>(in, 0.25);
  if (mine.length() == theirs.length()) {
    int const found = s.findIntersections(other, mine, theirs);
    require(mine.length() == theirs.length(), "parameters come in pairs");
    require(found == (mine.length() != 0), "found what is listed");
    for (unsigned i = 0; i < mine.length(); ++i) {
      require(isInUnit(mine(i)) && isInUnit(theirs(i)), "parameters");
    }
  }
  Appended<Point> points(in, Point(1, 2));
  s.findIntersections(other, points);
  std::pair<double, double> first(7.0, 8.0);
  if (!s.findFirstIntersection(other, first, size * 0.01 + (size + Input::magnitude(s)) * 1e-9)) {
    require(first.first == 7.0 && first.second == 8.0, "untouched");
  }
  double t1, t2;
  s.findClosestPoints(other, t1, t2);
  require(s.isIntersect(other) == other.isIntersect(s), "boxes overlap, whichever asks");
}

void shapes(Input& in, OpenBezier& s) {
  double t1 = 0.0, t2 = 0.0;
  if (s.isSelfIntersect(t1, t2)) require(isInUnit(t1) && isInUnit(t2), "a loop's parameters");
  Appended<GxBezier> pieces(in, GxBezier());
  s.cleanSelfIntersection(pieces);
  s.isWellDefined();
  double ratio = 7.0;
  int const code = s.findRatio(in.raw(), static_cast<int>(in.below(5)), ratio);
  requireCode(code, -1, 3);
  require(code != -1 || ratio == 7.0, "untouched");
}

void lines(Input& in, OpenBezier& s) {
  Appended<double> mine(in, 0.25), theirs(in, 0.25);
  s.findYCStrongIntersection(in.point(), in.point(), mine, theirs);
  requireCode(s.linearProcessing(s.bValue(in.parameter()), in.point(), mine, theirs), 0, 1);
  int count = -1;
  double r[3] = {7.0, 7.0, 7.0};
  intersectBezierWithXAxis(s[0], s[1], s[2], s[3], count, r[0], r[1], r[2], in.step());
  requireCode(count, 0, 3);
  for (int i = 0; i < 3; ++i) require(i < count ? isInUnit(r[i]) : r[i] == 7.0, "in place");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input in(data, size);
  OpenBezier s(in.segment()), copy(s);
  void (*const topics[])(Input&, OpenBezier&) = {evaluate, nearest,   extremes, lengths, polylines,
                                                 walks,    crossings, shapes,   lines,   weights};
  topics[in.below(10)](in, s);
  require(sameBits(s, copy), "the caller's segment stays");
  return 0;
}
