// Pieces of the polynomial f whose sign changes are the local minima of a distance; see foot.cpp.
#pragma once

#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

// The parameter at which a piece is divided. It is not the middle, because the roots of symmetric
// input lie there.
constexpr double kHalving = 15.0 / 32.0;

/// The Bernstein coefficients of f over the parameters from start to start + width.
struct FootPiece {
  double f[6];
  double start;
  double width;
  double squaredDistance;  // D at the start
  bool isLast;             // it ends where the cubic does

  /// Returns D at the end, and stores the least Bernstein coefficient of D over the piece.
  double squaredDistanceAtEnd(double& least) const {
    double d = squaredDistance;
    least = d;
    for (double const coefficient : f) {
      d += coefficient * width;
      least = min(least, d);
    }
    return d;
  }

  /// Divides the piece by de Casteljau's triangle: stores the first part, and becomes the second.
  void cut(FootPiece& first) {
    for (int r = 0; r < 5; ++r) {
      first.f[r] = f[0];
      for (int k = 0; k < 5 - r; ++k) f[k] += (f[k + 1] - f[k]) * kHalving;
    }
    first.f[5] = f[0];
    first.start = start;
    first.width = width * kHalving;
    first.squaredDistance = squaredDistance;
    first.isLast = false;
    start += first.width;
    width *= 1.0 - kHalving;
    double least = 0.0;
    squaredDistance = first.squaredDistanceAtEnd(least);
  }
};

/// The errors of coefficients of f.
struct FootNoise {
  double inside, atStart, atEnd;
};

/// The signs of the coefficients of f, as bit sets of indices; coefficients within the noise are in
/// neither set.
struct FootSigns {
  unsigned negative = 0;
  unsigned positive = 0;
  bool areCertain = false;

  FootSigns(FootPiece const& piece, FootNoise const& noise) {
    for (unsigned k = 0; k < 6; ++k) {
      negative |= static_cast<unsigned>(piece.f[k] < -noise.inside) << k;
      positive |= static_cast<unsigned>(piece.f[k] > noise.inside) << k;
    }
    if (piece.start == 0.0) setEnd(0, piece.f[0], noise.atStart);
    if (piece.isLast) setEnd(5, piece.f[5], noise.atEnd);
    areCertain = (negative | positive | vanishing_) == 63U;
  }

  int of(unsigned k) const {
    return static_cast<int>((positive >> k) & 1U) - static_cast<int>((negative >> k) & 1U);
  }
  bool areNone() const { return (negative | positive) == 0; }
  bool riseOnce() const { return isBelow(negative, positive); }
  bool neverRise() const { return negative == 0 || positive == 0 || isBelow(positive, negative); }

 private:
  /// At the ends of the cubic f is a single product. It may be zero where a handle is retracted;
  /// that is no reason to divide the piece, because the ends are candidates in any case.
  void setEnd(unsigned k, double f, double noise) {
    negative |= static_cast<unsigned>(f < -noise) << k;
    positive |= static_cast<unsigned>(f > noise) << k;
    vanishing_ |= static_cast<unsigned>(std::fabs(f) <= noise) << k;
  }

  /// True when both sets are non-empty and all elements of low are less than all elements of high.
  static bool isBelow(unsigned low, unsigned high) {
    return low != 0 && high != 0 && low < (high & (0U - high));
  }

  unsigned vanishing_ = 0;
};

}  // namespace crv::internal
