// The next parameter at a straight-line distance, by a search that narrows the bracket from the
// start to the far end at a quarter from its near end.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/step.h"
#include "crv/foundation/tolerance.h"

using crv::internal::Cubic;
using crv::internal::Point;
using crv::internal::StepRange;
using crv::internal::StepWork;

namespace {

// Squared curve units: a squared distance this close is met. Exact form: the double above 0.01.
constexpr double kMet = 0.010000000000000002;

// Squared curve units: a remaining length whose square is smaller is none.
constexpr double kNoLength = 1e-9;

constexpr int kMaxTrials = 64;

constexpr int kFound = 0;
constexpr int kNotFound = -1;

bool isEmpty(StepRange const& range) { return IS_ZERO(range.limit - range.start, kZeroTolerance); }

/// The end of the segment that a step goes to.
double segmentEnd(StepRange const& range) { return range.forward ? 1.0 : 0.0; }

/// A quarter of the way from the near end to the far end.
double quarter(double nearEnd, double farEnd) { return nearEnd * 0.75 + farEnd * 0.25; }

struct SearchResult {
  int code;
  int trials;

  bool ranOut() const { return trials == kMaxTrials; }
};

/// Searches from the first trial t on; t holds the last trial.
SearchResult search(Cubic const& s, Point const& reference, StepRange const& range,
                    double squaredDistance, double& t) {
  double nearEnd = range.start;
  double farEnd = range.limit;
  int code = kFound;
  for (int trial = 0; trial < kMaxTrials; ++trial) {
    if (trial > 0) t = quarter(nearEnd, farEnd);
    double const d = crv::internal::squaredDistance(reference, s.point(t));
    if (IS_EQUAL(d, squaredDistance, kMet)) return {code, trial};
    if (d < squaredDistance && IS_EQUAL(t, segmentEnd(range), kZeroTolerance)) {
      // Deliberate: the search goes on, but once the end was touched it cannot succeed.
      farEnd = segmentEnd(range);
      code = kNotFound;
    } else if (d > squaredDistance) {
      farEnd = t;
    } else if (d < squaredDistance) {
      nearEnd = t;
    }
  }
  return {kNotFound, kMaxTrials};
}

}  // namespace

int crv::internal::findNextPos(GxBezier const& segment, StepRange const& range,
                               double squaredDistance, double& t, double* consumed,
                               StepWork& work) {
  if (isEmpty(range)) return kNotFound;
  auto const use = [consumed](double length) {
    if (consumed != nullptr) *consumed += length;
  };
  double const after = work.length(segment, range.start);
  double const whole = range.forward ? after : work.length(segment, 0.0);
  double const rest = range.forward ? after : whole - after;
  double const squaredRest = rest * rest;
  if (IS_ZERO(squaredRest, kNoLength) || squaredRest < squaredDistance) {
    use(rest);
    return kNotFound;
  }
  // Deliberate: a ratio of squares, which starts small steps too near.
  double const guess = squaredDistance / squaredRest;
  t = range.forward ? min(range.start + guess, 1.0) : max(range.start - guess, 0.0);

  Cubic const s = crv::internal::cubic(segment);
  SearchResult const result = search(s, s.point(range.start), range, squaredDistance, t);
  work.countSinglePoints(result.trials);
  if (consumed == nullptr) return result.code;
  if (result.ranOut() || IS_EQUAL(t, segmentEnd(range), kZeroTolerance)) {
    use(rest);
  } else if (!IS_EQUAL(t, 1.0 - segmentEnd(range), kZeroTolerance)) {
    double const beyond = work.length(segment, t);
    use(rest - (range.forward ? beyond : whole - beyond));
  }
  return result.code;
}

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward) const {
  StepWork work;
  return crv::internal::findNextPos(*this, {startT, farT, forward}, squaredDistance, t, nullptr,
                                    work);
}

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward,
                          double& consumed) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward, consumed);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward, double& consumed) const {
  StepWork work;
  return crv::internal::findNextPos(*this, {startT, farT, forward}, squaredDistance, t, &consumed,
                                    work);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  return findNextPosFromPoint(t, startT, forward ? 1.0 : 0.0, p, squaredDistance, forward);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, double farT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  StepRange const range{startT, farT, forward};
  if (isEmpty(range)) return kNotFound;
  t = quarter(startT, farT);
  return search(crv::internal::cubic(*this), crv::internal::plain(p), range, squaredDistance, t)
      .code;
}
