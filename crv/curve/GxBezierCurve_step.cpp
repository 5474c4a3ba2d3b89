// Walking along a curve: the step of a segment, tried on one segment after another, across joins
// and, on closed curves, across the seam, up to a limit.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>

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

// Guard: points that a walk may take to measure the lengths of the segments that it passes beyond
// two turns, or of the segments of short chords.
constexpr double kMaxPoints = 0x1p28;

// Points that measuring a length takes: about so many for the root of a curve unit of the second
// differences, as trials showed, and never fewer or more than these.
constexpr double kPointsPerRoot = 9.0;
constexpr double kLeastPoints = 30.0;
constexpr double kMostPoints = 655350.0;

// What one of these points may lose, relative to its coordinates, and the curve units by which two
// measurements of a length may differ: where all points together lose more, lengths never settle.
constexpr double kRounding = 0x1p-53;
constexpr double kLengthTolerance = 0.1;

/// Measures a step along a straight line from the point at which the walk starts.
class FromStart {
 public:
  FromStart(GxCoord<double> const& start, double distance, double* consumed)
      : start_(start), distance_(distance), consumed_(consumed) {}

  int search(GxBezier const& s, double& t, double startT, double farT, int forward) const {
    double const squared = distance_ * distance_;
    return consumed_ == nullptr ? s.findNextPos(t, startT, farT, squared, forward)
                                : s.findNextPos(t, startT, farT, squared, forward, *consumed_);
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
      longest = max(longest, curve[i].length(0.0));
      turn += start_.distance(curve[i][forward ? 3 : 0]);
    }
    // Twice the longest, for rounding.
    double const firstTurn = (distance_ - 2.0 * longest) / turn;
    double const lastTurn = (distance_ + 2.0 * longest) / turn;
    return firstTurn * n <= most ? min(most, (lastTurn + 1.0) * n) : 0.0;
  }

 private:
  GxCoord<double> start_;
  double distance_;
  double* consumed_;
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

/// The greatest coordinate, by magnitude, of a segment's control points.
double magnitude(GxBezier const& s) {
  double most = 0.0;
  for (int i = 0; i < 4; ++i) {
    most = max(most, max(std::fabs(s[i].xval()), std::fabs(s[i].yval())));
  }
  return most;
}

/// About how many points it takes to measure the length of a segment.
double pointsToMeasure(GxBezier const& s) {
  GxVector<double> const bend1 = (s[0] - s[1]) - (s[1] - s[2]);
  GxVector<double> const bend2 = (s[1] - s[2]) - (s[2] - s[3]);
  double const bend = max(bend1.length(), bend2.length());
  double const points = kLeastPoints + kPointsPerRoot * std::sqrt(bend);
  bool const settles = points * magnitude(s) * kRounding <= kLengthTolerance;
  return settles ? min(kMostPoints, points) : kMostPoints;
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
  double most = kMaxPoints / kLeastPoints;
  long k = stretch.first;
  double startT = from.getTValue();
  double points = 0.0;
  for (unsigned long i = 0; i <= before; ++i) {
    GxBezier const& segment = curve[static_cast<int>(k)];
    if (i > twoTurns) {
      // Where the points do not last to the limit: no further than there is something to find.
      bool const isTooFar = i == twoTurns + 1 && static_cast<double>(before - i) > most;
      if (isTooFar) most = measure.segmentsInReach(curve, most, forward);
      points += pointsToMeasure(segment);
      if (points > kMaxPoints || static_cast<double>(i - twoTurns) > most) break;
    }
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

/// Walks a way d in short chords, each taken by step(from, to, chord); to becomes the last position
/// reached.
template <class Step>
int walkInShortChords(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                      GxBezierCurvePosition& to, double d, Step step) {
  long const n = static_cast<long>(curve.length());
  double const chord = d > kLongWay ? d / std::trunc(d * kChordsPerUnit) : d * kShare;
  GxBezierCurvePosition reached(from);
  int result = n == 0 ? kNotFound : kFound;
  double points = 0.0;
  for (double way = chord; n > 0 && way < d * kMargin; way += chord) {
    int const segment = static_cast<int>(wrapped(reached.getSegmentNumber(), n));
    points += pointsToMeasure(curve[segment]);
    GxBezierCurvePosition next;
    result = points <= kMaxPoints ? step(reached, next, chord) : kNotFound;
    if (result == kNotFound) break;
    reached = next;
    if (chord == 0.0) break;  // underflown, it would be taken for ever
  }
  to = reached;
  return result;
}

}  // namespace

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                               double d, int forward, int mode) const {
  GxBezierCurvePosition const limit = farEnd(*this, forward);
  auto const step = [&](GxBezierCurvePosition const& start, GxBezierCurvePosition& next,
                        double chord) { return findNextPos(start, limit, next, chord, forward); };
  return mode == 0 ? step(from, to, d) : walkInShortChords(*this, from, to, d, step);
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from,
                               GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                               double d, int forward) const {
  FromStart const measure(locateCurvePosition(from), d, nullptr);
  return walk(*this, from, limit, to, forward, measure);
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                               double d, int forward, double& consumed, int mode) const {
  GxBezierCurvePosition const limit = farEnd(*this, forward);
  double sum = 0.0;
  auto const step = [&](GxBezierCurvePosition const& start, GxBezierCurvePosition& next,
                        double chord) {
    double fresh = 0.0;
    int const result = findNextPos(start, limit, next, chord, fresh, forward);
    if (result != kNotFound) sum += fresh;
    return result;
  };
  int const result = mode == 0 ? step(from, to, d) : walkInShortChords(*this, from, to, d, step);
  consumed = sum;
  return result;
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from,
                               GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                               double d, double& consumed, int forward) const {
  FromStart const measure(locateCurvePosition(from), d, &consumed);
  return walk(*this, from, limit, to, forward, measure);
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
