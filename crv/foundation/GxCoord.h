// A point of the plane.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxVector.h"

#include <cmath>
#include <cstddef>
#include <tuple>
#include <type_traits>

/// A 2D point with coordinates of type T, x to the right and y up, compiled once for double. No
/// operation fails; NaN and infinity propagate.
template <class T>
class GxCoord {
 public:
  /// The origin.
  GxCoord() : x_(), y_() {}
  /// The point (x, y).
  GxCoord(T const& x, T const& y) : x_(x), y_(y) {}
  /// A copy.
  GxCoord(GxCoord const& p) = default;
  /// Copies both coordinates.
  GxCoord& operator=(GxCoord const& p) = default;
  virtual ~GxCoord() = default;

  /// The x coordinate.
  T xval() const { return x_; }
  /// The y coordinate.
  T yval() const { return y_; }
  /// The x coordinate, modifiable.
  T& xval() { return x_; }
  /// The y coordinate, modifiable.
  T& yval() { return y_; }

  /// 1 when both coordinates are equal, exactly; isEqual (lines.h) takes a tolerance.
  int operator==(GxCoord const& p) const { return x_ == p.x_ && y_ == p.y_; }
  /// The opposite of ==.
  int operator!=(GxCoord const& p) const { return !(*this == p); }

  /// The vector from p to this point.
  GxVector<T> operator-(GxCoord const& p) const { return GxVector<T>(x_ - p.x_, y_ - p.y_); }
  /// The point moved by v.
  GxCoord operator+(GxVector<T> const& v) const { return GxCoord(x_ + v.xval(), y_ + v.yval()); }
  /// Moves this point by v.
  GxCoord& operator+=(GxVector<T> const& v) {
    x_ += v.xval();
    y_ += v.yval();
    return *this;
  }

  /// The distance between two points.
  T distance(GxCoord const& p) const { return std::sqrt(squaredDistance(p)); }

  /// The square of the distance, dx*dx + dy*dy, which suffices for comparisons.
  T squaredDistance(GxCoord const& p) const {
    T const dx = x_ - p.x_;
    T const dy = y_ - p.y_;
    return dx * dx + dy * dy;
  }

  /// Turns the point in place about a centre by an angle in radians, counter-clockwise positive.
  void rotate(double angle, GxCoord const& centre) {
    T const c = std::cos(angle);
    T const s = std::sin(angle);
    T const dx = x_ - centre.x_;
    T const dy = y_ - centre.y_;
    T const cx = centre.x_;
    T const cy = centre.y_;
    // Exact form: adding dy * -s gives the bits of subtracting dy * s and keeps gcc from emitting a
    // fused add-subtract, which -ffp-contract=off does not prevent.
    x_ = cx + (dx * c + dy * -s);
    y_ = cy + (dx * s + dy * c);
  }

  /// Multiplies x by sx and y by sy, about the origin.
  void scale(double sx, double sy) {
    x_ *= sx;
    y_ *= sy;
  }

  /// Coordinate 0 or 1, so that a point can be taken apart: auto [x, y] = p.
  template <std::size_t I>
  T get() const {
    static_assert(I < 2);
    return I == 0 ? x_ : y_;
  }

 private:
  T x_;
  T y_;
};

/// The point moved by -v. This operator and the next one are declared outside the class, so that a
/// program's own operators are preferred.
template <class T>
GxCoord<T> operator-(GxCoord<T> const& p, GxVector<T> const& v) {
  return GxCoord<T>(p.xval() - v.xval(), p.yval() - v.yval());
}
/// Moves p by -v.
template <class T>
GxCoord<T>& operator-=(GxCoord<T>& p, GxVector<T> const& v) {
  return p = p - v;
}

/// A point has two coordinates.
template <class T>
struct std::tuple_size<GxCoord<T>> : std::integral_constant<std::size_t, 2> {};
template <std::size_t I, class T>
struct std::tuple_element<I, GxCoord<T>> {
  /// The type of a coordinate.
  using type = T;
};

// Programs instantiate the class themselves, and the loader makes the library use the same virtual
// table. The compiler of a program then sees that the destructor in the table does nothing, and
// destroys a vector of points without a call for each.
#if defined(CRV_EXPORTS)
CRV_EXTERN_TEMPLATE(GxCoord<double>);
#endif
