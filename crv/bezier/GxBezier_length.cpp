// Arc length as the length of an inscribed polyline, its chords doubled until it settles, and
// bisection for the parameter at a straight-line distance from an anchor.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/step.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Cubic;
using crv::internal::Point;

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

// Points made at a time: enough to hide the time in which what is stored can be loaded again, and
// fewer for what is left over.
constexpr int kBlock = 16;
constexpr int kSmallBlock = 8;

/// Adds the chords of a block of points, at parameters (first + k)*step + startT, to sum, in order;
/// previous is the point before them, and becomes the last. Points and distances are made in loops
/// that the compiler turns into vectors.
template <int kCount>
void addBlock(Cubic const& s, int first, double step, double startT, Point& previous, double& sum) {
  Point const* const p = s.p;
  double x[kBlock + 1];
  double y[kBlock + 1];
  double chords[kBlock];
  x[0] = previous.x;
  y[0] = previous.y;
  for (int k = 0; k < kCount; ++k) {
    // Without the tests for 0 and 1, where the weights are exact: no distance can tell.
    crv::internal::Weights const w = crv::internal::pointWeights((first + k) * step + startT);
    x[k + 1] = crv::internal::blended(w, p[0].x, p[1].x, p[2].x, p[3].x);
    y[k + 1] = crv::internal::blended(w, p[0].y, p[1].y, p[2].y, p[3].y);
  }
  for (int k = 0; k < kCount; ++k) {
    double const dx = x[k] - x[k + 1];
    double const dy = y[k] - y[k + 1];
    chords[k] = std::sqrt(dx * dx + dy * dy);
  }
  for (int k = 0; k < kCount; ++k) sum += chords[k];
  previous = {x[kCount], y[kCount]};
}

/// The sum of count chords from startT to the end.
double chordSum(Cubic const& s, int count, double startT) {
  double const step = count > 1 ? (1.0 - startT) / count : 0.0;
  Point previous = s.point(startT);
  double sum = 0.0;
  int i = 1;
  int left = max(count, 1) - 1;  // points between the ends
  for (; left >= kBlock; left -= kBlock, i += kBlock) {
    addBlock<kBlock>(s, i, step, startT, previous, sum);
  }
  if (left >= kSmallBlock) {
    addBlock<kSmallBlock>(s, i, step, startT, previous, sum);
    left -= kSmallBlock;
    i += kSmallBlock;
  }
  for (; left > 0; --left, ++i) {
    Point const next = s.point(i * step + startT);
    sum += crv::internal::distance(previous, next);
    previous = next;
  }
  return sum + crv::internal::distance(previous, s.end());
}

/// The length from startT to the end; chords becomes the number of those whose sum it is.
double settledLength(Cubic const& s, double startT, int& chords) {
  chords = 2 * kFirstChords;
  double previous = chordSum(s, kFirstChords, startT);
  double current = chordSum(s, chords, startT);
  for (int i = 0; i < kMaxDoublings; ++i) {
    if (std::fabs(current - previous) <= kLengthTolerance || std::isnan(current)) break;
    chords *= 2;
    previous = current;
    current = chordSum(s, chords, startT);
  }
  return current;
}

/// The searches on either side of the anchor, in the bracket from the end next to it to the other.
double splitAtFixedLength(Cubic const& s, double distance, int steps, double& nearEnd,
                          double& farEnd, double anchorT, double segmentEnd) {
  Point const anchor = s.point(anchorT);
  bool const after = segmentEnd == 1.0;
  double farDistance = crv::internal::distance(anchor, s.point(farEnd));
  while (after ? nearEnd < farEnd : farEnd < nearEnd) {
    // Deliberate: strictly below the tolerance here, up to it at the midpoint.
    if (std::fabs(farDistance - distance) < kDistanceTolerance) return farEnd;
    if (farEnd == segmentEnd && farDistance < distance) return farEnd;
    double const middle = (nearEnd + farEnd) * 0.5;
    double const middleDistance = crv::internal::distance(anchor, s.point(middle));
    double const excess = middleDistance - distance;
    if (std::fabs(excess) <= kDistanceTolerance || steps > kMaxSteps) return middle;
    bool const isTooNear = excess <= 0.0;
    double& narrowed = isTooNear ? nearEnd : farEnd;
    bool const settled = narrowed == middle;  // adjacent doubles: there is nothing left to halve
    narrowed = middle;
    if (settled) return middle;
    if (!isTooNear) farDistance = middleDistance;
    ++steps;
  }
  return nearEnd;
}

}  // namespace

double GxBezier::length(int count, double startT) const {
  return chordSum(crv::internal::cubic(*this), count, startT);
}

double GxBezier::length(double startT) const {
  int chords;
  return settledLength(crv::internal::cubic(*this), startT, chords);
}

double crv::internal::StepWork::length(GxBezier const& s, double startT) {
  Measured& measured = startT == 0.0 ? whole_ : rest_;
  if (measured.segment != &s || measured.startT != startT) {
    int chords;
    measured = {&s, startT, settledLength(crv::internal::cubic(s), startT, chords)};
    points_ += 2 * chords - kFirstChords;  // all doublings together
  }
  return measured.length;
}

double GxBezier::splitAtFixedLengthAfter(double distance, int steps, double& lo, double& hi,
                                         double anchorT) const {
  return splitAtFixedLength(crv::internal::cubic(*this), distance, steps, lo, hi, anchorT, 1.0);
}

double GxBezier::splitAtFixedLengthBefore(double distance, int steps, double& lo, double& hi,
                                          double anchorT) const {
  return splitAtFixedLength(crv::internal::cubic(*this), distance, steps, hi, lo, anchorT, 0.0);
}
