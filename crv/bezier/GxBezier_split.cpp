// Subdivision by de Casteljau's algorithm (Farin, Curves and Surfaces for CAGD), of the segment and
// of a control polygon of any degree.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"
#include "crv/bezier/internal/cubic.h"

#include <algorithm>
#include <vector>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

void assign(GxCoord<double>& to, Point const& from) {
  to.xval() = from.x;
  to.yval() = from.y;
}

}  // namespace

GxBezier& GxBezier::split(GxBezier& right, double t) {
  Cubic leftPart;
  Cubic rightPart;
  crv::internal::cubic(*this).split(t, leftPart, rightPart);
  for (int i = 0; i < 4; ++i) assign(points_[i], leftPart.p[i]);
  // Deliberate: right is written last, so that a segment split into itself becomes its right part.
  for (int i = 0; i < 4; ++i) assign(right.points_[i], rightPart.p[i]);
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
  std::vector<Point> rightPart;
  for (int i = 0; i <= degree; ++i) rightPart.push_back(crv::internal::plain(points[i]));
  std::vector<Point> leftPart(rightPart.size());
  crv::internal::splitPolygon(rightPart.data(), degree, t, leftPart.data());
  if (left != nullptr) std::transform(leftPart.begin(), leftPart.end(), left, crv::internal::coord);
  if (right != nullptr)
    std::transform(rightPart.begin(), rightPart.end(), right, crv::internal::coord);
  return coord(leftPart.back());
}
