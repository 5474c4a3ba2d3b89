#include "crv/accurate/internal/arrangement.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/edgeChains.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/trails.h"
#include "crv/accurate/internal/turns.h"
#include "crv/accurate/internal/windings.h"

#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// Squared sine of 2^-6 radians: a path turns back at a node where its two branches leave in
// directions that differ by less.
constexpr double kSquaredTipSine = 0x1p-12;

// In units of the resolution: the end of a run was moved if it lies farther than this from its
// segment.
constexpr double kOffSegment = 0x1p-6;

// Relative to the largest coordinate: at a tip, only this length of a run is bent towards its node,
// so that the two sides of the tip do not stay within the resolution for so long that they count as
// shared.
constexpr double kShortBend = 0x1p-18;

// In units of the resolution: stretches this near to each other become one edge, so that two edges
// remain more than the resolution apart in spite of rounding and moved ends.
constexpr double kMargin = 1.125;

double magnitudeOf(std::vector<ArrangedSegment> const& segments) {
  Magnitude magnitude;
  for (ArrangedSegment const& s : segments) magnitude.add(s.c);
  return magnitude.value();
}

/// The parameter at which a bend that begins at t ends, between t and other; t itself if the whole
/// stretch is short.
double endOfBend(Cubic const& c, double t, double other, double longest) {
  double end = t + 0.25 * (other - t);
  auto const isLong = [&] {
    return squaredDistance(pointAt(c, t), pointAt(c, end)) > longest * longest;
  };
  if (!isLong()) return t;
  while (isLong()) end = t + 0.5 * (end - t);
  return end;
}

}  // namespace

Arrangement::Arrangement(std::vector<ArrangedSegment> segments, double resolution)
    : segments_(std::move(segments)), scale_(magnitudeOf(segments_), resolution) {
  for (ArrangedSegment& s : segments_) s.c = scale_.scaled(s.c);
  resolution_ = scale_.resolution / scale_.factor;
  scale_.resolution *= kMargin;
  cutting_ = cutAtMeetings(segments_, scale_);
  joinEdges(cutting_, segments_);
  turns_ = sortTurns(cutting_, scale_.resolution);
  bool const isPlane = findWindings(cutting_, turns_, scale_.resolution);
  isCertain_ = isPlane && turns_.doubtful.empty();
}

std::vector<Path> Arrangement::paths(std::vector<signed char> const& kept) const {
  std::vector<Path> paths;
  for (Trail const& trail : findTrails(cutting_.edges, turns_, kept))
    paths.push_back(pathOf(trail));
  return paths;
}

/// The path of a trail; neighbouring stretches of one segment become one part.
Path Arrangement::pathOf(Trail const& trail) const {
  std::vector<Run> runs;
  runs.reserve(trail.halfEdges.size());
  for (std::size_t const h : trail.halfEdges) addRuns(runs, h);
  if (trail.isClosed && runs.size() > 1 && areOne(runs.back(), runs.front())) {
    runs.front().first = runs.back().first;
    runs.pop_back();
  }
  Path path = {{}, trail.isClosed};
  path.parts.reserve(runs.size());
  Run const* before = trail.isClosed ? &runs.back() : nullptr;
  for (Run const& run : runs) {
    Run const* const behind = &run != &runs.back() ? &run + 1 : trail.isClosed ? &runs[0] : nullptr;
    addParts(path.parts, before, run, behind);
    before = &run;
  }
  return path;
}

/// Adds the runs along a half-edge; the first of them may extend the last run so far.
void Arrangement::addRuns(std::vector<Run>& runs, std::size_t halfEdge) const {
  Edge const& edge = cutting_.edges[edgeOf(halfEdge)];
  bool const isBackwards = !isAlong(halfEdge);
  if (edge.first == edge.last && !runs.empty() && extend(runs.back(), halfEdge)) return;
  std::size_t const stretches = edge.last - edge.first + 1;
  for (std::size_t i = 0; i < stretches; ++i) {
    std::size_t const stretch = isBackwards ? edge.last - i : edge.first + i;
    Run const run = {stretch, stretch, isBackwards};
    if (!runs.empty() && areOne(runs.back(), run)) {
      runs.back().last = stretch;
    } else {
      runs.push_back(run);
    }
  }
}

/// Extends a run by a half-edge if a stretch of that edge continues the run. Returns whether it
/// did.
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

/// Whether one run continues another one.
bool Arrangement::areOne(Run const& run, Run const& next) const {
  std::vector<Stretch> const& stretches = cutting_.stretches;
  return run.isBackwards == next.isBackwards &&
         stretches[run.last].segment == stretches[next.first].segment &&
         next.first == (run.isBackwards ? run.last - 1 : run.last + 1);
}

/// Whether a path turns back between two runs.
bool Arrangement::isTip(Run const& run, Run const& next) const {
  Cubic const& c = cutting_.stretches[run.last].c;
  Cubic const& d = cutting_.stretches[next.first].c;
  Point const back = departure(run.isBackwards ? c : reversed(c));
  Point const on = departure(next.isBackwards ? reversed(d) : d);
  double const across = cross(back, on);
  return dot(back, on) > 0.0 && across * across <= kSquaredTipSine * dot(back, back) * dot(on, on);
}

/// Adds the parts of a run between its neighbours, which may be null: one part, and a short one at
/// each tip to which an end of the run was moved.
void Arrangement::addParts(std::vector<PathPart>& parts, Run const* before, Run const& run,
                           Run const* behind) const {
  Stretch const& low = cutting_.stretches[run.isBackwards ? run.last : run.first];
  Stretch const& high = cutting_.stretches[run.isBackwards ? run.first : run.last];
  Cubic const& whole = segments_[low.segment].c;
  double const from = low.from, to = high.to;
  double const off = kOffSegment * scale_.resolution, longest = kShortBend * scale_.magnitude;
  auto const isBent = [&](double t, Point const& node, bool isAtStart) {
    if (!(squaredDistance(pointAt(whole, t), node) > off * off)) return false;
    if (isAtStart) return before != nullptr && isTip(*before, run);
    return behind != nullptr && isTip(run, *behind);
  };
  bool const isBentAtLow = isBent(from, low.c.start(), !run.isBackwards);
  bool const isBentAtHigh = isBent(to, high.c.end(), run.isBackwards);
  auto const add = [&](double t0, double t1) {
    if (t0 == t1) return;
    Cubic c = part(whole, t0, t1);
    c = withEnds(c, t0 == from ? low.c.start() : c.start(), t1 == to ? high.c.end() : c.end());
    c = scaled(c, 1.0 / scale_.factor);
    parts.push_back({low.segment, t0, t1, run.isBackwards, run.isBackwards ? reversed(c) : c});
  };
  if (!isBentAtLow && !isBentAtHigh) return add(from, to);
  double const cuts[] = {from, isBentAtLow ? endOfBend(whole, from, to, longest) : from,
                         isBentAtHigh ? endOfBend(whole, to, from, longest) : to, to};
  for (int i = 0; i < 3; ++i) {
    int const k = run.isBackwards ? 2 - i : i;
    add(cuts[k], cuts[k + 1]);
  }
}

}  // namespace crv::internal
