#include "crv/accurate/flatten.h"

#include "crv/accurate/internal/chain.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace crv {
namespace {

using internal::Chain;
using internal::Cubic;
using internal::PowerOfTwo;
using P = internal::Point;

// Relative to the largest coordinate: bounds the error of a measured distance.
constexpr double kDistanceNoise = 16 * internal::kRounding;

// Stretches between samples of the density of chords: of segments that need few, and of others.
constexpr int kFewSamples = 8;
constexpr int kSamples = 16;
constexpr double kFewChords = 20.0;

// Planned chords: with more a segment is not tried as one chord.
constexpr double kTriedAsOne = 3.0;

// Relative: the density is only sampled, so a chord more than this many are planned.
constexpr double kReserve = 0.01;

// Vertices that are placed and measured at a time, in loops that need no branches.
constexpr std::size_t kBatch = 32;

// Points of a segment that there is room for before the first is known.
constexpr std::size_t kExpected = 16;

// Halvings of a chord; the stretch is far below rounding then.
constexpr int kMaxDepth = 60;

// Magnitudes within which products of four coordinates stay far from the limits of a double.
constexpr double kSmallestOrdinary = 0x1p-100;
constexpr double kLargestOrdinary = 0x1p100;

constexpr double kUnknown = std::numeric_limits<double>::infinity();

double distanceToSegment(P const& p, P const& a, P const& ab) {
  double const squared = dot(ab, ab);
  double const share = squared > 0.0 ? std::clamp(dot(p - a, ab) / squared, 0.0, 1.0) : 0.0;
  return norm(p - (a + ab * share));
}

/// A place of a cubic, with a third of the velocity there.
struct Vertex {
  double t;
  P place;
  P velocity;
};

/// Bounds the distance of the stretch between two vertices from its chord where it does not leave
/// the span of the chord, else it is kUnknown or NaN: 3/4 of the middle of both inner control
/// points' distances and a little more for their difference.
inline double distanceWithinSpan(P const& chord, P const& first, P const& last) {
  double const squared = dot(chord, chord);
  double const ahead = dot(first, chord);
  double const behind = dot(last, chord);
  bool const isWithin = (ahead >= 0.0) & (behind >= 0.0) & (ahead <= squared) & (behind <= squared);
  double const left = cross(chord, first);
  double const right = cross(last, chord);
  double const middle = 0.5 * std::fabs(left + right);
  double const skew = 0.5 * (left - right);
  double const largest = max(std::fabs(left), std::fabs(right));
  double const oneSided = 0.75 * min(largest, middle + 0.25 * skew * (skew / middle));
  double const bound = (left > 0.0) == (right > 0.0) ? oneSided : (4.0 / 9.0) * largest;
  return isWithin ? bound / std::sqrt(squared) : kUnknown;
}

/// Bounds the distance of the stretch between two vertices from its chord.
double distanceFromChord(Vertex const& a, Vertex const& b) {
  double const h = b.t - a.t;
  P const chord = b.place - a.place;
  P const first = a.velocity * h;
  P const last = b.velocity * h;
  double const within = distanceWithinSpan(chord, first, last);
  if (within < kUnknown) return within;
  return max(distanceToSegment(a.place + first, a.place, chord),
             distanceToSegment(b.place - last, a.place, chord));
}

/// Vertices in a row, the first of which is known already, and the distances from the chords behind
/// them.
struct Batch {
  double t[kBatch + 1], x[kBatch + 1], y[kBatch + 1], vx[kBatch + 1], vy[kBatch + 1];
  double distance[kBatch];

  Vertex vertex(std::size_t i) const { return {t[i], {x[i], y[i]}, {vx[i], vy[i]}}; }
  void set(std::size_t i, Vertex const& v) {
    t[i] = v.t;
    x[i] = v.place.x;
    y[i] = v.place.y;
    vx[i] = v.velocity.x;
    vy[i] = v.velocity.y;
  }
  void measure(std::size_t chords) {
    for (std::size_t i = 0; i < chords; ++i) {
      double const h = t[i + 1] - t[i];
      distance[i] = distanceWithinSpan({x[i + 1] - x[i], y[i + 1] - y[i]}, {vx[i] * h, vy[i] * h},
                                       {vx[i + 1] * h, vy[i + 1] * h});
    }
  }
};

/// Whether the inner control points are ends, so that the segment is its chord.
bool isChord(Cubic const& c) {
  auto const isEnd = [&](P const& p) {
    return (p.x == c.p[0].x && p.y == c.p[0].y) || (p.x == c.p[3].x && p.y == c.p[3].y);
  };
  return isEnd(c.p[1]) && isEnd(c.p[2]);
}

class Flattener {
 public:
  /// The chain is the given one by the unit, and so are tolerance and magnitude.
  Flattener(Chain const& given, Chain const& chain, double unit, double tolerance, double magnitude)
      : given_(given),
        chain_(chain),
        unit_(unit),
        noise_(kDistanceNoise * magnitude),
        tolerance_(tolerance) {}

  Polyline run() {
    for (std::size_t k = 0; k < chain_.size(); ++k) add(k);
    auto const n = static_cast<int>(chain_.size());
    if (chain_.closed) {
      P const first = given_.segments.front().start();
      P const last = given_.segments.back().end();
      if (first.x != last.x || first.y != last.y) add(first, n, 0.0);
      line_.points.back() = line_.points.front();  // the zeros, too
    }
    line_.worstDistance = isChords_ ? 0.0 : (worst_ + noise_) * unit_;
    return std::move(line_);
  }

 private:
  /// The chords of one segment. The start is there already unless it is the first or there is a
  /// gap.
  void add(std::size_t k) {
    cubic_ = chain_.segments[k];
    segment_ = static_cast<int>(k);
    isChords_ = isChords_ && isChord(cubic_);
    P const e[3] = {cubic_.p[1] - cubic_.p[0], cubic_.p[2] - cubic_.p[1],
                    cubic_.p[3] - cubic_.p[2]};
    e0_ = e[0];
    e1_ = (e[1] - e[0]) * 2.0;
    e2_ = (e[2] - e[1]) - (e[1] - e[0]);
    Vertex const first = {0.0, cubic_.start(), e[0]};
    Vertex const end = {1.0, cubic_.end(), e[2]};
    double const planned = plan();
    bool const isFlat = planned <= kTriedAsOne && take(distanceFromChord(first, end));
    auto const chords = isFlat ? 1 : static_cast<std::size_t>(max(1.0, std::ceil(planned)));
    makeRoom(chords + chords / 8 + 2);
    P const& start = given_.segments[k].start();
    P const& before = given_.segments[k > 0 ? k - 1 : 0].end();
    if (k == 0 || before.x != start.x || before.y != start.y) add(start, segment_, 0.0);
    if (!isFlat) addPlanned(first, end, chords);
    add(given_.segments[k].end(), segment_ + 1, 0.0);
  }

  Vertex vertex(double t) const { return {t, cubic_.point(t), e0_ + (e1_ + e2_ * t) * t}; }

  /// The number of chords that the density asks for; not rounded.
  double plan() {
    double const chords = sampled<kFewSamples>();
    return chords <= kFewChords ? chords : sampled<kSamples>();
  }

  /// Samples how many chords the curve needs for a step of one sample, and adds them up.
  template <int kCount>
  double sampled() {
    samples_ = kCount;
    constexpr double kStep = 1.0 / kCount;
    double const c0 = cross(e0_, e1_);
    double const c1 = 2.0 * cross(e0_, e2_);
    double const c2 = cross(e1_, e2_);
    double const factor = 3.0 / (8.0 * (tolerance_ - noise_));
    // Where the velocity vanishes the quotient is rounding. No stretch needs more chords than the
    // second derivative asks for.
    double const most = factor * (norm(e1_) + 2.0 * norm(e2_));
    for (int i = 0; i <= kCount; ++i) {
      double const t = i * kStep;
      double const x = e0_.x + (e1_.x + e2_.x * t) * t;
      double const y = e0_.y + (e1_.y + e2_.y * t) * t;
      double const turn = factor * std::fabs(c0 + (c1 + c2 * t) * t);
      double const density = turn / std::sqrt(x * x + y * y);
      densities_[i] = density > 0.0 ? std::sqrt(min(density, most)) * kStep : 0.0;
    }
    sums_[0] = 0.0;
    for (int i = 0; i < kCount; ++i) {
      sums_[i + 1] = sums_[i] + 0.5 * (densities_[i] + densities_[i + 1]);
    }
    std::fill(sums_ + kCount + 1, sums_ + kSamples + 1, kUnknown);
    return sums_[kCount] * (1.0 + kReserve);
  }

  /// Chords with equal shares of the density, and more where they are too far.
  void addPlanned(Vertex const& first, Vertex const& end, std::size_t chords) {
    double const shareOfOne = sums_[samples_] / static_cast<double>(chords);
    Batch batch;
    batch.set(0, first);
    for (std::size_t done = 0; done < chords;) {
      std::size_t const count = std::min(kBatch, chords - done);
      setParameters(batch, shareOfOne, done, count);
      place(batch, count);
      done += count;
      if (done == chords) batch.set(count, end);
      batch.measure(count);
      for (std::size_t i = 0; i < count; ++i) {
        if (!take(batch.distance[i])) join(batch.vertex(i), batch.vertex(i + 1), 0);
        if (i + 1 < count || done < chords) {
          addInside({batch.x[i + 1], batch.y[i + 1]}, batch.t[i + 1]);
        }
      }
      batch.set(0, batch.vertex(count));
    }
  }

  /// The parameters up to which the density, being linear between samples, has added up to
  /// multiples of a share.
  void setParameters(Batch& batch, double shareOfOne, std::size_t done, std::size_t count) const {
    double start[kBatch], rest[kBatch], from[kBatch], to[kBatch];
    for (std::size_t i = 0; i < count; ++i) {
      double const sum = shareOfOne * static_cast<double>(done + i + 1);
      int sample = 0;
      for (int halved = kSamples / 2; halved > 0; halved /= 2) {
        sample += static_cast<int>(sums_[sample + halved] < sum) * halved;
      }
      start[i] = sample;
      rest[i] = sum - sums_[sample];
      from[i] = densities_[sample];
      to[i] = densities_[sample + 1];
    }
    double const step = 1.0 / samples_;
    for (std::size_t i = 0; i < count; ++i) {
      double const root = std::sqrt(from[i] * from[i] + 2.0 * (to[i] - from[i]) * rest[i]);
      double const part = min(1.0, 2.0 * rest[i] / (from[i] + root));
      batch.t[i + 1] = (start[i] + part) * step;
    }
  }

  /// Places vertices at their parameters.
  void place(Batch& batch, std::size_t count) const {
    Cubic const cubic = cubic_;
    P const e0 = e0_, e1 = e1_, e2 = e2_;
    for (std::size_t i = 1; i <= count; ++i) {
      double const t = batch.t[i];
      P const p = cubic.blend(internal::pointWeights(t));
      P const v = e0 + (e1 + e2 * t) * t;
      batch.x[i] = p.x;
      batch.y[i] = p.y;
      batch.vx[i] = v.x;
      batch.vy[i] = v.y;
    }
  }

  /// True when a chord is near enough; then its distance counts.
  bool take(double distance) {
    if (!(distance <= tolerance_ - noise_)) return false;
    worst_ = max(worst_, distance);
    return true;
  }

  /// Adds what is needed between two vertices.
  void join(Vertex const& a, Vertex const& b, int depth) {
    if (take(distanceFromChord(a, b)) || depth == kMaxDepth) return;
    Vertex const middle = vertex(0.5 * (a.t + b.t));
    join(a, middle, depth + 1);
    addInside(middle.place, middle.t);
    join(middle, b, depth + 1);
  }

  void addInside(P const& p, double t) { add(p * unit_, segment_, t); }

  void add(P const& p, int segment, double t) {
    line_.points.emplace_back(p.x, p.y);
    line_.positions.emplace_back(segment, t);
  }

  /// Makes room for more points, and for as many as the other segments are expected to have.
  void makeRoom(std::size_t more) {
    std::size_t const size = line_.points.size();
    if (size + more <= line_.points.capacity()) return;
    std::size_t const done = static_cast<std::size_t>(segment_);
    std::size_t const left = chain_.size() - done - 1;
    std::size_t const eachBefore = done > 0 ? size / done + 1 : kExpected;
    std::size_t const room = size + more + std::max(size / 4, left * eachBefore);
    line_.points.reserve(room);
    line_.positions.reserve(room);
  }

  Chain const& given_;
  Chain const& chain_;
  double const unit_;
  double const noise_;
  double const tolerance_;
  Polyline line_ = {{}, {}, 0.0};
  double worst_ = 0.0;
  bool isChords_ = true;  // all segments so far are
  Cubic cubic_ = {};
  int segment_ = 0;
  int samples_ = 0;
  P e0_ = {}, e1_ = {}, e2_ = {};  // a third of the derivative in powers of t
  double densities_[kSamples + 1] = {};
  double sums_[kSamples + 1] = {};
};

}  // namespace

Polyline flatten(Curve const& curve, double tolerance) {
  Chain const chain(curve);
  double const magnitude = chain.magnitude();
  if (chain.size() == 0 || !(tolerance > 0.0) || !internal::isUsable(magnitude)) {
    return {{}, {}, 0.0};
  }
  tolerance = max(tolerance, internal::resolutionOr(0.0, magnitude));
  bool const isOrdinary =
      magnitude == 0.0 || (magnitude >= kSmallestOrdinary && magnitude <= kLargestOrdinary);
  if (isOrdinary) return Flattener(chain, chain, 1.0, tolerance, magnitude).run();
  PowerOfTwo const scale = PowerOfTwo::below(magnitude);
  Chain scaled = chain;
  for (Cubic& cubic : scaled.segments) cubic = internal::scaled(cubic, scale.inverse);
  return Flattener(chain, scaled, scale.power, tolerance * scale.inverse, magnitude * scale.inverse)
      .run();
}

}  // namespace crv
