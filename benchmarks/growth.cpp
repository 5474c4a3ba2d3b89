// The growth of costs with the size of the input, which is the last part of each benchmark's name.
#include <cmath>

#include "support.h"

namespace bench {

namespace {

/// A wavy line: n segments of one unit's width, one above, one below.
GxBezierCurve waves(int n, double y = 0.0) {
  GxBezierCurve curve;
  for (int i = 0; i < n; ++i) {
    double const x = 4.0 * i;
    double const swing = i % 2 == 0 ? 3.0 : -3.0;
    curve.getSegments().add(
        GxBezier({x, y}, {x + 1.0, y + swing}, {x + 3.0, y + swing}, {x + 4.0, y}));
  }
  return curve;
}

/// A row of equal arches, at whose joints no chord of 4.5 ends.
GxBezierCurve arches(int n) {
  GxBezierCurve curve;
  for (int i = 0; i < n; ++i) {
    double const x = 10.0 * i;
    curve.getSegments().add(GxBezier({x, 0.0}, {x + 3.0, 1.0}, {x + 7.0, 1.0}, {x + 10.0, 0.0}));
  }
  return curve;
}

/// Runs operation(curve) on make(n).
template <class Make, class Operation>
auto onCurve(Make make, Operation operation) {
  return [=](benchmark::State& state, int n) {
    GxBezierCurve curve = make(n);
    for (auto _ : state) benchmark::DoNotOptimize(operation(curve));
    perIteration(state, 1);
  };
}

template <class Operation>
auto onWaves(Operation operation) {
  return onCurve([](int n) { return waves(n); }, operation);
}

template <class Operation>
auto onArches(Operation operation) {
  return onCurve(arches, operation);
}

/// Runs operation(a, b) on two waves of n segments that cross some hundred times at most.
template <class Operation>
auto onTwoWaves(Operation operation) {
  return [operation](benchmark::State& state, int n) {
    GxBezierCurve a = waves(n), b = waves(n, 4.0);
    b.resize(1.0, 1.0 - 1.0 / n);
    for (auto _ : state) benchmark::DoNotOptimize(operation(a, b));
    perIteration(state, 1);
  };
}

void fit(benchmark::State& state, int n) {
  GxList<Point> stroke;
  for (int i = 0; i < n; ++i) {
    double const x = 0.2 * i;
    stroke.add(Point(x, 20.0 * std::sin(0.05 * x) + std::sin(0.7 * x)));
  }
  for (auto _ : state) benchmark::DoNotOptimize(GxBezierCurve(&stroke, 0.01).length());
  perIteration(state, 1);
}

/// For one element.
void indexAccess(benchmark::State& state, int n) {
  GxList<double> list;
  for (int i = 0; i < n; ++i) list.add(i);
  for (auto _ : state) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) sum += list[static_cast<unsigned>(i)];
    benchmark::DoNotOptimize(sum);
  }
  perIteration(state, static_cast<std::size_t>(n));
}

/// For one query at places all along the curve.
void searchNearest(benchmark::State& state, int n) {
  crv::CurveSearch const search(waves(n));
  std::size_t constexpr kQueries = 64;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kQueries; ++i) {
      Point const p(4.0 * n * static_cast<double>(i * 37 % kQueries) / kQueries, 3.0);
      benchmark::DoNotOptimize(search.nearest(p)->distance);
    }
  }
  perIteration(state, kQueries);
}

void fitClosely(benchmark::State& state, int n) {
  std::vector<Point> stroke;
  for (int i = 0; i < n; ++i) {
    double const x = 0.2 * i;
    stroke.emplace_back(x, 20.0 * std::sin(0.05 * x) + std::sin(0.7 * x));
  }
  crv::FitOptions options;
  options.tolerance = 0.1;
  for (auto _ : state) benchmark::DoNotOptimize(crv::fit(stroke, options).curve.length());
  perIteration(state, 1);
}

void uniteLetters(benchmark::State& state, int n) {
  std::vector<GxBezierCurve> const row = rowOfLetters(static_cast<std::size_t>(n));
  for (auto _ : state) {
    benchmark::DoNotOptimize(crv::unite(row, {}, crv::FillRule::nonZero).curves.size());
  }
  perIteration(state, 1);
}

void uniteWord(benchmark::State& state, int n) {
  std::vector<GxBezierCurve> const letters = word(static_cast<std::size_t>(n));
  for (auto _ : state) {
    benchmark::DoNotOptimize(crv::unite(letters, {}, crv::FillRule::nonZero).curves.size());
  }
  perIteration(state, 1);
}

void uniteCopies(benchmark::State& state, int n) {
  std::vector<GxBezierCurve> const copies(static_cast<std::size_t>(n), letters()[0]);
  for (auto _ : state) {
    benchmark::DoNotOptimize(crv::unite(copies, {}, crv::FillRule::nonZero).curves.size());
  }
  perIteration(state, 1);
}

GxBezierCurve polygon(std::vector<Point> const& corners) {
  GxBezierCurve curve;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    Point const &from = corners[i], &to = corners[(i + 1) % corners.size()];
    curve.getSegments().add(GxBezier(from, from, to, to));
  }
  curve.setStrictIsClosed(1);
  return curve;
}

/// Squares in rows, each over its neighbours.
void uniteGrid(benchmark::State& state, int n) {
  std::vector<GxBezierCurve> squares;
  int const side = static_cast<int>(std::sqrt(n));
  for (int i = 0; i < n; ++i) {
    double const x = 10.0 * (i % side), y = 10.0 * (i / side);
    squares.push_back(polygon({{x, y}, {x + 12.0, y}, {x + 12.0, y + 12.0}, {x, y + 12.0}}));
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(crv::unite(squares, {}, crv::FillRule::nonZero).curves.size());
  }
  perIteration(state, 1);
}

/// Slivers that share one corner: each two of them meet.
void uniteFan(benchmark::State& state, int n) {
  std::vector<GxBezierCurve> slivers;
  for (int i = 0; i < n; ++i) {
    double const angle = 6.28 * i / n, next = angle + 2.0 / n;
    slivers.push_back(polygon({{0.0, 0.0},
                               {1000.0 * std::cos(angle), 1000.0 * std::sin(angle)},
                               {1000.0 * std::cos(next), 1000.0 * std::sin(next)}}));
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(crv::unite(slivers, {}, crv::FillRule::nonZero).curves.size());
  }
  perIteration(state, 1);
}

double walkWhole(GxBezierCurve const& curve, int shortChords) {
  GxBezierCurvePosition to;
  int const code = curve.findNextPos(GxBezierCurvePosition(0, 0.0), to,
                                     4.0 * static_cast<double>(curve.length()), 1, shortChords);
  return code + to.getTValue();
}

}  // namespace

void enterGrowths() {
  std::vector<int> const segments{1, 10, 100, 1000, 10000};
  enterGrowth("fit of n points", "n log n", {100, 1000, 10000, 100000}, fit);
  enterGrowth(
      "nearest position on n segments", "n at most", segments, onWaves([](GxBezierCurve& curve) {
        GxBezierCurvePosition pos;
        curve.findNearestPointPos(Point(2.0 * static_cast<double>(curve.length()), 9.0), pos);
        return pos.getTValue();
      }));
  enterGrowth("length of n segments", "n", segments,
              onWaves([](GxBezierCurve& curve) { return curve.curveLength(); }));
  enterGrowth("crossing with a line, n segments", "n", segments, onWaves([](GxBezierCurve& curve) {
                GxBezierCurvePosition result;
                double const x = 4.0 * static_cast<double>(curve.length()) - 1.0;
                return curve.findFirstGeometricLineIntersection(
                           Point(x, -5.0), GxVector<double>(0.0, 1.0), curve.firstPos(),
                           curve.lastPos(), result, 1e-8) +
                       result.getTValue();
              }));
  enterGrowth("equal chords of 4.5 over n joints", "n", segments,
              onArches([](GxBezierCurve& curve) {
                GxList<Point> out;
                curve.makeCurve(4.5, out, 0);
                return out.length();
              }));
  enterGrowth("long chords over n joints", "n", segments, onArches([](GxBezierCurve& curve) {
                GxList<Point> out;
                curve.makeCurveEx(4.5, 1.0, 0.5, out);
                return out.length();
              }));
  enterGrowth("halving of n segments", "n", segments, onWaves([](GxBezierCurve& curve) {
                std::vector<Point> out;
                curve.getPolyline(0.1, out);
                return out.size();
              }));
  enterGrowth("walk over n segments, one chord", "n", segments,
              onWaves([](GxBezierCurve& curve) { return walkWhole(curve, 0); }));
  enterGrowth("walk over n segments, short chords", "n^2 at most", {1, 10, 100, 1000},
              onWaves([](GxBezierCurve& curve) { return walkWhole(curve, 1); }));
  enterGrowth("offset of n segments", "n", segments, onWaves([](GxBezierCurve const& curve) {
                GxBezierCurve copy(curve);
                copy.offset(0.6, 1, 1);
                return copy.length();
              }));
  enterGrowth("crossings of n and n segments", "1.18", {10, 100, 1000, 10000},
              onTwoWaves([](GxBezierCurve& a, GxBezierCurve& b) {
                GxList<Point> points;
                a.findIntersections(b, points);
                return points.length();
              }));
  enterGrowth("least sampled distance, n and n", "n^2 at most", {10, 100, 1000},
              onTwoWaves([](GxBezierCurve& a, GxBezierCurve& b) { return a.getMinSqDistance(b); }));
  enterGrowth("accurate: nearest by CurveSearch, n segments", "0.2 at most", segments,
              searchNearest);
  enterGrowth("accurate: contacts of n and n segments", "1.15 at most", {10, 100, 1000, 10000},
              onTwoWaves([](GxBezierCurve const& a, GxBezierCurve const& b) {
                return crv::contacts(a, b).points.size();
              }));
  enterGrowth(
      "accurate: contacts of n segments with themselves", "n log n", segments,
      onWaves([](GxBezierCurve const& curve) { return crv::selfContacts(curve).points.size(); }));
  enterGrowth("accurate: length of n segments", "n", segments,
              onWaves([](GxBezierCurve const& curve) { return crv::arcLength(curve, 1e-6); }));
  enterGrowth("accurate: walk over n segments by length", "n", segments,
              onWaves([](GxBezierCurve const& curve) {
                double const distance = 4.0 * static_cast<double>(curve.length());
                return crv::walk(curve, {0, 0.0}, distance, crv::Measure::length, 1e-6).has_value();
              }));
  enterGrowth(
      "accurate: few chords of n segments", "n", segments,
      onWaves([](GxBezierCurve const& curve) { return crv::flatten(curve, 0.01).points.size(); }));
  enterGrowth("accurate: cut of n segments at the middle", "n", segments,
              onWaves([](GxBezierCurve const& curve) {
                return crv::cut(curve, {{static_cast<int>(curve.length() / 2), 0.5}}).size();
              }));
  enterGrowth(
      "accurate: offset of n segments", "n log n", {1, 10, 100, 1000, 10000},
      onWaves([](GxBezierCurve const& curve) { return crv::offset(curve, 0.5).parallels.size(); }));
  enterGrowth(
      "accurate: simplified chain of n segments", "n log n", segments,
      onWaves([](GxBezierCurve const& curve) { return crv::simplify(curve, 0.1).curve.length(); }));
  enterGrowth("accurate: fit of n points", "n log n", {100, 1000, 10000, 100000}, fitClosely);
  enterGrowth("accurate: union of a row of n letters", "n log n", {1, 10, 100, 1000}, uniteLetters);
  enterGrowth("accurate: union of a word of n letters", "n log n", {10, 100, 1000, 10000},
              uniteWord);
  enterGrowth("accurate: union of n copies of a letter", "n log n", {10, 100, 1000, 10000},
              uniteCopies);
  enterGrowth("accurate: union of a grid of n squares", "n log n", {100, 1024, 10000}, uniteGrid);
  enterGrowth("accurate: union of n slivers around a corner", "n^2 meetings", {10, 100, 1000},
              uniteFan);
  enterGrowth("list element by index, of n", "constant", {100, 1000, 10000, 100000}, indexAccess);
}

}  // namespace bench
