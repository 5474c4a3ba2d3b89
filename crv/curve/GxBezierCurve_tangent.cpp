// Handles, velocities and accelerations on both sides of a position. A segment and a parameter are
// chosen for the side that arrives and for the side that leaves, and then evaluated.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/tolerance.h"

namespace {

// Parameter: a position this close to a joint, or to an end of the curve, lies on it.
constexpr double kAtJoint = 0.0005;

// Squared curve units: control points this close coincide, a derivative this short vanishes.
constexpr double kVanishing = 1e-9;

/// One side of a position.
struct Side {
  GxBezier const* segment = nullptr;
  double t = 0.0;

  GxCoord<double> const& point(int i) const { return (*segment)[i]; }
  GxVector<double> velocity() const { return segment->dValue(t); }
  GxVector<double> acceleration() const { return segment->ddValue(t); }
  bool hasHandles() const { return point(0) != point(1) || point(2) != point(3); }
};

struct Sides {
  Side in;
  Side out;
};

// Deliberate: velocities compare positions with joints and ends within a tolerance, accelerations
// compare them exactly, and then t is never taken for a segment's end.
bool isAt(GxBezierCurvePosition const& p, GxBezierCurvePosition const& end, bool tolerant) {
  return tolerant ? isEqual(p, end, kAtJoint) : p == end;
}
bool isSegmentStart(double t, bool tolerant) {
  return tolerant ? IS_EQUAL(t, 0.0, kAtJoint) : t == 0.0;
}
bool isSegmentEnd(double t, bool tolerant) { return tolerant && IS_EQUAL(t, 1.0, kAtJoint); }

/// Chooses both sides. Returns false for a position outside the curve.
bool chooseSides(GxBezierCurve const& curve, GxBezierCurvePosition const& pos, bool tolerant,
                 Sides& sides) {
  int const n = static_cast<int>(curve.length());
  if (n == 0) return false;
  int const last = n - 1;
  bool const closed = curve.strictIsClosed() != 0;
  auto const side = [&curve](int segment, double t) { return Side{&curve[segment], t}; };

  if (isAt(pos, curve.firstPos(), tolerant)) {
    sides = {closed ? side(last, 1.0) : side(0, 0.0), side(0, 0.0)};
    return true;
  }
  if (isAt(pos, curve.lastPos(), tolerant)) {
    sides = {side(last, 1.0), closed ? side(0, 0.0) : side(last, 1.0)};
    return true;
  }
  if (pos.getSegmentNumber() < 0 || pos.getSegmentNumber() >= n) return false;

  int const s = static_cast<int>(pos.getSegmentNumber());
  double const t = pos.getTValue();
  if (isSegmentStart(t, tolerant)) {
    sides = {side(s - 1, 1.0), side(s, 0.0)};
  } else if (isSegmentEnd(t, tolerant)) {
    // Deliberate: just below a joint the curve is taken to leave along the start of the same
    // segment, not of the next.
    sides = {side(s, 1.0), side(s == last ? 0 : s, 0.0)};
  } else {
    sides = {side(s, t), side(s, t)};
  }
  return true;
}

bool coincide(GxCoord<double> const& p, GxCoord<double> const& q) {
  return IS_ZERO(p.squaredDistance(q), kVanishing);
}

bool vanishes(GxVector<double> const& v) { return IS_ZERO(v.squaredLength(), kVanishing); }

}  // namespace

int GxBezierCurve::getTriple(GxBezierCurvePosition const& pos, GxCoord<double>& point,
                             GxCoord<double>& before, GxCoord<double>& after) const {
  GxBezierCurvePosition const position(pos);
  point = locateCurvePosition(position);
  int const n = static_cast<int>(segments_.length());
  if (n == 0) return -1;
  GxBezierCurve const& curve = *this;
  if (position == lastPos()) {
    before = curve[n - 1][2];
    after = closed_ ? curve[0][1] : point;
    return 0;
  }
  if (position == firstPos()) {
    // Deliberate: at the start of an open curve before stays as the caller passed it.
    if (closed_) before = curve[n - 1][2];
    after = curve[0][1];
    return 0;
  }
  if (position.getSegmentNumber() < 0 || position.getSegmentNumber() >= n) return -1;
  int const s = static_cast<int>(position.getSegmentNumber());
  if (position.getTValue() == 0.0) {
    before = curve[s - 1][2];
    after = curve[s][1];
    return 0;
  }
  GxBezier left;
  GxBezier right;
  curve[s].split(left, right, position.getTValue());
  before = left[2];
  after = right[1];
  return 0;
}

// Deliberate: the two queries below differ in the sense of the vector in, in how they compare
// control points, and in the chords they fall back on.
int GxBezierCurve::getVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                                      GxVector<double>& out) const {
  Sides sides;
  if (!chooseSides(*this, pos, true, sides)) return -1;
  Side const& a = sides.in;
  if (a.point(2) != a.point(3)) {
    in = a.velocity() * -1.0;
  } else {
    in = a.point(a.point(1) != a.point(3) ? 1 : 0) - a.point(3);
  }
  Side const& b = sides.out;
  if (b.point(0) != b.point(1)) {
    out = b.velocity();
  } else {
    out = b.point(b.point(0) != b.point(2) ? 2 : 3) - b.point(0);
  }
  return 0;
}

int GxBezierCurve::findVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                                       GxVector<double>& out) const {
  in = out = GxVector<double>(0.0, 0.0);
  Sides sides;
  if (!chooseSides(*this, pos, true, sides)) return -1;
  Side const& a = sides.in;
  if (!coincide(a.point(2), a.point(3))) in = a.velocity();
  if (vanishes(in)) in = a.point(3) - a.point(coincide(a.point(1), a.point(3)) ? 0 : 1);
  Side const& b = sides.out;
  if (!coincide(b.point(0), b.point(1))) out = b.velocity();
  if (vanishes(out)) out = b.point(coincide(b.point(0), b.point(2)) ? 3 : 2) - b.point(0);
  return 0;
}

int GxBezierCurve::getAccelerationVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                                          GxVector<double>& out) const {
  GxVector<double> const none(0.0, 0.0);
  Sides sides;
  if (!chooseSides(*this, pos, false, sides)) return -1;
  in = sides.in.hasHandles() ? sides.in.acceleration() * -1.0 : none;
  out = sides.out.hasHandles() ? sides.out.acceleration() : none;
  return 0;
}
