// One coordinate of a segment as a polynomial in powers of t, and its derivative.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// A t^3 + B t^2 + C t + D.
struct PowerForm {
  double a, b, c, d;
};

/// The derivative, a t^2 + b t + c.
struct Derivative {
  double a, b, c;
};

// Exact form, here and below: 3*k0 - 6*k1 + 3*k2 and 3*(k0 - 2*k1 + k2) round differently.
inline PowerForm powerForm(double k0, double k1, double k2, double k3) {
  return {-k0 + 3.0 * k1 - 3.0 * k2 + k3, 3.0 * k0 - 6.0 * k1 + 3.0 * k2, 3.0 * k1 - 3.0 * k0, k0};
}

inline Derivative derivative(double k0, double k1, double k2, double k3) {
  return {-3.0 * k0 + 9.0 * k1 - 9.0 * k2 + 3.0 * k3, 6.0 * k0 - 12.0 * k1 + 6.0 * k2,
          3.0 * k1 - 3.0 * k0};
}

inline PowerForm powerFormOfX(GxBezier const& s) {
  return powerForm(s[0].xval(), s[1].xval(), s[2].xval(), s[3].xval());
}

inline PowerForm powerFormOfY(GxBezier const& s) {
  return powerForm(s[0].yval(), s[1].yval(), s[2].yval(), s[3].yval());
}

inline Derivative derivativeOfX(GxBezier const& s) {
  return derivative(s[0].xval(), s[1].xval(), s[2].xval(), s[3].xval());
}

inline Derivative derivativeOfY(GxBezier const& s) {
  return derivative(s[0].yval(), s[1].yval(), s[2].yval(), s[3].yval());
}

}  // namespace crv::internal
