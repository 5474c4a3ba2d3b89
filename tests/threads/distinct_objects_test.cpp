// Objects of every class, each used by one thread, at once: what threads share inside the library,
// the lock of the counters and constant tables, shows neither in the results nor to a thread
// sanitizer.
#include "tests/support/results.h"

#include <cmath>
#include <cstdint>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Point;

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

/// Points, matrices, transforms, solvers and tables.
void addArithmetic(support::Hash& hash, support::Random& random) {
  Gx2DMatrix<double> matrix;
  Gx2DMatrix<double> inverse;
  matrix.set(0, 0, random.uniform(1, 2));
  matrix.set(1, 1, random.uniform(1, 2));
  hash.add(matrix.invert(inverse));
  hash.add(Gx2DRotate(random.uniform(0, 6)).image(inverse * random.point(10)));
  double roots[3] = {0.0, 0.0, 0.0};
  hash.add(cubicRoots(1.0, random.uniform(-3, 3), random.uniform(-3, 3), 0.1, roots));
  hash.add(blendValue(random.uniform(0, 1), 2, 5) + roots[0]);
}

std::uint64_t resultsFor(unsigned seed) {
  support::Hash hash;
  support::Random random(seed);
  for (int i = 0; i < 20; ++i) {
    addArithmetic(hash, random);
    addSegment(hash, random.segment(50), random.segment(50), random.uniform(0, 1),
               random.point(50));
  }
  for (int mode = 0; mode < 3; ++mode) {
    GxBezierCurve const other = fittedCurve(150, mode);
    addCurve(hash, fittedCurve(random.uniform(90, 110), mode), other, 9.0);
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
