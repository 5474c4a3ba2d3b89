// Compares and merges the meetings of two curves.
#include "crv/accurate/internal/meetingPlaces.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace crv::internal {

namespace {

// Relative to the largest coordinate: meetings farther apart than this are different.
constexpr double kFarApart = 0x1p-14;

// The number of meetings, next in order, that may be at one point with a meeting.
constexpr std::size_t kNeighbours = 12;

}  // namespace

/// The way between two places on the same segment or on neighbouring ones.
std::optional<Way> MeetingPlaces::wayBetween(Route const& route, Place const& p, Place const& q) {
  if (p.segment == q.segment) return Way{{part(route[p.segment], p.t, q.t), {}}, 1};
  bool const isForward = areEqual(route.normalised({p.segment, 1.0}), {q.segment, 0.0});
  bool const isBackward = areEqual(route.normalised({q.segment, 1.0}), {p.segment, 0.0});
  if (!isForward && !isBackward) return std::nullopt;
  double const endP = isForward ? 1.0 : 0.0;
  return Way{{part(route[p.segment], p.t, endP), part(route[q.segment], 1.0 - endP, q.t)}, 2};
}

/// Whether `other` is within the resolution of samples of a way, near one of its two places.
bool MeetingPlaces::isAlong(Way const& way, Route const& other, Place const& p,
                            Place const& q) const {
  double const reach = kPlaceSlack * scale_.resolution;
  // A loop returns to its starting point, but leaves it in between.
  Point const start = way.at(0.0);
  double const farthest = max(2.0 * distance(start, way.at(way.count)),
                              leastStretch(scale_.magnitude, scale_.resolution));
  for (double const share : {0.25, 0.5, 0.75}) {
    Point const point = way.at(share * way.count);
    if (distance(start, point) > farthest) return false;
    bool isNear = false;
    for (Place const& guess : {p, q}) {
      Cubic const c = other[guess.segment];
      isNear = isNear || distance(pointAt(c, footOn(c, point, guess.t)), point) <= reach;
    }
    if (!isNear) return false;
  }
  return true;
}

bool MeetingPlaces::areOne(ChainMeeting const& m, ChainMeeting const& n) const {
  if (areEqual(m.first, n.first) && areEqual(m.second, n.second)) return true;
  Point const place = a_.at(m.first);
  double const apart = distance(place, a_.at(n.first));
  if (apart > kFarApart * scale_.magnitude) return false;
  double const reach = kPlaceSlack * scale_.resolution;
  if (a_.staysNear(place, reach, m.first, n.first) &&
      b_.staysNear(place, reach, m.second, n.second)) {
    return true;
  }
  auto const wayA = wayBetween(a_, m.first, n.first), wayB = wayBetween(b_, m.second, n.second);
  return wayA && wayB && isAlong(*wayA, b_, m.second, n.second) &&
         isAlong(*wayB, a_, m.first, n.first) && areSideBySide(*wayA, *wayB, reach);
}

/// Whether m rather than n is kept, if both are at one point: the exact meeting is kept, else the
/// one at more joints, else the one with the smaller gap.
bool MeetingPlaces::standsFor(ChainMeeting const& m, ChainMeeting const& n) const {
  double const exact = kExact * scale_.magnitude;
  double const gapM = distance(a_.at(m.first), b_.at(m.second));
  double const gapN = distance(a_.at(n.first), b_.at(n.second));
  if ((gapM <= exact) != (gapN <= exact)) return gapM <= exact;
  int const jointsM = int(a_.isJoint(m.first)) + int(b_.isJoint(m.second));
  int const jointsN = int(a_.isJoint(n.first)) + int(b_.isJoint(n.second));
  return jointsM != jointsN ? jointsM > jointsN : gapM < gapN;
}

std::vector<ChainMeeting> MeetingPlaces::merged(std::vector<ChainMeeting> points) const {
  introsort(points, [](ChainMeeting const& m, ChainMeeting const& n) {
    return areEqual(m.first, n.first) ? isBefore(m.second, n.second) : isBefore(m.first, n.first);
  });
  auto const same = [](ChainMeeting const& m, ChainMeeting const& n) {
    return areEqual(m.first, n.first) && areEqual(m.second, n.second);
  };
  points.erase(std::unique(points.begin(), points.end(), same), points.end());

  std::size_t const n = points.size();
  std::vector<Point> places;
  places.reserve(n);
  for (ChainMeeting const& m : points) places.push_back(a_.at(m.first));
  double const far = kFarApart * scale_.magnitude;
  std::vector<std::size_t> home(n);  // the meeting that stands for this one, or leads to it
  std::iota(home.begin(), home.end(), std::size_t{0});
  auto const homeOf = [&](std::size_t i) {
    while (home[i] != i) i = home[i] = home[home[i]];
    return i;
  };
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t step = 1; step <= kNeighbours && step < n; ++step) {
      std::size_t const k = (i + step) % n;  // around the seam, too
      if (!(squaredDistance(places[i], places[k]) <= far * far)) continue;
      std::size_t const p = homeOf(i), q = homeOf(k);
      if (p == q || !areOne(points[i], points[k])) continue;
      if (standsFor(points[p], points[q])) {
        home[q] = p;
      } else {
        home[p] = q;
      }
    }
  }
  std::vector<char> standsForOthers(n, 0);
  for (std::size_t i = 0; i < n; ++i) {
    if (home[i] != i) standsForOthers[homeOf(i)] = 1;
  }
  std::vector<ChainMeeting> merged;
  for (std::size_t i = 0; i < n; ++i) {
    if (home[i] != i) continue;
    ChainMeeting m = points[i];
    // The kind is determined again, because two crossings at one point cancel.
    if (standsForOthers[i]) m.crosses = routesCross(a_, m.first, b_, m.second, scale_.resolution);
    merged.push_back(m);
  }
  return merged;
}

}  // namespace crv::internal
