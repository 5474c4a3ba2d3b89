#include "crv/accurate/direction.h"

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/segmentArea.h"
#include "crv/accurate/internal/sum.h"
#include "crv/accurate/internal/tangent.h"

#include <cmath>
#include <limits>
#include <optional>

namespace crv {
namespace {

using internal::Chain;
using internal::Cubic;
using internal::largestPart;

// Relative to the longest edge: bounds the rounding error of a velocity, which is a blend of the
// edges.
constexpr double kStill = 8 * internal::kRounding;

Vector vectorOf(internal::Point const& v) { return {v.x, v.y}; }

Vector unit(internal::Point const& v) { return vectorOf(internal::unitVector(v)); }

/// The directions at an inner parameter of a segment that is not a point.
Directions inside(Cubic const& c, double t) {
  internal::Point const e[3] = {c.p[1] - c.p[0], c.p[2] - c.p[1], c.p[3] - c.p[2]};
  double const s = 1.0 - t;
  double const still = kStill * max(largestPart(e[0]), max(largestPart(e[1]), largestPart(e[2])));
  internal::Point const velocity = e[0] * (s * s) + e[1] * (2.0 * s * t) + e[2] * (t * t);
  if (largestPart(velocity) > still) return {unit(velocity), unit(velocity)};
  internal::Point const turn = (e[1] - e[0]) * s + (e[2] - e[1]) * t;
  if (largestPart(turn) > still) return {-unit(turn), unit(turn)};
  internal::Point const rest = (e[2] - e[1]) - (e[1] - e[0]);
  return {unit(rest), unit(rest)};
}

/// The first segment that is not a point, starting with a given number, in steps of 1 or -1, and
/// across the seam of a closed curve.
std::optional<std::size_t> moving(Chain const& chain, long from, long step) {
  long const n = static_cast<long>(chain.size());
  for (long count = 0; count < n; ++count, from += step) {
    if (!chain.closed && (from < 0 || from >= n)) return std::nullopt;
    auto const k = static_cast<std::size_t>((from + n) % n);
    if (!internal::isPoint(chain.segments[k])) return k;
  }
  return std::nullopt;
}

}  // namespace

Directions directions(Curve const& curve, Position const& position) {
  Chain const chain(curve);
  auto const place = chain.placeOf(position);
  if (!place || !internal::isUsable(chain.magnitude())) return {};
  long const k = static_cast<long>(place->segment);
  bool const isInside = place->t > 0.0 && place->t < 1.0;
  if (isInside && !internal::isPoint(chain.segments[place->segment])) {
    return inside(chain.segments[place->segment], place->t);
  }
  // At a joint or an end, or on a segment that is a point.
  auto const before = moving(chain, place->t == 1.0 ? k : k - 1, -1);
  auto const behind = moving(chain, place->t == 0.0 ? k : k + 1, 1);
  if (!before && !behind) return {};
  Cubic const& arriving = chain.segments[before ? *before : *behind];
  Cubic const& leaving = chain.segments[behind ? *behind : *before];
  using internal::endDirection;
  using internal::startDirection;
  return {vectorOf(before ? endDirection(arriving) : startDirection(arriving)),
          vectorOf(behind ? startDirection(leaving) : endDirection(leaving))};
}

double signedArea(Curve const& curve) {
  Chain const chain(curve);
  if (!internal::isUsable(chain.magnitude())) return std::numeric_limits<double>::quiet_NaN();
  if (chain.size() == 0) return 0.0;
  // The integral is taken about the first point, so that the line from the last end to the first
  // start contributes nothing.
  internal::Point const origin = chain.segments[0].start();
  internal::Point last = origin;
  internal::Sum twice;
  for (Cubic const& c : chain.segments) {
    twice.add(cross(last - origin, c.start() - last));
    twice.add(cross(c.start() - origin, c.end() - c.start()));
    twice.add(internal::twiceAreaOverChord(c));
    last = c.end();
  }
  return 0.5 * twice.value();
}

bool isClockwise(Curve const& curve) { return signedArea(curve) < 0.0; }

}  // namespace crv
