// Transforms of the plane.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

/// The base class of transforms of the plane, which map a point to its image.
class CRV_API Gx2DTrans {
 public:
  virtual ~Gx2DTrans();
  /// Returns the image of p.
  virtual GxCoord<double> image(GxCoord<double> const& p) const = 0;
};

/// A rotation about the origin.
class CRV_API Gx2DRotate : public Gx2DTrans {
 public:
  /// Takes the angle in radians; positive angles turn counter-clockwise.
  Gx2DRotate(double angle);
  ~Gx2DRotate() override;
  /// Returns p, rotated about the origin.
  GxCoord<double> image(GxCoord<double> const& p) const override;

 private:
  double cos_;
  double sin_;
};

/// Returns the image of p under the transform.
CRV_API GxCoord<double> operator*(Gx2DTrans const& transform, GxCoord<double> const& p);
