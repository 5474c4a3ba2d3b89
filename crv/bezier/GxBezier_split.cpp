// Subdivision by de Casteljau's triangle (Farin, Curves and Surfaces for CAGD): written out for the
// cubic, and for a control polygon of any degree.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"

#include <algorithm>
#include <vector>

using crv::internal::PlainPoint;
using crv::internal::PlainSegment;

namespace {

/// Exact form: a + (b - a)*t, not (1 - t)*a + t*b.
PlainPoint between(PlainPoint const& a, PlainPoint const& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

void assign(GxCoord<double>& to, PlainPoint const& from) {
  to.xval() = from.x;
  to.yval() = from.y;
}

}  // namespace

GxBezier& GxBezier::split(GxBezier& right, double t) {
  PlainSegment const whole(*this);
  PlainPoint const* const p = whole.points();
  PlainPoint const left1 = between(p[0], p[1], t);
  PlainPoint const right2 = between(p[2], p[3], t);
  PlainPoint const middle = between(p[1], p[2], t);
  PlainPoint const right1 = between(middle, right2, t);
  PlainPoint const left2 = between(left1, middle, t);
  PlainPoint const joint = between(left2, right1, t);
  assign(points_[1], left1);
  assign(points_[2], left2);
  assign(points_[3], joint);
  // Deliberate: written last, so that a segment split into itself ends as its right part.
  assign(right.points_[0], joint);
  assign(right.points_[1], right1);
  assign(right.points_[2], right2);
  assign(right.points_[3], p[3]);
  return *this;
}

void GxBezier::split(GxBezier& left, GxBezier& right, double t) const {
  GxBezier copy(*this);
  copy.split(right, t);
  left = copy;
}

GxCoord<double> GxBezier::genericSplit(GxCoord<double> const* points, int degree, double t,
                                       GxCoord<double>* left, GxCoord<double>* right) const {
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
