// The number and distribution of the chords that a cubic needs, and bounds on the distance of each
// chord from the cubic.
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

// The number of intervals between samples of the density of chords: kSamples for segments that may
// need more than kManyChords chords, kFewSamples for others.
constexpr int kSamples = 16;
constexpr int kFewSamples = 8;
constexpr double kManyChords = 32.0;

// Relative: the density is only sampled, so this share of the planned chords is added to them.
constexpr double kReserve = 0.01;

// Vertices that are placed and measured together, in loops without branches.
constexpr std::size_t kBatch = 64;

// Bounds the rounding error of the cross product of velocity and acceleration, relative to the sum
// of the squares of their coefficients.
constexpr double kTurnNoise = 32 * kRounding;

// The second derivative in the middle of a stretch gives the distance from the chord there. Adding
// this share of the change of the second derivative along the stretch bounds the largest distance:
// 4/3 of the maximum of (1 - s) s (s - 1/2), rounded up.
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

  /// The square of a bound on the distance of the stretch from t0 to t1 from its chord (x, y). The
  /// component of the second derivative across the chord is linear in t; it gives the distance in
  /// the middle, and a bound on how much larger the distance is elsewhere. If half the second
  /// derivative may be longer than the chord, the stretch may extend beyond the ends of the chord,
  /// and the result is kUnknown.
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

/// Approximates 1 / sqrt(x) to 0.2 %; the result for 0 is large, but finite. Multiplying x by a
/// power of four divides the result exactly by the corresponding power of two. Method: exponent and
/// mantissa, taken as one integer and halved, give a first approximation, which one Newton step
/// improves.
inline double roughInverseRoot(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  bits = 0x5FE6EB50C7B537A9 - (bits >> 1);
  double y;
  std::memcpy(&y, &bits, sizeof y);
  return y * (1.5 - 0.5 * x * (y * y));
}

/// The distribution of chords along a segment: the number of chords up to each sample, and the
/// parameter as a function of that number, which is a cubic polynomial between samples.
class ChordPlan {
 public:
  /// Samples the density of chords. factor is 3/8 divided by the tolerance.
  void make(Velocity const& velocity, double factor) {
    // Where the velocity vanishes, the quotient is only rounding errors. The second derivative
    // bounds the number of chords that any stretch needs.
    double const most = factor * (norm(velocity.e1) + 2.0 * norm(velocity.e2));
    if (most > kManyChords * kManyChords) {
      sample<kSamples>(velocity, factor, most);
    } else {
      sample<kFewSamples>(velocity, factor, most);
    }
  }

  /// The number of chords planned, not rounded.
  double chords() const { return sums_[count_] * (1.0 + kReserve); }

  /// Prepares the division into a number of chords: the interpolating polynomials have, at the
  /// samples, the slopes that the density gives.
  void divide(std::size_t chords) {
    share_ = sums_[count_] / static_cast<double>(chords);
    double const samples = count_;
    for (int i = 0; i < count_; ++i) {
      double const count = sums_[i + 1] - sums_[i];
      // With steeper ends the parameter would run back.
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

  /// Sets count parameters: those at the ends of chords number `done`, `done` + 1, ... Calls must
  /// come in ascending order.
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
    // One sample more beyond each end, extrapolated by a parabola.
    found[-1] = 3.0 * (found[0] - found[1]) + found[2];
    found[kCount + 1] = 3.0 * (found[kCount] - found[kCount - 1]) + found[kCount - 2];
    // The integral of the cubic polynomial through four samples, clamped to values near that of the
    // trapezoidal rule because the density may have a kink or a peak.
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

  int count_ = 0;                   // intervals between samples
  double densities_[kSamples + 3];  // the first and the last lie beyond the ends
  double lengths_[kSamples + 1];    // the lengths of chords at the samples, in t
  double sums_[kSamples + 1];
  double share_ = 0.0;  // the share of the density for one chord
  // For each interval: 1 / (number of chords), and the coefficients of the polynomial in the share
  // of these chords that is already used.
  double inverse_[kSamples], linear_[kSamples], square_[kSamples], cube_[kSamples];
  int next_[kSamples];  // the first vertex after each sample
  int sample_ = 0;      // the last sample before the next vertex
};

}  // namespace crv::internal
