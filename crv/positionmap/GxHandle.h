// The reference-counted handle: copies share an object, the last one deletes it.
#pragma once

#include "crv/foundation/GxRefCount.h"

#include <functional>
#include <new>
#include <utility>

/// Shared ownership of one object of class T, or of none. Handles to one object may be copied,
/// assigned, compared and destroyed from several threads at once, each handle by one thread at a
/// time: every change of a counter is made under the one lock of lockRefCount, and objects are
/// deleted after that lock is released. If the counter cannot be allocated, the handle is null.
template <class T>
class GxHandle {
 public:
  /// A null handle.
  GxHandle() : GxHandle(nullptr) {}

  /// Takes ownership of an object made with new; null is allowed. The conversion is implicit, so
  /// pass a plain pointer where a handle is expected only if the handle is to own the object. Give
  /// each object to one handle only and copy that handle. Without memory for a counter the object
  /// is deleted at once.
  GxHandle(T* object) : counter_(new (std::nothrow) GxRefCount(object)) {
    if (counter_ == nullptr) delete object;
  }

  /// Shares the object of the other handle.
  GxHandle(GxHandle const& other) : counter_(nullptr) { unlinkAndLink(other.counter_); }

  /// Takes over the other handle's share; the other handle becomes null.
  GxHandle(GxHandle&& other) noexcept : counter_(std::exchange(other.counter_, nullptr)) {}
  virtual ~GxHandle() { unlinkAndLink(nullptr); }

  /// Releases the object and shares the other handle's object.
  GxHandle& operator=(GxHandle const& other) {
    if (this != &other) unlinkAndLink(other.counter_);
    return *this;
  }

  /// Releases the object and takes over the other handle's share; the other handle becomes null.
  GxHandle& operator=(GxHandle&& other) noexcept {
    GxHandle(std::move(other)).swap(*this);
    return *this;
  }
  /// Exchanges the objects of two handles.
  void swap(GxHandle& other) noexcept { std::swap(counter_, other.counter_); }
  /// Exchanges the objects of two handles.
  friend void swap(GxHandle& a, GxHandle& b) noexcept { a.swap(b); }

  /// Whether there is an object.
  explicit operator bool() const { return isValid() != 0; }
  /// 1 when there is no object.
  int isNull() const { return objectOf(counter_) == nullptr; }
  /// 1 when there is an object.
  int isValid() const { return !isNull(); }

  /// The object, or null; both operators give the pointer.
  T* operator*() const { return lockedObject(); }
  /// The object, or null.
  T* operator->() const { return lockedObject(); }

  /// 1 when both handles refer to one object, or both to none.
  int operator==(GxHandle const& other) const {
    Lock const lock;
    return objectOf(counter_) == objectOf(other.counter_);
  }
  /// The opposite of ==.
  int operator!=(GxHandle const& other) const { return !(*this == other); }

  /// Orders handles by the addresses of their counters, for containers. The order is arbitrary, and
  /// two null handles are not equivalent in it.
  int operator<(GxHandle const& other) const {
    Lock const lock;
    return std::less<GxRefCount*>()(counter_, other.counter_);
  }
  /// The order of <, reversed.
  int operator>(GxHandle const& other) const { return other < *this; }

  /// Hands the object over to the caller and leaves this handle null; does nothing and returns null
  /// when other handles share the object.
  T* detach();

 protected:
  /// Refers to the object of another counter, or to no counter if that is null; deletes the object
  /// referred to before if this handle was its last.
  void unlinkAndLink(GxRefCount* newCounter);

 private:
  struct Lock {
    Lock() { lockRefCount(); }
    ~Lock() { unlockRefCount(); }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;
  };

  /// The object of a counter, which never changes.
  static T* objectOf(GxRefCount const* counter) {
    return counter == nullptr ? nullptr : static_cast<T*>(counter->pointer());
  }

  T* lockedObject() const {
    Lock const lock;
    return objectOf(counter_);
  }

  GxRefCount* counter_;
};

template <class T>
T* GxHandle<T>::detach() {
  GxRefCount* old = nullptr;
  {
    Lock const lock;
    if (counter_ == nullptr || counter_->value() != 1) return nullptr;
    old = counter_;
    counter_ = new (std::nothrow) GxRefCount(nullptr);
  }
  T* const object = objectOf(old);
  delete old;
  return object;
}

template <class T>
void GxHandle<T>::unlinkAndLink(GxRefCount* newCounter) {
  GxRefCount* const old = counter_;
  bool isLast = false;
  {
    Lock const lock;
    counter_ = newCounter;
    if (newCounter != nullptr) ++*newCounter;
    isLast = old != nullptr && old->decrement() < 1;
  }
  if (!isLast) return;
  T* const object = objectOf(old);
  delete old;
  delete object;
}
