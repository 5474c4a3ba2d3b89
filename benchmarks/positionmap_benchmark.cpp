#include <vector>

#include "support.h"

namespace {

using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;
using Position = GxBezierCurvePosition;

/// A closed curve of 100 segments in a ring.
GxBezierCurve ring() {
  GxBezierCurve curve;
  for (unsigned i = 0; i < 100; ++i) curve.getSegments().add(bench::rows("font")[i].segment);
  curve.setStrictIsClosed(1);
  return curve;
}

/// For one stretch of about 50 segments copied, with its map.
void copyAStretch(benchmark::State& state, Position const& start, Position const& end,
                  int forward) {
  GxBezierCurve source = ring();
  for (auto _ : state) {
    GxBezierCurve copy;
    MapHandle map;
    benchmark::DoNotOptimize(copyGxBezierCurve(copy, source, start, end, forward, map));
  }
  bench::perIteration(state, 1);
}
BENCHMARK_CAPTURE(copyAStretch, plain, Position(20, 0.5), Position(70, 0.25), 1);
BENCHMARK_CAPTURE(copyAStretch, across_the_seam, Position(70, 0.5), Position(20, 0.25), 1);
BENCHMARK_CAPTURE(copyAStretch, backwards, Position(70, 0.5), Position(20, 0.25), 0);

/// For one position.
void mapPositions(benchmark::State& state, int forward, bool inverse) {
  GxBezierCurve source = ring();
  GxBezierCurve copy;
  MapHandle map;
  copyGxBezierCurve(copy, source, Position(70, 0.5), Position(20, 0.25), forward, map);
  constexpr int kPositions = 1000;
  std::vector<Position> positions;
  for (int i = 0; i < kPositions; ++i) positions.emplace_back(i % 50, i * 1e-3);
  GxBezierCurvePositionMapBase const& carried = **map;
  for (auto _ : state) {
    Position out;
    for (Position const& p : positions) {
      benchmark::DoNotOptimize(inverse ? carried.inverseMapPosition(out, p)
                                       : carried.mapPosition(out, p));
      benchmark::DoNotOptimize(out);
    }
  }
  bench::perIteration(state, kPositions);
}
BENCHMARK_CAPTURE(mapPositions, across_the_seam, 1, false);
BENCHMARK_CAPTURE(mapPositions, across_the_seam_inverse, 1, true);
BENCHMARK_CAPTURE(mapPositions, backwards, 0, false);

void copyAHandle(benchmark::State& state) {
  MapHandle const map = constructIdentityPositionMap();
  for (auto _ : state) {
    MapHandle copy(map);
    benchmark::DoNotOptimize(copy);
  }
  bench::perIteration(state, 1);
}
BENCHMARK(copyAHandle);

}  // namespace
