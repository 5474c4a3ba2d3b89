// What is asked of curves: their points, directions, lengths, contacts.
#include "crv/accurate/arcLength.h"
#include "crv/accurate/curveContacts.h"
#include "crv/accurate/cut.h"
#include "crv/accurate/direction.h"
#include "crv/accurate/flatten.h"
#include "crv/accurate/nearest.h"
#include "crv/accurate/walk.h"

#include <cmath>
#include <optional>

#include "website/play/operations.h"

namespace play {

namespace {

constexpr double kLengthAccuracy = 1e-9;  // curve units: below what six decimals show
constexpr double kSmallestShare = 1e-6;   // of a curve's size, a tolerance for halving
constexpr std::size_t kMostSteps = 2000;  // more are not told apart on a screen

void addPlace(Output& out, crv::Curve const& curve, crv::Position const& at) {
  out.add(at, curve.locateCurvePosition(at), crv::directions(curve, at).out);
}

}  // namespace

void flatten(Input& in, Output& out) {
  double const tolerance = in.number();
  crv::Curve const curve = in.curve();
  crv::Polyline const accurate = crv::flatten(curve, tolerance);
  std::vector<crv::Point> plain;
  double minX, minY, maxX, maxY;
  curve.getBoundingBox(minX, minY, maxX, maxY);
  // Halving takes memory without end where the tolerance is nothing beside the curve.
  double const size = std::fmax(maxX - minX, maxY - minY);
  if (tolerance > size * kSmallestShare) curve.getPolyline(tolerance, plain);
  out.add(accurate.points.size(), accurate.worstDistance, plain.size());
  out.add(accurate.points, plain);
}

void contacts(Input& in, Output& out) {
  double const resolution = in.number();
  crv::Curve const a = in.curve();
  crv::Curve const b = in.curve();
  crv::CurveContacts const found = crv::contacts(a, b, resolution);
  out.add(found.points.size(), found.overlaps.size());
  for (auto const& each : found.points) {
    out.add(each.first, each.second, each.point, static_cast<int>(each.kind));
  }
  for (auto const& each : found.overlaps) {
    out.add(each.from, each.to, each.otherFrom, each.otherTo, each.sameSense);
    out.add(crv::stretch(a, each.from, each.to, true).curve);
  }
}

void nearest(Input& in, Output& out) {
  crv::Point const p = in.point();
  crv::Curve const curve = in.curve();
  auto const accurate = crv::nearest(curve, p);
  out.add(accurate.has_value());
  if (!accurate) return;
  out.add(accurate->position, accurate->point, accurate->distance);
  crv::Position plain;
  int const code = curve.findNearestPointPos(p, plain);
  crv::Point const point = curve.locateCurvePosition(plain);
  out.add(code, plain, point, (point - p).length());
}

void walk(Input& in, Output& out) {
  auto const measure = in.flag() ? crv::Measure::chord : crv::Measure::length;
  double const step = in.number();
  crv::Curve const curve = in.curve();
  double const total = crv::arcLength(curve, kLengthAccuracy);
  std::vector<crv::Position> steps{curve.firstPos()};
  // On a closed curve the walk ends before it comes round to its start.
  for (bool on = step > 0.0 && curve.length() != 0; on && steps.size() < kMostSteps;) {
    auto const next = crv::walk(curve, steps.back(), step, measure, kLengthAccuracy);
    on = next && steps.back() < *next &&
         (steps.size() > 1 || measure == crv::Measure::chord || step < total);
    if (on) steps.push_back(*next);
  }
  out.add(total, steps.size());
  for (crv::Position const& each : steps) addPlace(out, curve, each);
}

void places(Input& in, Output& out) {
  crv::Curve const curve = in.curve();
  for (crv::Position const& each : in.positions()) addPlace(out, curve, each);
}

}  // namespace play
