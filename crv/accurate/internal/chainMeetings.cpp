// Meetings of curves: they are found for pairs of segments; then meetings at one point are merged
// and stretches are chained.
#include "crv/accurate/internal/chainMeetings.h"

#include "crv/accurate/internal/meetingPlaces.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/parting.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace crv::internal {

namespace {

// In units of the resolution: a place this near to an end of a stretch belongs to the stretch.
constexpr double kEndReach = 2.0;

// In units of the resolution: stretches whose ends are this near to each other are joined. Between
// them may lie a shared part that is up to four resolutions long, too short to be a stretch itself.
constexpr double kJoinReach = 4.25;

/// A stretch that one segment of each curve shares.
struct Link {
  Place from, to, otherFrom, otherTo;
  bool isSameSense() const { return otherFrom.t < otherTo.t; }
};

class Assembly {
 public:
  Assembly(Chain const& a, Chain const& b, bool isSelf, UnitScale const& scale)
      : a_(a, scale), b_(b, scale), places_(a_, b_, scale), isSelf_(isSelf), scale_(scale) {}

  void addPair(std::size_t i, std::size_t k);
  bool partAtJoint(std::size_t i, std::size_t k) const;
  void addOwn(std::size_t i);
  ChainMeetings assemble();

 private:
  void add(Meetings const& found, std::size_t i, std::size_t k);
  void addPoint(Place const& first, Place const& second, bool crosses);
  ChainMeetings chainedLinks();
  std::size_t linkBehind(Link const& link) const;
  bool areJoined(Link const& link, Link const& next) const;
  bool comesAround(Link const& head, Link const& link) const;
  double lengthOf(Link const& link) const;
  bool isPartner(ChainMeeting const& m, Link const& link) const;
  bool isInLink(ChainMeeting const& m, Link const& link) const;
  bool isInLinks(ChainMeeting const& m) const;
  bool isOn(Route const& route, Place const& place, Place const& from, Place const& to) const;
  void judgeKinds();

  Route const a_, b_;
  MeetingPlaces const places_;
  bool const isSelf_;
  UnitScale const& scale_;
  std::vector<ChainMeeting> points_;
  std::vector<Link> links_;  // ascending in the segment of the first curve
};

void Assembly::addPoint(Place const& first, Place const& second, bool crosses) {
  Place p = a_.normalised(first), q = b_.normalised(second);
  // The start of the segment after a joint may differ from the end before it by up to the
  // resolution.
  if (distance(a_.at(p), b_.at(q)) > kPlaceSlack * scale_.resolution) {
    p = a_.keptOnSegment(first);
    q = b_.keptOnSegment(second);
  }
  if (isSelf_ && isBefore(q, p)) std::swap(p, q);
  if (isSelf_ && areEqual(p, q)) return;
  points_.push_back({p, q, crosses});
}

void Assembly::add(Meetings const& found, std::size_t i, std::size_t k) {
  for (Meeting const& m : found.points) addPoint({i, m.t}, {k, m.u}, m.crosses);
  for (SharedStretch const& s : found.stretches) {
    links_.push_back({{i, s.t0}, {i, s.t1}, {k, s.u0}, {k, s.u1}});
  }
}

void Assembly::addPair(std::size_t i, std::size_t k) {
  Meetings found;
  findMeetings(a_[i], b_[k], scale_.magnitude, scale_.resolution, Stretches::all, found);
  add(found, i, k);
}

/// Whether two segments of one curve meet at their common joint only.
bool Assembly::partAtJoint(std::size_t i, std::size_t k) const {
  auto const part = [this](std::size_t first, std::size_t second) {
    if (!areEqual(a_.normalised({first, 1.0}), {second, 0.0})) return false;
    Cubic const& before = a_.chain().segments[first];
    Cubic const& behind = a_.chain().segments[second];
    bool const isJoined = squaredDistance(before.end(), behind.start()) == 0.0;
    return isJoined && partAtStart(reversed(before), behind, scale_.resolution / scale_.factor);
  };
  return part(i, k) || part(k, i);
}

void Assembly::addOwn(std::size_t i) {
  Meetings found;
  findOwnMeetings(a_[i], scale_.magnitude, scale_.resolution, Stretches::all, found);
  add(found, i, i);
}

double Assembly::lengthOf(Link const& link) const {
  Cubic const c = a_[link.from.segment];
  double length = 0.0;
  for (int i = 0; i < 4; ++i) {
    double const step = 0.25 * (link.to.t - link.from.t);
    length +=
        distance(pointAt(c, link.from.t + step * i), pointAt(c, link.from.t + step * (i + 1)));
  }
  return length;
}

bool Assembly::areJoined(Link const& link, Link const& next) const {
  if (link.isSameSense() != next.isSameSense()) return false;
  double const reach = kJoinReach * scale_.resolution;
  Place const end = a_.normalised(link.to), start = a_.normalised(next.from);
  Place const otherEnd = b_.normalised(link.otherTo), otherStart = b_.normalised(next.otherFrom);
  return a_.staysNear(a_.at(end), reach, end, start) &&
         b_.staysNear(b_.at(otherEnd), reach, otherEnd, otherStart);
}

/// The number of the link that continues one; the number of links if there is none.
std::size_t Assembly::linkBehind(Link const& link) const {
  auto const onSegment = [](Link const& l, std::size_t segment) {
    return l.from.segment < segment;
  };
  std::size_t const here = a_.skipPoints(a_.normalised(link.to).segment, true);
  std::size_t const behind = a_.skipPoints(a_.next(link.to.segment), true);
  for (std::size_t const segment : {here, behind}) {
    auto next = std::lower_bound(links_.begin(), links_.end(), segment, onSegment);
    for (; next != links_.end() && next->from.segment == segment; ++next) {
      if (&*next != &link && areJoined(link, *next)) return std::size_t(next - links_.begin());
    }
  }
  return links_.size();
}

/// Whether a link would cover a place of either curve that the stretch from another on has covered.
bool Assembly::comesAround(Link const& head, Link const& link) const {
  auto const passes = [this](Route const& route, Place const& start, Place const& from,
                             Place const& to, double sense) {
    if (start.segment != from.segment) return false;
    double const reach = kEndReach * scale_.resolution;
    auto const isAtStart = [&](Place const& place) {
      return route.staysNear(route.at(start), reach, start, place);
    };
    bool const isBehind = (from.t - start.t) * sense <= 0.0 || isAtStart(from);
    return isBehind && (to.t - start.t) * sense > 0.0 && !isAtStart(to);
  };
  return passes(a_, head.from, link.from, link.to, 1.0) ||
         passes(b_, head.otherFrom, link.otherFrom, link.otherTo, link.isSameSense() ? 1.0 : -1.0);
}

/// Chains links to the longest possible stretches, none of which is longer than a lap of either
/// curve. The ends of chains too short to be a stretch become points.
ChainMeetings Assembly::chainedLinks() {
  std::size_t const n = links_.size();
  std::vector<std::size_t> next(n);
  std::vector<char> hasPrevious(n + 1, 0), isDone(n + 1, 0);
  for (std::size_t i = 0; i < n; ++i) {
    next[i] = linkBehind(links_[i]);
    if (hasPrevious[next[i]]) next[i] = n;
    hasPrevious[next[i]] = 1;
  }
  ChainMeetings result;
  isDone[n] = 1;
  std::vector<char> isShort(n, 0);
  auto const add = [&](std::size_t first, std::size_t last, double length) {
    Link const &head = links_[first], &tail = links_[last];
    if (length > leastStretch(scale_.magnitude, scale_.resolution)) {
      result.stretches.push_back(
          {head.from, tail.to, head.otherFrom, tail.otherTo, head.isSameSense()});
      return;
    }
    addPoint(head.from, head.otherFrom, false);
    addPoint(tail.to, tail.otherTo, false);
    for (std::size_t i = first; i != last; i = next[i]) isShort[i] = 1;
    isShort[last] = 1;
  };
  auto const follow = [&](std::size_t start) {
    std::size_t head = start, last = start;
    double length = 0.0;
    for (std::size_t i = start; !isDone[i]; i = next[i]) {
      isDone[i] = 1;
      if (i != head && comesAround(links_[head], links_[i])) {
        add(head, last, length);
        head = i;
        length = 0.0;
      }
      last = i;
      length += lengthOf(links_[i]);
    }
    add(head, last, length);
  };
  for (std::size_t i = 0; i < n; ++i) {
    if (!hasPrevious[i]) follow(i);
  }
  // The remaining chains are cycles. Links are in order, so each cycle starts at its lowest place.
  for (std::size_t i = 0; i < n; ++i) {
    if (!isDone[i]) follow(i);
  }
  // Short links of a curve with itself are the sides of a tip, which is no contact: they are kept,
  // so that they cover their points.
  if (isSelf_) return result;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (!isShort[i]) links_[kept++] = links_[i];
  }
  links_.erase(links_.begin() + std::ptrdiff_t(kept), links_.end());
  return result;
}

bool Assembly::isOn(Route const& route, Place const& place, Place const& from,
                    Place const& to) const {
  double const lo = min(from.t, to.t), hi = max(from.t, to.t);
  if (place.segment == from.segment && place.t >= lo && place.t <= hi) return true;
  Point const centre = route.at(place);
  double const reach = kEndReach * scale_.resolution;
  return route.staysNear(centre, reach, place, route.normalised(from)) ||
         route.staysNear(centre, reach, place, route.normalised(to));
}

/// Whether, at a meeting, the place on the second curve is the one that the link pairs with the
/// place on the first, rather than another one at which the second curve passes the same point
/// again.
bool Assembly::isPartner(ChainMeeting const& m, Link const& l) const {
  if (m.first.segment != l.from.segment || m.first.t < l.from.t || m.first.t > l.to.t) return false;
  double const share = (m.first.t - l.from.t) / (l.to.t - l.from.t);
  double const guess = l.otherFrom.t + (l.otherTo.t - l.otherFrom.t) * share;
  std::size_t const segment = l.otherFrom.segment;
  Point const place = a_.at(m.first);
  Place const partner = b_.normalised({segment, footOn(b_[segment], place, guess)});
  bool const isFound = distance(b_.at(partner), place) <= kEndReach * scale_.resolution;
  return !isFound || places_.areOne(m, {m.first, partner, false});
}

bool Assembly::isInLink(ChainMeeting const& m, Link const& l) const {
  bool const isOnBoth =
      isOn(a_, m.first, l.from, l.to) && isOn(b_, m.second, l.otherFrom, l.otherTo);
  if (isOnBoth && isPartner(m, l)) return true;
  ChainMeeting const ends[] = {{a_.normalised(l.from), b_.normalised(l.otherFrom), false},
                               {a_.normalised(l.to), b_.normalised(l.otherTo), false}};
  return places_.areOne(m, ends[0]) || places_.areOne(m, ends[1]);
}

/// Whether a meeting lies in a stretch, or is at one point with an end of it.
bool Assembly::isInLinks(ChainMeeting const& m) const {
  std::size_t const middle = m.first.segment;
  std::size_t const segments[] = {a_.skipPoints(a_.previous(middle), false), middle,
                                  a_.skipPoints(a_.next(middle), true)};
  auto const onSegment = [](Link const& l, std::size_t segment) {
    return l.from.segment < segment;
  };
  for (std::size_t const segment : segments) {
    auto link = std::lower_bound(links_.begin(), links_.end(), segment, onSegment);
    for (; link != links_.end() && link->from.segment == segment; ++link) {
      if (isInLink(m, *link)) return true;
    }
  }
  return false;
}

/// Decides at joints, where the segments alone do not, whether the curves cross.
void Assembly::judgeKinds() {
  for (ChainMeeting& m : points_) {
    if (!a_.isJoint(m.first) && !b_.isJoint(m.second)) continue;
    bool const isEnd = a_.isEnd(m.first) || b_.isEnd(m.second);
    m.crosses = !isEnd && routesCross(a_, m.first, b_, m.second, scale_.resolution);
  }
}

ChainMeetings Assembly::assemble() {
  introsort(links_, [](Link const& l, Link const& m) {
    return areEqual(l.from, m.from) ? isBefore(l.otherFrom, m.otherFrom) : isBefore(l.from, m.from);
  });
  ChainMeetings result = chainedLinks();
  points_ = places_.merged(std::move(points_));
  // Two places between which the curve does not leave their point are no contact of the curve with
  // itself.
  double const reach = kPlaceSlack * scale_.resolution;
  auto const isNone = [&](ChainMeeting const& m) {
    if (isSelf_ && a_.staysNear(a_.at(m.first), reach, m.first, m.second)) return true;
    return isInLinks(m) || (isSelf_ && isInLinks({m.second, m.first, false}));
  };
  points_.erase(std::remove_if(points_.begin(), points_.end(), isNone), points_.end());
  judgeKinds();
  result.points = std::move(points_);
  introsort(result.stretches, [](ChainStretch const& s, ChainStretch const& w) {
    return areEqual(s.from, w.from) ? isBefore(s.otherFrom, w.otherFrom) : isBefore(s.from, w.from);
  });
  return result;
}

}  // namespace

BoxTree boxTree(Chain const& chain, double margin) {
  std::vector<Box> boxes;
  boxes.reserve(chain.size());
  for (Cubic const& c : chain.segments) {
    Box const hull = c.hull();
    boxes.push_back(
        {hull.minX - margin, hull.minY - margin, hull.maxX + margin, hull.maxY + margin});
  }
  return BoxTree(std::move(boxes));
}

ChainMeetings findMeetings(Chain const& a, BoxTree const& treeOfA, Chain const& b,
                           BoxTree const& treeOfB, UnitScale const& scale) {
  Assembly assembly(a, b, false, scale);
  BoxTree::visitOverlaps(treeOfA, treeOfB,
                         [&](std::size_t i, std::size_t k) { assembly.addPair(i, k); });
  return assembly.assemble();
}

ChainMeetings findLineMeetings(Chain const& a, BoxTree const& treeOfA, Chain const& line,
                               UnitScale const& scale) {
  Assembly assembly(a, line, false, scale);
  Box const hull = line.segments[0].hull();
  double const margin = scale.resolution / scale.factor;
  Box const wide = {hull.minX - margin, hull.minY - margin, hull.maxX + margin, hull.maxY + margin};
  treeOfA.visit([&](Box const& box) { return overlap(box, wide); },
                [&](std::size_t i) { assembly.addPair(i, 0); });
  return assembly.assemble();
}

ChainMeetings findSelfMeetings(Chain const& chain, BoxTree const& wideTree, BoxTree const& tree,
                               UnitScale const& scale) {
  Assembly assembly(chain, chain, true, scale);
  BoxTree::visitOverlaps(wideTree, tree, [&](std::size_t i, std::size_t k) {
    if (i == k) assembly.addOwn(i);
    if (i < k && !assembly.partAtJoint(i, k)) assembly.addPair(i, k);
  });
  return assembly.assemble();
}

}  // namespace crv::internal
