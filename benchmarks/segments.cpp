// One segment: each operation runs over the letters and over the random cubics.
#include "accuracy.h"

namespace bench {

namespace {

using Values = GxList<double>;

std::vector<double> valuesOf(Values const& list) {
  std::vector<double> values;
  for (unsigned i = 0; i < list.length(); ++i) values.push_back(list[i]);
  return values;
}

void value(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return row.segment.bValue(row.t); });
}

void pointsAndDerivatives(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double sum = 0.0;
    for (int i = 0; i < 16; ++i) {
      sum += row.segment.bValue(i / 15.0).xval() + row.segment.dValue(i / 15.0).yval();
    }
    return sum;
  });
}

void pointsAndDerivativesInOneCall(benchmark::State& state, char const* set) {
  std::vector<double> t;
  for (int i = 0; i < 16; ++i) t.push_back(i / 15.0);
  Point points[16];
  GxVector<double> derivatives[16];
  overRows(state, set, [&](Row const& row) {
    row.segment.bValues(t.data(), 16, points, derivatives);
    double sum = 0.0;
    for (int i = 0; i < 16; ++i) sum += points[i].xval() + derivatives[i].yval();
    return sum;
  });
}

void split(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    GxBezier left, right;
    row.segment.split(left, right, row.t);
    return left[3].xval() + right[1].xval();
  });
}

void isALine(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return row.segment.isALine(0.1); });
}

double nearestParameter(Row const& row) {
  double t = 0.0;
  row.segment.findNearestPointTValue(row.query, t);
  return t;
}

void nearest(benchmark::State& state, char const* set) {
  overRows(state, set, nearestParameter);
  noteNearest(state, set, [=](std::size_t i) { return nearestParameter(rows(set)[i]); });
}

void parameterOfAPoint(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    return GxBezier(row.segment).findParameter(row.segment.bValue(row.t), 0.5, 1e-6);
  });
}

void tightBox(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double box[4];
    row.segment.localMinMax(box[0], box[1], box[2], box[3]);
    return box[0] + box[1] + box[2] + box[3];
  });
}

void highestPoint(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double t = 0.0, y = 0.0;
    row.segment.getMaxYTValue(t, y);
    return t + y;
  });
}

void rootsAtAHeight(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    Values list;
    return row.segment.findRoots(list, row.query.yval(), 0.0, 1.0);
  });
}

void inflection(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double t = 0.0;
    return GxBezier(row.segment).findInflectionPoint(t) + t;
  });
}

void arcLength(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return row.segment.length(0.0); });
  noteLength(state, set, [=](std::size_t i) { return rows(set)[i].segment.length(0.0); });
}

void parameterAtADistance(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double lo = 0.0, hi = 1.0;
    return row.segment.splitAtFixedLengthAfter(row.arcLength, 0, lo, hi, 0.0);
  });
}

void polylineByChords(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    GxList<Point> out;
    row.segment.makeSegment(10.0, out, 0.0);
    return out.length();
  });
}

void polylineByLongChords(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    GxList<Point> out;
    row.segment.makeSegmentEx(20.0, 5.0, 0.5, out, 0.0);
    return out.length();
  });
}

std::vector<Point> polylineOf(Row const& row) {
  std::vector<Point> out;
  row.segment.getPolyline(0.1, out);
  return out;
}

void polylineByHalving(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) { return polylineOf(row).size(); });
  notePolyline(state, set, [=](std::size_t i) { return polylineOf(rows(set)[i]); });
}

void crossings(benchmark::State& state, char const* set) {
  auto const crossingsOf = [=](unsigned i, unsigned j, Values& first, Values& second) {
    GxBezier segment = rows(set)[i].segment;
    return segment.findIntersections(rows(set)[j].segment, first, second);
  };
  overPairs(state, set, [=](unsigned i, unsigned j) {
    Values first, second;
    return crossingsOf(i, j, first, second);
  });
  noteCrossings(state, set, [=](unsigned i, unsigned j) {
    Values first, second;
    crossingsOf(i, j, first, second);
    std::vector<std::pair<double, double>> found;
    std::vector<double> const t = valuesOf(first), u = valuesOf(second);
    for (std::size_t k = 0; k < t.size(); ++k) found.emplace_back(t[k], u[k]);
    return found;
  });
}

void crossingsWithALine(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    Values segmentParams, lineParams;
    return row.segment.findYCStrongIntersection(row.lineStart, row.lineEnd, segmentParams,
                                                lineParams);
  });
}

void loop(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double t1 = 0.0, t2 = 0.0;
    return GxBezier(row.segment).isSelfIntersect(t1, t2) + t1;
  });
}

void closestSamples(benchmark::State& state, char const* set) {
  overPairs(state, set, [=](unsigned i, unsigned j) {
    double t1 = 0.0, t2 = 0.0;
    GxBezier segment = rows(set)[i].segment;
    return segment.findClosestPoints(rows(set)[j].segment, t1, t2);
  });
}

void nextParameter(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    double t = 0.0;
    double const distance = 0.25 * row.arcLength;
    int const code = row.segment.findNextPos(t, 0.0, distance * distance, 1);
    return code == 0 ? t : -1.0;
  });
}

/// The roots of the cubics that arise when a line is intersected with a segment.
void cubicRootsOfHeights(benchmark::State& state, char const* set) {
  overRows(state, set, [](Row const& row) {
    GxBezier const& s = row.segment;
    double const y[] = {s[0].yval(), s[1].yval(), s[2].yval(), s[3].yval()};
    double roots[3] = {};
    int const n = cubicRoots(-y[0] + 3 * y[1] - 3 * y[2] + y[3], 3 * y[0] - 6 * y[1] + 3 * y[2],
                             3 * y[1] - 3 * y[0], y[0] - row.query.yval(), roots);
    return n + roots[0];
  });
}

}  // namespace

void enterSegments() {
  enterSets("nearest parameter", "CRV", nearest);
  enterSets("crossings of a pair", "CRV", crossings);
  enterSets("polyline by halving, 0.1", "CRV", polylineByHalving);
  enterSets("arc length, 0.1", "CRV", arcLength);
  enterSets("crossings with a line", "CRV", crossingsWithALine);
  enterSets("16 points and derivatives", "CRV", pointsAndDerivatives);
  enterSets("16 points and derivatives, one call", "CRV", pointsAndDerivativesInOneCall);
  enterSets("point", "CRV", value);
  enterSets("split", "CRV", split);
  enterSets("tight box", "CRV", tightBox);
  enterSets("loop", "CRV", loop);
  enterSets("next parameter at a distance", "CRV", nextParameter);
  enterSets("parameter at a straight distance", "CRV", parameterAtADistance);
  enterSets("polyline by chords of 10", "CRV", polylineByChords);
  enterSets("polyline by long chords", "CRV", polylineByLongChords);
  enterSets("is it a line", "CRV", isALine);
  enterSets("parameter of a point", "CRV", parameterOfAPoint);
  enterSets("highest point", "CRV", highestPoint);
  enterSets("roots at a height", "CRV", rootsAtAHeight);
  enterSets("roots of a cubic", "CRV", cubicRootsOfHeights);
  enterSets("inflection", "CRV", inflection);
  enterSets("closest samples of a pair", "CRV", closestSamples);
}

}  // namespace bench
