// The closest pair of samples of two segments: every sample of one against every one of the other.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units: a segment no larger is sampled at its start alone.
constexpr double kPointSize = 0.5;

// Parameter: the spacing of the samples, and where they end, past rounding.
constexpr double kSpacing = 0.1;
constexpr double kSampledRange = 1.001;
constexpr double kSampledPoint = 0.001;

// Squared curve units: pairs of samples from here on do not count. The largest 32-bit integer.
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

double GxBezier::findClosestPoints(GxBezier const& other, double& t1, double& t2) {
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
