// Results with a stated accuracy. A new operation needs a row in kAccurate and a line in
// tests/data/bits.txt (the test prints the hash). Promises that all results of one kind share are
// checked by one function, such as requirePlace for a point at a position.
#pragma once

#include "tests/operations/positionmap.h"

namespace support {

// Relative to the largest coordinate: the largest distance of points that are equal up to rounding,
// and the resolution.
constexpr double kExactPlace = 0x1p-47;
constexpr double kResolution = 0x1p-40;

inline double gap(Point const& p, Point const& q) {
  return std::hypot(p.xval() - q.xval(), p.yval() - q.yval());
}

inline double magnitude(std::vector<Point> const& points) {
  double most = 0.0;
  for (Point const& p : points) {
    most = std::fmax(most, std::fmax(std::fabs(p.xval()), std::fabs(p.yval())));
  }
  return most;
}

/// Requires that a point lies within a distance of the curve's point at a normalised position.
inline void requirePlace(World& w, GxBezierCurve const& c, Position const& at, Point const& p,
                         double reach) {
  double const t = at.getTValue();
  w.require(c.length() != 0 && isOn(c, at) && 0.0 <= t && t < 1.0, "a normalised position");
  w.require(gap(c.locateCurvePosition(at), p) <= reach, "the point lies at the position");
}

inline bool isEndOf(GxBezierCurve const& c, Position const& at) {
  return !c.strictIsClosed() && (at == Position(0, 0.0) || at == c.lastPos());
}

inline void see(World& w, crv::NearestOnCurve const& n) { w.see(n.position, n.point, n.distance); }
inline void see(World& w, crv::SegmentContact const& c) { w.see(c.t, c.u, c.point, int(c.kind)); }
inline void see(World& w, crv::SegmentOverlap const& o) { w.see(o.t0, o.t1, o.u0, o.u1); }
inline void see(World& w, crv::CurveContact const& c) {
  w.see(c.first, c.second, c.point, int(c.kind));
}
inline void see(World& w, crv::CurveOverlap const& o) {
  w.see(o.from, o.to, o.otherFrom, o.otherTo, o.sameSense);
}
inline void see(World& w, crv::LineContact const& c) {
  w.see(c.position, c.along, c.point, int(c.kind));
}
template <class T>
void see(World& w, std::vector<T> const& list) {
  for (T const& each : list) see(w, each);
}

inline void seeNearest(World& w, GxBezierCurve const& c, crv::NearestOnCurve const& n,
                       Point const& p) {
  double const size = std::fmax(World::magnitude(c), magnitude({p}));
  // At a gap the point may be the end before it.
  if (n.position.getTValue() != 0.0) requirePlace(w, c, n.position, n.point, kExactPlace * size);
  w.require(std::fabs(gap(n.point, p) - n.distance) <= kExactPlace * size, "its distance");
  see(w, n);
}

inline void segmentContacts(World& w) {
  OpenBezier const& a = w.segment();
  OpenBezier const& b = w.relative(a);
  double const resolution = w.flag() ? 0.0 : w.step();
  double const size = World::magnitude(curveOf({a, b}));
  double const reach = std::fmin(std::fmax(resolution, kResolution * size), size);
  crv::SegmentContacts const found = crv::contacts(a, b, resolution);
  for (crv::SegmentContact const& c : found.points) {
    bool const isEnd = c.t == 0.0 || c.t == 1.0 || c.u == 0.0 || c.u == 1.0;
    w.require(isParameter(c.t) && isParameter(c.u), "parameters");
    w.require((c.kind == crv::ContactKind::end) == isEnd, "ends are told");
    w.require(gap(a.bValue(c.t), b.bValue(c.u)) <= 1.01 * reach, "both are there");
  }
  for (crv::SegmentOverlap const& o : found.overlaps) {
    w.require(0.0 <= o.t0 && o.t0 < o.t1 && o.t1 <= 1.0, "a stretch of the first");
    w.require(isParameter(o.u0) && isParameter(o.u1) && o.u0 != o.u1, "a stretch of the second");
    w.require(gap(a.bValue(o.t0), b.bValue(o.u0)) <= 4.0 * reach, "its start is shared");
    w.require(gap(a.bValue(o.t1), b.bValue(o.u1)) <= 4.0 * reach, "its end is shared");
  }
  see(w, found.points), see(w, found.overlaps);
}

inline void seeContacts(World& w, GxBezierCurve const& a, GxBezierCurve const& b, double resolution,
                        crv::CurveContacts const& found) {
  double const size = std::fmax(World::magnitude(a), World::magnitude(b));
  double const reach = 2.01 * std::fmin(std::fmax(resolution, kResolution * size), size);
  for (crv::CurveContact const& c : found.points) {
    requirePlace(w, a, c.first, c.point, reach), requirePlace(w, b, c.second, c.point, reach);
    bool const isEnd = isEndOf(a, c.first) || isEndOf(b, c.second);
    w.require((c.kind == crv::ContactKind::end) == isEnd, "ends are told");
  }
  for (std::size_t i = 1; i < found.points.size(); ++i) {
    w.require(found.points[i - 1].first <= found.points[i].first, "ascending");
  }
  see(w, found.points), see(w, found.overlaps);
}

inline void seeLineContacts(World& w, GxBezierCurve const& c, Point const& a, Point const& b,
                            double resolution, std::vector<crv::LineContact> const& found) {
  double const size = std::fmax(World::magnitude(c), magnitude({a, b}));
  double const reach = 2.01 * std::fmin(std::fmax(resolution, kResolution * size), size);
  double last = 0.0;
  for (crv::LineContact const& contact : found) {
    requirePlace(w, c, contact.position, contact.point, reach);
    w.require(last <= contact.along && contact.along <= 1.0, "ascending along the line");
    last = contact.along;
  }
  see(w, found);
}

inline void curveSearch(World& w) {
  GxBezierCurve const& c = w.curve();
  Point const p = w.pointNear(c), q = w.pointNear(c);
  double const distance = w.step();
  auto const source = std::make_unique<GxBezierCurve>(c);
  crv::CurveSearch const search(*source);
  auto const nearest = search.nearest(p), plain = crv::nearest(c, p);
  w.require(nearest.has_value() == plain.has_value(), "as without it");
  if (nearest) {
    w.require(sameBits(nearest->position, plain->position), "as without it");
    seeNearest(w, c, *nearest, p);
  }
  auto const within = search.within(p, distance);
  for (crv::NearestOnCurve const& each : within) {
    seeNearest(w, c, each, p);
    w.require(each.distance <= distance && each.distance >= nearest->distance, "in the circle");
  }
  // Squares of distances below 1e-150 underflow, and rounding hides slopes next to the point.
  double const size = std::fmax(World::magnitude(c), magnitude({p}));
  bool const hasNearest = nearest && World::magnitude(c) > kExactPlace * size &&
                          nearest->distance > 1e-150 + kExactPlace * size &&
                          nearest->distance <= distance * (1.0 - kResolution);
  w.require(!within.empty() || !hasNearest, "the nearest is one of them");
  auto const crossed = search.contacts(p, q), again = crv::contacts(c, p, q);
  w.require(crossed.size() == again.size(), "as without it");
  seeLineContacts(w, c, p, q, 0.0, crossed);
}

inline void curveLengths(World& w) {
  GxBezierCurve const& c = w.curve();
  Position const at = w.position(c);
  double const accuracy = w.step() * kResolution, length = w.step();
  crv::CurveLengths const lengths(c, accuracy);
  double const total = lengths.total(), there = lengths.lengthAt(at);
  w.require(sameBits(total, crv::arcLength(c, accuracy)), "the length of the curve");
  w.require(!(there < 0.0) && !(there > total), "from nothing to all");
  Position const found = lengths.positionAt(length), back = lengths.positionAt(there);
  double const slack = 2.0 * std::fmax(accuracy, kExactPlace * total);
  w.require(!(std::fabs(lengths.lengthAt(back) - there) > slack) || total - there <= slack,
            "back at the length");
  w.see(total, found, back);
  if (there == there) w.see(there);
}

inline void evenly(World& w) {
  GxBezierCurve const& c = w.curve();
  std::size_t const count = w.below(300);
  auto const found = crv::evenPositions(c, count, w.step() * kResolution);
  bool const isClosed = c.strictIsClosed() != 0;
  w.require(found.empty() || found.size() == count + (isClosed ? 0 : 1), "so many");
  for (std::size_t i = 1; i < found.size(); ++i) w.require(found[i - 1] <= found[i], "in order");
  w.see(found);
}

inline void walkFar(World& w) {
  GxBezierCurve const& c = w.curve();
  Position const from = w.position(c);
  double const distance = w.flag() ? w.step() : -w.step(), accuracy = w.step();
  auto const measure = w.flag() ? crv::Measure::chord : crv::Measure::length;
  auto const to = crv::walk(c, from, distance, measure, accuracy);
  if (!to) return;
  w.require(isOn(c, *to), "on the curve");
  w.see(*to);
}

inline void flattened(World& w) {
  GxBezierCurve const& c = w.curve();
  double const tolerance = w.halvingTolerance(c);
  crv::Polyline const line = crv::flatten(c, tolerance);
  w.require(line.points.size() == line.positions.size(), "a position for every point");
  double const size = World::magnitude(c);
  w.require(!(line.worstDistance > std::fmax(tolerance, kResolution * size)), "the tolerance");
  for (std::size_t i = 0; i < line.points.size(); ++i) {
    w.require(i == 0 || line.positions[i - 1] <= line.positions[i], "in order");
  }
  w.see(line.points, line.positions, line.worstDistance);
  if (line.points.empty()) return;
  w.require(sameBits(line.points.front(), c[0][0]), "from the start");
  Point const end = c.strictIsClosed() ? c[0][0] : c[int(c.length()) - 1][3];
  w.require(sameBits(line.points.back(), end), "to the end");
}

/// Checks and records a result of an edit: positions of the source that it contains have the same
/// points.
inline void seePiece(World& w, GxBezierCurve const& source, crv::Piece const& piece) {
  w.require(!piece.map.isNull(), "a map is never null");
  double const reach = kExactPlace * World::magnitude(source);
  for (int i = 0; i < 3; ++i) {
    Position const p = w.position(source);
    Position there;
    int const code = piece.map->mapPosition(there, p);
    w.requireCode(code, -1, 0);
    if (code != 0) continue;
    Point const before = source.locateCurvePosition(p);
    // A joint with a gap has two points.
    bool const isJoint = !(0.0 < p.getTValue() && p.getTValue() < 1.0);
    w.require(isJoint || gap(before, piece.curve.locateCurvePosition(there)) <= reach,
              "positions lie where they lay");
    w.see(there);
  }
  w.see(piece.curve);
}

inline void cutUp(World& w) {
  GxBezierCurve const& c = w.curve();
  std::vector<Position> cuts;
  for (unsigned n = w.below(5); n != 0; --n) cuts.push_back(w.position(c));
  auto const pieces = crv::cut(c, cuts);
  w.require(pieces.size() <= cuts.size() + 1, "a piece for every cut");
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    GxBezierCurve const& piece = pieces[i].curve;
    w.require(!piece.strictIsClosed() && piece.length() > 0, "open");
    seePiece(w, c, pieces[i]);
  }
}

inline void fitSamples(World& w) {
  std::vector<Point> const samples = valuesOf(w.points());
  crv::FitOptions options;
  options.tolerance = w.step();
  options.closed = w.flag() != 0;
  options.cornerAngle = w.flag() ? 0.5 : 0.0;
  crv::Fit const fit = crv::fit(samples, options);
  w.require(fit.positions.size() == (fit.curve.length() == 0 ? 0 : samples.size()), "all samples");
  w.require(samples.empty() || !(fit.worstDistance > std::fmax(options.tolerance, 0.0)),
            "the tolerance");
  double const reach = fit.worstDistance + kExactPlace * magnitude(samples);
  for (std::size_t i = 0; i < fit.positions.size(); ++i) {
    requirePlace(w, fit.curve, fit.positions[i], samples[i], reach);
  }
  for (std::size_t const corner : fit.corners) w.see(static_cast<double>(corner));
  w.see(fit.curve, fit.worstDistance, static_cast<double>(fit.worstSample), fit.positions);
}

inline void separated(World& w) {
  GxBezierCurve const& c = w.curve();
  crv::Separated const found = crv::separate(c, w.flag() ? 0.0 : w.step());
  w.require(found.rests.size() <= (c.strictIsClosed() ? 0u : 1u), "one rest of an open curve");
  for (crv::Loop const& loop : found.loops) {
    w.require(loop.piece.curve.strictIsClosed() != 0, "closed loops");
    w.see(loop.piece.curve, loop.clockwise);
  }
  for (crv::Piece const& rest : found.rests) w.see(rest.curve);
  GxList<GxBezierCurve> pieces;
  int const count = seperateSelfIntersections(c, pieces);
  w.require(count == (c.length() == 0 ? -1 : int(pieces.length())), "the number of pieces");
}

/// The curves of a region are closed to the bit, and each segment has a source.
inline void seeRegion(World& w, crv::Region const& region) {
  w.require(region.sources.size() == region.curves.size(), "sources of every curve");
  for (std::size_t i = 0; i < region.curves.size(); ++i) {
    GxBezierCurve const& c = region.curves[i];
    int const n = static_cast<int>(c.length());
    w.require(c.strictIsClosed() && region.sources[i].size() == c.length(), "closed");
    for (int k = 0; k < n; ++k) w.require(c[k][3] == c[(k + 1) % n][0], "without a gap");
    w.see(c);
  }
}

inline void regions(World& w) {
  std::vector<GxBezierCurve> const a = {w.curve()};
  bool const isRelated = w.flag() && a[0].length() != 0;
  std::vector<GxBezierCurve> const b = {isRelated ? curveOf({w.relative(a[0][0])})
                                                  : GxBezierCurve(w.curve())};
  auto const rule = w.flag() ? crv::FillRule::nonZero : crv::FillRule::evenOdd;
  seeRegion(w, crv::unite(a, b, rule));
  seeRegion(w, crv::intersect(a, b, rule));
  seeRegion(w, crv::subtract(a, b, rule));
  seeRegion(w, crv::exclude(a, b, rule));
  seeRegion(w, crv::simplified(a, rule));
  Point const p = w.pointNear(a[0]);
  int const winding = crv::winding(a, p);
  bool const isIn = rule == crv::FillRule::nonZero ? winding != 0 : winding % 2 != 0;
  w.require(!isIn || crv::contains(a, p, rule), "what is wound around is inside");
  w.see(crv::area(a, rule), winding);
}

/// Requires that a map takes positions from one curve to the other, and leaves out untouched where
/// it returns -1.
inline void seeMap(World& w, GxBezierCurve const& from, GxBezierCurve const& to,
                   crv::Map const& map) {
  w.require(!map.isNull(), "a map is never null");
  for (int i = 0; i < 3; ++i) {
    Position const p = w.position(from);
    Position there, back;
    int const code = map->mapPosition(there, p);
    w.requireCode(code, -1, 0);
    if (code != 0) continue;
    w.require(isOn(to, there), "on the result");
    w.require(map->inverseMapPosition(back, there) == 0 && isOn(from, back), "and back");
    w.see(there, back);
  }
}

inline crv::OffsetOptions offsetOptions(World& w, GxBezierCurve const& c) {
  crv::OffsetOptions options;
  options.tolerance = w.halvingTolerance(c);
  options.join = static_cast<crv::Join>(w.below(3));
  options.miterLimit = w.number();
  return options;
}

inline void offsetCurve(World& w) {
  GxBezierCurve const& c = w.curve();
  double const step = w.step();
  double const distance = w.flag() ? step : -step;
  crv::OffsetOptions const options = offsetOptions(w, c);
  crv::Offset const offset = crv::offset(c, distance, options);
  for (crv::Piece const& piece : offset.parallels) {
    // At the distance 0 it is the curve itself, gaps and all.
    bool const isSame = piece.curve == c;
    for (int i = 1; i < static_cast<int>(piece.curve.length()); ++i) {
      w.require(isSame || sameBits(piece.curve[i - 1][3], piece.curve[i][0]), "joined to the bit");
    }
    seeMap(w, c, piece.curve, piece.map);
    w.see(piece.curve);
  }
  w.see(offset.worstError);
}

inline void outlineStroke(World& w) {
  GxBezierCurve const& c = w.curve();
  double const width = w.step();
  auto const cap = static_cast<crv::Cap>(w.below(3));
  crv::OffsetOptions const options = offsetOptions(w, c);
  for (GxBezierCurve const& outline : crv::strokeOutline(c, width, cap, options)) {
    int const n = static_cast<int>(outline.length());
    w.require(outline.strictIsClosed() && n > 0, "closed");
    for (int i = 0; i < n; ++i) {
      w.require(sameBits(outline[i][3], outline[(i + 1) % n][0]), "joined to the bit");
    }
    w.see(outline);
  }
}

inline void simplifyCurve(World& w) {
  GxBezierCurve const& c = w.curve();
  double const tolerance = w.halvingTolerance(c);
  crv::Simplified const simplified = crv::simplify(c, tolerance);
  w.require(simplified.curve.length() <= c.length(), "not more segments");
  w.require(!(simplified.worstDistance > std::fmax(tolerance, 0.0)), "the tolerance");
  seeMap(w, c, simplified.curve, simplified.map);
  w.see(simplified.curve, simplified.worstDistance);
}

inline Operations const kAccurate{
    {"nearestParameter",
     [](World& w) {
       GxBezier const& s = w.segment();
       Point const p = w.pointNear(curveOf({s}));
       crv::NearestOnSegment const n = crv::nearest(s, p);
       w.require(isParameter(n.t), "a parameter");
       double const slack = kExactPlace * std::fmax(World::magnitude(curveOf({s})), magnitude({p}));
       w.require(!(n.distance > std::fmin(gap(s[0], p), gap(s[3], p)) + slack), "than the ends");
       w.require(!(std::fabs(gap(n.point, p) - n.distance) > slack), "its distance");
       w.see(n.t, n.point, n.distance);
     }},
    {"nearestPlace",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Point const p = w.pointNear(c);
       auto const n = crv::nearest(c, p);
       if (n) seeNearest(w, c, *n, p);
     }},
    {"curveSearch", curveSearch},
    {"arcLength",
     [](World& w) {
       GxBezier const& s = w.segment();
       double const t0 = w.parameter(), t1 = w.parameter(), accuracy = w.step();
       double const length = crv::arcLength(s, t0, t1, accuracy);
       w.require(sameBits(length + 0.0, 0.0 - crv::arcLength(s, t1, t0, accuracy)), "backwards");
       double const there = crv::parameterAtLength(s, t0, length, accuracy);
       w.require(isParameter(there), "a parameter");
       w.see(length, there);
     }},
    {"curveLengths", curveLengths},
    {"evenPositions", evenly},
    {"walkFar", walkFar},
    {"directions",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       crv::Directions const d = crv::directions(c, w.position(c));
       for (Vector const& v : {d.in, d.out}) {
         double const length = std::hypot(v.xval(), v.yval());
         w.require(length == 0.0 || std::fabs(length - 1.0) < 1e-15, "a unit vector");
       }
       w.see(d.in, d.out);
     }},
    {"signedArea",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       double const area = crv::signedArea(c);
       w.require(crv::isClockwise(c) == (area < 0.0), "clockwise is negative");
       w.see(area);
     }},
    {"flatten", flattened},
    {"segmentContacts", segmentContacts},
    {"curveContacts",
     [](World& w) {
       GxBezierCurve const& a = w.curve();
       bool const isRelated = w.flag() && a.length() != 0;
       GxBezierCurve const b = isRelated ? curveOf({w.relative(a[0])}) : GxBezierCurve(w.curve());
       double const resolution = w.flag() ? 0.0 : w.step();
       seeContacts(w, a, b, resolution, crv::contacts(a, b, resolution));
     }},
    {"selfContacts",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       double const resolution = w.flag() ? 0.0 : w.step();
       crv::CurveContacts const found = crv::selfContacts(c, resolution);
       for (auto const& each : found.points) w.require(each.first < each.second, "in order");
       seeContacts(w, c, c, resolution, found);
     }},
    {"lineContacts",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Point const a = w.pointNear(c), b = w.pointNear(c);
       double const resolution = w.flag() ? 0.0 : w.step();
       seeLineContacts(w, c, a, b, resolution, crv::contacts(c, a, b, resolution));
     }},
    {"cut", cutUp},
    {"withJoint",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       crv::Piece const piece = crv::withJoint(c, w.position(c));
       w.require(piece.curve.length() <= c.length() + 1, "one joint more, or none");
       seePiece(w, c, piece);
     }},
    {"stretch",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Position const from = w.position(c), to = w.position(c);
       seePiece(w, c, crv::stretch(c, from, to, w.flag() != 0));
     }},
    {"reversed",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       seePiece(w, c, crv::reversed(c));
     }},
    {"fitSamples", fitSamples},
    {"simplify", simplifyCurve},
    {"offsetCurve", offsetCurve},
    {"strokeOutline", outlineStroke},
    {"separate", separated},
    {"regions", regions},
};

}  // namespace support
