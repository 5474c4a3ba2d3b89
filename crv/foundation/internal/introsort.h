// Sorts as std::sort does, but leaves elements that are equal in one order on every platform, which
// the standard does not promise. Quicksort by the median of three down to short ranges (Hoare,
// 1962; Sedgewick, "Implementing quicksort programs", 1978), heap sort where that divides badly
// (Musser, "Introspective sorting and selection algorithms", 1997; Floyd, 1964), and insertion at
// the end.
#pragma once

#include <cstddef>
#include <utility>

namespace crv::internal {

template <class Element, class IsBefore>
class Introsort {
 public:
  Introsort(Element* first, IsBefore const& isBefore) : first_(first), isBefore_(isBefore) {}

  void sort(std::size_t count) {
    int depth = 0;
    for (std::size_t rest = count; rest > 1; rest /= 2) depth += 2;
    sortButShortRanges(first_, first_ + count, depth);
    insertEach(first_, first_ + count);
  }

 private:
  // Exact form: the length up to which ranges are left to insertion decides on the order of equal
  // elements, and so do all comparisons below.
  static constexpr std::ptrdiff_t kShort = 16;

  void sortButShortRanges(Element* begin, Element* end, int depth) {
    while (end - begin > kShort) {
      if (depth-- == 0) {
        sortByHeap(begin, static_cast<std::size_t>(end - begin));
        return;
      }
      Element* const upper = divide(begin, end);
      sortButShortRanges(upper, end, depth);
      end = upper;
    }
  }

  /// Moves elements that belong after the median of three to the end, and returns the first of
  /// them. Elements that equal it may go to either side. The scans need no bounds: the other two of
  /// the three end the first ones, and elements that were exchanged the later ones.
  Element* divide(Element* begin, Element* end) {
    std::swap(*begin, *median(begin + 1, begin + (end - begin) / 2, end - 1));
    Element const& pivot = *begin;
    Element* low = begin + 1;
    Element* high = end;
    while (true) {
      while (isBefore_(*low, pivot)) ++low;
      for (--high; isBefore_(pivot, *high);) --high;
      if (low >= high) return low;
      std::swap(*low++, *high);
    }
  }

  Element* median(Element* a, Element* b, Element* c) {
    if (isBefore_(*a, *b)) return isBefore_(*b, *c) ? b : isBefore_(*a, *c) ? c : a;
    return isBefore_(*a, *c) ? a : isBefore_(*b, *c) ? c : b;
  }

  void sortByHeap(Element* heap, std::size_t count) {
    for (std::size_t i = count / 2; i-- != 0;) settle(heap, i, count, heap[i]);
    while (--count != 0) {
      Element const last = heap[count];
      heap[count] = heap[0];
      settle(heap, 0, count, last);
    }
  }

  /// Replaces the top of a heap by a value: the hole at the top moves down along the greatest
  /// children to the bottom, from where the value moves up.
  void settle(Element* heap, std::size_t top, std::size_t count, Element const value) {
    std::size_t hole = top;
    for (std::size_t child = 2 * hole + 2; child <= count; child = 2 * hole + 2) {
      if (child == count || isBefore_(heap[child], heap[child - 1])) --child;
      heap[hole] = heap[child];
      hole = child;
    }
    while (hole > top && isBefore_(heap[(hole - 1) / 2], value)) {
      heap[hole] = heap[(hole - 1) / 2];
      hole = (hole - 1) / 2;
    }
    heap[hole] = value;
  }

  void insertEach(Element* begin, Element* end) {
    for (Element* next = begin + 1; next < end; ++next) {
      if (!isBefore_(*next, next[-1])) continue;
      Element const value = *next;
      Element* to = next;
      for (; to != begin && isBefore_(value, to[-1]); --to) *to = to[-1];
      *to = value;
    }
  }

  Element* first_;
  IsBefore isBefore_;
};

/// Sorts a vector or a short list, with at most about 2 n log n comparisons. isBefore must be a
/// strict weak order. With any other asymmetric relation, such as comparisons with NaN, the order
/// is unspecified, but no element is lost.
template <class Range, class IsBefore>
void introsort(Range& elements, IsBefore isBefore) {
  if (elements.empty()) return;
  Introsort(&*elements.begin(), isBefore).sort(elements.size());
}

}  // namespace crv::internal
