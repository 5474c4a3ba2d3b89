// Contacts of two segments.
#include "crv/accurate/contacts.h"

#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/unitScale.h"

namespace crv {

SegmentContacts contacts(Segment const& a, Segment const& b, double resolution) {
  using namespace internal;
  SegmentContacts result;
  Cubic const givenA = cubic(a), givenB = cubic(b);
  Magnitude magnitude;
  magnitude.add(givenA);
  magnitude.add(givenB);
  if (!isUsable(magnitude.value())) return result;
  UnitScale const scale(magnitude.value(), resolution);
  Meetings found;
  findMeetings(scale.scaled(givenA), scale.scaled(givenB), scale.magnitude, scale.resolution,
               Stretches::onlyLong, found);
  result.points.reserve(found.points.size());
  for (Meeting const& m : found.points) {
    bool const isEndA = m.t == 0.0 || m.t == 1.0, isEndB = m.u == 0.0 || m.u == 1.0;
    ContactKind const kind = isEndA || isEndB ? ContactKind::end
                             : m.crosses      ? ContactKind::crossing
                                              : ContactKind::touching;
    result.points.push_back({m.t, m.u, placeOf(givenA, m.t, givenB, m.u), kind});
  }
  for (SharedStretch const& s : found.stretches) {
    result.overlaps.push_back({s.t0, s.t1, s.u0, s.u1});
  }
  return result;
}

}  // namespace crv
