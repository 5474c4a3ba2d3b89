#include "crv/foundation/internal/introsort.h"

#include "tests/support/bits.h"
#include "tests/support/expect.h"

#include <algorithm>

namespace {

using namespace support;
using crv::internal::introsort;

/// A key that is compared, and where the element stood.
using Elements = std::vector<std::pair<double, int>>;

auto const isBefore = [](auto const& a, auto const& b) { return a.first < b.first; };

/// Keys that quicksort by the median of three divides badly (McIlroy, "A killer adversary for
/// quicksort", 1999): each is settled no sooner than two unsettled ones are compared.
Numbers badlyDividedKeys(int count) {
  Numbers keys(static_cast<std::size_t>(count), kInf);
  Elements elements;
  for (int i = 0; i < count; ++i) elements.emplace_back(0.0, i);
  double settled = 0.0;
  int last = 0;
  introsort(elements, [&](auto const& a, auto const& b) {
    auto const key = [&](auto const& e) -> double& {
      return keys[static_cast<std::size_t>(e.second)];
    };
    if (key(a) == kInf && key(b) == kInf) key(a.second == last ? a : b) = settled++;
    if (key(a) == kInf) last = a.second;
    if (key(b) == kInf) last = b.second;
    return key(a) < key(b);
  });
  return keys;
}

TEST(Introsort, LeavesEqualElementsInOneOrderOnEveryPlatform) {
  Random random(1);
  Numbers const bad = badlyDividedKeys(500);
  std::uint64_t hash = 0;
  for (int i = 0; i < 3000; ++i) {
    double const most = i % 7 == 0 ? 2.0 : random.uniform(1, 100), count = random.uniform(0, 200);
    Elements elements;
    for (int k = 0; k < (i % 9 == 0 ? 500 : count); ++k) {
      double const key = i % 9 == 0 ? bad[std::size_t(k)] / (1 + i % 4) : random.uniform(0, most);
      elements.emplace_back(std::floor(key), k);
    }
    Elements expected = elements;
    introsort(elements, isBefore);
    for (auto const& e : elements) hash = hash * 31 + static_cast<std::uint64_t>(e.second);
#ifdef __GLIBCXX__  // which has the order that was recorded
    std::sort(expected.begin(), expected.end(), isBefore);
    ASSERT_EQ(elements, expected);
#endif
  }
  EXPECT_EQ(hexadecimal(hash), "632068a9088af620");
}

TEST(Introsort, LosesNothingWhereKeysAreNaN) {
  Random random(2);
  for (int i = 0; i < 2000; ++i) {
    Elements elements;
    for (int k = 0; k < 100; ++k) {
      double const key = random.uniform(0, 9);
      elements.emplace_back(key < 3.0 ? kNaN : std::floor(key), k);
    }
    introsort(elements, isBefore);
    std::vector<char> isThere(100, 0);
    for (auto const& e : elements) isThere[static_cast<std::size_t>(e.second)] = 1;
    ASSERT_EQ(std::count(isThere.begin(), isThere.end(), 1), 100);
  }
}

}  // namespace
