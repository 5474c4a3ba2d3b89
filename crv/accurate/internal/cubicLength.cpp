#include "crv/accurate/internal/cubicLength.h"

#include "crv/accurate/internal/speed.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace crv::internal {
namespace {

// Steps for the parameter at a length, more than bisection needs, and those before it bisects.
constexpr int kMaxSteps = 130;
constexpr int kFreeSteps = 8;

// Of the tolerance: what each length on the way to a parameter may be off. Those of the free steps
// add up to a quarter; later ones get ever less, another tenth together.
constexpr double kShare = 1.0 / 32.0;

}  // namespace

double CubicLength::ofOrdinary(GxBezier const& segment, double accuracy) {
  Cubic const cubic = internal::cubic(segment);
  Edges const edges(cubic);
  double const bound = boundOf(edges);
  double const size = std::fabs(cubic.start().x) + std::fabs(cubic.start().y) + bound;
  bool const isOrdinary = bound >= kSmallestUnscaled && size <= kLargestUnscaled;
  if (!isOrdinary || isStraight(edges) || accuracy != accuracy) return -1.0;
  double const allowed = tolerance(accuracy, bound);
  Hodograph const h(edges);
  SquaredSpeed const speed(h);
  HalfPlaneTest const test(h);
  auto const isEnough = [&, mean = speed.mean()](double error) {
    return mean * (error * error) <= allowed * allowed;
  };
  // These rules suffice for most segments.
  if (isEnough(kErrorOfTwelve)) {
    if (!test.passes(kNear)) return speedIntegralNearStops(h, allowed);
    return isEnough(kErrorOfEight) ? speed.quadrature(kEight) : speed.quadrature(kTwelve);
  }
  if (isEnough(kWideErrorOfTwelve) && test.passes(kWide)) return speed.quadrature(kTwelve);
  return speedIntegral(h, allowed);
}

double CubicLength::scaledBetween(double t0, double t1, double tolerance) const {
  if (isStraight(edges_)) return straightBetween(t0, t1);
  return speedIntegral(hodograph(t0, t1), tolerance);
}

Hodograph CubicLength::hodograph(double t0, double t1) const {
  if (t0 == 0.0 && t1 == 1.0) return Hodograph(edges_);
  double const h = 0.5 * (t1 - t0);
  double const t = 0.5 * (t0 + t1);
  double const s = 1.0 - t;
  Point const bend0 = edges_.e[1] - edges_.e[0];
  Point const bend1 = edges_.e[2] - edges_.e[1];
  Point const velocity =
      edges_.e[0] * (s * s) + edges_.e[1] * (2.0 * s * t) + edges_.e[2] * (t * t);
  Point const acceleration = bend0 * s + bend1 * t;
  double const k = 3.0 * h;
  return {velocity * k, acceleration * (2.0 * k * h), (bend1 - bend0) * (k * h * h)};
}

bool CubicLength::isStraight(Edges const& edges) {
  auto const& e = edges.e;
  return cross(e[0], e[1]) == 0.0 && cross(e[1], e[2]) == 0.0 && cross(e[0], e[2]) == 0.0;
}

/// The offset from the start of the cubic.
Point CubicLength::offset(double t) const {
  double const s = 1.0 - t;
  return edges_.e[0] * (t * (1.0 + s * (1.0 + s))) + edges_.e[1] * (t * t * (1.0 + 2.0 * s)) +
         edges_.e[2] * (t * t * t);
}

double CubicLength::speed(double t) const {
  double const s = 1.0 - t;
  return 3.0 * norm(edges_.e[0] * (s * s) + edges_.e[1] * (2.0 * s * t) + edges_.e[2] * (t * t));
}

/// All edges have one direction or its opposite: the sum of the ways between the places where the
/// segment turns back.
double CubicLength::straightBetween(double t0, double t1) const {
  Point const& along =
      *std::max_element(edges_.e, edges_.e + 3, [](Point const& p, Point const& q) {
        return std::fabs(p.x) + std::fabs(p.y) < std::fabs(q.x) + std::fabs(q.y);
      });
  double const a = dot(edges_.e[0], along);
  double const b = dot(edges_.e[1], along);
  double const c = dot(edges_.e[2], along);
  double turns[2] = {t0, t0};
  double const discriminant = b * b - a * c;
  if (discriminant > 0.0 && (a < 0.0 || b < 0.0 || c < 0.0)) {
    // The roots of a s^2 + 2 b s t + c t^2, s being 1 - t.
    double const q = -(b + std::copysign(std::sqrt(discriminant), b));
    turns[0] = std::clamp(q / (q + c), t0, t1);
    turns[1] = std::clamp(a / (a + q), t0, t1);
    if (turns[0] > turns[1]) std::swap(turns[0], turns[1]);
  }
  double const places[4] = {t0, turns[0], turns[1], t1};
  double sum = 0.0;
  for (int i = 0; i < 3; ++i) {
    if (places[i + 1] > places[i]) sum += norm(offset(places[i + 1]) - offset(places[i]));
  }
  return sum;
}

double CubicLength::parameterAt(double t0, double length, double tolerance) const {
  bool const isForward = length >= 0.0;
  double const target = std::fabs(length) * scale_.inverse;
  tolerance *= scale_.inverse;
  double const end = isForward ? 1.0 : 0.0;
  auto const way = [&](double from, double to, double share) {
    return from < to ? scaledBetween(from, to, share) : scaledBetween(to, from, share);
  };
  double share = kShare * tolerance;
  double const all = way(t0, end, share);
  if (target >= all) return end;
  if (target == 0.0) return t0;
  // The length of the whole segment, computed in another way, may be less by rounding.
  if (all - target <= kRoundingShare * bound_ * scale_.inverse) return end;
  // The target lies between near and far, which lie at these lengths from t0.
  double near = t0;
  double far = end;
  double atNear = 0.0;
  double atFar = all;
  double t = near + (far - near) * (target / all);
  for (int step = 0; step < kMaxSteps && t != near && t != far; ++step) {
    bool const isFromNear = target - atNear < atFar - target;
    double const at = isFromNear ? atNear + way(near, t, share) : atFar - way(t, far, share);
    double const rest = target - at;
    if (std::fabs(rest) <= 0.5 * tolerance) break;
    if (step >= kFreeSteps) share *= 0.75;
    (rest > 0.0 ? near : far) = t;
    (rest > 0.0 ? atNear : atFar) = at;
    double const next = t + (isForward ? rest : -rest) / speed(t);
    bool const isBetween = isForward ? next > near && next < far : next < near && next > far;
    t = isBetween && (step < kFreeSteps || step % 2 == 0) ? next : 0.5 * (near + far);
  }
  return t;
}

}  // namespace crv::internal
