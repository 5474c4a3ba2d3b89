// Follows two ways side by side.
#include "crv/accurate/internal/way.h"

#include "crv/accurate/internal/searchParts.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

namespace {

// Limit of the halvings of a way. Parts that still turn become smaller than any resolution long
// before it is reached.
constexpr int kMostHalvings = 60;

/// A place on a way: the number of its piece, and the parameter there.
struct WayPlace {
  int piece;
  double t;
};

double lengthOf(Cubic const& c) {
  return distance(c.p[0], c.p[1]) + distance(c.p[1], c.p[2]) + distance(c.p[2], c.p[3]);
}

double lengthOf(Way const& way) {
  return lengthOf(way.pieces[0]) + (way.count > 1 ? lengthOf(way.pieces[1]) : 0.0);
}

/// Whether a way turns so little that it has no loop, or is as small as a point.
bool isSimple(Way const& way, double reach) {
  if (way.count > 1) return false;
  Cubic const& c = way.pieces[0];
  return ControlPolygon(c).areGentle() || sizeOf(c.hull()) <= kPointSize * reach;
}

void split(Way const& way, WayPlace const& place, Way& before, Way& behind) {
  Cubic left, right;
  way.pieces[place.piece].split(place.t, left, right);
  if (place.piece == 0) {
    before = {{left, {}}, 1};
    behind = {{right, way.pieces[1]}, way.count};
  } else {
    before = {{way.pieces[0], left}, 2};
    behind = {{right, {}}, 1};
  }
}

/// The place at a share of the length of a way, if length is proportional to the parameter.
WayPlace placeAt(Way const& way, double share) {
  if (way.count == 1) return {0, share};
  double const first = lengthOf(way.pieces[0]), all = lengthOf(way);
  if (share * all <= first) return {0, first > 0.0 ? share * all / first : 1.0};
  return {1, min(1.0, (share * all - first) / (all - first))};
}

/// Finds a place on a way that is within reach of a point; the search starts at a share of the way
/// and, if that fails, at other places.
bool findPartner(Way const& way, double share, Point const& point, double reach,
                 WayPlace& partner) {
  for (double const guess : {share, 0.25, 0.75, 0.5}) {
    partner = placeAt(way, guess);
    Cubic const& c = way.pieces[partner.piece];
    partner.t = footOn(c, point, partner.t);
    if (distance(pointAt(c, partner.t), point) <= reach) return true;
  }
  return false;
}

/// Whether samples of a cubic lie within reach of another one.
bool isBeside(Cubic const& a, Cubic const& b, double reach) {
  for (double const s : {0.5, 0.25, 0.75}) {
    Point const point = pointAt(a, s);
    if (!(distance(pointAt(b, footOn(b, point, s)), point) <= reach)) return false;
  }
  return true;
}

bool areSideBySide(Way const& a, Way const& b, double reach, int halvings) {
  bool const isSimpleA = isSimple(a, reach), isSimpleB = isSimple(b, reach);
  if (isSimpleA && isSimpleB) return isBeside(a.pieces[0], b.pieces[0], reach);
  if (halvings == 0) return true;
  double const lengthA = lengthOf(a);
  // The way that turns is halved; of two, the longer one.
  if (isSimpleA || (!isSimpleB && lengthOf(b) > lengthA)) {
    return areSideBySide(b, a, reach, halvings);
  }
  WayPlace const middle = {0, a.count > 1 ? 1.0 : 0.5};
  Way beforeA, behindA, beforeB, behindB;
  split(a, middle, beforeA, behindA);
  WayPlace partner = {};
  if (!findPartner(b, lengthOf(beforeA) / lengthA, a.at(middle.t), reach, partner)) return false;
  split(b, partner, beforeB, behindB);
  return areSideBySide(beforeA, beforeB, reach, halvings - 1) &&
         areSideBySide(behindA, behindB, reach, halvings - 1);
}

}  // namespace

bool areSideBySide(Way const& a, Way const& b, double reach) {
  return areSideBySide(a, b, reach, kMostHalvings);
}

}  // namespace crv::internal
