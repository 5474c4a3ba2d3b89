// Subdivision by de Casteljau's triangle (Farin, Curves and Surfaces for CAGD): written out for the
// cubic, and for a control polygon of any degree.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"

#include <algorithm>
#include <vector>

namespace {

/// Exact form: a + (b - a)*t, not (1 - t)*a + t*b.
GxCoord<double> between(GxCoord<double> const& a, GxCoord<double> const& b, double t) {
  return a + (b - a) * t;
}

}  // namespace

GxBezier& GxBezier::split(GxBezier& right, double t) {
  GxCoord<double> const p0 = points_[0];
  GxCoord<double> const p3 = points_[3];
  GxCoord<double> const left1 = between(p0, points_[1], t);
  GxCoord<double> const right2 = between(points_[2], p3, t);
  GxCoord<double> const middle = between(points_[1], points_[2], t);
  GxCoord<double> const right1 = between(middle, right2, t);
  GxCoord<double> const left2 = between(left1, middle, t);
  GxCoord<double> const joint = between(left2, right1, t);
  *this = GxBezier(p0, left1, left2, joint);
  right = GxBezier(joint, right1, right2, p3);
  return *this;
}

void GxBezier::split(GxBezier& left, GxBezier& right, double t) const {
  GxBezier copy(*this);
  copy.split(right, t);
  left = copy;
}

GxCoord<double> GxBezier::genericSplit(GxCoord<double> const* points, int degree, double t,
                                       GxCoord<double>* left, GxCoord<double>* right) const {
  using crv::internal::PlainPoint;
  if (degree < 0) return {};
  std::vector<PlainPoint> rightPart;
  for (int i = 0; i <= degree; ++i) rightPart.push_back(crv::internal::plain(points[i]));
  std::vector<PlainPoint> leftPart(rightPart.size());
  crv::internal::splitPolygon(rightPart.data(), degree, t, leftPart.data());
  auto const coord = [](PlainPoint const& p) { return GxCoord<double>(p.x, p.y); };
  if (left != nullptr) std::transform(leftPart.begin(), leftPart.end(), left, coord);
  if (right != nullptr) std::transform(rightPart.begin(), rightPart.end(), right, coord);
  return coord(leftPart.back());
}
