// The same work by lib2geom, from curves and paths that were made beforehand.
#include "accuracy.h"
#include <2geom/bezier-curve.h>
#include <2geom/bezier-utils.h>
#include <2geom/intersection-graph.h>
#include <2geom/path.h>

namespace bench {

namespace {

Geom::Point to2geom(Point const& p) { return {p.xval(), p.yval()}; }

Geom::CubicBezier to2geom(GxBezier const& s) {
  return {to2geom(s[0]), to2geom(s[1]), to2geom(s[2]), to2geom(s[3])};
}

std::vector<Geom::CubicBezier> const& cubics(std::string const& set) {
  static std::vector<Geom::CubicBezier> all[2];
  std::vector<Geom::CubicBezier>& found = all[set == "font" ? 0 : 1];
  if (found.empty()) {
    for (Row const& row : rows(set)) found.push_back(to2geom(row.segment));
  }
  return found;
}

void nearest(benchmark::State& state, char const* set) {
  auto const parameterOf = [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    return all[i].nearestTime(to2geom(inputs[i].query));
  };
  overIndices(state, set, parameterOf);
  noteNearest(state, set, parameterOf);
}

void crossings(benchmark::State& state, char const* set) {
  std::vector<Geom::CubicBezier> const& all = cubics(set);
  overPairs(state, set,
            [&all](unsigned i, unsigned j) { return all[i].intersect(all[j], 1e-6).size(); });
  noteCrossings(state, set, [&all](unsigned i, unsigned j) {
    std::vector<std::pair<double, double>> found;
    for (auto const& x : all[i].intersect(all[j], 1e-6)) found.emplace_back(x.first, x.second);
    return found;
  });
}

void arcLength(benchmark::State& state, char const* set, double accuracy) {
  auto const lengthOf = [=, &all = cubics(set)](std::size_t i) { return all[i].length(accuracy); };
  overIndices(state, set, lengthOf);
  noteLength(state, set, lengthOf);
}

void crossingsWithALine(benchmark::State& state, char const* set) {
  std::vector<Geom::LineSegment> lines;
  for (Row const& row : rows(set)) {
    lines.emplace_back(to2geom(row.lineStart), to2geom(row.lineEnd));
  }
  overIndices(state, set,
              [&](std::size_t i) { return cubics(set)[i].intersect(lines[i], 1e-6).size(); });
}

void pointsAndDerivatives(benchmark::State& state, char const* set) {
  overAll(state, cubics(set), [](Geom::CubicBezier const& c) {
    double sum = 0.0;
    for (int i = 0; i < 16; ++i) {
      std::vector<Geom::Point> const both = c.pointAndDerivatives(i / 15.0, 1);
      sum += both[0].x() + both[1].y();
    }
    return sum;
  });
}

void split(benchmark::State& state, char const* set) {
  overIndices(state, set, [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    auto const halves = all[i].subdivide(inputs[i].t);
    return halves.first[3].x() + halves.second[1].x();
  });
}

void tightBox(benchmark::State& state, char const* set) {
  overAll(state, cubics(set), [](Geom::CubicBezier const& c) {
    Geom::Rect const box = c.boundsExact();
    return box.left() + box.top() + box.right() + box.bottom();
  });
}

void loop(benchmark::State& state, char const* set) {
  overAll(state, cubics(set),
          [](Geom::CubicBezier const& c) { return c.intersectSelf(1e-6).size(); });
}

std::vector<Geom::Point> fitted(std::vector<Geom::Point> const& points, double error) {
  std::vector<Geom::Point> beziers(4 * points.size());
  int const n =
      Geom::bezier_fit_cubic_r(beziers.data(), points.data(), static_cast<int>(points.size()),
                               error, static_cast<unsigned>(points.size()));
  beziers.resize(n < 0 ? 0 : 4 * static_cast<std::size_t>(n));
  return beziers;
}

/// For one point of the coastlines.
void fit(benchmark::State& state, double error) {
  std::vector<std::vector<Geom::Point>> all;
  std::size_t points = 0;
  for (GxList<Point> const& coast : coasts()) {
    all.emplace_back();
    for (unsigned i = 0; i < coast.length(); ++i) all.back().push_back(to2geom(coast[i]));
    points += coast.length();
  }
  overAll(state, all,
          [error](std::vector<Geom::Point> const& coast) { return fitted(coast, error).size(); });
  perIteration(state, points);
  noteFit(state, coasts()[0], [&] {
    std::vector<GxBezier> chain;
    std::vector<Geom::Point> const p = fitted(all[0], error);
    auto const back = [&p](std::size_t i) { return Point(p[i].x(), p[i].y()); };
    for (std::size_t i = 0; i < p.size(); i += 4) {
      chain.emplace_back(back(i), back(i + 1), back(i + 2), back(i + 3));
    }
    return chain;
  });
}

std::vector<Geom::Path> letterPaths() {
  std::vector<Geom::Path> paths;
  for (GxBezierCurve const& letter : letters()) {
    Geom::Path path(to2geom(letter[0][0]));
    for (int i = 0; i < static_cast<int>(letter.length()); ++i) {
      GxBezier const& s = letter[i];
      path.appendNew<Geom::CubicBezier>(to2geom(s[1]), to2geom(s[2]), to2geom(s[3]));
    }
    path.close();
    paths.push_back(path);
  }
  return paths;
}

/// For one pair of letters, each with the next.
template <class Operation>
void overLetterPairs(benchmark::State& state, Operation operation) {
  std::vector<Geom::Path> const paths = letterPaths();
  for (auto _ : state) {
    for (std::size_t i = 1; i < paths.size(); ++i) {
      benchmark::DoNotOptimize(operation(paths[i - 1], paths[i]));
    }
  }
  perIteration(state, paths.size() - 1);
}

void letterCrossings(benchmark::State& state) {
  overLetterPairs(
      state, [](Geom::Path const& a, Geom::Path const& b) { return a.intersect(b, 1e-6).size(); });
}

/// Some unions fail with an exception; the figure counts them, with the time that they take.
void unite(benchmark::State& state) {
  std::size_t failed = 0;
  overLetterPairs(state, [&](Geom::Path const& a, Geom::Path const& b) -> std::size_t {
    try {
      return Geom::PathIntersectionGraph(Geom::PathVector(a), Geom::PathVector(b))
          .getUnion()
          .size();
    } catch (...) {
      return ++failed;
    }
  });
  double const calls = static_cast<double>(state.iterations()) * state.counters["operations"];
  state.counters["failed"] = static_cast<double>(failed) / calls;
}

}  // namespace

void enterLib2geom() {
  enterSets("nearest parameter", "lib2geom", nearest);
  enterSets("crossings of a pair", "lib2geom", crossings);
  enterSets("arc length, 0.1", "lib2geom",
            [](benchmark::State& state, char const* set) { arcLength(state, set, 0.1); });
  enterSets("arc length, 1e-6", "lib2geom",
            [](benchmark::State& state, char const* set) { arcLength(state, set, 1e-6); });
  enterSets("crossings with a line", "lib2geom", crossingsWithALine);
  enterSets("16 points and derivatives", "lib2geom", pointsAndDerivatives);
  enterSets("split", "lib2geom", split);
  enterSets("tight box", "lib2geom", tightBox);
  enterSets("loop", "lib2geom", loop);
  for (double const error : {0.25, 1.0, 9.0}) {
    char name[64];
    std::snprintf(name, sizeof name, "fit a point, squared error %g/coasts/lib2geom", error);
    enter(name, [error](benchmark::State& state) { fit(state, error); });
  }
  enter("crossings of two letters/letters/lib2geom", letterCrossings);
  enter("union of two letters/letters/lib2geom", unite);
}

}  // namespace bench
