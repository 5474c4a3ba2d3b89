// Walking along a curve: the step of a segment, tried on one segment after another, across joins
// and, on closed curves, across the seam, up to a limit.
#include "crv/curve/GxBezierCurve.h"

#include "crv/bezier/internal/step.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>

using crv::internal::LengthCache;

namespace {

constexpr int kFound = 0;
constexpr int kNotFound = -1;

// Short chords: ten of them, or, on ways longer than this (curve units), as many as make them about
// three units long.
constexpr double kShare = 0.1;
constexpr double kLongWay = 30.0;
constexpr double kChordsPerUnit = 1.0 / 3.0;

// Deliberate: the chords go on up to 5 % beyond the way, which beyond 20 chords admits more of
// them.
constexpr double kMargin = 1.05;

// Guards: points that a walk may take beyond two turns, or in short chords, a third of a second's;
// and segments that it may pass beyond two turns, which on a curve of one takes no points.
constexpr double kMaxPoints = 0x1p26;
constexpr double kMaxSegments = 9e6;

/// Measures a step along a straight line from the point at which the walk starts.
class FromStart {
 public:
  FromStart(GxCoord<double> const& start, double distance, double* consumed, LengthCache& lengths)
      : start_(start), distance_(distance), consumed_(consumed), lengths_(lengths) {}

  int search(GxBezier const& s, double& t, double startT, double farT, int forward) const {
    return crv::internal::findNextPos(s, {startT, farT, forward}, distance_ * distance_, t,
                                      consumed_, lengths_);
  }

  /// Goes on to the next segment.
  void pass(GxCoord<double> const& end) {
    // Deliberate: measured from the start of the whole walk, which does not move on.
    distance_ -= start_.distance(end);
  }

  unsigned long withoutRepeats(unsigned long before, unsigned long /*n*/) const { return before; }

  /// The number of segments, at most the given one, after which no step can be found any more,
  /// since what is left of the distance is longer than any; 0 if it stays so for all of them.
  double segmentsInReach(GxBezierCurve const& curve, double most, int forward) const {
    int const n = static_cast<int>(curve.length());
    double longest = 0.0;
    double turn = 0.0;
    for (int i = 0; i < n; ++i) {
      longest = max(longest, lengths_.length(curve[i], 0.0));
      turn += start_.distance(curve[i][forward ? 3 : 0]);
    }
    // Twice the longest, for rounding.
    double const firstTurn = (distance_ - 2.0 * longest) / turn;
    double const lastTurn = (distance_ + 2.0 * longest) / turn;
    return firstTurn * n <= most ? min(most, (lastTurn + 1.0) * n) : 0.0;
  }

  double points() const { return lengths_.evaluations(); }

 private:
  GxCoord<double> start_;
  double distance_;
  double* consumed_;
  LengthCache& lengths_;
};

/// Measures a step along a straight line from a given point.
class FromPoint {
 public:
  FromPoint(GxCoord<double> const& point, double distance)
      : point_(point), squaredDistance_(distance * distance) {}

  int search(GxBezier const& s, double& t, double startT, double farT, int forward) const {
    return s.findNextPosFromPoint(t, startT, farT, point_, squaredDistance_, forward);
  }
  void pass(GxCoord<double> const& /*end*/) {}

  /// The segments before the last one, without the turns that find what one turn did: nothing.
  unsigned long withoutRepeats(unsigned long before, unsigned long n) const {
    return before > 2 * n ? n + 1 + (before - 1) % n : before;
  }
  double segmentsInReach(GxBezierCurve const&, double most, int) const { return most; }
  double points() const { return 0.0; }  // ends within two turns

 private:
  GxCoord<double> point_;
  double squaredDistance_;
};

/// segment + n, held at the end of the range of long.
long saturatedSum(long segment, long n) {
  return segment > std::numeric_limits<long>::max() - n ? std::numeric_limits<long>::max()
                                                        : segment + n;
}

/// i modulo n, not negative.
long wrapped(long i, long n) { return (i % n + n) % n; }

/// The segments of a walk: the index of the first and the number of those before the last.
struct Stretch {
  long first;
  unsigned long before;
};

/// The segments from one position to another; false if the way leads nowhere near the limit.
bool findStretch(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                 GxBezierCurvePosition const& limit, bool forward, Stretch& stretch) {
  long const n = static_cast<long>(curve.length());
  if (n == 0) return false;
  long s = from.getSegmentNumber();
  long e = limit.getSegmentNumber();
  if (curve.strictIsClosed()) {
    if (forward && limit < from) e = saturatedSum(e, n);
    if (!forward && limit > from) s = saturatedSum(s, n);
  }
  if (forward ? e < s : s < e) return false;
  stretch.first = wrapped(s, n);
  stretch.before = forward ? static_cast<unsigned long>(e) - static_cast<unsigned long>(s)
                           : static_cast<unsigned long>(s) - static_cast<unsigned long>(e);
  return true;
}

/// Tries one segment after another from a position to a limit; to is written where a step is found.
template <class Measure>
int walk(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
         GxBezierCurvePosition const& limit, GxBezierCurvePosition& to, int forward,
         Measure measure) {
  Stretch stretch;
  if (!findStretch(curve, from, limit, forward != 0, stretch)) return kNotFound;
  long const n = static_cast<long>(curve.length());
  double const segmentStart = forward ? 0.0 : 1.0;
  double const segmentEnd = forward ? 1.0 : 0.0;
  unsigned long const before = measure.withoutRepeats(stretch.before, curve.length());
  unsigned long const twoTurns = 2 * curve.length();
  double most = kMaxSegments;
  long k = stretch.first;
  double startT = from.getTValue();
  double lastPoint = 0.0;
  for (unsigned long i = 0; i <= before; ++i) {
    if (i == twoTurns + 1) {
      // Where the limit is out of reach: no further than there is something to find.
      bool const isTooFar = static_cast<double>(before - i) > most;
      if (isTooFar) most = measure.segmentsInReach(curve, most, forward);
      lastPoint = measure.points() + kMaxPoints;
    }
    if (i > twoTurns) {
      bool const isUsedUp = measure.points() > lastPoint;
      if (isUsedUp || static_cast<double>(i - twoTurns) > most) break;
    }
    GxBezier const& segment = curve[static_cast<int>(k)];
    double const farT = i == before ? limit.getTValue() : segmentEnd;
    double t = 0.0;
    if (measure.search(segment, t, startT, farT, forward) != kNotFound) {
      to = GxBezierCurvePosition(static_cast<int>(k), t);
      return kFound;
    }
    measure.pass(segment[forward ? 3 : 0]);
    startT = segmentStart;
    k = forward ? (k + 1) % n : (k + n - 1) % n;
  }
  return kNotFound;
}

/// The end of the curve in the direction of the walk.
GxBezierCurvePosition farEnd(GxBezierCurve const& curve, int forward) {
  return forward ? curve.lastPos() : curve.firstPos();
}

/// A step along a straight line from the point at which it starts.
int stepFromStart(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                  GxBezierCurvePosition const& limit, GxBezierCurvePosition& to, double d,
                  int forward, double* consumed, LengthCache& lengths) {
  FromStart const measure(curve.locateCurvePosition(from), d, consumed, lengths);
  return walk(curve, from, limit, to, forward, measure);
}

/// A step towards the end of the curve; consumed, if not null, grows by its length if it is found.
int step(GxBezierCurve const& curve, GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
         double d, int forward, double* consumed, LengthCache& lengths) {
  double length = 0.0;
  int const result = stepFromStart(curve, from, farEnd(curve, forward), to, d, forward,
                                   consumed == nullptr ? nullptr : &length, lengths);
  if (result == kFound && consumed != nullptr) *consumed += length;
  return result;
}

/// Walks a way d in short chords; to becomes the last position reached.
int walkInShortChords(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                      GxBezierCurvePosition& to, double d, int forward, double* consumed,
                      LengthCache& lengths) {
  double const chord = d > kLongWay ? d / std::trunc(d * kChordsPerUnit) : d * kShare;
  GxBezierCurvePosition reached(from);
  int result = curve.length() == 0 ? kNotFound : kFound;
  for (double way = chord; result == kFound && way < d * kMargin; way += chord) {
    GxBezierCurvePosition next;
    result = lengths.evaluations() > kMaxPoints
                 ? kNotFound
                 : step(curve, reached, next, chord, forward, consumed, lengths);
    if (result == kFound) reached = next;
    if (chord == 0.0) break;  // underflown, it would be taken for ever
  }
  to = reached;
  return result;
}

/// One chord in mode 0, else short chords, with a fresh count of points.
int stepOrWalk(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
               GxBezierCurvePosition& to, double d, int forward, double* consumed, int mode) {
  LengthCache lengths;
  return mode == 0 ? step(curve, from, to, d, forward, consumed, lengths)
                   : walkInShortChords(curve, from, to, d, forward, consumed, lengths);
}

}  // namespace

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                               double d, int forward, int mode) const {
  return stepOrWalk(*this, from, to, d, forward, nullptr, mode);
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from,
                               GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                               double d, int forward) const {
  LengthCache lengths;
  return stepFromStart(*this, from, limit, to, d, forward, nullptr, lengths);
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                               double d, int forward, double& consumed, int mode) const {
  double sum = 0.0;
  int const result = stepOrWalk(*this, from, to, d, forward, &sum, mode);
  consumed = sum;
  return result;
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from,
                               GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                               double d, double& consumed, int forward) const {
  LengthCache lengths;
  return stepFromStart(*this, from, limit, to, d, forward, &consumed, lengths);
}

int GxBezierCurve::findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                                        GxBezierCurvePosition& to, double d, int forward) const {
  return findNextPosFromPoint(p, from, farEnd(*this, forward), to, d, forward);
}

int GxBezierCurve::findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                                        GxBezierCurvePosition const& limit,
                                        GxBezierCurvePosition& to, double d, int forward) const {
  return walk(*this, from, limit, to, forward, FromPoint(p, d));
}
