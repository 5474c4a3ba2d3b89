#include "crv/accurate/internal/chordPlan.h"

#include "crv/accurate/internal/vectorClones.h"

#include <cstdint>
#include <cstring>

namespace crv::internal {
namespace {

// Where the cross product of velocity and acceleration begins or ends at 0 in an interval, or
// changes its sign there, a chord has up to 1.2 times the error that its share of the integral
// suggests, so each such interval gets kExtra additional chords. A cross product counts as 0 if it
// is less than kNearZero times the one at the other end of the interval.
constexpr double kExtra = 0.15;
constexpr double kNearZero = 0.05;

// Segments whose second derivative allows more chords than this get kSamples.
constexpr double kManyChords = 64.0;

/// Approximates 1 / sqrt(x) to 0.2 %; the result for 0 is large, but finite. Multiplying x by a
/// power of four divides the result exactly by the corresponding power of two. Method: exponent and
/// mantissa, taken as one integer and halved, give a first approximation, which one Newton step
/// improves.
double roughInverseRoot(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  bits = 0x5FE6EB50C7B537A9 - (bits >> 1);
  double y;
  std::memcpy(&y, &bits, sizeof y);
  return y * (1.5 - 0.5 * x * (y * y));
}

}  // namespace

// Always inlined, so that each clone of make contains it, compiled for the clone's vector units.
template <int kCount>
[[gnu::always_inline]] inline void ChordPlan::sample(Velocity const& given, double factor,
                                                     double most) {
  Velocity const v = given;
  static_assert(kCount % 4 == 0);
  constexpr double kStep = 1.0 / kCount;
  double* const found = densities_ + 1;
  double turns[kSamples + 1];
  for (int i = 0; i <= kCount; ++i) {
    double const t = i * kStep;
    places_[i] = t;
    Point const at = v.at(t);
    double const speed = at.x * at.x + at.y * at.y;
    turns[i] = v.turn(t);
    double const density = factor * std::fabs(turns[i]) * roughInverseRoot(speed);
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
    double const larger = max(turns[i] * turns[i], turns[i + 1] * turns[i + 1]);
    double const extra = turns[i] * turns[i + 1] < kNearZero * larger ? kExtra : 0.0;
    shares[i] = min(max(share, two * (0.4 * kStep)), two * (0.625 * kStep)) + extra;
  }
  sums_[0] = 0.0;
  for (int i = 0; i < kCount; i += 4) {  // so that few additions depend on the one before
    double const before = sums_[i];
    double const two = shares[i] + shares[i + 1];
    sums_[i + 1] = before + shares[i];
    sums_[i + 2] = before + two;
    sums_[i + 3] = before + (two + shares[i + 2]);
    sums_[i + 4] = before + (two + (shares[i + 2] + shares[i + 3]));
  }
  count_ = kCount;
}

CRV_VECTOR_CLONES std::size_t ChordPlan::make(Velocity const& velocity, double factor) {
  // Where the velocity vanishes, the quotient is only rounding errors. The second derivative
  // bounds the number of chords that any stretch needs.
  double const most = factor * (norm(velocity.e1) + 2.0 * norm(velocity.e2));
  if (most > kManyChords * kManyChords) {
    sample<kSamples>(velocity, factor, most);
  } else {
    sample<kFewSamples>(velocity, factor, most);
  }
  // Rounded up without std::ceil, which is a call on processors without an instruction for it.
  double const planned = sums_[count_] * (1.0 + kReserve);
  auto const below = static_cast<std::int64_t>(planned);
  bool const isBelow = static_cast<double>(below) < planned || below == 0;
  return static_cast<std::size_t>(isBelow ? below + 1 : below);
}

CRV_VECTOR_CLONES void ChordPlan::divide(std::size_t chords) {
  share_ = sums_[count_] / static_cast<double>(chords);
  double const samples = count_;
  double const step = 1.0 / samples;
  for (int i = 0; i < count_; ++i) {
    double const count = sums_[i + 1] - sums_[i];
    // With steeper ends the parameter would run back.
    double const start = min(3.0, count * samples * lengths_[i]);
    double const end = min(3.0, count * samples * lengths_[i + 1]);
    inverse_[i] = count > 0.0 ? 1.0 / count : 0.0;
    linear_[i] = start * step;
    square_[i] = (3.0 - (start + start + end)) * step;
    cube_[i] = ((start + end) - 2.0) * step;
  }
  double const shares = share_ > 0.0 ? 1.0 / share_ : 0.0;
  for (int i = 1; i < count_; ++i) next_[i] = static_cast<int>(sums_[i] * shares) + 1;
  sample_ = 0;
}

}  // namespace crv::internal
