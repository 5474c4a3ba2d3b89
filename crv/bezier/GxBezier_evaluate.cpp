// Evaluation by Bernstein weights written out as polynomials in t, and by de Casteljau's algorithm
// for polynomials of degree up to 3 (Farin, Curves and Surfaces for CAGD).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units per unit of t: below this derivative of x the tangent counts as vertical.
constexpr double kVerticalTangent = 1e-9;

// The highest degree for which value has room.
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
  return blendedVector(crv::internal::derivativeWeights(t), points_);
}

void GxBezier::bValues(double const* t, int count, GxCoord<double>* points,
                       GxVector<double>* derivatives) const {
  // The compiler need not reload a local copy after each store to the output arrays.
  Cubic const segment = crv::internal::cubic(*this);
  for (int i = 0; i < count; ++i) {
    double const at = t[i];
    Point const p = segment.point(at);
    points[i] = GxCoord<double>(p.x, p.y);
    if (derivatives == nullptr) continue;
    Point const d = segment.derivative(at);
    derivatives[i] = GxVector<double>(d.x, d.y);
  }
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
  Point p[kMaxDegree + 1];
  for (int i = 0; i <= degree; ++i) p[i] = crv::internal::plain(points[i]);
  Point const q = crv::internal::deCasteljau(p, t, degree);
  return {q.x, q.y};
}
