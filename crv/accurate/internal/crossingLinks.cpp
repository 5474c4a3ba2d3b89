#include "crv/accurate/internal/crossingLinks.h"

#include "crv/accurate/internal/angleKey.h"
#include "crv/accurate/internal/disjointSets.h"
#include "crv/accurate/internal/planeGraph.h"
#include "crv/accurate/internal/route.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <utility>

namespace crv::internal {

namespace {

// In units of the resolution: passes within this distance of each other along the curve are one
// pass.
constexpr double kOnePass = 1.0625;

// In units of the resolution: the first radius at which branches are ordered around a crossing, and
// the distance by which they must be separated. While they are not, the radius is multiplied by
// kGrowth.
constexpr double kFirstRadius = 16.0;
constexpr double kGrowth = 4.0;
constexpr double kApart = 4.0;

// Unit scale: branches are followed no farther than this.
constexpr double kFarthest = 0x1p-6;

/// A pass of the curve through the crossing with a given number.
struct Visit {
  Place place;
  std::size_t crossing;
};

/// A branch of a pass, where it leaves a circle around the crossing.
struct Branch {
  double key;  // of the angle
  std::size_t pass;
  bool arrives;
};

struct Circle {
  Point centre;
  double radius;
};

/// The ranks at which a pass arrives and leaves, in the order of the branches.
struct Ranks {
  std::size_t in, out;
};

class Linker {
 public:
  Linker(Chain const& chain, UnitScale const& scale) : route_(chain, scale), scale_(scale) {}

  std::vector<Pass> link(ChainMeetings const& meetings);

 private:
  void collect(ChainMeetings const& meetings);
  bool areOne(Place const& p, Place const& q) const {
    return route_.staysNear(route_.at(p), kOnePass * scale_.resolution, p, q);
  }
  void uniteNeighbours();
  void linkAt(std::vector<std::size_t> const& passes);
  bool setKeys(Branch* begin, Branch* end, Circle const& circle, double reference) const;
  void sortByExits(Branch* begin, Branch* end, Circle const& circle) const;
  std::vector<Branch> sortedBranches(std::vector<std::size_t> const& passes) const;
  void linkBranches(std::vector<Branch> const& branches);
  bool cross(std::size_t p, std::size_t q) const;
  bool exchange(std::size_t p, std::size_t q);
  void splitReturns();
  void splitTrail(std::size_t start);
  std::vector<Pass> turningPasses() const;

  Route const route_;
  UnitScale const& scale_;
  std::vector<Visit> visits_;                       // ascending
  std::vector<Pass> passes_;                        // one for each visit
  std::vector<std::vector<std::size_t>> passesAt_;  // by crossing
  std::vector<Ranks> ranks_;                        // by pass, at crossings of three and more
  std::vector<char> isTaken_;                       // by stretch; stretch i ends at pass i
  std::vector<std::size_t> onTrail_;                // by crossing: the last pass, or kNone
};

void Linker::collect(ChainMeetings const& meetings) {
  std::size_t crossing = 0;
  for (ChainMeeting const& m : meetings.points) {
    if (!m.crosses) continue;
    visits_.push_back({m.first, crossing});
    visits_.push_back({m.second, crossing});
    ++crossing;
  }
  std::sort(visits_.begin(), visits_.end(), [](Visit const& v, Visit const& w) {
    return isBefore(v.place, w.place) || (!isBefore(w.place, v.place) && v.crossing < w.crossing);
  });
}

/// Merges visits that are one pass, and their crossings.
void Linker::uniteNeighbours() {
  DisjointSets crossings(visits_.size());
  std::vector<Visit> kept;
  for (Visit const& visit : visits_) {
    if (!kept.empty() && areOne(kept.back().place, visit.place)) {
      crossings.unite(kept.back().crossing, visit.crossing);
    } else {
      kept.push_back(visit);
    }
  }
  if (kept.size() > 1 && areOne(kept.back().place, kept.front().place)) {
    crossings.unite(kept.back().crossing, kept.front().crossing);
    kept.pop_back();
  }
  for (Visit& visit : kept) visit.crossing = crossings.find(visit.crossing);
  visits_ = std::move(kept);
}

bool isBefore(Branch const& p, Branch const& q) {
  if (p.key != q.key) return p.key < q.key;
  return p.pass != q.pass ? p.pass < q.pass : p.arrives && !q.arrives;
}

/// Rotates branches that are sorted by their keys, so that the widest gap between two neighbours
/// lies before the first.
void beginBehindWidestGap(std::vector<Branch>& branches) {
  std::size_t first = 0;
  double widest = branches.front().key + kFullTurn - branches.back().key;
  for (std::size_t i = 1; i < branches.size(); ++i) {
    double const gap = branches[i].key - branches[i - 1].key;
    if (gap <= widest) continue;
    widest = gap;
    first = i;
  }
  auto const middle = branches.begin() + static_cast<std::ptrdiff_t>(first);
  for (auto b = branches.begin(); b != middle; ++b) b->key += kFullTurn;
  std::rotate(branches.begin(), middle, branches.end());
}

/// Computes the angles at which branches leave a circle, as keys that differ from a reference by
/// half a turn at most. Returns false if one of them never leaves it.
bool Linker::setKeys(Branch* begin, Branch* end, Circle const& circle, double reference) const {
  for (Branch* b = begin; b != end; ++b) {
    Place const& place = visits_[b->pass].place;
    auto const exit = route_.exit(circle.centre, circle.radius, place, !b->arrives);
    if (!exit) return false;
    b->key = angleKey(*exit - circle.centre);
    while (b->key > reference + 0.5 * kFullTurn) b->key -= kFullTurn;
    while (b->key < reference - 0.5 * kFullTurn) b->key += kFullTurn;
  }
  return true;
}

/// Sorts branches by where they leave a circle, and those that have not separated there by where
/// they leave wider ones. Branches that coincide keep their place among the others.
void Linker::sortByExits(Branch* begin, Branch* end, Circle const& circle) const {
  std::sort(begin, end, isBefore);
  double const apart = kApart * scale_.resolution / circle.radius;
  Circle const wider = {circle.centre, kGrowth * circle.radius};
  if (wider.radius > kFarthest) return;
  for (Branch *first = begin, *last = begin; first != end; first = last) {
    do ++last;
    while (last != end && last[0].key - last[-1].key <= apart);
    if (last - first > 1 && setKeys(first, last, wider, first->key)) {
      sortByExits(first, last, wider);
    }
  }
}

/// The branches of passes in the counter-clockwise order in which they leave the crossing; none if
/// one of them stays there.
std::vector<Branch> Linker::sortedBranches(std::vector<std::size_t> const& passes) const {
  std::vector<Branch> branches;
  for (std::size_t const pass : passes) {
    branches.push_back({0.0, pass, true});
    branches.push_back({0.0, pass, false});
  }
  Branch *const begin = branches.data(), *const end = begin + branches.size();
  Circle const circle = {route_.at(visits_[passes[0]].place), kFirstRadius * scale_.resolution};
  if (!setKeys(begin, end, circle, 0.5 * kFullTurn)) return {};
  std::sort(begin, end, isBefore);
  beginBehindWidestGap(branches);
  sortByExits(begin, end, circle);
  return branches;
}

/// Links each arriving branch with a leaving one, nearest neighbours first, so that no two links
/// cross.
void Linker::linkBranches(std::vector<Branch> const& branches) {
  std::vector<std::size_t> arrived;
  std::vector<char> isLeft(branches.size(), 0);
  // The second round links branches that leave before any has arrived.
  for (std::size_t i = 0; i < 2 * branches.size(); ++i) {
    std::size_t const k = i % branches.size();
    Branch const& branch = branches[k];
    (branch.arrives ? ranks_[branch.pass].in : ranks_[branch.pass].out) = k;
    if (branch.arrives) {
      if (i == k) arrived.push_back(branch.pass);
    } else if (!isLeft[k] && !arrived.empty()) {
      passes_[arrived.back()].next = branch.pass;
      arrived.pop_back();
      isLeft[k] = 1;
    }
  }
}

void Linker::linkAt(std::vector<std::size_t> const& passes) {
  if (passes.size() == 2) {
    passes_[passes[0]].next = passes[1];
    passes_[passes[1]].next = passes[0];
  }
  if (passes.size() > 2) linkBranches(sortedBranches(passes));
}

/// Whether the links of two passes through one crossing cross.
bool Linker::cross(std::size_t p, std::size_t q) const {
  std::size_t const a = ranks_[p].in, b = ranks_[passes_[p].next].out;
  std::size_t const lo = std::min(a, b), hi = std::max(a, b);
  auto const isBetween = [&](std::size_t rank) { return lo < rank && rank < hi; };
  return isBetween(ranks_[q].in) != isBetween(ranks_[passes_[q].next].out);
}

/// Exchanges the links of two passes through one crossing, unless that would make links cross.
bool Linker::exchange(std::size_t p, std::size_t q) {
  std::swap(passes_[p].next, passes_[q].next);
  for (std::size_t const other : passesAt_[visits_[p].crossing]) {
    bool const doCross = (other != p && cross(p, other)) || (other != q && cross(q, other));
    if (!doCross) continue;
    std::swap(passes_[p].next, passes_[q].next);
    return false;
  }
  return true;
}

/// Follows the links, starting with a stretch. A part that returns to a crossing becomes a separate
/// loop.
void Linker::splitTrail(std::size_t start) {
  std::vector<std::size_t> trail;
  for (std::size_t stretch = start; !isTaken_[stretch];) {
    isTaken_[stretch] = 1;
    std::size_t pass = stretch;
    if (pass == passes_.size()) {
      stretch = 0;
      continue;
    }
    std::size_t const crossing = visits_[pass].crossing, earlier = onTrail_[crossing];
    if (earlier != kNone && exchange(earlier, pass)) {
      pass = earlier;
      for (; trail.back() != earlier; trail.pop_back())
        onTrail_[visits_[trail.back()].crossing] = kNone;
    } else if (passesAt_[crossing].size() > 2) {
      onTrail_[crossing] = pass;
      trail.push_back(pass);
    }
    stretch = passes_[pass].next + 1;
  }
  for (std::size_t const pass : trail) onTrail_[visits_[pass].crossing] = kNone;
}

/// Makes loops simple where three branches or more pass through a crossing.
void Linker::splitReturns() {
  bool const isNeeded = std::any_of(passesAt_.begin(), passesAt_.end(),
                                    [](auto const& passes) { return passes.size() > 2; });
  if (!isNeeded) return;
  isTaken_.assign(passes_.size() + 1, 0);
  onTrail_.assign(passesAt_.size(), kNone);
  for (std::size_t i = 0; i <= passes_.size(); ++i) splitTrail(i);
}

/// The passes that leave their branch, with their links.
std::vector<Pass> Linker::turningPasses() const {
  std::vector<std::size_t> numbers(passes_.size());
  std::vector<Pass> turning;
  for (std::size_t i = 0; i < passes_.size(); ++i) {
    numbers[i] = turning.size();
    if (passes_[i].next != i) turning.push_back(passes_[i]);
  }
  for (Pass& pass : turning) pass.next = numbers[pass.next];
  return turning;
}

std::vector<Pass> Linker::link(ChainMeetings const& meetings) {
  collect(meetings);
  uniteNeighbours();
  passesAt_.resize(2 * meetings.points.size());
  for (std::size_t i = 0; i < visits_.size(); ++i) {
    std::vector<std::size_t>& passes = passesAt_[visits_[i].crossing];
    passes.push_back(i);
    Place const& place = visits_[i].place;
    Point const point = pointAt(route_.chain().segments[place.segment], place.t);
    passes_.push_back({place, passes.size() == 1 ? point : passes_[passes[0]].point, i});
  }
  ranks_.resize(passes_.size());
  for (std::vector<std::size_t> const& passes : passesAt_) linkAt(passes);
  splitReturns();
  return turningPasses();
}

}  // namespace

std::vector<Pass> linkCrossings(Chain const& chain, ChainMeetings const& meetings,
                                UnitScale const& scale) {
  return Linker(chain, scale).link(meetings);
}

}  // namespace crv::internal
