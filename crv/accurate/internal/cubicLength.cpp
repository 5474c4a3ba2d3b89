// The speed is the root of g, a polynomial of degree 4. Where the Chebyshev expansion of g over a
// piece stays away from 0 on the ellipse with foci at the ends and semiaxes adding up to rho = 2,
// the speed is analytic there and Gauss-Legendre quadrature with n nodes is off by less than 64 /
// 15 M rho^(-2n) / (1 - rho^-2), M being the largest deviation of the speed from a constant on the
// ellipse (Trefethen, Approximation Theory and Approximation Practice, chapter 19). Elsewhere the
// zeros of the velocity, as a complex polynomial of degree 2, tell the largest such ellipse; a
// piece for which 16 nodes are too few is cut above the nearer zero.
#include "crv/accurate/internal/cubicLength.h"

#include "crv/accurate/internal/scale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace crv::internal {
namespace {

// Relative to the bound of the length: what is kept for rounding, and the least that the method is
// asked for. The bound is at most six times the length, so that both stay below 64 u L.
constexpr double kRoundingShare = 5 * kRounding;

// Halvings of a piece; the length of one so small is far below rounding.
constexpr int kMaxDepth = 60;

// A zero that is not there, in units of half a piece.
constexpr double kFar = 1e9;

// In units of half a piece: a zero above a place nearer to an end than this lies at the end; then a
// piece of this many times its distance is cut off, and no less than the last.
constexpr double kNearEnd = 0.05;
constexpr double kGrading = 6.0;
constexpr double kShortest = 0.01;

// Steps for the parameter at a length, more than bisection needs, and those before it bisects.
constexpr int kMaxSteps = 130;
constexpr int kFreeSteps = 8;

/// Gauss-Legendre quadrature over [-1, 1]: the positive nodes, their squares, their weights.
template <std::size_t kPairs>
struct Rule {
  double x[kPairs], xx[kPairs], weight[kPairs];
};
constexpr Rule<4> kEight = {
    {0.960289856497536232, 0.79666647741362674, 0.525532409916328986, 0.183434642495649805},
    {0.922156608492058729, 0.634677476234636644, 0.276184313872464441, 0.0336482680675068533},
    {0.101228536290376259, 0.222381034453374471, 0.313706645877887287, 0.362683783378361983}};
constexpr Rule<8> kSixteen = {
    {0.989400934991649933, 0.944575023073232576, 0.865631202387831744, 0.755404408355003034,
     0.617876244402643748, 0.458016777657227386, 0.281603550779258913, 0.0950125098376374402},
    {0.978914210162351096, 0.892221974213797853, 0.749317378547403321, 0.570635820162172177,
     0.38177105339711555, 0.209779368615510068, 0.0793005598114866533, 0.00902737702564715135},
    {0.0271524594117540949, 0.0622535239386478929, 0.0951585116824927848, 0.124628971255533872,
     0.149595988816576732, 0.169156519395002538, 0.182603415044923589, 0.189450610455068496}};

// The largest magnitudes of the Chebyshev polynomials of degree 1 to 4 on the ellipse with rho = 2,
// (rho^k + rho^-k) / 2, and 64 / 15 rho^(-2n) / (1 - rho^-2) for 8 and 16 nodes.
constexpr double kMagnitudes[] = {1.25, 2.125, 4.0625, 8.03125};
constexpr double kDecayOfEight = 8.6806e-5;
constexpr double kDecayOfSixteen = 1.3246e-9;

// With the nearest zero on the ellipse of rho, n nodes are off by less than this times the mean
// speed times rho^(-2n) n^(-3/2), n^(3/2) being the powers below: the decay of Chebyshev
// coefficients at the branch point of a root, its factor taken from millions of random trials.
constexpr double kZeroFactor = 4.0;
constexpr double kPowerOfEight = 22.627416997969522;
constexpr double kPowerOfSixteen = 64.0;

/// The derivative of a piece by s in [-1, 1]: m0 + m1 s + m2 s^2.
struct Hodograph {
  Point m0, m1, m2;

  /// The stretch with a centre and half a width, on [-1, 1] again.
  Hodograph stretch(double centre, double half) const {
    return {(m0 + (m1 + m2 * centre) * centre) * half, (m1 + m2 * (2.0 * centre)) * (half * half),
            m2 * (half * half * half)};
  }
};

double norm(Point const& v) { return std::sqrt(dot(v, v)); }

/// g, the square of the length of a hodograph.
class SquaredSpeed {
 public:
  explicit SquaredSpeed(Hodograph const& h)
      : c0_(dot(h.m0, h.m0)),
        c1_(2.0 * dot(h.m0, h.m1)),
        c2_(dot(h.m1, h.m1) + 2.0 * dot(h.m0, h.m2)),
        c3_(2.0 * dot(h.m1, h.m2)),
        c4_(dot(h.m2, h.m2)) {}

  double mean() const { return c0_ + 0.5 * c2_ + 0.375 * c4_; }

  /// The largest deviation of g from its mean on the ellipse with rho = 2.
  double deviation() const {
    return kMagnitudes[0] * std::fabs(c1_ + 0.75 * c3_) +
           kMagnitudes[1] * 0.5 * std::fabs(c2_ + c4_) + kMagnitudes[2] * 0.25 * std::fabs(c3_) +
           kMagnitudes[3] * 0.125 * c4_;
  }

  template <std::size_t kPairs>
  double quadrature(Rule<kPairs> const& rule) const {
    double speeds[2 * kPairs];
    for (std::size_t i = 0; i < kPairs; ++i) {
      double const even = c0_ + rule.xx[i] * (c2_ + rule.xx[i] * c4_);
      double const odd = rule.x[i] * (c1_ + rule.xx[i] * c3_);
      speeds[i] = std::sqrt(even + odd);
      speeds[kPairs + i] = std::sqrt(even - odd);
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < kPairs; ++i)
      sum += rule.weight[i] * (speeds[i] + speeds[kPairs + i]);
    return sum;
  }

 private:
  double c0_, c1_, c2_, c3_, c4_;
};

/// The zeros of a hodograph, as numbers of the complex plane. Far ones stand for none.
struct Zeros {
  Point s1, s2;

  explicit Zeros(Hodograph const& given) {
    // They are those of any multiple, and fourth powers of this one stay in range.
    double const scale = 1.0 / (norm(given.m0) + norm(given.m1) + norm(given.m2));
    Hodograph const h = {given.m0 * scale, given.m1 * scale, given.m2 * scale};
    // The roots q / m2 and m0 / q, q being -(m1 + w) / 2 with the larger of both sums and w the
    // root of m1^2 - 4 m0 m2.
    Point const d = product(h.m1, h.m1) - product(h.m0, h.m2) * 4.0;
    double const size = norm(d);
    double const a = std::sqrt(0.5 * (size + std::fabs(d.x)));
    double const b = a > 0.0 ? 0.5 * std::fabs(d.y) / a : 0.0;
    Point w = d.x >= 0.0 ? Point{a, b} : Point{b, a};
    if (d.y < 0.0) w.y = -w.y;
    if (dot(w, h.m1) < 0.0) w = w * -1.0;
    Point const q = (h.m1 + w) * -0.5;
    s1 = quotient(q, h.m2);
    s2 = quotient(h.m0, q);
  }
  Zeros(Point const& a, Point const& b) : s1(a), s2(b) {}

  Zeros stretch(double centre, double half) const {
    double const k = 1.0 / half;
    return {{(s1.x - centre) * k, s1.y * k}, {(s2.x - centre) * k, s2.y * k}};
  }

 private:
  static Point product(Point const& a, Point const& b) {
    return {a.x * b.x - a.y * b.y, a.x * b.y + a.y * b.x};
  }
  static Point quotient(Point const& a, Point const& b) {
    double const n = dot(b, b);
    if (!(n > 0.0)) return {kFar, 0.0};
    return Point{a.x * b.x + a.y * b.y, a.y * b.x - a.x * b.y} * (1.0 / n);
  }
};

/// rho of the ellipse through a place.
double ellipseThrough(Point const& s) {
  double const a = 0.5 * (std::sqrt((s.x - 1.0) * (s.x - 1.0) + s.y * s.y) +
                          std::sqrt((s.x + 1.0) * (s.x + 1.0) + s.y * s.y));
  return a > 1.0 ? a + std::sqrt(a * a - 1.0) : 1.0;
}

/// Above or below a zero, so that it lies at the ends of both pieces; where it does already, near
/// that end, so that one piece is no longer than the zero is far.
double whereToCut(Point const& zero) {
  double const side = zero.x < 0.0 ? -1.0 : 1.0;
  double const fromEnd = 1.0 - side * zero.x;
  if (fromEnd > kNearEnd) return zero.x;
  double const distance = norm({fromEnd, zero.y});
  return side * (1.0 - std::clamp(kGrading * distance, kShortest, 1.0));
}

double lengthBetweenZeros(Hodograph const& h, Zeros const& zeros, double tolerance, int depth) {
  SquaredSpeed const g(h);
  double const rho1 = ellipseThrough(zeros.s1);
  double const rho2 = ellipseThrough(zeros.s2);
  double const rho = min(rho1, rho2);
  double const square = 1.0 / (rho * rho);
  double const fourth = square * square;
  double const eighth = fourth * fourth;
  double const decay = eighth * eighth;
  double const scale = kZeroFactor * std::sqrt(g.mean());
  if (scale * decay <= kPowerOfEight * tolerance) return g.quadrature(kEight);
  if (scale * decay * decay <= kPowerOfSixteen * tolerance) return g.quadrature(kSixteen);
  // The length lies between chord and control polygon.
  double const polygon =
      (norm(h.m0 - h.m1 + h.m2) + norm(h.m0 - h.m2) + norm(h.m0 + h.m1 + h.m2)) * (2.0 / 3.0);
  double const chord = norm(h.m0 * 2.0 + h.m2 * (2.0 / 3.0));
  bool const isLonger = polygon - chord > 2.0 * tolerance;  // not so where it is NaN
  if (!isLonger || depth >= kMaxDepth) return 0.5 * (polygon + chord);
  Point const& zero = rho1 <= rho2 ? zeros.s1 : zeros.s2;
  double const at = whereToCut(zero);
  double const left = 0.5 * (at + 1.0);
  double const right = 0.5 * (1.0 - at);
  return lengthBetweenZeros(h.stretch(left - 1.0, left), zeros.stretch(left - 1.0, left),
                            0.5 * tolerance, depth + 1) +
         lengthBetweenZeros(h.stretch(1.0 - right, right), zeros.stretch(1.0 - right, right),
                            0.5 * tolerance, depth + 1);
}

double length(Hodograph const& h, double tolerance) {
  SquaredSpeed const g(h);
  double const mean = g.mean();
  double const deviation = g.deviation();
  if (deviation < mean) {
    double const scale = std::sqrt(mean) * (deviation / mean);
    if (scale * kDecayOfEight <= tolerance) return g.quadrature(kEight);
    if (scale * kDecayOfSixteen <= tolerance) return g.quadrature(kSixteen);
  }
  return lengthBetweenZeros(h, Zeros(h), tolerance, 0);
}

}  // namespace

CubicLength::CubicLength(Cubic const& cubic) : bound_(0.0), isStraight_(false) {
  for (int i = 0; i < 3; ++i) {
    e_[i] = cubic.p[i + 1] - cubic.p[i];
    bound_ += std::fabs(e_[i].x) + std::fabs(e_[i].y);
  }
  chord_ = cubic.p[3] - cubic.p[0];
  isStraight_ =
      cross(e_[0], e_[1]) == 0.0 && cross(e_[1], e_[2]) == 0.0 && cross(e_[0], e_[2]) == 0.0;
}

double CubicLength::tolerance(double accuracy, double bound) {
  double const kept = kRoundingShare * bound;
  return max(accuracy - kept, kept);
}

double CubicLength::between(double t0, double t1, double tolerance) const {
  if (isStraight_) return straightBetween(t0, t1);
  double const h = 0.5 * (t1 - t0);
  double const t = 0.5 * (t0 + t1);
  double const s = 1.0 - t;
  Point const bend0 = e_[1] - e_[0];
  Point const bend1 = e_[2] - e_[1];
  Point const velocity = e_[0] * (s * s) + e_[1] * (2.0 * s * t) + e_[2] * (t * t);
  Point const acceleration = bend0 * s + bend1 * t;
  double const k = 3.0 * h;
  return length({velocity * k, acceleration * (2.0 * k * h), (bend1 - bend0) * (k * h * h)},
                tolerance);
}

/// The offset from the start of the cubic.
Point CubicLength::offset(double t) const {
  if (t == 1.0) return chord_;
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
  double const target = std::fabs(length);
  double const end = isForward ? 1.0 : 0.0;
  auto const way = [&](double from, double to, double share) {
    return from < to ? between(from, to, share) : between(to, from, share);
  };
  double share = 0.125 * tolerance;
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
