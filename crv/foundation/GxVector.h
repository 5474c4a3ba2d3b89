// A displacement in the plane.
#pragma once

#include "crv/export.h"

#include <cmath>

/// A 2D vector with components of type T, compiled once for double. No operation fails; NaN and
/// infinity propagate.
template <class T>
class GxVector {
 public:
  GxVector() : x_(), y_() {}
  /// The vector (x, y).
  GxVector(T const& x, T const& y) : x_(x), y_(y) {}

  /// The x component.
  T xval() const { return x_; }
  /// The y component.
  T yval() const { return y_; }
  /// The x component, modifiable.
  T& xval() { return x_; }
  /// The y component, modifiable.
  T& yval() { return y_; }

  /// The sum.
  GxVector operator+(GxVector const& v) const { return GxVector(x_ + v.x_, y_ + v.y_); }
  /// The difference.
  GxVector operator-(GxVector const& v) const { return GxVector(x_ - v.x_, y_ - v.y_); }
  /// The opposite vector.
  GxVector operator-() const { return GxVector(-x_, -y_); }
  /// Adds v to this vector.
  GxVector& operator+=(GxVector const& v) {
    x_ += v.x_;
    y_ += v.y_;
    return *this;
  }

  /// The vector s times as long.
  GxVector operator*(T const& s) const { return GxVector(x_ * s, y_ * s); }

  /// The dot product, x1*x2 + y1*y2.
  T operator*(GxVector const& v) const { return x_ * v.x_ + y_ * v.y_; }

  /// The z component of the cross product, x1*y2 - y1*x2: positive when v lies to the left.
  T cross(GxVector const& v) const { return x_ * v.y_ - y_ * v.x_; }

  /// The length.
  T length() const { return std::sqrt(squaredLength()); }
  /// The square of the length.
  T squaredLength() const { return x_ * x_ + y_ * y_; }

  /// The unit vector of the same direction, each component divided by the length; a vector whose
  /// length is 0 is returned as it is.
  GxVector normalize() const {
    T const l = length();
    return l == T(0) ? *this : GxVector(x_ / l, y_ / l);
  }

  /// The vector turned by a right angle: to the left, (-y, x), for turn >= 1, else to the right,
  /// (y, -x).
  GxVector ortho(int turn) const { return turn < 1 ? GxVector(y_, -x_) : GxVector(-y_, x_); }

 private:
  T x_;
  T y_;
};

extern template class CRV_API GxVector<double>;
