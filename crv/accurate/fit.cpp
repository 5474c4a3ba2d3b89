#include "crv/accurate/fit.h"

#include "crv/accurate/internal/chainFit.h"
#include "crv/accurate/internal/corners.h"
#include "crv/accurate/internal/scale.h"

#include <algorithm>
#include <cmath>

namespace crv {

namespace {

using internal::ChainFit;
using internal::Cubic;
using internal::Place;

constexpr double kPi = 3.141592653589793;

/// The cosine of an angle in [0, pi], by its series at 1/32 of the angle and repeated doubling.
double cosine(double angle) {
  constexpr int kHalvings = 5;
  double const x = angle / (1 << kHalvings);
  double const y = x * x;
  double c = 1.0 - y / 2.0 * (1.0 - y / 12.0 * (1.0 - y / 30.0 * (1.0 - y / 56.0)));
  for (int i = 0; i < kHalvings; ++i) c = 2.0 * c * c - 1.0;
  return c;
}

/// Samples scaled so that the largest coordinate lies in [1, 2), without repetitions.
struct Frame {
  Frame(std::vector<Point> const& samples, double magnitude, bool closed)
      : exponent(magnitude > 0.0 ? std::ilogb(magnitude) : 0) {
    pointOf.reserve(samples.size());
    for (Point const& sample : samples) {
      internal::Point const p = {std::ldexp(sample.xval(), -exponent),
                                 std::ldexp(sample.yval(), -exponent)};
      if (points.empty() || !areEqual(p, points.back())) points.push_back(p);
      pointOf.push_back(points.size() - 1);
    }
    if (closed && points.size() > 1 && areEqual(points.front(), points.back())) points.pop_back();
  }

  Segment toCaller(Cubic const& c) const {
    Segment s;
    for (int i = 0; i < 4; ++i) {
      s[i] = Point(std::ldexp(c.p[i].x, exponent), std::ldexp(c.p[i].y, exponent));
    }
    return s;
  }

  int exponent;
  std::vector<internal::Point> points;
  std::vector<std::size_t> pointOf;  // by sample; points.size() for a repeated first sample
};

/// Stores the fitted curve and its feet in the result, in the caller's units.
void copyTo(Fit& result, ChainFit const& chain, Frame const& frame, bool closed) {
  GxList<Segment> segments;
  for (Cubic const& c : chain.segments()) segments.add(frame.toCaller(c));
  result.curve.getSegments().join(segments);
  result.curve.setStrictIsClosed(closed);

  std::size_t const n = frame.points.size();
  result.positions.reserve(frame.pointOf.size());
  double worst = 0.0;
  for (std::size_t i = 0; i < frame.pointOf.size(); ++i) {
    std::size_t const point = frame.pointOf[i];
    Place const foot = point < n ? chain.foot(point) : Place{0, 0.0};
    bool const isEnd = foot.segment + 1 == chain.segments().size() && foot.t == 1.0;
    result.positions.push_back(isEnd && closed ? Position(0, 0.0)
                                               : Position(static_cast<int>(foot.segment), foot.t));
    double const distance = point < n ? chain.distance(point) : 0.0;
    if (distance > worst) {
      worst = distance;
      result.worstSample = i;
    }
  }
  result.worstDistance = std::ldexp(worst, frame.exponent);
}

}  // namespace

Fit fit(std::vector<Point> const& samples, FitOptions const& options) {
  Fit result;
  internal::Magnitude magnitude;
  for (Point const& p : samples) magnitude.add(internal::plain(p));
  bool const isUsable = internal::isUsable(magnitude.value()) && options.tolerance > 0.0;
  if (samples.empty() || !isUsable) return result;

  Frame const frame(samples, magnitude.value(), options.closed);
  double const tolerance = std::ldexp(options.tolerance, -frame.exponent);
  // No two points are farther apart than 6, so a larger tolerance allows no more.
  ChainFit chain(frame.points, std::min(tolerance, 6.0));
  std::vector<std::size_t> corners;
  if (options.cornerAngle > 0.0 && options.cornerAngle <= kPi) {
    corners =
        internal::cornersOf(frame.points, options.closed, tolerance, cosine(options.cornerAngle));
  }
  chain.fitStroke(corners, options.closed);
  chain.improveFeet();
  copyTo(result, chain, frame, options.closed);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    std::size_t const point = frame.pointOf[i];
    bool const isFirst = i == 0 || frame.pointOf[i - 1] != point;
    bool const isCorner = std::binary_search(corners.begin(), corners.end(), point);
    if (isFirst && isCorner) result.corners.push_back(i);
  }
  return result;
}

}  // namespace crv
