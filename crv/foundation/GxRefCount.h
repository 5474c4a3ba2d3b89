// The counter that the copies of a handle share, and the one lock around all counters.
#pragma once

#include "crv/export.h"

/// Counts the handles that refer to one object. The counter knows the object but does not own it;
/// it takes no lock itself: callers bracket every change with lockRefCount and unlockRefCount.
class CRV_API GxRefCount {
 public:
  /// A counter for the object at p (null is allowed). The count starts at 1, for its maker.
  GxRefCount(void* p);
  ~GxRefCount();
  GxRefCount(GxRefCount const&) = delete;
  GxRefCount& operator=(GxRefCount const&) = delete;

  /// Adds one to the count.
  GxRefCount& operator++();

  /// Decrements the count and returns it.
  int decrement();
  /// The count.
  int value() const;
  /// The object.
  void* pointer() const;

 private:
  void* object_;
  int count_;
};

/// Takes the process-wide mutex that guards every counter; it is not recursive.
CRV_API void lockRefCount();

/// Releases that mutex.
CRV_API void unlockRefCount();
