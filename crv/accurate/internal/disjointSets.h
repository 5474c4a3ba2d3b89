// A partition of numbers into disjoint sets.
#pragma once

#include <cstddef>
#include <numeric>
#include <vector>

namespace crv::internal {

/// Disjoint sets of numbers, each named by its lowest member.
/// Method: union-find with path halving.
class DisjointSets {
 public:
  explicit DisjointSets(std::size_t size) : parents_(size) {
    std::iota(parents_.begin(), parents_.end(), std::size_t{0});
  }

  std::size_t size() const { return parents_.size(); }

  /// Adds a set of one, and returns its number.
  std::size_t add() {
    parents_.push_back(parents_.size());
    return parents_.size() - 1;
  }

  std::size_t find(std::size_t i) {
    while (parents_[i] != i) i = parents_[i] = parents_[parents_[i]];
    return i;
  }

  bool areOne(std::size_t i, std::size_t k) { return find(i) == find(k); }

  void unite(std::size_t i, std::size_t k) {
    i = find(i);
    k = find(k);
    if (i < k) {
      parents_[k] = i;
    } else {
      parents_[i] = k;
    }
  }

 private:
  std::vector<std::size_t> parents_;
};

}  // namespace crv::internal
