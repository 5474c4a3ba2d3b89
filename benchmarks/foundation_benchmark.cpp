#include "support.h"

namespace {

/// Roots of the cubics that a line against a segment comes down to.
void cubicRootsOfHeights(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](bench::Row const& row) {
    GxBezier const& s = row.segment;
    double const y[] = {s[0].yval(), s[1].yval(), s[2].yval(), s[3].yval()};
    double roots[3] = {};
    int const n = cubicRoots(-y[0] + 3 * y[1] - 3 * y[2] + y[3], 3 * y[0] - 6 * y[1] + 3 * y[2],
                             3 * y[1] - 3 * y[0], y[0] - row.query.yval(), roots);
    return n + roots[0];
  });
}
BENCHMARK_CAPTURE(cubicRootsOfHeights, font, "font");
BENCHMARK_CAPTURE(cubicRootsOfHeights, random, "random");

constexpr unsigned kLength = 1000;

GxList<double> ascending() {
  GxList<double> list;
  for (unsigned i = 0; i < kLength; ++i) list.add(i);
  return list;
}

void listAdd(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ascending().length());
  bench::perIteration(state, kLength);
}
BENCHMARK(listAdd);

void listIndexForwards(benchmark::State& state) {
  GxList<double> const list = ascending();
  for (auto _ : state) {
    double sum = 0.0;
    for (unsigned i = 0; i < kLength; ++i) sum += list[i];
    benchmark::DoNotOptimize(sum);
  }
  bench::perIteration(state, kLength);
}
BENCHMARK(listIndexForwards);

void listIndexAtRandom(benchmark::State& state) {
  GxList<double> const list = ascending();
  for (auto _ : state) {
    double sum = 0.0;
    for (unsigned i = 0; i < kLength; ++i) sum += list[i * 7919u % kLength];
    benchmark::DoNotOptimize(sum);
  }
  bench::perIteration(state, kLength);
}
BENCHMARK(listIndexAtRandom);

}  // namespace
