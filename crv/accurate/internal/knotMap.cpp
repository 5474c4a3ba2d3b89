#include "crv/accurate/internal/knotMap.h"

#include "crv/accurate/internal/chain.h"

#include <algorithm>
#include <utility>

namespace crv::internal {

namespace {

/// The place of a position on a curve; the seam of a closed one is its start.
std::optional<Place> placeOn(KnotCurve const& curve, Position const& position) {
  std::optional<Place> const place = placeAmong(curve.size, position);
  return place && curve.isClosed && place->t == 1.0 ? Place{0, 0.0} : place;
}

Position named(KnotCurve const& curve, std::size_t segment, double t) {
  bool const isOpenEnd = segment + 1 == curve.size && !curve.isClosed;
  bool const isAtGap = std::binary_search(curve.gaps.begin(), curve.gaps.end(), segment);
  if (t == 1.0 && isAtGap && !isOpenEnd) t = kLastParameter;
  bool const isSeam = t == 1.0 && segment + 1 == curve.size && curve.isClosed;
  return isSeam ? Position(0, 0.0) : Position(static_cast<int>(segment), t);
}

/// Maps x linearly from [x0, x1] to [y0, y1]; the ends are mapped bit for bit.
double carried(double x, double x0, double x1, double y0, double y1) {
  if (x == x1 && x1 != x0) return y1;
  double const share = x1 > x0 ? (x - x0) / (x1 - x0) : 0.0;
  return std::min(y0 + (y1 - y0) * share, y1);
}

class KnotMap : public GxBezierCurvePositionMapBase {
 public:
  KnotMap(std::vector<KnotSpan> spans, KnotCurve source, KnotCurve result)
      : spans_(std::move(spans)), source_(std::move(source)), result_(std::move(result)) {}

  int mapPosition(Position& out, Position const& in) const override {
    std::optional<Place> const place = placeOn(source_, in);
    if (!place) return -1;
    auto const span = std::partition_point(spans_.begin(), spans_.end(), [&](KnotSpan const& k) {
      return k.segment != place->segment ? k.segment < place->segment : k.t1 < place->t;
    });
    double const s = carried(place->t, span->t0, span->t1, span->s0, span->s1);
    out = named(result_, span->resultSegment, s);
    return 0;
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    std::optional<Place> const place = placeOn(result_, in);
    if (!place) return -1;
    auto const span = std::partition_point(spans_.begin(), spans_.end(), [&](KnotSpan const& k) {
      return k.resultSegment != place->segment ? k.resultSegment < place->segment : k.s1 < place->t;
    });
    double const t = carried(place->t, span->s0, span->s1, span->t0, span->t1);
    out = named(source_, span->segment, t);
    return 0;
  }

 private:
  std::vector<KnotSpan> spans_;
  KnotCurve source_, result_;
};

}  // namespace

Map knotMap(std::vector<KnotSpan> spans, KnotCurve source, KnotCurve result) {
  return new KnotMap(std::move(spans), std::move(source), std::move(result));
}

}  // namespace crv::internal
