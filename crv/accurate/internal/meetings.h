// The meetings of two cubic segments, from which all contacts are made.
#pragma once

#include "crv/accurate/internal/shortList.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <vector>

namespace crv::internal {

/// A point where two segments meet, at t of the first and u of the second.
struct Meeting {
  double t, u;
  bool crosses;  // both parameters lie inside, and each segment changes the other's side
};

/// A stretch that two segments share: t0 < t1; u0 > u1 if they run in opposite directions.
struct SharedStretch {
  double t0, t1, u0, u1;
};

struct Meetings {
  ShortList<Meeting, 9> points;          // ascending in t, then in u
  std::vector<SharedStretch> stretches;  // ascending in t0
};

// Relative to the largest coordinate: longer connected sets are shared stretches, shorter ones are
// single points. Two touching circles are within the default resolution over a length of 2^-19.
constexpr double kLongStretch = 0x1p-16;

/// The length above which a connected set counts as a shared stretch; it is several times the
/// resolution in any case.
inline double leastStretch(double magnitude, double resolution) {
  return max(kLongStretch * magnitude, 4.0 * resolution);
}

/// The shared stretches to be reported: only those longer than 2^-16 S; or also shorter ones
/// between ends of the segments, which may be parts of a stretch that two curves share; or also
/// long ones in which the segments meet at one point only, unless that point is an end and they are
/// no longer than 2^-14 S.
enum class Stretches { onlyLong, all, evenMet };

/// Finds all meetings of two segments whose coordinates have a magnitude S of at most 1. Each
/// connected set of pairs (t, u) with |A(t) - B(u)| <= resolution gives one meeting. A set longer
/// than 2^-16 S is a shared stretch, unless the segments move apart at one of its ends and meet at
/// only one point of it.
/// Method: pairs of parts are halved until both turn little and are graphs over one axis; then
/// differences of control points bound the difference of the graphs, similarly to fat lines (T. W.
/// Sederberg and T. Nishita, "Curve intersection using Bezier clipping", 1990). Newton's method in
/// both parameters finds the crossings.
void findMeetings(Cubic const& a, Cubic const& b, double magnitude, double resolution,
                  Stretches told, Meetings& found);

/// The meetings of a segment with itself, t before u: the double point of a loop, or the stretches
/// that a segment shares with itself where it turns back, long or short. A loop may be as small as
/// rounding. If the segment is not quite straight, stretches are told as between two segments.
void findOwnMeetings(Cubic const& c, double magnitude, double resolution, Stretches told,
                     Meetings& found);

}  // namespace crv::internal
