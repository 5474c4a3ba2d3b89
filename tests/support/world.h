// The arguments and results of an operation. A world supplies arguments from a fuzzer's bytes, from
// a seeded generator, from the shapes of a hard case, or from a row of data. It keeps the
// arguments, checks that operations change only what they may, and collects the results.
#pragma once

#include "tests/support/bits.h"
#include "tests/support/cases.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"
#include "tests/support/text.h"

#include <cfloat>
#include <climits>
#include <cstdint>
#include <cstring>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>

namespace support {

/// A promise that an operation broke.
struct Broken : std::logic_error {
  using std::logic_error::logic_error;
};

/// Above 0 while the world itself allocates, which never fails.
inline thread_local int worldsAtWork = 0;
struct AtWork {
  AtWork() { ++worldsAtWork; }
  ~AtWork() { --worldsAtWork; }
};

class World {
 public:
  /// The first byte chooses the size of what follows; when the bytes end, zeros follow.
  World(std::uint8_t const* data, std::size_t size) : data_(data), size_(size), heavy_(true) {
    chooseScale();
  }
  explicit World(std::uint64_t seed) : engine_(seed) { chooseScale(); }

  /// Takes segments, curves and points from a hard case; all other arguments are ordinary.
  World(std::uint64_t seed, HardCase const& hard);

  /// Takes arguments from the words of a row, in the order in which the operation draws them.
  explicit World(std::string const& row) : words_(wordsOf(row)) {}

  // ---- Arguments: numbers --------------------------------------------------------------------

  /// A whole number from 0 to n - 1.
  unsigned below(unsigned n) {
    if (words_) return static_cast<unsigned>(number());
    unsigned const low = byte();
    return (low + (n > 256 ? 256u * byte() : 0u)) % n;
  }
  bool chance(unsigned one) { return !words_ && below(one) == 0; }
  int flag() { return words_ ? static_cast<int>(number()) : byte() & 1; }
  int extremeInt() {
    int const values[] = {0, 1, -1, 2, INT_MAX, INT_MIN};
    int const n = words_ ? static_cast<int>(number()) : values[below(tame_ ? 2 : 6)];
    noteFar(n);
    return n;
  }

  /// Any double: eight bytes as they come, a coordinate, or the next word.
  double number() {
    if (words_) return std::strtod(word().c_str(), nullptr);
    return !tame_ && below(4) == 0 ? raw() : coordinate();
  }

  /// A coordinate: mostly of one size, sometimes anything, or next to one used before.
  double coordinate();

  /// A parameter: inside, at and beside the ends, outside, or anything.
  double parameter();

  /// A step, distance or tolerance in curve units: a share of the scale, or odd.
  double step();

  /// A chord for dividing a shape into at most some thousands of points.
  double chord(GxBezierCurve const& shape);

  /// A tolerance for halving a shape: 0 only for lines, else none below a ten thousandth of it; but
  /// NaN, negative and huge ones.
  double halvingTolerance(GxBezierCurve const& shape);

  // ---- Arguments: shapes. What is handed out by reference must be left as it is. ----------------

  Point point();
  Vector vector() { return point() - Point(); }
  OpenBezier& segment() { return keep(OpenBezier(drawSegment())); }

  /// A segment related to another one: a part of it, its reverse, or the segment moved slightly.
  OpenBezier& relative(GxBezier const& s);
  OpenCurve& curve() { return keep(OpenCurve(drawCurve())); }

  /// A curve that the operation may change, except when memory runs out.
  OpenCurve& changing();

  /// A position on, at the ends of, beside and far off a curve.
  Position position(GxBezierCurve const& c) {
    Position const p = drawPosition(c);
    noteFar(static_cast<double>(p.getSegmentNumber()));
    return p;
  }

  /// A point on a shape, near it, or anywhere.
  Point pointNear(GxBezierCurve const& c);

  /// A list of points to read: neighbours may coincide.
  GxList<Point> points();

  /// A list for results that holds something before, which must stay in place.
  template <class List>
  List& filled();

  // ---- Results --------------------------------------------------------------------------------

  template <class... Results>
  void see(Results const&... results) {
    AtWork const work;
    (put(results), ...);
  }
  void require(bool holds, char const* promise) const {
    if (!holds) throw Broken(promise);
  }
  /// Requires that a code or count is in the range of the operation.
  void requireCode(long code, long least, long most) {
    require(least <= code && code <= most, "a code or count is one of those that are promised");
    see(static_cast<double>(code));
  }

  /// Whether all arguments are ordinary, so that results must be finite.
  bool isTame() const { return tame_; }
  /// Whether there was a position or a whole number beyond any that 32 bits hold after a few sums.
  bool isFar() const { return far_; }
  /// Records that results depend on the last bits of sines.
  void restOnSines() { restsOnSines_ = true; }
  bool restsOnSines() const { return restsOnSines_; }
  /// Whether calls may take a second.
  bool isPatient() { return words_ || (heavy_ && chance(40)); }
  /// Whether the arguments are those of a row, so that all results are looked at.
  bool hasKnownAnswers() const { return words_.has_value(); }

  /// Checks the arguments after an operation, or after one that ran out of memory.
  void finish(bool threw = false) const {
    for (auto const& check : checks_) check(threw);
    require(!words_ || next_ == words_->size() || threw, "every argument of the row is used");
  }
  std::uint64_t hash() const { return hash_; }
  std::string const& results() const { return results_; }

  /// The greatest extent of a segment that is finite; a quarter of it, lest it overflow.
  static double extent(GxBezierCurve const& shape);
  /// The largest finite coordinate.
  static double magnitude(GxBezierCurve const& shape);

 private:
  std::uint8_t byte() {
    if (size_ == 0) return engine_ ? static_cast<std::uint8_t>((*engine_)() >> 56) : 0;
    --size_;
    return *data_++;
  }
  double raw();
  double special();
  /// From -1 to 1.
  double unit() {
    int const whole = byte() - 128;
    return (whole + byte() / 256.0) / 128.0;
  }
  void chooseScale() {
    double const scales[] = {1.0, 1.0, 1.0, 0.01, 1e-9, 1e-300, 1e6, 1e9, 1e30, 1e160, 1e300, -1.0};
    scale_ = scales[below(12)];
  }

  std::string const& word() {
    require(next_ < words_->size(), "the row has an argument for everything");
    return (*words_)[next_++];
  }
  bool takes(char const* expected) {
    bool const isNext = words_ && next_ < words_->size() && (*words_)[next_] == expected;
    next_ += isNext ? 1 : 0;
    return isNext;
  }
  Numbers numbersInBrackets();
  GxBezier drawSegment();
  GxBezier segmentInWords();
  GxBezierCurve drawCurve();
  GxBezierCurve curveInWords();
  Position rawPosition();
  Position drawPosition(GxBezierCurve const& c);
  void noteFar(double segment) { far_ = far_ || std::fabs(segment) >= 0x1p30; }

  double element(double) { return words_ ? number() : 0.25; }
  Point element(Point const&) { return words_ ? point() : Point(1, 2); }
  GxBezier element(GxBezier const&) { return words_ ? drawSegment() : GxBezier(); }
  Position element(Position const&) { return words_ ? rawPosition() : Position(1, 0.5); }

  /// Stores a value with the check that compares it afterwards with its value before.
  template <class T, class Check>
  T& keep(T const& value, Check const& check) {
    AtWork const work;
    auto const kept = std::make_shared<std::pair<T, T const>>(value, value);
    checks_.push_back([kept, check](bool threw) { check(kept->first, kept->second, threw); });
    return kept->first;
  }
  template <class T>
  T& keep(T const& value) {
    return keep(value, [this](T const& now, T const& before, bool) {
      require(sameBits(now, before), "arguments are left alone");
    });
  }

  void add(double x);
  void put(Point const& p) { putPair(p.xval(), p.yval()); }
  void put(Vector const& v) { putPair(v.xval(), v.yval()); }
  void put(Position const& p) {
    double const segment = static_cast<double>(p.getSegmentNumber());
    noteFar(segment);
    putPair(segment, p.getTValue());
  }
  void put(GxBezier const& s) { put(s[0]), put(s[1]), put(s[2]), put(s[3]); }
  void put(GxBezierCurve const& c) {
    put(c.getSegments());
    put(c.strictIsClosed());
  }
  void put(OpenCurve const& c) { put(static_cast<GxBezierCurve const&>(c)); }
  template <class T>
  void put(GxList<T> const& list) {
    put(valuesOf(list));
  }
  template <class Range>
  auto put(Range const& range) -> decltype(std::begin(range), void()) {
    auto const start = static_cast<std::ptrdiff_t>(results_.size());
    for (auto const& each : range) put(each);
    if (!words_) return;
    auto const count = std::distance(std::begin(range), std::end(range));
    bool const isLong = count > 40;  // then how many, and the hash of all results so far
    std::string const values(results_.begin() + start, results_.end());
    results_.resize(static_cast<std::size_t>(start));
    results_ +=
        " {" + (isLong ? ' ' + std::to_string(count) + " #" + hexadecimal(hash_) : values) + " }";
  }
  void putPair(double x, double y) {
    add(x), add(y);
    if (words_) results_ += " (" + text(x) + ',' + text(y) + ')';
  }
  void put(double x) {
    add(x);
    if (words_) results_ += ' ' + text(x);
  }

  std::uint8_t const* data_ = nullptr;
  std::size_t size_ = 0;
  std::optional<std::mt19937_64> engine_;
  std::optional<std::vector<std::string>> words_;
  std::size_t next_ = 0;
  std::vector<GxBezier> shapes_;
  std::vector<Point> points_;
  bool tame_ = false, heavy_ = false, far_ = false, restsOnSines_ = false;
  double scale_ = 1.0, last_ = 0.0;
  std::vector<std::function<void(bool)>> checks_;
  std::uint64_t hash_ = 0xcbf29ce484222325u;
  std::string results_;
};

/// One or several related operations: a function that draws arguments from a world, calls them, and
/// passes on the results.
struct Operation {
  char const* name;
  void (*run)(World&);
  int traits = 0;
};
using Operations = std::vector<Operation>;

// Results depend on sines and powers, whose last bits depend on the system.
constexpr int kSystemsBits = 1;
// A call influences the next one.
constexpr int kHasState = 2;
// Measures lengths or distances by many points.
constexpr int kSlow = 4;
// A call takes a millisecond.
constexpr int kCostly = 8;
// Counts segments in a long, at whose ends, which are the platform's, the numbers stay.
constexpr int kCountsInLong = 16;

// ---- Lists ------------------------------------------------------------------------------------

/// Whether a list can be walked both ways.
template <class T>
bool isRing(GxList<T> const& list) {
  unsigned there = 1, back = 1;
  for (list.first(); list.next() != 0 && there <= list.length();) ++there;
  for (list.first(); list.prev() != 0 && back <= list.length();) ++back;
  return list.length() == 0 || (there == list.length() && back == there);
}
template <class Range>
bool isRing(Range const&) {
  return true;
}
template <class Range>
Range const& valuesOf(Range const& range) {
  return range;
}
template <class T>
void append(GxList<T>& list, T const& value) {
  list.add(value);
}
template <class Range, class T>
void append(Range& range, T const& value) {
  range.push_back(value);
}
template <class T>
T elementOf(GxList<T> const&);
template <class Range>
typename Range::value_type elementOf(Range const&);

template <class List>
List& World::filled() {
  AtWork const work;
  using Element = decltype(elementOf(std::declval<List>()));
  List list;
  if (words_) {
    for (bool more = takes("{"); more && !takes("}");) append(list, element(Element()));
  } else {
    for (unsigned n = below(3); n != 0; --n) append(list, element(Element()));
  }
  return keep(list, [this](List const& now, List const& before, bool) {
    auto const& values = valuesOf(now);
    auto value = values.begin();
    require(isRing(now), "a list is a ring");
    for (Element const& kept : valuesOf(before)) {
      require(value != values.end() && sameBits(*value++, kept), "a list keeps what it held");
    }
  });
}

// ---- Arguments --------------------------------------------------------------------------------

inline World::World(std::uint64_t seed, HardCase const& hard)
    : engine_(seed), shapes_(segmentsOf(hard.fields[0])), tame_(true) {
  Numbers const& n = hard.fields[1];
  for (GxBezier const& s : segmentsOf(n)) shapes_.push_back(s);
  if (n.size() == 4) shapes_.push_back(retractedLine(n[0], n[1], n[2], n[3]));
  points_ = pointsOf(hard.fields[shapes_.empty() ? 0 : 2]);
  scale_ = max(shapes_.empty() ? 1.0 : extent(curveOf(shapes_)) * 0.01, 1e-3);
}

inline double World::raw() {
  std::uint64_t bits = 0;
  for (int i = 0; i < 8; ++i) bits = bits << 8 | byte();
  double x;
  std::memcpy(&x, &bits, sizeof x);
  return x;
}

inline double World::special() {
  double const values[] = {0.0,  -0.0,  1e-9, 5e-324, DBL_MAX, -DBL_MAX,
                           kInf, -kInf, kNaN, 1e-300, 0.1,     0.5};
  unsigned const i = below(14);
  return i < 12 ? values[i] : raw();
}

inline double World::coordinate() {
  if (words_) return number();
  unsigned const kind = tame_ ? 4 : below(8);
  if (kind == 0) last_ = special();
  if (kind == 1) {
    for (unsigned steps = below(32); steps != 0; --steps) last_ = std::nextafter(last_, 1e308);
  }
  if (kind == 3) last_ = scale_ * std::floor(unit() * 8.0);
  if (kind > 3) last_ = scale_ * unit() * 100.0;
  return last_;
}

inline double World::parameter() {
  if (words_) return number();
  switch (below(8)) {
    case 0: return 0.0;
    case 1: return 1.0;
    case 2: return tame_ ? 0.5 : special();
    case 3: return tame_ ? 1e-12 : unit() * 1e-9;
    case 4: return tame_ ? 1.0 - 1e-12 : 1.0 + unit() * 1e-3;
    default: return unit() * 0.5 + 0.5;
  }
}

inline double World::step() {
  if (words_) return number();
  switch (tame_ ? 5 : below(8)) {
    case 0: return scale_ * 1e6;
    case 1: return 0.0;
    case 2: return -scale_;
    case 3: return kNaN;
    case 4: return kInf;
    default: return std::fabs(scale_ * (0.5 + 100.0 * unit()));
  }
}

inline double World::extent(GxBezierCurve const& shape) {
  double most = 0.0, minX, minY, maxX, maxY;
  for (int i = 0; i < static_cast<int>(shape.length()); ++i) {
    shape[i].getConvexHull(minX, minY, maxX, maxY);
    double const size = (0.25 * maxX - 0.25 * minX) + (0.25 * maxY - 0.25 * minY);
    if (std::isfinite(size)) most = std::fmax(most, size);
  }
  return most;
}

inline double World::magnitude(GxBezierCurve const& shape) {
  double most = 0.0;
  for (int i = 0; i < 4 * static_cast<int>(shape.length()); ++i) {
    Point const& p = shape[i / 4][i % 4];
    for (double const x : {p.xval(), p.yval()}) {
      if (std::isfinite(x)) most = std::fmax(most, std::fabs(x));
    }
  }
  return most;
}

inline double World::chord(GxBezierCurve const& shape) {
  if (words_) return number();
  double const size = extent(shape), odd = max(step(), -0.05);
  return size < 25.0 || odd >= size ? odd : size * (0.01 + std::fabs(unit()));
}

inline double World::halvingTolerance(GxBezierCurve const& shape) {
  if (words_) return number();
  double const size = extent(shape), resolution = magnitude(shape) * 1e-12;
  switch (below(6)) {
    case 0: return -size;
    case 1: return kNaN;
    case 2: return size * 1e3 + resolution;
    case 3:
      for (int i = 0; i < static_cast<int>(shape.length()); ++i) {
        if (!shape[i].isALine(0.0)) return resolution + size * 1e-3;
      }
      return 0.0;
    default: return size * (1e-4 + std::fabs(unit())) + resolution;
  }
}

inline Point World::point() {
  if (!points_.empty() && flag()) return points_[below(static_cast<unsigned>(points_.size()))];
  double const x = coordinate();
  return {x, coordinate()};
}

inline Numbers World::numbersInBrackets() {
  Numbers numbers;
  require(takes("["), "a name in a row is followed by numbers in brackets");
  while (!takes("]")) numbers.push_back(number());
  return numbers;
}

inline GxBezier World::segmentInWords() {
  if (takes("line") || takes("flat")) {
    bool const isFlat = (*words_)[next_ - 1] == "flat";
    Numbers const n = numbersInBrackets();
    return (isFlat ? retractedLine : evenLine)(n[0], n[1], n[2], n[3]);
  }
  if (takes("spot")) {
    Numbers const n = numbersInBrackets();
    return pointLike(n[0], n[1]);
  }
  GxBezier s;
  for (int i = 0; i < 4; ++i) s(i) = point();
  return s;
}

inline GxBezier World::drawSegment() {
  AtWork const work;
  if (words_) return segmentInWords();
  if (!shapes_.empty()) return shapes_[below(static_cast<unsigned>(shapes_.size()))];
  GxBezier s;
  for (int i = 0; i < 4; ++i) s(i) = point();
  switch (below(8)) {
    case 0: s(1) = s[0]; break;
    case 2: s(1) = s[0]; [[fallthrough]];
    case 1: s(2) = s[3]; break;
    case 3: s(3) = s[0]; break;
    case 4:
      s(1) = s[0] + (s[3] - s[0]) * (1.0 / 3);
      s(2) = s[0] + (s[3] - s[0]) * unit();
      break;
    case 5: s(1) = s(2) = s(3) = s[0]; break;
    default: break;
  }
  return s;
}

inline OpenBezier& World::relative(GxBezier const& s) {
  GxBezier result = s, rest;
  switch (words_ || !shapes_.empty() ? 4 : below(5)) {
    case 0: result.split(rest, parameter()); break;
    case 1: result.reverse(); break;
    case 2: result(static_cast<int>(below(4))) = point(); break;
    case 3:
      for (int i = 0; i < 4; ++i) result(i) += Vector(scale_ * 1e-12, 0.0);
      break;
    default: result = drawSegment();
  }
  return keep(OpenBezier(result));
}

inline GxBezierCurve World::curveInWords() {
  std::string const kind = word();
  if (kind == "open" || kind == "closed") {
    GxBezierCurve c;
    require(takes("["), "segments stand in brackets");
    while (!takes("]")) c.getSegments().add(segmentInWords());
    c.setStrictIsClosed(kind == "closed");
    return c;
  }
  if (kind == "outline" || kind == "opened") {
    require(takes("["), "a name stands in brackets");
    GxBezierCurve const c = outline(word(), kind == "outline");
    require(takes("]"), "a name stands in brackets");
    return c;
  }
  Numbers const n = numbersInBrackets();
  bool const isLines = kind == "lines" || kind == "ring";
  GxBezierCurve c = isLines ? polygon(n) : circle(n[0]);
  require(isLines || kind == "circle" || kind == "waves", "a kind of curve");
  c.setStrictIsClosed(kind == "ring");
  if (kind == "waves") c = waves(static_cast<int>(n[0]), n[1], n[2]);
  return c;
}

inline GxBezierCurve World::drawCurve() {
  AtWork const work;
  if (words_) return curveInWords();
  GxBezierCurve c;
  if (!shapes_.empty()) c = curveOf(shapes_);
  for (unsigned n = shapes_.empty() ? below(8) : 0; n != 0; --n) {
    GxBezier s = drawSegment();
    unsigned long const length = c.length();
    if (length != 0 && !chance(8)) s(0) = c(static_cast<int>(length - 1))[3];
    c.getSegments().add(s);
  }
  if (shapes_.empty() && c.length() != 0 && flag()) {
    c(static_cast<int>(c.length() - 1))(3) = c(0)[0];
  }
  c.setStrictIsClosed(!tame_ && chance(8) ? static_cast<int>(byte()) - 100 : flag());
  return c;
}

inline OpenCurve& World::changing() {
  return keep(OpenCurve(drawCurve()), [this](OpenCurve& now, OpenCurve const& before, bool threw) {
    require(!threw || sameBits(now, before), "a curve is as before when memory runs out");
    require(isRing(now.getSegments()), "the segments are a ring");
  });
}

inline Position World::rawPosition() {
  int const segment = static_cast<int>(number());
  return GxBezierCurvePositionConstructor().constructDirectPosition(segment, number());
}

inline Position World::drawPosition(GxBezierCurve const& c) {
  if (words_) return rawPosition();
  unsigned const n = static_cast<unsigned>(c.length());
  unsigned const kind = below(tame_ ? 6 : 8);
  if (kind == 0) return c.firstPos();
  if (kind == 1) return c.lastPos();
  if (kind == 7) {
    int const segment = extremeInt();
    return Position(segment, parameter());
  }
  int const segment = static_cast<int>(below(n == 0 || !tame_ ? n + 1 : n));
  if (kind == 2) return Position(segment, 0.0);
  double const t = kind == 6 ? parameter() : unit() * 0.5 + 0.5;
  return kind == 6 ? GxBezierCurvePositionConstructor().constructDirectPosition(segment, t)
                   : Position(segment, t);
}

inline Point World::pointNear(GxBezierCurve const& c) {
  if (words_ || c.length() == 0) return point();
  Point const p = c[static_cast<int>(below(static_cast<unsigned>(c.length())))].bValue(parameter());
  if (flag()) return p;
  double const dx = scale_ * unit();
  return flag() ? p + Vector(dx, scale_ * unit()) : point();
}

inline GxList<Point> World::points() {
  AtWork const work;
  GxList<Point> list;
  if (words_) {
    for (bool more = takes("{"); more && !takes("}");) list.add(point());
    return list;
  }
  for (Point const& p : shapes_.empty() ? points_ : std::vector<Point>()) list.add(p);
  bool const repeats = flag();
  for (unsigned n = list.length() == 0 ? below(100) : 0; n != 0; --n) {
    list.add(repeats && list.length() != 0 && flag() ? Point(list[list.length() - 1]) : point());
  }
  return list;
}

// ---- Results ----------------------------------------------------------------------------------

/// FNV-1a over the bits of results, every NaN counting as the same one.
inline void World::add(double x) {
  require(!tame_ || std::isfinite(x), "finite input gives finite results");
  std::uint64_t bits = 0x7ff8000000000000u;
  if (x == x) std::memcpy(&bits, &x, sizeof bits);
  for (int i = 0; i < 8; ++i, bits >>= 8) hash_ = (hash_ ^ (bits & 0xff)) * 0x100000001b3u;
}

}  // namespace support
