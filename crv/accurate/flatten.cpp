#include "crv/accurate/flatten.h"

#include "crv/accurate/internal/chain.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace crv {
namespace {

using internal::Chain;
using internal::Cubic;
using P = internal::Point;

// Relative to the largest coordinate: bounds the error of a measured distance.
constexpr double kDistanceNoise = 16 * internal::kRounding;

// Parameters between samples of the density of chords.
constexpr int kSamples = 16;

// Relative: the density is only sampled, so a chord more than this many are planned.
constexpr double kReserve = 0.01;

// Points of one segment that there is room for without asking.
constexpr std::size_t kExpected = 16;

// Halvings of a chord; the stretch is far below rounding then.
constexpr int kMaxDepth = 60;

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

/// A point of the result, in less room.
struct Found {
  P place;
  double t;
  int segment;
};

/// Bounds the distance of the stretch between two vertices from its chord: 3/4 of the middle of
/// both inner control points' distances and a little more for their difference, where the stretch
/// does not leave the span of the chord; else the distance of its control points.
double distanceFromChord(Vertex const& a, Vertex const& b) {
  double const h = b.t - a.t;
  P const chord = b.place - a.place;
  P const first = a.velocity * h;
  P const last = b.velocity * h;
  double const squared = dot(chord, chord);
  double const ahead = dot(first, chord);
  double const behind = dot(last, chord);
  if (ahead >= 0.0 && behind >= 0.0 && ahead <= squared && behind <= squared && squared > 0.0) {
    double const left = cross(chord, first);
    double const right = cross(last, chord);
    double const middle = 0.5 * std::fabs(left + right);
    double const skew = 0.5 * (left - right);
    double const largest = max(std::fabs(left), std::fabs(right));
    double const bound = left * right > 0.0
                             ? 0.75 * min(largest, middle + 0.25 * skew * skew / middle)
                             : (4.0 / 9.0) * largest;
    return bound / std::sqrt(squared);
  }
  return max(distanceToSegment(a.place + first, a.place, chord),
             distanceToSegment(b.place - last, a.place, chord));
}

class Flattener {
 public:
  Flattener(Chain const& chain, double tolerance, double magnitude)
      : chain_(chain), noise_(kDistanceNoise * magnitude), tolerance_(tolerance) {
    found_.reserve(kExpected * chain.size() + 2);
  }

  Polyline run() {
    for (std::size_t k = 0; k < chain_.size(); ++k) add(k);
    auto const n = static_cast<int>(chain_.size());
    if (chain_.closed) {
      P const first = chain_.segments.front().start();
      P const last = chain_.segments.back().end();
      if (first.x != last.x || first.y != last.y) add(first, n, 0.0);
      found_.back().place = first;  // the zeros, too
    }
    Polyline line = {{}, {}, worst_ > 0.0 ? worst_ + noise_ : 0.0};
    line.points.reserve(found_.size());
    line.positions.reserve(found_.size());
    for (Found const& found : found_) {
      line.points.emplace_back(found.place.x, found.place.y);
      line.positions.emplace_back(found.segment, found.t);
    }
    return line;
  }

 private:
  /// The chords of one segment. The start is there already unless it is the first or there is a
  /// gap.
  void add(std::size_t k) {
    cubic_ = &chain_.segments[k];
    segment_ = static_cast<int>(k);
    P const start = cubic_->start();
    if (k == 0 || start.x != chain_.segments[k - 1].end().x ||
        start.y != chain_.segments[k - 1].end().y) {
      add(start, segment_, 0.0);
    }
    P const e[3] = {cubic_->p[1] - cubic_->p[0], cubic_->p[2] - cubic_->p[1],
                    cubic_->p[3] - cubic_->p[2]};
    e0_ = e[0];
    e1_ = (e[1] - e[0]) * 2.0;
    e2_ = (e[2] - e[1]) - (e[1] - e[0]);
    Vertex last = {0.0, start, e[0]};
    Vertex const end = {1.0, cubic_->end(), e[2]};
    if (!take(last, end)) {
      plan();
      double const chords = std::ceil(sums_[kSamples] * (1.0 + kReserve));
      double const share = sums_[kSamples] / chords;
      int sample = 0;
      for (double i = 1.0; i < chords; ++i) {
        Vertex const next = vertex(parameterAt(share * i, sample));
        if (take(last, next)) {
          add(next.place, segment_, next.t);
        } else {
          join(last, next, 0);
        }
        last = next;
      }
      join(last, end, 0);
    }
    add(end.place, segment_ + 1, 0.0);
  }

  Vertex vertex(double t) const { return {t, cubic_->point(t), e0_ + (e1_ + e2_ * t) * t}; }

  /// Samples how many chords the curve needs for a step of one sample, and adds them up.
  void plan() {
    double const c0 = cross(e0_, e1_);
    double const c1 = 2.0 * cross(e0_, e2_);
    double const c2 = cross(e1_, e2_);
    double const factor = 3.0 / (8.0 * (tolerance_ - noise_));
    for (int i = 0; i <= kSamples; ++i) {
      double const t = i * (1.0 / kSamples);
      double const x = e0_.x + (e1_.x + e2_.x * t) * t;
      double const y = e0_.y + (e1_.y + e2_.y * t) * t;
      double const turn = factor * std::fabs(c0 + (c1 + c2 * t) * t);
      densities_[i] = turn / std::sqrt(x * x + y * y);
    }
    // Where the velocity vanishes the quotient is rounding. No stretch needs more chords than the
    // second derivative asks for.
    double const most = factor * (norm(e1_) + 2.0 * norm(e2_));
    for (double& density : densities_) {
      density = density > 0.0 ? std::sqrt(min(density, most)) * (1.0 / kSamples) : 0.0;
    }
    sums_[0] = 0.0;
    for (int i = 0; i < kSamples; ++i) {
      sums_[i + 1] = sums_[i] + 0.5 * (densities_[i] + densities_[i + 1]);
    }
  }

  /// Where the density has added up to a sum, being linear between samples. Sums come ascending.
  double parameterAt(double sum, int& sample) const {
    while (sample < kSamples - 1 && sums_[sample + 1] < sum) ++sample;
    double const rest = sum - sums_[sample];
    double const d = densities_[sample];
    double const root = std::sqrt(d * d + 2.0 * (densities_[sample + 1] - d) * rest);
    return (sample + min(1.0, 2.0 * rest / (d + root))) * (1.0 / kSamples);
  }

  /// True when the chord is near enough; then its distance counts.
  inline bool take(Vertex const& a, Vertex const& b) {
    double const distance = distanceFromChord(a, b);
    if (!(distance <= tolerance_ - noise_)) return false;
    worst_ = max(worst_, distance);
    return true;
  }

  /// Adds what is needed between two vertices, and the second, unless it is the segment's end.
  void join(Vertex const& a, Vertex const& b, int depth) {
    if (!take(a, b) && depth < kMaxDepth) {
      Vertex const middle = vertex(0.5 * (a.t + b.t));
      join(a, middle, depth + 1);
      join(middle, b, depth + 1);
      return;
    }
    if (b.t < 1.0) add(b.place, segment_, b.t);
  }

  void add(P const& p, int segment, double t) { found_.push_back({p, t, segment}); }

  Chain const& chain_;
  double const noise_;
  double const tolerance_;
  std::vector<Found> found_;
  double worst_ = 0.0;
  Cubic const* cubic_ = nullptr;
  int segment_ = 0;
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
  return Flattener(chain, max(tolerance, internal::resolutionOr(0.0, magnitude)), magnitude).run();
}

}  // namespace crv
