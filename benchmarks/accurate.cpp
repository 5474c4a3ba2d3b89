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

}  // namespace

void enterAccurate() {
  enterSets("nearest parameter", "accurate", nearestOnSegment);
  enterSets("arc length, 0.1", "accurate", arcLength);
}

}  // namespace bench
