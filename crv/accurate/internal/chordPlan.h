// The number and distribution of the chords that a cubic needs, and bounds on the distance of each
// chord from the cubic.
#pragma once

#include "crv/accurate/internal/scale.h"
#include "crv/bezier/internal/cubic.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace crv::internal {

// Relative to the largest coordinate: below this a chord is too short for its direction to be
// exact, and its distance is measured by control points.
constexpr double kShortChord = 0x1p-36;

// The number of intervals between samples of the density of chords: kSamples for segments that may
// need many chords, kFewSamples for others.
constexpr int kSamples = 24;
constexpr int kFewSamples = 8;

// Relative: the density is only sampled, so this share of the planned chords is added to them.
constexpr double kReserve = 0.005;

// Vertices that are placed and measured together, in loops without branches.
constexpr std::size_t kBatch = 64;

// Bounds the rounding error of the cross product of velocity and acceleration, relative to the sum
// of the squares of their coefficients.
constexpr double kTurnNoise = 32 * kRounding;

// The component of the second derivative across the chord is linear. If it is g in the middle, g -
// d at the start and g + d at the end, the distance from the chord is g s (1 - s) / 2 times 1 + e
// (2 s - 1), where e is d / (3 g). The maximum over s is at most sqrt(g^2 + d^2 / 18) / 8, because
// 4 s (1 - s) |1 + e (2 s - 1)| is at most sqrt(1 + e^2 / 2). This is sqrt(1 / 18) / 2, the factor
// of 2 d.
constexpr double kSkewShare = 0.117851130197757931;

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
  /// component of the second derivative across the chord gives it. If half the second derivative
  /// may be longer than the chord, the stretch may extend beyond the ends of the chord, and the
  /// result is kUnknown.
  double squared(double t0, double t1, double x, double y) const {
    double const hh = (t1 - t0) * (t1 - t0);
    double const chord = x * x + y * y;
    double const across = squaredAcross(t0, t1, chord);
    return hh * hh * acceleration + shortest <= chord ? across : kUnknown;
  }

  /// The square of a bound on the distance of the same stretch from the line through its ends.
  /// squaredChord is the square of the distance of the ends.
  double squaredAcross(double t0, double t1, double squaredChord) const {
    double const h = t1 - t0;
    double const t = 0.5 * (t0 + t1);
    double const hh = h * h;
    double const turn = c0 + (c1 + c2 * t) * t;
    double const skew = c1 + 2.0 * (c2 * t);
    double const middle = std::fabs(turn - hh * (c2 * (1.0 / 12.0))) + turnNoise;
    double const side = kSkewShare * std::fabs(h * skew) + turnNoise;
    return 1.265625 * (hh * hh * hh) * (middle * middle + side * side) / squaredChord;
  }
};

/// The distribution of chords along a segment: the number of chords up to each sample, and the
/// parameter as a function of that number, which is a cubic polynomial between samples.
class ChordPlan {
 public:
  /// Samples the density of chords, and returns the number of chords planned. factor is 3/8 divided
  /// by the tolerance.
  std::size_t make(Velocity const& velocity, double factor);

  /// Prepares the division into a number of chords: the interpolating polynomials have, at the
  /// samples, the slopes that the density gives.
  void divide(std::size_t chords);

  /// Sets count parameters: those at the ends of chords number `done`, `done` + 1, ... Calls must
  /// come in ascending order.
  void setParameters(double* t, std::size_t done, std::size_t count) {
    unsigned char starts[kBatch + 1] = {};
    for (int i = 1; i < count_; ++i) {
      std::size_t const at = static_cast<std::size_t>(next_[i]) - done;
      ++starts[std::min(at, kBatch)];
    }
    int sample = sample_;
    auto chord = static_cast<double>(done);
    for (std::size_t i = 0; i < count; ++i) {
      sample += starts[i];
      double const z = (share_ * chord - sums_[sample]) * inverse_[sample];
      double const part = z * (linear_[sample] + z * (square_[sample] + z * cube_[sample]));
      t[i] = places_[sample] + part;
      chord += 1.0;
    }
    sample_ = sample;
  }

 private:
  template <int kCount>
  void sample(Velocity const& given, double factor, double most);

  int count_ = 0;                   // intervals between samples
  double densities_[kSamples + 3];  // the first and the last lie beyond the ends
  double lengths_[kSamples + 1];    // the lengths of chords at the samples, in t
  double sums_[kSamples + 1];
  double places_[kSamples + 1];  // the parameters of the samples
  double share_ = 0.0;           // the share of the density for one chord
  // For each interval: 1 / (number of chords), and the coefficients of the polynomial in the share
  // of these chords that is already used.
  double inverse_[kSamples], linear_[kSamples], square_[kSamples], cube_[kSamples];
  int next_[kSamples];  // the first vertex after each sample
  int sample_ = 0;      // the last sample before the next vertex
};

}  // namespace crv::internal
