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

// isFarFromStops() holds for ellipses up to rho = 1.503: the radius of a circle around the ellipse
// of rho^2, and kZeroFactor rho^(-2n) n^(-3/2) for 8, 20 and 32 nodes.
constexpr double kRadius = 1.35;
constexpr double kErrorOfEight = 2.605e-4;
constexpr double kErrorOfTwenty = 3.73e-9;
constexpr double kErrorOfThirtyTwo = 1.05e-13;

Point square(Point const& a) { return {a.x * a.x - a.y * a.y, 2.0 * a.x * a.y}; }
Point product(Point const& a, Point const& b) {
  return {a.x * b.x - a.y * b.y, a.x * b.y + a.y * b.x};
}

/// Whether no complex zero of the hodograph lies in the ellipse of rho = 1.503. 2 s^2 - 1 takes the
/// ellipse to that of rho^2, and the zeros s to those of a v^2 + b v + c; the criterion of Schur
/// and Cohn tells whether both lie outside the circle.
bool isFarFromStops(Hodograph const& h) {
  Point const m2Squared = square(h.m2);
  Point const both = product(h.m0, h.m2) * 4.0 - square(h.m1) * 2.0;
  Point const a = m2Squared * (kRadius * kRadius);
  Point const b = (m2Squared * 2.0 + both) * kRadius;
  Point const c = m2Squared + both + square(h.m0) * 4.0;
  double const excess = dot(c, c) - dot(a, a);
  // The conjugate of c times b less a times the conjugate of b.
  Point const skew = {dot(c, b) - dot(a, b), cross(c, b) - cross(b, a)};
  return excess > 0.0 && excess * excess > dot(skew, skew);
}

double integral(Hodograph const& h, double tolerance) {
  if (isFarFromStops(h)) {
    SquaredSpeed const speed(h);
    double const mean = speed.mean();
    double const allowed = tolerance * tolerance;
    if (mean * (kErrorOfEight * kErrorOfEight) <= allowed) return speed.quadrature(kEight);
    if (mean * (kErrorOfTwenty * kErrorOfTwenty) <= allowed) return speed.quadrature(kTwenty);
    if (mean * (kErrorOfThirtyTwo * kErrorOfThirtyTwo) <= allowed) {
      return speed.quadrature(kThirtyTwo);
    }
  }
  return integralBetweenStops(h, tolerance);
}

}  // namespace

double CubicLength::scaledBetween(double t0, double t1, double tolerance) const {
  if (isStraight()) return straightBetween(t0, t1);
  return integral(hodograph(t0, t1), tolerance);
}

Hodograph CubicLength::hodograph(double t0, double t1) const {
  if (t0 == 0.0 && t1 == 1.0) {
    Point const ends = e_[0] + e_[2];
    Point const twice = e_[1] * 2.0;
    return {(ends + twice) * 0.375, (e_[2] - e_[0]) * 0.75, (ends - twice) * 0.375};
  }
  double const h = 0.5 * (t1 - t0);
  double const t = 0.5 * (t0 + t1);
  double const s = 1.0 - t;
  Point const bend0 = e_[1] - e_[0];
  Point const bend1 = e_[2] - e_[1];
  Point const velocity = e_[0] * (s * s) + e_[1] * (2.0 * s * t) + e_[2] * (t * t);
  Point const acceleration = bend0 * s + bend1 * t;
  double const k = 3.0 * h;
  return {velocity * k, acceleration * (2.0 * k * h), (bend1 - bend0) * (k * h * h)};
}

bool CubicLength::isStraight() const {
  return cross(e_[0], e_[1]) == 0.0 && cross(e_[1], e_[2]) == 0.0 && cross(e_[0], e_[2]) == 0.0;
}

/// The offset from the start of the cubic.
Point CubicLength::offset(double t) const {
  double const s = 1.0 - t;
  return e_[0] * (t * (1.0 + s * (1.0 + s))) + e_[1] * (t * t * (1.0 + 2.0 * s)) +
         e_[2] * (t * t * t);
}

double CubicLength::speed(double t) const {
  double const s = 1.0 - t;
  return 3.0 * norm(e_[0] * (s * s) + e_[1] * (2.0 * s * t) + e_[2] * (t * t));
}

/// All edges have one direction or its opposite: the sum of the ways between the places where the
/// segment turns back.
double CubicLength::straightBetween(double t0, double t1) const {
  Point const& along = *std::max_element(e_, e_ + 3, [](Point const& p, Point const& q) {
    return std::fabs(p.x) + std::fabs(p.y) < std::fabs(q.x) + std::fabs(q.y);
  });
  double const a = dot(e_[0], along);
  double const b = dot(e_[1], along);
  double const c = dot(e_[2], along);
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
