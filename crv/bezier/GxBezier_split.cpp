// Subdivision by de Casteljau's triangle (Farin, Curves and Surfaces for CAGD): written out for the
// cubic, and for a control polygon of any degree.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"
#include "crv/bezier/internal/piece.h"

#include <algorithm>
#include <vector>

using crv::internal::PlainPoint;

using crv::internal::PlainPoint;
using crv::internal::PlainSegment;

namespace {

GxCoord<double> coord(PlainPoint const& p) { return {p.x, p.y}; }

GxBezier segment(PlainPoint const* p) {
  return {coord(p[0]), coord(p[1]), coord(p[2]), coord(p[3])};
}

}  // namespace

GxBezier& GxBezier::split(GxBezier& right, double t) {
  PlainPoint leftPart[4];
  PlainPoint rightPart[4];
  crv::internal::splitCubic(crv::internal::PlainSegment(*this).points(), t, leftPart, rightPart);
  *this = segment(leftPart);
  right = segment(rightPart);
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
  if (left != nullptr) std::transform(leftPart.begin(), leftPart.end(), left, coord);
  if (right != nullptr) std::transform(rightPart.begin(), rightPart.end(), right, coord);
  return coord(leftPart.back());
}
