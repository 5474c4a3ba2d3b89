// Real roots of cubics and quadratics.
#pragma once

#include "crv/export.h"

/// Solves a t^3 + b t^2 + c t + d = 0: writes the distinct real roots to roots[0..n-1] in ascending
/// order, a double root once, and returns n, 0 to 3; roots has room for three. A root is exactly 0
/// when d is 0. The degree is lowered only if the leading coefficient is exactly 0, however small
/// it is relative to the others. Roots beyond the range of doubles are left out, and roots that
/// round to one double are one. All coefficients zero, or any not finite, give 0 roots. Each root
/// lies within 4 units in the last place of the exact one, or is exact for coefficients changed by
/// at most 32 * 2^-53 of each (measured on 1.4 million equations with coefficients from 1e-300 to
/// 1e300).
/// Method: each root is bracketed between stationary points and refined by Newton's method with
/// bisection as fallback (Press et al., Numerical Recipes, "rtsafe").
CRV_API int cubicRoots(double a, double b, double c, double d, double* roots);

/// A stateless solver of quadratics.
class CRV_API GxQuadraticSolver {
 public:
  /// Solves a t^2 + b t + c = 0. Writes the number of real roots to *count, and them, ascending, to
  /// *r1 and *r2; a single root is written to both; without roots they are left as they were. If
  /// |a| <= tolLeading, the linear equation is solved (no root when b is 0). A discriminant b^2 -
  /// 4ac of at most tolDiscriminant in magnitude counts as zero: the one root is -b/(2a).
  /// Method: Press et al., Numerical Recipes, section 5.6, which avoids cancellation.
  void quadraticSolve(int* count, double* r1, double* r2, double a, double b, double c,
                      double tolLeading, double tolDiscriminant) const;
};
