// Reads and writes the numbers in the text of a path.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace crv::internal {

struct ReadNumber {
  double value;        // infinite beyond the range of doubles
  std::size_t length;  // in characters, 0 where the text does not start with a number
};

/// Reads the number at the start of a text: sign, digits with at most one point, exponent. The
/// result is the nearest double; numbers below the smallest are 0.
ReadNumber readNumber(std::string_view text);

/// Appends the shortest text that reads back as the same finite double.
void appendNumber(double value, std::string& out);

}  // namespace crv::internal
