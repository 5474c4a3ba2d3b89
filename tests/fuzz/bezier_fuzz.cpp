// Every operation of one segment.
#include "tests/support/open.h"

#include <list>
#include <utility>

#include "input.h"

namespace {

using fuzz::Appended;
using fuzz::Input;
using fuzz::require;
using Point = GxCoord<double>;
using support::OpenBezier;

bool isInUnit(double t) { return 0.0 <= t && t <= 1.0; }

bool isFinite(GxBezier const& s) {
  for (int i = 0; i < 4; ++i) {
    if (!std::isfinite(s[i].xval()) || !std::isfinite(s[i].yval())) return false;
  }
  return true;
}

void evaluate(Input& in, OpenBezier s) {
  double const t = in.parameter();
  s.bValue(t);
  s.dValue(t);
  s.ddValue(t);
  s.curvatureValue(t);
  Point const points[] = {s[0], s[1], s[2], s[3]};
  s.value(points, t, static_cast<unsigned short>(in.below(6)));
  Point left[4];
  Point right[4];
  s.genericSplit(points, static_cast<int>(in.below(4)), t, left, right);
  s.isFlatEnough(points, static_cast<int>(in.below(4)));
  s.crossingCount(points, 3);
  GxBezier a;
  GxBezier b;
  s.GxBezier::split(a, b, t);
  require(fuzz::sameBits(a[3], b[0]), "the parts share their joint");
  s.isALine(in.step());
  s.isAPoint(in.step());
  s.reverse();
  s.flip();
  s.scale(in.raw(), in.coordinate());
}

void nearest(Input& in, OpenBezier s) {
  Point const p = in.flip() ? in.point() : s.bValue(in.parameter());
  double t = -7.0;
  s.findNearestPointTValue(p, t);
  require(isInUnit(t) || !isFinite(s), "the nearest parameter is in [0, 1]");
  Point q;
  int const code = s.findNearestPoint(p, q);
  require(code == 0 || code == 1, "an end or an inner point");
  double const u = s.findParameter(p, in.raw(), in.step());
  require(u == -1.0 || isInUnit(u), "a parameter, or -1");
  s.parameter(p, in.parameter());
  Point w[6];
  s.generate5DBezier(w, p);
  double roots[64];
  int const n = s.findRoots(w, 5, static_cast<int>(in.below(70)), roots);
  require(0 <= n && n <= 64, "at most 64 roots are kept");
}

void extremes(Input& in, OpenBezier s) {
  Appended<double> list(in, 7.0);
  int const before = static_cast<int>(list.list().length());
  double const lo = in.parameter();
  double const hi = in.parameter();
  require(s.GxBezier::findRoots(list.list(), in.coordinate(), lo, hi) >= before, "appended");
  list.check();
  Appended<Point> points(in, Point(1, 2));
  s.GxBezier::findRoots(points.list(), in.coordinate(), 0.0, 1.0);
  points.check();
  GxList<double> fresh;
  require(s.getYMinMaxTValues(fresh) == 2, "two extremes");
  double t, y, box[4];
  s.getMaxYTValue(t, y);
  s.getMinYTValue(t, y);
  s.localMinMax(box[0], box[1], box[2], box[3]);
  s.getConvexHull(box[0], box[1], box[2], box[3]);
  if (s.findTValue(in.point(), t, in.step())) require(isInUnit(t), "a parameter");
  if (s.findInflectionPoint(t)) require(0.0 < t && t < 1.0, "inside");
}

void weights(Input& in) {
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

void lengths(Input& in, OpenBezier s) {
  s.GxBezier::length(in.parameter());
  s.length(static_cast<int>(in.below(40)) - 3, in.parameter());
  double lo = in.parameter();
  double hi = in.parameter();
  int const steps = in.chance(4) ? in.extremeInt() : 0;
  s.splitAtFixedLengthAfter(in.step(), steps, lo, hi, in.parameter());
  s.splitAtFixedLengthBefore(in.step(), steps, lo, hi, in.parameter());
}

void polylines(Input& in, OpenBezier s) {
  std::list<Point> list;
  s.makeSegment(static_cast<unsigned short>(in.below(300)), list);
  s.checkChordGapDist(in.parameter(), in.parameter(), in.step());
  s.getNextTValue(in.step(), in.step(), in.unit(), in.unit(), in.step(), in.parameter());
  if (!Input::isMeasurable(s)) return;
  Appended<Point> out(in, Point(1, 2));
  s.makeSegment(in.chord(s), out.list(), in.startParameter());
  s.makeSegmentEx(in.chord(s), in.chord(s), in.step(), out.list(), in.startParameter());
  out.check();
  std::list<Point> halved;
  std::list<double> tValues;
  s.getPolyline(in.halvingTolerance(s), halved, tValues, GxBezierPolylineCondition());
  require(halved.size() == tValues.size(), "a parameter for every point");
  for (double const t : tValues) require(isInUnit(t), "a parameter");
}

void walks(Input& in, OpenBezier s) {
  double const d = in.step();
  double const start = in.parameter();
  double const far = in.parameter();
  int const forward = in.extremeInt();
  double t = -7.0;
  double consumed = in.coordinate();
  int const codes[] = {
      s.findNextPos(t, start, d * d, forward),
      s.findNextPos(t, start, far, d * d, forward),
      s.findNextPos(t, start, d * d, forward, consumed),
      s.findNextPos(t, start, far, d, forward, consumed),
      s.findNextPosFromPoint(t, start, in.point(), d * d, forward),
      s.findNextPosFromPoint(t, start, far, in.point(), d, forward),
  };
  for (int const code : codes) require(code == 0 || code == -1, "found or not");
}

void crossings(Input& in, OpenBezier s) {
  OpenBezier other = in.relative(s);
  double const size = std::fmax(Input::extent(s), Input::extent(other));
  // Curves on each other meet all along: what that costs is bounded, but too much for a fuzzer.
  if (size > 1e4 || Input::magnitude(s) + Input::magnitude(other) > 1e9) return;
  Appended<double> mine(in, 0.25);
  Appended<double> theirs(in, 0.25);
  unsigned const before = mine.list().length();
  if (before == theirs.list().length()) {
    int const found = s.findIntersections(other, mine.list(), theirs.list());
    require(mine.list().length() == theirs.list().length(), "parameters come in pairs");
    require(found == (mine.list().length() != 0), "found what is listed");
    for (unsigned i = 0; i < mine.list().length(); ++i) {
      require(isInUnit(mine.list()(i)) && isInUnit(theirs.list()(i)), "parameters");
    }
  }
  Appended<Point> points(in, Point(1, 2));
  s.findIntersections(other, points.list());
  points.check();
  std::pair<double, double> first(7.0, 8.0);
  if (!s.findFirstIntersection(other, first, size * 0.01 + (size + Input::magnitude(s)) * 1e-9)) {
    require(first.first == 7.0 && first.second == 8.0, "untouched");
  }
  double t1, t2;
  s.findClosestPoints(other, t1, t2);
  require(s.isIntersect(other) == other.isIntersect(s), "boxes overlap, whichever asks");
}

void shapes(Input& in, OpenBezier s) {
  double t1 = 0.0;
  double t2 = 0.0;
  if (s.isSelfIntersect(t1, t2)) require(isInUnit(t1) && isInUnit(t2), "a loop's parameters");
  Appended<GxBezier> pieces(in, GxBezier());
  s.cleanSelfIntersection(pieces.list());
  pieces.check();
  s.isWellDefined();
  double ratio = 7.0;
  int const code = s.findRatio(in.raw(), static_cast<int>(in.below(5)), ratio);
  require(-1 <= code && code <= 3, "a code of findRatio");
  require(code != -1 || ratio == 7.0, "untouched");
}

void lines(Input& in, OpenBezier const& s) {
  Appended<double> mine(in, 0.25);
  Appended<double> theirs(in, 0.25);
  s.findYCStrongIntersection(in.point(), in.point(), mine.list(), theirs.list());
  int const code =
      s.linearProcessing(s.bValue(in.parameter()), in.point(), mine.list(), theirs.list());
  require(code == 0 || code == 1, "recorded or not");
  mine.check();
  theirs.check();
  int count = -1;
  double r[3] = {7.0, 7.0, 7.0};
  intersectBezierWithXAxis(s[0], s[1], s[2], s[3], count, r[0], r[1], r[2], in.step());
  require(0 <= count && count <= 3, "up to three");
  for (int i = 0; i < 3; ++i) require(i < count ? isInUnit(r[i]) : r[i] == 7.0, "in place");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input in(data, size);
  in.chooseScale();
  OpenBezier const s(in.segment());
  OpenBezier const copy(s);
  switch (in.below(10)) {
    case 0: evaluate(in, s); break;
    case 1: nearest(in, s); break;
    case 2: extremes(in, s); break;
    case 3: lengths(in, s); break;
    case 4: polylines(in, s); break;
    case 5: walks(in, s); break;
    case 6: crossings(in, s); break;
    case 7: shapes(in, s); break;
    case 8: lines(in, s); break;
    default: weights(in);
  }
  require(fuzz::sameBits(s, copy), "the caller's segment stays");
  return 0;
}
