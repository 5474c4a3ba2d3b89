// Arc length as the length of an inscribed polyline, its chords doubled until it settles, and
// bisection for the parameter at a straight-line distance from an anchor.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/evaluate.h"

#include <cmath>

using crv::internal::PlainPoint;
using crv::internal::PlainSegment;

namespace {

// Curve units: two measurements this close settle the arc length.
constexpr double kLengthTolerance = 0.1;

// Chords of the first measurement, and doublings after the second, up to 327,680 chords.
constexpr int kFirstChords = 10;
constexpr int kMaxDoublings = 14;

// Curve units: a distance this close is met.
constexpr double kDistanceTolerance = 0.1;

// A bisection whose counter is beyond this takes its midpoint.
constexpr int kMaxSteps = 15;

double chordSum(PlainSegment const& s, int count, double startT) {
  PlainPoint previous = s.point(startT);
  double sum = 0.0;
  if (count > 1) {
    double const step = (1.0 - startT) / count;
    for (int i = 1; i < count; ++i) {
      PlainPoint const next = s.point(i * step + startT);
      sum += crv::internal::distance(previous, next);
      previous = next;
    }
  }
  return sum + crv::internal::distance(previous, s.end());
}

/// The searches on either side of the anchor, in the bracket from the end next to it to the other.
double splitAtFixedLength(PlainSegment const& s, double distance, int steps, double& nearEnd,
                          double& farEnd, double anchorT, double segmentEnd) {
  PlainPoint const anchor = s.point(anchorT);
  bool const after = segmentEnd == 1.0;
  while (after ? nearEnd < farEnd : farEnd < nearEnd) {
    double const middle = (nearEnd + farEnd) * 0.5;
    double const farDistance = crv::internal::distance(s.point(farEnd), anchor);
    // Deliberate: strictly below the tolerance here, up to it at the midpoint.
    if (std::fabs(farDistance - distance) < kDistanceTolerance) return farEnd;
    if (farEnd == segmentEnd && farDistance < distance) return farEnd;
    double const excess = crv::internal::distance(anchor, s.point(middle)) - distance;
    if (std::fabs(excess) <= kDistanceTolerance || steps > kMaxSteps) return middle;
    double& narrowed = excess <= 0.0 ? nearEnd : farEnd;
    if (narrowed == middle) return middle;  // adjacent doubles: there is nothing left to halve
    narrowed = middle;
    ++steps;
  }
  return nearEnd;
}

}  // namespace

double GxBezier::length(int count, double startT) const {
  return chordSum(PlainSegment(*this), count, startT);
}

double GxBezier::length(double startT) const {
  PlainSegment const s(*this);
  int chords = 2 * kFirstChords;
  double previous = chordSum(s, kFirstChords, startT);
  double current = chordSum(s, chords, startT);
  for (int i = 0; i < kMaxDoublings; ++i) {
    if (std::fabs(current - previous) <= kLengthTolerance) break;
    chords *= 2;
    previous = current;
    current = chordSum(s, chords, startT);
  }
  return current;
}

double GxBezier::splitAtFixedLengthAfter(double distance, int steps, double& lo, double& hi,
                                         double anchorT) const {
  return splitAtFixedLength(PlainSegment(*this), distance, steps, lo, hi, anchorT, 1.0);
}

double GxBezier::splitAtFixedLengthBefore(double distance, int steps, double& lo, double& hi,
                                          double anchorT) const {
  return splitAtFixedLength(PlainSegment(*this), distance, steps, hi, lo, anchorT, 0.0);
}
