// Tests whether a segment is a line or a point, and whether the chord of a control polygon may
// replace it where it crosses the x axis (after P. J. Schneider, Graphics Gems, 1990).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"
#include "crv/foundation/lines.h"

int GxBezier::isALine(double tol) const {
  bool const startRetracted = isEqual(points_[1], points_[0], tol);
  if (!startRetracted && !pointOnLineSegment(points_[1], points_[0], points_[3], tol)) return 0;
  return isEqual(points_[2], points_[3], tol) ||
         pointOnLineSegment(points_[2], points_[0], points_[3], tol);
}

int GxBezier::isAPoint(double tol) const {
  return isEqual(points_[0], points_[1], tol) && isEqual(points_[2], points_[3], tol) &&
         isEqual(points_[0], points_[3], tol);
}

int GxBezier::isFlatEnough(GxCoord<double> const* points, int degree) const {
  return crv::internal::isFlatPolygon(points, degree);
}
