// Names for the ints that operations take as modes and return as senses and codes. Each name
// converts to the int that the operation uses.
#pragma once

namespace crv {

/// The sense from one position to another, as GxBezierCurve::getSense returns it and
/// GxBezierCurvePosition::reverseSense takes it.
struct Sense {
  enum Value : int { coinciding = 0, forward = 1, backward = 2 };
};

/// The code of an operation that either succeeds or fails.
struct Outcome {
  enum Value : int { done = 0, failed = -1 };
};

/// The last argument of GxBezierCurve::offset.
struct OffsetMode {
  enum Value : int {
    plain = 0,
    cutFirst = 1,  // strongly bent segments are cut at their extremes first
    onlyCut = 2    // segments are cut, but not offset
  };
};

/// The last argument of GxBezierCurve::makeCurve.
struct SpacingMode {
  enum Value : int {
    acrossJoints = 0,  // the rest of a step is carried across joints
    eachSegment = 1
  };
};

/// The last argument of GxBezierCurve::findNextPos without a limit.
struct StepMode {
  enum Value : int { oneChord = 0, shortChords = 1 };
};

/// The code that Are3PointsCCW returns.
struct Turn {
  enum Value : int { clockwise = -1, straight = 0, counterClockwise = 1 };
};

/// The code that GxBezierCurve::wellDefinedDetection returns for the x range of a curve and an
/// interval.
struct XRange {
  enum Value : int {
    runsBack = 0,
    coversInterval = 1,
    startsInside = 2,  // starts after the interval's start
    endsInside = 4,    // ends before the interval's end
    liesInside = 7
  };
};

}  // namespace crv
