// Handles to shared maps. A program of its own, so that a build with the thread sanitizer can run
// it alone.
#include "crv/crv.h"

#include <array>
#include <atomic>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Position = GxBezierCurvePosition;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

/// Counts its deletion, and takes the lock meanwhile: with a handle that still holds the lock, the
/// test would hang.
class CountedMap : public GxBezierCurvePositionMapBase {
 public:
  explicit CountedMap(std::atomic<int>& deletions) : deletions_(&deletions) {}
  ~CountedMap() override {
    lockRefCount();
    unlockRefCount();
    ++*deletions_;
  }
  int mapPosition(Position& out, Position const& in) const override {
    out = in;
    return *deletions_;
  }
  int inverseMapPosition(Position& out, Position const& in) const override {
    return mapPosition(out, in);
  }

 private:
  std::atomic<int>* deletions_;
};

TEST(GxHandle, TheLastCopyDeletesOnce) {
  std::atomic<int> deletions{0};
  auto first = std::make_unique<MapHandle>(new CountedMap(deletions));
  MapHandle second(*first), third;
  third = second;
  EXPECT_TRUE(second == *first && third == second);
  EXPECT_FALSE(second < third || second > third) << "ordered by their one counter";
  first.reset();
  MapHandle const& self = second;
  second = self;
  EXPECT_EQ(deletions, 0);
  second = MapHandle();
  EXPECT_EQ(deletions, 0);
  EXPECT_TRUE(second.isNull() && third.isValid() && second != third);
  EXPECT_NE(second<third, second> third);
  third = second;
  EXPECT_EQ(deletions, 1);
}

TEST(GxHandle, OnlyTheSoleOwnerDetaches) {
  std::atomic<int> deletions{0};
  MapHandle handle(new CountedMap(deletions));
  {
    MapHandle const copy(handle);
    EXPECT_EQ(handle.detach(), nullptr);
    EXPECT_EQ(*handle, *copy);
  }
  GxBezierCurvePositionMapBase* const map = *handle;
  EXPECT_EQ(handle.detach(), map);
  EXPECT_TRUE(handle.isNull() && handle.operator->() == nullptr && handle.detach() == nullptr);
  EXPECT_EQ(deletions, 0);
  delete map;
  EXPECT_EQ(deletions, 1);
}

TEST(GxHandle, EightThreadsShareMapsAndEachIsDeletedOnce) {
  std::array<std::atomic<int>, 16> deletions{};
  std::atomic<int> failures{0};
  auto shared = std::make_unique<std::vector<MapHandle>>();
  for (auto& count : deletions) shared->push_back(MapHandle(new CountedMap(count)));

  std::atomic<int> sharing{8};
  auto const work = [&](unsigned seed) {
    std::mt19937 random(seed);
    std::vector<MapHandle> own(*shared);
    --sharing;
    for (int step = 0; step < 4000; ++step) {
      MapHandle& a = own[random() % own.size()];
      MapHandle& b = own[random() % own.size()];
      switch (random() % 6) {
        case 0: a = b; break;
        case 1: own.push_back(MapHandle(a)); break;
        case 2: own.erase(own.begin() + (&a - own.data())); break;
        case 3: failures += a != b && !(a < b) && !(b < a); break;
        case 4:
          if (GxBezierCurvePositionMapBase* const map = a.detach()) a = MapHandle(map);
          break;
        default:
          if (Position out; a.isValid()) failures += a->mapPosition(out, Position(1, 0.5)) != 0;
      }
      if (own.size() < 4) own.resize(8);
    }
  };
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= 8; ++seed) threads.emplace_back(work, seed);
  while (sharing != 0) std::this_thread::yield();
  shared.reset();
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(failures, 0) << "a map that was deleted, or two counters without an order";
  for (auto const& count : deletions) EXPECT_EQ(count, 1);
}

}  // namespace
