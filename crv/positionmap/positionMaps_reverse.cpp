#include "crv/positionmap/positionMaps.h"

#include "crv/foundation/tolerance.h"
#include "crv/positionmap/internal/positionAt.h"

#include <new>

using crv::internal::positionAt;

namespace {

// Parameter: positions this close to the start or end of the curve count as lying on it.
constexpr double kOnEnd = 1e-9;

class GxReversePositionMap : public GxBezierCurvePositionMapBase {
 public:
  explicit GxReversePositionMap(int n) : n_(n) {}

  int mapPosition(GxBezierCurvePosition& out, GxBezierCurvePosition const& in) const override {
    long const segment = in.getSegmentNumber();
    double const t = in.getTValue();
    bool const onJoint = IS_ZERO(t, kOnEnd);
    if (segment >= n_) {
      out = positionAt(0, 0.0);
      return segment == n_ && onJoint ? 0 : -1;
    }
    if (segment < 0) {
      out = positionAt(n_, 0.0);
      return -1;
    }
    out = segment == 0 && onJoint ? positionAt(n_, 0.0) : positionAt(n_ - segment - 1, 1.0 - t);
    return 0;
  }

  int inverseMapPosition(GxBezierCurvePosition& out,
                         GxBezierCurvePosition const& in) const override {
    return mapPosition(out, in);
  }

 private:
  int n_;
};

}  // namespace

GxHandle<GxBezierCurvePositionMapBase> constructReversePositionMap(int n) {
  return GxHandle<GxBezierCurvePositionMapBase>(new (std::nothrow) GxReversePositionMap(n));
}
