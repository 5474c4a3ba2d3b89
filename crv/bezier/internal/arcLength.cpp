// Arc length as the length of an inscribed polyline, whose chords are doubled until it settles.
#include "crv/bezier/internal/arcLength.h"

#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>

namespace {

using crv::internal::Cubic;
using crv::internal::Point;

// Curve units: two measurements this close settle the arc length.
constexpr double kLengthTolerance = 0.1;

// Chords of the first measurement, and doublings after the second, up to 327,680 chords.
constexpr int kFirstChords = 10;
constexpr int kMaxDoublings = 14;

// Chords of the longest measurement whose points are kept for the next one.
constexpr int kMaxKept = 320;

// Points computed at a time: the large block hides store-to-load latency; the small block takes the
// remainder.
constexpr int kBlock = 16;
constexpr int kSmallBlock = 8;

/// The point at t, without the tests for 0 and 1, where the weights are exact.
Point pointInside(Cubic const& s, double t) {
  crv::internal::Weights const w = crv::internal::pointWeights(t);
  return {crv::internal::blended(w, s.p[0].x, s.p[1].x, s.p[2].x, s.p[3].x),
          crv::internal::blended(w, s.p[0].y, s.p[1].y, s.p[2].y, s.p[3].y)};
}

/// Adds the chords of a block of points, at parameters (first + k)*step + startT, to sum, in order;
/// previous is the point before them, and becomes the last. Points and distances are made in loops
/// that the compiler turns into vectors.
template <int kCount>
void addBlock(Cubic const& s, int first, double step, double startT, Point& previous, double& sum) {
  Point const* const p = s.p;
  double x[kBlock + 1];
  double y[kBlock + 1];
  double chords[kBlock];
  x[0] = previous.x;
  y[0] = previous.y;
  for (int k = 0; k < kCount; ++k) {
    // Without the tests for 0 and 1, where the weights are exact: no distance can tell.
    crv::internal::Weights const w = crv::internal::pointWeights((first + k) * step + startT);
    x[k + 1] = crv::internal::blended(w, p[0].x, p[1].x, p[2].x, p[3].x);
    y[k + 1] = crv::internal::blended(w, p[0].y, p[1].y, p[2].y, p[3].y);
  }
  for (int k = 0; k < kCount; ++k) {
    double const dx = x[k] - x[k + 1];
    double const dy = y[k] - y[k + 1];
    chords[k] = std::sqrt(dx * dx + dy * dy);
  }
  for (int k = 0; k < kCount; ++k) sum += chords[k];
  previous = {x[kCount], y[kCount]};
}

/// The points of a measurement, at equal parameter steps from the start to the end.
struct Samples {
  double x[kMaxKept + 1];
  double y[kMaxKept + 1];

  void set(int i, Point const& p) {
    x[i] = p.x;
    y[i] = p.y;
  }
};

double chord(double dx, double dy) { return std::sqrt(dx * dx + dy * dy); }

/// The points of the first measurement.
void begin(Cubic const& s, double startT, Samples& samples) {
  double const step = (1.0 - startT) / kFirstChords;
  samples.set(0, s.point(startT));
  for (int i = 1; i < kFirstChords; ++i) samples.set(i, pointInside(s, i * step + startT));
  samples.set(kFirstChords, s.end());
}

/// Puts a point between any two known ones and returns the sum of the chords, in order.
double refine(Cubic const& s, double startT, int chords, Samples const& known, Samples& refined) {
  double const step = (1.0 - startT) / (2 * chords);
  double sum = 0.0;
  for (int i = 0; i < chords; i += kFirstChords) {
    double const* const x = known.x + i;
    double const* const y = known.y + i;
    double before[kFirstChords];
    double after[kFirstChords];
    for (int k = 0; k < kFirstChords; ++k) {
      Point const p = pointInside(s, (2 * (i + k) + 1) * step + startT);
      before[k] = chord(x[k] - p.x, y[k] - p.y);
      after[k] = chord(p.x - x[k + 1], p.y - y[k + 1]);
      refined.x[2 * (i + k)] = x[k];
      refined.y[2 * (i + k)] = y[k];
      refined.x[2 * (i + k) + 1] = p.x;
      refined.y[2 * (i + k) + 1] = p.y;
    }
    for (int k = 0; k < kFirstChords; ++k) {
      sum += before[k];
      sum += after[k];
    }
  }
  refined.set(2 * chords, s.end());
  return sum;
}

double length(Samples const& samples, int chords) {
  double sum = 0.0;
  for (int i = 0; i < chords; ++i)
    sum += chord(samples.x[i] - samples.x[i + 1], samples.y[i] - samples.y[i + 1]);
  return sum;
}

}  // namespace

double crv::internal::chordSum(Cubic const& s, int count, double startT) {
  double const step = count > 1 ? (1.0 - startT) / count : 0.0;
  Point previous = s.point(startT);
  double sum = 0.0;
  int i = 1;
  int left = max(count, 1) - 1;  // points between the ends
  for (; left >= kBlock; left -= kBlock, i += kBlock) {
    addBlock<kBlock>(s, i, step, startT, previous, sum);
  }
  if (left >= kSmallBlock) {
    addBlock<kSmallBlock>(s, i, step, startT, previous, sum);
    left -= kSmallBlock;
    i += kSmallBlock;
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
  begin(s, startT, samples[0]);
  int chords = kFirstChords;
  double current = length(samples[0], chords);
  int evaluations = chords;
  for (int i = 0; i <= kMaxDoublings; ++i) {
    double const previous = current;
    current = 2 * chords <= kMaxKept ? refine(s, startT, chords, samples[i % 2], samples[1 - i % 2])
                                     : chordSum(s, 2 * chords, startT);
    chords *= 2;
    evaluations += chords;
    if (std::fabs(current - previous) <= kLengthTolerance || std::isnan(current)) break;
  }
  return {current, evaluations};
}
