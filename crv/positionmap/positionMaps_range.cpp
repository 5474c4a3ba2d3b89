// The stretch S..E of a curve on the segments base .. base + count of a new one, the pieces at both
// ends stretched to whole segments. Two maps: S before E, and S to E across the seam.
#include "crv/positionmap/positionMaps.h"

#include "crv/foundation/tolerance.h"
#include "crv/positionmap/internal/positionAt.h"

#include <new>

using crv::internal::clampedInt;
using crv::internal::clampedSegment;
using crv::internal::positionAt;

namespace {

using Position = GxBezierCurvePosition;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

// Parameter: a shorter piece counts as empty, and a position this close to an end counts as it.
constexpr double kPiece = 1e-9;

/// The parameter on a new segment, which was stretched from a piece whole long, at a distance of
/// part from the start of the piece.
double fraction(double part, double whole) { return IS_ZERO(whole, kPiece) ? 0.0 : part / whole; }

/// A stretch and the curve from which it was taken; if closed is 0, the curve is never accessed.
struct Stretch {
  GxBezierCurve const* curve;
  int closed;
  int forward;
  int base;
  Position start;
  Position end;

  /// The position, with the seam as translate reads it.
  Position seamResolved(Position const& in) const {
    return closed ? translate(*curve, closed, in, forward) : in;
  }

  Stretch withSeamResolved() const {
    return {curve, closed, forward, base, seamResolved(start), seamResolved(end)};
  }

  long long segmentSpan() const {
    return clampedSegment(end) - clampedSegment(start) + (end.getTValue() != 0.0 ? 1 : 0);
  }
};

/// The common part of both maps of a stretch.
class StretchMap : public GxBezierCurvePositionMapBase {
 protected:
  /// Across the seam, the span is negative, and the segments of one lap are added to it.
  /// Deliberate: the segments are counted before the seam is resolved. This matters for a reversed
  /// stretch, whose ends are given in the reversed numbering.
  StretchMap(Stretch const& stretch, long long segmentsPerLap)
      : stretch_(stretch.withSeamResolved()),
        count_(clampedInt(stretch.segmentSpan() + segmentsPerLap)) {}

  Position const& start() const { return stretch_.start; }
  Position const& end() const { return stretch_.end; }
  Position seamResolved(Position const& in) const { return stretch_.seamResolved(in); }
  long long count() const { return count_; }

  bool inStartSegment(Position const& p) const {
    return p.getSegmentNumber() == start().getSegmentNumber();
  }
  bool inEndSegment(Position const& p) const {
    return p.getSegmentNumber() == end().getSegmentNumber();
  }

  /// The position on the new curve, some segments into the stretch.
  Position onNew(long long segments, double t) const {
    return positionAt(stretch_.base + segments, t);
  }
  long long segmentsIntoNew(Position const& q) const { return clampedSegment(q) - stretch_.base; }

  Position newStart() const { return onNew(0, 0.0); }
  Position newEnd() const { return onNew(count_, 0.0); }

  /// The old position at t of the first new segment, the piece up to lastT of the start's segment.
  Position inStartPiece(double t, double lastT) const {
    double const firstT = start().getTValue();
    if (IS_EQUAL(firstT, 1.0, kPiece)) return start();
    return positionAt(clampedSegment(start()), firstT + t * (lastT - firstT));
  }

  /// The old position at t of the last new segment, the piece of an old one up to the end.
  Position inEndPiece(long long segment, double t) const {
    double const lastT = end().getTValue();
    if (lastT == 0.0) return positionAt(segment, t);
    // Deliberate: a piece too short to have an inside gives the start of the stretch, not its end.
    if (IS_EQUAL(lastT, 0.0, kPiece)) return start();
    return positionAt(segment, t * lastT);
  }

 private:
  Stretch stretch_;
  int count_;
};

/// A stretch that runs from S forwards to a later E.
class GxRangePositionMap : public StretchMap {
 public:
  explicit GxRangePositionMap(Stretch const& stretch) : StretchMap(stretch, 0) {}

  int mapPosition(Position& out, Position const& in) const override {
    Position const p = seamResolved(in);
    if (p < start()) {
      out = newStart();
      return -1;
    }
    if (p > end()) {
      out = newEnd();
      return -1;
    }
    out = inside(p);
    return 0;
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    Position const q = in;
    long long const j = segmentsIntoNew(q);
    long long const segment = clampedSegment(start()) + j;
    if (j < 0) {
      out = start();
      return -1;
    }
    if (j == 0) {
      out = inStartPiece(q.getTValue(), inStartSegment(end()) ? end().getTValue() : 1.0);
    } else if (j == count()) {
      out = end();
    } else if (j == count() - 1) {
      out = inEndPiece(segment, q.getTValue());
    } else {
      // Deliberate: also beyond the stretch.
      out = positionAt(segment, q.getTValue());
    }
    return 0;
  }

 private:
  /// The new position of one inside the stretch.
  Position inside(Position const& p) const {
    double const t = p.getTValue();
    double const firstT = start().getTValue();
    double const lastT = end().getTValue();
    if (inStartSegment(p) && inEndSegment(p)) return onNew(0, fraction(t - firstT, lastT - firstT));
    if (inStartSegment(p)) {
      if (firstT == 0.0) return onNew(0, t);
      if (IS_EQUAL(t, firstT, kPiece)) return newStart();
      return onNew(0, fraction(t - firstT, 1.0 - firstT));
    }
    if (inEndSegment(p)) {
      if (IS_EQUAL(t, lastT, kPiece) || IS_ZERO(lastT, kPiece)) return newEnd();
      return onNew(count() - 1, t / lastT);
    }
    return onNew(clampedSegment(p) - clampedSegment(start()), t);
  }
};

/// A stretch that runs from S past the end of a closed curve to E, which is not after S.
class GxWrappedRangePositionMap : public StretchMap {
 public:
  GxWrappedRangePositionMap(Stretch const& stretch, Position const& curveEnd)
      : StretchMap(stretch, clampedSegment(curveEnd)),
        n_(clampedSegment(curveEnd)),
        beforeSeam_(n_ - clampedSegment(start())) {}

  int mapPosition(Position& out, Position const& in) const override {
    Position const p = seamResolved(in);
    if (end() < p && p < start()) {
      // Deliberate: near the end gives the start, near the start gives the end.
      bool const nearEnd =
          clampedSegment(p) - clampedSegment(end()) <= clampedSegment(start()) - clampedSegment(p);
      out = nearEnd ? newStart() : newEnd();
      return -1;
    }
    return p >= start() ? mapBeforeSeam(out, p) : mapAfterSeam(out, p);
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    Position const q = in;
    long long const j = segmentsIntoNew(q);
    double const t = q.getTValue();
    if (j < 0) {
      out = start();
      return -1;
    }
    if (j == 0) {
      out = inStartPiece(t, 1.0);
    } else if (j == count()) {
      out = end();
    } else if (j == count() - 1 && j >= beforeSeam_) {
      out = inEndPiece(j - beforeSeam_, t);
    } else if (clampedSegment(q) < beforeSeam_) {
      // Deliberate: the number on the new curve is compared, base and all.
      out = positionAt(clampedSegment(start()) + j, t);
    } else {
      out = positionAt(j - beforeSeam_, t);
    }
    return 0;
  }

 private:
  int mapBeforeSeam(Position& out, Position const& p) const {
    long long const segment = clampedSegment(p);
    double const t = p.getTValue();
    if (segment >= n_) {
      out = onNew(beforeSeam_, 0.0);
      return segment == n_ && t == 0.0 ? 0 : -1;
    }
    double const firstT = start().getTValue();
    out = inStartSegment(p) ? onNew(0, fraction(t - firstT, 1.0 - firstT))
                            : onNew(segment - clampedSegment(start()), t);
    return 0;
  }

  int mapAfterSeam(Position& out, Position const& p) const {
    double const t = p.getTValue();
    double const lastT = end().getTValue();
    if (clampedSegment(p) < 0) {
      out = onNew(beforeSeam_, 0.0);
      return -1;
    }
    if (!inEndSegment(p)) {
      out = onNew(clampedSegment(p) + beforeSeam_, t);
    } else if (IS_ZERO(lastT, kPiece)) {
      out = newEnd();
    } else {
      out = onNew(count() - 1, t / lastT);
    }
    return 0;
  }

  long long n_;
  long long beforeSeam_;  // the new segments that the part from S to the seam fills
};

MapHandle plainMap(Stretch const& stretch) {
  return MapHandle(new (std::nothrow) GxRangePositionMap(stretch));
}

MapHandle wrappedMap(Stretch const& stretch, Position const& curveEnd) {
  return MapHandle(new (std::nothrow) GxWrappedRangePositionMap(stretch, curveEnd));
}

}  // namespace

MapHandle constructRangePositionMap(GxBezierCurve const& curve, int closed, int base, int forward,
                                    Position const& start, Position const& end,
                                    Position const& curveEnd) {
  Stretch stretch = Stretch{&curve, closed, forward, base, start, end}.withSeamResolved();
  if (forward) {
    return stretch.start < stretch.end ? plainMap(stretch) : wrappedMap(stretch, curveEnd);
  }

  MapHandle const reversal = constructReversePositionMap(clampedInt(clampedSegment(curveEnd)));
  if (reversal.isNull()) return reversal;
  if (reversal->mapPosition(stretch.start, stretch.start) != 0 ||
      reversal->mapPosition(stretch.end, stretch.end) != 0) {
    return constructIdentityPositionMap();
  }
  stretch.forward = 1;
  if (stretch.start < stretch.end) {
    return constructCompositePositionMap(reversal, plainMap(stretch));
  }
  if (stretch.start == curveEnd) {
    // The stretch is read backwards from the start of the curve, so all of it lies behind the seam.
    stretch.start = GxBezierCurvePosition(0, 0.0);
    return constructCompositePositionMap(reversal, plainMap(stretch));
  }
  return constructCompositePositionMap(reversal, wrappedMap(stretch, curveEnd));
}
