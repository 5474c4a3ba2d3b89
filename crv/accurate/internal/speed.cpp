// A piece for which 48 nodes are too few is cut above the nearest of the complex zeros of its
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

// kZeroFactor / (2 n^(3/2)) of 12, 20, 32 and 48 nodes.
constexpr double kNeedOfTwelve = 0.5 * kZeroFactor / 41.569219381653055;
constexpr double kNeedOfTwenty = 0.5 * kZeroFactor / 89.442719099991592;
constexpr double kNeedOfThirtyTwo = 0.5 * kZeroFactor / 181.01933598375617;
constexpr double kNeedOfFortyEight = 0.5 * kZeroFactor / 332.55375505322445;

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
    // The zeros (-m1 + w) / (2 m2) and (-m1 - w) / (2 m2), w being a root of m1^2 - 4 m0 m2.
    Point const d = product(h.m1, h.m1) - product(h.m0, h.m2) * 4.0;
    double const size = norm(d);
    Point const w = {std::sqrt(0.5 * std::fabs(size + d.x)),
                     std::copysign(std::sqrt(0.5 * std::fabs(size - d.x)), d.y)};
    double const m11 = dot(h.m1, h.m1);
    double const m22 = dot(h.m2, h.m2);
    if (m11 < kLongest * m22 && dot(h.m0, h.m0) < kFarthest * m22) {
      double const k = -0.5 / m22;
      Point const inverse = {h.m2.x * k, -h.m2.y * k};
      at[0] = product(h.m1 + w, inverse);
      at[1] = product(h.m1 - w, inverse);
      return;
    }
    // m1 + w or m1 - w would be inexact. With q, the larger of the two, the zeros are -q / (2 m2)
    // and -2 m0 / q.
    Point const q = h.m1 + w * std::copysign(1.0, dot(w, h.m1));
    at[0] = minusQuotient(q, h.m2 * 2.0);
    at[1] = minusQuotient(h.m0 * 2.0, q);
  }

  Zeros stretch(double centre, double half) const {
    double const k = 1.0 / half;
    return {{(at[0].x - centre) * k, at[0].y * k}, {(at[1].x - centre) * k, at[1].y * k}};
  }

 private:
  // Ratios of squared lengths: if that of m1 to m2 is below kLongest, m1 + w and m1 - w lose few
  // digits to rounding; if that of m0 to m2 is below kFarthest, no power of a zero overflows.
  static constexpr double kLongest = 0x1p16;
  static constexpr double kFarthest = 0x1p80;

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

double integralInParts(Hodograph const& h, Zeros const& zeros, int nearest, double tolerance,
                       int depth);

/// Uses the smallest rule that suffices, or cuts the piece. With n nodes, rho^(2n) must be at least
/// the root of the mean squared speed over the tolerance, times kZeroFactor / n^(3/2).
double integral(Hodograph const& h, SquaredSpeed const& speed, Zeros const& zeros, double tolerance,
                int depth) {
  double near0 = ellipseThrough(zeros.at[0]);
  double near1 = ellipseThrough(zeros.at[1]);
  if (depth == 0 && min(near0, near1) < kThroughEnd) {
    if (isAtEnd(zeros.at[0], zeros.at[1])) near0 = kFar;
    if (isAtEnd(zeros.at[1], zeros.at[0])) near1 = kFar;
  }
  // (rho^k + rho^-k) / 2 for k = 8, 16, 32, 64 and, below, 24, 40 and 96.
  double const eighth = doubled(doubled(min(near0, near1)));
  double const sixteenth = doubled(eighth);
  double const thirtySecond = doubled(sixteenth);
  double const sixtyFourth = doubled(thirtySecond);
  double const wanted = std::sqrt(speed.mean()) / tolerance;
  auto const isEnough = [=](double power, double need) { return power >= 0.5 + wanted * need; };
  if (isEnough(eighth * (2.0 * sixteenth - 1.0), kNeedOfTwelve)) return speed.quadrature(kTwelve);
  if (isEnough(eighth * (2.0 * (thirtySecond - sixteenth) + 1.0), kNeedOfTwenty)) {
    return speed.quadrature(kTwenty);
  }
  if (isEnough(sixtyFourth, kNeedOfThirtyTwo)) return speed.quadrature(kThirtyTwo);
  if (isEnough(thirtySecond * (2.0 * sixtyFourth - 1.0), kNeedOfFortyEight)) {
    return speed.quadrature(kFortyEight);
  }
  return integralInParts(h, zeros, near0 <= near1 ? 0 : 1, tolerance, depth);
}

/// Cuts the piece next to the nearest zero.
double integralInParts(Hodograph const& h, Zeros const& zeros, int nearest, double tolerance,
                       int depth) {
  if (depth > 0) {
    // The length lies between chord and control polygon.
    double const polygon =
        (norm(h.m0 - h.m1 + h.m2) + norm(h.m0 - h.m2) + norm(h.m0 + h.m1 + h.m2)) * (2.0 / 3.0);
    double const chord = norm(h.m0 * 2.0 + h.m2 * (2.0 / 3.0));
    bool const isLonger = polygon - chord > 2.0 * tolerance;  // not so where it is NaN
    if (!isLonger || depth >= kMaxDepth) return 0.5 * (polygon + chord);
  }
  double const at = whereToCut(zeros.at[nearest]);
  double sum = 0.0;
  for (double const side : {1.0, -1.0}) {  // before the cut and behind it
    double const half = 0.5 * (1.0 + side * at);
    double const centre = side * (half - 1.0);
    Hodograph const part = h.stretch(centre, half);
    sum +=
        integral(part, SquaredSpeed(part), zeros.stretch(centre, half), 0.5 * tolerance, depth + 1);
  }
  return sum;
}

}  // namespace

double speedIntegral(Hodograph const& h, double tolerance) {
  SquaredSpeed const speed(h);
  if (HalfPlaneTest(h).passes(kNear)) {
    auto const isEnough = [=, mean = speed.mean()](double error) {
      return mean * (error * error) <= tolerance * tolerance;
    };
    if (isEnough(kErrorOfEight)) return speed.quadrature(kEight);
    if (isEnough(kErrorOfTwelve)) return speed.quadrature(kTwelve);
    if (isEnough(kErrorOfTwenty)) return speed.quadrature(kTwenty);
    if (isEnough(kErrorOfThirtyTwo)) return speed.quadrature(kThirtyTwo);
  }
  return speedIntegralNearStops(h, tolerance);
}

double speedIntegralNearStops(Hodograph const& h, double tolerance) {
  return integral(h, SquaredSpeed(h), Zeros(h), tolerance, 0);
}

}  // namespace crv::internal
