// The operations with a stated accuracy, in the rows of the required ones.
#include "accuracy.h"

namespace bench {

namespace {

void nearestOnSegment(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return crv::nearest(row.segment, row.query).t; });
  noteNearest(state, set, [=](std::size_t i) {
    return crv::nearest(rows(set)[i].segment, rows(set)[i].query).t;
  });
}

void arcLength(benchmark::State& state, char const* set) {
  auto const lengthOf = [&all = rows(set)](std::size_t i) {
    return crv::arcLength(all[i].segment, 0.0, 1.0, 0.1);
  };
  overIndices(state, set, lengthOf);
  noteLength(state, set, lengthOf);
}

void flatten(benchmark::State& state, char const* set) {
  std::vector<GxBezierCurve> curves;
  for (Row const& row : rows(set)) curves.emplace_back().getSegments().add(row.segment);
  auto const pointsOf = [&](std::size_t i) { return crv::flatten(curves[i], 0.1).points; };
  overIndices(state, set, [&](std::size_t i) { return pointsOf(i).size(); });
  notePolyline(state, set, pointsOf);
}

}  // namespace

void enterAccurate() {
  enterSets("nearest parameter", "accurate", nearestOnSegment);
  enterSets("arc length, 0.1", "accurate", arcLength);
  enterSets("polyline by halving, 0.1", "accurate", flatten);
}

}  // namespace bench
