// How many chords a stretch of a cubic needs, and how far each of them is from it.
#pragma once

#include "crv/accurate/internal/scale.h"
#include "crv/bezier/internal/cubic.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace crv::internal {

// Relative to the largest coordinate: below this a chord is too short for its direction to be
// exact, and its distance is measured by control points.
constexpr double kShortChord = 0x1p-36;

// Stretches between samples of the density of chords: for segments that can need many, and for
// others.
constexpr int kSamples = 16;
constexpr int kFewSamples = 8;
constexpr double kManyChords = 32.0;

// Relative: the density is only sampled, so a chord more than this many are planned.
constexpr double kReserve = 0.01;

// Vertices that are placed and measured at a time, in loops that need no branches.
constexpr std::size_t kBatch = 64;

// Of the cross product of velocity and acceleration, relative to the squares of their coefficients.
constexpr double kTurnNoise = 32 * kRounding;

// What the difference of the second derivatives at the ends adds to the distance in the middle of a
// stretch, at most, over their sum: 4/3 of the largest (1 - s) s (s - 1/2), rounded up.
constexpr double kSkewShare = 0.0642;

constexpr double kUnknown = std::numeric_limits<double>::infinity();

/// A third of the velocity of a cubic, e0 + e1 t + e2 t^2, and its cross product with its
/// derivative, c0 + c1 t + c2 t^2.
struct Velocity {
  Point e0, e1, e2;
  double c0, c1, c2;

  explicit Velocity(Cubic const& c) : e0(c.p[1] - c.p[0]) {
    Point const middle = c.p[2] - c.p[1];
    Point const last = c.p[3] - c.p[2];
    e1 = (middle - e0) * 2.0;
    e2 = (last - middle) - (middle - e0);
    c0 = cross(e0, e1);
    c1 = 2.0 * cross(e0, e2);
    c2 = cross(e1, e2);
  }
  Velocity() = default;

  Point at(double t) const { return e0 + (e1 + e2 * t) * t; }
  double turn(double t) const { return c0 + (c1 + c2 * t) * t; }
};

/// Bounds the distances of stretches of a cubic from their chords.
struct ChordError {
  double c0, c1, c2;
  double turnNoise;     // of c0 + c1 t + c2 t^2
  double acceleration;  // the square of half the largest second derivative
  double shortest;      // the square of the shortest chord

  ChordError() = default;
  ChordError(Velocity const& v, double magnitude) : c0(v.c0), c1(v.c1), c2(v.c2) {
    double const squares = dot(v.e0, v.e0) + dot(v.e1, v.e1) + dot(v.e2, v.e2);
    turnNoise = kTurnNoise * squares;
    Point const last = v.e1 + v.e2 * 2.0;
    acceleration = 2.25 * max(dot(v.e1, v.e1), dot(last, last));
    shortest = (kShortChord * magnitude) * (kShortChord * magnitude);
  }

  /// The square of a bound for the stretch from t0 to t1 with the chord (x, y). Where half the
  /// second derivative may be longer than the chord the stretch may leave its span, and the result
  /// is kUnknown. The second derivative across the chord, a linear function, gives the distance in
  /// the middle and, at most, how much more it is elsewhere.
  double squared(double t0, double t1, double x, double y) const {
    double const h = t1 - t0;
    double const t = 0.5 * (t0 + t1);
    double const hh = h * h;
    double const chord = x * x + y * y;
    double const turn = c0 + (c1 + c2 * t) * t;
    double const skew = c1 + 2.0 * (c2 * t);
    double const middle = std::fabs(turn - hh * (c2 * (1.0 / 12.0))) + turnNoise;
    double const area = 1.125 * (hh * h) * (middle + kSkewShare * std::fabs(h * skew));
    bool const isKnown = hh * hh * acceleration + shortest <= chord;
    return isKnown ? area * area / chord : kUnknown;
  }
};

/// One over the square root of a number, to a fifth of a per cent; large, and finite, for 0. Exact
/// powers of four in the number are exact powers of two in the result. From the exponent and the
/// mantissa, halved as one whole number, and a step of Newton's method.
inline double roughInverseRoot(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  bits = 0x5FE6EB50C7B537A9 - (bits >> 1);
  double y;
  std::memcpy(&y, &bits, sizeof y);
  return y * (1.5 - 0.5 * x * (y * y));
}

/// How densely the chords of a segment lie: the number of chords up to a sample, and the parameter
/// as a function of that number, a cubic polynomial between samples.
class ChordPlan {
 public:
  /// factor is 3/8 over the tolerance.
  void make(Velocity const& velocity, double factor) {
    // Where the velocity vanishes the quotient is rounding. No stretch needs more chords than the
    // second derivative asks for.
    double const most = factor * (norm(velocity.e1) + 2.0 * norm(velocity.e2));
    if (most > kManyChords * kManyChords) {
      sample<kSamples>(velocity, factor, most);
    } else {
      sample<kFewSamples>(velocity, factor, most);
    }
  }

  /// Not rounded.
  double chords() const { return sums_[count_] * (1.0 + kReserve); }

  /// Prepares for so many chords: the parameter has the slopes of the density at the samples.
  void divide(std::size_t chords) {
    share_ = sums_[count_] / static_cast<double>(chords);
    double const samples = count_;
    for (int i = 0; i < count_; ++i) {
      double const count = sums_[i + 1] - sums_[i];
      // With steeper ends it would run back.
      double const start = min(3.0, count * samples * lengths_[i]);
      double const end = min(3.0, count * samples * lengths_[i + 1]);
      inverse_[i] = count > 0.0 ? 1.0 / count : 0.0;
      linear_[i] = start;
      square_[i] = 3.0 - (start + start + end);
      cube_[i] = (start + end) - 2.0;
    }
    double const shares = share_ > 0.0 ? 1.0 / share_ : 0.0;
    for (int i = 1; i < count_; ++i) next_[i] = static_cast<int>(sums_[i] * shares) + 1;
    sample_ = 0;
  }

  /// Sets count parameters: the one after `done` chords, and those after each of the next chords.
  /// Calls must ascend.
  void setParameters(double* t, std::size_t done, std::size_t count) {
    unsigned char starts[kBatch + 1] = {};
    for (int i = 1; i < count_; ++i) {
      std::size_t const at = static_cast<std::size_t>(next_[i]) - done;
      ++starts[std::min(at, kBatch)];
    }
    double const step = 1.0 / count_;
    int sample = sample_;
    int const first = static_cast<int>(done);
    for (int i = 0; i < static_cast<int>(count); ++i) {
      sample += starts[i];
      double const z = (share_ * (first + i) - sums_[sample]) * inverse_[sample];
      double const part = z * (linear_[sample] + z * (square_[sample] + z * cube_[sample]));
      t[i] = (sample + part) * step;
    }
    sample_ = sample;
  }

 private:
  template <int kCount>
  void sample(Velocity const& given, double factor, double most) {
    Velocity const v = given;
    constexpr double kStep = 1.0 / kCount;
    double* const found = densities_ + 1;
    for (int i = 0; i <= kCount; ++i) {
      double const t = i * kStep;
      Point const at = v.at(t);
      double const speed = at.x * at.x + at.y * at.y;
      double const density = factor * std::fabs(v.turn(t)) * roughInverseRoot(speed);
      double const squared = max(0.0, min(density, most));  // 0 for NaN
      lengths_[i] = roughInverseRoot(squared);
      found[i] = squared * lengths_[i];
    }
    // One more at both ends, by a parabola.
    found[-1] = 3.0 * (found[0] - found[1]) + found[2];
    found[kCount + 1] = 3.0 * (found[kCount] - found[kCount - 1]) + found[kCount - 2];
    // The integral of the cubic polynomial through four samples, which is held near the trapezoid's
    // because the density may have a kink or a peak.
    double shares[kSamples];
    for (int i = 0; i < kCount; ++i) {
      double const two = found[i] + found[i + 1];
      double const share = (13.0 * two - (found[i - 1] + found[i + 2])) * (kStep / 24.0);
      shares[i] = min(max(share, two * (0.4 * kStep)), two * (0.625 * kStep));
    }
    sums_[0] = 0.0;
    for (int i = 0; i < kCount; ++i) sums_[i + 1] = sums_[i] + shares[i];
    count_ = kCount;
  }

  int count_ = 0;                   // stretches between samples
  double densities_[kSamples + 3];  // the first and the last beyond the ends
  double lengths_[kSamples + 1];    // of chords at the samples
  double sums_[kSamples + 1];
  double share_ = 0.0;  // of a chord
  // Between samples: one over the chords, and the polynomial in the share of them that is behind.
  double inverse_[kSamples], linear_[kSamples], square_[kSamples], cube_[kSamples];
  int next_[kSamples];  // the first vertex behind a sample
  int sample_ = 0;      // before the next vertex
};

}  // namespace crv::internal
