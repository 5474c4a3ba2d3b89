// Length, boxes and extreme places of a curve, put together from those of its segments.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/tolerance.h"

#include <functional>
#include <limits>

namespace {

// Curve units: what lies closer than this to its chord is straight.
constexpr double kStraight = kZeroTolerance;

struct Box {
  double minX, minY, maxX, maxY;

  void widen(Box const& other) {
    minX = min(minX, other.minX);
    minY = min(minY, other.minY);
    maxX = max(maxX, other.maxX);
    maxY = max(maxY, other.maxY);
  }
};

using SegmentBox = void (GxBezier::*)(double&, double&, double&, double&) const;

Box boxOf(GxBezier const& segment, SegmentBox segmentBox) {
  Box box = {};
  (segment.*segmentBox)(box.minX, box.minY, box.maxX, box.maxY);
  return box;
}

/// The box of a curve, four zeros if it is empty.
Box boxOf(GxList<GxBezier> const& segments, SegmentBox segmentBox) {
  if (segments.length() == 0) return {};
  Box box = boxOf(segments[0], segmentBox);
  for (unsigned i = 1; i < segments.length(); ++i) box.widen(boxOf(segments[i], segmentBox));
  return box;
}

using SegmentExtreme = void (GxBezier::*)(double&, double&) const;

/// The highest or lowest place of a curve, the first of equals; returns 0, or -1 if it is empty.
template <class IsBeyond>
int findExtreme(GxList<GxBezier> const& segments, SegmentExtreme extremeOf, IsBeyond isBeyond,
                double& t, int& segment) {
  if (segments.length() == 0) return -1;
  double best = 0.0;
  segment = 0;
  (segments[0].*extremeOf)(t, best);
  for (unsigned i = 1; i < segments.length(); ++i) {
    double otherT = 0.0;
    double y = 0.0;
    (segments[i].*extremeOf)(otherT, y);
    if (!isBeyond(y, best)) continue;
    t = otherT;
    segment = static_cast<int>(i);
    best = y;
  }
  return 0;
}

}  // namespace

double GxBezierCurve::curveLength() {
  double sum = 0.0;
  for (unsigned i = 0; i < segments_.length(); ++i) sum += segments_[i].length(0.0);
  return sum;
}

void GxBezierCurve::getBoundingBox(double& minX, double& minY, double& maxX, double& maxY) {
  Box const box = boxOf(segments_, &GxBezier::getConvexHull);
  minX = box.minX;
  minY = box.minY;
  maxX = box.maxX;
  maxY = box.maxY;
}

void GxBezierCurve::getLocalBoundingBox(double& minX, double& minY, double& maxX, double& maxY) {
  Box const box = boxOf(segments_, &GxBezier::localMinMax);
  minX = box.minX;
  minY = box.minY;
  maxX = box.maxX;
  maxY = box.maxY;
}

int GxBezierCurve::getMinMax(GxCoord<double>& min, GxCoord<double>& max) const {
  if (segments_.length() == 0) return -1;
  constexpr double kLargest = std::numeric_limits<double>::max();
  Box box = {kLargest, kLargest, -kLargest, -kLargest};
  for (unsigned i = 0; i < segments_.length(); ++i) {
    box.widen(boxOf(segments_[i], &GxBezier::localMinMax));
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
  if (segments_.length() == 0 || !segments_[0].isALine(kStraight)) return 0;
  GxVector<double> const direction = segments_[0].dValue(0.5);
  for (unsigned i = 1; i < segments_.length(); ++i) {
    if (!segments_[i].isALine(kStraight)) return 0;
    // Deliberate: an exact comparison, and always with the first segment.
    if (direction.cross(segments_[i].dValue(0.5)) != 0.0) return 0;
  }
  return 1;
}
