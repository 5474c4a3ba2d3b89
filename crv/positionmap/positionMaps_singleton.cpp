#include "crv/positionmap/positionMaps.h"

#include <new>

namespace {

using Position = GxBezierCurvePosition;

class GxSingletonPositionMap : public GxBezierCurvePositionMapBase {
 public:
  GxSingletonPositionMap(Position const& from, Position const& to) : from_(from), to_(to) {}

  int mapPosition(Position& out, Position const& in) const override {
    return mapOne(from_, to_, out, in);
  }
  int inverseMapPosition(Position& out, Position const& in) const override {
    return mapOne(to_, from_, out, in);
  }

 private:
  static int mapOne(Position const& from, Position const& to, Position& out, Position const& in) {
    if (in != from) return -1;
    out = to;
    return 0;
  }

  Position from_;
  Position to_;
};

}  // namespace

GxHandle<GxBezierCurvePositionMapBase> constructSingletonPositionMap(Position const& pos,
                                                                     GxBezierCurve const& curve) {
  return GxHandle<GxBezierCurvePositionMapBase>(new (std::nothrow)
                                                    GxSingletonPositionMap(pos, curve.lastPos()));
}
