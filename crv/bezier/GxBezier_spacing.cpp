// Polylines by equal parameter steps, by chords of one length, and by chords of two lengths, of
// which the long one is taken where the curve stays close to it. The end of each chord is found by
// the bisection for a fixed distance.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/extremes.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units: an arc shorter than this is not divided.
constexpr double kNoLength = kZeroTolerance;

/// The parameter one chord after t. If the search returns the lower end of its bracket, lo after
/// narrowing, it has failed, and the parameter is fallback(lo).
template <class Fallback>
double oneChordAfter(GxBezier const& s, double chord, double t, Fallback fallback) {
  double lo = t;
  double hi = 1.0;
  double const next = s.splitAtFixedLengthAfter(chord, 0, lo, hi, t);
  return next == lo ? fallback(lo) : next;
}

/// Appends points up to the end of the segment, as long as the parameter grows.
template <class Next>
void appendWhileAdvancing(GxBezier const& s, GxList<GxCoord<double>>& out, double t,
                          Next nextAfter) {
  while (t < 1.0) {
    double const next = nextAfter(t);
    if (!(next > t)) return;
    out.add(s.bValue(next));
    t = next;
  }
}

}  // namespace

void GxBezier::makeSegment(unsigned short count, std::list<GxCoord<double>>& out) const {
  Cubic const s = crv::internal::cubic(*this);
  out.push_back(points_[0]);
  double const step = count == 0 ? 1.0 : 1.0 / count;
  double t = step;
  for (int i = 1; i < count; ++i) {
    Point const p = s.point(t);
    out.emplace_back(p.x, p.y);
    t += step;  // Exact form: accumulated, not i * step.
  }
  out.push_back(points_[3]);
}

void GxBezier::makeSegment(double chord, GxList<GxCoord<double>>& out, double startT) const {
  out.add(bValue(startT));
  if (startT == 1.0) return;
  double const rest = length(startT);
  if (rest < kNoLength) return;
  double const step = (1.0 - startT) * chord / rest;
  if (std::isnan(step)) return;  // Guard: the length or the chord is NaN.
  // Deliberate: the step is compared with the whole range, not with the rest from startT on.
  if (step >= 1.0) {
    out.add(points_[3]);
    return;
  }
  appendWhileAdvancing(*this, out, startT, [&](double t) {
    // Deliberate: the increment starts at the narrowed end of the bracket, not at t.
    return oneChordAfter(*this, chord, t, [step](double lo) { return min(lo + step, 1.0); });
  });
}

void GxBezier::makeSegmentEx(double longChord, double shortChord, double gap,
                             GxList<GxCoord<double>>& out, double startT) const {
  if (longChord <= shortChord) {
    makeSegment(longChord, out, startT);
    return;
  }
  out.add(bValue(startT));
  if (startT == 1.0) return;
  double const rest = length(startT);
  if (rest < kNoLength) return;
  double const longStep = (1.0 - startT) * longChord / rest;
  double const shortStep = (1.0 - startT) * shortChord / rest;
  if (std::isnan(longStep) || std::isnan(shortStep)) return;
  appendWhileAdvancing(*this, out, startT, [&](double t) {
    return getNextTValue(longChord, shortChord, longStep, shortStep, gap, t);
  });
}

double GxBezier::getNextTValue(double longChord, double shortChord, double longStep,
                               double shortStep, double gap, double t) const {
  double const afterLong =
      oneChordAfter(*this, longChord, t, [=](double) { return min(longStep + t, 1.0); });
  if (checkChordGapDist(t, afterLong, gap)) return afterLong;
  return oneChordAfter(*this, shortChord, t, [=](double) { return min(shortStep + t, 1.0); });
}

int GxBezier::checkChordGapDist(double ta, double tb, double gap) const {
  GxBezier before;
  GxBezier piece;
  GxBezier after;
  split(before, piece, ta);
  // Deliberate: tb is not rescaled into the piece, which therefore reaches to ta + tb * (1 - ta).
  piece.split(after, tb);

  GxCoord<double> const start = piece[0];
  GxCoord<double> const level(piece[3].xval(), start.yval());
  double const slope = -angle(level, start, piece[3]);
  for (int i = 1; i < 4; ++i) piece[i].rotate(slope, start);
  // Deliberate: the lowest point is not measured.
  GxCoord<double> const highest = piece.bValue(crv::internal::heightExtremes(piece).highest);
  return !(distanceToLineSegment(start, piece[3], highest) > gap);
}
