// Positions and curves.
#pragma once

#include "tests/operations/bezier.h"

namespace support {

inline bool isOn(GxBezierCurve const& c, Position const& p) {
  return 0 <= p.getSegmentNumber() && p.getSegmentNumber() <= static_cast<long>(c.length());
}

/// One of the six forms of a step; `to` may be the position that the step starts from.
inline void walk(World& w) {
  GxBezierCurve const& c = w.curve();
  unsigned const form = w.below(6);
  Position const from = w.position(c), limit = form % 2 ? w.position(c) : Position();
  double const d = w.step();
  int const forward = w.flag(), mode = form == 0 || form == 2 ? w.flag() : 0;
  Point const p = form > 3 ? w.point() : Point();
  double const size = World::magnitude(c) + std::fabs(d);
  double consumed = 0.25;
  Position to(from);
  // Lengths that never converge and millions of short chords: the cost is bounded, but takes a
  // second.
  if (size > 1e6 && !w.isTame() && !w.isPatient()) return;
  auto const code = [&](Position& out) {
    switch (form) {
      case 0: return c.findNextPos(from, out, d, forward, mode);
      case 1: return c.findNextPos(from, limit, out, d, forward);
      case 2: return c.findNextPos(from, out, d, forward, consumed, mode);
      case 3: return c.findNextPos(from, limit, out, d, consumed, forward);
      case 4: return c.findNextPosFromPoint(p, from, out, d, forward);
      default: return c.findNextPosFromPoint(p, from, limit, out, d, forward);
    }
  }(to);
  w.requireCode(code, -1, 0);
  w.require(code == 0 || mode != 0 || sameBits(to, from), "untouched where there is none");
  w.require(code != 0 || !(d > 0.0) || isOn(c, to), "on the curve");
  w.see(to, consumed);
}

inline void tangents(World& w) {
  GxBezierCurve const& c = w.curve();
  Position const pos = w.position(c);
  Point point(7, 8), before(7, 8), after(7, 8);
  Vector v[6] = {{7, 8}, {7, 8}, {7, 8}, {7, 8}, {7, 8}, {7, 8}};
  w.requireCode(c.getTriple(pos, point, before, after), -1, 0);
  w.requireCode(c.getVelocityVectors(pos, v[0], v[1]), -1, 0);
  w.requireCode(c.findVelocityVectors(pos, v[2], v[3]), -1, 0);
  w.requireCode(c.getAccelerationVectors(pos, v[4], v[5]), -1, 0);
  w.see(point, before, after, v);
}

inline void firstOnLine(World& w) {
  GxBezierCurve const& c = w.curve();
  Point const p = w.pointNear(c);
  Vector const v = w.vector();
  Position const from = w.position(c), towards = w.position(c);
  double const tol = w.step();
  Position at[] = {{-7, 0.5}, {-7, 0.5}, {-7, 0.5}};
  int const codes[] = {
      c.findFirstGeometricLineIntersection(p, v, from, towards, at[0], tol),
      c.findFirstGeometricLineIntersectionEx(p, v, from, towards, at[1], tol),
      c.findFirstGeometricLineIntersectionWithEndpointCheck(p, v, from, towards, at[2])};
  for (int i = 0; i < 3; ++i) {
    w.requireCode(codes[i], -1, 0);
    w.require(codes[i] == 0 ? isOn(c, at[i]) : at[i] == Position(-7, 0.5), "on it, or untouched");
  }
  w.see(at);
}

inline void fit(World& w) {
  GxList<Point> const points = w.points();
  double const error = w.step();
  unsigned const n = points.length();
  OpenCurve& c = w.changing();
  unsigned long const before = c.length();
  c.makeBezierPolyFit(nullptr, error);
  c.makeBezierPolyFit(&points, error);
  w.require(n >= 2 || c.length() == before, "fewer than two points give nothing");
  w.require(n < 2 || (c.length() > before && c.length() < before + n), "a segment for each two");
  w.require(n < 2 || c.strictIsClosed() == 0, "open");
  w.see(c);
  if (n < 2) return;
  w.require(sameBits(c(int(before))[0], points[0]), "from the first point");
  w.require(sameBits(c(int(c.length()) - 1)[3], points[n - 1]), "to the last");
}

/// The fit of a stretch of points, between given directions.
inline void fitRange(World& w) {
  GxList<Point> const points = w.points();
  if (points.length() == 0) return;
  unsigned const first = w.below(points.length());
  unsigned const last = first + w.below(points.length() - first);
  Vector const start = w.vector(), end = w.vector();
  double const error = w.step();
  OpenCurve& c = w.changing();
  c.bezierPolyFit(&points, first, last, start, end, error);
  w.see(c);
}

inline void offsetInMode(World& w, int mode) {
  OpenCurve& c = w.changing();
  unsigned long const n = c.length();
  double const d = w.step();
  c.offset(d, w.flag(), mode);
  w.require(n <= c.length() && c.length() <= 6 * n, "cuts and joints only add segments");
  w.see(c);
}

inline Operations const kCurve{
    {"position",
     [](World& w) {
       int const segment = w.extremeInt();
       double const t = w.number(), tol = w.step();
       GxBezierCurvePositionConstructor const maker;
       int const other = w.extremeInt();
       Position const p(segment, t), q = maker.constructDirectPosition(other, w.number());
       w.require(sameBits(maker.constructPosition(segment, t), p), "normalised alike");
       double const u = p.getTValue();
       w.require((0.0 <= u && u < 1.0) || !(std::fabs(t) < 0x1p53), "normalised");
       w.require((p < q) == !(p >= q) || u != u || q.getTValue() != q.getTValue(), "ordered");
       w.see(p, q, p<q, p <= q, p> q, p >= q, p == q, p != q, p.isEqual(q, tol));
       w.see(isEqual(p, q, tol), GxBezierCurve().getSense(p, q), Position::reverseSense(segment));
       w.see(Position::isCompatibleSense(segment, w.extremeInt()));
     },
     kCountsInLong},
    {"locate",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       w.see(c.locateCurvePosition(w.position(c)), c.firstPos(), c.lastPos());
     }},
    {"editCurve",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       GxBezierCurve copy;
       double const sx = w.coordinate(), sy = w.coordinate();
       copy.setSegments(GxBezierCurve(c).getSegments());
       w.see(copy == c, copy != c, copy<c, copy> c);
       w.require(c.length() == 0 || copy.getSegments().move(0, 1) == (c.length() > 1), "moved");
       copy.moveCurve(w.vector()), copy.resize(sx, sy), copy.flip();
       w.see(copy);
       w.see(copy.isClose(), copy);
       (copy = c).reverse();
       w.require(copy.strictIsClosed() == c.strictIsClosed(), "the flag stays");
       w.see(copy);
     }},
    {"measure",
     [](World& w) {
       OpenCurve& c = w.curve();
       double box[8] = {}, t = 7.0;
       int k = 7;
       Point low(7, 8), high(7, 8);
       c.getBoundingBox(box[0], box[1], box[2], box[3]);
       c.getLocalBoundingBox(box[4], box[5], box[6], box[7]);
       int const code = c.getMinMax(low, high);
       w.require(code == (c.length() == 0 ? -1 : 0), "only an empty curve has no box");
       w.see(box, low, high);
       for (auto const extreme : {&GxBezierCurve::getCurveMaxY, &GxBezierCurve::getCurveMinY}) {
         int const none = (c.*extreme)(t, k);
         w.see(none, t, k);
       }
       w.see(c.isALine(), c.curveLength());
     },
     kSlow},
    {"fit", fit, kSystemsBits},
    {"fitRange", fitRange, kSystemsBits},
    {"findSegment",
     [](World& w) {
       GxList<Point> const points = w.points();
       Numbers u(points.length());
       for (double& t : u) t = w.parameter();
       Vector const start = w.vector(), end = w.vector();
       GxBezier s;
       if (points.length() < 2) return;
       OpenCurve().findSegment(&points, u.data(), 0, points.length() - 1, start, end, s);
       w.see(s);
     },
     kSystemsBits},
    {"isCollinear",
     [](World& w) {
       Vector const a = w.vector(), b = w.vector();
       w.see(OpenCurve().isCollinear(a, b, static_cast<float>(w.number())));
     },
     kSystemsBits},
    {"makeCurve",
     [](World& w) {
       OpenCurve& c = w.curve();
       double const d = w.chord(c), shorter = w.chord(c), gap = w.step();
       int const mode = static_cast<int>(w.below(3));
       auto& points = w.filled<GxList<Point>>();
       GxList<Point> adaptive(points);
       // A huge segment may have millions of chords.
       if (World::magnitude(c) > 1e150 && !(c.length() == 1 && w.isPatient())) return;
       c.makeCurve(d, points, mode);
       c.makeCurveEx(d, shorter, gap, adaptive);
       w.see(points, adaptive);
     },
     kCostly},
    {"makeSegments",
     [](World& w) {
       std::list<Point> points{Point(7, 0), Point(8, 0)};
       w.curve().makeSegments(static_cast<unsigned short>(w.below(100)), points);
       w.see(points);
     }},
    {"getPolylineOfCurve",
     [](World& w) {
       OpenCurve& c = w.curve();
       double const tol = w.halvingTolerance(c);
       std::list<Point> points(2), timed;
       std::list<Position> positions;
       std::vector<Point> row(1);
       if (World::magnitude(c) > 1e150 && tol > 0.0) return;
       c.getPolyline(tol, points);
       c.getPolyline(tol, row);
       if (tol >= 0.0) c.getPolyline(tol, timed, positions, GxBezierPolylineCondition());
       w.require(points.size() == row.size(), "both forms");
       w.require(timed.size() == positions.size(), "a position for every point");
       w.require(!(tol >= 0.0) || timed.size() == points.size(), "the same points");
       for (Position const& p : positions) w.require(isOn(c, p), "on the curve");
       w.see(row, positions);
     }},
    {"halveCurve",
     [](World& w) {
       OpenCurve& c = w.curve();
       PieceLimits const limits(w);
       std::list<Point> points(2);
       std::list<Position> positions(1);
       c.getPolyline(0.1, points, positions, limits);
       w.require(positions.size() == points.size(), "a position for every point");
       w.see(points, positions);
     }},
    {"nearestOnCurve",
     [](World& w) {
       OpenCurve& c = w.curve();
       Point const p = w.pointNear(c);
       Point nearest(7, 8);
       Position at(-7, 0.5);
       int const code = c.findNearestPoint(p, nearest);
       w.requireCode(code, -1, 1);
       w.requireCode(c.findNearestPointPos(p, at), -1, 1);
       w.require(code == -1 ? at == Position(-7, 0.5) : isOn(c, at), "on it, or untouched");
       w.see(nearest, at);
     }},
    {"whichSegment",
     [](World& w) {
       OpenCurve& c = w.curve();
       double t = -7.0;
       Point const p = w.pointNear(c);
       int const k = c.whichSegment(p, t, w.step());
       w.requireCode(k, -1, static_cast<long>(c.length()));
       w.see(k == -1 ? 0.0 : t);
     }},
    {"twoCurves",
     [](World& w) {
       OpenCurve& c = w.curve();
       OpenCurve& other = w.curve();
       auto& points = w.filled<GxList<Point>>();
       w.see(c.getMinSqDistance(other));
       double const size = World::magnitude(c) + World::magnitude(other);
       // A pair of huge segments may take ten seconds with the sanitizers, and have millions of
       // crossings: then only one pair is searched, and the list is not looked at.
       bool const isHuge = size > (w.isTame() ? 1e6 : 1e4);
       if (isHuge && !(c.length() == 1 && other.length() == 1 && w.isPatient())) return;
       w.require(c.findIntersections(other, points) == (points.length() != 0),
                 "found what is listed");
       if (!isHuge || w.hasKnownAnswers()) w.see(points);
     },
     kSlow},
    {"firstOnLine", firstOnLine},
    {"orientation",
     [](World& w) {
       OpenCurve& c = w.changing();
       GxBezierCurve const before(c);
       int valid = -1;
       w.requireCode(c.isClockwise(valid), 0, 1);
       w.requireCode(valid, 0, 1);
       int const code = c.changeOrientation(w.flag());
       w.require(code == valid - 1 && (code == 0 || sameBits(c, before)), "or nothing changed");
       w.see(c);
     }},
    {"close",
     [](World& w) {
       OpenCurve& c = w.changing();
       GxBezierCurve plain(c);
       unsigned long const n = c.length();
       w.requireCode(plain.makeClosedCurve(), 0, 1);
       w.requireCode(c.makeNiceClosedCurve(), 0, 1);
       w.require(n == 0 || (c.strictIsClosed() && plain.strictIsClosed()), "the flag is set");
       w.require(c.length() <= n + 1 && plain.length() - n <= 1, "one segment more at most");
       w.see(plain, c);
     }},
    {"tangents", tangents},
    {"offset", [](World& w) { offsetInMode(w, w.flag() ? 0 : 3); }},
    {"offsetWithCuts", [](World& w) { offsetInMode(w, 1 + w.flag()); }, kSystemsBits},
    {"calculateOffsetValue",
     [](World& w) {
       OpenCurve& c = w.curve();
       double value = 7.0;
       Vector const direction = w.vector();
       double const d = w.step();
       int const code = c.calculateOffsetValue(value, direction, d, w.flag());
       w.requireCode(code, -1, 0);
       w.require(code == 0 || value == 7.0, "untouched");
       w.see(value);
     }},
    {"extendLine",
     [](World& w) {
       Point out(7, 8);
       GxBezierCurve const& c = w.curve();
       double const x = w.coordinate();
       int const code = c.extendLine(out, x, w.step());
       w.requireCode(code, -1, 1);
       w.require(code != -1 || out == Point(7, 8), "untouched");
       w.see(out);
     }},
    {"wellDefinedDetection",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       double const low = w.coordinate(), high = w.coordinate();
       int const codes[] = {c.wellDefinedDetection(low, high), c.wellDefinedDetection(low, high)};
       for (int const k : codes)
         w.require(k >= 0 && k <= 7 && k != 3 && k != 5 && k != 6, "a code");
       w.see(codes);
     },
     kHasState},
    {"walk", walk, kCostly},
};

}  // namespace support
