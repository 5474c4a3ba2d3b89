// The length, the boxes and the extreme places of a curve, combined from its segments.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/boxTree.h"
#include "crv/foundation/tolerance.h"

#include <functional>
#include <limits>

using crv::internal::Box;
using crv::internal::united;

namespace {

// Curve units: a segment that deviates less than this from its chord is straight.
constexpr double kStraight = kZeroTolerance;

using SegmentBox = void (GxBezier::*)(double&, double&, double&, double&) const;

Box boxOf(GxBezier const& segment, SegmentBox segmentBox) {
  Box box = {};
  (segment.*segmentBox)(box.minX, box.minY, box.maxX, box.maxY);
  return box;
}

/// The box of a curve, four zeros if it is empty.
Box boxOf(GxList<GxBezier> const& segments, SegmentBox segmentBox) {
  if (segments.length() == 0) return {};
  auto segment = segments.begin();
  Box box = boxOf(*segment, segmentBox);
  while (++segment != segments.end()) box = united(box, boxOf(*segment, segmentBox));
  return box;
}

void storeBox(GxList<GxBezier> const& segments, SegmentBox segmentBox, double& minX, double& minY,
              double& maxX, double& maxY) {
  Box const box = boxOf(segments, segmentBox);
  minX = box.minX;
  minY = box.minY;
  maxX = box.maxX;
  maxY = box.maxY;
}

using SegmentExtreme = void (GxBezier::*)(double&, double&) const;

/// Finds the highest or lowest place of a curve, the first of equals. Returns 0, or -1 if the curve
/// is empty.
template <class IsBeyond>
int findExtreme(GxList<GxBezier> const& segments, SegmentExtreme extremeOf, IsBeyond isBeyond,
                double& t, int& segment) {
  if (segments.length() == 0) return -1;
  double best = 0.0;
  segment = 0;
  auto s = segments.begin();
  ((*s).*extremeOf)(t, best);
  for (int i = 1; ++s != segments.end(); ++i) {
    double otherT = 0.0;
    double y = 0.0;
    ((*s).*extremeOf)(otherT, y);
    if (!isBeyond(y, best)) continue;
    t = otherT;
    segment = i;
    best = y;
  }
  return 0;
}

}  // namespace

double GxBezierCurve::curveLength() const {
  double sum = 0.0;
  for (GxBezier const& segment : segments_) sum += segment.length(0.0);
  return sum;
}

void GxBezierCurve::getBoundingBox(double& minX, double& minY, double& maxX, double& maxY) const {
  storeBox(segments_, &GxBezier::getConvexHull, minX, minY, maxX, maxY);
}

void GxBezierCurve::getLocalBoundingBox(double& minX, double& minY, double& maxX,
                                        double& maxY) const {
  storeBox(segments_, &GxBezier::localMinMax, minX, minY, maxX, maxY);
}

int GxBezierCurve::getMinMax(GxCoord<double>& min, GxCoord<double>& max) const {
  if (segments_.length() == 0) return -1;
  constexpr double kLargest = std::numeric_limits<double>::max();
  Box box = {kLargest, kLargest, -kLargest, -kLargest};
  for (GxBezier const& segment : segments_) {
    box = united(box, boxOf(segment, &GxBezier::localMinMax));
  }
  min = GxCoord<double>(box.minX, box.minY);
  max = GxCoord<double>(box.maxX, box.maxY);
  return 0;
}

int GxBezierCurve::getCurveMaxY(double& t, int& segment) const {
  return findExtreme(segments_, &GxBezier::getMaxYTValue, std::greater<double>(), t, segment);
}

int GxBezierCurve::getCurveMinY(double& t, int& segment) const {
  return findExtreme(segments_, &GxBezier::getMinYTValue, std::less<double>(), t, segment);
}

int GxBezierCurve::isALine() const {
  if (segments_.length() == 0) return 0;
  GxBezier const& first = *segments_.begin();
  GxVector<double> const direction = first.dValue(0.5);
  for (GxBezier const& segment : segments_) {
    if (!segment.isALine(kStraight)) return 0;
    // Deliberate: an exact comparison, and always with the first segment.
    bool const isFirst = &segment == &first;
    if (!isFirst && direction.cross(segment.dValue(0.5)) != 0.0) return 0;
  }
  return 1;
}
