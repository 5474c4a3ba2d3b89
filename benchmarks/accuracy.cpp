#include "accuracy.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace bench {

namespace {

using Notes = std::map<std::string, double>;

/// Google Benchmark runs each function several times: the figures are computed the first time.
void noteOnce(benchmark::State& state, std::function<Notes()> const& make) {
  static std::map<std::string, Notes> all;
  auto const at = all.find(running());
  for (auto const& [name, value] : at == all.end() ? all[running()] = make() : at->second) {
    state.counters[name] = value;
  }
}

double distanceAt(Row const& row, double t) { return row.segment.bValue(t).distance(row.query); }

/// The least distance: 512 samples, and a search by thirds around each that is lower than its
/// neighbours.
double leastDistance(Row const& row) {
  constexpr int kSamples = 512;
  std::vector<double> d;
  for (int i = 0; i <= kSamples; ++i) d.push_back(distanceAt(row, i / double{kSamples}));
  double least = std::min(d.front(), d.back());
  for (int i = 1; i < kSamples; ++i) {
    auto const at = static_cast<std::size_t>(i);
    if (d[at] > d[at - 1] || d[at] > d[at + 1]) continue;
    double lo = (i - 1) / double{kSamples}, hi = (i + 1) / double{kSamples};
    for (int k = 0; k < 80; ++k) {
      double const third = (hi - lo) / 3.0;
      (distanceAt(row, lo + third) < distanceAt(row, hi - third) ? hi : lo) +=
          distanceAt(row, lo + third) < distanceAt(row, hi - third) ? -third : third;
    }
    least = std::min(least, distanceAt(row, lo));
  }
  return least;
}

double chordLength(GxBezier const& s, int chords) {
  double sum = 0.0;
  for (int i = 0; i < chords; ++i) {
    sum += s.bValue(double(i) / chords).distance(s.bValue(double(i + 1) / chords));
  }
  return sum;
}

/// Chords of two sizes, extrapolated: their errors are proportional to the square of the size.
double referenceLength(GxBezier const& s) {
  return (4.0 * chordLength(s, 4096) - chordLength(s, 2048)) / 3.0;
}

double distanceToPolyline(Point const& p, std::vector<Point> const& polyline) {
  double least = p.distance(polyline[0]);
  for (std::size_t i = 1; i < polyline.size(); ++i) {
    least = std::min(least, distanceToLineSegment(polyline[i - 1], polyline[i], p));
  }
  return least;
}

std::vector<Point> denseOf(GxBezier const& s, int chords) {
  std::vector<Point> points;
  for (int i = 0; i <= chords; ++i) points.push_back(s.bValue(double(i) / chords));
  return points;
}

/// The crossings of two polylines of 256 chords.
double crossingsOfDense(GxBezier const& a, GxBezier const& b) {
  std::vector<Point> const p = denseOf(a, 256), q = denseOf(b, 256);
  double found = 0.0;
  for (std::size_t i = 1; i < p.size(); ++i) {
    for (std::size_t j = 1; j < q.size(); ++j) {
      GxVector<double> const u = p[i] - p[i - 1], v = q[j] - q[j - 1];
      bool const crossesV =
          (u.cross(q[j - 1] - p[i - 1]) < 0.0) != (u.cross(q[j] - p[i - 1]) < 0.0);
      if (crossesV && (v.cross(p[i - 1] - q[j - 1]) < 0.0) != (v.cross(p[i] - q[j - 1]) < 0.0)) {
        ++found;
      }
    }
  }
  return found;
}

}  // namespace

void noteNearest(benchmark::State& state, std::string const& set,
                 std::function<double(std::size_t)> const& parameterOf) {
  noteOnce(state, [&] {
    static std::map<std::string, std::vector<double>> references;
    std::vector<double>& least = references[set];
    if (least.empty()) {
      for (Row const& row : rows(set)) least.push_back(leastDistance(row));
    }
    double worst = 0.0;
    for (std::size_t i = 0; i < least.size(); ++i) {
      worst = std::max(worst, distanceAt(rows(set)[i], parameterOf(i)) - least[i]);
    }
    return Notes{{"off by", worst}};
  });
}

void noteLength(benchmark::State& state, std::string const& set,
                std::function<double(std::size_t)> const& lengthOf) {
  noteOnce(state, [&] {
    double worst = 0.0;
    for (std::size_t i = 0; i < rows(set).size(); ++i) {
      worst = std::max(worst, std::fabs(lengthOf(i) - referenceLength(rows(set)[i].segment)));
    }
    return Notes{{"off by", worst}};
  });
}

void notePolyline(benchmark::State& state, std::string const& set,
                  std::function<std::vector<Point>(std::size_t)> const& polylineOf) {
  noteOnce(state, [&] {
    double worst = 0.0, points = 0.0;
    for (std::size_t i = 0; i < rows(set).size(); ++i) {
      std::vector<Point> const polyline = polylineOf(i);
      points += static_cast<double>(polyline.size());
      for (Point const& p : denseOf(rows(set)[i].segment, 64)) {
        worst = std::max(worst, distanceToPolyline(p, polyline));
      }
    }
    return Notes{{"off by", worst}, {"points", points / static_cast<double>(rows(set).size())}};
  });
}

void noteCrossings(
    benchmark::State& state, std::string const& set,
    std::function<std::vector<std::pair<double, double>>(unsigned, unsigned)> const& crossingsOf) {
  noteOnce(state, [&] {
    static std::map<std::string, double> references;
    bool const isNew = references.find(set) == references.end();
    double found = 0.0, widest = 0.0;
    for (Pair const& pair : pairs(set)) {
      GxBezier const& a = rows(set)[pair.first].segment;
      GxBezier const& b = rows(set)[pair.second].segment;
      if (isNew) references[set] += crossingsOfDense(a, b);
      for (auto const& [t, u] : crossingsOf(pair.first, pair.second)) {
        ++found;
        widest = std::max(widest, a.bValue(t).distance(b.bValue(u)));
      }
    }
    return Notes{{"found", found}, {"of", references[set]}, {"off by", widest}};
  });
}

void noteFit(benchmark::State& state, GxList<Point> const& samples,
             std::function<std::vector<GxBezier>()> const& fit) {
  noteOnce(state, [&] {
    std::vector<GxBezier> const chain = fit();
    std::vector<Point> dense;
    for (GxBezier const& s : chain) {
      std::vector<Point> const points = denseOf(s, 16);
      dense.insert(dense.end(), points.begin(), points.end());
    }
    double worst = 0.0;
    for (unsigned i = 0; i < samples.length(); ++i) {
      worst = std::max(worst, distanceToPolyline(samples[i], dense));
    }
    return Notes{{"segments", static_cast<double>(chain.size())}, {"off by", worst}};
  });
}

}  // namespace bench
