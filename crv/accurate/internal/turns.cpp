// Edges are sorted by their directions at the node and, where these do not decide, by following the
// edges.
#include "crv/accurate/internal/turns.h"

#include "crv/accurate/internal/angleKey.h"
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/graph.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace crv::internal {

namespace {

// In units of the resolution: the direction of an edge is taken from the first control point
// farther than this from the node, so that moving the ends onto the nodes hardly changes it.
constexpr double kShortHandle = 16.0;

// In units of the resolution: the largest shift of a control point when ends are moved onto the
// nodes.
constexpr double kMoved = 4.0;

// Unit scale: a segment goes along a handle longer than this for more than the resolution.
constexpr double kLongHandle = 0x1p-14;

// Squared sine of the angle from a control point to the way that the curve takes, up to which it is
// the direction.
constexpr double kSquaredStray = 0x1p-8;

// Parameter: if a curve does not keep its direction as a whole, its start up to here is examined.
constexpr double kStart = 0x1p-5;

// Difference of angle keys: directions farther apart than this decide the order alone.
constexpr double kClearTurn = 0x1p-6;

// In units of the resolution: edges that are this near to each other in three places between the
// same two nodes coincide.
constexpr double kCoincident = 2.0;

// In units of the resolution: edges farther apart than this have separated, and the side decides.
constexpr double kApart = 4.0;

// Squared cosine of 60 degrees: an edge is followed as a graph over an axis as long as its
// direction stays within this angle of the axis.
constexpr double kSquaredGentleCosine = 0.25;

// Limits of the halvings until a part is gentle, and of the parts of two edges that are followed
// one after the other.
constexpr int kMostHalvings = 24;
constexpr int kMostParts = 16;

/// A half-edge at its node.
struct Turn {
  std::size_t halfEdge;
  Point direction;
  double key;    // of the angle
  double slack;  // how uncertain the key is
};

/// The difference of the keys from p counter-clockwise to q.
double gap(Turn const& p, Turn const& q) {
  double const difference = q.key - p.key;
  return difference < 0.0 ? difference + kFullTurn : difference;
}

/// The part of a cubic, from its start, that is gentle over an axis, as a graph over that axis
/// relative to an origin.
Part gentlePart(Cubic const& c, Point const& axis, Point const& origin, double noise) {
  Part part = {c, 0.0, 1.0};
  for (int i = 0; i < kMostHalvings; ++i) {
    bool isGentle = true;
    for (int k = 0; k < 3 && isGentle; ++k) {
      Point const leg = part.c.p[k + 1] - part.c.p[k];
      double const along = dot(leg, axis), squared = dot(leg, leg);
      isGentle = squared <= noise * noise ||
                 (along > 0.0 && along * along >= kSquaredGentleCosine * squared);
    }
    if (isGentle) break;
    Part rest;
    Part const whole = part;
    whole.split(0.5, part, rest);
  }
  return part.along(axis, origin);
}

Point unit(Point const& v) {
  double const length = std::sqrt(dot(v, v));
  return length > 0.0 ? v * (1.0 / length) : Point{0.0, 0.0};
}

/// Whether all control points lie so near to a direction from the start that the whole curve does.
bool keepsDirection(Cubic const& c, Point const& direction) {
  double const most = 0.5 * kSquaredStray * dot(direction, direction);
  for (int i = 1; i < 4; ++i) {
    Point const d = c.p[i] - c.p[0];
    double const across = cross(direction, d);
    if (!(dot(direction, d) >= 0.0) || !(across * across <= most * dot(d, d))) return false;
  }
  return true;
}

/// The direction in which a cubic leaves its start: that of the first control point farther away
/// than the least length. Behind a short handle, the curve may soon go another way.
Point directionOf(Cubic const& c, double least) {
  Point direction = {0.0, 0.0};
  double squared = 0.0;
  for (int i = 1; i < 4 && squared <= least * least; ++i) {
    Point const d = c.p[i] - c.p[0];
    if (dot(d, d) <= squared) continue;
    direction = d;
    squared = dot(d, d);
    if (i == 1 && squared > kLongHandle * kLongHandle) return direction;
  }
  if (keepsDirection(c, direction)) return direction;
  Cubic start, rest;
  c.split(kStart, start, rest);
  bool const leaves = squaredDistance(start.p[0], start.p[3]) > 4.0 * least * least;
  if (leaves && keepsDirection(start, direction)) return direction;
  std::optional<Point> const exit = exitOf(c, c.p[0], least);
  if (!exit) return direction;
  Point const way = *exit - c.p[0];
  double const across = cross(direction, way);
  bool const isTaken =
      dot(direction, way) > 0.0 && across * across <= kSquaredStray * squared * dot(way, way);
  return isTaken ? direction : way;
}

class Sorter {
 public:
  Sorter(Cutting& cutting, double resolution) : cutting_(cutting), resolution_(resolution) {}

  Turns sort();

 private:
  Cubic outward(std::size_t halfEdge) const;
  Turn turnOf(std::size_t halfEdge);
  std::size_t farNode(std::size_t halfEdge) const {
    return startOf(cutting_.edges, twin(halfEdge));
  }
  /// Whether an edge consists of one stretch, or of several that coincide.
  bool isSingle(std::size_t halfEdge) const {
    Edge const& edge = cutting_.edges[edgeOf(halfEdge)];
    return edge.first == edge.last;
  }
  bool areClear(Turn const& p, Turn const& q) const {
    return gap(p, q) > kClearTurn + p.slack + q.slack;
  }
  Turns collected() const;
  void sortByKey(std::size_t const* begin, std::size_t const* end);
  bool mergeNear();
  bool mayMerge(std::size_t const* begin, std::size_t const* end) const;
  bool sortNodes(Turns& turns);
  bool keepNear(Cubic const& a, Cubic const& b) const;
  bool areOne(std::size_t p, std::size_t q) const;
  void merge(std::size_t p, std::size_t q);
  void settle();
  bool isBefore(Turn const& p, Turn const& q);

  Cutting& cutting_;
  double const resolution_;
  std::vector<Turn> around_;  // those of one node
  bool isCertain_ = true;     // whether their order is clear
};

Cubic Sorter::outward(std::size_t halfEdge) const {
  Edge const& edge = cutting_.edges[edgeOf(halfEdge)];
  return isAlong(halfEdge) ? cutting_.stretches[edge.first].c
                           : reversed(cutting_.stretches[edge.last].c);
}

Turn Sorter::turnOf(std::size_t halfEdge) {
  double const least = kShortHandle * resolution_;
  Point const direction = directionOf(outward(halfEdge), least);
  double const squared = dot(direction, direction);
  if (squared <= least * least) isCertain_ = false;
  double const slack = squared > 0.0 ? min(2.0, kMoved * resolution_ / std::sqrt(squared)) : 2.0;
  return {halfEdge, unit(direction), angleKey(direction), slack};
}

/// The half-edges of all nodes, not yet in order.
Turns Sorter::collected() const {
  Turns turns;
  std::size_t const nodes = cutting_.nodes.size(), halfEdges = 2 * cutting_.edges.size();
  turns.begins.assign(nodes + 2, 0);
  turns.entries.assign(halfEdges, kNone);
  for (Edge const& e : cutting_.edges) {
    if (e.first == kNone) continue;
    ++turns.begins[e.from + 2];
    ++turns.begins[e.to + 2];
  }
  for (std::size_t i = 2; i < nodes + 2; ++i) turns.begins[i] += turns.begins[i - 1];
  turns.halfEdges.resize(turns.begins.back());
  for (std::size_t h = 0; h < halfEdges; ++h) {
    if (cutting_.edges[edgeOf(h)].first == kNone) continue;
    turns.halfEdges[turns.begins[startOf(cutting_.edges, h) + 1]++] = h;
  }
  turns.begins.pop_back();
  return turns;
}

/// Fills around_ with the half-edges of one node in order of their keys, starting after the widest
/// gap. Merged edges are left out.
void Sorter::sortByKey(std::size_t const* begin, std::size_t const* end) {
  around_.clear();
  for (; begin != end; ++begin) {
    bool const isGone = cutting_.edges[edgeOf(*begin)].first == kNone;
    if (!isGone) around_.push_back(turnOf(*begin));
  }
  std::sort(around_.begin(), around_.end(), [](Turn const& p, Turn const& q) {
    return p.key != q.key ? p.key < q.key : p.halfEdge < q.halfEdge;
  });
  std::size_t first = 0;
  double widest = -1.0;
  for (std::size_t i = 0; i < around_.size(); ++i) {
    Turn const& last = around_[i == 0 ? around_.size() - 1 : i - 1];
    double const before = gap(last, around_[i]);
    if (before <= widest) continue;
    widest = before;
    first = i;
  }
  std::rotate(around_.begin(), around_.begin() + static_cast<std::ptrdiff_t>(first), around_.end());
}

/// Whether three points of each of two cubics are near the other cubic.
bool Sorter::keepNear(Cubic const& a, Cubic const& b) const {
  double const reach = kCoincident * resolution_;
  auto const isNear = [&](Cubic const& c, Point const& p) {
    return nearestFoot(c, p, 4.0 * reach * reach).squaredDistance <= reach * reach;
  };
  for (double const t : {0.5, 0.25, 0.75}) {
    if (!isNear(b, pointAt(a, t)) || !isNear(a, pointAt(b, t))) return false;
  }
  return true;
}

bool Sorter::areOne(std::size_t p, std::size_t q) const {
  return farNode(p) == farNode(q) && edgeOf(p) != edgeOf(q) && isSingle(p) && isSingle(q) &&
         keepNear(outward(p), outward(q));
}

/// Moves the stretches of the edge of q to that of p; p and q leave the same node.
void Sorter::merge(std::size_t p, std::size_t q) {
  Edge &kept = cutting_.edges[edgeOf(p)], &dropped = cutting_.edges[edgeOf(q)];
  bool const isSameSense = isAlong(p) == isAlong(q);
  std::size_t last = dropped.first;
  for (std::size_t s = dropped.first; s != kNone; s = cutting_.stretches[s].nextOnEdge) {
    Stretch& stretch = cutting_.stretches[s];
    stretch.edge = edgeOf(p);
    stretch.isForward = stretch.isForward == isSameSense;
    last = s;
  }
  cutting_.stretches[last].nextOnEdge = cutting_.stretches[kept.first].nextOnEdge;
  cutting_.stretches[kept.first].nextOnEdge = dropped.first;
  for (std::size_t group = 0; group < 2; ++group) {
    kept.count[group] += isSameSense ? dropped.count[group] : -dropped.count[group];
  }
  dropped.first = kNone;
}

/// Merges the edges in around_ that coincide. Returns false if there are none.
bool Sorter::mergeNear() {
  bool isMerged = false;
  for (std::size_t i = 0; i < around_.size(); ++i) {
    for (std::size_t k = i + 1; k < around_.size() && !areClear(around_[i], around_[k]); ++k) {
      std::size_t p = around_[i].halfEdge, q = around_[k].halfEdge;
      bool const isGone =
          cutting_.edges[edgeOf(p)].first == kNone || cutting_.edges[edgeOf(q)].first == kNone;
      if (isGone || !areOne(p, q)) continue;
      if (edgeOf(q) < edgeOf(p)) std::swap(p, q);
      merge(p, q);
      isMerged = true;
    }
  }
  return isMerged;
}

/// Whether p comes before q, counter-clockwise, for nearly equal directions. Both edges are
/// followed as graphs over a common axis, part by part, until they have separated.
bool Sorter::isBefore(Turn const& p, Turn const& q) {
  Cubic a = outward(p.halfEdge), b = outward(q.halfEdge);
  Point directionA = p.direction, directionB = q.direction;
  double const noise = kMoved * resolution_;
  double difference = 0.0;
  for (int i = 0; i < kMostParts; ++i) {
    Point const axis = unit(directionA + directionB);
    Point const origin = a.p[0];
    Part const onA = gentlePart(a, axis, origin, noise), onB = gentlePart(b, axis, origin, noise);
    double const x = min(onA.c.p[3].x, onB.c.p[3].x);
    double s = 0.0, u = 0.0;
    // Edges that meet again at their ends are separate only in between.
    for (double const share : {0.5, 1.0}) {
      s = whereXIs(onA.c, share * x);
      u = whereXIs(onB.c, share * x);
      double const now = pointAt(onB.c, u).y - pointAt(onA.c, s).y;
      if (std::fabs(now) > std::fabs(difference)) difference = now;
      if (std::fabs(difference) > kApart * resolution_) return difference > 0.0;
    }
    double const t = onA.parameter(s), w = onB.parameter(u);
    if (!(t < 1.0 && w < 1.0) || (t == 0.0 && w == 0.0)) break;
    a = part(a, t, 1.0);
    b = part(b, w, 1.0);
    directionA = unit(derivativeAt(a, 0.0));
    directionB = unit(derivativeAt(b, 0.0));
    if (!(dot(directionA, directionB) > 0.0)) break;
  }
  isCertain_ = false;
  return difference != 0.0 ? difference > 0.0 : p.key < q.key;
}

/// Sorts around_ where the keys alone do not decide.
void Sorter::settle() {
  for (std::size_t i = 1; i < around_.size(); ++i) {
    Turn const turn = around_[i];
    std::size_t k = i;
    for (; k > 0; --k) {
      Turn const& other = around_[k - 1];
      bool const isDecided = areClear(other, turn) || !(dot(other.direction, turn.direction) > 0.0);
      if (isDecided || !isBefore(turn, other)) break;
      around_[k] = other;
    }
    around_[k] = turn;
  }
}

bool Sorter::mayMerge(std::size_t const* begin, std::size_t const* end) const {
  return end - begin > 2 || (end - begin == 2 && farNode(begin[0]) == farNode(begin[1]));
}

/// Sorts the half-edges of all nodes. Returns false if edges were merged, so that the order has to
/// be determined again.
bool Sorter::sortNodes(Turns& turns) {
  bool isMerged = false;
  for (std::size_t node = 0; node + 1 < turns.begins.size(); ++node) {
    std::size_t* const begin = turns.halfEdges.data() + turns.begins[node];
    std::size_t* const end = turns.halfEdges.data() + turns.begins[node + 1];
    if (!mayMerge(begin, end)) continue;
    isCertain_ = true;
    sortByKey(begin, end);
    if (mergeNear()) isMerged = true;
    if (isMerged) continue;
    settle();
    if (!isCertain_) turns.doubtful.push_back(node);
    for (std::size_t i = 0; i < around_.size(); ++i) begin[i] = around_[i].halfEdge;
  }
  return !isMerged;
}

Turns Sorter::sort() {
  Turns turns = collected();
  while (!sortNodes(turns)) turns = collected();
  for (std::size_t i = 0; i < turns.halfEdges.size(); ++i) turns.entries[turns.halfEdges[i]] = i;
  return turns;
}

}  // namespace

Turns sortTurns(Cutting& cutting, double resolution) { return Sorter(cutting, resolution).sort(); }

}  // namespace crv::internal
