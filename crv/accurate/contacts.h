// The contacts of two segments: the points where they cross, touch or end on each other, and the
// stretches that they share.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// The kind of a contact: end at an end of a segment or of an open curve. Elsewhere it is crossing
/// if each curve passes to the other side of the other one, else touching.
enum class ContactKind { crossing, touching, end };

/// A contact of the first segment at t with the second one at u.
struct SegmentContact {
  double t, u;
  Point point;
  ContactKind kind;
};

/// A stretch that two segments share, from t0 to t1 of the first and from u0 to u1 of the second.
/// t0 < t1; u0 > u1 if the segments run in opposite directions.
struct SegmentOverlap {
  double t0, t1, u0, u1;
};

/// All contacts of two segments.
struct SegmentContacts {
  std::vector<SegmentContact> points;    // ascending in t, then in u
  std::vector<SegmentOverlap> overlaps;  // ascending in t0
};

/// All contacts of two segments, each once. Points nearer to each other than the resolution, in
/// curve units, count as one point. A resolution of 0, a negative one or NaN means 2^-40 S; other
/// values are clamped to 2^-46 S .. S.
///
/// Each connected set of pairs (t, u) with |A(t) - B(u)| within the resolution gives one result,
/// even if the segments cross twice in it. A set longer than 2^-16 S and than four times the
/// resolution is an overlap, with one exception: if the segments move apart at one end of the set
/// at least, and inside it either change sides exactly once or only touch in one point, the set is
/// one contact, as at crossings at a small angle or of high order. The contact lies at an end of a
/// segment if the set contains an end that lies on the other segment to 2^-48 S, or an end nearer
/// to the contact than the resolution. No contacts are reported at the ends of an overlap or inside
/// it, except where the shared stretch crosses itself in a loop wider than the resolution, because
/// there each segment passes the same point at another parameter.
///
/// At a crossing both segments lie within 64 u S of each other. The point of a contact is the
/// control point of the end if the kind is end, else the midpoint of the two segments' points.
///
/// Two segments that are stretches of one cubic, with proportional parameters, are recognised by
/// their ends and control points; their overlap reaches from end to end.
///
/// A segment that is a point has its contacts at t = 0. A segment that is straight within the
/// resolution is cut where it turns back, and each of its runs has overlaps of its own. Input that
/// is not finite, or of a magnitude beyond 2^500 or below 2^-500, gives no contacts. The search
/// examines at most 2^15 pairs of parts, a hundred times as many as nine crossings need; after
/// that, contacts may be missing.
/// Method: see internal/meetings.h.
[[nodiscard]] CRV_API SegmentContacts contacts(Segment const& a, Segment const& b,
                                               double resolution = 0.0);

}  // namespace crv
