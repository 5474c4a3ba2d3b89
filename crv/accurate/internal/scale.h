// The magnitude of the coordinates of all arguments, and the tolerances that follow from it.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace crv::internal {

// Curve units: within these bounds, all squares and fourth powers on which results depend are
// normal numbers, or are computed from scaled input.
constexpr double kSmallestMagnitude = 0x1p-500;
constexpr double kLargestMagnitude = 0x1p500;

// Relative: half the distance from 1 to the next double, the largest error of one rounding.
constexpr double kRounding = 0x1p-53;

// Relative to the largest coordinate: points nearer to each other than this count as one point.
constexpr double kDefaultResolution = 0x1p-40;

// Relative to the largest coordinate: a distance this small is only rounding errors, so that curves
// as near to each other as this are taken to meet exactly.
constexpr double kExact = 0x1p-48;

/// Collects the largest magnitude of coordinates; one that is not finite makes it NaN.
class Magnitude {
 public:
  void add(double x) {
    largest_ = max(largest_, std::fabs(x));
    unlessFinite_ += x - x;
  }
  void add(Point const& p) {
    add(p.x);
    add(p.y);
  }
  void add(Cubic const& c) {
    for (Point const& p : c.p) add(p);
  }
  double value() const { return largest_ + unlessFinite_; }

 private:
  double largest_ = 0.0;
  double unlessFinite_ = 0.0;  // 0, or NaN
};

/// A power of two and its inverse.
struct PowerOfTwo {
  double power, inverse;

  /// The largest one that is not above a positive number, and at least 2^-1022.
  static PowerOfTwo below(double x) {
    constexpr std::uint64_t kExponent = 0x7FF0000000000000;
    constexpr std::uint64_t kLeastExponent = 0x0010000000000000;
    constexpr std::uint64_t kTwiceTheExponentOfOne = 0x7FE0000000000000;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    std::uint64_t const up =
        std::clamp(bits & kExponent, kLeastExponent, kTwiceTheExponentOfOne - kLeastExponent);
    std::uint64_t const down = kTwiceTheExponentOfOne - up;
    PowerOfTwo found = {};
    std::memcpy(&found.power, &up, sizeof up);
    std::memcpy(&found.inverse, &down, sizeof down);
    return found;
  }
};

// Below this magnitude the squares of small distances would underflow, so the input is first
// multiplied by kEnlargement, to a magnitude between 2^-50 and 2^250.
constexpr double kSmallestUnscaled = 0x1p-200;
constexpr double kEnlargement = 0x1p450;

inline bool isTiny(double magnitude) { return magnitude > 0.0 && magnitude < kSmallestUnscaled; }

inline Cubic scaled(Cubic const& c, double factor) {
  return {{c.p[0] * factor, c.p[1] * factor, c.p[2] * factor, c.p[3] * factor}};
}

/// False for NaN, too.
inline bool isUsable(double magnitude) {
  return magnitude == 0.0 || (magnitude >= kSmallestMagnitude && magnitude <= kLargestMagnitude);
}

/// The caller's resolution, or the default one for 0 and anything else that is not positive.
inline double resolutionOr(double given, double magnitude) {
  return given > 0.0 ? given : kDefaultResolution * magnitude;
}

}  // namespace crv::internal
