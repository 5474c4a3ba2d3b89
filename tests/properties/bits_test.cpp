// The same bits from every compiler at every optimisation level: a hash over the results of each
// operation, recorded. Operations with sines and powers in them, which come with the system, are
// left out.
#include "tests/operations/all.h"

#include <map>

#include <gtest/gtest.h>

namespace {

using namespace support;

// Rows of results that rest on what comes with the platform.
constexpr char const* kLong = "long";
constexpr char const* kSine = "sine";

/// The row of bits.txt that a world's results belong to.
std::string rowOf(Operation const& operation, World const& w) {
  if (w.restsOnSines()) return kSine;
  return (operation.traits & kCountsInLong) != 0 && w.isFar() ? kLong : operation.name;
}

/// Whether this platform has that on which the results of a row rest.
bool isRecordedHere(std::string const& row) {
#ifndef __GLIBC__
  if (row == kSine) return false;
#endif
  return row != kLong || sizeof(long) == 8;
}

// As found by g++ 12 and clang 14, at -O0 and -O3, on x86-64.
TEST(SameBits, ResultsOfEveryOperationHashToTheRecordedValue) {
  std::map<std::string, std::uint64_t> hashes;
  for (Operation const& operation : allOperations()) {
    if (operation.traits & (kSystemsBits | kHasState)) continue;
    std::uint64_t const worlds = operation.traits & (kSlow | kCostly) ? 150 : 1500;
    for (std::uint64_t seed = 0; seed < worlds; ++seed) {
      World w(seed);
      EXPECT_EQ(brokenBy(operation, w), "") << seed;
      std::uint64_t& hash = hashes[rowOf(operation, w)];
      hash = hash * 31 + w.hash();
    }
  }
  std::map<std::string, std::string> recorded;
  for (std::string const& line : linesOf("bits")) {
    if (line[0] != '#') recorded[wordsOf(line).at(0)] = wordsOf(line).at(1);
  }
  for (auto const& [row, hash] : hashes) {
    if (!isRecordedHere(row)) continue;
    EXPECT_EQ(recorded[row], hexadecimal(hash)) << row << " has other bits than before";
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
