// From meetings to nodes and stretches.
#include "crv/accurate/internal/cutting.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/disjointSets.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/curve/internal/boxTree.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>

namespace crv::internal {

namespace {

// In units of the resolution: the meetings of segments that pass through one place lie this near to
// each other.
constexpr double kOnePlace = 2.0;

// Squared cosine: two segments that leave a joint into cones that keep this far from the plane
// between them come within the resolution of each other at the joint only.
constexpr double kSquaredConeCosine = 0x1p-8;

// Rounds in which cuts are carried over between stretches that coincide: one is the rule, and more
// are needed where a chain of stretches coincides pairwise only.
constexpr int kMostRounds = 4;

/// A segment is cut at t, in the place with the given number.
struct Cut {
  std::size_t segment;
  double t;
  std::size_t place;
};

bool isBefore(Cut const& p, Cut const& q) {
  return p.segment != q.segment ? p.segment < q.segment : p.t < q.t;
}

/// Two segments that coincide between two pairs of parameters.
struct Shared {
  std::size_t first, second;
  SharedStretch range;
};

bool staysNear(Cubic const& c, double reach) {
  for (int i = 1; i < 4; ++i) {
    if (!(squaredDistance(c.p[0], c.p[i]) <= reach * reach)) return false;
  }
  return true;
}

/// Whether a segment advances along its chord all the way, and so never meets itself.
bool advances(Cubic const& c) {
  Point const chord = c.p[3] - c.p[0];
  for (int i = 0; i < 3; ++i) {
    if (!(dot(chord, c.p[i + 1] - c.p[i]) >= 0.0)) return false;
  }
  return dot(chord, chord) > 0.0;
}

bool isInCone(Cubic const& c, Point const& axis, double reach) {
  for (int i = 1; i < 4; ++i) {
    Point const d = c.p[i] - c.p[0];
    double const along = dot(d, axis), squared = dot(d, d);
    if (squared <= reach * reach) continue;
    if (!(along > 0.0) || along * along < kSquaredConeCosine * squared * dot(axis, axis)) {
      return false;
    }
  }
  return true;
}

/// Whether two segments that leave one place in opposite half-planes meet in that place only.
bool partAtStart(Cubic const& a, Cubic const& b, double reach) {
  Point const p = departure(a), q = departure(b);
  double const squaredP = dot(p, p), squaredQ = dot(q, q);
  if (!(squaredP > 0.0) || !(squaredQ > 0.0)) return false;
  Point const axis = p * (1.0 / std::sqrt(squaredP)) - q * (1.0 / std::sqrt(squaredQ));
  return isInCone(a, axis, reach) && isInCone(b, axis * -1.0, reach);
}

class Cutter {
 public:
  Cutter(std::vector<Cubic> const& units, std::vector<ArrangedSegment> const& segments,
         UnitScale const& scale)
      : units_(units), segments_(segments), scale_(scale), places_(2 * units.size()) {}

  Cutting cut() {
    uniteJoints();
    findAllMeetings();
    arrangeCuts();
    carryOver();
    return result();
  }

 private:
  double reach() const { return kOnePlace * scale_.resolution; }
  void uniteJoints();
  void findAllMeetings();
  void findPair(std::size_t i, std::size_t k);
  bool partAtJoint(std::size_t i, std::size_t k);
  void add(std::size_t i, std::size_t k);
  void addMeeting(std::size_t i, double t, std::size_t k, double u);
  void arrangeCuts();
  void sortCuts();
  void uniteNeighbours();
  bool areOnePlace(Cut const& p, Cut const& q) const;
  void carryOver();
  void carry(std::size_t from, double t0, double t1, std::size_t to, double u0, double u1,
             std::vector<Cut>& added);
  std::vector<std::size_t> addNodes(Cutting& result);
  Cutting result();

  std::vector<Cubic> const& units_;
  std::vector<ArrangedSegment> const& segments_;
  UnitScale const& scale_;
  // Places 2i and 2i + 1 are the ends of segment i; each meeting is another.
  DisjointSets places_;
  std::vector<Cut> cuts_;
  std::vector<std::size_t> begins_;  // the first cut of each segment, and behind the last
  std::vector<Shared> shared_;
  Meetings found_;
};

void Cutter::uniteJoints() {
  for (std::size_t i = 0; i < units_.size(); ++i) {
    std::size_t const next = segments_[i].next;
    if (next == kNone) continue;
    if (squaredDistance(units_[i].p[3], units_[next].p[0]) <= reach() * reach()) {
      places_.unite(2 * i + 1, 2 * next);
    }
  }
}

void Cutter::addMeeting(std::size_t i, double t, std::size_t k, double u) {
  std::size_t const place = places_.add();
  cuts_.push_back({i, t, place});
  cuts_.push_back({k, u, place});
}

/// Adds the meetings that were found of two segments, or of one with itself.
void Cutter::add(std::size_t i, std::size_t k) {
  for (Meeting const& m : found_.points) addMeeting(i, m.t, k, m.u);
  for (SharedStretch const& s : found_.stretches) {
    addMeeting(i, s.t0, k, s.u0);
    addMeeting(i, s.t1, k, s.u1);
    shared_.push_back({i, k, s});
  }
  found_.points.clear();
  found_.stretches.clear();
}

bool Cutter::partAtJoint(std::size_t i, std::size_t k) {
  double const reach = scale_.resolution;
  if (segments_[i].next == k && places_.areOne(2 * i + 1, 2 * k) &&
      partAtStart(reversed(units_[i]), units_[k], reach)) {
    return true;
  }
  return segments_[k].next == i && places_.areOne(2 * k + 1, 2 * i) &&
         partAtStart(reversed(units_[k]), units_[i], reach);
}

void Cutter::findPair(std::size_t i, std::size_t k) {
  if (partAtJoint(i, k)) return;
  findMeetings(units_[i], units_[k], scale_.magnitude, scale_.resolution, Stretches::all, found_);
  add(i, k);
}

void Cutter::findAllMeetings() {
  std::vector<Box> boxes, wideBoxes;
  boxes.reserve(units_.size());
  wideBoxes.reserve(units_.size());
  double const margin = scale_.resolution;
  for (Cubic const& c : units_) {
    Box const b = c.hull();
    boxes.push_back(b);
    wideBoxes.push_back({b.minX - margin, b.minY - margin, b.maxX + margin, b.maxY + margin});
  }
  BoxTree const tree(std::move(boxes)), wideTree(std::move(wideBoxes));
  BoxTree::visitOverlaps(wideTree, tree, [&](std::size_t i, std::size_t k) {
    if (i < k) findPair(i, k);
  });
  for (std::size_t i = 0; i < units_.size(); ++i) {
    if (advances(units_[i])) continue;
    findOwnMeetings(units_[i], scale_.magnitude, scale_.resolution, found_);
    add(i, i);
  }
}

void Cutter::arrangeCuts() {
  std::size_t const n = units_.size();
  for (std::size_t i = 0; i < n; ++i) {
    cuts_.push_back({i, 0.0, 2 * i});
    cuts_.push_back({i, 1.0, 2 * i + 1});
  }
  sortCuts();
}

/// Sorts the cuts and unites the places of neighbours.
void Cutter::sortCuts() {
  std::size_t const n = units_.size();
  std::sort(cuts_.begin(), cuts_.end(), isBefore);
  begins_.assign(n + 1, 0);
  for (Cut const& c : cuts_) ++begins_[c.segment + 1];
  for (std::size_t i = 0; i < n; ++i) begins_[i + 1] += begins_[i];
  uniteNeighbours();
}

bool Cutter::areOnePlace(Cut const& p, Cut const& q) const {
  if (p.t == q.t) return true;
  Cubic const& c = units_[p.segment];
  if (squaredDistance(pointAt(c, p.t), pointAt(c, q.t)) > reach() * reach()) return false;
  return staysNear(part(c, p.t, q.t), 2.0 * reach());
}

void Cutter::uniteNeighbours() {
  for (std::size_t i = 0; i + 1 < cuts_.size(); ++i) {
    Cut const &p = cuts_[i], &q = cuts_[i + 1];
    if (p.segment == q.segment && areOnePlace(p, q)) places_.unite(p.place, q.place);
  }
}

/// Cuts a segment wherever it coincides with a cut place of another one.
void Cutter::carry(std::size_t from, double t0, double t1, std::size_t to, double u0, double u1,
                   std::vector<Cut>& added) {
  double const lo = min(u0, u1), hi = max(u0, u1);
  for (std::size_t i = begins_[from]; i < begins_[from + 1]; ++i) {
    Cut const& cut = cuts_[i];
    if (!(cut.t > t0 && cut.t < t1)) continue;
    bool isCut = false;
    for (std::size_t k = begins_[to]; k < begins_[to + 1] && !isCut; ++k) {
      isCut = cuts_[k].t >= lo && cuts_[k].t <= hi && places_.areOne(cuts_[k].place, cut.place);
    }
    if (isCut) continue;
    double const guess = u0 + (u1 - u0) * ((cut.t - t0) / (t1 - t0));
    double const foot = footOn(units_[to], pointAt(units_[from], cut.t), guess);
    added.push_back({to, min(hi, max(lo, foot)), cut.place});
  }
}

/// Gives segments that coincide the same cuts.
void Cutter::carryOver() {
  std::vector<Cut> added;
  for (int round = 0; round < kMostRounds; ++round) {
    added.clear();
    for (Shared const& s : shared_) {
      double const lo = min(s.range.u0, s.range.u1), hi = max(s.range.u0, s.range.u1);
      bool const isSameSense = s.range.u0 < s.range.u1;
      double const t0 = s.range.t0, t1 = s.range.t1;
      carry(s.first, t0, t1, s.second, s.range.u0, s.range.u1, added);
      carry(s.second, lo, hi, s.first, isSameSense ? t0 : t1, isSameSense ? t1 : t0, added);
    }
    if (added.empty()) return;
    cuts_.insert(cuts_.end(), added.begin(), added.end());
    sortCuts();
  }
}

/// Adds the nodes, and returns for each place the number of its node. The ends of segments stand
/// for the places that they are in.
std::vector<std::size_t> Cutter::addNodes(Cutting& result) {
  std::vector<std::size_t> nodes(places_.size(), kNone);
  auto const add = [&](std::size_t place, Point const& p) {
    std::size_t& node = nodes[places_.find(place)];
    if (node == kNone) {
      node = result.nodes.size();
      result.nodes.push_back(p);
    }
    nodes[place] = node;
  };
  for (std::size_t i = 0; i < units_.size(); ++i) {
    add(2 * i, units_[i].p[0]);
    add(2 * i + 1, units_[i].p[3]);
  }
  for (Cut const& cut : cuts_) {
    std::size_t const known = nodes[places_.find(cut.place)];
    if (known == kNone) {
      add(cut.place, pointAt(units_[cut.segment], cut.t));
    } else {
      nodes[cut.place] = known;
    }
  }
  return nodes;
}

Cutting Cutter::result() {
  Cutting result;
  std::vector<std::size_t> const nodes = addNodes(result);
  result.stretches.reserve(cuts_.size());
  result.edges.reserve(cuts_.size());
  for (std::size_t i = 0; i + 1 < cuts_.size(); ++i) {
    Cut const &p = cuts_[i], &q = cuts_[i + 1];
    if (p.segment != q.segment || p.t == q.t) continue;
    std::size_t const from = nodes[p.place], to = nodes[q.place];
    Cubic const c = part(units_[p.segment], p.t, q.t);
    if (from == to && staysNear(c, 2.0 * reach())) continue;
    std::size_t const edge = result.edges.size();
    result.stretches.push_back({withEnds(c, result.nodes[from], result.nodes[to]), p.segment, p.t,
                                q.t, edge, true, kNone});
    std::array<int, 2> count = {0, 0};
    count[static_cast<std::size_t>(segments_[p.segment].group)] = 1;
    result.edges.push_back({from, to, edge, count, {0, 0}, {0, 0}});
  }
  return result;
}

}  // namespace

Cutting cutAtMeetings(std::vector<Cubic> const& units, std::vector<ArrangedSegment> const& segments,
                      UnitScale const& scale) {
  return Cutter(units, segments, scale).cut();
}

}  // namespace crv::internal
