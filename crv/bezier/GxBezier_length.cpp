// Arc length, and bisection for the parameter at a straight-line distance from an anchor.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/arcLength.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units: a distance this close is met.
constexpr double kDistanceTolerance = 0.1;

// A bisection whose counter is beyond this takes its midpoint.
constexpr int kMaxSteps = 15;

/// The parameters between which a distance is sought, from the end next to the anchor.
struct Bracket {
  double nearEnd;
  double farEnd;
  bool isAfterAnchor;

  bool isOpen() const { return isAfterAnchor ? nearEnd < farEnd : farEnd < nearEnd; }
  double segmentEnd() const { return isAfterAnchor ? 1.0 : 0.0; }
};

/// Returns the parameter whose point lies at the distance from the point at anchorT, and leaves the
/// bracket as the bisection narrowed it.
double splitAtFixedLength(Cubic const& s, double distance, int steps, Bracket& bracket,
                          double anchorT) {
  if (!bracket.isOpen()) return bracket.nearEnd;
  Point const anchor = s.point(anchorT);
  double const farDistance = crv::internal::distance(anchor, s.point(bracket.farEnd));
  // Deliberate: strictly below the tolerance here, up to it at the midpoint.
  if (std::fabs(farDistance - distance) < kDistanceTolerance) return bracket.farEnd;
  if (bracket.farEnd == bracket.segmentEnd() && farDistance < distance) return bracket.farEnd;
  // A far end that is narrowed below lies too far away to meet either test.
  do {
    double const middle = (bracket.nearEnd + bracket.farEnd) * 0.5;
    double const excess = crv::internal::distance(anchor, s.point(middle)) - distance;
    if (std::fabs(excess) <= kDistanceTolerance || steps > kMaxSteps) return middle;
    double& narrowed = excess <= 0.0 ? bracket.nearEnd : bracket.farEnd;
    bool const canHalve = middle != narrowed;
    narrowed = middle;
    if (!canHalve) return middle;  // Guard: nothing lies between adjacent doubles.
    ++steps;
  } while (bracket.isOpen());
  return bracket.nearEnd;
}

}  // namespace

double GxBezier::length(int count, double startT) const {
  return crv::internal::chordSum(crv::internal::cubic(*this), count, startT);
}

double GxBezier::length(double startT) const {
  return crv::internal::measuredLength(crv::internal::cubic(*this), startT).length;
}

double GxBezier::splitAtFixedLengthAfter(double distance, int steps, double& lo, double& hi,
                                         double anchorT) const {
  Bracket bracket{lo, hi, true};
  double const t =
      splitAtFixedLength(crv::internal::cubic(*this), distance, steps, bracket, anchorT);
  lo = bracket.nearEnd;
  hi = bracket.farEnd;
  return t;
}

double GxBezier::splitAtFixedLengthBefore(double distance, int steps, double& lo, double& hi,
                                          double anchorT) const {
  Bracket bracket{hi, lo, false};
  double const t =
      splitAtFixedLength(crv::internal::cubic(*this), distance, steps, bracket, anchorT);
  lo = bracket.farEnd;
  hi = bracket.nearEnd;
  return t;
}
