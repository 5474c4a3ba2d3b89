// The same bits in a browser as in a program: a hash over what the operations of the page answer to
// random questions, curves with cusps, points and straight segments among them. The plain fit is
// left out, whose powers come with the system. bits.txt has the recorded hashes.
#include <cmath>
#include <cstdint>
#include <cstring>

#include "website/play/operations.h"

namespace play {

namespace {

class Questions {
 public:
  explicit Questions(std::uint64_t seed) : state_(seed) {}

  /// SplitMix64: G. Steele, D. Lea and C. Flood, "Fast splittable pseudorandom number generators"
  /// (2014).
  std::uint64_t next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15u;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9u;
    z = (z ^ z >> 27) * 0x94d049bb133111ebu;
    return z ^ z >> 31;
  }
  unsigned below(unsigned n) { return static_cast<unsigned>(next() % n); }
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

  void add(double x) { numbers_.push_back(x); }
  void addPoint() { add(unit() * 1000.0), add(unit() * 1000.0); }
  void addPositions(unsigned count, unsigned segments) {
    add(count);
    for (; count != 0; --count) addPosition(segments);
  }
  void addPosition(unsigned segments) {
    add(below(segments + 1));
    add(below(4) == 0 ? 0.0 : unit());
  }

  /// A curve of this many segments, which join; some are straight, retracted or points.
  void addCurve(unsigned segments) {
    add(below(2)), add(segments);
    double x = unit() * 1000.0, y = unit() * 1000.0;
    for (; segments != 0; --segments) {
      add(x), add(y);
      unsigned const kind = below(8);
      double const endX = kind == 0 ? x : unit() * 1000.0, endY = kind == 0 ? y : unit() * 1000.0;
      for (double const share : {0.25, 0.75}) {
        double const reach = kind < 2 ? 0.0 : 400.0;
        add(x + share * (endX - x) + reach * (unit() - 0.5));
        add(y + share * (endY - y) + reach * (unit() - 0.5));
      }
      add(x = endX), add(y = endY);
    }
  }

  /// A wavering stroke.
  void addSamples(unsigned count) {
    add(count);
    double x = 500.0, y = 500.0, dx = 1.0, dy = 0.0;
    for (; count != 0; --count) {
      double const turn = unit() - 0.5, oldX = dx;
      dx += turn * dy, dy -= turn * oldX;
      double const speed = std::sqrt(dx * dx + dy * dy);
      dx /= speed, dy /= speed;
      add(x += 6.0 * dx), add(y += 6.0 * dy);
    }
  }

  std::vector<double> const& numbers() const { return numbers_; }

 private:
  std::uint64_t state_;
  std::vector<double> numbers_;
};

void ask(Questions& q, Operation operation) {
  unsigned const segments = 1 + q.below(6);
  if (operation == fit) {
    q.add(0.1 + 4.0 * q.unit()), q.add(q.below(2)), q.add(q.below(2));
    q.addSamples(2 + q.below(200));
  } else if (operation == offset) {
    q.add(60.0 * q.unit()), q.add(0.01), q.add(q.below(3)), q.add(4.0);
    q.addCurve(segments);
  } else if (operation == flatten) {
    q.add(0.01 + q.unit());
    q.addCurve(segments);
  } else if (operation == contacts) {
    q.add(0.0);
    q.addCurve(segments), q.addCurve(segments);
  } else if (operation == nearest) {
    q.addPoint();
    q.addCurve(segments);
  } else if (operation == walk) {
    q.add(q.below(2)), q.add(5.0 + 100.0 * q.unit());
    q.addCurve(segments);
  } else if (operation == copy) {
    q.add(q.below(2));
    q.addPosition(segments), q.addPosition(segments);
    q.addCurve(segments), q.addPositions(5, segments);
  } else if (operation == cut) {
    q.addPositions(3, segments);
    q.addCurve(segments), q.addPositions(5, segments);
  } else if (operation == reverse) {
    q.addCurve(segments), q.addPositions(5, segments);
  } else if (operation == weld) {
    q.add(q.below(4)), q.add(q.below(2));
    q.add(1), q.addCurve(segments), q.add(1), q.addCurve(segments);
  }
}

}  // namespace

void bits(Input& in, Output& out) {
  auto const chosen = static_cast<std::size_t>(in.number());
  std::uint64_t hash = 0xcbf29ce484222325u;  // FNV-1a over the bytes of the answers
  auto const questions = static_cast<std::uint64_t>(in.number());
  for (std::uint64_t seed = 0; seed < questions; ++seed) {
    Questions q(seed);
    ask(q, kOperations[chosen]);
    Input question(q.numbers().data(), q.numbers().size());
    Output answer;
    kOperations[chosen](question, answer);
    for (double const x : answer.numbers()) {
      std::uint64_t value;
      std::memcpy(&value, &x, sizeof value);
      for (int i = 0; i < 8; ++i, value >>= 8) hash = (hash ^ (value & 0xff)) * 0x100000001b3u;
    }
  }
  out.add(static_cast<double>(hash >> 32), static_cast<double>(hash & 0xffffffffu));
}

}  // namespace play
