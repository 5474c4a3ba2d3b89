// Appending computed values to a vector.
#pragma once

#include <cstddef>
#include <iterator>
#include <vector>

namespace crv::internal {

/// An iterator over generate(i).
template <class Value, class Generate>
struct Generated {
  using iterator_category = std::random_access_iterator_tag;
  using value_type = Value;
  using difference_type = std::ptrdiff_t;
  using pointer = Value const*;
  using reference = Value;

  Value operator*() const { return (*generate)(i); }
  Generated& operator++() {
    ++i;
    return *this;
  }
  Generated& operator--() {
    --i;
    return *this;
  }
  Generated& operator+=(difference_type n) {
    i += static_cast<std::size_t>(n);
    return *this;
  }
  difference_type operator-(Generated const& from) const {
    return static_cast<difference_type>(i - from.i);
  }
  bool operator==(Generated const& other) const { return i == other.i; }
  bool operator!=(Generated const& other) const { return i != other.i; }

  Generate const* generate;
  std::size_t i;
};

/// Appends generate(i) for i from first to before last: all at once, which costs less than one by
/// one.
template <class Value, class Generate>
void appendGenerated(std::vector<Value>& values, Generate const& generate, std::size_t first,
                     std::size_t last) {
  using Iterator = Generated<Value, Generate>;
  values.insert(values.end(), Iterator{&generate, first}, Iterator{&generate, last});
}

}  // namespace crv::internal
