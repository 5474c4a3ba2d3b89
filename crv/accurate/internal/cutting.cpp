// Cuts segments at their meetings: points of meeting become nodes, and the parts between them
// stretches.
#include "crv/accurate/internal/cutting.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/disjointSets.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/meetings.h"
#include "crv/accurate/internal/parting.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/segmentTable.h"
#include "crv/curve/internal/boxTree.h"
#include "crv/foundation/internal/introsort.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>

namespace crv::internal {

namespace {

// In units of the resolution: where several segments pass through one point, their meetings lie
// within this distance of each other.
constexpr double kOnePlace = 2.0;

// Rounds in which cuts are copied between stretches that coincide. Usually one suffices; more are
// needed where stretches form a chain in which only neighbours coincide.
constexpr int kMostRounds = 4;

// Unit scale: no two points are farther apart than this, squared.
constexpr double kFarthestFoot = 9.0;

/// A cut of a segment at t; place is the number of the point.
struct Cut {
  std::size_t segment;
  double t;
  std::size_t place;
};

/// Two segments that coincide between two pairs of parameters.
struct Shared {
  std::size_t first, second;
  SharedStretch range;
};

/// The point at t, without a computation at the ends.
Point placeAt(Cubic const& c, double t) {
  return t == 0.0 ? c.start() : t == 1.0 ? c.end() : pointAt(c, t);
}

bool staysNear(Cubic const& c, double reach) {
  for (int i = 1; i < 4; ++i) {
    if (!(squaredDistance(c.p[0], c.p[i]) <= reach * reach)) return false;
  }
  return true;
}

/// Whether a segment advances along its chord everywhere, so that it cannot meet itself.
bool advances(Cubic const& c) {
  Point const chord = c.p[3] - c.p[0];
  for (int i = 0; i < 3; ++i) {
    if (!(dot(chord, c.p[i + 1] - c.p[i]) >= 0.0)) return false;
  }
  return dot(chord, chord) > 0.0;
}

class Cutter {
 public:
  Cutter(std::vector<ArrangedSegment> const& segments, UnitScale const& scale)
      : segments_(segments),
        scale_(scale),
        counts_(segments.size(), {0, 0}),
        isTwin_(segments.size(), 0),
        places_(2 * segments.size()) {
    for (std::size_t i = 0; i < segments.size(); ++i) {
      counts_[i][static_cast<std::size_t>(segments[i].group)] = 1;
    }
  }

  Cutting cut() {
    uniteJoints();
    joinTwins();
    findAllMeetings();
    arrangeCuts();
    carryOver();
    return result();
  }

 private:
  double reach() const { return kOnePlace * scale_.resolution; }
  void uniteJoints();
  void joinTwins();
  void findAllMeetings();
  void join(std::size_t i, std::size_t k, bool isReversed);
  void findPair(std::size_t i, std::size_t k);
  bool partAtJoint(std::size_t i, std::size_t k);
  void add(std::size_t i, std::size_t k);
  void addMeeting(std::size_t i, double t, std::size_t k, double u);
  void arrangeCuts();
  void countCuts();
  bool areOnePlace(Cut const& p, Cut const& q) const;
  void carryOver();

  /// Calls visit for each two neighbouring cuts of a segment, whose ends are cuts, too.
  template <class Visit>
  void visitPieces(std::size_t segment, Visit const& visit) const {
    Cut last = {segment, 0.0, 2 * segment};
    for (std::size_t i = begins_[segment]; i < begins_[segment + 1]; ++i) {
      visit(last, cuts_[i]);
      last = cuts_[i];
    }
    visit(last, Cut{segment, 1.0, 2 * segment + 1});
  }
  void carry(std::size_t from, double t0, double t1, std::size_t to, double lo, double hi,
             std::vector<Cut>& added);
  std::vector<std::size_t> addNodes(Cutting& result);
  void addStretch(Cutting& result, Cut const& p, Cut const& q,
                  std::vector<std::size_t> const& nodes) const;
  Cutting result();

  std::vector<ArrangedSegment> const& segments_;
  UnitScale const& scale_;
  std::vector<Counts> counts_;  // by segment: how often it runs there, by group
  std::vector<char> isTwin_;    // whether it is a copy of a segment before it
  // Places 2i and 2i + 1 are the ends of segment i; each meeting is another.
  DisjointSets places_;
  std::vector<Cut> cuts_;            // at meetings; the ends of the segments are cuts besides
  std::vector<std::size_t> begins_;  // the first cut of each segment, and behind the last
  std::vector<Shared> shared_;
  Meetings found_;
};

void Cutter::uniteJoints() {
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    std::size_t const next = segments_[i].next;
    if (next == kNone) continue;
    if (squaredDistance(segments_[i].c.p[3], segments_[next].c.p[0]) <= reach() * reach()) {
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
      partAtStart(reversed(segments_[i].c), segments_[k].c, reach)) {
    return true;
  }
  return segments_[k].next == i && places_.areOne(2 * k + 1, 2 * i) &&
         partAtStart(reversed(segments_[k].c), segments_[i].c, reach);
}

/// Counts segment k, which equals segment i or its reverse, as further copies of segment i.
void Cutter::join(std::size_t i, std::size_t k, bool isReversed) {
  places_.unite(2 * i, isReversed ? 2 * k + 1 : 2 * k);
  places_.unite(2 * i + 1, isReversed ? 2 * k : 2 * k + 1);
  for (std::size_t group = 0; group < 2; ++group) {
    counts_[i][group] += isReversed ? -counts_[k][group] : counts_[k][group];
  }
  isTwin_[k] = 1;
}

/// Joins segments that are equal or the reverse of each other, so that many copies of one outline
/// cost no more than linear time.
void Cutter::joinTwins() {
  SegmentTable table(segments_);
  for (std::size_t k = 0; k < segments_.size(); ++k) {
    std::size_t const i = table.add(k);
    if (i != k) join(i, k, !areSame(segments_[i].c, segments_[k].c));
  }
}

void Cutter::findPair(std::size_t i, std::size_t k) {
  if (partAtJoint(i, k)) return;
  findMeetings(segments_[i].c, segments_[k].c, scale_.magnitude, scale_.resolution,
               Stretches::evenMet, found_);
  add(i, k);
}

void Cutter::findAllMeetings() {
  std::vector<Box> boxes;
  std::vector<std::size_t> numbers;  // of the segments in these boxes
  boxes.reserve(segments_.size());
  numbers.reserve(segments_.size());
  double const margin = 0.5 * scale_.resolution;
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    if (isTwin_[i]) continue;
    Box const b = segments_[i].c.hull();
    boxes.push_back({b.minX - margin, b.minY - margin, b.maxX + margin, b.maxY + margin});
    numbers.push_back(i);
  }
  BoxTree const tree(std::move(boxes));
  BoxTree::visitOwnOverlaps(tree, [&](std::size_t first, std::size_t second) {
    std::size_t const i = numbers[first], k = numbers[second];
    if (i != k) return findPair(i, k);
    if (advances(segments_[i].c)) return;
    findOwnMeetings(segments_[i].c, scale_.magnitude, scale_.resolution, Stretches::evenMet,
                    found_);
    add(i, i);
  });
}

/// Sorts the cuts by segment and parameter, and merges neighbouring cuts at one point.
void Cutter::arrangeCuts() {
  introsort(cuts_, [](Cut const& p, Cut const& q) {
    return p.segment != q.segment ? p.segment < q.segment : p.t < q.t;
  });
  countCuts();
  std::vector<Cut> kept;
  kept.reserve(cuts_.size());
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    std::size_t const first = kept.size();
    visitPieces(i, [&](Cut const& p, Cut const& q) {
      bool const isOne = areOnePlace(p, q), isLast = q.place == 2 * i + 1;
      if (isOne) places_.unite(p.place, q.place);
      if (!isOne && !isLast) kept.push_back(q);
      if (isOne && isLast && kept.size() > first) kept.pop_back();
    });
  }
  cuts_ = std::move(kept);
  countCuts();
}

void Cutter::countCuts() {
  begins_.assign(segments_.size() + 1, 0);
  for (Cut const& c : cuts_) ++begins_[c.segment + 1];
  for (std::size_t i = 1; i < begins_.size(); ++i) begins_[i] += begins_[i - 1];
}

bool Cutter::areOnePlace(Cut const& p, Cut const& q) const {
  if (p.t == q.t) return true;
  Cubic const& c = segments_[p.segment].c;
  if (squaredDistance(placeAt(c, p.t), placeAt(c, q.t)) > reach() * reach()) return false;
  return staysNear(part(c, p.t, q.t), 2.0 * reach());
}

/// Copies the cuts between t0 and t1 of one segment to the stretch of another segment, from lo to
/// hi, that coincides with it.
void Cutter::carry(std::size_t from, double t0, double t1, std::size_t to, double lo, double hi,
                   std::vector<Cut>& added) {
  for (std::size_t i = begins_[from]; i < begins_[from + 1]; ++i) {
    Cut const& cut = cuts_[i];
    if (!(cut.t > t0 && cut.t < t1)) continue;
    bool isCut = (lo == 0.0 && places_.areOne(2 * to, cut.place)) ||
                 (hi == 1.0 && places_.areOne(2 * to + 1, cut.place));
    for (std::size_t k = begins_[to]; k < begins_[to + 1] && !isCut; ++k) {
      isCut = cuts_[k].t >= lo && cuts_[k].t <= hi && places_.areOne(cuts_[k].place, cut.place);
    }
    if (isCut) continue;
    Foot const foot = nearestFoot(part(segments_[to].c, lo, hi), pointAt(segments_[from].c, cut.t),
                                  kFarthestFoot);
    if (foot.squaredDistance > reach() * reach()) continue;
    double const u = foot.t == 1.0 ? hi : lo + (hi - lo) * foot.t;
    added.push_back({to, u, cut.place});
  }
}

/// Copies cuts between segments that coincide, so that they have the same cuts.
void Cutter::carryOver() {
  std::vector<Cut> added;
  for (int round = 0; round < kMostRounds; ++round) {
    added.clear();
    for (Shared const& s : shared_) {
      double const lo = min(s.range.u0, s.range.u1), hi = max(s.range.u0, s.range.u1);
      carry(s.first, s.range.t0, s.range.t1, s.second, lo, hi, added);
      carry(s.second, lo, hi, s.first, s.range.t0, s.range.t1, added);
    }
    if (added.empty()) return;
    cuts_.insert(cuts_.end(), added.begin(), added.end());
    arrangeCuts();
  }
}

/// Adds the nodes, and returns the number of the node for each place. A place that contains an end
/// of a segment gets the point of that end.
std::vector<std::size_t> Cutter::addNodes(Cutting& result) {
  std::vector<std::size_t> nodes(places_.size(), kNone);
  result.nodes.reserve(segments_.size() + cuts_.size());
  auto const add = [&](std::size_t place, Point const& p) {
    std::size_t& node = nodes[places_.find(place)];
    if (node == kNone) {
      node = result.nodes.size();
      result.nodes.push_back(p);
    }
    nodes[place] = node;
  };
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    add(2 * i, segments_[i].c.p[0]);
    add(2 * i + 1, segments_[i].c.p[3]);
  }
  for (Cut const& cut : cuts_) {
    std::size_t const known = nodes[places_.find(cut.place)];
    if (known == kNone) {
      add(cut.place, pointAt(segments_[cut.segment].c, cut.t));
    } else {
      nodes[cut.place] = known;
    }
  }
  return nodes;
}

void Cutter::addStretch(Cutting& result, Cut const& p, Cut const& q,
                        std::vector<std::size_t> const& nodes) const {
  if (p.t == q.t) return;
  std::size_t const from = nodes[p.place], to = nodes[q.place];
  ArrangedSegment const& segment = segments_[p.segment];
  Cubic const c = part(segment.c, p.t, q.t);
  if (from == to && staysNear(c, 2.0 * reach())) return;
  std::size_t const edge = result.edges.size();
  result.stretches.push_back(
      {withEnds(c, result.nodes[from], result.nodes[to]), p.segment, p.t, q.t, edge, true, kNone});
  result.edges.push_back({from, to, edge, edge, counts_[p.segment], {0, 0}, {0, 0}});
}

Cutting Cutter::result() {
  Cutting result;
  std::vector<std::size_t> const nodes = addNodes(result);
  result.stretches.reserve(segments_.size() + cuts_.size());
  result.edges.reserve(segments_.size() + cuts_.size());
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    if (isTwin_[i]) continue;
    visitPieces(i, [&](Cut const& p, Cut const& q) { addStretch(result, p, q, nodes); });
  }
  return result;
}

}  // namespace

Cutting cutAtMeetings(std::vector<ArrangedSegment> const& segments, UnitScale const& scale) {
  return Cutter(segments, scale).cut();
}

}  // namespace crv::internal
