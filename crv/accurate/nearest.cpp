#include "crv/accurate/nearest.h"

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/foot.h"

#include <limits>

namespace crv {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

NearestOnSegment nearest(Segment const& segment, Point const& p) {
  internal::Cubic cubic = internal::cubic(segment);
  internal::Point from = internal::plain(p);
  internal::Magnitude magnitude;
  magnitude.add(cubic);
  magnitude.add(from);
  if (!internal::isUsable(magnitude.value())) return {0.0, Point(kNaN, kNaN), kNaN};
  double unit = 1.0;
  if (internal::isTiny(magnitude.value())) {
    cubic = internal::scaled(cubic, internal::kEnlargement);
    from = from * internal::kEnlargement;
    unit = 1.0 / internal::kEnlargement;
  }
  internal::Foot const foot = internal::nearestFoot(cubic, from, kInfinity);
  internal::Point const place = internal::placeOf(foot, cubic, from);
  return {foot.t, Point(place.x * unit, place.y * unit), std::sqrt(foot.squaredDistance) * unit};
}

std::optional<NearestOnCurve> nearest(Curve const& curve, Point const& p) {
  internal::Chain chain(curve);
  internal::Point from = internal::plain(p);
  internal::Magnitude magnitude;
  double ofCurve = chain.magnitude();
  magnitude.add(ofCurve);
  magnitude.add(from);
  if (chain.size() == 0 || !internal::isUsable(magnitude.value())) return std::nullopt;
  double unit = 1.0;
  if (internal::isTiny(magnitude.value())) {
    for (internal::Cubic& c : chain.segments) c = internal::scaled(c, internal::kEnlargement);
    ofCurve *= internal::kEnlargement;
    from = from * internal::kEnlargement;
    unit = 1.0 / internal::kEnlargement;
  }
  std::size_t nearest = 0;
  internal::Foot best = internal::nearestFoot(chain.segments[0], from, kInfinity);
  for (std::size_t i = 1; i < chain.size(); ++i) {
    internal::Foot const foot =
        internal::nearestFoot(chain.segments[i], from, best.squaredDistance);
    if (!internal::isNearer(foot.squaredDistance, best.squaredDistance)) continue;
    nearest = i;
    best = foot;
  }
  internal::Point const place = internal::placeOf(best, chain.segments[nearest], from);
  return NearestOnCurve{chain.positionOn(nearest, best.t, ofCurve),
                        Point(place.x * unit, place.y * unit),
                        std::sqrt(best.squaredDistance) * unit};
}

}  // namespace crv
