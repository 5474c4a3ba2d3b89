// Contacts of curves, as positions.
#include "crv/accurate/curveContacts.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/lineContacts.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cstddef>

namespace crv {

namespace {

using internal::Chain;
using internal::ChainMeeting;
using internal::ChainMeetings;
using internal::ChainStretch;
using internal::Place;
using internal::Route;
using internal::UnitScale;

bool isEndOf(Chain const& chain, Place const& p) {
  if (chain.closed) return false;
  return (p.segment == 0 && p.t == 0.0) || (p.segment + 1 == chain.size() && p.t == 1.0);
}

ContactKind kindOf(Chain const& a, Chain const& b, ChainMeeting const& m) {
  if (isEndOf(a, m.first) || isEndOf(b, m.second)) return ContactKind::end;
  return m.crosses ? ContactKind::crossing : ContactKind::touching;
}

Point pointOf(Chain const& a, Chain const& b, ChainMeeting const& m) {
  return placeOf(a.segments[m.first.segment], m.first.t, b.segments[m.second.segment], m.second.t);
}

/// The position of an end of a stretch: a whole t is carried to the next segment, also at the end
/// of a closed curve, but not over a gap.
Position endOf(Chain const& chain, Place const& p, UnitScale const& scale) {
  bool const isBeforeGap =
      p.t == 1.0 && p.segment + 1 < chain.size() && Route(chain, scale).isGapBehind(p.segment);
  return Position(static_cast<int>(p.segment), isBeforeGap ? 1.0 - internal::kRounding : p.t);
}

CurveContacts contactsOf(Chain const& a, Chain const& b, ChainMeetings const& found,
                         UnitScale const& scale) {
  CurveContacts result;
  result.points.reserve(found.points.size());
  for (ChainMeeting const& m : found.points) {
    result.points.push_back({a.positionOf(m.first.segment, m.first.t),
                             b.positionOf(m.second.segment, m.second.t), pointOf(a, b, m),
                             kindOf(a, b, m)});
  }
  for (ChainStretch const& s : found.stretches) {
    result.overlaps.push_back({endOf(a, s.from, scale), endOf(a, s.to, scale),
                               endOf(b, s.otherFrom, scale), endOf(b, s.otherTo, scale),
                               s.sameSense});
  }
  return result;
}

}  // namespace

CurveContacts contacts(Curve const& a, Curve const& b, double resolution) {
  Chain const chainA(a), chainB(b);
  double const magnitude = max(chainA.magnitude(), chainB.magnitude());
  bool const isFinite = chainA.magnitude() - chainB.magnitude() <= magnitude;
  if (!isFinite || !internal::isUsable(magnitude) || chainA.size() == 0 || chainB.size() == 0) {
    return {};
  }
  UnitScale const scale(magnitude, resolution);
  double const margin = scale.resolution / scale.factor;
  return contactsOf(chainA, chainB,
                    internal::findMeetings(chainA, internal::boxTree(chainA, margin), chainB,
                                           internal::boxTree(chainB, 0.0), scale),
                    scale);
}

CurveContacts selfContacts(Curve const& curve, double resolution) {
  Chain const chain(curve);
  double const magnitude = chain.magnitude();
  if (!internal::isUsable(magnitude) || chain.size() == 0) return {};
  UnitScale const scale(magnitude, resolution);
  double const margin = scale.resolution / scale.factor;
  return contactsOf(chain, chain,
                    internal::findSelfMeetings(chain, internal::boxTree(chain, margin),
                                               internal::boxTree(chain, 0.0), scale),
                    scale);
}

std::vector<LineContact> contacts(Curve const& curve, Point const& a, Point const& b,
                                  double resolution) {
  Chain const chain(curve);
  return internal::lineContacts(chain, internal::boxTree(chain, 0.0), chain.magnitude(), a, b,
                                resolution);
}

std::vector<LineContact> internal::lineContacts(Chain const& chain, BoxTree const& tree,
                                                double chainMagnitude, crv::Point const& a,
                                                crv::Point const& b, double resolution) {
  std::vector<LineContact> result;
  Magnitude magnitude;
  magnitude.add(chainMagnitude);
  magnitude.add(plain(a));
  magnitude.add(plain(b));
  if (!isUsable(magnitude.value()) || chain.size() == 0) return result;
  UnitScale const scale(magnitude.value(), resolution);
  Chain line;
  line.segments.push_back(straight(plain(a), plain(b)));
  ChainMeetings const found = findLineMeetings(chain, tree, line, scale);
  for (ChainMeeting const& m : found.points) {
    result.push_back({chain.positionOf(m.first.segment, m.first.t), m.second.t,
                      pointOf(chain, line, m), kindOf(chain, line, m)});
  }
  for (ChainStretch const& s : found.stretches) {
    for (ChainMeeting const& end :
         {ChainMeeting{s.from, s.otherFrom, false}, ChainMeeting{s.to, s.otherTo, false}}) {
      Place const place = Route(chain, scale).normalised(end.first);
      result.push_back({chain.positionOf(place.segment, place.t), end.second.t,
                        pointOf(chain, line, end), ContactKind::touching});
    }
  }
  std::sort(result.begin(), result.end(), [](LineContact const& c, LineContact const& d) {
    return c.along != d.along ? c.along < d.along : c.position < d.position;
  });
  return result;
}

}  // namespace crv
