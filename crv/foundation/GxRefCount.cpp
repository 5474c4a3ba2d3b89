#include "crv/foundation/GxRefCount.h"

#include <mutex>

namespace {

std::mutex theRefCountMutex;

}  // namespace

GxRefCount::GxRefCount(void* p) : object_(p), count_(1) {}

GxRefCount::~GxRefCount() = default;

GxRefCount& GxRefCount::operator++() {
  ++count_;
  return *this;
}

int GxRefCount::decrement() { return --count_; }

int GxRefCount::value() const { return count_; }

void* GxRefCount::pointer() const { return object_; }

void lockRefCount() { theRefCountMutex.lock(); }

void unlockRefCount() { theRefCountMutex.unlock(); }
