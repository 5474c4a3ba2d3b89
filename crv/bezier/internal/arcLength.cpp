// Arc length as the length of an inscribed polyline, whose chords are halved until it settles.
// Every other point of a measurement is one of the measurement before.
#include "crv/bezier/internal/arcLength.h"

#include "crv/foundation/tolerance.h"

#include <cmath>

namespace {

using crv::internal::Cubic;
using crv::internal::Point;
using crv::internal::pointWeights;
using crv::internal::Weights;

// Curve units: two measurements this close settle the arc length.
constexpr double kLengthTolerance = 0.1;

// Chords of the first measurement, and doublings after the second, up to 327,680 chords.
constexpr int kFirstChords = 10;
constexpr int kMaxDoublings = 14;

// Chords of the longest measurement whose points are kept for the next one.
constexpr int kMaxKept = 320;

// Points computed at a time, enough to hide store-to-load latency.
constexpr int kBlock = 16;

/// The point with these weights; they are exact at t = 0 and t = 1, so those need no test.
Point blendedPoint(Cubic const& s, Weights const& w) {
  return {blended(w, s.p[0].x, s.p[1].x, s.p[2].x, s.p[3].x),
          blended(w, s.p[0].y, s.p[1].y, s.p[2].y, s.p[3].y)};
}

double chord(double dx, double dy) { return std::sqrt(dx * dx + dy * dy); }

/// Adds the chords of a block of points, at parameters (first + k)*step + startT, to sum, in order.
/// previous is the point before them, and becomes the last of them. The compiler turns the loops
/// over points and chords into vectors.
void addBlock(Cubic const& s, int first, double step, double startT, Point& previous, double& sum) {
  double x[kBlock + 1];
  double y[kBlock + 1];
  double chords[kBlock];
  x[0] = previous.x;
  y[0] = previous.y;
  for (int k = 0; k < kBlock; ++k) {
    Point const p = blendedPoint(s, pointWeights((first + k) * step + startT));
    x[k + 1] = p.x;
    y[k + 1] = p.y;
  }
  for (int k = 0; k < kBlock; ++k) chords[k] = chord(x[k] - x[k + 1], y[k] - y[k + 1]);
  for (int k = 0; k < kBlock; ++k) sum += chords[k];
  previous = {x[kBlock], y[kBlock]};
}

/// The parameter that halves chord k of a measurement, where step is half the chord's.
constexpr double middleOf(int k, double step, double startT) { return (2 * k + 1) * step + startT; }

/// The weights for measurements of a whole segment: entry n + k holds those of the point that
/// halves chord k of n. Each weight has an array of its own, so that compilers can vectorise the
/// loops.
class WholeSegmentWeights {
 public:
  constexpr WholeSegmentWeights() {
    for (int n = kFirstChords; n < kMaxKept; n *= 2) {
      for (int k = 0; k < n; ++k) set(n + k, pointWeights(middleOf(k, 1.0 / (2 * n), 0.0)));
    }
  }

  constexpr Weights operator[](int i) const { return {w0_[i], w1_[i], w2_[i], w3_[i]}; }

 private:
  constexpr void set(int i, Weights const& w) {
    w0_[i] = w.w0;
    w1_[i] = w.w1;
    w2_[i] = w.w2;
    w3_[i] = w.w3;
  }

  double w0_[kMaxKept] = {};
  double w1_[kMaxKept] = {};
  double w2_[kMaxKept] = {};
  double w3_[kMaxKept] = {};
};

constexpr WholeSegmentWeights kWholeSegmentWeights;

/// The points of a measurement, at equal parameter steps from the start to the end.
struct Samples {
  double x[kMaxKept + 1];
  double y[kMaxKept + 1];

  void set(int i, Point const& p) {
    x[i] = p.x;
    y[i] = p.y;
  }
};

/// Computes the points of the first measurement and returns the sum of its chords, in order.
double measureFirst(Cubic const& s, double startT, Samples& samples) {
  double const step = (1.0 - startT) / kFirstChords;
  for (int i = 1; i < kFirstChords; ++i) {
    samples.set(i, blendedPoint(s, pointWeights(i * step + startT)));
  }
  samples.set(0, s.point(startT));
  samples.set(kFirstChords, s.end());
  double const* const x = samples.x;
  double const* const y = samples.y;
  double sum = 0.0;
  for (int i = 0; i < kFirstChords; ++i) sum += chord(x[i] - x[i + 1], y[i] - y[i + 1]);
  return sum;
}

/// Halves each chord and returns the sum of the halves, in order. weightsOf(k) are the weights of
/// the point that halves chord k. A block of chords is computed at a time, in a loop that the
/// compiler turns into vectors.
template <class WeightsOf>
double halveChords(Cubic const& s, int chords, WeightsOf weightsOf, Samples const& known,
                   Samples& halved) {
  double sum = 0.0;
  for (int first = 0; first < chords; first += kFirstChords) {
    double const* const x = known.x + first;
    double const* const y = known.y + first;
    double before[kFirstChords];
    double after[kFirstChords];
    for (int k = 0; k < kFirstChords; ++k) {
      Point const p = blendedPoint(s, weightsOf(first + k));
      before[k] = chord(x[k] - p.x, y[k] - p.y);
      after[k] = chord(p.x - x[k + 1], p.y - y[k + 1]);
      halved.set(2 * (first + k), {x[k], y[k]});
      halved.set(2 * (first + k) + 1, p);
    }
    for (int k = 0; k < kFirstChords; ++k) {
      sum += before[k];
      sum += after[k];
    }
  }
  halved.set(2 * chords, s.end());
  return sum;
}

/// Measures with twice as many chords as the known points have.
double measureNext(Cubic const& s, double startT, int chords, Samples const& known,
                   Samples& halved) {
  if (startT == 0.0) {
    auto const weightsOf = [chords](int k) { return kWholeSegmentWeights[chords + k]; };
    return halveChords(s, chords, weightsOf, known, halved);
  }
  double const step = (1.0 - startT) / (2 * chords);
  auto const weightsOf = [=](int k) { return pointWeights(middleOf(k, step, startT)); };
  return halveChords(s, chords, weightsOf, known, halved);
}

}  // namespace

double crv::internal::chordSum(Cubic const& s, int count, double startT) {
  double const step = count > 1 ? (1.0 - startT) / count : 0.0;
  Point previous = s.point(startT);
  double sum = 0.0;
  int i = 1;
  int left = max(count, 1) - 1;  // points between the ends
  for (; left >= kBlock; left -= kBlock, i += kBlock) {
    addBlock(s, i, step, startT, previous, sum);
  }
  for (; left > 0; --left, ++i) {
    Point const next = s.point(i * step + startT);
    sum += distance(previous, next);
    previous = next;
  }
  return sum + distance(previous, s.end());
}

crv::internal::ArcLength crv::internal::measuredLength(Cubic const& s, double startT) {
  Samples samples[2];
  int chords = kFirstChords;
  double current = measureFirst(s, startT, samples[0]);
  int evaluations = chords;
  for (int i = 0; i <= kMaxDoublings; ++i) {
    double const previous = current;
    current = 2 * chords <= kMaxKept
                  ? measureNext(s, startT, chords, samples[i % 2], samples[1 - i % 2])
                  : chordSum(s, 2 * chords, startT);
    chords *= 2;
    evaluations += chords;
    if (std::fabs(current - previous) <= kLengthTolerance || std::isnan(current)) break;
  }
  return {current, evaluations};
}
