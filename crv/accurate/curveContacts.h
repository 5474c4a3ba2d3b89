// The contacts of two curves, of a curve with itself, and of a curve with a line segment.
//
// contacts.h defines contacts and overlaps and states how exact they are. On curves, joints and the
// seam are treated like any other point: a contact there is reported once, the sides on which the
// branches leave decide whether it is a crossing or a touching, and overlaps continue across them.
//
// As with nearest, the end of a segment before a gap of more than 16 u S is at 1 - 2^-53, because
// the next segment starts behind it. A gap within the resolution is one place with one contact, at
// the nearer of its two sides.
//
// Resolutions mean the same as in contacts.h. Input that is not finite, or of a magnitude beyond
// 2^500 or below 2^-500, and empty curves give no contacts.
#pragma once

#include "crv/accurate/contacts.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// A point where two curves meet, or where one meets itself. The kind is end at an end of an open
/// curve.
struct CurveContact {
  Position first, second;
  Point point;
  ContactKind kind;
};

/// The longest stretch that two curves share around a point, or two coinciding stretches of one
/// curve. On the first curve it runs forwards from `from` to `to`, across the seam if `from` lies
/// behind `to`; on the second one it runs from `otherFrom` to `otherTo`, backwards unless
/// sameSense. It covers no point of either curve twice: if one curve runs along the other for more
/// than a lap, the stretch is reported in parts that end at joints. Here only, the seam of a closed
/// curve of n segments is (n, 0.0) at the end of a stretch and (0, 0.0) at its start, so two equal
/// closed curves share (0, 0.0) to (n, 0.0).
struct CurveOverlap {
  Position from, to, otherFrom, otherTo;
  bool sameSense;
};

/// All contacts of two curves, or of one with itself.
struct CurveContacts {
  std::vector<CurveContact> points;    // ascending in first, then in second
  std::vector<CurveOverlap> overlaps;  // ascending in from
};

/// All contacts of two curves. If the box of each of the n segments overlaps only a few others, the
/// time grows as n log n plus the number of contacts.
[[nodiscard]] CRV_API CurveContacts contacts(Curve const& a, Curve const& b,
                                             double resolution = 0.0);

/// All contacts of a curve with itself, where first comes before second. Joints, the seam, cusps,
/// and loops that stay within the resolution are not contacts. If the ends of an open curve meet,
/// they are a contact of kind end. A segment or a curve that runs back on itself has an overlap
/// with sameSense false.
[[nodiscard]] CRV_API CurveContacts selfContacts(Curve const& curve, double resolution = 0.0);

/// A point where a curve meets the line segment from a to b. along is 0 at a and 1 at b.
struct LineContact {
  Position position;
  double along;
  Point point;
  ContactKind kind;  // end: at an end of an open curve, or at a or b
};

/// All contacts of a curve with the line segment from a to b, in ascending order along it. A
/// stretch of the line that lies on the curve is reported as two contacts of kind touching, at its
/// ends. Where the curve turns back on the line, the two stretches that meet there share a contact.
[[nodiscard]] CRV_API std::vector<LineContact> contacts(Curve const& curve, Point const& a,
                                                        Point const& b, double resolution = 0.0);

}  // namespace crv
