// Numbers, points, positions and segments as text, exact and short, and back again.
#pragma once

#include "crv/crv.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace support {

using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;
using Vector = GxVector<double>;

/// A few decimal digits where they are exact, else hexadecimal.
inline std::string text(double x) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.7g", x);
  if (x == x && std::strtod(digits, nullptr) != x) std::snprintf(digits, sizeof digits, "%a", x);
  return digits;
}
inline std::string hexadecimal(std::uint64_t bits) {
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(bits));
  return digits;
}
inline std::string text(Point const& p) {
  return "(" + text(p.xval()) + "," + text(p.yval()) + ")";
}
inline std::string text(Vector const& v) { return text(Point() + v); }
inline std::string text(Position const& p) {
  return "(" + std::to_string(p.getSegmentNumber()) + "," + text(p.getTValue()) + ")";
}
inline std::string text(GxBezier const& s) {
  return text(s[0]) + text(s[1]) + text(s[2]) + text(s[3]);
}

/// The words of a text; brackets and braces are words, parentheses and commas are blanks.
inline std::vector<std::string> wordsOf(std::string const& line) {
  std::string spaced;
  for (char const c : line) {
    if (c == '(' || c == ')' || c == ',') {
      spaced += ' ';
    } else if (c == '[' || c == ']' || c == '{' || c == '}') {
      spaced += {' ', c, ' '};
    } else {
      spaced += c;
    }
  }
  std::istringstream in(spaced);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

}  // namespace support
