// The closest pair of samples of two segments: every sample of one is compared with every sample of
// the other.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units: a segment that is a point within this tolerance is sampled at its start alone.
constexpr double kPointSize = 0.5;

// Parameter: the spacing of the samples and the limits below which they lie, of a segment and of a
// point. The limit of a segment exceeds 1 so that rounding does not lose the last sample.
constexpr double kSpacing = 0.1;
constexpr double kSampledRange = 1.001;
constexpr double kSampledPoint = 0.001;

// Squared curve units, the largest 32-bit integer: only pairs of samples that are closer count.
constexpr double kFarthest = 2147483647.0;

/// The samples of one segment, at most 11.
struct Samples {
  explicit Samples(GxBezier const& s) {
    Cubic const segment = crv::internal::cubic(s);
    double const limit = s.isAPoint(kPointSize) ? kSampledPoint : kSampledRange;
    // Exact form: the parameter is accumulated; its last value lies just below 1.
    for (double t = 0.0; t < limit; t += kSpacing, ++count) {
      parameters[count] = t;
      points[count] = segment.point(t);
    }
  }

  double parameters[11];
  Point points[11];
  int count = 0;
};

}  // namespace

double GxBezier::findClosestPoints(GxBezier const& other, double& t1, double& t2) const {
  Samples const a(*this);
  Samples const b(other);
  double best = kFarthest;
  for (int i = 0; i < a.count; ++i) {
    for (int j = 0; j < b.count; ++j) {
      double const d = crv::internal::squaredDistance(a.points[i], b.points[j]);
      if (d < best) {
        t1 = a.parameters[i];
        t2 = b.parameters[j];
        best = d;
      }
    }
  }
  return best;
}
