// Polylines of a whole curve: the polylines of its segments, without the points that neighbours
// share, and with the part of a step that is left over carried across the joint.
#include "crv/curve/GxBezierCurve.h"

#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <cstddef>
#include <iterator>

namespace {

// Curve units: a last interval that is shorter than a step by no more than this counts as one.
constexpr double kShortfall = 0.1;

// Curve units: the end of a segment and the start of the next are one point up to this distance.
constexpr double kSamePoint = 0.1;

// Curve units, mode 1: a last interval shorter than this is merged with the one before it, and one
// within this of the step is left as it is.
constexpr double kUneven = 1.0;

using Points = GxList<GxCoord<double>>;

/// Samples one segment after another; sample(segment, t) appends a segment's points from t on.
template <class Sample>
void sampleAcrossJoints(GxList<GxBezier> const& segments, double step, Points& out,
                        Sample const& sample) {
  auto next = segments.begin();
  if (next == segments.end()) return;
  sample(*next, 0.0);
  while (++next != segments.end()) {
    GxBezier const& segment = *next;
    unsigned const k = out.length();
    double const d = out[k < 2 ? 0 : k - 2].distance(out[k - 1]);
    double const missing = step - d;
    if (d >= step || missing <= kShortfall) {
      sample(segment, 0.0);
      if (out[k - 1].distance(out[k]) <= kSamePoint) out.remove(static_cast<int>(k - 1));
      continue;
    }
    out.remove(static_cast<int>(k - 1));
    // Exact form: a quotient is compared with 1.
    if (missing / segment.length(0.0) < 1.0) {
      double low = 0.0;
      double high = 1.0;
      sample(segment, segment.splitAtFixedLengthAfter(missing, 0, low, high, 0.0));
    } else {
      out.add(segment[3]);
    }
  }
}

/// Appends the points of one segment on its own, without its end.
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
  if (points.length() == 0) return;
  points.remove(static_cast<int>(points.length() - 1));
  out.join(points);
}

/// Removes the first point that a segment appended behind the size points before it, because it
/// repeats the last point of the segment before.
template <class Container>
void removeSharedPoint(Container& out, std::size_t size) {
  if (size == 0 || out.size() == size) return;
  out.erase(std::prev(out.end(), static_cast<std::ptrdiff_t>(out.size() - size)));
}

template <class Container>
void flatten(GxList<GxBezier> const& segments, double tolerance, Container& out) {
  out.clear();
  for (GxBezier const& segment : segments) {
    std::size_t const size = out.size();
    segment.getPolyline(tolerance, out);
    removeSharedPoint(out, size);
  }
}

}  // namespace

void GxBezierCurve::makeCurve(double step, GxList<GxCoord<double>>& out, int mode) const {
  if (mode == 1) {
    for (GxBezier const& segment : segments_) sampleAlone(segment, step, out);
    return;
  }
  sampleAcrossJoints(segments_, step, out, [step, &out](GxBezier const& segment, double startT) {
    segment.makeSegment(step, out, startT);
  });
}

void GxBezierCurve::makeCurveEx(double step, double shortStep, double gap,
                                GxList<GxCoord<double>>& out) const {
  sampleAcrossJoints(segments_, step, out, [=, &out](GxBezier const& segment, double startT) {
    segment.makeSegmentEx(step, shortStep, gap, out, startT);
  });
}

void GxBezierCurve::makeSegments(unsigned short count, std::list<GxCoord<double>>& out) const {
  for (GxBezier const& segment : segments_) {
    // Deliberate: before the first segment, too, a list that is not empty loses its last point.
    if (!out.empty()) out.pop_back();
    segment.makeSegment(count, out);
  }
}

void GxBezierCurve::getPolyline(double tolerance, std::list<GxCoord<double>>& out) const {
  flatten(segments_, tolerance, out);
}

void GxBezierCurve::getPolyline(double tolerance, std::vector<GxCoord<double>>& out) const {
  flatten(segments_, tolerance, out);
}

void GxBezierCurve::getPolyline(double tolerance, std::list<GxCoord<double>>& out,
                                std::list<GxBezierCurvePosition>& positions,
                                GxBezierPolylineCondition const& condition) const {
  out.clear();
  positions.clear();
  int i = 0;
  for (GxBezier const& segment : segments_) {
    std::size_t const size = out.size();
    std::list<double> tValues;
    segment.getPolyline(tolerance, out, tValues, condition);
    removeSharedPoint(out, size);
    if (size != 0 && !tValues.empty()) tValues.pop_front();
    for (double const t : tValues) positions.emplace_back(i, t);
    ++i;
  }
}
