#include "crv/svg/internal/arc.h"

#include "crv/svg/internal/straight.h"

#include <cmath>

namespace crv::internal {

namespace {

// cos of 45 degrees, rounded down: arcs up to it are one cubic. The deviation of a cubic from the
// circle grows with the sixth power of the angle; it is 4.3e-6 radii at 45 degrees and 2.8e-4
// at 90.
constexpr double kCosineOfOneCubic = 0.707106781186547;

// Half a circle takes two halvings; the third is left to rounding.
constexpr int kMostHalvings = 3;

constexpr double kPi = 3.141592653589793;

/// The unit vector at an angle in degrees. The angle is brought into [-45, 45] degrees without
/// rounding; there the series of sine and cosine end below half an ulp with the powers 17 and 16.
Point unitVector(double degrees) {
  double const turned = std::remainder(degrees, 360.0);
  double const quarters = std::nearbyint(turned / 90.0);
  double const x = (turned - 90.0 * quarters) * (kPi / 180.0);
  double const xx = x * x;
  double sine = 0.0, cosine = 0.0;
  for (int k = 16; k >= 2; k -= 2) {
    sine = (1.0 - sine) * xx / (k * (k + 1.0));
    cosine = (1.0 - cosine) * xx / (k * (k - 1.0));
  }
  double const s = x - x * sine, c = 1.0 - cosine;
  switch (static_cast<int>(quarters)) {
    case 1: return {-s, c};
    case -1: return {s, -c};
    case 0: return {c, s};
    default: return {-c, -s};
  }
}

Point normalized(Point const& v) { return v * (1.0 / std::sqrt(dot(v, v))); }
Point leftOf(Point const& v) { return {-v.y, v.x}; }

/// An ellipse as the image of the unit circle.
struct Ellipse {
  Point centre, axisX, axisY;

  Point operator()(Point const& onCircle) const {
    return centre + (axisX * onCircle.x + axisY * onCircle.y);
  }
};

/// Part of the unit circle from u to v, counter-clockwise for a sense of 1, clockwise for -1.
struct UnitArc {
  Point u, v;
  double sense;

  /// The arc's middle, on the normal of the chord; exact enough unless the chord is short.
  Point acrossTheChord() const { return normalized(leftOf(u - v) * sense); }
};

/// Appends the cubics of an arc of at most 180 degrees, seen on the ellipse.
void appendUnitArc(Ellipse const& ellipse, UnitArc const& arc, int halvings,
                   std::vector<Cubic>& out) {
  auto const& [u, v, sense] = arc;
  bool const isWide = dot(u, v) < 0.0;
  Point const middle = isWide ? arc.acrossTheChord() : normalized(u + v);
  if (dot(u, v) < kCosineOfOneCubic && halvings > 0) {
    appendUnitArc(ellipse, {u, middle, sense}, halvings - 1, out);
    appendUnitArc(ellipse, {middle, v, sense}, halvings - 1, out);
    return;
  }
  // 4/3 tan(angle / 4), from the sine and cosine of half the angle.
  double const handle = 4.0 / 3.0 * std::fabs(cross(u, middle)) / (1.0 + dot(u, middle)) * sense;
  out.push_back(
      {{ellipse(u), ellipse(u + leftOf(u) * handle), ellipse(v - leftOf(v) * handle), ellipse(v)}});
}

/// Appends the cubics of an arc whose radii are above 0, in the frame in which the ellipse is the
/// unit circle: there the centre lies on the bisector of the chord.
void appendEllipse(Arc const& arc, std::vector<Cubic>& out) {
  Point const axis = unitVector(arc.degrees);
  Point const half = (arc.to - arc.from) * 0.5;
  Point chord{dot(axis, half) / arc.radiusX, cross(axis, half) / arc.radiusY};
  double const squared = dot(chord, chord);
  double const growth = squared > 1.0 ? std::sqrt(squared) : 1.0;
  chord = chord * (1.0 / growth);
  double const height = squared > 1.0 ? 0.0 : std::sqrt((1.0 - squared) / squared);
  Point const toCentre = leftOf(chord) * (arc.isLarge == arc.isSweep ? -height : height);

  Point const axisX = axis * (arc.radiusX * growth);
  Point const axisY = leftOf(axis) * (arc.radiusY * growth);
  Point const middle = arc.from + half;
  Ellipse const ellipse{middle + (axisX * toCentre.x + axisY * toCentre.y), axisX, axisY};

  UnitArc const whole{normalized((chord + toCentre) * -1.0), normalized(chord - toCentre),
                      arc.isSweep ? 1.0 : -1.0};
  if (!arc.isLarge) return appendUnitArc(ellipse, whole, kMostHalvings, out);
  Point const top = normalized(leftOf(chord) * -whole.sense);
  appendUnitArc(ellipse, {whole.u, top, whole.sense}, kMostHalvings, out);
  appendUnitArc(ellipse, {top, whole.v, whole.sense}, kMostHalvings, out);
}

}  // namespace

void appendArc(Arc const& arc, std::vector<Cubic>& out) {
  if (areEqual(arc.from, arc.to)) return;
  std::size_t const before = out.size();
  double const radiusX = std::fabs(arc.radiusX), radiusY = std::fabs(arc.radiusY);
  if (radiusX > 0.0 && radiusY > 0.0) {
    Arc positive = arc;
    positive.radiusX = radiusX;
    positive.radiusY = radiusY;
    appendEllipse(positive, out);
    out[before].p[0] = arc.from;
    out.back().p[3] = arc.to;
  }
  bool finite = out.size() > before;
  for (std::size_t i = before; i < out.size(); ++i) finite = finite && isFinite(out[i]);
  if (finite) return;
  out.resize(before);
  out.push_back(straightThrough(arc.from, arc.to));
}

}  // namespace crv::internal
