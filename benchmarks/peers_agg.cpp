// The same work by Anti-Grain Geometry, which flattens; one curve object serves all rows.
#include "accuracy.h"
#include <agg_curves.h>

namespace bench {

namespace {

/// Its tolerance is half a pixel: with five pixels a unit, 0.1.
constexpr double kPixelsPerUnit = 5.0;

std::vector<Point> polylineOf(agg::curve4_div& curve, GxBezier const& s) {
  curve.init(s[0].xval(), s[0].yval(), s[1].xval(), s[1].yval(), s[2].xval(), s[2].yval(),
             s[3].xval(), s[3].yval());
  std::vector<Point> points;
  double x = 0.0, y = 0.0;
  while (!agg::is_stop(curve.vertex(&x, &y))) points.emplace_back(x, y);
  return points;
}

void polyline(benchmark::State& state, char const* set) {
  agg::curve4_div curve;
  curve.approximation_scale(kPixelsPerUnit);
  overRows(state, set, [&](Row const& row) { return polylineOf(curve, row.segment).size(); });
  notePolyline(state, set, [&](std::size_t i) { return polylineOf(curve, rows(set)[i].segment); });
}

}  // namespace

void enterAgg() { enterSets("polyline by halving, 0.1", "AGG", polyline); }

}  // namespace bench
