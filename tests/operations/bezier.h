// One segment.
#pragma once

#include "tests/support/world.h"

namespace support {

inline bool isParameter(double t) { return 0.0 <= t && t <= 1.0; }

inline bool isFinite(GxBezier const& s) {
  double sum = 0.0;
  for (int i = 0; i < 4; ++i) sum += 0.0 * s[i].xval() + 0.0 * s[i].yval();
  return sum == 0.0;
}

inline bool hasNaN(GxBezier const& s) { return GxBezier(s) != s; }

/// Ends halving by the length of a piece's control polygon: below one limit a piece is a line,
/// below another one a point; and all are points after so many questions, or if they do not start
/// in the origin.
struct PieceLimits : GxBezierPolylineCondition {
  explicit PieceLimits(World& w)
      : line(w.step()), point(w.step()), isAway(w.flag()), left(static_cast<long>(w.below(2000))) {}
  int isALine(GxBezier const& s, double) const override { return isShorter(s, line); }
  int isAPoint(GxBezier const& s, double) const override {
    return isShorter(s, point) || (isAway && s[0] != Point()) || left-- <= 0;
  }
  static bool isShorter(GxBezier const& s, double limit) {
    double sum = 0.0;
    for (int i = 0; i < 3 && sum < limit; ++i) {
      Vector const side = s[i + 1] - s[i];  // its square may underflow
      sum += max(side.length(), max(std::fabs(side.xval()), std::fabs(side.yval())));
    }
    return sum < limit;
  }
  double line, point;
  bool isAway;
  mutable long left;
};

/// Steps of a segment, in every form.
inline void stepAlong(World& w) {
  GxBezier const& s = w.segment();
  double const start = w.parameter(), far = w.parameter(), d = w.step();
  int const forward = w.flag();
  double t[4] = {-7, -7, -7, -7}, consumed[2] = {0.25, 0.25};
  int const codes[] = {s.findNextPos(t[0], start, d, forward),
                       s.findNextPos(t[1], start, d, forward, consumed[0]),
                       s.findNextPos(t[2], start, far, d, forward),
                       s.findNextPos(t[3], start, far, d, forward, consumed[1])};
  for (int const code : codes) w.requireCode(code, -1, 0);
  w.require(codes[0] == codes[1] && codes[2] == codes[3], "what was consumed changes no code");
  w.require(sameBits(t[0], t[1]) && sameBits(t[2], t[3]), "nor the parameter");
  w.see(t, consumed);
  GxBezier itself = s;
  double expected = s[1].yval(), sum = s[2].xval();
  int const code = s.findNextPos(expected, start, d, forward, sum);
  w.require(itself.findNextPos(itself(1).yval(), start, d, forward, itself(2).xval()) == code,
            "the same code whatever receives the results");
  w.require(sameBits(itself[1].yval(), expected) && sameBits(itself[2].xval(), sum),
            "results may be the segment's own coordinates");
}

/// Tells whether the results change with the gap next to it. Chords are turned level by sines
/// before they are compared with the gap, so that the last bits of these decide then.
template <class Results>
void askAround(World& w, GxBezier const& s, double gap, Results const& results) {
  double const margin = 1e-9 * (std::fabs(gap) + World::magnitude(curveOf({s})));
  Numbers const below = results(gap - margin), above = results(gap + margin);
  auto const areSame = [](double x, double y) { return sameBits(x, y); };
  if (!std::equal(below.begin(), below.end(), above.begin(), above.end(), areSame)) w.restOnSines();
}

inline Operations const kBezier{
    {"evaluate",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const t = w.parameter();
       w.see(s.bValue(t), s.dValue(t), s.ddValue(t), s.curvatureValue(t));
       double many[9];
       Point points[9], alone[9];
       Vector derivatives[9];
       for (int i = 0; i < 9; ++i) many[i] = t - 0.25 * i;
       s.bValues(many, 9, points, derivatives), s.bValues(many, 9, alone);
       s.bValues(many, -1, nullptr);
       for (int i = 0; i < 9; ++i) {
         w.require(sameBits(points[i], s.bValue(many[i])) && sameBits(alone[i], points[i]) &&
                       sameBits(derivatives[i], s.dValue(many[i])),
                   "many at once give the bits of one");
       }
       w.require(sameBits(s.bValue(0), s[0]) && sameBits(s.bValue(1), s[3]), "the ends are exact");
     }},
    {"value",
     [](World& w) {
       OpenBezier const& s = w.segment();
       double const t = w.parameter();
       w.see(s.value(&s[0], t, static_cast<unsigned short>(w.below(6))));
     }},
    {"split",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const t = w.parameter();
       GxBezier left, right, first(s), second, itself(s);
       s.split(left, right, t);
       first.split(second, t), itself.split(itself, t);
       w.require(sameBits(left[3], right[0]), "the parts share their joint");
       w.require(sameBits(left, first) && sameBits(right, second), "both forms");
       w.require(sameBits(itself, right), "split into itself");
       w.see(left, right);
     }},
    {"edit",
     [](World& w) {
       GxBezier s = w.segment();
       GxBezier const copy(&s[0]);
       double const sx = w.coordinate();
       s.reverse(), s.flip(), s.scale(sx, w.coordinate());
       w.see(s, s == copy, s != copy);
     }},
    {"order",
     [](World& w) {
       Numbers values{w.number(), w.number()};
       GxBezier::Comperator const before(values);
       w.require(!before(0, 1) || !before(1, 0), "not before each other");
       w.see(before(0, 1), before(1, 0), OpenBezier::compFunc(&values[0], &values[1]));
     }},
    {"polygons",
     [](World& w) {
       OpenBezier const& s = w.segment();
       int const degree = static_cast<int>(w.below(4));
       Point left[4], right[4];
       w.see(s.genericSplit(&s[0], degree, w.parameter(), left, right));
       w.see(left, right);
       w.see(s.isFlatEnough(&s[0], degree), s.crossingCount(&s[0], degree));
     }},
    {"flatness",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const tol = w.step();
       int const line = s.isALine(tol), point = s.isAPoint(tol);
       w.require(!hasNaN(s) || !(line || point), "NaN makes no line and no point");
       w.see(line, point);
     }},
    {"nearest",
     [](World& w) {
       GxBezier& s = w.segment();
       Point const p = w.pointNear(curveOf({s}));
       double t = -7.0;
       Point nearest;
       s.findNearestPointTValue(p, t);
       w.requireCode(s.findNearestPoint(p, nearest), 0, 1);
       w.require(isParameter(t) || !isFinite(s), "a parameter");
       w.require(!w.isTame() || nearest.distance(p) <= s[0].distance(p) * (1 + 1e-9) + 1e-9,
                 "no farther than the start");
       w.see(t, nearest);
     }},
    {"polygonRoots",
     [](World& w) {
       OpenBezier const& s = w.segment();
       Point polygon[6];
       double roots[64];
       s.generate5DBezier(polygon, w.pointNear(curveOf({s})));
       int const n = s.findRoots(polygon, 5, static_cast<int>(w.below(70)), roots);
       w.requireCode(n, 0, 64);
       w.see(polygon, Numbers(roots, roots + n));
     }},
    {"rootsOfDegree",
     [](World& w) {
       Point polygon[6];
       for (Point& p : polygon) p = w.point();
       int const degree = w.flag() ? 5 : w.extremeInt();
       int const depth = w.flag() ? static_cast<int>(w.below(70)) : w.extremeInt();
       double roots[64];
       int const n = OpenBezier().findRoots(polygon, degree, depth, roots);
       w.requireCode(n, 0, 64);
       w.see(Numbers(roots, roots + n));
     }},
    {"findParameter",
     [](World& w) {
       OpenBezier& s = w.segment();
       Point const p = w.pointNear(curveOf({s}));
       double const ignored = w.number(), t = s.findParameter(p, ignored, w.step());
       w.require(t == -1.0 || isParameter(t), "a parameter, or -1");
       w.see(t, s.parameter(p, w.parameter()));
     }},
    {"extremes",
     [](World& w) {
       GxBezier& s = w.segment();
       GxList<double> list;
       double tHigh = -7, high, tLow = -7, low, box[4], hull[4];
       w.require(s.getYMinMaxTValues(list) == 2, "two extremes");
       s.getMaxYTValue(tHigh, high), s.getMinYTValue(tLow, low);
       s.localMinMax(box[0], box[1], box[2], box[3]);
       s.getConvexHull(hull[0], hull[1], hull[2], hull[3]);
       w.see(list, tHigh, high, tLow, low, box, hull);
     }},
    {"findRoots",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const y = w.flag() ? w.coordinate() : w.pointNear(curveOf({s})).yval();
       double const low = w.parameter(), high = w.parameter();
       auto& list = w.filled<GxList<double>>();
       auto& points = w.filled<GxList<Point>>();
       unsigned const before = list.length();
       w.require(s.findRoots(list, y, low, high) == int(list.length()), "the list's length");
       w.require(s.findRoots(points, y, low, high) == int(points.length()), "the list's length");
       w.requireCode(static_cast<long>(list.length() - before), 0, 3);
       w.see(list, points);
     }},
    {"findTValue",
     [](World& w) {
       GxBezier& s = w.segment();
       double t = -7.0;
       Point const p = w.pointNear(curveOf({s}));
       int const found = s.findTValue(p, t, w.step());
       w.require(!found || isParameter(t), "a parameter");
       w.see(found, found ? t : 0.0);
     }},
    {"findInflectionPoint",
     [](World& w) {
       double t = 7.0;
       int const found = w.segment().findInflectionPoint(t);
       w.require(found ? 0.0 < t && t < 1.0 : t == 7.0, "inside, or untouched");
       w.see(found, t);
     }},
    {"length",
     [](World& w) {
       OpenBezier const& s = w.segment();
       double const t = w.parameter();
       w.see(s.length(t), s.length(static_cast<int>(w.below(40)) - 3, t));
     },
     kSlow},
    {"splitAtFixedLength",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const d = w.step(), low = w.parameter(), high = w.parameter();
       double lo[] = {low, low}, hi[] = {high, high};
       int const steps = w.flag() ? w.extremeInt() : 0;
       double const anchor = w.flag() ? w.parameter() : low;
       w.see(s.splitAtFixedLengthAfter(d, steps, lo[0], hi[0], anchor));
       w.see(s.splitAtFixedLengthBefore(d, steps, lo[1], hi[1], anchor));
       w.see(lo, hi);
     }},
    {"makeSegmentByCount",
     [](World& w) {
       GxBezier const& s = w.segment();
       auto& points = w.filled<std::list<Point>>();
       unsigned const n = w.below(300);
       std::size_t const before = points.size();
       s.makeSegment(static_cast<unsigned short>(n), points);
       w.require(points.size() - before == (n == 0 ? 2u : n + 1), "count + 1 points");
       w.see(points);
     }},
    {"makeSegment",
     [](World& w) {
       GxBezier const& s = w.segment();
       GxBezierCurve const shape = curveOf({s});
       double const d = w.chord(shape), t = w.parameter();
       auto& points = w.filled<GxList<Point>>();
       if (World::magnitude(shape) > 1e150 && !w.isPatient()) return;
       s.makeSegment(d, points, std::fabs(t) < 8.0 || !std::isfinite(t) ? t : 0.25);
       w.see(points);
     }},
    {"makeSegmentEx",
     [](World& w) {
       OpenBezier const& s = w.segment();
       GxBezierCurve const shape = curveOf({s});
       double const d = w.chord(shape), shorter = w.chord(shape), gap = w.step();
       double const t = w.parameter();
       auto& points = w.filled<GxList<Point>>();
       bool const isHuge = World::magnitude(shape) > 1e150, isBrief = isHuge && !w.isPatient();
       double const start = std::fabs(t) < 8.0 || !std::isfinite(t) ? t : 0.25;
       auto const run = [&](double g, GxList<Point>& list) {
         Numbers results{static_cast<double>(s.checkChordGapDist(t, t * 0.5 + 0.25, g)),
                         s.getNextTValue(d, shorter, 0.2, 0.1, g, t)};
         if (!isBrief) s.makeSegmentEx(d, shorter, g, list, start);
         for (Point const& p : list) results.insert(results.end(), {p.xval(), p.yval()});
         return results;
       };
       Numbers const results = run(gap, points);
       w.see(results[0], results[1]);
       if (!isBrief) w.see(points);
       // A chain of millions of points takes seconds with the sanitizers: it is made once only.
       if (isHuge && !isBrief) return w.restOnSines();
       askAround(w, s, gap, [&](double g) {
         GxList<Point> list;
         return run(g, list);
       });
     }},
    {"checkChordGapDist",
     [](World& w) {
       OpenBezier const& s = w.segment();
       double const from = w.parameter(), to = w.parameter(), gap = w.step();
       w.see(s.checkChordGapDist(from, to, gap));
       askAround(w, s, gap, [&](double g) {
         return Numbers{static_cast<double>(s.checkChordGapDist(from, to, g))};
       });
     }},
    {"getPolyline",
     [](World& w) {
       OpenBezier const& s = w.segment();
       double const tol = w.halvingTolerance(curveOf({s}));
       auto& chain = w.filled<std::list<Point>>();
       auto& row = w.filled<std::vector<Point>>();
       std::list<Point> timed;
       std::list<double> times;
       if (World::magnitude(curveOf({s})) > 1e150 && tol > 0.0) return;
       std::size_t const before = chain.size(), rows = row.size();
       s.getPolyline(tol, chain);
       s.getPolyline(tol, row);
       // Under a condition by which no piece is ever flat, only the limit of pieces ends the
       // halving.
       if (tol >= 0.0) s.getPolyline(tol, timed, times, GxBezierPolylineCondition());
       w.require(chain.size() - before == row.size() - rows, "both forms");
       std::list<Point> rest;
       std::vector<Point> restRow;
       s.makePolyline(tol, rest), s.makePolyline(tol, restRow);
       w.require(rest.size() == restRow.size() && rest.size() + 1 == row.size() - rows &&
                     (rest.empty() ||
                      (sameBits(rest.back(), row.back()) && sameBits(restRow.back(), row.back()))),
                 "the same without the start");
       w.require(timed.size() == times.size(), "a parameter for every point");
       for (double const t : times) w.require(isParameter(t), "a parameter");
       w.require(!(tol >= 0.0) || timed.size() == row.size() - rows, "the same points");
       w.see(row, times);
     }},
    {"halve",
     [](World& w) {
       OpenBezier const& s = w.segment();
       double const tol = w.step(), start = w.parameter();
       int const isPart = w.flag(), pieces = 1 + static_cast<int>(w.below(8));
       PieceLimits limits(w);
       limits = PieceLimits(limits);  // conditions are values
       std::list<Point> points;
       std::list<double> times;
       if (isPart) s.makePolyline(tol, start, pieces, points, times, limits);
       if (!isPart) s.getPolyline(tol, points, times, limits);
       w.require(points.size() == times.size(), "a parameter for every point");
       w.see(points, times);
     }},
    {"step", stepAlong, kSlow},
    {"stepFromPoint",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const start = w.parameter(), far = w.parameter(), d = w.step();
       Point const p = w.pointNear(curveOf({s}));
       double t = -7.0, u = -7.0;
       int const forward = w.flag();
       int const code = s.findNextPosFromPoint(t, start, p, d, forward);
       w.requireCode(code, -1, 0);
       w.requireCode(s.findNextPosFromPoint(u, start, far, p, d, forward), -1, 0);
       w.see(t, u);
       Point itself = p;
       w.require(s.findNextPosFromPoint(itself.xval(), start, itself, d, forward) == code, "code");
       w.require(sameBits(itself.xval(), t) || t == -7.0, "the result may be a coordinate");
     }},
    {"findIntersections",
     [](World& w) {
       GxBezier& s = w.segment();
       GxBezier& other = w.relative(s);
       auto& mine = w.filled<GxList<double>>();
       auto& points = w.filled<GxList<Point>>();
       double const size = World::magnitude(curveOf({s, other}));
       w.see(s.isIntersect(other));
       w.require(s.isIntersect(other) == other.isIntersect(s), "boxes, whichever asks");
       bool const isHuge = size > (w.isTame() ? 1e6 : 1e4);
       if (isHuge && !w.isPatient()) return;
       w.require(s.findIntersections(other, points) == 0 || points.length() != 0, "in the list");
       // Huge segments that coincide meet in millions of places: they are searched once only, and
       // the list is not looked at.
       if (isHuge && !w.hasKnownAnswers()) return;
       GxList<double> first(mine), theirs(mine);
       int const found = s.findIntersections(other, first, theirs);
       w.require(first.length() == theirs.length(), "parameters come in pairs");
       w.require(found == (first.length() != 0), "found what is listed");
       for (unsigned i = 0; i < first.length(); ++i) {
         w.require(isParameter(first[i]) || mine.length() != 0 || hasNaN(s), "parameters");
         w.require(i == 0 || !(first[i] > first[i - 1]), "descending");
       }
       w.see(first, theirs, points);
     }},
    {"recursivelyIntersect",
     [](World& w) {
       OpenBezier& a = w.segment();
       OpenBezier& b = w.relative(a);
       int const aDepth = static_cast<int>(w.below(8)), bDepth = static_cast<int>(w.below(8));
       double const a0 = w.parameter(), a1 = w.parameter(), b0 = w.parameter();
       GxList<double> t, u;
       a.recursivelyIntersect(a, a0, a1, aDepth, b, b0, w.parameter(), bDepth, t, u);
       w.require(t.length() == u.length(), "parameters come in pairs");
       w.see(t, u);
     }},
    {"findFirstIntersection",
     [](World& w) {
       GxBezier& s = w.segment();
       GxBezier& other = w.relative(s);
       std::pair<double, double> t(7.0, 8.0);
       double const tol = w.halvingTolerance(curveOf({s, other}));
       if (World::magnitude(curveOf({s, other})) > 1e150) return;
       int const found = s.findFirstIntersection(other, t, tol);
       w.require(found || (t.first == 7.0 && t.second == 8.0), "else untouched");
       w.see(found, t.first, t.second);
     }},
    {"findClosestPoints",
     [](World& w) {
       GxBezier& s = w.segment();
       double t = -7, u = -7;
       w.see(s.findClosestPoints(w.relative(s), t, u));
       w.see(t, u);
     }},
    {"crossLine",
     [](World& w) {
       GxBezier const& s = w.segment();
       Point const a = w.pointNear(curveOf({s})), b = w.point();
       auto& mine = w.filled<GxList<double>>();
       GxList<double> theirs(mine), third(mine), fourth(mine);
       w.see(s.findYCStrongIntersection(a, b, mine, theirs));
       w.require(mine.length() == theirs.length(), "parameters come in pairs");
       w.requireCode(s.linearProcessing(a, b, third, fourth), 0, 1);
       w.see(mine, theirs, third.length());
       GxBezier const line(a, a, b, b);
       bool const overflows =
           hasNaN(s) || hasNaN(line) || World::magnitude(curveOf({s, line})) > 1e150;
       for (unsigned i = 0; i < mine.length(); ++i) {
         w.require(overflows || (isParameter(mine[i]) && isParameter(theirs[i])), "parameters");
       }
     }},
    {"intersectBezierWithXAxis",
     [](World& w) {
       GxBezier const& s = w.segment();
       double r[3] = {7.0, 7.0, 7.0};
       int n = -1;
       intersectBezierWithXAxis(s[0], s[1], s[2], s[3], n, r[0], r[1], r[2], w.step());
       w.requireCode(n, 0, 3);
       for (int i = 0; i < 3; ++i) w.require(i < n ? isParameter(r[i]) : r[i] == 7.0, "in place");
       w.see(Numbers(r, r + max(n, 0)));
     }},
    {"selfIntersect",
     [](World& w) {
       GxBezier& s = w.segment();
       double t = 0.0, u = 0.0;
       auto& pieces = w.filled<GxList<GxBezier>>();
       int const loops = s.isSelfIntersect(t, u);
       w.require(!loops || (isParameter(t) && isParameter(u)), "a loop's parameters");
       s.cleanSelfIntersection(pieces);
       w.see(loops, t, u, pieces);
     }},
    {"isWellDefined", [](World& w) { w.requireCode(w.segment().isWellDefined(), 0, 1); }},
    {"findRatio",
     [](World& w) {
       GxBezier const& s = w.segment();
       double ratio = 7.0;
       int const mode = static_cast<int>(w.below(5));
       int const code = s.findRatio(w.number(), mode, ratio);
       w.requireCode(code, -1, 3);
       w.require(code != -1 || ratio == 7.0, "without a direction untouched");
       w.see(ratio);
     }},
    {"bernstein",
     [](World& w) {
       int const n = w.flag() ? w.extremeInt() : static_cast<int>(w.below(w.isTame() ? 30 : 1100));
       int const k = w.flag() ? w.extremeInt() : static_cast<int>(w.below(30));
       w.see(factln(n), bico(n, k));
       double const t = w.parameter();
       w.see(blendValue(t, k, static_cast<unsigned short>(w.below(30))));
     },
     kSystemsBits},
    {"initBlendArray",
     [](World& w) {
       unsigned short const steps = static_cast<unsigned short>(w.below(40));
       auto const release = [steps](double** rows) {
         for (std::size_t i = 0; i <= steps; ++i) delete[] rows[i];
         delete[] rows;
       };
       std::unique_ptr<double*[], decltype(release)> const table(initBlendArray(steps), release);
       if (table == nullptr) return;
       double t = 0.0;
       for (std::size_t i = 0; i <= steps; ++i, t = min(t + 1.0 / steps, 1.0)) {
         for (int k = 0; k < 4; ++k)
           w.require(table[i][k] == blendValue(t, k, 3), "accumulated steps");
       }
     }},
};

}  // namespace support
