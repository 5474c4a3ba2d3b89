// Curves with a stated accuracy: letters, coastlines and chains of segments.
#include <cmath>

#include "accuracy.h"

namespace bench {

namespace {

using Curves = std::vector<GxBezierCurve>;
using Position = GxBezierCurvePosition;

/// For one letter.
template <class Operation>
void overLetters(benchmark::State& state, Operation operation) {
  Curves const curves = letters();
  overAll(state, curves, operation);
}

/// For one pair of letters, each with the next.
template <class Operation>
void overLetterPairs(benchmark::State& state, Operation operation) {
  Curves const curves = letters();
  for (auto _ : state) {
    for (std::size_t i = 1; i < curves.size(); ++i) {
      benchmark::DoNotOptimize(operation(curves[i - 1], curves[i]));
    }
  }
  perIteration(state, curves.size() - 1);
}

void letterContacts(benchmark::State& state) {
  overLetterPairs(state, [](GxBezierCurve const& a, GxBezierCurve const& b) {
    return crv::contacts(a, b).points.size();
  });
}

void selfContacts(benchmark::State& state) {
  overLetters(state,
              [](GxBezierCurve const& curve) { return crv::selfContacts(curve).points.size(); });
}

void walk(benchmark::State& state, crv::Measure measure) {
  overLetters(state, [measure](GxBezierCurve const& curve) {
    return crv::walk(curve, Position(1, 0.5), 300.0, measure, 1e-6).has_value();
  });
}

void cut(benchmark::State& state) {
  overLetters(state, [](GxBezierCurve const& curve) {
    return crv::cut(curve, {Position(0, 0.5), Position(1, 0.5), Position(2, 0.5)}).size();
  });
}

void offset(benchmark::State& state) {
  overLetters(state,
              [](GxBezierCurve const& curve) { return crv::offset(curve, 5.0).parallels.size(); });
}

/// For one union of a curve with the next.
void unite(benchmark::State& state, Curves const& curves) {
  std::vector<Curves> lists;
  for (GxBezierCurve const& curve : curves) lists.push_back({curve});
  for (auto _ : state) {
    for (std::size_t i = 1; i < lists.size(); ++i) {
      benchmark::DoNotOptimize(
          crv::unite(lists[i - 1], lists[i], crv::FillRule::nonZero).curves.size());
    }
  }
  perIteration(state, lists.size() - 1);
}

/// The chain of a coastline, for one of its segments.
void simplify(benchmark::State& state) {
  GxBezierCurve const chain(&coasts()[0], 0.25);
  for (auto _ : state) benchmark::DoNotOptimize(crv::simplify(chain, 1.0).curve.length());
  perIteration(state, chain.length());
}

/// For one point of the coastlines; the error is a squared distance.
void fit(benchmark::State& state, double error) {
  std::vector<std::vector<Point>> all;
  std::size_t points = 0;
  for (GxList<Point> const& coast : coasts()) {
    all.emplace_back(coast.begin(), coast.end());
    points += coast.length();
  }
  crv::FitOptions options;
  options.tolerance = std::sqrt(error);
  auto const fitted = [=](std::vector<Point> const& coast) {
    return crv::fit(coast, options).curve;
  };
  overAll(state, all, [&](std::vector<Point> const& coast) { return fitted(coast).length(); });
  perIteration(state, points);
  noteFit(state, coasts()[0], [&] {
    GxBezierCurve const curve = fitted(all[0]);
    return std::vector<GxBezier>(curve.begin(), curve.end());
  });
}

}  // namespace

void enterAccurateCurves() {
  for (auto const& [name, error] :
       {std::pair("0.25", 0.25), std::pair("1", 1.0), std::pair("9", 9.0)}) {
    enter(std::string("fit a point, squared error ") + name + "/coasts/accurate",
          [error = error](benchmark::State& state) { fit(state, error); });
  }
  enter("simplify a segment, 1/coasts/accurate", simplify);
  enter("offset a letter/letters/accurate", offset);
  enter("crossings of two letters/letters/accurate", letterContacts);
  enter("contacts of a letter with itself/letters/accurate", selfContacts);
  enter("walk 300 units by length/letters/accurate",
        [](benchmark::State& s) { walk(s, crv::Measure::length); });
  enter("walk 300 units by chord/letters/accurate",
        [](benchmark::State& s) { walk(s, crv::Measure::chord); });
  enter("cut a letter at three places/letters/accurate", cut);
  enter("union of two letters/letters/accurate", [](benchmark::State& s) { unite(s, letters()); });
  enter("union of two letters, as in a word/letters/accurate",
        [](benchmark::State& s) { unite(s, word(mediumLetters())); });
}

}  // namespace bench
