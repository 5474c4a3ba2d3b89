// Evaluation by Bernstein weights written out as polynomials in t, and by de Casteljau's triangle
// for the derivative polygons of lower degree (Farin, Curves and Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

namespace {

// Curve units per unit of t: slower than this in x, the tangent counts as vertical.
constexpr double kVerticalTangent = 1e-9;

// The working array of value holds a cubic.
constexpr unsigned short kMaxDegree = 3;

GxVector<double> blendedVector(crv::internal::Weights const& w, GxCoord<double> const* p) {
  return {crv::internal::blended(w, p[0].xval(), p[1].xval(), p[2].xval(), p[3].xval()),
          crv::internal::blended(w, p[0].yval(), p[1].yval(), p[2].yval(), p[3].yval())};
}

}  // namespace

GxCoord<double> GxBezier::bValue(double t) const {
  // Deliberate: exact comparisons; any other t goes through the polynomials.
  if (t == 0.0) return points_[0];
  if (t == 1.0) return points_[3];
  GxVector<double> const v = blendedVector(crv::internal::pointWeights(t), points_);
  return {v.xval(), v.yval()};
}

GxVector<double> GxBezier::dValue(double t) const {
  double const s = t * t;
  // Exact form: the derivatives of the weights, in these spellings.
  return blendedVector(
      {(2.0 * t - s - 1.0) * 3.0, 9.0 * s - 12.0 * t + 3.0, 6.0 * t - 9.0 * s, 3.0 * s}, points_);
}

GxVector<double> GxBezier::ddValue(double t) const {
  return blendedVector({6.0 - 6.0 * t, 18.0 * t - 12.0, 6.0 - 18.0 * t, 6.0 * t}, points_);
}

GxCoord<double> GxBezier::curvatureValue(double t) const {
  GxVector<double> const d = dValue(t);
  GxVector<double> const e = ddValue(t);
  if (IS_ZERO(d.xval(), kVerticalTangent)) return {0.0, 0.0};
  return {(e.yval() - (e.xval() * d.yval()) / d.xval()) / d.xval(), d.xval()};
}

GxCoord<double> GxBezier::value(GxCoord<double> const* points, double t,
                                unsigned short degree) const {
  if (degree > kMaxDegree) return {};
  crv::internal::Point p[kMaxDegree + 1];
  for (int i = 0; i <= degree; ++i) p[i] = crv::internal::plain(points[i]);
  crv::internal::Point const q = crv::internal::deCasteljau(p, t, degree);
  return {q.x, q.y};
}
