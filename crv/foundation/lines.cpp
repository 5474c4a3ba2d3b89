#include "crv/foundation/lines.h"

#include <cmath>

int intersect(GxCoord<double>* out, GxCoord<double> const& a1, GxCoord<double> const& a2,
              GxCoord<double> const& b1, GxCoord<double> const& b2) {
  GxVector<double> const d1 = a2 - a1;
  GxVector<double> const d2 = b2 - b1;
  double const den = d1.cross(d2);
  if (den == 0.0 || std::isnan(den)) return 1;
  // Exact form: the nearest-point search depends on every bit of this crossing.
  double const s = (b1 - a1).cross(d2) / den;
  *out = a1 + d1 * s;
  return 0;
}

int intersect(GxCoord<double>& out, GxCoord<double> const& a1, GxCoord<double> const& a2,
              GxCoord<double> const& b1, GxCoord<double> const& b2) {
  return intersect(&out, a1, a2, b1, b2);
}

int quickCheckPointOnLine(GxCoord<double> const& p, GxCoord<double> const& a,
                          GxCoord<double> const& b, double tol) {
  GxVector<double> const ab = b - a;
  double const length = ab.length();
  if (length == 0.0) return p.distance(a) <= tol;
  return std::fabs(ab.cross(p - a)) / length <= tol;
}

double crv::angle(GxCoord<double> const& a, GxCoord<double> const& b, GxCoord<double> const& c) {
  GxVector<double> const u = a == b ? GxVector<double>(1.0, 0.0) : a - b;
  GxVector<double> const v = c - b;
  return std::atan2(u.cross(v), u * v);
}

int Are3PointsCCW(GxCoord<double> const& a, GxCoord<double> const& b, GxCoord<double> const& c) {
  double const turn = (b - a).cross(c - a);
  return (turn > 0.0) - (turn < 0.0);
}

int isPointInBox(GxCoord<double> const& p, double minX, double minY, double maxX, double maxY,
                 double tol) {
  return p.xval() >= minX - tol && p.xval() <= maxX + tol && p.yval() >= minY - tol &&
         p.yval() <= maxY + tol;
}

void pointsAverage(GxCoord<double>& p, GxCoord<double>& q) {
  p = GxCoord<double>((p.xval() + q.xval()) * 0.5, (p.yval() + q.yval()) * 0.5);
  q = p;
}
