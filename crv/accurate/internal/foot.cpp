// Let q(t) be the offset of the cubic's point from the query and v(t) a third of its derivative.
// Then f = q.v, a polynomial of degree 5, is a sixth of the derivative of the squared distance D.
// The partial sums of the Bernstein coefficients of f over a piece, times its width, added to D at
// the start of the piece, are the Bernstein coefficients of D; the least of them bounds D on the
// piece from below.
#include "crv/accurate/internal/foot.h"

#include "crv/accurate/internal/footPiece.h"
#include "crv/accurate/internal/scale.h"

#include <algorithm>
#include <cmath>

namespace crv::internal {
namespace {

// Bounds of rounding errors, relative to the magnitudes multiplied: of a coefficient of f, of a
// single product, and of D.
constexpr double kCoefficientNoise = 16 * kRounding;
constexpr double kProductNoise = 8 * kRounding;
constexpr double kDistanceNoise = 64 * kRounding;

// Parameter: pieces narrower than this are sampled. Such a piece is no longer than rounding errors,
// except at a cusp on which the query lies.
constexpr double kNarrow = 0x1p-40;

// Parameter: Halley's iteration converges cubically, so a step below kLastStep is the last one,
// provided that it is shorter than kQuick times the step before. At a cusp steps shrink more
// slowly, and the last one is below kSettled.
constexpr double kLastStep = 0x1p-27;
constexpr double kQuick = 0x1p-9;
constexpr double kSettled = 0x1p-50;

// Halley's step is short, too, where the derivative of f vanishes but f does not. There Newton's
// step is longer, by more than this factor; near a root it is not.
constexpr double kTurning = 2.0;

// After kFreeSteps steps of the iteration, every other step is a bisection. kMaxSteps is more steps
// than bisection alone needs.
constexpr int kFreeSteps = 8;
constexpr int kMaxSteps = 140;

// Each waiting piece is about half as wide as the one before it, so no more than this many are
// wider than kNarrow.
constexpr int kMaxPieces = 48;

// The number of samples on a piece, and the parameter step at which sampling ends: even at a cusp
// the samples are then nearer to each other than rounding errors.
constexpr int kSamples = 16;
constexpr double kLastSampling = 0x1p-30;

// In steps: how far from the lowest sample sampling goes on. Beside a cusp each branch has a
// minimum. If they are farther apart than this, f has the right signs one step before and behind
// both of them.
constexpr double kStepsKept = 3.0;

// Parameter: two minima nearer to each other than this are the same minimum, found twice.
constexpr double kOneMinimum = 0x1p-30;

// Relative to the largest distance of a control point from the query: an end as near to the query
// as this, one rounding error, is taken to be the query.
constexpr double kAtQuery = kRounding;

// Parameter: a minimum nearer to an end than this may be so shallow that rounding hides it.
constexpr double kNextToEnd = 0x1p-10;

double size(Point const& p) { return max(std::fabs(p.x), std::fabs(p.y)); }

class Search {
 public:
  Search(Cubic const& cubic, Point const& p, double limit)
      : cubic_(cubic), query_(p), limit_(limit) {
    for (int i = 0; i < 4; ++i) q_.p[i] = cubic.p[i] - p;
    for (int i = 0; i < 3; ++i) e_[i] = cubic.p[i + 1] - cubic.p[i];
    bend_[0] = e_[1] - e_[0];
    bend_[1] = e_[2] - e_[1];
    jerk_ = bend_[1] - bend_[0];
    for (Point const& q : q_.p) largest_ = max(largest_, size(q));
    for (Point const& e : e_) largestEdge_ = max(largestEdge_, size(e));
    double largest = size(p);
    for (Point const& c : cubic.p) largest = max(largest, size(c));
    isLong_ = largestEdge_ > largest;
  }

  Foot nearest() {
    best_ = start();
    if (largestEdge_ == 0.0 || best_.squaredDistance == 0.0) return best_;
    limit_ = min(limit_, min(best_.squaredDistance, end().squaredDistance));
    setNoise();
    searchPieces();
    offer(end());
    return best_;
  }

  Minima minima() {
    Minima minima;
    if (largestEdge_ == 0.0) return minima;
    found_ = &minima.inside;
    best_ = start();
    setNoise();
    FootSigns const signs(whole(), noise_);
    for (unsigned k = 0; k < 6; ++k) {
      if (minima.slopeAtStart == 0) minima.slopeAtStart = signs.of(k);
      if (minima.slopeAtEnd == 0) minima.slopeAtEnd = signs.of(5 - k);
    }
    searchPieces();
    auto const isEarlier = [](Foot const& a, Foot const& b) { return a.t < b.t; };
    auto const isSame = [](Foot const& a, Foot const& b) { return b.t - a.t <= kOneMinimum; };
    std::sort(minima.inside.begin(), minima.inside.end(), isEarlier);
    minima.inside.erase(std::unique(minima.inside.begin(), minima.inside.end(), isSame),
                        minima.inside.end());
    // If rounding hides a minimum next to an end, the end counts as the minimum.
    bool const isSeenAtStart = !minima.inside.empty() && minima.inside.front().t < kNextToEnd;
    bool const isSeenAtEnd = !minima.inside.empty() && minima.inside.back().t > 1.0 - kNextToEnd;
    if (minima.slopeAtStart < 0 && !isSeenAtStart && isLowest(start(), kNextToEnd)) {
      minima.slopeAtStart = 1;
    }
    if (minima.slopeAtEnd > 0 && !isSeenAtEnd && isLowest(end(), 1.0 - kNextToEnd)) {
      minima.slopeAtEnd = -1;
    }
    // Nothing is nearer than an end that is the query itself.
    if (minima.slopeAtStart < 0 && start().squaredDistance == 0.0) minima.slopeAtStart = 1;
    if (minima.slopeAtEnd > 0 && end().squaredDistance == 0.0) minima.slopeAtEnd = -1;
    return minima;
  }

 private:
  /// Whether an end is the query up to rounding, or is nearer than the point at t by more than
  /// rounding errors.
  bool isLowest(Foot const& end, double t) const {
    double const touch = kAtQuery * largest_;
    Point const q = motion(t).q;
    return end.squaredDistance <= touch * touch ||
           dot(q, q) - end.squaredDistance > kDistanceNoise * largest_ * largest_;
  }

  /// The offset q of the point at t, v, and half the derivative of v.
  struct Motion {
    Point q, v, a;
  };

  Foot start() const { return {0.0, q_.p[0], dot(q_.p[0], q_.p[0])}; }
  Foot end() const { return {1.0, q_.p[3], dot(q_.p[3], q_.p[3])}; }

  /// Computed from the nearer end, so that points of a straight segment parallel to an axis keep
  /// their constant coordinate exactly.
  Motion motion(double t) const {
    bool const isEarly = t < 0.5;
    double const d = isEarly ? t : t - 1.0;
    Point const& q = isEarly ? q_.p[0] : q_.p[3];
    Point const& e = isEarly ? e_[0] : e_[2];
    Point const& bend = isEarly ? bend_[0] : bend_[1];
    Point const a = bend + jerk_ * d;
    return {q + (e * 3.0 + (bend * 2.0 + a) * d) * d, e + (bend + a) * d, a};
  }

  FootPiece whole() const {
    Point const* q = q_.p;
    double const f0 = dot(q[0], e_[0]);
    double const f1 = (2.0 * dot(q[0], e_[1]) + 3.0 * dot(q[1], e_[0])) * 0.2;
    double const f2 = (dot(q[0], e_[2]) + 6.0 * dot(q[1], e_[1]) + 3.0 * dot(q[2], e_[0])) * 0.1;
    double const f3 = (3.0 * dot(q[1], e_[2]) + 6.0 * dot(q[2], e_[1]) + dot(q[3], e_[0])) * 0.1;
    double const f4 = (3.0 * dot(q[2], e_[2]) + 2.0 * dot(q[3], e_[1])) * 0.2;
    double const f5 = dot(q[3], e_[2]);
    return {{f0, f1, f2, f3, f4, f5}, 0.0, 1.0, best_.squaredDistance, true};
  }

  void searchPieces() {
    FootPiece waiting[kMaxPieces];
    int count = 1;
    waiting[0] = whole();
    double const slack = kDistanceNoise * largest_ * largest_;
    while (count > 0) {
      FootPiece& piece = waiting[count - 1];
      double least = 0.0;
      piece.squaredDistanceAtEnd(least);
      FootSigns const signs(piece, noise_);
      if (least - slack > limit_ || (signs.areCertain && signs.neverRise())) {
        --count;
      } else if (signs.areCertain && signs.riseOnce()) {
        offer(footWhereItRises(piece, signs));
        --count;
      } else if (signs.areNone() || piece.width < kNarrow) {
        offerSamples(piece);
        --count;
      } else {
        piece.cut(waiting[count]);
        ++count;
      }
    }
  }

  /// The foot found by the iteration from the point where the control polygon of f rises through
  /// zero.
  Foot footWhereItRises(FootPiece const& piece, FootSigns const& signs) const {
    int low = 0;
    while ((signs.negative >> (low + 1)) != 0) ++low;
    int high = low + 1;
    while (((signs.positive >> high) & 1U) == 0) ++high;
    double const share = piece.f[low] / (piece.f[low] - piece.f[high]);
    double const guess = (low + share * (high - low)) * 0.2;
    return polished(piece.start, piece.start + piece.width, piece.start + piece.width * guess);
  }

  /// The foot between two parameters, f being negative at low and positive at high.
  Foot polished(double low, double high, double t) const {
    double previous = 1.0;
    for (int step = 0;; ++step) {
      Motion const m = motion(t);
      double const f = dot(m.q, m.v);
      double const df = 3.0 * dot(m.v, m.v) + 2.0 * dot(m.q, m.a);
      double const ddf = 18.0 * dot(m.v, m.a) + 2.0 * dot(m.q, jerk_);
      (f < 0.0 ? low : high) = t;
      double const inverse = 1.0 / df;
      double const newton = f * inverse;
      double const halley = newton / (1.0 - 0.5 * newton * (ddf * inverse));
      double next = t - halley;
      bool const isInside = next >= low && next <= high;  // not so where it is NaN
      bool const isLast = std::fabs(halley) < min(kLastStep, max(kQuick * previous, kSettled)) &&
                          std::fabs(newton) <= kTurning * std::fabs(halley);
      if (isInside && (isLast || step >= kMaxSteps)) {
        return footAfter(m, next - t, next);
      }
      if (!isInside || (step >= kFreeSteps && step % 2 == 0)) next = 0.5 * (low + high);
      if (f == 0.0 || next == t || step >= kMaxSteps) return footAfter(m, 0.0, t);
      previous = std::fabs(next - t);
      t = next;
    }
  }

  /// The foot at next, which is the parameter of the motion plus step.
  Foot footAfter(Motion const& m, double step, double next) const {
    if (next <= 0.0) return start();
    if (next >= 1.0) return end();
    Point const q =
        isLong_ ? offsetAt(next) : m.q + (m.v * 3.0 + (m.a * 3.0 + jerk_ * step) * step) * step;
    return {next, q, dot(q, q)};
  }

  /// The offset of the point at t, by de Casteljau's triangle: with smaller rounding errors than in
  /// powers of t where edges are longer than the largest coordinate.
  [[gnu::noinline]] Point offsetAt(double t) const {
    Cubic left, right;
    cubic_.split(t, left, right);
    return left.end() - query_;
  }

  Foot sampled(double t) const { return footAfter(motion(t), 0.0, t); }

  /// Samples a piece, ever more closely around the lowest sample, and updates the result with the
  /// local minima among the samples. The coefficients of f are only rounding errors here, but
  /// points, and f computed from point and velocity, are still significant.
  void offerSamples(FootPiece const& piece) {
    double low = piece.start;
    double high = piece.start + piece.width;
    double step = 1.0;
    do {
      step = (high - low) / kSamples;
      Foot samples[kSamples + 1];
      for (int i = 0; i <= kSamples; ++i) samples[i] = sampled(low + step * i);
      Foot lowest = samples[0];
      for (int i = 0; i <= kSamples; ++i) {
        double const d = samples[i].squaredDistance;
        if (i > 0 && samples[i - 1].squaredDistance < d) continue;
        if (i < kSamples && samples[i + 1].squaredDistance < d) continue;
        if (found_ == nullptr) offer(samples[i]);
        offerNear(samples[i].t, step);
        if (d < lowest.squaredDistance) lowest = samples[i];
      }
      low = max(lowest.t - kStepsKept * step, 0.0);
      high = min(lowest.t + kStepsKept * step, 1.0);
    } while (step > kLastSampling);
  }

  void offerNear(double t, double step) {
    double const low = max(t - step, 0.0);
    double const high = min(t + step, 1.0);
    Motion const before = motion(low);
    Motion const behind = motion(high);
    bool const rises = dot(before.q, before.v) < 0.0 && dot(behind.q, behind.v) > 0.0;
    if (rises) offer(polished(low, high, t));
  }

  void offer(Foot const& foot) {
    if (found_ != nullptr) {
      bool const isInside = foot.t > 0.0 && foot.t < 1.0;
      if (isInside && foot.squaredDistance <= limit_) found_->push_back(foot);
      return;
    }
    if (isNearer(foot.squaredDistance, best_.squaredDistance)) best_ = foot;
    limit_ = min(limit_, foot.squaredDistance);
  }

  void setNoise() {
    noise_ = {kCoefficientNoise * largest_ * largestEdge_,
              kProductNoise * size(q_.p[0]) * size(e_[0]),
              kProductNoise * size(q_.p[3]) * size(e_[2])};
  }

  Cubic const& cubic_;
  Point const query_;
  bool isLong_ = false;                 // some edge is longer than the largest coordinate
  std::vector<Foot>* found_ = nullptr;  // not null if all local minima are wanted
  Cubic q_;                             // relative to the query
  Point e_[3];                          // the edges, from the given control points
  Point bend_[2];                       // differences of the edges
  Point jerk_;                          // the difference of these
  double largest_ = 0.0;
  double largestEdge_ = 0.0;
  FootNoise noise_ = {};
  double limit_;
  Foot best_ = {};
};

}  // namespace

Foot nearestFoot(Cubic const& cubic, Point const& p, double limit) {
  return Search(cubic, p, limit).nearest();
}

Minima localMinima(Cubic const& cubic, Point const& p, double limit) {
  return Search(cubic, p, limit).minima();
}

}  // namespace crv::internal
