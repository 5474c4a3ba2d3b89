#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

namespace {

// Parameter: closer than this on one segment, two positions coincide.
constexpr double kSameParameter = kZeroTolerance;

// Curve units: ends this close make an outline, and are moved together.
constexpr double kSnapDistance = 0.5;

}  // namespace

GxBezierCurve::GxBezierCurve() : closed_(0) {}

GxBezierCurve::GxBezierCurve(GxList<GxCoord<double>> const* points, double error) : closed_(0) {
  makeBezierPolyFit(points, error);
}

GxBezierCurve::GxBezierCurve(std::vector<GxCoord<double>> const& points, double error)
    : closed_(0) {
  GxList<GxCoord<double>> const list(points);
  makeBezierPolyFit(&list, error);
}

GxBezierCurve::GxBezierCurve(GxBezierCurve const& other) = default;

GxBezierCurve::~GxBezierCurve() = default;

GxBezierCurve& GxBezierCurve::operator=(GxBezierCurve const& other) {
  if (this == &other) return *this;  // a list assigned to itself would end up empty
  segments_ = other.segments_;
  closed_ = other.closed_;
  return *this;
}

int GxBezierCurve::operator==(GxBezierCurve const& other) const {
  return segments_ == other.segments_;
}

int GxBezierCurve::operator!=(GxBezierCurve const& other) const {
  return segments_ != other.segments_;
}

int GxBezierCurve::operator==(GxBezierCurve const& other) { return segments_ == other.segments_; }

int GxBezierCurve::operator!=(GxBezierCurve const& other) { return segments_ != other.segments_; }

int GxBezierCurve::operator<(GxBezierCurve const& /*other*/) const { return 0; }

int GxBezierCurve::operator>(GxBezierCurve const& /*other*/) const { return 0; }

GxList<GxBezier>& GxBezierCurve::getSegments() { return segments_; }

void GxBezierCurve::setSegments(GxList<GxBezier> const& segments) { segments_ = segments; }

unsigned long GxBezierCurve::length() const { return segments_.length(); }

GxBezier& GxBezierCurve::operator()(int i) { return segments_(static_cast<unsigned>(i)); }

GxBezier& GxBezierCurve::operator[](int i) const { return segments_[static_cast<unsigned>(i)]; }

GxBezierCurvePosition GxBezierCurve::firstPos() const { return {0, 0.0}; }

GxBezierCurvePosition GxBezierCurve::lastPos() const {
  return {static_cast<int>(segments_.length()), 0.0};
}

int GxBezierCurve::strictIsClosed() const { return closed_; }

void GxBezierCurve::setStrictIsClosed(int closed) { closed_ = closed; }

int GxBezierCurve::getSense(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b) const {
  if (a.getSegmentNumber() != b.getSegmentNumber()) {
    return a.getSegmentNumber() < b.getSegmentNumber() ? 1 : 2;
  }
  if (IS_EQUAL(a.getTValue(), b.getTValue(), kSameParameter)) return 0;
  return a.getTValue() < b.getTValue() ? 1 : 2;
}

GxCoord<double> GxBezierCurve::locateCurvePosition(GxBezierCurvePosition const& pos) const {
  long const n = static_cast<long>(segments_.length());
  long const segment = pos.getSegmentNumber();
  if (n == 0 || segment < 0 || segment > n) return {0.0, 0.0};
  if (segment == n) return segments_[static_cast<unsigned>(n - 1)].bValue(1.0);
  return segments_[static_cast<unsigned>(segment)].bValue(pos.getTValue());
}

void GxBezierCurve::moveCurve(GxVector<double> const& v) {
  for (GxBezier& segment : segments_) {
    for (int k = 0; k < 4; ++k) segment[k] += v;
  }
}

void GxBezierCurve::resize(double sx, double sy) {
  for (GxBezier& segment : segments_) segment.scale(sx, sy);
}

void GxBezierCurve::flip() {
  for (GxBezier& segment : segments_) segment.flip();
}

int GxBezierCurve::isClose() {
  if (segments_.length() == 0) return 0;
  GxCoord<double>& start = segments_[0][0];
  GxCoord<double>& end = segments_[segments_.length() - 1][3];
  if (!isEqual(start, end, kSnapDistance)) return 0;
  // Deliberate: this query also snaps the ends together.
  pointsAverage(start, end);
  return 1;
}

template class GxList<GxBezierCurve>;
