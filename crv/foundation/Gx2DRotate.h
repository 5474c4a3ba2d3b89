// Transforms of the plane.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

/// The base of 2D transforms: something that maps a point to its image.
class CRV_API Gx2DTrans {
 public:
  virtual ~Gx2DTrans();
  /// The image of p under the transform.
  virtual GxCoord<double> image(GxCoord<double> const& p) const = 0;
};

/// The rotation about the origin.
class CRV_API Gx2DRotate : public Gx2DTrans {
 public:
  /// A rotation by an angle in radians, counter-clockwise positive.
  Gx2DRotate(double angle);
  ~Gx2DRotate() override;
  /// The point p turned about the origin.
  GxCoord<double> image(GxCoord<double> const& p) const override;

 private:
  double cos_;
  double sin_;
};

/// The image of p under the transform.
CRV_API GxCoord<double> operator*(Gx2DTrans const& transform, GxCoord<double> const& p);
