#include <list>
#include <string>

#include "support.h"

namespace {

using Point = GxCoord<double>;

/// The coastlines as chains of segments.
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

void nearestOnACurve(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) {
    GxBezierCurvePosition pos;
    curve.findNearestPointPos(curve[static_cast<int>(curve.length() / 2)][1], pos);
    return pos.getTValue();
  });
}
BENCHMARK(nearestOnACurve);

void orientation(benchmark::State& state) {
  overChains(state, [](GxBezierCurve& curve) {
    int valid = 0;
    return curve.isClockwise(valid) + valid;
  });
}
BENCHMARK(orientation);

void offsetACurve(benchmark::State& state, int mode) {
  overChains(state, [mode](GxBezierCurve& curve) {
    GxBezierCurve copy(curve);
    copy.offset(2.0, 1, mode);
    return copy.length();
  });
}
BENCHMARK_CAPTURE(offsetACurve, plain, 0);
BENCHMARK_CAPTURE(offsetACurve, cut_first, 1);

void velocity(benchmark::State& state) {
  overChains(state, [](GxBezierCurve const& curve) {
    GxVector<double> in;
    GxVector<double> out;
    double sum = 0.0;
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
      curve.getVelocityVectors(GxBezierCurvePosition(i, 0.0), in, out);
      sum += in.xval() + out.yval();
    }
    return sum;
  });
}
BENCHMARK(velocity);

/// For one step of one unit along the chain of most segments, from its start and from its middle;
/// the chain is enlarged, since steps that pass several segments fail now and then.
void step(benchmark::State& state, double startShare) {
  GxBezierCurve longest;
  for (GxBezierCurve const& curve : chains()) {
    if (curve.length() > longest.length()) longest = curve;
  }
  longest.resize(10.0, 10.0);
  int const n = static_cast<int>(longest.length());
  constexpr int kSteps = 100;
  for (auto _ : state) {
    GxBezierCurvePosition pos(static_cast<int>(n * startShare), 0.0);
    for (int i = 0; i < kSteps; ++i) {
      if (longest.findNextPos(pos, pos, 1.0, 1, 0) != 0) state.SkipWithError("the walk ended");
    }
  }
  bench::perIteration(state, kSteps);
}
BENCHMARK_CAPTURE(step, at_the_start, 0.0);
BENCHMARK_CAPTURE(step, from_the_middle, 0.5);

}  // namespace
