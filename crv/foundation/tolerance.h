// Comparisons with a tolerance, and the smaller and larger of two numbers.
#pragma once

#include <cmath>

/// The default zero tolerance, for coordinates (curve units) and parameters alike.
constexpr double kZeroTolerance = 1e-9;

/// 1 when n is 0, else 0.
inline int IS_ZERO(int n) { return n == 0; }

/// 1 when |x| < tol, strictly: a value on the tolerance is outside. NaN is never zero.
inline int IS_ZERO(double x, double tol) { return std::fabs(x) < tol; }

/// 1 when |a - b| < tol, strictly: a difference on the tolerance is outside. NaN equals nothing.
inline int IS_EQUAL(double a, double b, double tol) { return std::fabs(a - b) < tol; }

namespace crv {

/// The smaller argument; a when they are equal or cannot be compared. The parentheses keep macros
/// of this name away, here and below.
inline double(min)(double a, double b) { return b < a ? b : a; }
/// The smaller whole number.
inline int(min)(int a, int b) { return b < a ? b : a; }

/// The larger argument; a when they are equal or cannot be compared.
inline double(max)(double a, double b) { return a < b ? b : a; }
/// The larger whole number.
inline int(max)(int a, int b) { return a < b ? b : a; }

}  // namespace crv

// A program that defines CRV_NO_GLOBAL_NAMES keeps the global names min, max, angle, ratio and
// translate for itself, and calls crv::min and so on.
#ifndef CRV_NO_GLOBAL_NAMES
using crv::max;
using crv::min;
#endif
