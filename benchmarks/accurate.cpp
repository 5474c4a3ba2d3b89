// The operations with a stated accuracy, in the same rows of the tables as the plain ones.
#include "accuracy.h"

namespace bench {

namespace {

void nearestOnSegment(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return crv::nearest(row.segment, row.query).t; });
  noteNearest(state, set, [=](std::size_t i) {
    return crv::nearest(rows(set)[i].segment, rows(set)[i].query).t;
  });
}

void arcLength(benchmark::State& state, char const* set, double accuracy) {
  auto const lengthOf = [=, &all = rows(set)](std::size_t i) {
    return crv::arcLength(all[i].segment, 0.0, 1.0, accuracy);
  };
  overIndices(state, set, lengthOf);
  noteLength(state, set, lengthOf);
}

void parameterAtLength(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    return crv::parameterAtLength(row.segment, 0.0, row.arcLength, 1e-6);
  });
}

void contacts(benchmark::State& state, char const* set) {
  auto const contactsOf = [&all = rows(set)](unsigned i, unsigned j) {
    return crv::contacts(all[i].segment, all[j].segment).points;
  };
  overPairs(state, set, [=](unsigned i, unsigned j) { return contactsOf(i, j).size(); });
  noteCrossings(state, set, [=](unsigned i, unsigned j) {
    std::vector<std::pair<double, double>> found;
    for (auto const& contact : contactsOf(i, j)) found.emplace_back(contact.t, contact.u);
    return found;
  });
}

void flatten(benchmark::State& state, char const* set) {
  std::vector<GxBezierCurve> curves;
  for (Row const& row : rows(set)) curves.emplace_back().getSegments().add(row.segment);
  auto const pointsOf = [&](std::size_t i) { return crv::flatten(curves[i], 0.1).points; };
  overIndices(state, set, [&](std::size_t i) { return pointsOf(i).size(); });
  notePolyline(state, set, pointsOf);
}

/// Times are for one segment of a curve that contains all rows, which do not join.
void flattenACurve(benchmark::State& state, char const* set) {
  GxBezierCurve curve;
  for (Row const& row : rows(set)) curve.getSegments().add(row.segment);
  for (auto _ : state) benchmark::DoNotOptimize(crv::flatten(curve, 0.1).points.size());
  perIteration(state, curve.length());
}

}  // namespace

void enterAccurate() {
  enterSets("nearest parameter", "accurate", nearestOnSegment);
  enterSets("crossings of a pair", "accurate", contacts);
  enterSets("arc length, 0.1", "accurate",
            [](benchmark::State& state, char const* set) { arcLength(state, set, 0.1); });
  enterSets("arc length, 1e-6", "accurate",
            [](benchmark::State& state, char const* set) { arcLength(state, set, 1e-6); });
  enterSets("parameter at a length, 1e-6", "accurate", parameterAtLength);
  enterSets("few chords, 0.1", "accurate", flatten);
  enterSets("few chords, 0.1, of a long curve", "accurate", flattenACurve);
}

}  // namespace bench
