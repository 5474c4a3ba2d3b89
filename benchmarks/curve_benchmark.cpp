#include <list>
#include <string>

#include "support.h"

namespace {

using Point = GxCoord<double>;

/// The first 1,000 points of every coastline and more, as chains of segments.
std::vector<GxBezierCurve> const& chains() {
  static std::vector<GxBezierCurve> const all = [] {
    std::vector<GxBezierCurve> made;
    for (GxList<Point> const& points : bench::coasts()) made.emplace_back(&points, 0.25);
    return made;
  }();
  return all;
}

std::size_t segmentsOf(std::vector<GxBezierCurve> const& curves) {
  std::size_t n = 0;
  for (GxBezierCurve const& curve : curves) n += curve.length();
  return n;
}

/// For one point of the coastlines.
void fit(benchmark::State& state, double error) {
  std::size_t points = 0;
  for (GxList<Point> const& coast : bench::coasts()) points += coast.length();
  for (auto _ : state) {
    for (GxList<Point> const& coast : bench::coasts()) {
      GxBezierCurve const curve(&coast, error);
      benchmark::DoNotOptimize(curve.length());
    }
  }
  bench::perIteration(state, points);
}
BENCHMARK_CAPTURE(fit, error_0_25, 0.25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fit, error_1, 1.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fit, error_9, 9.0)->Unit(benchmark::kMillisecond);

/// The following are for one segment of the coastlines' chains.
template <class Operation>
void overChains(benchmark::State& state, Operation operation) {
  std::vector<GxBezierCurve> curves = chains();
  for (auto _ : state) {
    for (GxBezierCurve& curve : curves) benchmark::DoNotOptimize(operation(curve));
  }
  bench::perIteration(state, segmentsOf(curves));
}

void copyACurve(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) { return GxBezierCurve(curve).length(); });
}
BENCHMARK(copyACurve);

void curveLength(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) { return curve.curveLength(); });
}
BENCHMARK(curveLength);

void curveBox(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) {
    double box[4];
    curve.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
    return box[0] + box[3];
  });
}
BENCHMARK(curveBox);

void curveByEqualChords(benchmark::State& state, double step, int mode) {
  overChains(state, [=](GxBezierCurve& curve) {
    GxList<Point> out;
    curve.makeCurve(step, out, mode);
    return out.length();
  });
}
BENCHMARK_CAPTURE(curveByEqualChords, step_2, 2.0, 0);
BENCHMARK_CAPTURE(curveByEqualChords, step_2_each_segment, 2.0, 1);

void curveByHalving(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) {
    std::vector<Point> out;
    curve.getPolyline(0.1, out);
    return out.size();
  });
}
BENCHMARK(curveByHalving);

}  // namespace
