#include "crv/accurate/internal/joins.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/tangent.h"

#include <cmath>

namespace crv::internal {

namespace {

// The sine of the largest deviation from 180 degrees at which a turn counts as one of 180 degrees.
constexpr double kTurnsBack = 0x1p-30;

// The largest number of segments of a round join.
constexpr int kMostArcs = 512;

/// An angle of at most 180 degrees, except for rounding errors.
struct Angle {
  double cosine, sine;

  Angle half() const {
    // Next to 0 and to 180 degrees only the sine tells the angle exactly.
    double const c = std::sqrt(max(0.0, 0.5 * (1.0 + cosine)));
    if (c > 0.5) return {c, 0.5 * sine / c};
    double const s = std::sqrt(0.5 * (1.0 - cosine));
    return {0.5 * sine / s, s};
  }

  /// A third of the angle, as twice the third of the half-angle, for which Newton's method for cos
  /// a = 4 c^3 - 3 c converges fast. Not for small angles.
  Angle third() const {
    double const wanted = half().cosine;
    double c = 1.0 - (1.0 - wanted) * (1.0 / 9.0);
    for (int i = 0; i < 6; ++i) c -= ((4.0 * c * c - 3.0) * c - wanted) / (12.0 * c * c - 3.0);
    return {2.0 * c * c - 1.0, 2.0 * c * std::sqrt(max(0.0, 1.0 - c * c))};
  }
};

/// The largest distance outside the unit circle of the cubic that approximates an arc of this angle
/// (M. Goldapp, "Approximation of circular arcs by cubic polynomials", Computer Aided Geometric
/// Design 8 (1991)).
double arcError(Angle const& angle) {
  Angle const quarter = angle.half().half();
  double const squaredSine = quarter.sine * quarter.sine;
  return 2.0 / 27.0 * squaredSine * squaredSine * squaredSine / (quarter.cosine * quarter.cosine);
}

/// Appends a clockwise arc about a centre, as cubics; the normals point from the centre to the ends
/// of the arc. Returns the error of the radius.
double appendArc(Point const& centre, double radius, Point const& startNormal,
                 Point const& endNormal, double tolerance, Point const& from, Point const& to,
                 std::vector<Cubic>& join) {
  Angle const whole = {dot(startNormal, endNormal), -cross(startNormal, endNormal)};
  // The arc is divided into 1, 2, 4, 8, ... or 3, 6, 12, ... parts, whichever suffices with fewer.
  Angle halved = whole, thirds = whole.third();
  int count = 1, countOfThirds = 3;
  while (radius * arcError(halved) > tolerance && count < kMostArcs) {
    halved = halved.half();
    count *= 2;
  }
  while (countOfThirds < count && radius * arcError(thirds) > tolerance) {
    thirds = thirds.half();
    countOfThirds *= 2;
  }
  Angle const step = countOfThirds < count ? thirds : halved;
  if (countOfThirds < count) count = countOfThirds;
  Angle const quarter = step.half().half();
  double const handle = radius * (4.0 / 3.0) * quarter.sine / quarter.cosine;
  Point normal = startNormal;
  Point start = from;
  for (int i = 1; i <= count; ++i) {
    Point const next = i == count ? endNormal
                                  : Point{normal.x * step.cosine + normal.y * step.sine,
                                          normal.y * step.cosine - normal.x * step.sine};
    Point const end = i == count ? to : centre + next * radius;
    join.push_back({{start, start - leftOf(normal) * handle, end + leftOf(next) * handle, end}});
    normal = next;
    start = end;
  }
  return radius * arcError(step);
}

}  // namespace

bool Corner::isOuter() const {
  double const sine = cross(in, out);
  return sine < 0.0 || (sine <= kTurnsBack && dot(in, out) < 0.0);
}

std::optional<double> appendJoin(Corner const& corner, double distance,
                                 OffsetOptions const& options, Point const& from, Point const& to,
                                 std::vector<Cubic>& join) {
  double const cosine = dot(corner.in, corner.out);
  bool const turnsBack = cosine < 0.0 && std::fabs(cross(corner.in, corner.out)) <= kTurnsBack;
  if (options.join == Join::round || turnsBack) {
    return appendArc(corner.joint, distance, leftOf(corner.in), leftOf(corner.out),
                     options.tolerance, from, to, join);
  }
  // The distance of the tip from the joint is the distance divided by the cosine of half the turn.
  bool const isWithinLimit =
      2.0 <= (1.0 + cosine) * options.miterLimit * options.miterLimit && options.miterLimit > 0.0;
  if (options.join == Join::miter && isWithinLimit) {
    Point const tip =
        corner.joint + (leftOf(corner.in) + leftOf(corner.out)) * (distance / (1.0 + cosine));
    join.push_back(straight(from, tip));
    join.push_back(straight(tip, to));
  } else {
    join.push_back(straight(from, to));
  }
  return std::nullopt;
}

std::optional<double> appendCap(Point const& end, Point const& direction, double distance, Cap cap,
                                double tolerance, std::vector<Cubic>& join) {
  Point const normal = leftOf(direction);
  Point const from = end + normal * distance, to = end - normal * distance;
  if (cap == Cap::round) {
    return appendArc(end, distance, normal, normal * -1.0, tolerance, from, to, join);
  }
  if (cap == Cap::butt) {
    join.push_back(straight(from, to));
    return std::nullopt;
  }
  Point const ahead = direction * distance;
  join.push_back(straight(from, from + ahead));
  join.push_back(straight(from + ahead, to + ahead));
  join.push_back(straight(to + ahead, to));
  return std::nullopt;
}

}  // namespace crv::internal
