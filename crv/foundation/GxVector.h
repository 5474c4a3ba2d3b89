// A displacement in the plane.
#pragma once

#include "crv/export.h"

#include <cmath>
#include <cstddef>
#include <tuple>
#include <type_traits>

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

  /// Component 0 or 1, so that a vector can be taken apart: auto [x, y] = v.
  template <std::size_t I>
  T get() const {
    static_assert(I < 2);
    return I == 0 ? x_ : y_;
  }

 private:
  T x_;
  T y_;
};

// ---- Operators outside the class, so that a program's own ones are preferred --------------------

/// 1 when both components are equal, exactly.
template <class T>
int operator==(GxVector<T> const& v, GxVector<T> const& w) {
  return v.xval() == w.xval() && v.yval() == w.yval();
}
/// The opposite of ==.
template <class T>
int operator!=(GxVector<T> const& v, GxVector<T> const& w) {
  return !(v == w);
}
/// The vector s times as long.
template <class T>
GxVector<T> operator*(std::common_type_t<T> const& s, GxVector<T> const& v) {
  return v * s;
}
/// Both components divided by s.
template <class T>
GxVector<T> operator/(GxVector<T> const& v, std::common_type_t<T> const& s) {
  return GxVector<T>(v.xval() / s, v.yval() / s);
}
/// Subtracts w from v.
template <class T>
GxVector<T>& operator-=(GxVector<T>& v, GxVector<T> const& w) {
  return v = v - w;
}
/// Makes v s times as long.
template <class T>
GxVector<T>& operator*=(GxVector<T>& v, std::common_type_t<T> const& s) {
  return v = v * s;
}
/// Divides both components of v by s.
template <class T>
GxVector<T>& operator/=(GxVector<T>& v, std::common_type_t<T> const& s) {
  return v = v / s;
}

/// A vector has two components.
template <class T>
struct std::tuple_size<GxVector<T>> : std::integral_constant<std::size_t, 2> {};
template <std::size_t I, class T>
struct std::tuple_element<I, GxVector<T>> {
  /// The type of a component.
  using type = T;
};

CRV_EXTERN_TEMPLATE(GxVector<double>);
