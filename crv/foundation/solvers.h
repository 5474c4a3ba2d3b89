// Real roots of cubics and quadratics.
#pragma once

#include "crv/export.h"

/// Solves a t^3 + b t^2 + c t + d = 0: writes the distinct real roots to roots[0..n-1] in ascending
/// order, a double root once, and returns n, 0 to 3; roots has room for three. A root is exactly 0
/// when d is 0. A leading coefficient no larger than 1e-16 of the others leaves the quadratic, then
/// the linear equation. All coefficients zero, or any not finite, give 0 roots.
/// Method: each root is bracketed between turning points and polished by Newton steps that fall
/// back on bisection (Press et al., Numerical Recipes, "rtsafe").
CRV_API int cubicRoots(double a, double b, double c, double d, double* roots);

/// A stateless solver of quadratics.
class CRV_API GxQuadraticSolver {
 public:
  /// Solves a t^2 + b t + c = 0. Writes the number of real roots to *count, and them, ascending, to
  /// *r1 and *r2; a single root goes to both, without roots they are left as they were. |a| <=
  /// tolLeading leaves the linear equation (no root when b is 0); a discriminant b^2 - 4ac no
  /// larger than tolDiscriminant, either way, counts as zero: one root -b/(2a).
  /// Method: Press et al., Numerical Recipes, section 5.6, which avoids cancellation.
  void quadraticSolve(int* count, double* r1, double* r2, double a, double b, double c,
                      double tolLeading, double tolDiscriminant) const;
};
