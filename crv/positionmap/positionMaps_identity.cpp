#include "crv/positionmap/positionMaps.h"

#include <new>

namespace {

class GxIdentityPositionMap : public GxBezierCurvePositionMapBase {
 public:
  int mapPosition(GxBezierCurvePosition& out, GxBezierCurvePosition const& in) const override {
    out = in;
    return 0;
  }
  int inverseMapPosition(GxBezierCurvePosition& out,
                         GxBezierCurvePosition const& in) const override {
    out = in;
    return 0;
  }
};

}  // namespace

GxHandle<GxBezierCurvePositionMapBase> constructIdentityPositionMap() {
  return GxHandle<GxBezierCurvePositionMapBase>(new (std::nothrow) GxIdentityPositionMap);
}
