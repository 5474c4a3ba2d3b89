#include "crv/accurate/internal/arrangement.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/trails.h"
#include "crv/accurate/internal/turns.h"
#include "crv/accurate/internal/windings.h"

#include <utility>

namespace crv::internal {

namespace {

double magnitudeOf(std::vector<ArrangedSegment> const& segments) {
  Magnitude magnitude;
  for (ArrangedSegment const& s : segments) magnitude.add(s.c);
  return magnitude.value();
}

}  // namespace

Arrangement::Arrangement(std::vector<ArrangedSegment> segments, double resolution)
    : segments_(std::move(segments)), scale_(magnitudeOf(segments_), resolution) {
  for (ArrangedSegment& s : segments_) s.c = scale_.scaled(s.c);
  cutting_ = cutAtMeetings(segments_, scale_);
  turns_ = sortTurns(cutting_, scale_.resolution);
  findWindings(cutting_, turns_);
}

std::vector<Path> Arrangement::paths(std::vector<signed char> const& kept) const {
  std::vector<Path> paths;
  for (Trail const& trail : findTrails(cutting_.edges, turns_, kept))
    paths.push_back(pathOf(trail));
  return paths;
}

/// Neighbouring stretches of one segment as one part.
Path Arrangement::pathOf(Trail const& trail) const {
  std::vector<Run> runs;
  for (std::size_t const h : trail.halfEdges) {
    if (!runs.empty() && extend(runs.back(), h)) continue;
    runs.push_back(runAlong(h));
  }
  if (trail.isClosed && runs.size() > 1 && areOne(runs.back(), runs.front())) {
    runs.front().first = runs.back().first;
    runs.pop_back();
  }
  Path path = {{}, trail.isClosed};
  path.parts.reserve(runs.size());
  for (Run const& run : runs) path.parts.push_back(partOf(run));
  return path;
}

/// The run of a half-edge along one of the stretches of its edge.
Arrangement::Run Arrangement::runAlong(std::size_t halfEdge) const {
  std::size_t const stretch = cutting_.edges[edgeOf(halfEdge)].first;
  return {stretch, stretch, !isAlong(halfEdge)};
}

/// Lets a run go on along a half-edge, if a stretch of its edge goes on where the run ends.
bool Arrangement::extend(Run& run, std::size_t halfEdge) const {
  std::size_t const next = run.isBackwards ? run.last - 1 : run.last + 1;
  if (next >= cutting_.stretches.size()) return false;
  Stretch const& stretch = cutting_.stretches[next];
  bool const isBackwards = stretch.isForward != isAlong(halfEdge);
  bool const goesOn = stretch.segment == cutting_.stretches[run.last].segment &&
                      stretch.edge == edgeOf(halfEdge) && isBackwards == run.isBackwards;
  if (goesOn) run.last = next;
  return goesOn;
}

/// Whether a run goes on as another one.
bool Arrangement::areOne(Run const& run, Run const& next) const {
  std::vector<Stretch> const& stretches = cutting_.stretches;
  return run.isBackwards == next.isBackwards &&
         stretches[run.last].segment == stretches[next.first].segment &&
         next.first == (run.isBackwards ? run.last - 1 : run.last + 1);
}

PathPart Arrangement::partOf(Run const& run) const {
  Stretch const& low = cutting_.stretches[run.isBackwards ? run.last : run.first];
  Stretch const& high = cutting_.stretches[run.isBackwards ? run.first : run.last];
  Cubic const& whole = segments_[low.segment].c;
  Cubic c = withEnds(part(whole, low.from, high.to), low.c.start(), high.c.end());
  double const factor = 1.0 / scale_.factor;
  for (Point& p : c.p) p = p * factor;
  return {low.segment, low.from, high.to, run.isBackwards, run.isBackwards ? reversed(c) : c};
}

}  // namespace crv::internal
