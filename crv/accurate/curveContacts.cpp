// Contacts of curves, as positions.
#include "crv/accurate/curveContacts.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/lineContacts.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/curve/internal/boxTree.h"
#include "crv/foundation/internal/introsort.h"

#include <cstddef>
#include <utility>
#include <vector>

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

/// The position of a place at which a curve meets another. Of the two sides of a gap within the
/// resolution it is the nearer one.
Position positionNear(Route const& route, Place const& place, Route const& other,
                      Place const& otherPlace, double magnitude) {
  Chain const& chain = route.chain();
  bool const hasBefore = place.t == 0.0 && (place.segment > 0 || chain.closed);
  std::size_t const before = place.segment > 0 ? place.segment - 1 : chain.size() - 1;
  if (hasBefore && chain.hasGapBehind(before, magnitude) && !route.isGapBehind(before)) {
    internal::Point const point = other.at(otherPlace);
    bool const isNearerBefore =
        squaredDistance(route.at({before, 1.0}), point) < squaredDistance(route.at(place), point);
    if (isNearerBefore) return chain.positionOn(before, 1.0, magnitude);
  }
  return chain.positionOn(place.segment, place.t, magnitude);
}

/// The position of an end of a stretch: a whole t is carried to the next segment, also at the end
/// of a closed curve, but not over a gap.
Position endOf(Chain const& chain, Place const& p, double magnitude) {
  bool const isBeforeGap = p.t == 1.0 && chain.hasGapBehind(p.segment, magnitude);
  return Position(static_cast<int>(p.segment), isBeforeGap ? 1.0 - internal::kRounding : p.t);
}

/// Puts contacts in order: the nearer side of a gap may be before the other.
void sort(std::vector<CurveContact>& points) {
  internal::introsort(points, [](CurveContact const& c, CurveContact const& d) {
    return c.first != d.first ? c.first < d.first : c.second < d.second;
  });
}

CurveContacts contactsOf(Chain const& a, Chain const& b, ChainMeetings const& found,
                         UnitScale const& scale) {
  CurveContacts result;
  result.points.reserve(found.points.size());
  double const magnitude = scale.magnitude / scale.factor;
  Route const routeA(a, scale), routeB(b, scale);
  for (ChainMeeting const& m : found.points) {
    result.points.push_back({positionNear(routeA, m.first, routeB, m.second, magnitude),
                             positionNear(routeB, m.second, routeA, m.first, magnitude),
                             pointOf(a, b, m), kindOf(a, b, m)});
  }
  sort(result.points);
  for (ChainStretch const& s : found.stretches) {
    result.overlaps.push_back({endOf(a, s.from, magnitude), endOf(a, s.to, magnitude),
                               endOf(b, s.otherFrom, magnitude), endOf(b, s.otherTo, magnitude),
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
  CurveContacts result =
      contactsOf(chain, chain,
                 internal::findSelfMeetings(chain, internal::boxTree(chain, margin),
                                            internal::boxTree(chain, 0.0), scale),
                 scale);
  for (CurveContact& c : result.points) {
    if (c.second < c.first) std::swap(c.first, c.second);
  }
  sort(result.points);
  return result;
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
  Route const route(chain, scale), along(line, scale);
  auto const positionOf = [&](ChainMeeting const& m) {
    return positionNear(route, route.normalised(m.first), along, m.second, magnitude.value());
  };
  auto const add = [&](ChainMeeting const& m, ContactKind kind) {
    result.push_back({positionOf(m), m.second.t, pointOf(chain, line, m), kind});
  };
  for (ChainMeeting const& m : found.points) add(m, kindOf(chain, line, m));
  std::size_t const n = found.stretches.size();
  for (std::size_t i = 0; i < n; ++i) {
    ChainStretch const& s = found.stretches[i];
    ChainStretch const& before = found.stretches[(i > 0 ? i : n) - 1];
    ChainMeeting const from = {s.from, s.otherFrom, false}, to = {s.to, s.otherTo, false};
    ChainMeeting const endBefore = {before.to, before.otherTo, false};
    // Where the curve turns back, a stretch starts at the end of the one before.
    if (positionOf(from) != positionOf(endBefore)) add(from, ContactKind::touching);
    add(to, ContactKind::touching);
  }
  internal::introsort(result, [](LineContact const& c, LineContact const& d) {
    return c.along != d.along ? c.along < d.along : c.position < d.position;
  });
  return result;
}

}  // namespace crv
