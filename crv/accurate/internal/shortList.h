// A list whose first elements need no allocation.
#pragma once

#include <cstddef>
#include <vector>

namespace crv::internal {

/// A list of plain values; up to N of them are stored in the object itself.
template <class T, std::size_t N>
class ShortList {
 public:
  void push_back(T const& value) {
    if (size_ < N) {
      few_[size_] = value;
    } else {
      if (size_ == N) many_.assign(few_, few_ + N);
      many_.push_back(value);
    }
    ++size_;
  }

  /// Drops all elements from the given one on.
  void shrink(std::size_t size) {
    if (size_ > N && size <= N) {
      for (std::size_t i = 0; i < size; ++i) few_[i] = many_[i];
    }
    if (size_ > N) many_.resize(size > N ? size : 0);
    size_ = size;
  }

  void clear() { shrink(0); }

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T* begin() { return size_ > N ? many_.data() : few_; }
  T* end() { return begin() + size_; }
  T const* begin() const { return size_ > N ? many_.data() : few_; }
  T const* end() const { return begin() + size_; }
  T& operator[](std::size_t i) { return begin()[i]; }
  T const& operator[](std::size_t i) const { return begin()[i]; }

 private:
  T few_[N];
  std::vector<T> many_;
  std::size_t size_ = 0;
};

}  // namespace crv::internal
