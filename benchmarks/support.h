// The inputs of the benchmarks, and the functions that define and run them.
#pragma once

#include "crv/crv.h"

#include <functional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

using Point = GxCoord<double>;

/// A line of font.txt or random.txt.
struct Row {
  GxBezier segment;
  Point query;
  double t;
  double arcLength;
  Point lineStart;
  Point lineEnd;
};

struct Pair {
  unsigned first;
  unsigned second;
};

/// The rows, and the pairs of their numbers, of "font" or "random".
std::vector<Row> const& rows(std::string const& set);
std::vector<Pair> const& pairs(std::string const& set);

/// All coastlines.
std::vector<GxList<Point>> const& coasts();

/// The first outline of each letter of glyphs.txt, closed.
std::vector<GxBezierCurve> const& letters();

/// One letter after the other, 250 units apart, so that each lies over the next two or three.
std::vector<GxBezierCurve> rowOfLetters(std::size_t count);

/// The number of letters with about 25 segments.
std::size_t mediumLetters();

/// Letters of about 25 segments side by side as in a welded word: each as far over the one before
/// it as is needed for them to cross.
std::vector<GxBezierCurve> word(std::size_t count);

// ---- Entering benchmarks ----------------------------------------------------------------------

/// Names are work/data/who, as main.cpp describes; rows are printed in the order of entry.
void enter(std::string const& name, std::function<void(benchmark::State&)> const& run);
std::vector<std::string> const& entered();

/// The name of the benchmark that is running.
std::string const& running();

/// Enters run(state, set) for both sets of rows.
template <class Run>
void enterSets(std::string const& work, std::string const& who, Run run) {
  for (char const* set : {"font", "random"}) {
    enter(work + "/" + set + "/" + who, [=](benchmark::State& state) { run(state, set); });
  }
}

/// Enters run(state, n) for each size; demanded is the largest acceptable growth.
template <class Run>
void enterGrowth(std::string const& work, std::string const& demanded, std::vector<int> sizes,
                 Run run) {
  for (int const n : sizes) {
    enter("growth " + work + "/" + std::to_string(n), [=](benchmark::State& state) {
      run(state, n);
      state.SetLabel(demanded);
    });
  }
}

/// Enter the benchmarks of each file.
void enterSegments();
void enterCurves();
void enterEdits();
void enterLists();
void enterGrowths();
void enterFloors();
void enterAccurate();
void enterAccurateCurves();
void enterLib2geom();
void enterAgg();

// ---- Running them -----------------------------------------------------------------------------

/// Sets the number of operations of one iteration; the tables show the time of one operation.
inline void perIteration(benchmark::State& state, std::size_t operations) {
  state.counters["operations"] = static_cast<double>(operations);
}

/// One iteration calls operation(input) for every input.
template <class Inputs, class Operation>
void overAll(benchmark::State& state, Inputs& inputs, Operation operation) {
  for (auto _ : state) {
    for (auto& input : inputs) benchmark::DoNotOptimize(operation(input));
  }
  perIteration(state, inputs.size());
}

template <class Operation>
void overRows(benchmark::State& state, std::string const& set, Operation operation) {
  overAll(state, rows(set), operation);
}

/// One iteration calls operation(i) for every row i.
template <class Operation>
void overIndices(benchmark::State& state, std::string const& set, Operation operation) {
  std::size_t const n = rows(set).size();
  for (auto _ : state) {
    for (std::size_t i = 0; i < n; ++i) benchmark::DoNotOptimize(operation(i));
  }
  perIteration(state, n);
}

/// One iteration calls operation(i, j) for every pair of rows.
template <class Operation>
void overPairs(benchmark::State& state, std::string const& set, Operation operation) {
  for (auto _ : state) {
    for (Pair const& pair : pairs(set)) {
      benchmark::DoNotOptimize(operation(pair.first, pair.second));
    }
  }
  perIteration(state, pairs(set).size());
}

}  // namespace bench
