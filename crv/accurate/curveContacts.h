// The contacts of two curves, of a curve with itself, and of a curve with a line segment.
//
// What is one contact, what is an overlap, and how exact they are, is told in contacts.h. On
// curves, joints and the seam are places like any other: a contact there is reported once, as a
// crossing or a touching by the sides on which the branches leave, and overlaps run on over them.
//
// Resolutions are read as in contacts.h. Input that is not finite, or of a magnitude beyond 2^500
// or below 2^-500, and empty curves give no contacts.
#pragma once

#include "crv/accurate/contacts.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// A place where two curves meet, or one meets itself. The kind is end at an end of an open curve.
struct CurveContact {
  Position first, second;
  Point point;
  ContactKind kind;
};

/// A stretch that two curves share, or two stretches of one curve: from `from` forwards to `to` on
/// the first, over the seam where `from` is behind `to`; on the second from `otherFrom` to
/// `otherTo`, backwards unless sameSense. It is as long as can be. The end of a closed curve of n
/// segments is (n, 0.0) here and its start (0, 0.0); two equal closed curves share (0, 0.0) to (n,
/// 0.0).
struct CurveOverlap {
  Position from, to, otherFrom, otherTo;
  bool sameSense;
};

/// All contacts of two curves, or of one with itself.
struct CurveContacts {
  std::vector<CurveContact> points;    // ascending in first, then in second
  std::vector<CurveOverlap> overlaps;  // ascending in from
};

/// All contacts of two curves. For curves of n segments whose boxes overlap a few others each, the
/// time grows as n log n plus the number of contacts.
[[nodiscard]] CRV_API CurveContacts contacts(Curve const& a, Curve const& b,
                                             double resolution = 0.0);

/// All contacts of a curve with itself, first before second. Joints, the seam, cusps, and loops
/// that stay within the resolution are none. Ends of an open curve that meet are a contact of kind
/// end. A segment or a curve that runs back on itself overlaps itself against its own sense.
[[nodiscard]] CRV_API CurveContacts selfContacts(Curve const& curve, double resolution = 0.0);

/// A place where a curve meets a line segment from a to b, along being 0 at a and 1 at b.
struct LineContact {
  Position position;
  double along;
  Point point;
  ContactKind kind;  // end: at an end of an open curve, or at a or b
};

/// All contacts of a curve with the line segment from a to b, ascending along it. Where the line
/// lies on the curve, the two ends of the stretch are told, as touching.
[[nodiscard]] CRV_API std::vector<LineContact> contacts(Curve const& curve, Point const& a,
                                                        Point const& b, double resolution = 0.0);

}  // namespace crv
