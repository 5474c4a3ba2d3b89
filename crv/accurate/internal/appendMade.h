// Appending computed values to a vector.
#pragma once

#include <cstddef>
#include <iterator>
#include <vector>

namespace crv::internal {

/// An iterator over make(i).
template <class Value, class Make>
struct Made {
  using iterator_category = std::random_access_iterator_tag;
  using value_type = Value;
  using difference_type = std::ptrdiff_t;
  using pointer = Value const*;
  using reference = Value;

  Value operator*() const { return (*make)(i); }
  Made& operator++() {
    ++i;
    return *this;
  }
  Made& operator--() {
    --i;
    return *this;
  }
  Made& operator+=(difference_type n) {
    i += static_cast<std::size_t>(n);
    return *this;
  }
  difference_type operator-(Made const& from) const {
    return static_cast<difference_type>(i - from.i);
  }
  bool operator==(Made const& other) const { return i == other.i; }
  bool operator!=(Made const& other) const { return i != other.i; }

  Make const* make;
  std::size_t i;
};

/// Appends make(i) for i from first to before last: all at once, which costs less than one by one.
template <class Value, class Make>
void appendMade(std::vector<Value>& values, Make const& make, std::size_t first, std::size_t last) {
  using Iterator = Made<Value, Make>;
  values.insert(values.end(), Iterator{&make, first}, Iterator{&make, last});
}

}  // namespace crv::internal
