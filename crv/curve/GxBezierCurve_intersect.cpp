// Two curves: the crossings of all pairs of segments, and the least distance from samples of one to
// the other.
#include "crv/curve/GxBezierCurve.h"

namespace {

// Parameter: eleven samples a segment; the last may come out just beside 1.
constexpr double kSampleStep = 0.1;
constexpr double kSampleLimit = 1.05;

}  // namespace

int GxBezierCurve::findIntersections(GxBezierCurve const& other, GxList<GxCoord<double>>& points) {
  for (unsigned j = 0; j < other.segments_.length(); ++j) {
    GxBezier const& theirs = other.segments_[j];
    for (unsigned i = 0; i < segments_.length(); ++i) {
      segments_(i).findIntersections(theirs, points);
    }
  }
  // Deliberate: points that the caller put there count, too.
  return points.length() != 0;
}

double GxBezierCurve::getMinSqDistance(GxBezierCurve& other) const {
  if (segments_.length() == 0 || other.segments_.length() == 0) return 0.0;
  double best = segments_[0][0].squaredDistance(other.segments_(0)[0]);
  for (unsigned i = 0; i < segments_.length(); ++i) {
    GxBezier const& segment = segments_[i];
    for (double t = 0.0; t < kSampleLimit; t += kSampleStep) {
      GxCoord<double> const sample = segment.bValue(t);
      GxCoord<double> nearest;
      other.findNearestPoint(sample, nearest);
      double const d = sample.squaredDistance(nearest);
      if (d < best) best = d;
    }
  }
  return best;
}
