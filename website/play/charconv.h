// Doubles read and written, for the part of the library that reads paths, where <charconv> knows
// whole numbers only. Its other way, by streams, would make the page a third larger.
#pragma once

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

#ifndef __cpp_lib_to_chars
#define __cpp_lib_to_chars 201611L

namespace std {

inline from_chars_result from_chars(char const* first, char const* last, double& value) {
  double const read = strtod(string(first, last).c_str(), nullptr);
  bool const isOut = read > 1.7976931348623157e308;
  if (!isOut) value = read;
  return {last, isOut ? errc::result_out_of_range : errc()};
}

inline to_chars_result to_chars(char* first, char* last, double value) {
  int length = 0;
  for (int digits = 15; digits <= 17; ++digits) {
    length = snprintf(first, static_cast<size_t>(last - first), "%.*g", digits, value);
    if (strtod(first, nullptr) == value) break;
  }
  return {first + length, errc()};
}

}  // namespace std

#endif
