// The speed along a piece of a cubic, and its integral where no stop is near.
#pragma once

#include "crv/accurate/internal/controlEdges.h"
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

/// Gauss-Legendre quadrature over [-1, 1]: the positive nodes, their squares, their weights.
template <std::size_t kPairs>
struct Rule {
  double x[kPairs], xx[kPairs], weight[kPairs];
};
inline constexpr Rule<4> kEight = {
    {0.960289856497536232, 0.79666647741362674, 0.525532409916328986, 0.183434642495649805},
    {0.922156608492058729, 0.634677476234636644, 0.276184313872464441, 0.0336482680675068533},
    {0.101228536290376259, 0.222381034453374471, 0.313706645877887287, 0.362683783378361983}};
inline constexpr Rule<6> kTwelve = {
    {0.981560634246719251, 0.904117256370474857, 0.769902674194304687, 0.587317954286617447,
     0.367831498998180194, 0.125233408511468915},
    {0.963461278702821764, 0.817428013266874958, 0.592750127731541672, 0.344942379427417262,
     0.135300011655248237, 0.015683406607400455},
    {0.0471753363865118272, 0.106939325995318431, 0.160078328543346226, 0.203167426723065922,
     0.233492536538354809, 0.249147045813402785}};
inline constexpr Rule<10> kTwenty = {
    {0.993128599185094925, 0.963971927277913791, 0.912234428251325906, 0.839116971822218823,
     0.746331906460150793, 0.636053680726515025, 0.510867001950827098, 0.373706088715419561,
     0.227785851141645078, 0.0765265211334973338},
    {0.986304414519348928, 0.929241876579895515, 0.832171652087023472, 0.704117292400090379,
     0.557011314600443272, 0.404564284765747512, 0.260985093682226378, 0.139656240742977035,
     0.0518863939803236903, 0.00585630843679561405},
    {0.0176140071391521183, 0.0406014298003869413, 0.0626720483341090636, 0.0832767415767047487,
     0.101930119817240435, 0.118194531961518417, 0.131688638449176627, 0.142096109318382051,
     0.149172986472603747, 0.152753387130725851}};
inline constexpr Rule<16> kThirtyTwo = {
    {0.997263861849481564, 0.985611511545268335, 0.964762255587506431, 0.934906075937739689,
     0.896321155766052124, 0.84936761373256997, 0.794483795967942407, 0.73218211874028968,
     0.663044266930215201, 0.587715757240762329, 0.50689990893222939, 0.421351276130635345,
     0.33186860228212765, 0.239287362252137075, 0.144471961582796493, 0.0483076656877383162},
    {0.99453521015094185, 0.971430051690548617, 0.930766209806293083, 0.87404937082530269,
     0.803391614273791475, 0.721425343257760183, 0.63120450205563114, 0.536090655003019657,
     0.439627699909026467, 0.345409811309082678, 0.256947517675502449, 0.177536897896914915,
     0.110136769180693022, 0.0572584417335854749, 0.0208721476835810259, 0.00233363056419828985},
    {0.0070186100094700966, 0.0162743947309056706, 0.0253920653092620595, 0.0342738629130214331,
     0.0428358980222266807, 0.0509980592623761762, 0.0586840934785355471, 0.0658222227763618468,
     0.0723457941088485062, 0.0781938957870703065, 0.0833119242269467552, 0.0876520930044038111,
     0.0911738786957638847, 0.0938443990808045656, 0.0956387200792748594, 0.0965400885147278006}};

// Radii of circles around the ellipses of rho^2 for rho = 1.503 and 2, and
// kZeroFactor rho^(-2n) n^(-3/2) for n = 8 and 12 in the first and n = 12 in the second.
constexpr double kNearRadius = 1.351;
constexpr double kWideRadius = 2.125;
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

/// Tests whether the complex zeros of a hodograph lie outside ellipses. 2 s^2 - 1 maps the ellipse
/// of rho to that of rho^2, and the zeros s to the zeros of a v^2 + 2 b v + c with a = m2^2, b = m2
/// n - m1^2, c = n^2 - 2 m1^2 and n = 2 m0 + m2. The criterion of Schur and Cohn, written in
/// products of m1, m2 and n, tells whether they lie outside a circle.
class StopTest {
 public:
  explicit StopTest(Hodograph const& h)
      : m00_(dot(h.m0, h.m0)),
        m01_(dot(h.m0, h.m1)),
        m02_(dot(h.m0, h.m2)),
        m11_(dot(h.m1, h.m1)),
        m12_{dot(h.m1, h.m2), cross(h.m1, h.m2)},
        m22_(dot(h.m2, h.m2)),
        nn_(4.0 * (m00_ + m02_) + m22_),
        n1_{2.0 * m01_ + m12_.x, 2.0 * cross(h.m0, h.m1) - m12_.y},
        n2_{2.0 * m02_ + m22_, 2.0 * cross(h.m0, h.m2)} {}

  /// Whether both zeros, mapped by 2 s^2 - 1, are outside the circle with a radius.
  bool areOutside(double radius) const {
    double const squaredRadius = radius * radius;
    double const a = squaredRadius * m22_;
    double const sum = nn_ + 2.0 * m11_;
    double const excess = (sum * sum - 8.0 * (n1_.x * n1_.x)) - a * a;
    Point const skew = {(nn_ - a) * n2_.x - (n1_.x - n1_.y) * (n1_.x + n1_.y) -
                            2.0 * dot(m12_, n1_) + 2.0 * (m11_ * m11_) +
                            squaredRadius * ((m12_.x - m12_.y) * (m12_.x + m12_.y)),
                        (nn_ - a) * n2_.y - 2.0 * (n1_.x * n1_.y) + 2.0 * cross(m12_, n1_) +
                            2.0 * squaredRadius * (m12_.x * m12_.y)};
    return excess > 0.0 && excess * excess > 4.0 * squaredRadius * dot(skew, skew);
  }

 private:
  double m00_, m01_, m02_, m11_;
  Point m12_;  // the dot product and the cross product, as n1_ and n2_
  double m22_, nn_;
  Point n1_, n2_;
};

/// The integral of the speed over a piece that may stop or turn back anywhere, within a tolerance.
/// The coefficients should be of moderate size.
double speedIntegral(Hodograph const& h, double tolerance);

/// The same, for a piece with a zero of the velocity inside the ellipse of rho = 1.503.
double speedIntegralNearStops(Hodograph const& h, double tolerance);

}  // namespace crv::internal
