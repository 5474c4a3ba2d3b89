// The next parameter at a straight-line distance. The search narrows the bracket from the start to
// the limit and tries the point a quarter of the way from its near end to its far end.
#include "crv/bezier/internal/step.h"

#include "crv/bezier/internal/arcLength.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

namespace {

using crv::internal::Cubic;
using crv::internal::LengthCache;
using crv::internal::Point;
using crv::internal::StepRange;

// Squared curve units: a squared distance this close is met. Exact form: the double above 0.01.
constexpr double kMet = 0.010000000000000002;

// Squared curve units: a remaining length whose square is smaller counts as none.
constexpr double kNoSquaredLength = 1e-9;

// Guard: a search that never meets its distance ends here.
constexpr int kMaxTrials = 64;

constexpr int kFound = 0;
constexpr int kNotFound = -1;

bool isSame(double t, double u) { return IS_EQUAL(t, u, kZeroTolerance); }

/// The end of the segment towards which a step leads.
double segmentEnd(StepRange const& range) { return range.forward ? 1.0 : 0.0; }

double quarter(double nearEnd, double farEnd) { return nearEnd * 0.75 + farEnd * 0.25; }

struct SearchResult {
  int code;
  double t;  // the last trial
  bool ranOut;
  int trials;
};

SearchResult search(Cubic const& s, Point const& reference, StepRange const& range,
                    double squaredDistance, double firstTrial) {
  double nearEnd = range.start;
  double farEnd = range.limit;
  double t = firstTrial;
  int code = kFound;
  for (int trial = 0; trial < kMaxTrials; ++trial) {
    if (trial > 0) t = quarter(nearEnd, farEnd);
    double const d = crv::internal::squaredDistance(reference, s.point(t));
    if (IS_EQUAL(d, squaredDistance, kMet)) return {code, t, false, trial};
    if (d < squaredDistance && isSame(t, segmentEnd(range))) {
      // Deliberate: the search goes on, but once it has touched the end it cannot succeed.
      farEnd = segmentEnd(range);
      code = kNotFound;
    } else if (d > squaredDistance) {
      farEnd = t;
    } else if (d < squaredDistance) {
      nearEnd = t;
    }
  }
  return {kNotFound, t, true, kMaxTrials};
}

/// The arc length between t and the end of the segment towards which the step leads.
double lengthBeyond(GxBezier const& s, double t, int forward, LengthCache& lengths) {
  double const after = lengths.length(s, t);
  return forward ? after : lengths.length(s, 0.0) - after;
}

/// The arc length from the start of the range to t; remaining is the length left at the start.
double lengthTo(GxBezier const& s, StepRange const& range, double remaining, double t,
                LengthCache& lengths) {
  constexpr double kNothing = -0.0;  // adding -0.0 keeps every sum; adding 0.0 would change -0.0
  double const end = segmentEnd(range);
  if (isSame(t, end)) return remaining;
  if (isSame(t, 1.0 - end)) return kNothing;
  return remaining - lengthBeyond(s, t, range.forward, lengths);
}

}  // namespace

double crv::internal::LengthCache::length(GxBezier const& s, double startT) {
  Measured& measured = startT == 0.0 ? whole_ : rest_;
  if (measured.segment != &s || measured.startT != startT) {
    ArcLength const arc = measuredLength(cubic(s), startT);
    measured = {&s, startT, arc.length};
    evaluations_ += arc.evaluations;
  }
  return measured.length;
}

int crv::internal::findNextPos(GxBezier const& segment, StepRange const& range,
                               double squaredDistance, double& t, double* consumed,
                               LengthCache& lengths) {
  if (isSame(range.limit, range.start)) return kNotFound;
  double const remaining = lengthBeyond(segment, range.start, range.forward, lengths);
  double const squaredRemaining = remaining * remaining;
  if (IS_ZERO(squaredRemaining, kNoSquaredLength) || squaredRemaining < squaredDistance) {
    if (consumed != nullptr) *consumed += remaining;
    return kNotFound;
  }
  // Deliberate: a ratio of squares, so the first trial of a small step lies too near.
  double const guess = squaredDistance / squaredRemaining;
  double const firstTrial =
      range.forward ? min(range.start + guess, 1.0) : max(range.start - guess, 0.0);

  Cubic const s = cubic(segment);
  SearchResult const result = search(s, s.point(range.start), range, squaredDistance, firstTrial);
  lengths.countSinglePoints(result.trials);
  double used = 0.0;
  if (consumed != nullptr) {
    used = result.ranOut ? remaining : lengthTo(segment, range, remaining, result.t, lengths);
  }
  // Written at the end because t or consumed may be a coordinate of the segment.
  t = result.t;
  if (consumed != nullptr) *consumed += used;
  return result.code;
}

int crv::internal::findNextPosFromPoint(GxBezier const& segment, StepRange const& range,
                                        GxCoord<double> const& reference, double squaredDistance,
                                        double& t) {
  if (isSame(range.limit, range.start)) return kNotFound;
  SearchResult const result = search(cubic(segment), plain(reference), range, squaredDistance,
                                     quarter(range.start, range.limit));
  t = result.t;
  return result.code;
}
