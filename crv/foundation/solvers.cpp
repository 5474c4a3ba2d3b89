// Real roots of polynomials up to the third degree. A cubic is monotone between its stationary
// points, so each sign change there brackets one root, which Newton's method refines, with
// bisection as fallback (Press et al., Numerical Recipes, "rtsafe"). Where a stationary point
// nearly touches zero, values are computed by the compensated Horner scheme (Graillat, Langlois,
// Louvet 2005), which is as accurate as doubled precision, to distinguish a close pair of roots
// from a double root and from no root.
#include "crv/foundation/solvers.h"

#include "crv/foundation/internal/solvers.h"
#include "crv/foundation/tolerance.h"

#include <cfloat>
#include <cmath>
#include <utility>

using crv::internal::insertRoot;
using crv::internal::Interval;
using crv::internal::kSmallestCoefficient;

namespace {

constexpr Interval kEverywhere = {-HUGE_VAL, HUGE_VAL};

// Relative to the sum of a polynomial's terms: rounding can hide the sign of a value below it.
constexpr double kDoubtful = 16 * DBL_EPSILON;

// Relative to the sum of terms: the same bound for compensated values; below it a value is zero.
constexpr double kTouching = 16 * DBL_EPSILON * DBL_EPSILON;

// Relative to the root: an eighth of the distance to the next double.
constexpr double kSettled = DBL_EPSILON / 8;

// Relative to the root: a longer step is not the last one, because its own rounding is then larger
// than that of the root.
constexpr double kLongStep = 16.0;

// Coefficients beyond this magnitude, or all below its inverse, are scaled before they are squared.
constexpr double kSafeMagnitude = 0x1p100;

// Guard: Newton or bisection steps for one root, more than halvings over the range of doubles.
// Trials with coefficients of all magnitudes took 600 at most.
constexpr int kMaxSteps = 2200;

/// A product or sum and its rounding error, together exact (Dekker 1971, Knuth).
struct Exact {
  double value;
  double error;
};

Exact exactProduct(double a, double b) {
  constexpr double kSplitter = 134217729.0;  // 2^27 + 1
  double const ta = kSplitter * a;
  double const aHigh = ta - (ta - a);
  double const aLow = a - aHigh;
  double const tb = kSplitter * b;
  double const bHigh = tb - (tb - b);
  double const bLow = b - bHigh;
  double const p = a * b;
  return {p, aLow * bLow - (((p - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow)};
}

Exact exactSum(double a, double b) {
  double const s = a + b;
  double const bPart = s - a;
  return {s, (a - (s - bPart)) + (b - bPart)};
}

struct Cubic {
  double a, b, c, d;
  bool careful;  // roots are refined by compensated values
  Interval wanted;

  double slope(double t) const { return (3.0 * a * t + 2.0 * b) * t + c; }
  double secondDerivative(double t) const { return 6.0 * a * t + 2.0 * b; }
  double plainValue(double t) const { return ((a * t + b) * t + c) * t + d; }

  /// The sum of the magnitudes of the terms at t, to which rounding errors are relative.
  double magnitude(double t) const {
    double const s = std::fabs(t);
    return ((std::fabs(a) * s + std::fabs(b)) * s + std::fabs(c)) * s + std::fabs(d);
  }

  double compensatedValue(double t) const {
    double const rest[3] = {b, c, d};
    double value = a;
    double error = 0.0;
    for (double const k : rest) {
      Exact const product = exactProduct(value, t);
      Exact const sum = exactSum(product.value, k);
      value = sum.value;
      error = error * t + (product.error + sum.error);
    }
    return value + error;
  }

  /// The sign at t, or 0 where rounding can hide it.
  int certainSign(double t) const {
    double const v = plainValue(t);
    return std::fabs(v) < kDoubtful * magnitude(t) ? 0 : (v > 0.0) - (v < 0.0);
  }
};

/// True when the error that remains after a Newton step from x to next is below rounding:
/// step^2 f''/2f', step^3 f'''/3f' where the former vanishes, and the rounding of x itself.
bool isLastStep(Cubic const& f, double x, double next, double slope) {
  double const step = std::fabs(next - x);
  double const curvature = std::fabs(f.secondDerivative(x)) + step * std::fabs(6.0 * f.a);
  return (step <= kLongStep * std::fabs(next)) &
         (step * step * curvature < kSettled * std::fabs(next * slope));
}

/// The root between lo and hi, where the cubic has opposite signs: negative at lo if it is rising.
template <bool careful>
double refinedRoot(Cubic const& f, double lo, double hi, bool rising, double start) {
  double x = start > lo && start < hi ? start : lo + 0.5 * (hi - lo);
  double lastStep = hi - lo;
  for (int i = 0; i < kMaxSteps; ++i) {
    double const v = careful ? f.compensatedValue(x) : f.plainValue(x);
    if (v == 0.0) return x;
    bool const isBeyondRoot = (v > 0.0) == rising;
    if (isBeyondRoot) {
      hi = x;
    } else {
      lo = x;
    }
    double const slope = f.slope(x);
    double next = x - v / slope;
    if (next == x) return x;
    bool const tooSlow = std::fabs(2.0 * v) > std::fabs(lastStep * slope);
    if (tooSlow | !((next > lo) & (next < hi))) {
      next = lo + 0.5 * (hi - lo);
      if (next == lo || next == hi) return x;
    } else if (isLastStep(f, x, next, slope)) {
      return next;
    }
    lastStep = std::fabs(next - x);
    x = next;
  }
  return x;
}

/// Returns false if the root between lo and hi certainly lies outside the wanted interval: the
/// bracket does, or the sign at an end of the interval tells that the root lies beyond.
bool mayBeWanted(Cubic const& f, double lo, double hi, bool rising) {
  Interval const& wanted = f.wanted;
  int const signBelow = rising ? -1 : 1;
  if (hi < wanted.lo || wanted.hi < lo) return false;
  if (lo < wanted.lo && f.certainSign(wanted.lo) == -signBelow) return false;
  return !(wanted.hi < hi && f.certainSign(wanted.hi) == signBelow);
}

/// Appends the root between lo and hi to n others, if it may be wanted, and returns their number.
int appendRoot(Cubic const& f, double lo, double hi, bool rising, double start, double* roots,
               int n) {
  if (!mayBeWanted(f, lo, hi, rising)) return n;
  roots[n] = f.careful ? refinedRoot<true>(f, lo, hi, rising, start)
                       : refinedRoot<false>(f, lo, hi, rising, start);
  return n + 1;
}

int linearRoots(double c, double d, double* roots) {
  if (c == 0.0) return 0;
  roots[0] = -d / c + 0.0;
  return 1;
}

/// The distinct real roots of b t^2 + c t + d, ascending; a zero root is +0.
int quadraticRoots(double b, double c, double d, double* roots) {
  if (b == 0.0) return linearRoots(c, d, roots);
  Exact const square = exactProduct(c, c);
  Exact const product = exactProduct(4.0 * b, d);
  double const discriminant = (square.value - product.value) + (square.error - product.error);
  if (discriminant < 0.0) return 0;
  if (discriminant == 0.0) {
    roots[0] = -c / (2.0 * b) + 0.0;
    return 1;
  }
  double const q = -0.5 * (c + std::copysign(std::sqrt(discriminant), c));
  double const r1 = q / b + 0.0;
  double const r2 = d / q + 0.0;
  roots[0] = min(r1, r2);
  roots[1] = max(r1, r2);
  return 2;
}

/// The roots of a cubic without a constant term: 0 and the roots of the remaining quadratic.
int rootsWithZero(double a, double b, double c, double* roots) {
  int const n = quadraticRoots(a, b, c, roots);
  return insertRoot(roots, n, 0.0);
}

/// The sign of the cubic at its stationary point t; 0 means that t is a double root.
int signAtStationaryPoint(Cubic& f, double t) {
  double v = f.plainValue(t);
  double const terms = f.magnitude(t);
  if (std::fabs(v) < kDoubtful * terms) {
    f.careful = true;
    v = f.compensatedValue(t);
    if (std::fabs(v) <= kTouching * terms) return 0;
  }
  return (v > 0.0) - (v < 0.0);
}

/// The starting values of Newton's method for a cubic with stationary points at -1 and 1: the roots
/// of u^3 - 3u + 2k, ascending, to 2e-4 where there are three of them, |k| <= 1.
struct Starts {
  double u[3];

  explicit Starts(double k) {
    // 2 sin(asin(k)/3) as a polynomial in sqrt(1 - |k|), exact at 0 and 1.
    double const w = std::sqrt(max(0.0, 1.0 - std::fabs(k)));
    double const q = 0.18311158 + w * (0.08469496 + w * (-0.02068827 + w * 0.08519288));
    double const middle = std::copysign((1.0 - w) * (1.0 + w * q), k);
    double const root = std::sqrt(12.0 - 3.0 * middle * middle);
    u[0] = 0.5 * (-middle - root);
    u[1] = middle;
    u[2] = 0.5 * (-middle + root);
  }
};

/// The roots of a cubic with two stationary points, each of them between two neighbouring roots.
int rootsAroundStationaryPoints(Cubic& f, double const stationary[2], double bound, double* roots) {
  double const inflection = -f.b / (3.0 * f.a);
  bool const rising = f.a > 0.0;
  int const end = rising ? 1 : -1;
  int const s0 = signAtStationaryPoint(f, stationary[0]);
  int const s1 = signAtStationaryPoint(f, stationary[1]);
  if (s0 == 0 && s1 == 0) {
    roots[0] = inflection;
    return 1;
  }
  double const r = 0.5 * (stationary[1] - stationary[0]);
  Starts const starts(f.plainValue(inflection) / (2.0 * f.a * r * r * r));
  int n = 0;
  if (s0 == end) {
    n = appendRoot(f, -bound, stationary[0], rising, inflection + starts.u[0] * r, roots, n);
  }
  if (s0 == 0) roots[n++] = stationary[0];
  if (s0 * s1 < 0) {
    double const start = inflection + starts.u[1] * r;
    n = appendRoot(f, stationary[0], stationary[1], !rising, start, roots, n);
  }
  if (s1 == 0) roots[n++] = stationary[1];
  if (s1 == -end) {
    n = appendRoot(f, stationary[1], bound, rising, inflection + starts.u[2] * r, roots, n);
  }
  return n;
}

int rootsOfCubic(Cubic& f, double* roots) {
  double stationary[2];
  double const bound =
      1.0 + max(max(std::fabs(f.b), std::fabs(f.c)), std::fabs(f.d)) / std::fabs(f.a);
  if (quadraticRoots(3.0 * f.a, 2.0 * f.b, f.c, stationary) == 2) {
    return rootsAroundStationaryPoints(f, stationary, bound, roots);
  }
  return appendRoot(f, -bound, bound, f.a > 0.0, -f.b / (3.0 * f.a), roots, 0);
}

/// The roots where all coefficients that are not 0 are of similar magnitude (see
/// kSmallestCoefficient).
int rootsAtOneScale(double a, double b, double c, double d, double* roots,
                    Interval const& wanted = kEverywhere) {
  if (a == 0.0) return quadraticRoots(b, c, d, roots);
  if (d == 0.0) return rootsWithZero(a, b, c, roots);
  Cubic f{a, b, c, d, false, wanted};
  return rootsOfCubic(f, roots);
}

double orLargest(double magnitude, double largest) {
  return magnitude == 0.0 ? largest : magnitude;
}

}  // namespace

int crv::internal::rootsOfSimilarTerms(double a, double b, double c, double d, double* roots) {
  return rootsAtOneScale(a, b, c, d, roots);
}

int cubicRoots(double a, double b, double c, double d, double* roots) {
  return crv::internal::cubicRootsIn(kEverywhere, a, b, c, d, roots);
}

int crv::internal::cubicRootsIn(Interval const& wanted, double a, double b, double c, double d,
                                double* roots) {
  double const size[4] = {std::fabs(a), std::fabs(b), std::fabs(c), std::fabs(d)};
  double const largest = max(size[0], max(max(size[1], size[2]), size[3]));
  bool const finite = std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d);
  if (!finite || largest == 0.0) return 0;
  double const least = min(min(orLargest(size[0], largest), orLargest(size[1], largest)),
                           min(orLargest(size[2], largest), orLargest(size[3], largest)));
  if (least < kSmallestCoefficient * largest)
    return crv::internal::wideRangeRoots({d, c, b, a}, roots);
  if (largest > kSafeMagnitude || largest < 1.0 / kSafeMagnitude) {
    int const scale = -std::ilogb(largest);
    return rootsAtOneScale(std::scalbn(a, scale), std::scalbn(b, scale), std::scalbn(c, scale),
                           std::scalbn(d, scale), roots);
  }
  return rootsAtOneScale(a, b, c, d, roots, wanted);
}

void GxQuadraticSolver::quadraticSolve(int* count, double* r1, double* r2, double a, double b,
                                       double c, double tolLeading, double tolDiscriminant) const {
  *count = 0;
  if (std::fabs(a) <= tolLeading) {
    if (b == 0.0) return;
    *count = 1;
    *r1 = *r2 = -c / b;
    return;
  }
  double const discriminant = b * b - 4.0 * a * c;
  if (std::fabs(discriminant) <= tolDiscriminant) {
    *count = 1;
    *r1 = *r2 = -b / (2.0 * a);
    return;
  }
  if (discriminant < 0.0) return;
  double const q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  *count = 2;
  *r1 = q / a;
  *r2 = c / q;
  if (*r2 < *r1) {
    std::swap(*r1, *r2);
  }
}
