// The orientation of an outline, which is the sign of the turn at its highest point between a
// neighbour on either side, and its reversal.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

namespace {

// Parameter: a step away from the highest point.
constexpr double kStep = 0.1;

// Curve units: a segment that is straight or a point within this is passed in one step.
constexpr double kStraight = kZeroTolerance;

// Curve units: a neighbour this close in height to the top is level with it.
constexpr double kLevel = kZeroTolerance;

// Guard: steps per segment, counting one segment more than the curve has; a whole lap takes about
// eleven per segment.
constexpr unsigned long kStepsPerSegment = 64;

/// A position that moves around a closed outline in steps.
struct Walker {
  GxList<GxBezier> const& segments;
  unsigned k;
  double t;

  GxCoord<double> point() const { return segments[k].bValue(t); }

  void stepBack() {
    if (t < kStep) {
      k = (k == 0 ? segments.length() : k) - 1;
      t += 1.0;
    }
    t = isPassedAtOnce() ? 0.0 : t - kStep;
  }

  void stepForward() {
    if (t + kStep > 1.0) {
      k = k + 1 == segments.length() ? 0 : k + 1;
      t -= 1.0;
    }
    t = isPassedAtOnce() ? 1.0 : t + kStep;
  }

 private:
  bool isPassedAtOnce() const {
    return segments[k].isALine(kStraight) || segments[k].isAPoint(kStraight);
  }
};

/// Steps away from the top until a point lies low enough or the lap is complete. Returns false if
/// the guard ends the walk first.
template <class Step, class IsLowEnough, class IsWholeLap>
bool walkFromTop(Walker walker, Step step, IsLowEnough isLowEnough, IsWholeLap isWholeLap,
                 GxCoord<double>& point) {
  unsigned long const most = kStepsPerSegment * (walker.segments.length() + 1ul);
  unsigned const top = walker.k;
  for (unsigned long i = 0; i < most; ++i) {
    (walker.*step)();
    point = walker.point();
    if (isLowEnough(point.yval()) || (walker.k == top && isWholeLap(walker.t))) return true;
  }
  return false;
}

}  // namespace

int GxBezierCurve::isClockwise(int& valid) const {
  valid = 0;
  if (segments_.length() == 0) return 0;
  if (isALine()) {
    valid = 1;
    return 0;
  }
  double topT = 0.0;
  int topSegment = 0;
  getCurveMaxY(topT, topSegment);
  Walker const start{segments_, static_cast<unsigned>(topSegment), topT};
  GxCoord<double> const top = start.point();
  double const height = top.yval();

  GxCoord<double> before;
  if (!walkFromTop(
          start, &Walker::stepBack, [height](double y) { return y <= height; },
          [topT](double t) { return t >= topT; }, before)) {
    return 0;
  }
  // Deliberate: only the walk forward goes along a flat top until the outline drops.
  bool const level = IS_EQUAL(before.yval(), height, kLevel);
  GxCoord<double> after;
  if (!walkFromTop(
          start, &Walker::stepForward,
          [height, level](double y) { return level ? y < height : y <= height; },
          [topT](double t) { return t <= topT; }, after)) {
    return 0;
  }
  int const orientation = Are3PointsCCW(before, top, after);
  valid = orientation != 0;
  return orientation < 0;
}

int GxBezierCurve::changeOrientation(int clockwise) {
  int valid = 0;
  int const isNow = isClockwise(valid);
  if (!valid) return -1;
  if ((isNow != 0) != (clockwise != 0)) reverse();
  return 0;
}

void GxBezierCurve::reverse() {
  GxList<GxBezier> reversed;
  for (GxBezier const& segment : segments_) reversed.insert(segment, 0).reverse();
  segments_.empty();
  segments_.join(reversed);
}
