// The next parameter at a straight-line distance from the point at the start, or from a given one.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/step.h"

using crv::internal::LengthCache;

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward) const {
  LengthCache lengths;
  return crv::internal::findNextPos(*this, {startT, farT, forward}, squaredDistance, t, nullptr,
                                    lengths);
}

int GxBezier::findNextPos(double& t, double startT, double squaredDistance, int forward,
                          double& consumed) const {
  return findNextPos(t, startT, forward ? 1.0 : 0.0, squaredDistance, forward, consumed);
}

int GxBezier::findNextPos(double& t, double startT, double farT, double squaredDistance,
                          int forward, double& consumed) const {
  LengthCache lengths;
  return crv::internal::findNextPos(*this, {startT, farT, forward}, squaredDistance, t, &consumed,
                                    lengths);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  return findNextPosFromPoint(t, startT, forward ? 1.0 : 0.0, p, squaredDistance, forward);
}

int GxBezier::findNextPosFromPoint(double& t, double startT, double farT, GxCoord<double> const& p,
                                   double squaredDistance, int forward) const {
  return crv::internal::findNextPosFromPoint(*this, {startT, farT, forward}, p, squaredDistance, t);
}
