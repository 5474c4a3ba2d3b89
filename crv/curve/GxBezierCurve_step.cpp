// Walking along a curve: the step of a segment is tried on one segment after another, across joints
// and, on closed curves, across the seam, up to a limit.
#include "crv/curve/GxBezierCurve.h"

#include "crv/bezier/internal/step.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::LengthCache;
using crv::internal::StepRange;

namespace {

constexpr int kFound = 0;
constexpr int kNotFound = -1;

// Short chords: ten of them, or, on distances longer than this (curve units), as many as make them
// about three units long.
constexpr double kChordFraction = 0.1;
constexpr double kLongDistance = 30.0;
constexpr double kChordsPerUnit = 1.0 / 3.0;

// Deliberate: chords are taken until 5 % past the distance, so walks of over 20 chords take extra
// ones.
constexpr double kMargin = 1.05;

// Guard: evaluations of one walk, about a second of processor time.
constexpr double kMaxEvaluations = 0x1p28;

// The least number of evaluations that visiting a segment takes if its length is not known yet.
// Every visit counts for at least as many, since a walk may go around a single segment for ever.
constexpr double kLeastEvaluations = 24.0;

// The cost of an evaluation with subnormal numbers, in ordinary evaluations, on processors that
// handle them in microcode; and the coordinates (curve units) below which the squares of short
// chords may be subnormal.
constexpr double kSubnormalCost = 20.0;
constexpr double kSquaresUnderflow = 1e-140;

bool meetsSubnormals(GxBezier const& s) {
  auto const isTiny = [](double x) { return x != 0.0 && std::fabs(x) < kSquaresUnderflow; };
  for (int i = 0; i < 4; ++i) {
    if (isTiny(s[i].xval()) || isTiny(s[i].yval())) return true;
  }
  return false;
}

/// The lengths that a walk has measured, and the evaluations that it may still make.
class Budget {
 public:
  LengthCache& lengths() { return lengths_; }
  bool isSpent() const { return spent_ > kMaxEvaluations; }

  /// Counts the visit of a segment, with the evaluations made since the last visit.
  void countVisit(GxBezier const& segment) {
    double const made = lengths_.evaluations() - counted_;
    counted_ = lengths_.evaluations();
    spent_ += max(made, kLeastEvaluations) * (meetsSubnormals(segment) ? kSubnormalCost : 1.0);
  }

 private:
  LengthCache lengths_;
  double counted_ = 0.0;
  double spent_ = 0.0;
};

/// The end of the curve in the direction of the walk.
GxBezierCurvePosition farEnd(GxBezierCurve const& curve, int forward) {
  return forward ? curve.lastPos() : curve.firstPos();
}

/// The segments from a position to a limit, in the order of the walk, each with the parameters
/// between which the step is sought.
class SegmentWalk {
 public:
  SegmentWalk(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
              GxBezierCurvePosition const& limit, int forward)
      : curve_(curve),
        segmentsPerLap_(static_cast<long long>(curve.length())),
        forward_(forward),
        startT_(from.getTValue()),
        limitT_(limit.getTValue()) {
    if (segmentsPerLap_ == 0) return;
    long long first = from.getSegmentNumber();
    long long last = limit.getSegmentNumber();
    if (curve.strictIsClosed()) {
      if (forward && limit < from) last += segmentsPerLap_;
      if (!forward && limit > from) first += segmentsPerLap_;
    } else if (forward ? last < first : first < last) {
      // A limit that lies behind is never met: the walk ends with the curve.
      GxBezierCurvePosition const end = farEnd(curve, forward);
      last = end.getSegmentNumber();
      limitT_ = end.getTValue();
    }
    total_ = (forward ? last - first : first - last) + 1;
    number_ = (first % segmentsPerLap_ + segmentsPerLap_) % segmentsPerLap_;
  }

  bool isOver() const { return visited_ >= total_; }
  bool isBeyondTwoLaps() const { return visited_ > 2 * segmentsPerLap_; }

  int number() const { return static_cast<int>(number_); }
  GxBezier const& segment() const { return curve_[number()]; }
  StepRange range() const {
    bool const isLast = visited_ + 1 == total_;
    return {startT_, isLast ? limitT_ : (forward_ ? 1.0 : 0.0), forward_};
  }

  void advance() {
    ++visited_;
    startT_ = forward_ ? 0.0 : 1.0;
    number_ += forward_ ? 1 : -1;
    if (number_ == segmentsPerLap_) number_ = 0;
    if (number_ < 0) number_ = segmentsPerLap_ - 1;
  }

  void stop() { visited_ = total_; }

  /// Leaves out whole laps between the first and the last, in which a search that does not depend
  /// on the lap would find nothing new.
  void skipRepeatedLaps() {
    long long const beforeLast = total_ - 1;
    if (beforeLast <= 2 * segmentsPerLap_) return;
    total_ = segmentsPerLap_ + 2 + (beforeLast - 1) % segmentsPerLap_;
  }

 private:
  GxBezierCurve const& curve_;
  long long segmentsPerLap_;
  int forward_;
  double startT_;
  double limitT_;
  long long total_ = 0;
  long long visited_ = 0;
  long long number_ = 0;
};

/// Calls search(segment, range, t) for one segment after another until it finds a step to t; only
/// then to is written.
template <class Search>
int findOnSegments(SegmentWalk& segments, GxBezierCurvePosition& to, Search const& search) {
  for (; !segments.isOver(); segments.advance()) {
    double t = 0.0;
    if (search(segments.segment(), segments.range(), t) == kFound) {
      to = GxBezierCurvePosition(segments.number(), t);
      return kFound;
    }
  }
  return kNotFound;
}

/// A step at a straight-line distance from the point at which it starts.
int stepFromStart(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                  GxBezierCurvePosition const& limit, GxBezierCurvePosition& to, double distance,
                  int forward, double* consumed, Budget& budget) {
  GxCoord<double> const start = curve.locateCurvePosition(from);
  SegmentWalk segments(curve, from, limit, forward);
  auto const search = [&](GxBezier const& s, StepRange const& range, double& t) {
    if (segments.isBeyondTwoLaps() && budget.isSpent()) {
      segments.stop();
      return kNotFound;
    }
    int const code =
        crv::internal::findNextPos(s, range, distance * distance, t, consumed, budget.lengths());
    budget.countVisit(s);
    // Deliberate: measured from the start of the whole walk, which does not move on.
    if (code == kNotFound) distance -= start.distance(s[forward ? 3 : 0]);
    return code;
  };
  return findOnSegments(segments, to, search);
}

/// A step towards the end of the curve; consumed, if not null, grows by its length if it is found.
int stepTowardsEnd(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                   GxBezierCurvePosition& to, double d, int forward, double* consumed,
                   Budget& budget) {
  double length = 0.0;
  int const result = stepFromStart(curve, from, farEnd(curve, forward), to, d, forward,
                                   consumed == nullptr ? nullptr : &length, budget);
  if (result == kFound && consumed != nullptr) *consumed += length;
  return result;
}

/// Walks a distance d in short chords; to becomes the last position reached.
int walkInShortChords(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
                      GxBezierCurvePosition& to, double d, int forward, double* consumed,
                      Budget& budget) {
  double const chord = d > kLongDistance ? d / std::trunc(d * kChordsPerUnit) : d * kChordFraction;
  GxBezierCurvePosition reached(from);
  int result = curve.length() == 0 ? kNotFound : kFound;
  for (double walked = chord; result == kFound && walked < d * kMargin; walked += chord) {
    GxBezierCurvePosition next;
    result = budget.isSpent()
                 ? kNotFound
                 : stepTowardsEnd(curve, reached, next, chord, forward, consumed, budget);
    if (result == kFound) reached = next;
    if (chord == 0.0) break;  // a tenth of d has underflown: the walk would never advance
  }
  to = reached;
  return result;
}

/// One chord in mode 0, else short chords.
int stepOrWalk(GxBezierCurve const& curve, GxBezierCurvePosition const& from,
               GxBezierCurvePosition& to, double d, int forward, double* consumed, int mode) {
  Budget budget;
  return mode == 0 ? stepTowardsEnd(curve, from, to, d, forward, consumed, budget)
                   : walkInShortChords(curve, from, to, d, forward, consumed, budget);
}

}  // namespace

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                               double d, int forward, int mode) const {
  return stepOrWalk(*this, from, to, d, forward, nullptr, mode);
}

int GxBezierCurve::findNextPos(GxBezierCurvePosition const& from,
                               GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                               double d, int forward) const {
  Budget budget;
  return stepFromStart(*this, from, limit, to, d, forward, nullptr, budget);
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
  Budget budget;
  return stepFromStart(*this, from, limit, to, d, forward, &consumed, budget);
}

int GxBezierCurve::findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                                        GxBezierCurvePosition& to, double d, int forward) const {
  return findNextPosFromPoint(p, from, farEnd(*this, forward), to, d, forward);
}

int GxBezierCurve::findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                                        GxBezierCurvePosition const& limit,
                                        GxBezierCurvePosition& to, double d, int forward) const {
  SegmentWalk segments(*this, from, limit, forward);
  segments.skipRepeatedLaps();
  return findOnSegments(segments, to, [&](GxBezier const& s, StepRange const& range, double& t) {
    return crv::internal::findNextPosFromPoint(s, range, p, d * d, t);
  });
}
