#include "crv/positionmap/positionPredicates.h"

#include "crv/foundation/tolerance.h"
#include "crv/positionmap/internal/positionAt.h"

#include <cmath>

using crv::internal::clampedSegment;
using crv::internal::positionAt;

namespace {

using Position = GxBezierCurvePosition;

// Parameter: two positions on one segment coincide when they are closer than this.
constexpr double kCoincidence = 1e-9;

bool coincide(Position const& p, Position const& q) {
  return p.getSegmentNumber() == q.getSegmentNumber() &&
         IS_EQUAL(p.getTValue(), q.getTValue(), kCoincidence);
}

/// The position, moved on by a number of segments, as one parameter of the whole curve.
double globalParameter(Position const& p, double segments) {
  return static_cast<double>(p.getSegmentNumber()) + segments + p.getTValue();
}

}  // namespace

int isEqual(GxBezierCurve const& curve, Position const& a, Position const& b, double tol) {
  if (isEqual(a, b, tol)) return 1;
  if (!curve.strictIsClosed()) return 0;
  double const n = static_cast<double>(curve.length());
  return IS_EQUAL(globalParameter(a, n), globalParameter(b, 0.0), tol) ||
         IS_EQUAL(globalParameter(a, 0.0), globalParameter(b, n), tol);
}

int isStrictBetweenPosition(Position const& p, Position const& a, Position const& b, int closed) {
  if (coincide(a, b)) return 0;
  if (a < p && p < b) return 1;
  return closed && b < a && (p < b || a < p);
}

int isBetweenPosition(Position const& p, Position const& a, Position const& b, int closed) {
  return coincide(p, a) || isStrictBetweenPosition(p, a, b, closed);
}

int isBothInclusiveBetweenPosition(Position const& p, Position const& a, Position const& b,
                                   int closed) {
  return coincide(p, b) || isBetweenPosition(p, a, b, closed);
}

int isStrictBetweenPosition(Position const& p, Position const& a, Position const& b,
                            Position const& c, int closed) {
  if (coincide(c, a) || coincide(c, b)) return 0;
  if (isStrictBetweenPosition(c, a, b, closed)) return isStrictBetweenPosition(p, a, b, closed);
  return isStrictBetweenPosition(p, b, a, closed);
}

int isBetweenPosition(Position const& p, Position const& a, Position const& b, Position const& c,
                      int closed) {
  return coincide(p, a) || isStrictBetweenPosition(p, a, b, c, closed);
}

int isBothInclusiveBetweenPosition(Position const& p, Position const& a, Position const& b,
                                   Position const& c, int closed) {
  return coincide(p, b) || isBetweenPosition(p, a, b, c, closed);
}

Position snapToAnchor(Position const& pos, double tol) {
  if (IS_ZERO(pos.getTValue(), tol)) return positionAt(clampedSegment(pos), 0.0);
  if (IS_EQUAL(pos.getTValue(), 1.0, tol)) return positionAt(clampedSegment(pos) + 1, 0.0);
  return pos;
}

void adjustBezierCurvePosition(Position& result, Position const& from, GxBezierCurve const& curve,
                               double dt) {
  long long const n = static_cast<long long>(curve.length());
  if (std::fabs(dt) > 1.0 || n == 0) return;
  Position const moved = positionAt(clampedSegment(from), from.getTValue() + dt);
  bool const beyond = moved > curve.lastPos();
  bool const before = moved < curve.firstPos();
  if (!beyond && !before) {
    result = moved;
  } else if (curve.strictIsClosed()) {
    result = positionAt(clampedSegment(moved) + (beyond ? -n : n), moved.getTValue());
  } else {
    result = beyond ? curve.lastPos() : curve.firstPos();
  }
}
