// Arc length as the length of an inscribed polyline, whose chords are doubled until it settles.
#include "crv/bezier/internal/arcLength.h"

#include "crv/foundation/tolerance.h"

#include <cmath>

namespace {

using crv::internal::Cubic;
using crv::internal::Point;

// Curve units: two measurements this close settle the arc length.
constexpr double kLengthTolerance = 0.1;

// Chords of the first measurement, and doublings after the second, up to 327,680 chords.
constexpr int kFirstChords = 10;
constexpr int kMaxDoublings = 14;

// Points computed at a time: the large block hides store-to-load latency; the small block takes the
// remainder.
constexpr int kBlock = 16;
constexpr int kSmallBlock = 8;

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
  int chords = 2 * kFirstChords;
  double previous = chordSum(s, kFirstChords, startT);
  double current = chordSum(s, chords, startT);
  int evaluations = kFirstChords + chords;
  for (int i = 0; i < kMaxDoublings; ++i) {
    if (std::fabs(current - previous) <= kLengthTolerance || std::isnan(current)) break;
    chords *= 2;
    previous = current;
    current = chordSum(s, chords, startT);
    evaluations += chords;
  }
  return {current, evaluations};
}
