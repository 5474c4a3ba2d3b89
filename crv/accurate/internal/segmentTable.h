// Finds segments with the same control points in the same order or in the opposite one.
#pragma once

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/planeGraph.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace crv::internal {

inline bool areSame(Point const& p, Point const& q) { return (p.x == q.x) & (p.y == q.y); }

inline bool areSame(Cubic const& c, Cubic const& d) {
  return areSame(c.p[0], d.p[0]) && areSame(c.p[1], d.p[1]) && areSame(c.p[2], d.p[2]) &&
         areSame(c.p[3], d.p[3]);
}

/// Whether a cubic, as the list of its coordinates, comes before its reverse in lexicographic order
/// or equals it. Of a cubic and its reverse, at least one does.
inline bool isInOrder(Cubic const& c) {
  for (std::size_t i = 0; i < 2; ++i) {
    Point const &p = c.p[i], &q = c.p[3 - i];
    if (p.x != q.x) return p.x < q.x;
    if (p.y != q.y) return p.y < q.y;
  }
  return true;
}

/// A hash table of segments, which stay where they are. Coordinates must be finite.
/// Method: open addressing with linear probing; the hash is the highest bits of a sum of products.
class SegmentTable {
 public:
  explicit SegmentTable(std::vector<ArrangedSegment> const& segments) : segments_(segments) {
    while (std::size_t{1} << (64 - shift_) < 2 * segments.size()) --shift_;
    entries_.assign(std::size_t{1} << (64 - shift_), kNone);
  }

  /// Adds a segment, and returns the number of the first one that was added with its control points
  /// or their reverse, which is its own if there was none.
  std::size_t add(std::size_t number) {
    Cubic const& c = segments_[number].c;
    Cubic const back = reversed(c);
    std::uint64_t const hash = hashOf(isInOrder(c) ? c : back);
    std::size_t const mask = entries_.size() - 1;
    for (std::size_t i = static_cast<std::size_t>(hash >> shift_);; i = (i + 1) & mask) {
      if (entries_[i] == kNone) entries_[i] = number;
      Cubic const& other = segments_[entries_[i]].c;
      if (entries_[i] == number || areSame(other, c) || areSame(other, back)) return entries_[i];
    }
  }

 private:
  static std::uint64_t hashOf(Cubic const& c) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    std::uint64_t sum = 0, factor = kFactor;
    for (Point const& p : c.p) {
      // The sums with zero make one of both zeros.
      for (double const x : {p.x + 0.0, p.y + 0.0}) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &x, sizeof bits);
        sum += bits * factor;
        factor *= kFactor;
      }
    }
    return sum;
  }

  std::vector<ArrangedSegment> const& segments_;
  int shift_ = 60;
  std::vector<std::size_t> entries_;  // numbers of segments, kNone where there is none
};

}  // namespace crv::internal
