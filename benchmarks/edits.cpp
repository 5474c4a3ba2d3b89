// Edits and maps.
#include "support.h"

namespace bench {

namespace {

using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;
using Position = GxBezierCurvePosition;

/// A closed curve of 100 segments in a ring.
GxBezierCurve ring() {
  GxBezierCurve curve;
  for (unsigned i = 0; i < 100; ++i) curve.getSegments().add(rows("font")[i].segment);
  curve.setStrictIsClosed(1);
  return curve;
}

/// One stretch of about 50 segments copied, with its map.
void copyAStretch(benchmark::State& state, Position const& start, Position const& end,
                  int forward) {
  GxBezierCurve source = ring();
  for (auto _ : state) {
    GxBezierCurve copy;
    MapHandle map;
    benchmark::DoNotOptimize(copyGxBezierCurve(copy, source, start, end, forward, map));
  }
  perIteration(state, 1);
}

void stretch(benchmark::State& state, Position const& start, Position const& end, bool forward) {
  GxBezierCurve const source = ring();
  for (auto _ : state) benchmark::DoNotOptimize(crv::stretch(source, start, end, forward));
  perIteration(state, 1);
}

void mapPositions(benchmark::State& state, bool inverse) {
  GxBezierCurve source = ring(), copy;
  MapHandle map;
  if (copyGxBezierCurve(copy, source, Position(70, 0.5), Position(20, 0.25), 1, map) != 0) {
    state.SkipWithError("there is no such stretch");
    return;
  }
  std::vector<Position> positions;
  for (int i = 0; i < 1000; ++i) positions.emplace_back(i % 50, i * 1e-3);
  GxBezierCurvePositionMapBase const& carried = **map;
  overAll(state, positions, [&](Position const& p) {
    Position out;
    int const code = inverse ? carried.inverseMapPosition(out, p) : carried.mapPosition(out, p);
    return code + out.getTValue();
  });
}

void copyAHandle(benchmark::State& state) {
  MapHandle const map = constructIdentityPositionMap();
  for (auto _ : state) {
    MapHandle copy(map);
    benchmark::DoNotOptimize(copy);
  }
  perIteration(state, 1);
}

}  // namespace

void enterEdits() {
  enter("copy a stretch of 50 segments/plain/CRV",
        [](benchmark::State& s) { copyAStretch(s, Position(20, 0.5), Position(70, 0.25), 1); });
  enter("copy a stretch of 50 segments/over the seam/CRV",
        [](benchmark::State& s) { copyAStretch(s, Position(70, 0.5), Position(20, 0.25), 1); });
  enter("copy a stretch of 50 segments/backwards/CRV",
        [](benchmark::State& s) { copyAStretch(s, Position(70, 0.5), Position(20, 0.25), 0); });
  enter("copy a stretch of 50 segments/plain/accurate",
        [](benchmark::State& s) { stretch(s, Position(20, 0.5), Position(70, 0.25), true); });
  enter("copy a stretch of 50 segments/over the seam/accurate",
        [](benchmark::State& s) { stretch(s, Position(70, 0.5), Position(20, 0.25), true); });
  enter("copy a stretch of 50 segments/backwards/accurate",
        [](benchmark::State& s) { stretch(s, Position(70, 0.5), Position(20, 0.25), false); });
  enter("map a position/forth/CRV", [](benchmark::State& s) { mapPositions(s, false); });
  enter("map a position/back/CRV", [](benchmark::State& s) { mapPositions(s, true); });
  enter("copy a handle/a map/CRV", copyAHandle);
}

}  // namespace bench
