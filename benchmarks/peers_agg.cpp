// The same work by Anti-Grain Geometry, which only flattens; one curve object is used for all rows.
#include "accuracy.h"
#include <agg_conv_contour.h>
#include <agg_conv_curve.h>
#include <agg_curves.h>
#include <agg_path_storage.h>

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

/// Polygons about letters, which are flattened and not trimmed.
void contourOfALetter(benchmark::State& state) {
  std::vector<agg::path_storage> paths;
  for (GxBezierCurve const& letter : letters()) {
    agg::path_storage& path = paths.emplace_back();
    path.move_to(letter[0][0].xval(), letter[0][0].yval());
    for (GxBezier const& s : letter) {
      path.curve4(s[1].xval(), s[1].yval(), s[2].xval(), s[2].yval(), s[3].xval(), s[3].yval());
    }
    path.close_polygon();
  }
  overAll(state, paths, [](agg::path_storage& path) {
    agg::conv_curve<agg::path_storage> flat(path);
    flat.approximation_scale(kPixelsPerUnit);
    agg::conv_contour<agg::conv_curve<agg::path_storage>> contour(flat);
    contour.width(10.0);
    contour.line_join(agg::round_join);
    contour.rewind(0);
    int count = 0;
    double x = 0.0, y = 0.0;
    while (!agg::is_stop(contour.vertex(&x, &y))) ++count;
    return count;
  });
}

}  // namespace

void enterAgg() {
  enterSets("polyline by halving, 0.1", "AGG", polyline);
  enterSets("few chords, 0.1", "AGG", polyline);
  enter("offset a letter/letters/AGG", contourOfALetter);
}

}  // namespace bench
