// The same bits from every compiler at every optimisation level: a hash over the results of each
// operation, recorded. Operations with sines and powers in them, which come with the system, are
// left out.
#include "tests/operations/all.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using namespace support;

/// Whether this platform has that on which a recorded hash depends; see tests/data/bits.txt.
bool isRecordedHere(std::string const& dependsOn) {
  if (dependsOn == "long") return sizeof(long) == 8;
#ifndef __GLIBC__
  if (dependsOn == "sine") return false;
#endif
#ifndef __GLIBCXX__
  if (dependsOn == "ties") return false;
#endif
  return true;
}

// As found by g++ 12 and clang 14, at -O0 and -O3, on x86-64.
TEST(SameBits, ResultsOfEveryOperationHashToTheRecordedValue) {
  std::map<std::string, std::string> recorded;
  std::set<std::string> elsewhere;
  for (std::string const& line : linesOf("bits")) {
    std::vector<std::string> const words = wordsOf(line);
    if (line[0] == '#') continue;
    recorded[words.at(0)] = words.at(1);
    if (words.size() > 2 && !isRecordedHere(words[2])) elsewhere.insert(words[0]);
  }
  for (Operation const& operation : allOperations()) {
    if (operation.traits & (kSystemsBits | kHasState)) continue;
    std::uint64_t hash = 0;
    std::uint64_t const worlds = operation.traits & (kSlow | kCostly) ? 150 : 1500;
    for (std::uint64_t seed = 0; seed < worlds; ++seed) {
      World w(seed);
      EXPECT_EQ(brokenBy(operation, w), "") << seed;
      hash = hash * 31 + w.hash();
    }
    if (elsewhere.count(operation.name) != 0) continue;
    EXPECT_EQ(recorded[operation.name], hexadecimal(hash))
        << operation.name << " has other bits than before";
  }
}

TEST(Promises, AreKeptByEveryOperationOnAnyInput) {
  for (Operation const& operation : allOperations()) {
    if ((operation.traits & (kSystemsBits | kHasState)) == 0) continue;
    for (std::uint64_t seed = 0; seed < 1500; ++seed) {
      World w(seed);
      EXPECT_EQ(brokenBy(operation, w), "") << seed;
    }
  }
}

}  // namespace
