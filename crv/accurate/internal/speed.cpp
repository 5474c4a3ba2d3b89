// A piece for which 32 nodes are too few is cut above the nearest of the complex zeros of its
// velocity.
#include "crv/accurate/internal/speed.h"

#include <algorithm>

namespace crv::internal {
namespace {

// Cuts of a piece; the length of one so small is far below rounding.
constexpr int kMaxDepth = 60;

// A zero that is not there, in units of half a piece.
constexpr double kFar = 1e9;

// In units of half a piece: a zero above a place nearer to an end than this lies at the end; then a
// piece of this many times its distance is cut off, and no less than the last.
constexpr double kNearEnd = 0.05;
constexpr double kGrading = 6.0;
constexpr double kShortest = 0.01;

// n^(3/2) / kZeroFactor of 12, 20 and 32 nodes.
constexpr double kGainOfTwelve = 41.569219381653055 / kZeroFactor;
constexpr double kGainOfTwenty = 89.442719099991592 / kZeroFactor;
constexpr double kGainOfThirtyTwo = 181.01933598375617 / kZeroFactor;

// Of the ellipse through a zero, (rho^2 + rho^-2) / 2: below this, the zero may lie at an end.
constexpr double kThroughEnd = 1.0 + 0x1p-30;

// For rho = 1.503, kZeroFactor rho^(-2n) n^(-3/2) for n nodes.
constexpr double kErrorOfTwenty = 3.735e-9;
constexpr double kErrorOfThirtyTwo = 1.05e-13;

Point product(Point const& a, Point const& b) {
  return {a.x * b.x - a.y * b.y, a.x * b.y + a.y * b.x};
}

/// The complex zeros of a hodograph. Far ones stand for none.
struct Zeros {
  Point at[2];

  Zeros(Point const& first, Point const& second) : at{first, second} {}

  explicit Zeros(Hodograph const& h) {
    // The zeros -q / (2 m2) and -2 m0 / q, q being m1 + w, the larger of both sums, and w a root of
    // m1^2 - 4 m0 m2.
    Point const twiceM0 = h.m0 * 2.0;
    Point const twiceM2 = h.m2 * 2.0;
    Point const d = product(h.m1, h.m1) - product(twiceM0, twiceM2);
    double const size = norm(d);
    Point const w = {std::sqrt(0.5 * std::fabs(size + d.x)),
                     std::copysign(std::sqrt(0.5 * std::fabs(size - d.x)), d.y)};
    Point const q = h.m1 + w * std::copysign(1.0, dot(w, h.m1));
    at[0] = minusQuotient(q, twiceM2);
    at[1] = minusQuotient(twiceM0, q);
  }

  Zeros stretch(double centre, double half) const {
    double const k = 1.0 / half;
    return {{(at[0].x - centre) * k, at[0].y * k}, {(at[1].x - centre) * k, at[1].y * k}};
  }

 private:
  static Point minusQuotient(Point const& a, Point const& b) {
    double const n = dot(b, b);
    if (!(n > 0.0)) return {kFar, 0.0};
    return Point{a.x * b.x + a.y * b.y, a.y * b.x - a.x * b.y} * (-1.0 / n);
  }
};

/// (rho^2 + rho^-2) / 2 of the ellipse through a place.
double ellipseThrough(Point const& s) {
  double const xx = s.x * s.x;
  double const yy = s.y * s.y;
  return xx + yy + norm({xx - yy - 1.0, 2.0 * s.x * s.y});
}

/// Whether a zero is real and not inside (-1, 1), as at the end with a retracted handle: the speed
/// is analytic there. A distance of kAtEnd from this case changes the length by about its square.
/// Where the other zero is near, neither the zeros nor the speed next to them are exact enough.
bool isAtEnd(Point const& zero, Point const& other) {
  constexpr double kAtEnd = 0x1p-40;
  constexpr double kSeparate = 1.0;
  return zero.x * zero.x >= 1.0 - kAtEnd && std::fabs(zero.y) <= kAtEnd &&
         squaredDistance(zero, other) >= kSeparate * kSeparate;
}

/// From (rho^k + rho^-k) / 2 the same of twice the power.
double doubled(double x) { return 2.0 * x * x - 1.0; }

/// Above or below a zero, so that it lies at the ends of both pieces; where it does already, near
/// that end, so that one piece is no longer than the zero is far.
double whereToCut(Point const& zero) {
  double const side = zero.x < 0.0 ? -1.0 : 1.0;
  double const fromEnd = 1.0 - side * zero.x;
  if (fromEnd > kNearEnd) return zero.x;
  double const distance = norm({fromEnd, zero.y});
  return side * (1.0 - std::clamp(kGrading * distance, kShortest, 1.0));
}

/// Uses the smallest rule that suffices, or cuts the piece. The root of the mean squared speed over
/// the tolerance may be at most rho^(2n) n^(3/2) / kZeroFactor; squares are compared.
double integral(Hodograph const& h, Zeros const& zeros, double tolerance, int depth) {
  double near0 = ellipseThrough(zeros.at[0]);
  double near1 = ellipseThrough(zeros.at[1]);
  if (depth == 0 && min(near0, near1) < kThroughEnd) {
    if (isAtEnd(zeros.at[0], zeros.at[1])) near0 = kFar;
    if (isAtEnd(zeros.at[1], zeros.at[0])) near1 = kFar;
  }
  // (rho^k + rho^-k) / 2 for k = 8, 16 and 32.
  double const eighth = doubled(doubled(min(near0, near1)));
  double const sixteenth = doubled(eighth);
  double const thirtySecond = doubled(sixteenth);
  SquaredSpeed const speed(h);
  double const wanted = speed.mean();
  auto const isEnough = [=](double power, double factor) {
    double const gain = factor * (2.0 * power - 1.0) * tolerance;
    return wanted <= gain * gain;
  };
  if (isEnough(eighth * (2.0 * sixteenth - 1.0), kGainOfTwelve)) return speed.quadrature(kTwelve);
  if (isEnough(eighth * (2.0 * (thirtySecond - sixteenth) + 1.0), kGainOfTwenty)) {
    return speed.quadrature(kTwenty);
  }
  if (isEnough(doubled(thirtySecond), kGainOfThirtyTwo)) return speed.quadrature(kThirtyTwo);
  if (depth > 0) {
    // The length lies between chord and control polygon.
    double const polygon =
        (norm(h.m0 - h.m1 + h.m2) + norm(h.m0 - h.m2) + norm(h.m0 + h.m1 + h.m2)) * (2.0 / 3.0);
    double const chord = norm(h.m0 * 2.0 + h.m2 * (2.0 / 3.0));
    bool const isLonger = polygon - chord > 2.0 * tolerance;  // not so where it is NaN
    if (!isLonger || depth >= kMaxDepth) return 0.5 * (polygon + chord);
  }
  double const at = whereToCut(zeros.at[near0 <= near1 ? 0 : 1]);
  double const left = 0.5 * (at + 1.0);
  double const right = 0.5 * (1.0 - at);
  return integral(h.stretch(left - 1.0, left), zeros.stretch(left - 1.0, left), 0.5 * tolerance,
                  depth + 1) +
         integral(h.stretch(1.0 - right, right), zeros.stretch(1.0 - right, right), 0.5 * tolerance,
                  depth + 1);
}

}  // namespace

double speedIntegral(Hodograph const& h, double tolerance) {
  SquaredSpeed const speed(h);
  double const mean = speed.mean();
  if (StopTest(h).areOutside(kNearRadius)) {
    double const allowed = tolerance * tolerance;
    auto const isEnough = [=](double error) { return mean * (error * error) <= allowed; };
    if (isEnough(kErrorOfEight)) return speed.quadrature(kEight);
    if (isEnough(kErrorOfTwelve)) return speed.quadrature(kTwelve);
    if (isEnough(kErrorOfTwenty)) return speed.quadrature(kTwenty);
    if (isEnough(kErrorOfThirtyTwo)) return speed.quadrature(kThirtyTwo);
  }
  return speedIntegralNearStops(h, tolerance);
}

double speedIntegralNearStops(Hodograph const& h, double tolerance) {
  return integral(h, Zeros(h), tolerance, 0);
}

}  // namespace crv::internal
