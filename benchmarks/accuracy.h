// Errors of results, measured against a dense reference that uses only point evaluation.
//
// Each function computes the results of one library for all rows of a set, once, and records the
// error beside the library's time.
#pragma once

#include "support.h"

namespace bench {

/// The worst excess of the distance at the parameter over the least distance.
void noteNearest(benchmark::State& state, std::string const& set,
                 std::function<double(std::size_t)> const& parameterOf);

/// The worst difference from the arc length.
void noteLength(benchmark::State& state, std::string const& set,
                std::function<double(std::size_t)> const& lengthOf);

/// The worst distance of the segment from its polyline, and the mean number of points.
void notePolyline(benchmark::State& state, std::string const& set,
                  std::function<std::vector<Point>(std::size_t)> const& polylineOf);

/// The number of crossings (pairs of parameters) of all pairs, that of the reference, and the
/// widest gap between two segments at a crossing.
void noteCrossings(
    benchmark::State& state, std::string const& set,
    std::function<std::vector<std::pair<double, double>>(unsigned, unsigned)> const& crossingsOf);

/// The number of segments of a fit to a coastline, and the distance of the farthest sample.
void noteFit(benchmark::State& state, GxList<Point> const& samples,
             std::function<std::vector<GxBezier>()> const& fit);

}  // namespace bench
