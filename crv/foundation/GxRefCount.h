// The counter that the copies of a handle share, and the one lock around all counters.
#pragma once

#include "crv/export.h"

/// Counts the handles that refer to one object. The counter knows the object but does not own it;
/// it takes no lock itself: callers bracket every change with lockRefCount and unlockRefCount.
class CRV_API GxRefCount {
 public:
  /// A counter for the object at p (null is allowed), with a count of 1: its maker's reference.
  GxRefCount(void* p);
  ~GxRefCount();
  GxRefCount(GxRefCount const&) = delete;
  GxRefCount& operator=(GxRefCount const&) = delete;

  /// Adds one to the count.
  GxRefCount& operator++();

  /// Takes one off the count and returns the new count.
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

/// Releases what lockRefCount took.
CRV_API void unlockRefCount();
