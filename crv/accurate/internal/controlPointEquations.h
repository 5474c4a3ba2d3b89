// The linear equations of a least-squares fit of one segment.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// The normal equations for the six coordinates of P1, P2 and P3, some of which may be given or
/// restricted to a line.
struct ControlPointEquations {
  double a[6][6];
  double b[6];

  /// Adds a multiple of a symmetric matrix to the block of points i and j, where i <= j.
  void add(int i, int j, double factor, double xx, double xy, double yy) {
    a[2 * i][2 * j] += factor * xx;
    a[2 * i][2 * j + 1] += factor * xy;
    a[2 * i + 1][2 * j] += factor * xy;
    a[2 * i + 1][2 * j + 1] += factor * yy;
  }

  /// Completes the blocks below the diagonal.
  void mirror() {
    for (int i = 2; i < 6; ++i) {
      for (int j = 0; j < i; ++j) a[i][j] = a[j][i];
    }
  }

  /// Gives coordinate i a fixed value.
  void set(int i, double value) {
    for (int k = 0; k < 6; ++k) {
      b[k] -= a[k][i] * value;
      a[k][i] = a[i][k] = 0.0;
    }
    a[i][i] = 1.0;
    b[i] = value;
  }

  /// Restricts coordinates i and i + 1 to the line origin + s * direction; the unknown s takes the
  /// place of coordinate i.
  void tie(int i, Point const& origin, Point const& direction) {
    for (int k = 0; k < 6; ++k) b[k] -= a[k][i] * origin.x + a[k][i + 1] * origin.y;
    for (int k = 0; k < 6; ++k) a[i][k] = a[i][k] * direction.x + a[i + 1][k] * direction.y;
    for (int k = 0; k < 6; ++k) a[k][i] = a[k][i] * direction.x + a[k][i + 1] * direction.y;
    b[i] = b[i] * direction.x + b[i + 1] * direction.y;
    for (int k = 0; k < 6; ++k) a[k][i + 1] = a[i + 1][k] = 0.0;
    a[i + 1][i + 1] = 1.0;
    b[i + 1] = 0.0;
  }

  /// Solves by the Cholesky decomposition L D L', which needs no square roots.
  bool solve(double (&x)[6]) const {
    double l[6][6];
    double d[6];
    for (int i = 0; i < 6; ++i) {
      double v[6];  // row i of L D
      x[i] = b[i];
      d[i] = a[i][i];
      for (int j = 0; j < i; ++j) {
        v[j] = a[i][j];
        for (int k = 0; k < j; ++k) v[j] -= v[k] * l[j][k];
        l[i][j] = v[j] * d[j];  // d holds reciprocals
        d[i] -= v[j] * l[i][j];
        x[i] -= l[i][j] * x[j];
      }
      if (!(d[i] > 0.0)) return false;
      d[i] = 1.0 / d[i];
    }
    for (int i = 5; i >= 0; --i) {
      x[i] *= d[i];
      for (int k = i + 1; k < 6; ++k) x[i] -= l[k][i] * x[k];
    }
    return true;
  }
};

}  // namespace crv::internal
