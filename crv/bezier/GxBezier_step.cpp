// The next parameter at a straight-line distance, by a search that narrows the bracket from the
// start to the far end at a quarter from its near end.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/evaluate.h"
#include "crv/foundation/tolerance.h"

using crv::internal::PlainPoint;
using crv::internal::PlainSegment;

namespace {

// Squared curve units: a squared distance this close is met. Exact form: the double above 0.01.
constexpr double kMet = 0.010000000000000002;

// Squared curve units: a remaining length whose square is smaller is none.
constexpr double kNoLength = 1e-9;

constexpr int kMaxTrials = 64;

constexpr int kFound = 0;
constexpr int kNotFound = -1;

/// Where a search runs, from the start to the limit.
struct Walk {
  double start;
  double limit;
  int forward;

  bool isEmpty() const { return IS_ZERO(limit - start, kZeroTolerance); }

  /// The end of the segment that the walk goes to.
  double segmentEnd() const { return forward ? 1.0 : 0.0; }

  /// A quarter of the way from the near end to the far end.
  static double quarter(double nearEnd, double farEnd) { return nearEnd * 0.75 + farEnd * 0.25; }
};

struct SearchResult {
  int code;
  bool ranOut;
};

/// Searches from the first trial t on; t holds the last trial.
SearchResult search(PlainSegment const& s, PlainPoint const& reference, Walk const& walk,
                    double squaredDistance, double& t) {
  double nearEnd = walk.start;
  double farEnd = walk.limit;
  int code = kFound;
  for (int trial = 0; trial < kMaxTrials; ++trial) {
    if (trial > 0) t = Walk::quarter(nearEnd, farEnd);
    double const d = crv::internal::squaredDistance(reference, s.point(t));
    if (IS_EQUAL(d, squaredDistance, kMet)) return {code, false};
    if (d < squaredDistance && IS_EQUAL(t, walk.segmentEnd(), kZeroTolerance)) {
      // Deliberate: the search goes on, but once the end was touched it cannot succeed.
      farEnd = walk.segmentEnd();
      code = kNotFound;
    } else if (d > squaredDistance) {
      farEnd = t;
    } else if (d < squaredDistance) {
      nearEnd = t;
    }
  }
  return {kNotFound, true};
}

/// A step from the point at the start; consumed, if not null, grows by the length used up.
int stepFromStart(GxBezier const& segment, Walk const& walk, double squaredDistance, double& t,
                  double* consumed) {
  if (walk.isEmpty()) return kNotFound;
  auto const use = [consumed](double length) {
    if (consumed != nullptr) *consumed += length;
  };
  double const after = segment.length(walk.start);
  double const whole = walk.forward ? after : segment.length(0.0);
  double const rest = walk.forward ? after : whole - after;
  double const squaredRest = rest * rest;
  if (IS_ZERO(squaredRest, kNoLength) || squaredRest < squaredDistance) {
    use(rest);
    return kNotFound;
  }
  // Deliberate: a ratio of squares, which starts small steps too near.
  double const guess = squaredDistance / squaredRest;
  t = walk.forward ? min(walk.start + guess, 1.0) : max(walk.start - guess, 0.0);

  PlainSegment const s(segment);
  SearchResult const result = search(s, s.point(walk.start), walk, squaredDistance, t);
  if (consumed == nullptr) return result.code;
  if (result.ranOut || IS_EQUAL(t, walk.segmentEnd(), kZeroTolerance)) {
    use(rest);
  } else if (!IS_EQUAL(t, 1.0 - walk.segmentEnd(), kZeroTolerance)) {
    double const beyond = segment.length(t);
    use(rest - (walk.forward ? beyond : whole - beyond));
  }
  return result.code;
}

}  // namespace

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward) const {
  return stepFromStart(*this, {startT, farT, forward}, squaredDistance, t, nullptr);
}

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward,
                          double& consumed) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward, consumed);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward, double& consumed) const {
  return stepFromStart(*this, {startT, farT, forward}, squaredDistance, t, &consumed);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  return findNextPosFromPoint(t, startT, forward ? 1.0 : 0.0, p, squaredDistance, forward);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, double farT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  Walk const walk{startT, farT, forward};
  if (walk.isEmpty()) return kNotFound;
  t = Walk::quarter(startT, farT);
  return search(PlainSegment(*this), crv::internal::plain(p), walk, squaredDistance, t).code;
}
