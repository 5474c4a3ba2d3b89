#include "crv/foundation/Gx2DRotate.h"

#include <cmath>

Gx2DTrans::~Gx2DTrans() = default;

Gx2DRotate::Gx2DRotate(double angle) : cos_(std::cos(angle)), sin_(std::sin(angle)) {}

Gx2DRotate::~Gx2DRotate() = default;

GxCoord<double> Gx2DRotate::image(GxCoord<double> const& p) const {
  // Exact form: as in GxCoord::rotate.
  return GxCoord<double>(p.xval() * cos_ + p.yval() * -sin_, p.xval() * sin_ + p.yval() * cos_);
}

GxCoord<double> operator*(Gx2DTrans const& transform, GxCoord<double> const& p) {
  return transform.image(p);
}
