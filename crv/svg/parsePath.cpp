#include "crv/svg.h"
#include "crv/svg/internal/arc.h"
#include "crv/svg/internal/number.h"
#include "crv/svg/internal/straight.h"

#include <array>
#include <cmath>

namespace crv {

namespace {

using internal::Cubic;
using Plain = internal::Point;

/// The subpaths drawn so far, and the pen.
class Pen {
 public:
  Plain at{0.0, 0.0};

  /// The kind of the last handle, which S and T reflect only if the command before was of their own
  /// kind.
  enum class Handle { none, cubic, quadratic };

  /// The first handle of S or T: the reflected one, or the pen's place.
  Plain reflected(Handle kind) const { return kind == kind_ ? at + (at - handle_) : at; }

  void moveTo(Plain const& p) {
    finish();
    at = start_ = p;
    kind_ = Handle::none;
  }
  void lineTo(Plain const& p) { draw(internal::straightThrough(at, p), Handle::none, p); }
  void cubicTo(Plain const& first, Plain const& second, Plain const& p) {
    draw({{at, first, second, p}}, Handle::cubic, second);
  }
  void quadraticTo(Plain const& handle, Plain const& p) {
    auto const towards = [&](Plain const& end) {
      Plain const whole = handle - end;
      // Guard: points near both ends of the range are divided before they are subtracted.
      return isFinite(whole) ? end + whole * (2.0 / 3.0) : end * (1.0 / 3.0) + handle * (2.0 / 3.0);
    };
    draw({{at, towards(at), towards(p), p}}, Handle::quadratic, handle);
  }
  void arcTo(internal::Arc const& arc) {
    std::vector<Cubic> cubics;
    internal::appendArc(arc, cubics);
    for (Cubic const& c : cubics) draw(c, Handle::none, c.p[3]);
    kind_ = Handle::none;
  }
  void close() {
    if (!areEqual(at, start_) || current_.length() == 0) lineTo(start_);
    current_.setStrictIsClosed(1);
    moveTo(start_);
  }
  /// Ends the subpath. The next one starts where the pen stands.
  void finish() {
    if (current_.length() != 0) curves_.push_back(current_);
    current_ = Curve();
  }
  std::vector<Curve> take() {
    finish();
    return std::move(curves_);
  }

 private:
  void draw(Cubic const& c, Handle kind, Plain const& handle) {
    current_.getSegments().add(internal::segment(c));
    at = c.p[3];
    kind_ = kind;
    handle_ = handle;
  }

  std::vector<Curve> curves_;
  Curve current_;
  Plain start_{0.0, 0.0};
  Plain handle_{0.0, 0.0};
  Handle kind_ = Handle::none;
};

/// Reads the grammar and moves the pen.
class PathParser {
 public:
  explicit PathParser(std::string_view text) : text_(text) {}

  ParsedPath parse() {
    skipSpace();
    while (!fault_ && place_ < text_.size()) command();
    return {pen_.take(), fault_};
  }

 private:
  /// Numbers that a command takes each time, at most.
  static constexpr std::size_t kMostNumbers = 7;
  using Numbers = std::array<double, kMostNumbers>;

  static std::size_t numbersOf(char command) {
    switch (command) {
      case 'M':
      case 'L':
      case 'T': return 2;
      case 'H':
      case 'V': return 1;
      case 'C': return 6;
      case 'S':
      case 'Q': return 4;
      case 'A': return 7;
      default: return 0;
    }
  }

  /// One letter and all repetitions of its numbers.
  void command() {
    char const letter = text_[place_];
    bool const isRelative = letter >= 'a' && letter <= 'z';
    char name = isRelative ? static_cast<char>(letter - 'a' + 'A') : letter;
    if (numbersOf(name) == 0 && name != 'Z') return fail(PathFaultReason::unknownCommand);
    if (!hasMoved_ && name != 'M') return fail(PathFaultReason::noMoveTo);
    hasMoved_ = true;
    ++place_;
    skipSpace();
    if (name == 'Z') return pen_.close();
    do {
      repetition(name, isRelative);
      if (name == 'M') name = 'L';
    } while (!fault_ && anotherNumberFollows());
  }

  /// Reads the numbers of a command once, and draws with them.
  void repetition(char name, bool isRelative) {
    std::size_t const first = place_;
    Numbers numbers{};
    for (std::size_t i = 0; i < numbersOf(name) && !fault_; ++i) {
      if (i > 0) skipComma();
      bool const isFlag = name == 'A' && (i == 3 || i == 4);
      numbers[i] = isFlag ? flag() : number();
    }
    if (fault_ || draw(name, isRelative, numbers)) return;
    place_ = first;
    fail(PathFaultReason::numberOutOfRange);
  }

  /// Draws one repetition; false, with nothing drawn, when a point leaves the range of doubles.
  bool draw(char name, bool isRelative, Numbers const& n) {
    // Exact form: -0.0 is the zero that leaves the sign of another zero when added to it.
    Plain const origin = isRelative ? pen_.at : Plain{-0.0, -0.0};
    auto const point = [&](std::size_t i) { return Plain{origin.x + n[i], origin.y + n[i + 1]}; };
    Plain to = name == 'H' || name == 'V' ? pen_.at : point(numbersOf(name) - 2);
    if (name == 'H') to.x = origin.x + n[0];
    if (name == 'V') to.y = origin.y + n[0];
    using Handle = Pen::Handle;
    Plain first = pen_.at, second = pen_.at;
    if (name == 'C' || name == 'Q') first = point(0);
    if (name == 'S') first = pen_.reflected(Handle::cubic);
    if (name == 'T') first = pen_.reflected(Handle::quadratic);
    if (name == 'C') second = point(2);
    if (name == 'S') second = point(0);
    if (!isFinite(to) || !isFinite(first) || !isFinite(second)) return false;
    switch (name) {
      case 'M': pen_.moveTo(to); break;
      case 'C':
      case 'S': pen_.cubicTo(first, second, to); break;
      case 'Q':
      case 'T': pen_.quadraticTo(first, to); break;
      case 'A': pen_.arcTo({pen_.at, n[0], n[1], n[2], n[3] != 0.0, n[4] != 0.0, to}); break;
      default: pen_.lineTo(to);
    }
    return true;
  }

  double number() {
    internal::ReadNumber const read = internal::readNumber(text_.substr(place_));
    if (read.length == 0)
      fail(PathFaultReason::expectedNumber);
    else if (!std::isfinite(read.value))
      fail(PathFaultReason::numberOutOfRange);
    else
      place_ += read.length;
    return read.value;
  }

  double flag() {
    char const c = place_ < text_.size() ? text_[place_] : ' ';
    if (c == '0' || c == '1')
      ++place_;
    else
      fail(PathFaultReason::expectedFlag);
    return c == '1' ? 1.0 : 0.0;
  }

  /// Whether the command's numbers are repeated. A comma before anything else is left for the
  /// fault.
  bool anotherNumberFollows() {
    std::size_t const end = place_;
    skipComma();
    if (internal::readNumber(text_.substr(place_)).length != 0) return true;
    bool const hasComma = text_.substr(end, place_ - end).find(',') != std::string_view::npos;
    if (hasComma) fail(PathFaultReason::expectedNumber);
    return false;
  }

  void skipSpace() {
    auto const isSpace = [](char c) {
      return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
    };
    while (place_ < text_.size() && isSpace(text_[place_])) ++place_;
  }
  void skipComma() {
    skipSpace();
    if (place_ < text_.size() && text_[place_] == ',') {
      ++place_;
      skipSpace();
    }
  }
  void fail(PathFaultReason reason) { fault_ = PathFault{place_, reason}; }

  std::string_view text_;
  std::size_t place_ = 0;
  bool hasMoved_ = false;
  Pen pen_;
  std::optional<PathFault> fault_;
};

}  // namespace

ParsedPath parsePath(std::string_view text) { return PathParser(text).parse(); }

}  // namespace crv
