#include "crv/accurate/internal/trimming.h"

#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/parting.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/tangent.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <utility>

namespace crv::internal {

namespace {

// The number of parts of a path, the largest ones, whose distance from the curve is checked.
constexpr std::size_t kWitnesses = 4;

// In tolerances: a point of a boundary may be nearer than the distance by this much.
constexpr double kSlack = 2.0;

// The resolution is at most this share of the distance, so that both sides of a narrow stroke stay
// apart.
constexpr double kFinestShare = 0x1p-3;

// Where edges lie so near to each other that paths come out wrong, all is arranged once more at a
// resolution coarser by this factor.
constexpr double kCoarser = 8.0;

// In units of the resolution: a meeting this near to a joint is the joint.
constexpr double kJointReach = 4.0;

/// Whether a segment advances along its chord everywhere, so that it cannot meet itself.
bool advances(Cubic const& c) {
  Point const chord = c.end() - c.start();
  return dot(chord, chord) > 0.0 && Edges(c).leastAlong(chord) >= 0.0;
}

/// Whether two consecutive segments advance in one direction everywhere, so that they meet only at
/// their joint.
bool advance(Cubic const& a, Cubic const& b) {
  Point const chordA = a.end() - a.start(), chordB = b.end() - b.start();
  double const lengthA = std::sqrt(dot(chordA, chordA)), lengthB = std::sqrt(dot(chordB, chordB));
  Point const direction = chordA * lengthB + chordB * lengthA;
  return dot(chordA, direction) > 0.0 && dot(chordB, direction) > 0.0 &&
         Edges(a).leastAlong(direction) >= 0.0 && Edges(b).leastAlong(direction) >= 0.0;
}

/// Whether two segments do not meet, or, if the second follows the first, meet only at their joint.
bool meetAtMostAtJoint(Cubic const& a, Cubic const& b, bool follows, UnitScale const& scale) {
  if (follows && advance(a, b)) return true;
  Cubic const c = scale.scaled(a), d = scale.scaled(b);
  if (follows && partAtStart(reversed(c), d, scale.resolution)) return true;
  Meetings found;
  findMeetings(c, d, scale.magnitude, scale.resolution, Stretches::all, found);
  double const reach = kJointReach * scale.resolution;
  for (Meeting const& m : found.points) {
    bool const isAtJoint = distance(pointAt(c, m.t), c.end()) <= reach &&
                           distance(pointAt(d, m.u), d.start()) <= reach;
    if (!follows || !isAtJoint) return false;
  }
  return found.stretches.empty();
}

/// Whether an inner point of a segment of the curve is nearer to a point than a distance. Ends and
/// joints count only if withEnds is true, because flat caps and bevels are nearer to them than the
/// distance.
bool isNear(Chain const& curve, BoxTree const& boxes, Point const& p, double least, bool withEnds) {
  double const limit = least * least;
  bool isFound = false;
  boxes.visit([&](Box const& box) { return !isFound && squaredDistance(box, p) < limit; },
              [&](std::size_t segment) {
                Cubic const& c = curve.segments[segment];
                bool const isNearEnd = withEnds && (squaredDistance(p, c.start()) < limit ||
                                                    squaredDistance(p, c.end()) < limit);
                isFound = isFound || isNearEnd || !localMinima(c, p, limit).inside.empty();
              });
  return isFound;
}

/// 1 if the outside lies on the left of the edge only, -1 if it lies on the right only, else 0.
signed char sideOf(Edge const& edge, int outside) {
  if (edge.first == kNone || edge.left[0] == edge.right[0]) return 0;
  if (edge.left[0] == outside && edge.right[0] < outside) return 1;
  if (edge.right[0] == outside && edge.left[0] < outside) return -1;
  return 0;
}

/// Whether the largest parts of a path keep the distance from the curve, and no part of a link is
/// nearer; only the ends of a link can be at the distance. The boundary of what is swept contains
/// links, too; there it is enough that one of the largest parts keeps the distance.
bool keepsDistance(Path const& path, RawOutline const& outline, Chain const& curve,
                   BoxTree const& boxes, double distance, double tolerance) {
  double const least = distance - kSlack * tolerance;
  std::pair<double, PathPart const*> largest[kWitnesses + 1];  // by squared chord, falling
  std::size_t count = 0;
  for (PathPart const& part : path.parts) {
    RawSegment const& segment = outline.segments()[part.segment];
    Point const middle = pointAt(part.c, 0.5);
    bool const isLink = segment.kind == RawKind::link && !outline.isSwept();
    if (isLink && isNear(curve, boxes, middle, distance - tolerance, true)) return false;
    if (!segment.hasDistance) continue;
    double const size = squaredDistance(part.c.start(), part.c.end());
    std::size_t k = count;
    for (; k > 0 && size > largest[k - 1].first; --k) largest[k] = largest[k - 1];
    largest[k] = {size, &part};
    count = std::min(count + 1, kWitnesses);
  }
  for (std::size_t i = 0; i < count; ++i) {
    bool const isOff = isNear(curve, boxes, pointAt(largest[i].second->c, 0.5), least, false);
    if (isOff != outline.isSwept()) return !isOff;
  }
  return count == 0 || !outline.isSwept();
}

std::vector<ArrangedSegment> segmentsOf(RawOutline const& outline) {
  std::vector<ArrangedSegment> segments;
  segments.reserve(outline.segments().size());
  for (RawSegment const& s : outline.segments()) {
    segments.push_back({part(s.c, s.s0, s.s1), s.next, 0});
  }
  return segments;
}

}  // namespace

BoxTree boxesOf(Chain const& curve) {
  UnitScale const scale(curve.magnitude(), 0.0);
  return boxTree(curve, scale.resolution / scale.factor);
}

bool isSimple(Chain const& curve, BoxTree const& boxes) {
  UnitScale const scale(curve.magnitude(), 0.0);
  std::size_t const n = curve.size();
  bool isClear = true;
  BoxTree::visitOwnOverlaps(boxes, [&](std::size_t i, std::size_t k) {
    if (!isClear) return;
    Cubic const &a = curve.segments[i], &b = curve.segments[k];
    bool const leads = i == 0 && k + 1 == n && n > 2;
    if (i == k) {
      isClear = advances(a);
    } else {
      isClear =
          leads ? meetAtMostAtJoint(b, a, true, scale) : meetAtMostAtJoint(a, b, k == i + 1, scale);
    }
  });
  if (isClear) return true;
  ChainMeetings const found = findSelfMeetings(curve, boxes, boxes, scale);
  return found.points.empty() && found.stretches.empty();
}

std::vector<Path> trimmed(RawOutline const& outline, int outside, Chain const& curve,
                          BoxTree const& boxes, double distance, double tolerance) {
  if (outline.segments().empty()) return {};
  bool const isNarrow = kFinestShare * distance < kDefaultResolution;
  double resolution = isNarrow ? kFinestShare * distance : 0.0;
  for (bool isLast = false;; isLast = true) {
    Arrangement const plane(segmentsOf(outline), resolution);
    resolution = plane.resolution();
    std::vector<signed char> kept;
    kept.reserve(plane.edges().size());
    for (Edge const& edge : plane.edges()) kept.push_back(sideOf(edge, outside));
    std::vector<Path> paths = plane.paths(kept);
    double const error = std::max(tolerance, resolution);
    auto const isWrong = [&](Path const& path) {
      return !path.isClosed || !keepsDistance(path, outline, curve, boxes, distance, error);
    };
    auto const firstWrong = std::remove_if(paths.begin(), paths.end(), isWrong);
    bool const isSound = plane.isCertain() || firstWrong == paths.end();
    paths.erase(firstWrong, paths.end());
    if (isSound || isLast) return paths;
    resolution *= kCoarser;
  }
}

}  // namespace crv::internal
