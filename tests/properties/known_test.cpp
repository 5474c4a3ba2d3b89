// Known answers, kept as data: tests/data/known/ROOM.txt. A comment states a rule; a line without
// bars names an operation, then its arguments; a row is "name | arguments | results". Results are
// compared bit for bit, those after ~ to within a billionth. For a list of more than forty results
// a row contains their number and the hash of all results so far. A row without results fails and
// prints them.
#include "tests/operations/all.h"

#include <gtest/gtest.h>

namespace {

using namespace support;

bool agree(std::string const& found, std::string const& expected) {
  double const x = std::strtod(found.c_str(), nullptr);
  if (expected[0] != '~') {
    char* end = nullptr;
    double const y = std::strtod(expected.c_str(), &end);
    return found == expected || (*end == '\0' && sameBits(x, y));
  }
  double const y = std::strtod(expected.c_str() + 1, nullptr);
  return sameBits(x, y) || std::fabs(x - y) <= 1e-9 * (1.0 + std::fabs(y));
}

class Known : public testing::TestWithParam<std::string> {};

TEST_P(Known, Answers) {
  std::string rule, operation;
  std::map<std::string, Operation> operations;
  for (Operation const& each : allOperations()) operations[each.name] = each;
  for (std::string const& line : linesOf("known/" + GetParam())) {
    std::vector<std::string> parts = partsOf(std::istringstream(line), '|');
    if (line.empty()) continue;
    if (line[0] == '#') {
      rule = operation.empty() ? rule + '\n' + line : line;
      operation.clear();
    } else if (parts.size() == 1) {
      operation = line.substr(0, line.find(':'));
    } else {
      parts.resize(3);
      SCOPED_TRACE(rule);
      World w(parts[1]);
      EXPECT_EQ(brokenBy(operations.at(operation), w), "") << parts[0];
      std::vector<std::string> const found = wordsOf(w.results()), expected = wordsOf(parts[2]);
      bool const same = !found.empty() && found.size() == expected.size() &&
                        std::equal(found.begin(), found.end(), expected.begin(), agree);
      EXPECT_TRUE(same) << operation << ", " << parts[0] << "\nis " << w.results() << "\nnot"
                        << parts[2];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rooms, Known,
                         testing::Values("foundation", "bezier", "curve", "positionmap"),
                         [](auto const& room) { return room.param; });

}  // namespace
