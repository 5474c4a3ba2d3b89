// Decides which meetings of two curves are at one point, and which of these is kept.
#pragma once

#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/way.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

// In units of the resolution: points nearer to each other are one point; the excess over 1 allows
// for rounding.
constexpr double kPlaceSlack = 1.0625;

/// Compares and merges meetings of two curves.
class MeetingPlaces {
 public:
  /// Keeps references to the curves.
  MeetingPlaces(Route const& a, Route const& b, UnitScale const& scale)
      : a_(a), b_(b), scale_(scale) {}

  /// Whether both curves keep within the resolution of each other between two meetings.
  bool areOne(ChainMeeting const& m, ChainMeeting const& n) const;

  /// The meetings in order, one for each point.
  std::vector<ChainMeeting> merged(std::vector<ChainMeeting> points) const;

 private:
  static std::optional<Way> wayBetween(Route const& route, Place const& p, Place const& q);
  bool isAlong(Way const& way, Route const& other, Place const& p, Place const& q) const;
  bool standsFor(ChainMeeting const& m, ChainMeeting const& n) const;

  Route const& a_;
  Route const& b_;
  UnitScale const& scale_;
};

}  // namespace crv::internal
