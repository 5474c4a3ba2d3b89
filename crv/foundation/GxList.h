// The indexed list: a ring of element copies with a cursor, indices that wrap and forward
// iterators.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

#include <cassert>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

/// An ordered collection of T. Elements are stored as copies and returned by reference; a reference
/// stays valid until its element is removed. A cursor remembers the node last reached: sequential
/// indexing costs one step per access, and any other index is reached from the nearest of cursor,
/// first and last element. Indices beyond the end wrap modulo the length. The cursor is state of
/// the list, even of a const one, so only one thread at a time may use a list by index; iterators
/// leave the cursor alone. T needs a copy constructor, and == where find or comparisons are used.
/// When copying an element throws or memory runs out, the list stays as it was.
template <class T>
class GxList {
  struct Node;
  template <class Value>
  class NodeIterator;

 public:
  /// Forward iterators from the first element to the last. An iterator stays valid until its
  /// element is removed or moved into another list; elements added behind it are still visited.
  using iterator = NodeIterator<T>;
  /// The same, for elements that may not be changed.
  using const_iterator = NodeIterator<T const>;
  /// The type of the elements.
  using value_type = T;

  GxList() = default;

  /// A copy of every element in order; the cursor of the copy is at the first.
  GxList(GxList const& other) : GxList() {
    addAll(other);
    first();
  }

  /// Takes all elements of other, without copying; other ends up empty. The cursor is at the first.
  GxList(GxList&& other) noexcept : GxList() { join(other); }

  /// The elements in order, the cursor at the first.
  GxList(std::initializer_list<T> elements) : GxList(elements.begin(), elements.end()) {}
  /// The elements in order, the cursor at the first.
  explicit GxList(std::vector<T> const& elements) : GxList(elements.begin(), elements.end()) {}
  /// Copies of the elements from begin to end in order, the cursor at the first.
  template <class Iterator, class = typename std::iterator_traits<Iterator>::iterator_category>
  GxList(Iterator begin, Iterator end) : GxList() {
    for (; begin != end; ++begin) add(*begin);
  }

  virtual ~GxList() { empty(); }

  /// Copies of the elements in order.
  std::vector<T> toVector() const { return std::vector<T>(begin(), end()); }

  /// Removes every element; the list stays usable.
  void empty();

  /// The number of elements.
  unsigned length() const { return count_; }

  /// The first element, or end() of an empty list.
  iterator begin() { return iterator(*this, head_); }
  /// The place after the last element.
  iterator end() { return iterator(*this, nullptr); }
  /// The first element, or end() of an empty list.
  const_iterator begin() const { return const_iterator(*this, head_); }
  /// The place after the last element.
  const_iterator end() const { return const_iterator(*this, nullptr); }

  /// Moves the cursor to the first element; returns 1 when there is one, else 0.
  int first() const {
    cursor_ = head_;
    index_ = 0;
    isIndexExact_ = true;
    return head_ != nullptr;
  }

  /// Moves the cursor on by one, from the last element to the first; returns 0 when it is back at
  /// the first or the list is empty, else 1.
  int next() const {
    if (cursor_ == nullptr) return 0;
    cursor_ = cursor_->next;
    index_ = (index_ + 1) % count_;
    return cursor_ != head_;
  }

  /// Moves the cursor back by one, from the first element to the last; returns 0 when it is then at
  /// the first or the list is empty, else 1.
  int prev() const {
    if (cursor_ == nullptr) return 0;
    cursor_ = cursor_->prev;
    index_ = (index_ == 0 ? count_ : index_) - 1;
    return cursor_ != head_;
  }

  /// The element at the cursor. Precondition: the list is not empty.
  T& curElement() const {
    assert(cursor_ != nullptr);
    return cursor_->element;
  }

  /// Moves the cursor to index i modulo the length; does nothing on an empty list.
  void moveTo(unsigned i) const {
    if (i == index_ + 1 && i < count_ && isIndexExact_) {
      cursor_ = cursor_->next;
      index_ = i;
    } else {
      seek(i);
    }
  }

  /// The element at index i modulo the length. Precondition: the list is not empty.
  T& operator()(unsigned i) {
    moveTo(i);
    return curElement();
  }
  /// The same element of a const list.
  T const& operator()(unsigned i) const {
    moveTo(i);
    return curElement();
  }
  /// The same element as operator(), modifiable also in a const list.
  T& operator[](unsigned i) const {
    moveTo(i);
    return curElement();
  }

  /// Appends a copy of value and returns the stored copy. The cursor stays, unless the list was
  /// empty.
  T& add(T const& value) {
    Node* const node = new Node(value);
    if (count_ == 0) {
      head_ = node;
      first();
    } else {
      linkBefore(head_, node);
    }
    ++count_;
    return node->element;
  }

  /// Stores a copy of value before the element at index and returns the stored copy; the cursor
  /// goes to the first element.
  ///   0 < index < length  the copy becomes the element at index
  ///   0                   it becomes the first
  ///   length              it becomes the last, as at any other multiple of the length
  ///   -1                  it goes before the element at the cursor
  /// Other negative indices count as unsigned ones, modulo the length.
  virtual T& insert(T const& value, int index);

  /// Removes the element at index modulo the length; -1 removes the one at the cursor, any other
  /// negative index the first. The cursor stays on its element; if that is removed, it moves to the
  /// next. Does nothing on an empty list. After an index of length or more the cursor may count
  /// from a wrong place: every index then names the next element after the one it should, until the
  /// cursor has been set to the first or the last.
  void remove(int index) { removeByIndex(index); }
  /// Does what remove does.
  void removeByIndex(int index);

  /// Moves the element at from so that it ends up at index to; returns 1 when done, 0 (and nothing
  /// is changed) when an index is out of range or they are equal. Where the cursor counts from a
  /// wrong place (see remove), from is still counted from the first element, but to is shifted like
  /// all other indices.
  int move(int from, int to);

  /// The index of the first element equal to value, or -1.
  int find(T const& value) const;

  /// Calls fn with a copy of each element in order, and arg.
  void forEach(void (*fn)(T, void*), void* arg) const;

  /// The first element for whose copy fn returns non-zero, or null.
  T* firstThat(int (*fn)(T, void*), void* arg) const;

  /// 1 when both lists hold equal elements in the same order, wherever their cursors are.
  int operator==(GxList const& other) const;
  /// The opposite of ==.
  int operator!=(GxList const& other) const { return !(*this == other); }

  /// Replaces all elements by copies of other's. A list assigned to itself ends up empty.
  GxList& operator=(GxList const& other);

  /// Removes all elements and takes those of other, without copying; other ends up empty. A list
  /// moved to itself stays as it is.
  GxList& operator=(GxList&& other) noexcept {
    GxList(std::move(other)).swap(*this);
    return *this;
  }

  /// Exchanges the elements of two lists, without copying; the cursors go with them.
  void swap(GxList& other) noexcept {
    std::swap(head_, other.head_);
    std::swap(cursor_, other.cursor_);
    std::swap(index_, other.index_);
    std::swap(count_, other.count_);
    std::swap(isIndexExact_, other.isIndexExact_);
  }
  /// Exchanges the elements of two lists.
  friend void swap(GxList& a, GxList& b) noexcept { a.swap(b); }

  /// Moves all elements of other, without copying, before the element at index; other ends up
  /// empty. With index -1 the result starts with other's elements, continues with the element at
  /// the cursor and those after it, and ends with those that stood before it. A list injected into
  /// itself stays as it is. After an index of length or more, later indices may be off by other's
  /// length, as after remove.
  void inject(GxList& other, int index);

  /// Moves all elements of other, without copying, to the end; other ends up empty. A list joined
  /// to itself stays as it is.
  void join(GxList& other) noexcept;
  /// Does what join does, and returns this list.
  GxList& operator+=(GxList& other) {
    join(other);
    return *this;
  }

 private:
  struct Node {
    explicit Node(T const& value) : element(value), next(this), prev(this) {}
    T element;
    Node* next;
    Node* prev;
  };

  /// A node of a list; null stands for the end. It looks up the first node at each step, so that
  /// elements may also be added in front.
  template <class Value>
  class NodeIterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    /// The type of the elements.
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    NodeIterator() = default;
    NodeIterator(GxList const& list, Node* node) : list_(&list), node_(node) {}

    /// An iterator converts to a const_iterator.
    operator NodeIterator<T const>() const { return {*list_, node_}; }

    reference operator*() const {
      assert(node_ != nullptr);
      return node_->element;
    }
    pointer operator->() const { return &**this; }

    NodeIterator& operator++() {
      node_ = node_->next == list_->head_ ? nullptr : node_->next;
      return *this;
    }
    NodeIterator operator++(int) {
      NodeIterator const before = *this;
      ++*this;
      return before;
    }

    friend bool operator==(NodeIterator const& a, NodeIterator const& b) {
      return a.node_ == b.node_;
    }
    friend bool operator!=(NodeIterator const& a, NodeIterator const& b) { return !(a == b); }

   private:
    GxList const* list_ = nullptr;
    Node* node_ = nullptr;
  };

  static void linkBefore(Node* position, Node* firstNode);
  inline void seek(unsigned i) const;
  void link(Node* node, int index);
  Node* unlink(int index);
  void addAll(GxList const& other);
  void recalcIndex();
  Node* nodeAt(unsigned i) const;
  void forgetNodes() noexcept;

  Node* head_ = nullptr;
  mutable Node* cursor_ = nullptr;
  mutable unsigned index_ = 0;
  unsigned count_ = 0;
  mutable bool isIndexExact_ = true;  // false where index_ may not be the cursor's
};

template <class T>
void GxList<T>::empty() {
  Node* node = cursor_;
  unsigned const count = count_;
  forgetNodes();
  for (unsigned n = 0; n < count; ++n) {
    Node* const next = node->next;
    delete node;
    node = next;
  }
}

/// Moves the cursor to index i modulo the length from the nearest of cursor, first and last
/// element.
template <class T>
void GxList<T>::seek(unsigned i) const {
  if (count_ == 0) return;
  unsigned const k = i < count_ ? i : i % count_;
  unsigned const last = count_ - 1;
  // Deliberate: a wrong cursor index stays wrong until the cursor is set to the first or the last
  // element.
  bool const fromHead = k == 0 || (isIndexExact_ && k < index_ && k < index_ - k);
  bool const fromLast = k == last || (isIndexExact_ && k > index_ && last - k < k - index_);
  if (fromHead) {
    first();
  } else if (fromLast) {
    cursor_ = head_->prev;
    index_ = last;
    isIndexExact_ = true;
  }
  for (; index_ < k; ++index_) cursor_ = cursor_->next;
  for (; index_ > k; --index_) cursor_ = cursor_->prev;
}

template <class T>
T& GxList<T>::insert(T const& value, int index) {
  Node* const node = new Node(value);
  link(node, index);
  return node->element;
}

template <class T>
void GxList<T>::link(Node* node, int index) {
  if (index != -1 && count_ != 0) moveTo(static_cast<unsigned>(index));
  if (count_ != 0) linkBefore(cursor_, node);
  if (count_ == 0 || index == 0) head_ = node;
  ++count_;
  first();
}

template <class T>
void GxList<T>::removeByIndex(int index) {
  if (cursor_ == nullptr) return;
  delete unlink(index);
}

/// Takes the node that removeByIndex means out of the list, which is not empty.
template <class T>
typename GxList<T>::Node* GxList<T>::unlink(int index) {
  unsigned const i = index < 0 ? 0u : static_cast<unsigned>(index);
  Node* const victim = index == -1 ? cursor_ : nodeAt(i);
  if (victim == cursor_) {
    cursor_ = victim->next;
    if (cursor_ == head_) index_ = 0;
  } else if (i < index_) {
    --index_;
  } else if (i >= count_) {
    // Deliberate: the index as given is compared with the cursor's, not the wrapped one.
    isIndexExact_ = false;
  }
  victim->prev->next = victim->next;
  victim->next->prev = victim->prev;
  if (victim == head_) head_ = victim->next;
  if (--count_ == 0) forgetNodes();
  victim->next = victim->prev = victim;
  return victim;
}

template <class T>
int GxList<T>::move(int from, int to) {
  bool const inside = from >= 0 && to >= 0 && static_cast<unsigned>(from) < count_ &&
                      static_cast<unsigned>(to) < count_;
  if (!inside || from == to) return 0;
  /// Puts the node back unless it was released, because copying the element may throw.
  struct Return {
    GxList* list;
    Node* node;
    int index;
    ~Return() {
      if (node != nullptr) list->link(node, index);
    }
  } back{this, unlink(from), from};
  insert(back.node->element, to);  // virtual, so that a derived list sees the new element
  delete std::exchange(back.node, nullptr);
  return 1;
}

template <class T>
int GxList<T>::find(T const& value) const {
  Node* node = head_;
  for (unsigned i = 0; i < count_; ++i, node = node->next) {
    if (node->element == value) return static_cast<int>(i);
  }
  return -1;
}

template <class T>
void GxList<T>::forEach(void (*fn)(T, void*), void* arg) const {
  Node* node = head_;
  for (unsigned i = 0; i < count_; ++i, node = node->next) fn(node->element, arg);
}

template <class T>
T* GxList<T>::firstThat(int (*fn)(T, void*), void* arg) const {
  Node* node = head_;
  for (unsigned i = 0; i < count_; ++i, node = node->next) {
    if (fn(node->element, arg)) return &node->element;
  }
  return nullptr;
}

template <class T>
int GxList<T>::operator==(GxList const& other) const {
  if (count_ != other.count_) return 0;
  Node* a = head_;
  Node* b = other.head_;
  for (unsigned i = 0; i < count_; ++i, a = a->next, b = b->next) {
    if (!(a->element == b->element)) return 0;
  }
  return 1;
}

template <class T>
GxList<T>& GxList<T>::operator=(GxList const& other) {
  GxList copies;
  // Deliberate: self-assignment empties the list.
  if (&other != this) copies.addAll(other);
  empty();
  join(copies);
  return *this;
}

template <class T>
void GxList<T>::inject(GxList& other, int index) {
  if (&other == this || other.count_ == 0) return;
  if (count_ == 0) {
    head_ = cursor_ = other.head_;
  } else {
    if (index != -1) moveTo(static_cast<unsigned>(index));
    linkBefore(cursor_, other.head_);
    // Deliberate: at the cursor, too, the ring is made to start with the injected elements.
    if (index == -1 || index == 0) head_ = other.head_;
  }
  count_ += other.count_;
  if (index == -1 || static_cast<unsigned>(index) <= index_) {
    recalcIndex();
  } else if (cursor_ != head_) {
    // Deliberate: a wrapped index beyond the cursor's leaves the cursor's index as it was.
    isIndexExact_ = false;
  }
  other.forgetNodes();
}

template <class T>
void GxList<T>::join(GxList& other) noexcept {
  if (&other == this || other.count_ == 0) return;
  if (count_ == 0) {
    head_ = cursor_ = other.head_;
  } else {
    linkBefore(head_, other.head_);
  }
  count_ += other.count_;
  other.forgetNodes();
}

/// Splices the ring that starts at firstNode in before position.
template <class T>
void GxList<T>::linkBefore(Node* position, Node* firstNode) {
  Node* const before = position->prev;
  Node* const lastNode = firstNode->prev;
  before->next = firstNode;
  firstNode->prev = before;
  lastNode->next = position;
  position->prev = lastNode;
}

template <class T>
void GxList<T>::addAll(GxList const& other) {
  Node* node = other.head_;
  for (unsigned n = other.count_; n != 0; --n, node = node->next) add(node->element);
}

template <class T>
void GxList<T>::recalcIndex() {
  index_ = 0;
  isIndexExact_ = true;
  for (Node* node = head_; node != cursor_; node = node->next) ++index_;
}

/// The node at i modulo the length, reached from the nearer end of the list.
template <class T>
typename GxList<T>::Node* GxList<T>::nodeAt(unsigned i) const {
  unsigned const k = i % count_;
  Node* node = head_;
  if (k <= count_ / 2) {
    for (unsigned n = 0; n < k; ++n) node = node->next;
  } else {
    for (unsigned n = count_; n > k; --n) node = node->prev;
  }
  return node;
}

template <class T>
void GxList<T>::forgetNodes() noexcept {
  head_ = nullptr;
  cursor_ = nullptr;
  index_ = 0;
  isIndexExact_ = true;
  count_ = 0;
}

CRV_EXTERN_TEMPLATE(GxList<double>);
CRV_EXTERN_TEMPLATE(GxList<GxCoord<double>>);
