#include "crv/positionmap/curveEdits.h"

#include "crv/bezier/GxBezier.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/tolerance.h"
#include "crv/positionmap/internal/positionAt.h"
#include "crv/positionmap/positionMaps.h"

namespace {

using Position = GxBezierCurvePosition;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;
using Segments = GxList<GxBezier>;

// Parameter: a stretch within one segment that is shorter is empty.
constexpr double kEmptyStretch = 1e-9;

GxBezier reversed(GxBezier const& s) { return GxBezier(s[3], s[2], s[1], s[0]); }

GxBezier pointSegment(GxCoord<double> const& p) { return GxBezier(p, p, p, p); }

GxBezier partBefore(GxBezier s, double t) {
  GxBezier rest;
  return s.split(rest, t);
}

GxBezier partAfter(GxBezier s, double t) {
  GxBezier rest;
  s.split(rest, t);
  return rest;
}

bool inOneSegment(Position const& a, Position const& b) {
  return a.getSegmentNumber() == b.getSegmentNumber();
}

/// On segments 0 .. n - 1, or exactly at the end of the curve.
bool isOnCurve(Position const& p, long n) {
  long const segment = p.getSegmentNumber();
  return 0 <= segment && (segment < n || (segment == n && p.getTValue() == 0.0));
}

/// Adds a piece of a stretch: behind the others, or reversed and before them.
void addPiece(Segments& pieces, GxBezier const& piece, int forward) {
  if (forward) {
    pieces.add(piece);
  } else {
    pieces.insert(reversed(piece), 0);
  }
}

/// Copies the stretch of src that runs forwards from a to b, across the seam where b is not after
/// a, and reverses the copy if forward is 0. Both positions lie on src.
void takeStretch(GxBezierCurve const& src, Position const& a, Position const& b, int forward,
                 Segments& pieces) {
  double const aT = a.getTValue();
  double const bT = b.getTValue();
  int const n = static_cast<int>(src.length());
  int const first = static_cast<int>(a.getSegmentNumber() % n);
  int const last = static_cast<int>(b.getSegmentNumber() % n);
  GxBezier const startPiece = partAfter(src(first), aT);
  if (a < b && inOneSegment(a, b)) {
    addPiece(pieces, partBefore(startPiece, (bT - aT) / (1.0 - aT)), forward);
    return;
  }
  addPiece(pieces, startPiece, forward);
  for (int i = (first + 1) % n; i != last; i = (i + 1) % n) addPiece(pieces, src(i), forward);
  if (bT != 0.0) addPiece(pieces, partBefore(src(last), bT), forward);
}

/// Replaces the segments of a curve by moving others into it; nothing is allocated or can fail.
void replace(GxBezierCurve& curve, Segments& segments) {
  curve.getSegments().empty();
  curve.getSegments().join(segments);
}

void removeLast(Segments& segments) { segments.remove(static_cast<int>(segments.length()) - 1); }

/// Adds the parts of a segment split at t to both sides, at t = 0 only the part after it.
void addParts(GxBezier const& segment, double t, Segments& before, Segments& after) {
  after.add(partAfter(segment, t));
  if (t != 0.0) before.add(partBefore(segment, t));
}

void cutPlainly(Segments const& old, unsigned k, double t, Segments& before, Segments& after) {
  for (unsigned i = 0; i < k; ++i) before.add(old[i]);
  addParts(old[k], t, before, after);
  for (unsigned i = k + 1; i < old.length(); ++i) after.add(old[i]);
}

/// Deliberate: the segment before the cut is lost, and the part behind the cut, which starts one
/// segment early, takes the first segment in its place.
void cutOneEarly(Segments const& old, unsigned k, double t, Segments& before, Segments& after) {
  for (unsigned i = 1; i + 1 < k; ++i) before.add(old[i]);
  addParts(old[k], t, before, after);
  for (unsigned i = k; i < old.length(); ++i) after.add(old[i]);
  after.add(old[0]);
}

/// Cuts first at pos, which is on it and neither its start nor its end.
void cut(Position const& pos, GxBezierCurve& first, GxBezierCurve& second) {
  unsigned const k = static_cast<unsigned>(pos.getSegmentNumber());
  // Deliberate: only a cut at segment 0 or 1 is a plain one.
  auto const cutAt = k < 2 ? cutPlainly : cutOneEarly;
  Segments before;
  Segments after;
  cutAt(first.getSegments(), k, pos.getTValue(), before, after);
  replace(first, before);
  replace(second, after);
}

}  // namespace

int copyGxBezierCurve(GxBezierCurve& dst, GxBezierCurve const& src, Position const& start,
                      Position const& end, int forward, MapHandle& map) {
  int const base = static_cast<int>(dst.length());
  int const closed = src.strictIsClosed();
  long const n = static_cast<long>(src.length());
  Position const s = translate(src, closed, start, forward);
  Position const e = translate(src, closed, end, forward);
  if (inOneSegment(s, e) && IS_EQUAL(s.getTValue(), e.getTValue(), kEmptyStretch)) {
    map = constructSingletonPositionMap(s, dst);
    return -1;
  }
  if (!isOnCurve(s, n) || !isOnCurve(e, n)) return -1;

  Segments pieces;
  takeStretch(src, forward ? s : e, forward ? e : s, forward, pieces);
  dst.getSegments().join(pieces);
  try {
    map = constructRangePositionMap(src, closed, base, forward, s, e, src.lastPos());
  } catch (...) {
    while (dst.length() > static_cast<unsigned long>(base)) removeLast(dst.getSegments());
    throw;
  }
  return 0;
}

int reverseGxBezierCurve(GxBezierCurve& curve, MapHandle& map) {
  curve.reverse();
  map = constructReversePositionMap(static_cast<int>(curve.length()));
  return 0;
}

int spliteGxBezierCurve(Position const& pos, GxBezierCurve& first, GxBezierCurve& second,
                        MapHandle& firstMap, MapHandle& secondMap) {
  Position const firstPos = first.firstPos();
  Position const lastPos = first.lastPos();
  bool const isOnFirst = firstPos <= pos && pos <= lastPos;
  if (!isOnFirst || first.length() == 0 || &first == &second) return -1;
  MapHandle const mapBefore = constructRangePositionMap(first, 0, 0, 1, firstPos, pos, lastPos);
  MapHandle const mapAfter = constructRangePositionMap(first, 0, 0, 1, pos, lastPos, lastPos);

  int const n = static_cast<int>(first.length());
  if (pos == lastPos) {
    GxBezierCurve end;
    end.getSegments().add(pointSegment(first(n - 1)[3]));
    second = end;
  } else if (pos == firstPos) {
    Segments start;
    start.add(pointSegment(first(0)[0]));
    second = first;
    replace(first, start);
  } else {
    cut(pos, first, second);
  }
  firstMap = mapBefore;
  secondMap = mapAfter;
  return 0;
}
