// The roots of a cubic in an interval.
#pragma once

#include <array>

namespace crv::internal {

struct Interval {
  double lo, hi;
};

/// Does the same as cubicRoots, with the same bits, but may leave out roots outside an interval, so
/// that they need not be refined.
int cubicRootsIn(Interval const& wanted, double a, double b, double c, double d, double* roots);

// Relative to the largest coefficient: above it no product of coefficients and roots over- or
// underflows, and below it a coefficient has no influence on the roots near 1.
constexpr double kSmallestCoefficient = 0x1p-300;

/// The roots of a cubic whose non-zero coefficients all exceed kSmallestCoefficient times the
/// largest one, whose square does not overflow.
int rootsOfSimilarTerms(double a, double b, double c, double d, double* roots);

/// The coefficients of a cubic, the constant term first.
using Coefficients = std::array<double, 4>;

/// The roots of a cubic whose non-zero coefficients may have any magnitudes.
int wideRangeRoots(Coefficients const& coefficients, double* roots);

/// Puts a root in its place among n ascending ones and returns how many there are then. A root that
/// is there already, or that would be a fourth one, is left out.
inline int insertRoot(double* roots, int n, double root) {
  int at = 0;
  while (at < n && roots[at] < root) ++at;
  if (n == 3 || (at < n && roots[at] == root)) return n;
  for (int i = n; i > at; --i) roots[i] = roots[i - 1];
  roots[at] = root;
  return n + 1;
}

}  // namespace crv::internal
