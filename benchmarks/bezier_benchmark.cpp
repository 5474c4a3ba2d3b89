#include <list>

#include "support.h"

namespace {

using bench::Row;

// Each operation of a segment runs over the letters and over the random cubics.
#define BENCH(function)                      \
  BENCHMARK_CAPTURE(function, font, "font"); \
  BENCHMARK_CAPTURE(function, random, "random")

void value(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) { return row.segment.bValue(row.t); });
}
BENCH(value);

void derivative(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) { return row.segment.dValue(row.t); });
}
BENCH(derivative);

void split(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    GxBezier left;
    GxBezier right;
    row.segment.split(left, right, row.t);
    return left[3].xval() + right[1].xval();
  });
}
BENCH(split);

void isALine(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) { return row.segment.isALine(0.1); });
}
BENCH(isALine);

void nearest(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double t = 0.0;
    row.segment.findNearestPointTValue(row.query, t);
    return t;
  });
}
BENCH(nearest);

void parameterOfAPoint(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    return GxBezier(row.segment).findParameter(row.segment.bValue(row.t), 0.5, 1e-6);
  });
}
BENCH(parameterOfAPoint);

void tightBox(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double box[4];
    row.segment.localMinMax(box[0], box[1], box[2], box[3]);
    return box[0] + box[1] + box[2] + box[3];
  });
}
BENCH(tightBox);

void highestPoint(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double t = 0.0;
    double y = 0.0;
    row.segment.getMaxYTValue(t, y);
    return t + y;
  });
}
BENCH(highestPoint);

void rootsAtAHeight(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    GxList<double> list;
    return row.segment.findRoots(list, row.query.yval(), 0.0, 1.0);
  });
}
BENCH(rootsAtAHeight);

void inflection(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double t = 0.0;
    return GxBezier(row.segment).findInflectionPoint(t) + t;
  });
}
BENCH(inflection);

void arcLength(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) { return row.segment.length(0.0); });
}
BENCH(arcLength);

void parameterAtADistance(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double lo = 0.0;
    double hi = 1.0;
    return row.segment.splitAtFixedLengthAfter(row.arcLength, 0, lo, hi, 0.0);
  });
}
BENCH(parameterAtADistance);

void polylineByChords(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    GxList<GxCoord<double>> out;
    row.segment.makeSegment(10.0, out, 0.0);
    return out.length();
  });
}
BENCH(polylineByChords);

void polylineByLongChords(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    GxList<GxCoord<double>> out;
    row.segment.makeSegmentEx(20.0, 5.0, 0.5, out, 0.0);
    return out.length();
  });
}
BENCH(polylineByLongChords);

void polylineByHalving(benchmark::State& state, std::string const& set, double tol) {
  bench::overRows(state, set, [tol](Row const& row) {
    std::vector<GxCoord<double>> out;
    row.segment.getPolyline(tol, out);
    return out.size();
  });
}
BENCHMARK_CAPTURE(polylineByHalving, font_tolerance_1, "font", 1.0);
BENCHMARK_CAPTURE(polylineByHalving, font_tolerance_0_1, "font", 0.1);
BENCHMARK_CAPTURE(polylineByHalving, font_tolerance_0_01, "font", 0.01);
BENCHMARK_CAPTURE(polylineByHalving, random_tolerance_0_1, "random", 0.1);

void crossings(benchmark::State& state, std::string const& set) {
  std::vector<Row> const& rows = bench::rows(set);
  std::vector<bench::Pair> const& pairs = bench::pairs(set);
  for (auto _ : state) {
    for (bench::Pair const& pair : pairs) {
      GxList<double> first;
      GxList<double> second;
      GxBezier segment = rows[pair.first].segment;
      benchmark::DoNotOptimize(segment.findIntersections(rows[pair.second].segment, first, second));
    }
  }
  bench::perIteration(state, pairs.size());
}
BENCH(crossings);

void crossingsWithALine(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    GxList<double> segmentParams;
    GxList<double> lineParams;
    return row.segment.findYCStrongIntersection(row.lineStart, row.lineEnd, segmentParams,
                                                lineParams);
  });
}
BENCH(crossingsWithALine);

void loop(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double t1 = 0.0;
    double t2 = 0.0;
    return GxBezier(row.segment).isSelfIntersect(t1, t2) + t1;
  });
}
BENCH(loop);

void closestSamples(benchmark::State& state, std::string const& set) {
  std::vector<Row> const& rows = bench::rows(set);
  std::vector<bench::Pair> const& pairs = bench::pairs(set);
  for (auto _ : state) {
    for (bench::Pair const& pair : pairs) {
      double t1 = 0.0;
      double t2 = 0.0;
      GxBezier segment = rows[pair.first].segment;
      benchmark::DoNotOptimize(segment.findClosestPoints(rows[pair.second].segment, t1, t2));
    }
  }
  bench::perIteration(state, pairs.size());
}
BENCH(closestSamples);

void nextParameter(benchmark::State& state, char const* set) {
  bench::overRows(state, set, [](Row const& row) {
    double t = 0.0;
    double const distance = 0.25 * row.arcLength;
    row.segment.findNextPos(t, 0.0, distance * distance, 1);
    return t;
  });
}
BENCH(nextParameter);

}  // namespace
