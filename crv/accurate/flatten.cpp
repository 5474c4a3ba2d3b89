#include "crv/accurate/flatten.h"

#include "crv/accurate/internal/appendGenerated.h"
#include "crv/accurate/internal/chordPlan.h"
#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/vectorClones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace crv {
namespace {

using internal::ChordError;
using internal::ChordPlan;
using internal::Cubic;
using internal::Edges;
using internal::kBatch;
using internal::kUnknown;
using internal::PowerOfTwo;
using internal::Velocity;
using P = internal::Point;

// Relative to the largest coordinate: bounds the rounding errors of a vertex and of a bound of a
// distance.
constexpr double kDistanceNoise = 16 * internal::kRounding;

// Planned chords: one chord for the whole segment is tried only up to this number.
constexpr std::size_t kTriedAsOne = 3;

// The number of points per segment for which memory is reserved before any segment is done.
constexpr std::size_t kExpected = 16;

// Divisions of a chord, of which every other is a halving; after so many, the stretch is far below
// rounding.
constexpr int kMaxDepth = 120;

// Magnitudes within which products of four coordinates stay far from the limits of a double.
constexpr double kSmallestOrdinary = 0x1p-100;
constexpr double kLargestOrdinary = 0x1p100;

double distanceToSegment(P const& p, P const& a, P const& ab) {
  double const squared = dot(ab, ab);
  double const share = squared > 0.0 ? std::clamp(dot(p - a, ab) / squared, 0.0, 1.0) : 0.0;
  return norm(p - (a + ab * share));
}

/// A place of a cubic.
struct Vertex {
  double t;
  P place;
};

/// Consecutive vertices, the first of which is known, and bounds on the squared distance of the
/// curve from the chord behind each.
struct Batch {
  double t[kBatch + 1], x[kBatch + 1], y[kBatch + 1];
  double squared[kBatch];
  bool isInside;  // all chords that were measured are near enough

  Vertex vertex(std::size_t i) const { return {t[i], {x[i], y[i]}}; }
  void set(std::size_t i, Vertex const& v) {
    t[i] = v.t;
    x[i] = v.place.x;
    y[i] = v.place.y;
  }
};

/// Computes the points of vertices 1 to inside of a batch, and bounds the squared distances of the
/// curve from its chords; returns the largest bound that is at most a limit.
CRV_VECTOR_CLONES double placeAndMeasure(Batch& batch, Cubic const& givenCubic,
                                         ChordError const& givenError, std::size_t inside,
                                         std::size_t count, double limit) {
  Cubic const cubic = givenCubic;
  ChordError const error = givenError;
  for (std::size_t i = 1; i <= inside; ++i) {
    P const p = cubic.blend(internal::pointWeights(batch.t[i]));
    batch.x[i] = p.x;
    batch.y[i] = p.y;
  }
  for (std::size_t i = 0; i < count; ++i) {
    batch.squared[i] = error.squared(batch.t[i], batch.t[i + 1], batch.x[i + 1] - batch.x[i],
                                     batch.y[i + 1] - batch.y[i]);
  }
  constexpr std::size_t kSide = 4;  // independent maxima, because each depends on the one before
  double worst[kSide] = {};
  double worstInside[kSide] = {};
  for (std::size_t i = count; i % kSide != 0; ++i) batch.squared[i] = 0.0;
  for (std::size_t i = 0; i < count; i += kSide) {
    for (std::size_t k = 0; k < kSide; ++k) {
      double const found = batch.squared[i + k];
      worst[k] = max(worst[k], found);
      worstInside[k] = max(worstInside[k], found <= limit ? found : 0.0);
    }
  }
  batch.isInside = max(max(worst[0], worst[1]), max(worst[2], worst[3])) <= limit;
  return max(max(worstInside[0], worstInside[1]), max(worstInside[2], worstInside[3]));
}

/// Whether the inner control points are ends, so that the segment is its chord.
bool isChord(Cubic const& c) {
  auto const isEnd = [&](P const& p) {
    return (p.x == c.p[0].x && p.y == c.p[0].y) || (p.x == c.p[3].x && p.y == c.p[3].y);
  };
  return isEnd(c.p[1]) && isEnd(c.p[2]);
}

class Flattener {
 public:
  /// Coordinates are divided by the unit; tolerance and magnitude are given in it.
  Flattener(Curve const& curve, PowerOfTwo const& unit, double tolerance, double magnitude)
      : curve_(curve),
        unit_(unit),
        magnitude_(magnitude),
        noise_(kDistanceNoise * magnitude),
        tolerance_(tolerance - noise_),
        squaredTolerance_(tolerance_ * tolerance_) {}

  Polyline run() {
    for (Segment const& s : curve_) add(internal::cubic(s));
    if (curve_.strictIsClosed() != 0) {
      P const first = internal::plain((*curve_.begin())[0]);
      if (first.x != end_.x || first.y != end_.y) add(first, 0.0);
      line_.points.back() = line_.points.front();  // also gives zeros the same sign
    }
    line_.worstDistance = isChords_ ? 0.0 : (std::sqrt(worstSquared_) + noise_) * unit_.power;
    return std::move(line_);
  }

 private:
  /// Adds the chords of one segment. Its start was added before, unless it is the first segment or
  /// there is a gap.
  void add(Cubic const& given) {
    P const& start = given.start();
    isChords_ = isChords_ && isChord(given);
    cubic_ = unit_.power == 1.0 ? given : internal::scaled(given, unit_.inverse);
    Velocity const velocity(cubic_);
    velocity_ = velocity;
    error_ = ChordError(velocity, magnitude_);
    std::size_t const planned = plan_.make(velocity, 0.375 / tolerance_);
    Vertex const first = {0.0, cubic_.start()};
    Vertex const end = {1.0, cubic_.end()};
    double split = 0.5;
    bool const isFlat = planned <= kTriedAsOne && isNear(first, end, bound(first, end), split);
    auto const chords = isFlat ? 1 : planned;
    makeRoom(chords + chords / 4 + 4);
    if (segment_ == 0 || start.x != end_.x || start.y != end_.y) add(start, 0.0);
    if (!isFlat) addPlanned(first, end, chords);
    ++segment_;
    end_ = given.end();
    add(end_, 0.0);
  }

  /// Adds chords with equal shares of the density; chords that are too far from the curve are
  /// divided.
  void addPlanned(Vertex const& first, Vertex const& end, std::size_t chords) {
    Batch batch;
    batch.set(0, first);
    plan_.divide(chords);
    for (std::size_t done = 0; done < chords;) {
      std::size_t const count = std::min(kBatch, chords - done);
      plan_.setParameters(batch.t + 1, done + 1, count);
      done += count;
      std::size_t const inside = done == chords ? count - 1 : count;
      if (done == chords) batch.set(count, end);
      double const worst = placeAndMeasure(batch, cubic_, error_, inside, count, squaredTolerance_);
      worstSquared_ = max(worstSquared_, worst);
      if (batch.isInside) {
        addInside(batch, 1, inside + 1);
      } else {
        addDivided(batch, count, inside);
      }
      batch.set(0, batch.vertex(count));
    }
  }

  /// Adds the vertices of a batch whose numbers are at most inside, and divides the chords that are
  /// too far from the curve.
  [[gnu::noinline]] void addDivided(Batch const& batch, std::size_t chords, std::size_t inside) {
    std::size_t last = 0;  // the vertex before the chord
    std::size_t next = 1;  // the first vertex not added yet
    for (std::size_t i = 1; i <= chords; ++i) {
      if (!(batch.squared[i - 1] <= squaredTolerance_)) {
        addInside(batch, next, i);
        bool const isPoint = !(batch.t[i] > batch.t[last]);
        next = isPoint ? i + 1 : i;
        if (isPoint) continue;
        divide(batch.vertex(last), batch.vertex(i), 0, batch.squared[i - 1]);
      }
      last = i;
    }
    addInside(batch, next, inside + 1);
  }

  Vertex vertex(double t) const { return {t, cubic_.point(t)}; }

  /// Bounds the squared distance of the stretch between two vertices from its chord, or returns
  /// kUnknown.
  double bound(Vertex const& a, Vertex const& b) const {
    P const chord = b.place - a.place;
    return error_.squared(a.t, b.t, chord.x, chord.y);
  }

  /// Bounds the same squared distance by the control points of the stretch.
  double boundByControlPoints(Vertex const& a, Vertex const& b) const {
    P const chord = b.place - a.place;
    double const h = b.t - a.t;
    P const first = a.place + velocity_.at(a.t) * h;
    P const last = b.place - velocity_.at(b.t) * h;
    double const distance =
        max(distanceToSegment(first, a.place, chord), distanceToSegment(last, a.place, chord));
    return distance * distance;
  }

  /// Bounds the same squared distance by the line through both vertices and by the places at which
  /// the stretch turns back along it. If such a place lies beyond the chord, turn receives the
  /// parameter of the farthest one.
  double boundByTurns(Vertex const& a, Vertex const& b, double& turn) const {
    P const chord = b.place - a.place;
    double const squared = dot(chord, chord);
    double turns[2];
    int const count = Edges(cubic_).along(chord).roots(turns);
    double farthest = 0.0;  // beyond the chord, times its length
    for (int i = 0; i < count; ++i) {
      if (!(a.t < turns[i] && turns[i] < b.t)) continue;
      double const along = dot(cubic_.point(turns[i]) - a.place, chord);
      double const beyond = max(-along, along - squared);
      if (!(beyond > farthest)) continue;
      farthest = beyond;
      turn = turns[i];
    }
    // Far beyond a chord, rounding errors of its direction count.
    if (!(farthest <= squared && squared >= error_.shortest)) return kUnknown;
    return error_.squaredAcross(a.t, b.t, squared) + farthest * (farthest / squared);
  }

  /// Whether a chord is within the tolerance, by a bound that is given or, if that is kUnknown, by
  /// the better of two others; if so, the bound counts for worstDistance. Otherwise, split is where
  /// the chord should be divided.
  bool isNear(Vertex const& a, Vertex const& b, double squared, double& split) {
    if (squared < kUnknown) return take(squared);
    return take(boundByControlPoints(a, b)) || take(boundByTurns(a, b, split));
  }

  /// Returns whether a chord is within the tolerance; if so, its distance counts for worstDistance.
  bool take(double squaredDistance) {
    if (!(squaredDistance <= squaredTolerance_)) return false;
    worstSquared_ = max(worstSquared_, squaredDistance);
    return true;
  }

  /// Adds the vertices needed between two vertices. squared bounds the squared distance of the
  /// stretch from its chord.
  [[gnu::noinline]] void divide(Vertex const& a, Vertex const& b, int depth, double squared) {
    double const half = 0.5 * (a.t + b.t);
    double turn = half;
    if (isNear(a, b, squared, turn) || depth == kMaxDepth) return;
    // Every other division halves, so that stretches become short anyway.
    Vertex const middle = vertex(depth % 2 == 0 ? turn : half);
    double const left = bound(a, middle);
    double const right = bound(middle, b);
    if (!take(left)) divide(a, middle, depth + 1, left);
    addInside(middle);
    if (!take(right)) divide(middle, b, depth + 1, right);
  }

  void addInside(Vertex const& v) { add(v.place * unit_.power, v.t); }

  /// Adds the vertices of a batch from first to before last.
  void addInside(Batch const& batch, std::size_t first, std::size_t last) {
    if (first >= last) return;
    auto const point = [&batch, power = unit_.power](std::size_t i) {
      return Point(batch.x[i] * power, batch.y[i] * power);
    };
    auto const position = [&batch, segment = segment_](std::size_t i) {
      double const t = batch.t[i];
      // Two calls that need no carrying, instead of one that may.
      return t >= 0.0 && t < 1.0 ? Position(segment, t) : Position(segment + 1, 0.0);
    };
    internal::appendGenerated(line_.points, point, first, last);
    internal::appendGenerated(line_.positions, position, first, last);
  }

  void add(P const& p, double t) {
    line_.points.emplace_back(p.x, p.y);
    line_.positions.emplace_back(segment_, t);
  }

  /// Reserves memory for more points, and for as many as the remaining segments are expected to
  /// need.
  void makeRoom(std::size_t more) {
    std::size_t const size = line_.points.size();
    if (size + more <= line_.points.capacity()) return;
    std::size_t const done = static_cast<std::size_t>(segment_);
    std::size_t const left = curve_.length() - done - 1;
    std::size_t const eachBefore = done > 0 ? size / done + 1 : kExpected;
    std::size_t const room = size + more + std::max(size / 4, left * eachBefore);
    line_.points.reserve(room);
    line_.positions.reserve(room);
  }

  Curve const& curve_;
  PowerOfTwo const unit_;
  double const magnitude_;
  double const noise_;
  double const tolerance_;
  double const squaredTolerance_;
  Polyline line_ = {{}, {}, 0.0};
  double worstSquared_ = 0.0;
  bool isChords_ = true;  // all segments so far are
  P end_ = {};            // of the segment before
  int segment_ = 0;
  Cubic cubic_ = {};
  Velocity velocity_;
  ChordError error_;
  ChordPlan plan_;
};

}  // namespace

Polyline flatten(Curve const& curve, double tolerance) {
  internal::Magnitude sizes;
  for (Segment const& s : curve) sizes.add(internal::cubic(s));
  double const magnitude = sizes.value();
  if (curve.length() == 0 || !(tolerance > 0.0) || !internal::isUsable(magnitude)) {
    return {{}, {}, 0.0};
  }
  tolerance = max(tolerance, internal::resolutionOr(0.0, magnitude));
  bool const isOrdinary =
      magnitude == 0.0 || (magnitude >= kSmallestOrdinary && magnitude <= kLargestOrdinary);
  PowerOfTwo const unit = isOrdinary ? PowerOfTwo{1.0, 1.0} : PowerOfTwo::below(magnitude);
  return Flattener(curve, unit, tolerance * unit.inverse, magnitude * unit.inverse).run();
}

}  // namespace crv
