// A position on a curve: the number of the segment and the parameter inside it.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxList.h"

#include <cstddef>
#include <functional>
#include <tuple>
#include <type_traits>

/// A position on a composite curve. Normalised positions have 0 <= t < 1, so the end of a curve of
/// n segments is (n, 0.0). Comparisons work on the fields as they are. A value type.
///
/// The sense from one position to another is an int: 0 none (they coincide), 1 forward, 2 backward.
class CRV_API GxBezierCurvePosition {
 public:
  /// Makes a position that is on no curve: segment -1, t 0.0.
  GxBezierCurvePosition();

  /// Normalises: whole numbers are carried from t to the segment number, which is not checked
  /// against any curve. A t that is NaN, infinite or at least 2^53 in magnitude is stored as given.
  GxBezierCurvePosition(int segment, double t) : segment_(segment), t_(t) {
    if (!(t >= 0.0 && t < 1.0)) normalise();
  }

  /// The number of the segment.
  long getSegmentNumber() const { return segment_; }
  /// The parameter on the segment.
  double getTValue() const { return t_; }

  /// Returns 1 when both fields are equal, exactly.
  int operator==(GxBezierCurvePosition const& p) const;
  /// The opposite of ==.
  int operator!=(GxBezierCurvePosition const& p) const;

  /// Compare the fields exactly, the segment first: (n - 1, 1.0) comes before (n, 0.0), although
  /// both name one place.
  int operator<(GxBezierCurvePosition const& p) const;
  /// Before or equal.
  int operator<=(GxBezierCurvePosition const& p) const;
  /// After.
  int operator>(GxBezierCurvePosition const& p) const;
  /// After or equal.
  int operator>=(GxBezierCurvePosition const& p) const;

  /// Returns 1 when segment + t of both differ by less than |tol|. The test is strict: at a
  /// tolerance of 0 nothing is equal.
  int isEqual(GxBezierCurvePosition const& p, double tol) const;

  /// Returns the opposite sense; any value but 1 and 2 is returned as it is.
  static int reverseSense(int sense);

  /// Returns 1 when two senses are equal or one of them is 0.
  static int isCompatibleSense(int a, int b);

  /// The segment number or the parameter: auto [segment, t] = position.
  template <std::size_t I>
  auto get() const {
    static_assert(I < 2);
    if constexpr (I == 0) {
      return segment_;
    } else {
      return t_;
    }
  }

 private:
  friend class GxBezierCurvePositionConstructor;

  void normalise();

  long segment_;
  double t_;
};

/// Returns 1 when segment + t of both differ by less than tol, strictly; a negative tol gives 0.
/// The overload for two positions on a given curve, which takes the seam of a closed curve into
/// account, is in positionPredicates.h.
CRV_API int isEqual(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b, double tol);

/// A position has a segment number and a parameter.
template <>
struct std::tuple_size<GxBezierCurvePosition> : std::integral_constant<std::size_t, 2> {};
template <>
struct std::tuple_element<0, GxBezierCurvePosition> {
  /// The type of the segment number.
  using type = long;
};
template <>
struct std::tuple_element<1, GxBezierCurvePosition> {
  /// The type of the parameter.
  using type = double;
};

/// Hashes a position, for unordered containers: positions equal by == have equal hashes.
template <>
struct std::hash<GxBezierCurvePosition> {
  /// The hash of both fields.
  std::size_t operator()(GxBezierCurvePosition const& p) const noexcept {
    // The constant, 2^64 / the golden ratio, spreads the numbers of neighbouring segments.
    auto const segment = static_cast<unsigned long long>(p.getSegmentNumber());
    return static_cast<std::size_t>(segment * 0x9e3779b97f4a7c15u) ^
           std::hash<double>()(p.getTValue());
  }
};

CRV_EXTERN_TEMPLATE(GxList<GxBezierCurvePosition>);
