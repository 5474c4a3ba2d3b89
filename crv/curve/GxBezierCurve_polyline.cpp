// Polylines of a whole curve: those of its segments, and what concerns the joins between them, the
// point that neighbours share and the part of a step that is left over.
#include "crv/curve/GxBezierCurve.h"

#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <cstddef>
#include <iterator>

namespace {

// Curve units: a last interval that lacks no more counts as a whole step.
constexpr double kShortfall = 0.1;

// Curve units: the end of a segment and the start of the next, no farther apart, are one point.
constexpr double kJoin = 0.1;

// Curve units, mode 1: a last interval shorter than this is merged with the one before it, and one
// within this of the step is left as it is.
constexpr double kUneven = 1.0;

// Curve units: a segment shorter than this has no length to divide by.
constexpr double kNoLength = kZeroTolerance;

using Points = GxList<GxCoord<double>>;

/// Samples one segment after another; sample(segment, t) appends a segment's points from t on.
template <class Sample>
void sampleAcrossJoins(GxList<GxBezier> const& segments, double step, Points& out,
                       Sample const& sample) {
  if (segments.length() == 0) return;
  sample(segments[0], 0.0);
  for (unsigned i = 1; i < segments.length(); ++i) {
    GxBezier const& segment = segments[i];
    unsigned const k = out.length();
    double const d = out[k - 2].distance(out[k - 1]);  // a single point wraps to itself
    double const missing = step - d;
    if (d >= step || missing <= kShortfall) {
      sample(segment, 0.0);
      if (out[k - 1].distance(out[k]) <= kJoin) out.remove(static_cast<int>(k - 1));
      continue;
    }
    out.remove(static_cast<int>(k - 1));
    double const length = segment.length(0.0);
    // Deliberate: without a length, the missing length itself is compared with 1.
    double const ratio = IS_ZERO(length, kNoLength) ? missing : missing / length;
    if (ratio < 1.0) {
      double low = 0.0;
      double high = 1.0;
      sample(segment, segment.splitAtFixedLengthAfter(missing, 0, low, high, 0.0));
    } else {
      out.add(segment[3]);
    }
  }
}

/// Appends the points of one segment on its own, but its end.
void sampleAlone(GxBezier const& segment, double step, Points& out) {
  Points points;
  segment.makeSegment(step, points, 0.0);
  unsigned const k = points.length();
  if (k > 2) {
    double const d = points[k - 2].distance(segment[3]);
    if (d < kUneven) {
      points.remove(static_cast<int>(k - 1));
    } else if (std::fabs(step - d) > kUneven) {
      points.empty();
      segment.makeSegment(((k - 2) * step + d) / (k - 1), points, 0.0);
    }
  }
  for (unsigned i = 0; i + 1 < points.length(); ++i) out.add(points[i]);
}

/// Removes the first of the points that a segment appended to the size points before, if it did.
template <class Container>
void removeJoin(Container& out, std::size_t size) {
  if (size == 0 || out.size() == size) return;
  out.erase(std::prev(out.end(), static_cast<std::ptrdiff_t>(out.size() - size)));
}

template <class Container>
void flatten(GxList<GxBezier> const& segments, double tolerance, Container& out) {
  out.clear();
  for (unsigned i = 0; i < segments.length(); ++i) {
    std::size_t const size = out.size();
    segments[i].getPolyline(tolerance, out);
    removeJoin(out, size);
  }
}

}  // namespace

void GxBezierCurve::makeCurve(double step, GxList<GxCoord<double>>& out, int mode) {
  if (mode == 1) {
    for (unsigned i = 0; i < segments_.length(); ++i) sampleAlone(segments_[i], step, out);
    return;
  }
  sampleAcrossJoins(segments_, step, out, [step, &out](GxBezier const& segment, double startT) {
    segment.makeSegment(step, out, startT);
  });
}

void GxBezierCurve::makeCurveEx(double step, double shortStep, double gap,
                                GxList<GxCoord<double>>& out) {
  sampleAcrossJoins(segments_, step, out, [=, &out](GxBezier const& segment, double startT) {
    segment.makeSegmentEx(step, shortStep, gap, out, startT);
  });
}

void GxBezierCurve::makeSegments(unsigned short count, std::list<GxCoord<double>>& out) {
  for (unsigned i = 0; i < segments_.length(); ++i) {
    // Deliberate: before the first segment, too, a list that is not empty loses its last point.
    if (!out.empty()) out.pop_back();
    segments_[i].makeSegment(count, out);
  }
}

void GxBezierCurve::getPolyline(double tolerance, std::list<GxCoord<double>>& out) {
  flatten(segments_, tolerance, out);
}

void GxBezierCurve::getPolyline(double tolerance, std::vector<GxCoord<double>>& out) {
  flatten(segments_, tolerance, out);
}

void GxBezierCurve::getPolyline(double tolerance, std::list<GxCoord<double>>& out,
                                std::list<GxBezierCurvePosition>& positions,
                                GxBezierPolylineCondition const& condition) {
  out.clear();
  positions.clear();
  for (unsigned i = 0; i < segments_.length(); ++i) {
    std::size_t const size = out.size();
    std::list<double> tValues;
    segments_[i].getPolyline(tolerance, out, tValues, condition);
    removeJoin(out, size);
    if (size != 0 && !tValues.empty()) tValues.pop_front();
    for (double const t : tValues) positions.emplace_back(static_cast<int>(i), t);
  }
}
