// Prints what operations return: a name and numbers a line. The Python module must give the same.
#include "tests/support/data.h"

#include <cstdio>
#include <list>
#include <tuple>

namespace {

using namespace support;
using crv::Curve;

void put(double x) { std::printf(" %.17g", x); }
void put(Point const& p) { put(p.xval()), put(p.yval()); }
void put(Vector const& v) { put(v.xval()), put(v.yval()); }
void put(Position const& p) { put(static_cast<double>(p.getSegmentNumber())), put(p.getTValue()); }
void put(GxBezier const& s) {
  for (int i = 0; i < 4; ++i) put(s[i]);
}
void put(Curve const& c) {
  for (GxBezier const& s : c) put(s);
  put(c.strictIsClosed());
}
void put(crv::CurveContact const& c) { put(c.first), put(c.second), put(c.point); }
void put(crv::LineContact const& c) { put(c.position), put(c.along), put(c.point); }
void put(crv::Source const& s) { put(s.from), put(s.to), put(s.backwards); }
void put(crv::NearestOnCurve const& n) { put(n.position), put(n.point), put(n.distance); }
void put(crv::Piece const& piece) {
  put(piece.curve);
  for (int i = 0; i < 23; ++i) {
    Position to;
    if (piece.map->mapPosition(to, Position(i, 0.375)) == 0) put(to);
    if (piece.map->inverseMapPosition(to, Position(i, 0.625)) == 0) put(to);
  }
}
template <class T>
void put(std::vector<T> const& list) {
  for (T const& each : list) put(each);
}
template <class T>
void put(GxList<T> const& list) {
  put(list.toVector());
}

template <class... Results>
void show(char const* name, Results const&... results) {
  std::printf("%s", name);
  (put(results), ...);
  std::printf("\n");
}

void showSegment(GxBezier const& s, GxBezier const& other) {
  show("bValue", s.bValue(0.3), s.dValue(0.3), s.ddValue(0.3), s.curvatureValue(0.3));
  GxBezier left, right;
  s.split(left, right, 0.3);
  show("split", left, right);
  Point p;
  s.findNearestPoint({0, 0}, p);
  show("findNearestPoint", p);
  GxList<double> t, u;
  (void)s.findIntersections(other, t, u);
  show("findIntersections", t, u);
  show("length", s.length(0.25));
  GxList<Point> steps;
  s.makeSegment(7.0, steps, 0.125);
  show("makeSegment", steps);
  double next = 0.0, consumed = 0.0;
  int const code = s.findNextPos(next, 0.1, 0.9, 100.0, 1, consumed);
  show("findNextPosAndLength", code == 0 ? next : -1.0, consumed);
  show("segmentArcLength", crv::arcLength(s, 0.1, 0.9, 1e-9));
  show("segmentNearest", crv::nearest(s, Point(7, 9)).t);
}

void showCurve(Curve const& g, Curve const& k) {
  GxList<Point> points;
  g.makeCurve(50.0, points, 0);
  show("makeCurve", points);
  std::vector<Point> polyline;
  g.getPolyline(1.0, polyline);
  show("getPolyline", polyline);
  Position pos;
  (void)g.findNearestPointPos({300, 200}, pos);
  show("findNearestPointPos", pos);
  GxList<Point> crossings;
  g.findIntersections(k, crossings);
  show("curveFindIntersections", crossings);
  Curve parallel = g;
  parallel.offset(7.0, 1, 1);
  show("plainOffset", parallel);
  Vector in, out;
  g.findVelocityVectors(Position(3, 0.0), in, out);
  show("findVelocityVectors", in, out);
  (void)g.findNextPos(Position(2, 0.5), pos, 40.0, 0, 1);
  show("findNextPos", pos);
  (void)g.findFirstGeometricLineIntersection({0, 100}, {1, 0.1}, Position(0, 0.0), g.lastPos(), pos,
                                             1e-9);
  show("findFirstGeometricLineIntersection", pos);
}

void showMaps(Curve const& g) {
  Curve part;
  crv::Map map, first, second;
  (void)copyGxBezierCurve(part, g, Position(20, 0.25), Position(3, 0.5), 1, map);
  show("copyGxBezierCurve", crv::Piece{part, map});
  Curve before = g, after;
  (void)spliteGxBezierCurve(Position(1, 0.5), before, after, first, second);
  show("spliteGxBezierCurve", crv::Piece{before, first}, crv::Piece{after, second});
  Curve turned = g;
  arrangeBezierCurve(turned, Position(4, 0.3), Position(9, 0.6));
  show("arrangeBezierCurve", turned);
}

void showAccurate(Curve const& g, Curve const& k, std::vector<Point> const& waves) {
  show("nearest", *crv::nearest(g, Point(300, 200)));
  show("within", crv::CurveSearch(g).within({250, 100}, 150.0));
  show("lineContacts", crv::contacts(g, Point(0, 0), Point(400, 400)));
  show("contacts", crv::contacts(g, k).points);
  show("evenPositions", crv::evenPositions(g, 17, 0.0));
  show("walk", *crv::walk(g, Position(5, 0.5), -300.0, crv::Measure::chord, 0.0),
       *crv::walk(g, Position(5, 0.5), 777.0, crv::Measure::length, 0.0));
  crv::Directions const d = crv::directions(g, Position(6, 0.0));
  show("directions", d.in, d.out, crv::signedArea(g));
  crv::Polyline const p = crv::flatten(g, 0.5);
  show("flatten", p.points, p.positions, p.worstDistance);
  show("cut", crv::cut(g, {Position(2, 0.5), Position(7, 0.25), Position(20, 0.75)}));
  show("reversed", crv::reversed(g));
  crv::Fit const fit = crv::fit(waves, {0.7, false, 1.0});
  show("fit", fit.curve, fit.positions, fit.worstDistance);
  crv::Simplified const fewer = crv::simplify(g, 20.0);
  show("simplify", crv::Piece{fewer.curve, fewer.map}, fewer.worstDistance);
  crv::Offset const inside = crv::offset(g, 9.0, {0.1, crv::Join::miter, 3.0});
  show("offset", inside.parallels, inside.worstError);
  show("strokeOutline", crv::strokeOutline(fit.curve, 5.0, crv::Cap::square, {0.1}));
  crv::Separated const knot = crv::separate(Curve(waves, 4.0));
  for (crv::Loop const& loop : knot.loops) show("loop", loop.piece, loop.clockwise);
  crv::Region const both = crv::exclude({g}, {k}, crv::FillRule::evenOdd);
  show("exclude", both.curves, both.sources, crv::area({g, k}, crv::FillRule::nonZero));
  show("parsePath", crv::parsePath("M1 2A30 50 20 1 0 70 80T3 4z").curves);
}

}  // namespace

int main() {
  Curve const g = outline("roman-g-outer"), k = outline("sans-k-thirds");
  std::vector<Point> const waves = stroke("pen-waves").toVector();
  showSegment(g[2], k[6]);
  showCurve(g, k);
  showMaps(g);
  showAccurate(g, k, waves);
  show("plainFit", Curve(waves, 4.0));
}
