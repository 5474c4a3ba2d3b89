// Curves: fits to coastlines, queries of their chains and of letters. All but the fits are for one
// segment of the curve, unless the name says otherwise.
#include <array>
#include <cmath>

#include "accuracy.h"

namespace bench {

namespace {

/// The coastlines as chains of segments.
std::vector<GxBezierCurve>& chains() {
  static std::vector<GxBezierCurve> all = [] {
    std::vector<GxBezierCurve> made;
    for (GxList<Point> const& points : coasts()) made.emplace_back(&points, 0.25);
    return made;
  }();
  return all;
}

/// For one point of the coastlines.
void fit(benchmark::State& state, double error) {
  std::size_t points = 0;
  for (GxList<Point> const& coast : coasts()) points += coast.length();
  overAll(state, coasts(),
          [error](GxList<Point> const& coast) { return GxBezierCurve(&coast, error).length(); });
  perIteration(state, points);
  noteFit(state, coasts()[0], [error] {
    GxBezierCurve const curve(&coasts()[0], error);
    std::vector<GxBezier> chain;
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) chain.push_back(curve[i]);
    return chain;
  });
}

template <class Operation>
void overCurves(benchmark::State& state, std::vector<GxBezierCurve> curves, Operation operation) {
  std::size_t segments = 0;
  for (GxBezierCurve const& curve : curves) segments += curve.length();
  overAll(state, curves, operation);
  perIteration(state, segments);
}

void copyACurve(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve& curve) { return GxBezierCurve(curve).length(); });
}

void curveLength(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve& curve) { return curve.curveLength(); });
}

void curveBox(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve& curve) {
    double box[4];
    curve.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
    return box[0] + box[3];
  });
}

void byEqualChords(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve& curve) {
    GxList<Point> out;
    curve.makeCurve(2.0, out, 0);
    return out.length();
  });
}

void byHalving(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve& curve) {
    std::vector<Point> out;
    curve.getPolyline(0.1, out);
    return out.size();
  });
}

void orientation(benchmark::State& state) {
  overCurves(state, letters(), [](GxBezierCurve& curve) {
    int valid = 0;
    return curve.isClockwise(valid) + valid;
  });
}

/// For one letter.
void offsetALetter(benchmark::State& state, int mode) {
  std::vector<GxBezierCurve> curves = letters();
  overAll(state, curves, [mode](GxBezierCurve const& curve) {
    GxBezierCurve copy(curve);
    copy.offset(5.0, 1, mode);
    return copy.length();
  });
}

void tangents(benchmark::State& state) {
  overCurves(state, chains(), [](GxBezierCurve const& curve) {
    GxVector<double> in, out;
    double sum = 0.0;
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
      sum += curve.getVelocityVectors(GxBezierCurvePosition(i, 0.0), in, out);
      sum += in.xval() + out.yval();
    }
    return sum;
  });
}

/// For one pair of letters, each with the next.
template <class Operation>
void overLetterPairs(benchmark::State& state, Operation operation) {
  std::vector<GxBezierCurve> curves = letters();
  for (auto _ : state) {
    for (std::size_t i = 1; i < curves.size(); ++i) {
      benchmark::DoNotOptimize(operation(curves[i - 1], curves[i]));
    }
  }
  perIteration(state, curves.size() - 1);
}

void letterCrossings(benchmark::State& state) {
  overLetterPairs(state, [](GxBezierCurve& a, GxBezierCurve& b) {
    GxList<Point> points;
    a.findIntersections(b, points);
    return points.length();
  });
}

void letterDistance(benchmark::State& state) {
  overLetterPairs(state, [](GxBezierCurve& a, GxBezierCurve& b) { return a.getMinSqDistance(b); });
}

/// The chain with the most segments, enlarged, because steps across several segments sometimes
/// fail.
GxBezierCurve longestChain() {
  GxBezierCurve longest;
  for (GxBezierCurve const& curve : chains()) {
    if (curve.length() > longest.length()) longest = curve;
  }
  longest.resize(10.0, 10.0);
  return longest;
}

constexpr int kSteps = 100;

/// For one step of one unit.
void step(benchmark::State& state) {
  GxBezierCurve const longest = longestChain();
  for (auto _ : state) {
    GxBezierCurvePosition pos(static_cast<int>(longest.length() / 2), 0.0);
    for (int i = 0; i < kSteps; ++i) {
      if (longest.findNextPos(pos, pos, 1.0, 1, 0) != 0) state.SkipWithError("the walk ended");
    }
  }
  perIteration(state, kSteps);
}

/// The same by length, along a curve that was measured before.
void accurateStep(benchmark::State& state) {
  GxBezierCurve const longest = longestChain();
  crv::CurveLengths const lengths(longest, 1e-6);
  for (auto _ : state) {
    GxBezierCurvePosition pos(static_cast<int>(longest.length() / 2), 0.0);
    for (int i = 0; i < kSteps; ++i) pos = lengths.positionAt(lengths.lengthAt(pos) + 1.0);
    benchmark::DoNotOptimize(pos);
  }
  perIteration(state, kSteps);
}

}  // namespace

void enterCurves() {
  for (auto const& [name, error] :
       {std::pair("0.25", 0.25), std::pair("1", 1.0), std::pair("9", 9.0)}) {
    enter(std::string("fit a point, squared error ") + name + "/coasts/CRV",
          [error = error](benchmark::State& state) { fit(state, error); });
  }
  enter("offset a letter/letters/CRV", [](benchmark::State& s) { offsetALetter(s, 0); });
  enter("offset a letter, cut first/letters/CRV", [](benchmark::State& s) { offsetALetter(s, 1); });
  enter("crossings of two letters/letters/CRV", letterCrossings);
  enter("least sampled distance of two letters/letters/CRV", letterDistance);
  enter("orientation/letters/CRV", orientation);
  enter("length of a curve/coasts/CRV", curveLength);
  enter("box of a curve/coasts/CRV", curveBox);
  enter("equal chords of 2/coasts/CRV", byEqualChords);
  enter("polyline by halving, 0.1/coasts/CRV", byHalving);
  enter("tangents at a joint/coasts/CRV", tangents);
  enter("a step of 1/coasts/CRV", step);
  enter("a step of 1/coasts/accurate", accurateStep);
  enter("copy of a curve/coasts/CRV", copyACurve);
}

}  // namespace bench
