// The contacts of two segments: where they cross, touch or end on each other, and what they share.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// How two curves meet at a contact. An end is a contact at an end of a segment, or of an open
/// curve; elsewhere they cross if each changes the other's side, else they touch.
enum class ContactKind { crossing, touching, end };

/// The first segment at t meets the second at u.
struct SegmentContact {
  double t, u;
  Point point;
  ContactKind kind;
};

/// A stretch that two segments share, from t0 to t1 of the first and from u0 to u1 of the second:
/// t0 < t1, and u0 > u1 where they run against each other.
struct SegmentOverlap {
  double t0, t1, u0, u1;
};

/// All contacts of two segments.
struct SegmentContacts {
  std::vector<SegmentContact> points;    // ascending in t, then in u
  std::vector<SegmentOverlap> overlaps;  // ascending in t0
};

/// All contacts of two segments, each once. Places nearer to each other than the resolution are one
/// place; 0, anything below and NaN stand for 2^-40 S, and no resolution is taken as less than
/// 2^-46 S or more than S.
///
/// Two segments have one contact for each connected set of pairs (t, u) with |A(t) - B(u)| within
/// the resolution, even where they cross twice in it. A set longer than 2^-16 S (and four times the
/// resolution) is an overlap, unless the segments move apart at one of its ends at least and
/// change sides only once in it, or touch in one place: such a set is the one contact that a
/// crossing at a small angle or of high order has. Where a set holds an end of a segment that lies
/// on the other to 2^-48 S, or is nearer to the contact than the resolution, the contact is at that
/// end. No contact is reported at the ends of an overlap, nor in it, but where the shared stretch
/// crosses itself: there each passes the other's place at another parameter.
///
/// A crossing is exact to rounding across both segments: they are within 64 u S of each other
/// there. The point is an end's control point where the kind is end, else the middle between both.
///
/// Stretches of one cubic, with parameters in proportion, are recognised by their ends and control
/// points, and share all between these ends.
///
/// A segment that is a point has its contacts at t = 0. Segments that are straight within the
/// resolution are cut where they turn back: each of their runs overlaps for itself.
/// Input that is not finite, or of a magnitude beyond 2^500 or below 2^-500, gives no contacts.
/// At most 2^15 pairs of parts are looked at, a hundred times what nine crossings need; beyond
/// that, contacts may be missing.
/// Method: see internal/meetings.h.
[[nodiscard]] CRV_API SegmentContacts contacts(Segment const& a, Segment const& b,
                                               double resolution = 0.0);

}  // namespace crv
