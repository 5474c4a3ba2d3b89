// The numbers that go into an operation of the page and come out of it.
//
// A curve is written as its closed flag, the number of its segments, and eight coordinates for each
// segment; a list begins with its length.
#pragma once

#include "crv/accurate/types.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace play {

/// Reads the numbers that the page has sent. Behind the last one there are zeros.
class Input {
 public:
  Input(double const* numbers, std::size_t count) : next_(numbers), end_(numbers + count) {}

  double number() { return next_ != end_ ? *next_++ : 0.0; }
  bool flag() { return number() != 0.0; }

  /// A number of things, each of which takes some numbers: no more than there are numbers for.
  std::size_t count(std::size_t numbersEach) {
    double const wanted = number();
    double const most = static_cast<double>(end_ - next_) / static_cast<double>(numbersEach);
    return wanted > 0.0 ? static_cast<std::size_t>(std::min(wanted, most)) : 0;
  }

  crv::Point point() {
    double const x = number();
    return {x, number()};
  }
  crv::Position position() {
    int const segment = static_cast<int>(std::clamp(number(), -1.0, 1e9));
    return {segment, number()};
  }
  crv::Curve curve() {
    bool const closed = flag();
    std::vector<crv::Segment> segments(count(8));
    for (crv::Segment& segment : segments) {
      for (int i = 0; i < 4; ++i) segment(i) = point();
    }
    crv::Curve curve(segments);
    curve.setStrictIsClosed(closed);
    return curve;
  }
  std::vector<crv::Point> points() {
    std::vector<crv::Point> list(count(2));
    for (crv::Point& each : list) each = point();
    return list;
  }
  std::vector<crv::Position> positions() {
    std::vector<crv::Position> list(count(2));
    for (crv::Position& each : list) each = position();
    return list;
  }
  std::vector<crv::Curve> curves() {
    std::vector<crv::Curve> list(count(2));
    for (crv::Curve& each : list) each = curve();
    return list;
  }

 private:
  double const* next_;
  double const* end_;
};

/// Collects the numbers of an answer.
class Output {
 public:
  void add(double x) { numbers_.push_back(x); }
  void add(int x) { add(static_cast<double>(x)); }
  void add(bool x) { add(x ? 1.0 : 0.0); }
  void add(std::size_t x) { add(static_cast<double>(x)); }
  void add(crv::Point const& p) { add(p.xval()), add(p.yval()); }
  void add(crv::Vector const& v) { add(v.xval()), add(v.yval()); }
  void add(crv::Position const& p) {
    add(static_cast<double>(p.getSegmentNumber())), add(p.getTValue());
  }
  void add(crv::Segment const& s) { add(s[0]), add(s[1]), add(s[2]), add(s[3]); }
  void add(crv::Curve const& curve) {
    add(curve.strictIsClosed() != 0);
    add(static_cast<std::size_t>(curve.length()));
    for (crv::Segment const& segment : curve) add(segment);
  }
  template <class T>
  void add(std::vector<T> const& list) {
    add(list.size());
    for (T const& each : list) add(each);
  }
  template <class First, class Second, class... Rest>
  void add(First const& first, Second const& second, Rest const&... rest) {
    add(first), add(second, rest...);
  }

  std::vector<double> const& numbers() const { return numbers_; }

 private:
  std::vector<double> numbers_;
};

}  // namespace play
