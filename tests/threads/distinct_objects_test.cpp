// Objects of every class, each used by one thread, at once: what threads share inside the library,
// the lock of the counters and constant tables, shows neither in the results nor to a thread
// sanitizer.
#include "tests/support/results.h"

#include <thread>

namespace {

using namespace support;

/// Fits a curve to a spiral, closes it, and offsets it in every mode.
GxBezierCurve fittedCurve(double size, int mode) {
  GxList<Point> stroke;
  for (int i = 0; i < 120; ++i) {
    Point p(size + i, 0.0);
    p.rotate(i * 0.05, Point(0, 0));
    stroke.add(p);
  }
  GxBezierCurve curve(&stroke, 0.5);
  curve.makeClosedCurve();
  curve.offset(size * 0.05, 1, mode);
  return curve;
}

std::uint64_t resultsFor(unsigned seed) {
  Hash hash;
  Random random(seed);
  for (int i = 0; i < 20; ++i) {
    addSegment(hash, random.segment(50), random.segment(50), i * 0.05, random.point(50));
  }
  for (int mode = 0; mode < 3; ++mode) {
    addCurve(hash, fittedCurve(random.uniform(90, 110), mode), fittedCurve(150, mode), 9.0);
  }
  return hash.value();
}

TEST(DistinctObjects, ThreadsGetWhatOneGetsAlone) {
  constexpr unsigned kThreads = 4;
  std::vector<std::uint64_t> together(kThreads);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([&together, i] { together[i] = resultsFor(i); });
  }
  for (std::thread& thread : threads) thread.join();
  for (unsigned i = 0; i < kThreads; ++i) EXPECT_EQ(together[i], resultsFor(i)) << i;
  EXPECT_NE(together[0], together[1]);
}

}  // namespace
