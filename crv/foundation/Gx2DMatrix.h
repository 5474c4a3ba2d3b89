// Matrices of the plane.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

#include <cmath>

/// The base of matrices, whose elements are addressed by row and column, both counted from 0.
template <class T>
class GxMatrix {
 public:
  virtual ~GxMatrix() = default;

  /// Sets one element. A row or column outside the matrix changes nothing.
  void set(int row, int col, T const& value) {
    if (T* const e = element(row, col)) *e = value;
  }

 protected:
  /// Only derived classes create matrices.
  GxMatrix() = default;
  /// Copies, for derived classes.
  GxMatrix(GxMatrix const&) = default;
  /// Assigns, for derived classes.
  GxMatrix& operator=(GxMatrix const&) = default;

  /// Returns the address of an element, or null when it lies outside the matrix.
  virtual T* element(int row, int col) = 0;
};

/// A 2x2 matrix. The library contains the instance for double.
template <class T>
class Gx2DMatrix : public GxMatrix<T> {
 public:
  /// Sets all elements to 0.
  Gx2DMatrix() : e_{{T(), T()}, {T(), T()}} {}

  /// Stores the inverse in result, which may be this matrix, and returns 1. Returns 0, with result
  /// untouched, when the determinant is 0 or not finite.
  int invert(Gx2DMatrix& result) const {
    T const det = e_[0][0] * e_[1][1] - e_[0][1] * e_[1][0];
    if (det == T(0) || !std::isfinite(det)) return 0;
    Gx2DMatrix inverse;
    inverse.e_[0][0] = e_[1][1] / det;
    inverse.e_[0][1] = -e_[0][1] / det;
    inverse.e_[1][0] = -e_[1][0] / det;
    inverse.e_[1][1] = e_[0][0] / det;
    result = inverse;
    return 1;
  }

  /// Returns the product of the matrix and the column (x, y) as a point.
  GxCoord<T> operator*(GxCoord<T> const& p) const {
    return GxCoord<T>(e_[0][0] * p.xval() + e_[0][1] * p.yval(),
                      e_[1][0] * p.xval() + e_[1][1] * p.yval());
  }

 protected:
  T* element(int row, int col) override {
    bool const inside = row >= 0 && row < 2 && col >= 0 && col < 2;
    return inside ? &e_[row][col] : nullptr;
  }

 private:
  T e_[2][2];
};

CRV_EXTERN_TEMPLATE(GxMatrix<double>);
CRV_EXTERN_TEMPLATE(Gx2DMatrix<double>);
