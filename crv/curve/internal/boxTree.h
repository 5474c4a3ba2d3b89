// A static tree over a sequence of boxes, for finding the few boxes that satisfy a condition.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace crv::internal {

/// The box around two boxes.
inline Box united(Box const& a, Box const& b) {
  return {min(a.minX, b.minX), min(a.minY, b.minY), max(a.maxX, b.maxX), max(a.maxY, b.maxY)};
}

/// The squared distance from p to a box: 0 inside, and 0 where p is NaN. Rounding is monotonic, so
/// the result never exceeds squaredDistance(p, q) as computed for any q in the box.
inline double squaredDistance(Box const& box, Point const& p) {
  double const dx = max(0.0, max(box.minX - p.x, p.x - box.maxX));
  double const dy = max(0.0, max(box.minY - p.y, p.y - box.maxY));
  return dx * dx + dy * dy;
}

/// The leaves are the given boxes, numbered in the given order. Each run of eight neighbours shares
/// a box on the level above, up to a top level of at most eight boxes. The tree is quick where
/// neighbours in the sequence are neighbours in the plane, as the segments of a curve are. A box
/// with a bound that is NaN is taken as the whole plane. Building takes linear time.
class BoxTree {
 public:
  explicit BoxTree(std::vector<Box> leaves) {
    for (Box& box : leaves) {
      bool const hasBounds = box.minX <= box.maxX && box.minY <= box.maxY;
      if (!hasBounds) box = kPlane;
    }
    levels_.push_back(std::move(leaves));
    while (levels_.back().size() > kRun) levels_.push_back(unitedRuns(levels_.back()));
  }

  std::size_t size() const { return levels_.front().size(); }
  Box const& leaf(std::size_t i) const { return levels_.front()[i]; }

  /// Calls visit(leaf) for every leaf whose box passes, in ascending order. passes(box) must hold
  /// for a box if it holds for a box inside it. It is called for a box right before the leaves
  /// inside are visited, so its result may depend on the leaves visited before.
  template <class Passes, class Visit>
  void visit(Passes const& passes, Visit const& visit) const {
    visitChildren(height(), 0, passes, visit);
  }

  /// Calls visit(leaf, bound) for the leaves whose squared distance from p, the bound, is below a
  /// limit. visit returns the limit for the leaves that follow. The nearer boxes of a run come
  /// first, so the limit falls fast where visit lowers it to the best distance found.
  template <class Visit>
  void visitNear(Point const& p, double limit, Visit const& visit) const {
    visitNearChildren(height(), 0, p, limit, visit);
  }

  /// Calls visit(leaf of a, leaf of b) for all pairs of leaves whose boxes overlap or touch, in
  /// ascending order of the first and then of the second.
  template <class Visit>
  static void visitOverlaps(BoxTree const& a, BoxTree const& b, Visit const& visit) {
    std::size_t const top = std::max(a.height(), b.height());
    std::vector<Candidates> candidates(top + 1);
    candidates[top] = {{0}, 1};
    visitOverlappingChildren<false>(a, b, top, 0, candidates, visit);
  }

  /// The same for one tree, each pair once: the second leaf has at least the number of the first.
  template <class Visit>
  static void visitOwnOverlaps(BoxTree const& tree, Visit const& visit) {
    std::vector<Candidates> candidates(tree.height() + 1);
    candidates[tree.height()] = {{0}, 1};
    visitOverlappingChildren<true>(tree, tree, tree.height(), 0, candidates, visit);
  }

 private:
  /// The boxes of one level of the other tree that overlap the box entered.
  struct Candidates {
    std::vector<std::size_t> numbers;  // only the first `count` of them
    std::size_t count = 0;
  };

  struct Run {
    std::size_t begin, end;
  };

  static constexpr std::size_t kRun = 8;
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();
  static constexpr Box kPlane = {-kInfinity, -kInfinity, kInfinity, kInfinity};

  static std::vector<Box> unitedRuns(std::vector<Box> const& boxes) {
    std::vector<Box> runs;
    runs.reserve((boxes.size() + kRun - 1) / kRun);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (i % kRun == 0) {
        runs.push_back(boxes[i]);
      } else {
        runs.back() = united(runs.back(), boxes[i]);
      }
    }
    return runs;
  }

  /// The level of the root, which holds no box: box 0 on this level and above is the whole plane.
  std::size_t height() const { return levels_.size(); }
  Box const& box(std::size_t level, std::size_t i) const {
    return level < height() ? levels_[level][i] : kPlane;
  }

  /// The range of boxes on the level below that box i contains.
  Run children(std::size_t level, std::size_t i) const {
    if (level > height()) return {0, 1};
    return {i * kRun, std::min(i * kRun + kRun, levels_[level - 1].size())};
  }

  template <class Passes, class Visit>
  void visitChildren(std::size_t level, std::size_t i, Passes const& passes,
                     Visit const& visit) const {
    Run const run = children(level, i);
    for (std::size_t child = run.begin; child < run.end; ++child) {
      if (!passes(box(level - 1, child))) continue;
      if (level == 1) {
        visit(child);
      } else {
        visitChildren(level - 1, child, passes, visit);
      }
    }
  }

  template <class Visit>
  void visitNearChildren(std::size_t level, std::size_t i, Point const& p, double& limit,
                         Visit const& visit) const {
    Run const run = children(level, i);
    std::pair<double, std::size_t> sorted[kRun];  // by bound
    std::size_t count = 0;
    for (std::size_t child = run.begin; child < run.end; ++child) {
      double const bound = squaredDistance(box(level - 1, child), p);
      if (!(bound < limit)) continue;
      std::size_t k = count++;
      for (; k > 0 && bound < sorted[k - 1].first; --k) sorted[k] = sorted[k - 1];
      sorted[k] = {bound, child};
    }
    for (std::size_t k = 0; k < count && sorted[k].first < limit; ++k) {
      if (level == 1) {
        limit = visit(sorted[k].second, sorted[k].first);
      } else {
        visitNearChildren(level - 1, sorted[k].second, p, limit, visit);
      }
    }
  }

  template <bool onlyUpwards, class Visit>
  static void visitOverlappingChildren(BoxTree const& a, BoxTree const& b, std::size_t level,
                                       std::size_t i, std::vector<Candidates>& candidates,
                                       Visit const& visit) {
    Run const run = a.children(level, i);
    Candidates& found = candidates[level - 1];
    for (std::size_t child = run.begin; child < run.end; ++child) {
      findOverlaps<onlyUpwards>(a.box(level - 1, child), child, b, level, candidates[level], found);
      if (found.count == 0) continue;
      if (level == 1) {
        for (std::size_t k = 0; k < found.count; ++k) visit(child, found.numbers[k]);
      } else {
        visitOverlappingChildren<onlyUpwards>(a, b, level - 1, child, candidates, visit);
      }
    }
  }

  /// Finds which of the children of some boxes overlap a box. All are written and only the count
  /// grows: a jump on each outcome would be mispredicted.
  template <bool onlyUpwards>
  static void findOverlaps(Box const& box, std::size_t number, BoxTree const& tree,
                           std::size_t level, Candidates const& parents, Candidates& found) {
    if (found.numbers.size() < kRun * parents.count) found.numbers.resize(kRun * parents.count);
    std::size_t* const numbers = found.numbers.data();
    std::size_t count = 0;
    for (std::size_t i = 0; i < parents.count; ++i) {
      std::size_t const parent = parents.numbers[i];
      if (!overlap(box, tree.box(level, parent))) continue;
      Run const run = tree.children(level, parent);
      std::size_t const first = onlyUpwards ? std::max(run.begin, number) : run.begin;
      for (std::size_t k = first; k < run.end; ++k) {
        numbers[count] = k;
        count += std::size_t{overlap(box, tree.box(level - 1, k))};
      }
    }
    found.count = count;
  }

  std::vector<std::vector<Box>> levels_;  // the leaves first
};

}  // namespace crv::internal
