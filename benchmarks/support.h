// The inputs of the benchmarks, and how a benchmark says what one operation is.
#pragma once

#include "crv/crv.h"

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

/// A line of font.txt or random.txt.
struct Row {
  GxBezier segment;
  GxCoord<double> query;
  double t;
  double arcLength;
  GxCoord<double> lineStart;
  GxCoord<double> lineEnd;
};

struct Pair {
  unsigned first;
  unsigned second;
};

/// The rows of "font" or "random".
std::vector<Row> const& rows(std::string const& set);

/// The pairs of "font" or "random".
std::vector<Pair> const& pairs(std::string const& set);

/// All coastlines.
std::vector<GxList<GxCoord<double>>> const& coasts();

/// Says how many operations one iteration made: the table's figures are for one of them.
inline void perIteration(benchmark::State& state, std::size_t operations) {
  state.counters["operations"] = static_cast<double>(operations);
}

/// One iteration calls operation(row) for every row of a set.
template <class Operation>
void overRows(benchmark::State& state, std::string const& set, Operation operation) {
  std::vector<Row> const& all = rows(set);
  for (auto _ : state) {
    for (Row const& row : all) benchmark::DoNotOptimize(operation(row));
  }
  perIteration(state, all.size());
}

}  // namespace bench
