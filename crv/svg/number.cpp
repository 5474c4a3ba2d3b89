#include "crv/svg/internal/number.h"

#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

#ifdef __cpp_lib_to_chars
#include <array>
#else
#include <cmath>
#include <locale>
#include <sstream>

#include <locale.h>
#include <stdlib.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif
#endif

namespace crv::internal {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t digitsAt(std::string_view text, std::size_t place) {
  std::size_t end = place;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - place;
}

/// The parts of a number without sign, by their lengths.
struct Parts {
  std::size_t whole, point, fraction, exponent;
  std::size_t length() const { return whole + point + fraction + exponent; }
};

Parts partsOf(std::string_view text) {
  Parts parts{digitsAt(text, 0), 0, 0, 0};
  if (parts.whole < text.size() && text[parts.whole] == '.') {
    parts.fraction = digitsAt(text, parts.whole + 1);
    parts.point = parts.whole + parts.fraction > 0 ? 1 : 0;
  }
  std::size_t const e = parts.length();
  if (e == 0 || e >= text.size() || (text[e] != 'e' && text[e] != 'E')) return parts;
  bool const hasSign = e + 1 < text.size() && (text[e + 1] == '+' || text[e + 1] == '-');
  std::size_t const digits = digitsAt(text, e + 1 + hasSign);
  if (digits > 0) parts.exponent = 1 + hasSign + digits;
  return parts;
}

/// Whether a number out of range is too large rather than too small: whether its first non-zero
/// digit stands before the decimal point once the exponent has been applied.
bool isAboveRange(std::string_view text, Parts const& parts) {
  std::size_t const first = text.find_first_of("123456789");
  double const digitsBeforePoint =
      static_cast<double>(parts.whole) - static_cast<double>(first) + (first > parts.whole);
  if (parts.exponent == 0) return digitsBeforePoint > 0.0;
  std::string_view exponent = text.substr(parts.length() - parts.exponent + 1, parts.exponent - 1);
  bool const isNegative = exponent[0] == '-';
  if (isNegative || exponent[0] == '+') exponent.remove_prefix(1);
  double value = 0.0;
  for (char const digit : exponent) value = value * 10.0 + (digit - '0');
  return digitsBeforePoint + (isNegative ? -value : value) > 0.0;
}

#ifdef __cpp_lib_to_chars

/// The nearest double to a number without sign; nothing where it is out of range.
std::optional<double> nearestDouble(std::string_view text) {
  double value = 0.0;
  auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) return std::nullopt;
  return value;
}

std::string shortestText(double value) {
  std::array<char, 32> text;  // the longest double has 24 characters: -2.2250738585072014e-308
  auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
  return std::string(text.data(), result.ptr);
}

#else  // standard libraries that convert only whole numbers

/// Reads a number with strtod_l, because a stream may truncate long numbers and reject subnormal
/// ones.
std::optional<double> nearestDouble(std::string_view text) {
  static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr);
  double const value = strtod_l(std::string(text).c_str(), nullptr, classic);
  bool const isZero = text.find_first_of("123456789") >= text.find_first_of("eE");
  if (std::isinf(value) || (value == 0.0 && !isZero)) return std::nullopt;
  return value;
}

std::string shortestText(double value) {
  // Numbers below the normal range have fewer digits than the 15 that every other one can have.
  int const fewest = std::fabs(value) < std::numeric_limits<double>::min() ? 1 : 15;
  std::string text;
  for (int digits = fewest; digits <= std::numeric_limits<double>::max_digits10; ++digits) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out.precision(digits);
    out << value;
    text = out.str();
    if (readNumber(text).value == value) break;
  }
  return text;
}

#endif

}  // namespace

ReadNumber readNumber(std::string_view text) {
  std::size_t const sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  std::string_view const digits = text.substr(sign);
  Parts const parts = partsOf(digits);
  if (parts.length() == 0) return {0.0, 0};
  std::optional<double> const nearest = nearestDouble(digits.substr(0, parts.length()));
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double const value = nearest ? *nearest : isAboveRange(digits, parts) ? kInfinity : 0.0;
  return {sign == 1 && text[0] == '-' ? -value : value, sign + parts.length()};
}

void appendNumber(double value, std::string& out) { out += shortestText(value); }

}  // namespace crv::internal
