// Replaces the stretches between corners by fewer segments; a stretch for which none are found
// stays as it is.
#include "crv/accurate/fit.h"
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/chainFit.h"
#include "crv/accurate/internal/gaps.h"
#include "crv/accurate/internal/knotMap.h"
#include "crv/accurate/internal/rejoined.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/segmentFit.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/smoothParts.h"
#include "crv/accurate/internal/tangent.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace crv {

namespace {

using internal::Chain;
using internal::ChainFit;
using internal::Cubic;
using internal::KnotCurve;
using internal::KnotSpan;
using internal::Place;

// The cosine of the turn, about 0.1 radians, from which a joint is a corner.
constexpr double kCornerCosine = 0.995;

// Curve units: the magnitude of the coordinates in the scale of the fit.
constexpr double kMagnitude = 1.0;

// Samples of a segment for the fit.
constexpr std::size_t kSamples = 8;

// The tolerances of the fits that are tried, as shares of the caller's: a fit only bounds the
// distance of samples, so one that is too far away between them is tried again with a smaller
// tolerance.
constexpr double kShares[] = {0.9, 0.6, 0.3};

// Halvings of a span to match the parameters of its curves more closely.
constexpr int kMostHalvings = 8;

// No two points are farther apart than this in the scale of the fit.
constexpr double kLongestDistance = 6.0;

/// The worst distance of two cubics at equal parameters, by the control points of the difference.
double worstDistance(Cubic const& a, Cubic const& b) {
  double worst = 0.0;
  for (int i = 0; i < 4; ++i) worst = std::max(worst, internal::squaredDistance(a.p[i], b.p[i]));
  return std::sqrt(worst);
}

/// The segments that replace a stretch of the source, and the spans that relate the parameters of
/// both.
struct Replacement {
  std::vector<Cubic> segments;
  std::vector<KnotSpan> spans;  // result segments are counted from the first of these
  double worst = 0.0;           // distance across a span

  void append(Replacement const& next) {
    for (KnotSpan span : next.spans) {
      span.resultSegment += segments.size();
      spans.push_back(span);
    }
    segments.insert(segments.end(), next.segments.begin(), next.segments.end());
    worst = std::max(worst, next.worst);
  }
};

/// The segments [begin, end) of the source, between corners, with their samples, and the ways to
/// replace them by fewer segments.
class Stretch {
 public:
  Stretch(Chain const& source, double tolerance, std::size_t begin, std::size_t end, bool isRound);

  /// The segments as they are.
  Replacement same() const;

  /// Each segment of the result replaces the longest run that one cubic with the same ends and end
  /// directions can replace.
  Replacement merged() const;

  /// A fitted chain with joints anywhere; nothing if all fits tried are too far away.
  std::optional<Replacement> fitted() const;

 private:
  std::size_t size() const { return end_ - begin_; }
  Cubic const& segment(std::size_t i) const { return source_.segments[begin_ + i]; }
  std::optional<Replacement> fitted(double fitTolerance) const;
  std::optional<Replacement> joined(std::size_t first, std::size_t count) const;
  std::optional<Replacement> merged(internal::SegmentFit& fit, std::size_t first,
                                    std::size_t count) const;
  std::size_t mergeFrom(std::size_t first, internal::SegmentFit& fit, Replacement& result) const;
  void matchSample(std::size_t sample, Place const& from, Place const& to,
                   Replacement& result) const;
  void refine(KnotSpan const& span, int halvings, Replacement& result) const;

  Chain const& source_;
  double const tolerance_;
  std::size_t const begin_, end_;
  bool const isRound_;                    // a whole closed curve without corners
  std::vector<internal::Point> samples_;  // kSamples a segment, and the end
};

Stretch::Stretch(Chain const& source, double tolerance, std::size_t begin, std::size_t end,
                 bool isRound)
    : source_(source), tolerance_(tolerance), begin_(begin), end_(end), isRound_(isRound) {
  samples_.reserve(size() * kSamples + 1);
  for (std::size_t k = begin; k < end; ++k) {
    for (std::size_t i = 0; i < kSamples; ++i) {
      samples_.push_back(pointAt(source.segments[k], static_cast<double>(i) / kSamples));
    }
  }
  samples_.push_back(source.segments[end - 1].end());
}

Replacement Stretch::same() const {
  Replacement result;
  for (std::size_t i = 0; i < size(); ++i) {
    result.spans.push_back({begin_ + i, 0.0, 1.0, i, 0.0, 1.0});
    result.segments.push_back(segment(i));
  }
  return result;
}

/// Adds the spans from one sample to the next, whose places on the result are given. A joint of the
/// result in between becomes a knot at the nearest point of the source.
void Stretch::matchSample(std::size_t sample, Place const& from, Place const& to,
                          Replacement& result) const {
  double const t0 = static_cast<double>(sample % kSamples) / kSamples;
  KnotSpan rest = {begin_ + sample / kSamples, t0, t0 + 1.0 / kSamples, from.segment, from.t, to.t};
  for (; rest.resultSegment < to.segment; ++rest.resultSegment) {
    internal::Point const joint = result.segments[rest.resultSegment].end();
    double const foot = footOn(source_.segments[rest.segment], joint, 0.5 * (rest.t0 + rest.t1));
    // If the nearest point lies outside the span, the source is divided in the ratio of the
    // parameters of the result, so that every part of the result has a place on the source.
    double const left = 1.0 - rest.s0;
    double const behind = static_cast<double>(to.segment - rest.resultSegment - 1) + to.t;
    double const ratio = left > 0.0 ? left / (left + behind) : 0.0;
    double const share = rest.t0 + (rest.t1 - rest.t0) * ratio;
    KnotSpan before = rest;
    before.t1 = rest.t0 < foot && foot < rest.t1 ? foot : share;
    before.s1 = 1.0;
    if (before.t1 > before.t0 || before.s0 < 1.0) refine(before, kMostHalvings, result);
    rest.t0 = before.t1;
    rest.s0 = 0.0;
  }
  if (rest.t1 > rest.t0 || rest.s1 > rest.s0) refine(rest, kMostHalvings, result);
}

/// Adds a span; halves it if its curves are farther apart than the tolerance at equal parameters.
void Stretch::refine(KnotSpan const& span, int halvings, Replacement& result) const {
  Cubic const& a = source_.segments[span.segment];
  Cubic const& b = result.segments[span.resultSegment];
  double const distance = worstDistance(part(a, span.t0, span.t1), part(b, span.s0, span.s1));
  if (distance <= tolerance_ || halvings == 0 || result.worst > tolerance_) {
    result.spans.push_back(span);
    result.worst = std::max(result.worst, distance);
    return;
  }
  KnotSpan left = span, right = span;
  left.t1 = right.t0 = 0.5 * (span.t0 + span.t1);
  double const foot = footOn(b, pointAt(a, left.t1), 0.5 * (span.s0 + span.s1));
  left.s1 = right.s0 = std::min(span.s1, std::max(span.s0, foot));
  refine(left, halvings - 1, result);
  refine(right, halvings - 1, result);
}

/// The segment from which several were cut; nothing if it would be too far away.
std::optional<Replacement> Stretch::joined(std::size_t first, std::size_t count) const {
  auto const whole = internal::rejoined(&segment(first), count);
  if (!whole) return std::nullopt;
  Replacement result;
  result.segments.push_back(whole->c);
  for (std::size_t i = 0; i < count; ++i) {
    double const s0 = whole->ends[i], s1 = whole->ends[i + 1];
    result.spans.push_back({begin_ + first + i, 0.0, 1.0, 0, s0, s1});
    double const distance = worstDistance(segment(first + i), part(whole->c, s0, s1));
    if (!(distance <= tolerance_)) return std::nullopt;
    result.worst = std::max(result.worst, distance);
  }
  return result;
}

/// One segment in place of several; nothing if it would be too far away.
std::optional<Replacement> Stretch::merged(internal::SegmentFit& fit, std::size_t first,
                                           std::size_t count) const {
  if (auto whole = joined(first, count)) return whole;
  std::size_t const start = first * kSamples, end = start + count * kSamples;
  internal::FitEnds const ends = {samples_[start], startDirection(segment(first)), true,
                                  samples_[end], endDirection(segment(first + count - 1))};
  if (!fit.fit(ends, samples_.data() + start + 1, end - start - 1)) return std::nullopt;
  Replacement result;
  result.segments.push_back(fit.cubic());
  Place from = {0, 0.0};
  for (std::size_t sample = start; sample < end; ++sample) {
    Place const to = {0, sample + 1 < end ? fit.foot(sample - start) : 1.0};
    matchSample(sample, from, to, result);
    from = to;
    if (result.worst > tolerance_) return std::nullopt;
  }
  return result;
}

/// Appends the replacement of the longest run that starts with a segment, found by doubling and
/// bisection, and returns the length of the run.
std::size_t Stretch::mergeFrom(std::size_t first, internal::SegmentFit& fit,
                               Replacement& result) const {
  std::size_t const left = size() - first;
  Replacement best;
  std::size_t fits = 1, fails = left + 1;
  for (std::size_t count = std::min<std::size_t>(2, left); count > fits && count < fails;) {
    std::optional<Replacement> trial = merged(fit, first, count);
    (trial ? fits : fails) = count;
    if (trial) best = std::move(*trial);
    count = fails > left ? std::min(2 * fits, left) : fits + (fails - fits) / 2;
  }
  if (fits == 1) best = {{segment(first)}, {{begin_ + first, 0.0, 1.0, 0, 0.0, 1.0}}, 0.0};
  result.append(best);
  return fits;
}

Replacement Stretch::merged() const {
  Replacement result;
  internal::SegmentFit fit(kShares[0] * tolerance_, kLongestDistance);
  for (std::size_t first = 0; first < size();) first += mergeFrom(first, fit, result);
  return result;
}

std::optional<Replacement> Stretch::fitted(double fitTolerance) const {
  std::vector<internal::Point> points;
  std::vector<std::size_t> pointOf;  // by sample; the number of points for a repeated start
  for (internal::Point const& p : samples_) {
    bool const isNew = points.empty() || p.x != points.back().x || p.y != points.back().y;
    if (isNew) points.push_back(p);
    pointOf.push_back(points.size() - 1);
  }
  bool const comesBack = points.size() > 1 && points.front().x == points.back().x &&
                         points.front().y == points.back().y;
  if (isRound_ && comesBack) points.pop_back();
  ChainFit chain(points, fitTolerance);
  chain.fitStroke({}, isRound_);
  Replacement result;
  result.segments = chain.segments();
  if (result.segments.size() >= size()) return std::nullopt;
  chain.improveFeet();
  Place from = {0, 0.0};
  for (std::size_t sample = 0; sample + 1 < pointOf.size(); ++sample) {
    bool const isLast = sample + 2 == pointOf.size();
    Place const to =
        isLast ? Place{result.segments.size() - 1, 1.0} : chain.foot(pointOf[sample + 1]);
    matchSample(sample, from, to, result);
    from = to;
    if (result.worst > tolerance_) return std::nullopt;
  }
  return result;
}

std::optional<Replacement> Stretch::fitted() const {
  for (double const share : kShares) {
    if (auto result = fitted(share * tolerance_)) return result;
  }
  return std::nullopt;
}

/// Simplifies a curve whose coordinates are of the order of 1.
class Simplification {
 public:
  Simplification(Chain const& source, double tolerance)
      : source_(source), tolerance_(tolerance), gaps_(internal::gapsOf(source, 1.0)) {}

  void run();
  Simplified result(int exponent);

 private:
  bool isCorner(std::size_t before, std::size_t behind) const;
  bool isBroken(std::size_t segment) const;
  void simplifyRun(std::size_t begin, std::size_t end, bool isClosed);
  void simplifyStretch(std::size_t begin, std::size_t end, bool isRound);

  Chain const& source_;
  double const tolerance_;
  std::vector<std::size_t> const gaps_;
  std::vector<std::size_t> resultGaps_;
  Replacement result_;
};

void Simplification::run() {
  std::size_t begin = 0;
  for (std::size_t const gap : gaps_) {
    simplifyRun(begin, gap + 1, false);
    resultGaps_.push_back(result_.segments.size() - 1);
    begin = gap + 1;
  }
  if (begin < source_.size()) simplifyRun(begin, source_.size(), gaps_.empty());
}

/// Whether a segment stays as it is because it is one point or has a cusp.
bool Simplification::isBroken(std::size_t segment) const {
  Cubic const& c = source_.segments[segment];
  if (isPoint(c)) return true;
  std::vector<internal::SmoothPart> parts;
  appendSmoothParts(c, segment, kMagnitude, parts);
  return parts.size() > 1;
}

bool Simplification::isCorner(std::size_t before, std::size_t behind) const {
  if (isBroken(before) || isBroken(behind)) return true;
  internal::Point const in = endDirection(source_.segments[before]);
  internal::Point const out = startDirection(source_.segments[behind]);
  return !(dot(in, out) > kCornerCosine);
}

/// Simplifies segments without a gap between them. If there are corners, the seam of a closed curve
/// stays a joint, too.
void Simplification::simplifyRun(std::size_t begin, std::size_t end, bool isClosed) {
  std::size_t from = begin;
  for (std::size_t k = begin + 1; k < end; ++k) {
    if (!isCorner(k - 1, k)) continue;
    simplifyStretch(from, k, false);
    from = k;
  }
  simplifyStretch(from, end, isClosed && from == begin && !isCorner(end - 1, begin));
}

/// Appends the replacement with the fewest segments.
void Simplification::simplifyStretch(std::size_t begin, std::size_t end, bool isRound) {
  Stretch const stretch(source_, tolerance_, begin, end, isRound);
  if (end - begin == 1) return result_.append(stretch.same());
  Replacement const merged = stretch.merged();
  std::optional<Replacement> const fitted = stretch.fitted();
  bool const isLeaner = fitted && fitted->segments.size() < merged.segments.size();
  result_.append(isLeaner ? *fitted : merged);
}

Simplified Simplification::result(int exponent) {
  Simplified simplified;
  for (Cubic const& c : result_.segments) {
    Segment s;
    for (int i = 0; i < 4; ++i) {
      s[i] = Point(std::ldexp(c.p[i].x, exponent), std::ldexp(c.p[i].y, exponent));
    }
    simplified.curve.getSegments().add(s);
  }
  simplified.curve.setStrictIsClosed(source_.closed);
  KnotCurve const source = {source_.size(), source_.closed, gaps_};
  KnotCurve const result = {result_.segments.size(), source_.closed, resultGaps_};
  simplified.map = internal::knotMap(std::move(result_.spans), source, result);
  simplified.worstDistance = std::ldexp(result_.worst, exponent);
  return simplified;
}

}  // namespace

Simplified simplify(Curve const& curve, double tolerance) {
  Chain chain(curve);
  double const magnitude = chain.magnitude();
  if (!internal::isUsable(magnitude) || chain.size() == 0 || !(tolerance > 0.0)) {
    return {Curve(), internal::knotMap({}, {}, {}), 0.0};
  }
  int const exponent = magnitude > 0.0 ? std::ilogb(magnitude) : 0;
  for (Cubic& c : chain.segments) {
    for (internal::Point& p : c.p) p = {std::ldexp(p.x, -exponent), std::ldexp(p.y, -exponent)};
  }
  Simplification simplification(chain,
                                std::min(std::ldexp(tolerance, -exponent), kLongestDistance));
  simplification.run();
  return simplification.result(exponent);
}

}  // namespace crv
