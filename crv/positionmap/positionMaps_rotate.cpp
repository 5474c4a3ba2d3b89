#include "crv/positionmap/positionMaps.h"

#include "crv/positionmap/internal/positionAt.h"

#include <new>

using crv::internal::positionAt;

namespace {

class GxRotatePositionMap : public GxBezierCurvePositionMapBase {
 public:
  GxRotatePositionMap(int k, int n) : k_(k), n_(n) {}

  int mapPosition(GxBezierCurvePosition& out, GxBezierCurvePosition const& in) const override {
    return rotate(out, in, k_);
  }
  int inverseMapPosition(GxBezierCurvePosition& out,
                         GxBezierCurvePosition const& in) const override {
    return rotate(out, in, -static_cast<long long>(k_));
  }

 private:
  int rotate(GxBezierCurvePosition& out, GxBezierCurvePosition const& in, long long shift) const {
    long const segment = in.getSegmentNumber();
    double const t = in.getTValue();
    if (segment >= 0 && segment < n_) {
      out = positionAt(remainder(segment + n_ + shift), t);
      return 0;
    }
    out = positionAt(remainder(shift + n_), 0.0);
    return segment == n_ && t == 0.0 ? 0 : -1;
  }

  /// Deliberate: the remainder is negative for a negative dividend.
  long long remainder(long long dividend) const { return n_ == 0 ? 0 : dividend % n_; }

  int k_;
  int n_;
};

}  // namespace

// Deliberate: the direction has no effect.
GxHandle<GxBezierCurvePositionMapBase> constructRotatePositionMap(int, int k, int n) {
  return GxHandle<GxBezierCurvePositionMapBase>(new (std::nothrow) GxRotatePositionMap(k, n));
}
