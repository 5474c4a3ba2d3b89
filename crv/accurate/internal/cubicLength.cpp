// The speed is the root of g, a polynomial of degree 4. Where the Chebyshev expansion of g over a
// piece stays away from 0 on the ellipse with foci at the ends and semiaxes adding up to rho, the
// speed is analytic there and Gauss-Legendre quadrature with n nodes is off by less than
// 64 / 15 M rho^(-2n) / (1 - rho^-2), M being the largest deviation of the speed from a constant on
// the ellipse (Trefethen, Approximation Theory and Approximation Practice, chapter 19). The fewest
// nodes serve; a piece that needs more than 16 is halved.
#include "crv/accurate/internal/cubicLength.h"

#include "crv/accurate/internal/scale.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace crv::internal {
namespace {

// Relative to the bound of the length: what is kept for rounding, and the least that the method is
// asked for. The bound is at most six times the length, so that both stay below 64 u L.
constexpr double kRoundingShare = 5 * kRounding;

// Halvings of a piece; the length of one so small is far below rounding.
constexpr int kMaxDepth = 60;

// Steps for the parameter at a length, more than bisection needs, and those before it bisects.
constexpr int kMaxSteps = 130;
constexpr int kFreeSteps = 8;

struct Node {
  double x, xx, weight;
};

// Gauss-Legendre quadrature over [-1, 1]: the positive nodes, their squares, their weights.
constexpr Node kNodes[] = {
    // 4 nodes
    {0.861136311594052575, 0.741555747145809208, 0.347854845137453857},
    {0.339981043584856265, 0.115587109997047935, 0.652145154862546143},
    // 6 nodes
    {0.932469514203152028, 0.869499394918262341, 0.171324492379170345},
    {0.661209386466264514, 0.437197852751093942, 0.360761573048138608},
    {0.238619186083196909, 0.0569391159670073532, 0.467913934572691047},
    // 8 nodes
    {0.960289856497536232, 0.922156608492058729, 0.101228536290376259},
    {0.79666647741362674, 0.634677476234636644, 0.222381034453374471},
    {0.525532409916328986, 0.276184313872464441, 0.313706645877887287},
    {0.183434642495649805, 0.0336482680675068533, 0.362683783378361983},
    // 12 nodes
    {0.981560634246719251, 0.963461278702821764, 0.0471753363865118272},
    {0.904117256370474857, 0.817428013266874958, 0.106939325995318431},
    {0.769902674194304687, 0.592750127731541672, 0.160078328543346226},
    {0.587317954286617447, 0.344942379427417262, 0.203167426723065922},
    {0.367831498998180194, 0.135300011655248237, 0.233492536538354809},
    {0.125233408511468915, 0.015683406607400455, 0.249147045813402785},
    // 16 nodes
    {0.989400934991649933, 0.978914210162351096, 0.0271524594117540949},
    {0.944575023073232576, 0.892221974213797853, 0.0622535239386478929},
    {0.865631202387831744, 0.749317378547403321, 0.0951585116824927848},
    {0.755404408355003034, 0.570635820162172177, 0.124628971255533872},
    {0.617876244402643748, 0.38177105339711555, 0.149595988816576732},
    {0.458016777657227386, 0.209779368615510068, 0.169156519395002538},
    {0.281603550779258913, 0.0793005598114866533, 0.182603415044923589},
    {0.0950125098376374402, 0.00902737702564715135, 0.189450610455068496},
};

struct Rule {
  int first, count;  // of its positive nodes
};
constexpr Rule kRules[] = {{0, 2}, {2, 3}, {5, 4}, {9, 6}, {15, 8}};
constexpr int kRuleCount = 5;

// For each ellipse: the largest magnitude on it of the Chebyshev polynomials of degree 1 to 4,
// (rho^k + rho^-k) / 2, and for each rule 64 / 15 rho^(-2n) / (1 - rho^-2).
struct Ellipse {
  double magnitude[4];
  double decay[kRuleCount];
};
constexpr Ellipse kEllipses[] = {
    // rho = 4.5
    {{2.361111111112, 10.14969135803, 45.56798696846, 205.0324693263},
     {2.6693e-5, 6.5093e-8, 1.5874e-10, 9.4403e-16, 5.6143e-21}},
    // rho = 3
    {{1.666666666667, 4.555555555556, 13.51851851852, 40.50617283951},
     {7.3160e-4, 9.0321e-6, 1.1151e-7, 1.6996e-11, 2.5904e-15}},
    // rho = 2
    {{1.25, 2.125, 4.0625, 8.03125}, {2.2223e-2, 1.3889e-3, 8.6806e-5, 3.3909e-7, 1.3246e-9}},
    // rho = 1.5
    {{1.083333333334, 1.347222222223, 1.835648148149, 2.630015432099},
     {2.9967e-1, 5.9193e-2, 1.1693e-2, 4.5622e-4, 1.7801e-5}},
};

/// The derivative of a piece by s in [-1, 1]: m0 + m1 s + m2 s^2.
struct Hodograph {
  Point m0, m1, m2;

  Hodograph half(double side) const {
    return {(m0 + m1 * (0.5 * side) + m2 * 0.25) * 0.5, (m1 + m2 * side) * 0.25, m2 * 0.125};
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

  /// The first rule that is good enough, or -1.
  int rule(double tolerance) const {
    double const mean = c0_ + 0.5 * c2_ + 0.375 * c4_;
    double const a1 = std::fabs(c1_ + 0.75 * c3_);
    double const a2 = 0.5 * std::fabs(c2_ + c4_);
    double const a3 = 0.25 * std::fabs(c3_);
    double const a4 = 0.125 * c4_;
    double const speed = std::sqrt(mean);
    int best = kRuleCount;
    for (Ellipse const& ellipse : kEllipses) {
      double const* m = ellipse.magnitude;
      double const deviation = a1 * m[0] + a2 * m[1] + a3 * m[2] + a4 * m[3];
      if (!(deviation < mean)) continue;
      double const allowed = tolerance * mean;
      double const scale = speed * deviation;
      int rule = 0;
      while (rule < best && scale * ellipse.decay[rule] > allowed) ++rule;
      best = rule;
      if (best == 0) break;
    }
    return best < kRuleCount ? best : -1;
  }

  double quadrature(Rule const& rule) const {
    double sum = 0.0;
    for (Node const* n = kNodes + rule.first; n != kNodes + rule.first + rule.count; ++n) {
      double const even = c0_ + n->xx * (c2_ + n->xx * c4_);
      double const odd = n->x * (c1_ + n->xx * c3_);
      sum += n->weight * (std::sqrt(even + odd) + std::sqrt(even - odd));
    }
    return sum;
  }

 private:
  double c0_, c1_, c2_, c3_, c4_;
};

double length(Hodograph const& h, double tolerance, int depth) {
  SquaredSpeed const g(h);
  int const rule = g.rule(tolerance);
  if (rule >= 0) return g.quadrature(kRules[rule]);
  if (depth > 1) {
    // The length lies between chord and control polygon.
    double const polygon =
        (norm(h.m0 - h.m1 + h.m2) + norm(h.m0 - h.m2) + norm(h.m0 + h.m1 + h.m2)) * (2.0 / 3.0);
    double const chord = norm(h.m0 * 2.0 + h.m2 * (2.0 / 3.0));
    if (polygon - chord <= 2.0 * tolerance || depth >= kMaxDepth) return 0.5 * (polygon + chord);
  }
  return length(h.half(-1.0), 0.5 * tolerance, depth + 1) +
         length(h.half(1.0), 0.5 * tolerance, depth + 1);
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
                tolerance, 0);
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
