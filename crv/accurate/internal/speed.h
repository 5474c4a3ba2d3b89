// The speed along a piece of a cubic, and its integral where no stop is near.
#pragma once

#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/gaussLegendre.h"
#include "crv/bezier/internal/cubic.h"

#include <cmath>
#include <cstddef>

namespace crv::internal {

/// The derivative of a piece by s in [-1, 1]: m0 + m1 s + m2 s^2.
struct Hodograph {
  Point m0, m1, m2;

  Hodograph(Point const& a, Point const& b, Point const& c) : m0(a), m1(b), m2(c) {}

  /// The derivative of a whole cubic.
  explicit Hodograph(Edges const& edges)
      : m0((edges.e[0] + edges.e[2] + edges.e[1] * 2.0) * 0.375),
        m1((edges.e[2] - edges.e[0]) * 0.75),
        m2((edges.e[0] + edges.e[2] - edges.e[1] * 2.0) * 0.375) {}

  /// The stretch with a centre and half a width, on [-1, 1] again.
  Hodograph stretch(double centre, double half) const {
    return {(m0 + (m1 + m2 * centre) * centre) * half, (m1 + m2 * (2.0 * centre)) * (half * half),
            m2 * (half * half * half)};
  }
};

// Gauss-Legendre quadrature with n nodes is off by less than this times the root of mean() times
// rho^(-2n) n^(-3/2), where all zeros of the squared speed lie outside the ellipse with foci at the
// ends and semiaxes adding up to rho: the decay of Chebyshev coefficients at the branch point of a
// root (Trefethen, Approximation Theory and Approximation Practice, chapters 8 and 19). Millions of
// random trials gave factors up to 2.9.
constexpr double kZeroFactor = 4.0;

/// The ellipse with foci at -1 and 1 and semiaxes x and y, whose sum is rho, and the semiaxes xx
/// and yy of the ellipse of rho^2.
struct Ellipse {
  double x, y, xx, yy;
};
inline constexpr Ellipse kNear = {1.0843, 0.4189, 1.3510, 0.9083};  // rho = 1.503
inline constexpr Ellipse kWide = {1.25, 0.75, 2.125, 1.875};        // rho = 2

// kZeroFactor rho^(-2n) n^(-3/2) for n = 8 and 12 in the near ellipse and n = 12 in the wide one.
constexpr double kErrorOfEight = 2.607e-4;
constexpr double kErrorOfTwelve = 5.449e-6;
constexpr double kWideErrorOfTwelve = 5.736e-9;

/// The square of the speed, a polynomial of degree 4.
class SquaredSpeed {
 public:
  explicit SquaredSpeed(Hodograph const& h)
      : c0_(dot(h.m0, h.m0)),
        c1_(2.0 * dot(h.m0, h.m1)),
        c2_(dot(h.m1, h.m1) + 2.0 * dot(h.m0, h.m2)),
        c3_(2.0 * dot(h.m1, h.m2)),
        c4_(dot(h.m2, h.m2)) {}

  /// Its mean in the measure of Chebyshev.
  double mean() const { return c0_ + 0.5 * c2_ + 0.375 * c4_; }

  /// The integral of the speed by a rule with an even number of pairs. Two sums run side by side
  /// for machines that add two numbers at once.
  template <std::size_t kPairs>
  double quadrature(Rule<kPairs> const& rule) const {
    double shares[kPairs];
    for (std::size_t i = 0; i < kPairs; ++i) {
      double const even = c0_ + rule.xx[i] * (c2_ + rule.xx[i] * c4_);
      double const odd = rule.x[i] * (c1_ + rule.xx[i] * c3_);
      double const speeds = std::sqrt(std::fabs(even + odd)) + std::sqrt(std::fabs(even - odd));
      shares[i] = rule.weight[i] * speeds;
    }
    double first = shares[0];
    double second = shares[1];
    for (std::size_t i = 2; i < kPairs; i += 2) {
      first += shares[i];
      second += shares[i + 1];
    }
    return first + second;
  }

 private:
  double c0_, c1_, c2_, c3_, c4_;
};

/// Tests whether the velocity m0 + m1 s + m2 s^2, a complex function of a complex s, has no zero in
/// an ellipse. It has none if its product with the conjugate of m0 has a positive real part on the
/// whole boundary, because then the real part is positive inside, too (minimum principle). On the
/// boundary s = x cos a + i y sin a and s^2 = (1 + xx cos 2a + i yy sin 2a) / 2, so the real part
/// is a quadratic form in 1, cos a and -sin a.
class HalfPlaneTest {
 public:
  explicit HalfPlaneTest(Hodograph const& h)
      : m01_{dot(h.m0, h.m1), cross(h.m0, h.m1)},
        m02_{0.5 * dot(h.m0, h.m2), 0.5 * cross(h.m0, h.m2)},
        mean_(dot(h.m0, h.m0) + m02_.x) {}

  /// Returns true when all leading minors of the matrix of the form are positive, so that the form
  /// is positive definite (Sylvester's criterion). Because 1 = cos^2 a + sin^2 a, any share of the
  /// mean may be the coefficient of 1^2, and the rest that of cos^2 a and of sin^2 a.
  bool passes(Ellipse const& ellipse) const {
    double const a = ellipse.x * m01_.x;
    double const b = ellipse.y * m01_.y;
    double const c = ellipse.xx * m02_.x;
    double const d = ellipse.yy * m02_.y;
    double const first = kShareOfOne * mean_;
    double const p = (mean_ - first) + c;
    double const q = (mean_ - first) - c;
    double const four = 4.0 * first;
    double const second = four * p - a * a;
    double const third = second * q - four * (d * d) - b * (b * p - 2.0 * (a * d));
    return min(first, min(second, third)) > 0.0;
  }

 private:
  // The share of the mean that becomes the coefficient of 1^2: with it, 19 of 20 segments of
  // letters pass for kNear.
  static constexpr double kShareOfOne = 0.3;

  Point m01_;  // the dot product and the cross product
  Point m02_;  // half of them
  double mean_;
};

/// The integral of the speed over a piece that may stop or turn back anywhere, within a tolerance.
/// The coefficients should be of moderate size.
double speedIntegral(Hodograph const& h, double tolerance);

/// The same, for a piece that does not pass the test of the near ellipse.
double speedIntegralNearStops(Hodograph const& h, double tolerance);

}  // namespace crv::internal
