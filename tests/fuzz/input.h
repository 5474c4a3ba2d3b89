// Draws arguments for the operations from a fuzzer's bytes: doubles of any bit pattern, near-equal
// ones, shapes that are coincident, straight, cusped or looping, at scales from 1e-300 to 1e300.
#pragma once

#include "crv/crv.h"
#include "tests/support/bits.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace fuzz {

/// Ends the run as a find; the stack shows the operation.
inline void require(bool holds, char const* what) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", what);
  std::abort();
}

/// That a code or count is one of the operation's.
inline void requireCode(int code, int least, int most) {
  require(least <= code && code <= most, "a code");
}

using support::sameBits;

/// One segment or several.
struct Shape : GxBezierCurve {
  Shape(GxBezierCurve const& curve) : GxBezierCurve(curve) {}
  Shape(GxBezier const& segment) { getSegments().add(segment); }
};

class Input {
 public:
  /// The first byte chooses the size of what follows.
  Input(std::uint8_t const* data, std::size_t size) : data_(data), size_(size) {
    double const scales[] = {1.0, 1.0, 1.0, 0.01, 1e-9, 1e-300, 1e6, 1e9, 1e30, 1e160, 1e300, -1.0};
    scale_ = scales[below(12)];
  }

  bool isEmpty() const { return size_ == 0; }

  std::uint8_t byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }

  /// A whole number from 0 to n - 1.
  unsigned below(unsigned n) { return (byte() + 256u * (n > 256 ? byte() : 0u)) % n; }

  bool flip() { return (byte() & 1) != 0; }

  /// Eight bytes as they come.
  double raw() {
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits = bits << 8 | byte();
    double x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
  }

  /// A number from -1 to 1.
  double unit() { return (byte() - 128 + byte() / 256.0) / 128.0; }

  /// A coordinate: mostly of one size, sometimes anything, or next to one used before.
  double coordinate() {
    switch (below(8)) {
      case 0: last_ = special(); break;
      case 1:
        for (unsigned steps = below(32); steps != 0; --steps) last_ = std::nextafter(last_, 1e308);
        break;
      case 2: break;
      case 3: last_ = scale_ * std::floor(unit() * 8.0); break;
      default: last_ = scale_ * unit() * 100.0;
    }
    return last_;
  }

  GxCoord<double> point() { return {coordinate(), coordinate()}; }

  /// A parameter: inside, at and beside the ends, outside, or anything.
  double parameter() {
    switch (below(8)) {
      case 0: return 0.0;
      case 1: return 1.0;
      case 2: return special();
      case 3: return unit() * 1e-9;
      case 4: return 1.0 + unit() * 1e-3;
      default: return unit() * 0.5 + 0.5;
    }
  }

  GxBezier segment() {
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

  /// A segment that has something to do with another one: a part of it, it reversed, it moved a
  /// hair.
  GxBezier relative(GxBezier const& s) {
    GxBezier result = s, rest;
    switch (below(5)) {
      case 0: result.split(rest, parameter()); break;
      case 1: result.reverse(); break;
      case 2: result(static_cast<int>(below(4))) = point(); break;
      case 3:
        for (int i = 0; i < 4; ++i) result(i) += GxVector<double>(scale_ * 1e-12, 0.0);
        break;
      default: result = segment();
    }
    return result;
  }

  /// A chain of up to seven segments, open or closed; joints may gape.
  GxBezierCurve curve() {
    GxBezierCurve c;
    for (unsigned n = below(8); n != 0; --n) {
      GxBezier s = segment();
      unsigned long const length = c.length();
      if (length != 0 && !chance(8)) s(0) = c(static_cast<int>(length - 1))[3];
      c.getSegments().add(s);
    }
    if (c.length() != 0 && flip()) c(static_cast<int>(c.length() - 1))(3) = c(0)[0];
    c.setStrictIsClosed(chance(8) ? static_cast<int>(byte()) - 100 : flip());
    return c;
  }

  /// A position on, at the ends of, beside and far off a curve.
  GxBezierCurvePosition position(GxBezierCurve const& c) {
    unsigned const n = static_cast<unsigned>(c.length());
    switch (below(8)) {
      case 0: return c.firstPos();
      case 1: return c.lastPos();
      case 2: return GxBezierCurvePosition(extremeInt(), parameter());
      case 3:
        return GxBezierCurvePositionConstructor().constructDirectPosition(
            static_cast<int>(below(8)), parameter());
      case 4: return GxBezierCurvePosition(static_cast<int>(below(n + 1)), 0.0);
      default: return GxBezierCurvePosition(static_cast<int>(below(n + 1)), unit() * 0.5 + 0.5);
    }
  }

  int extremeInt() {
    int const values[] = {0, 1, -1, 2, INT_MAX, INT_MIN};
    return values[below(6)];
  }

  /// A step, distance or tolerance in curve units: a share of the scale, or odd.
  double step() {
    switch (below(8)) {
      case 0: return scale_ * 1e6;
      case 1: return 0.0;
      case 2: return -scale_;
      case 3: return NAN;
      case 4: return HUGE_VAL;
      default: return std::fabs(scale_ * (0.5 + 100.0 * unit()));
    }
  }

  /// The greatest extent of a segment that is finite; a quarter of it, lest it overflow.
  static double extent(Shape const& shape) {
    double most = 0.0, minX, minY, maxX, maxY;
    for (int i = 0; i < static_cast<int>(shape.length()); ++i) {
      shape[i].getConvexHull(minX, minY, maxX, maxY);
      double const size = (0.25 * maxX - 0.25 * minX) + (0.25 * maxY - 0.25 * minY);
      if (std::isfinite(size)) most = std::fmax(most, size);
    }
    return most;
  }

  /// The largest finite coordinate.
  static double magnitude(Shape const& shape) {
    double most = 0.0;
    for (int i = 0; i < 4 * static_cast<int>(shape.length()); ++i) {
      GxCoord<double> const& p = shape[i / 4][i % 4];
      for (double const x : {p.xval(), p.yval()}) {
        if (std::isfinite(x)) most = std::fmax(most, std::fabs(x));
      }
    }
    return most;
  }

  /// A chord for dividing a shape: none that asks for more than some thousands of points, which odd
  /// ones do of large shapes, and those below -0.1 of any.
  double chord(Shape const& shape) {
    double const size = extent(shape);
    double const odd = max(step(), -0.05);
    return size < 25.0 || odd >= size ? odd : size * (0.01 + std::fabs(unit()));
  }

  /// A tolerance for halving a shape: none below a ten thousandth of it, or below what its
  /// coordinates resolve, but NaN, negative and huge ones.
  double halvingTolerance(Shape const& shape) {
    double const size = extent(shape);
    switch (below(6)) {
      case 0: return -size;
      case 1: return NAN;
      case 2: return size * 1e3 + magnitude(shape) * 1e-12;
      default: return size * (1e-4 + std::fabs(unit())) + magnitude(shape) * 1e-12;
    }
  }

  /// True when chords of a segment can be measured: beyond this size squared distances overflow,
  /// and dividing takes its five million steps whatever the chord.
  static bool isMeasurable(Shape const& shape) { return magnitude(shape) < 1e150; }

  /// A parameter to start dividing at: not millions of segments away.
  double startParameter() {
    double const t = parameter();
    return std::fabs(t) < 8.0 || !std::isfinite(t) ? t : 0.25;
  }

  double scale() const { return scale_; }

  bool chance(unsigned one) { return below(one) == 0; }

 private:
  double special() {
    double const values[] = {0.0,      -0.0,      1e-9, 5e-324, DBL_MAX, -DBL_MAX,
                             HUGE_VAL, -HUGE_VAL, NAN,  1e-300, 0.1,     0.5};
    unsigned const i = below(14);
    return i < 12 ? values[i] : raw();
  }

  std::uint8_t const* data_;
  std::size_t size_;
  double scale_ = 1.0;
  double last_ = 0.0;
};

/// A list that held something before: what was there must stay in place.
template <class T>
class Appended : public GxList<T> {
 public:
  Appended(Input& in, T const& filler) {
    for (unsigned n = in.below(3); n != 0; --n) this->add(filler);
    before_ = *this;
  }
  ~Appended() override {
    require(this->length() >= before_.length(), "a list lost entries");
    for (unsigned i = 0; i < before_.length(); ++i) {
      require(sameBits((*this)[i], before_[i]), "an entry from before was changed");
    }
  }

 private:
  GxList<T> before_;
};

}  // namespace fuzz
