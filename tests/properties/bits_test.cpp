// The same bits from every compiler at every optimisation level: hashes over a million results,
// recorded. Operations that call pow, sin, cos, acos or atan2 are left out: those come with the
// system.
#include "tests/support/results.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::Random;

// Found alike by g++ 12 and clang 14, at -O0 and -O3, on x86-64.
constexpr std::uint64_t kSegments = 0x5fd6158dc872f48au;
constexpr std::uint64_t kCurves = 0xc56315d6533de433u;

constexpr char const* kOutlines[] = {"roman-capital-s-thirds", "bold-w-ends",
                                     "math-infinity-outer"};

void expectHash(support::Hash const& hash, std::uint64_t recorded) {
  EXPECT_EQ(hash.value(), recorded) << "this build's bits differ: 0x" << std::hex << hash.value();
}

TEST(SameBits, AMillionResultsHashToTheRecordedValue) {
  support::Hash hash;
  Random random(77);
  for (int i = 0; i < 12000; ++i) {
    double const size = i % 3 == 0 ? 10.0 : 100.0;
    GxBezier const s = i % 4 == 3 ? random.gridSegment(40) : random.segment(size);
    GxBezier const other = random.segment(size);
    double const t = random.uniform(-0.25, 1.25);
    addSegment(hash, s, other, t, random.point(size));
  }
  for (char const* const name : kOutlines) {
    GxBezierCurve const curve = support::outline(name);
    int const n = static_cast<int>(curve.length());
    for (int i = 0; i < n; ++i) {
      addSegment(hash, curve[i], curve[(i + 3) % n], 0.37, curve[(i + 1) % n].bValue(0.4));
    }
  }
  EXPECT_GT(hash.results(), 1000000);
  expectHash(hash, kSegments);
}

TEST(SameBits, ResultsOfCurvesHashToTheRecordedValue) {
  support::Hash hash;
  for (char const* const name : kOutlines) {
    for (char const* const other : kOutlines) {
      support::addCurve(hash, support::outline(name), support::outline(other), 11.0);
    }
  }
  EXPECT_GT(hash.results(), 10000);
  expectHash(hash, kCurves);
}

}  // namespace
