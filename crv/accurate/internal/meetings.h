// Where two cubic segments come together: the search beneath all contacts.
#pragma once

#include "crv/accurate/internal/shortList.h"
#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// One place where two segments meet, at t of the first and u of the second.
struct Meeting {
  double t, u;
  bool crosses;  // both parameters lie inside, and each segment changes the other's side
};

/// A stretch that two segments share: t0 < t1; u0 > u1 where they run against each other.
struct SharedStretch {
  double t0, t1, u0, u1;
};

struct Meetings {
  ShortList<Meeting, 9> points;          // ascending in t, then in u
  std::vector<SharedStretch> stretches;  // ascending in t0
};

// Relative to the largest coordinate: stretches longer than this are shared, shorter ones are
// single places. Two circles that touch are within the default resolution for 2^-19.
constexpr double kLongStretch = 0x1p-16;

/// Which shared stretches are told: only those longer than 2^-16 S; or also shorter ones that the
/// ends of the segments bound, as parts of what two curves may share; or besides these also long
/// ones in which the segments meet in one place only, unless that is an end and they are no longer
/// than 2^-14 S.
enum class Stretches { onlyLong, all, evenMet };

/// All meetings of two segments whose coordinates have a magnitude S of at most 1, places nearer
/// than the resolution being one place. Two segments meet once for each connected set of pairs
/// (t, u) with |A(t) - B(u)| <= resolution. A set longer than 2^-16 S is a shared stretch, unless
/// the segments move apart at an end of it and meet in one place of it only.
/// Method: pairs of parts are halved until both turn little; then both are graphs over one axis,
/// and the difference of the graphs is bounded by differences of control points, as fat lines do
/// (T. W. Sederberg and T. Nishita, "Curve intersection using Bezier clipping", 1990); Newton's
/// method on both parameters ends it.
void findMeetings(Cubic const& a, Cubic const& b, double magnitude, double resolution,
                  Stretches told, Meetings& found);

/// The meetings of a segment with itself, t before u: the double point of a loop, or the stretches
/// that a straight segment shares with itself where it turns back, long or short. A loop may be as
/// small as rounding.
void findOwnMeetings(Cubic const& c, double magnitude, double resolution, Meetings& found);

}  // namespace crv::internal
