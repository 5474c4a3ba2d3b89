#include "crv/accurate/offset.h"

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/parallelMap.h"
#include "crv/accurate/internal/rawOutline.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/segmentArea.h"
#include "crv/accurate/internal/trimming.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace crv {

namespace {

using internal::Chain;
using internal::Cubic;
using internal::ParallelOrigin;
using internal::Path;
using internal::PathPart;
using internal::Place;
using internal::RawKind;
using internal::RawOutline;
using internal::RawSegment;
using internal::RawSides;

// In units of u (S + |d|): smaller tolerances are raised to this, because rounding errors are as
// large.
constexpr double kLeastTolerance = 64.0;

// In distances: larger tolerances are lowered to this, so that a parallel stays on its side of the
// curve.
constexpr double kLargestTolerance = 0.25;

// Rounding errors decide the directions of tiny segments and handles, so these are simplified
// before the offset if they are also shorter than kSmall times the tolerance. A segment smaller
// than the default resolution becomes a straight line; a handle shorter than kShortHandle times S
// is retracted.
constexpr double kSmall = 0.125;
constexpr double kShortHandle = 0x1p-30;

// In units of u (S + |d|): a small segment with a shorter chord is taken as its start. It is less
// than the gaps that count as joints.
constexpr double kShortestChord = 8.0;

// The binary exponent of the size of the smallest curve, in units of S + |d|. A smaller curve is
// enlarged, so that products of coordinates do not underflow; this moves its points by less than
// rounding errors of the distance.
constexpr int kSmallestExponent = -64;

/// The curve, scaled so that S + |d| is of the order of 1, enlarged if it is still tiny, and
/// mirrored if necessary so that the parallel lies on the left.
struct Frame {
  Frame(Chain source, double signedDistance, OffsetOptions const& given)
      : curve(std::move(source)), options(given), isMirrored(signedDistance < 0.0) {
    double const magnitude = curve.magnitude();
    int const exponent = std::ilogb(magnitude + std::fabs(signedDistance)) + 1;
    unit = std::ldexp(1.0, exponent);
    double const factor = std::ldexp(1.0, -exponent);
    distance = std::fabs(signedDistance) * factor;
    double const largest = kLargestTolerance * std::fabs(signedDistance);
    options.tolerance = std::max(std::min(given.tolerance, largest) * factor,
                                 kLeastTolerance * internal::kRounding);
    double const small = kSmall * options.tolerance;
    int const sizeExponent = magnitude > 0.0 ? std::ilogb(magnitude) - exponent : 0;
    double const curveFactor = std::ldexp(factor, std::max(0, kSmallestExponent - sizeExponent));
    double const smallSegment =
        std::min(small, internal::kDefaultResolution * magnitude * curveFactor);
    double const shortHandle = std::min(small, kShortHandle * magnitude * curveFactor);
    for (Cubic& c : curve.segments) {
      for (internal::Point& p : c.p) p = {p.x * curveFactor, mirrored(p.y * curveFactor)};
      straightenUpTo(smallSegment, c);
      retractUpTo(shortHandle, c.start(), c.p[1], c.p[2]);
      retractUpTo(shortHandle, c.end(), c.p[2], c.p[1]);
    }
    options.tolerance -= moved;
  }

  /// Retracts the handle at an end if it is no longer than a limit, and then the other one, too, if
  /// it is as near to that end.
  void retractUpTo(double limit, internal::Point const& end, internal::Point& handle,
                   internal::Point& other) {
    for (internal::Point* p : {&handle, &other}) {
      double const squared = internal::squaredDistance(end, *p);
      if (squared > limit * limit) return;
      *p = end;
      moved = std::max(moved, std::sqrt(squared));
    }
  }

  /// Makes a segment a straight line, or a point, if it is no larger than a limit.
  void straightenUpTo(double limit, Cubic& c) {
    double size = 0.0;  // squared
    for (internal::Point const& p : c.p) {
      size = std::max(size, internal::squaredDistance(c.start(), p));
    }
    if (size > limit * limit) return;
    double const chord = internal::distance(c.start(), c.end());
    bool const isPoint = chord <= kShortestChord * internal::kRounding;
    c = {{c.p[0], c.p[0], isPoint ? c.p[0] : c.p[3], isPoint ? c.p[0] : c.p[3]}};
    moved = std::max(moved, std::sqrt(size));
  }

  double mirrored(double y) const { return isMirrored ? -y : y; }

  Point toCaller(internal::Point const& p) const { return {p.x * unit, mirrored(p.y * unit)}; }

  Segment toCaller(Cubic const& c) const {
    return {toCaller(c.p[0]), toCaller(c.p[1]), toCaller(c.p[2]), toCaller(c.p[3])};
  }

  Chain curve;
  double distance;
  OffsetOptions options;
  double unit;  // of the frame, in the caller's units
  bool isMirrored;
  double moved = 0.0;  // how far points were moved, at most
};

/// Whether curve, distance and options are usable.
bool isUsable(Chain const& curve, double distance, OffsetOptions const& options) {
  bool const isDistanceUsable = std::fabs(distance) <= internal::kLargestMagnitude;
  return curve.size() > 0 && internal::isUsable(curve.magnitude()) && isDistanceUsable &&
         options.tolerance > 0.0;
}

/// Collects the parallels of a curve.
class ParallelMaker {
 public:
  ParallelMaker(Frame const& frame, RawOutline const& outline, Chain source)
      : frame_(frame),
        outline_(outline),
        source_(std::make_shared<internal::ParallelSource const>(std::move(source))) {}

  using Parts = std::vector<PathPart>;

  void add(Parts parts);
  Offset result();

 private:
  RawSegment const& raw(PathPart const& part) const { return outline_.segments()[part.segment]; }
  void addParallel(Parts const& parts, bool isClosed);
  void noteMove(internal::Point const& end, Cubic const& c, double t);

  Frame const& frame_;
  RawOutline const& outline_;
  std::shared_ptr<internal::ParallelSource const> source_;
  std::vector<std::pair<Place, Piece>> found_;
  double farthestMove_ = 0.0;  // squared, of an end to a place where parallels meet
};

/// Adds the stretches of a closed path that lie on the wanted side.
void ParallelMaker::add(Parts parts) {
  auto const isWanted = [this](PathPart const& part) { return raw(part).isWanted; };
  auto const firstOther = std::find_if_not(parts.begin(), parts.end(), isWanted);
  if (firstOther == parts.end()) {
    auto const lowest =
        std::min_element(parts.begin(), parts.end(), [this](PathPart const& a, PathPart const& b) {
          return isBefore(raw(a).from, raw(b).from);
        });
    std::rotate(parts.begin(), lowest, parts.end());
    return addParallel(parts, true);
  }
  std::rotate(parts.begin(), firstOther, parts.end());
  for (auto i = parts.begin(); i != parts.end();) {
    auto const first = std::find_if(i, parts.end(), isWanted);
    i = std::find_if_not(first, parts.end(), isWanted);
    if (first != i) addParallel(Parts(first, i), false);
  }
}

void ParallelMaker::addParallel(Parts const& parts, bool isClosed) {
  Piece piece;
  std::vector<ParallelOrigin> origins;
  origins.reserve(parts.size());
  for (PathPart const& part : parts) {
    RawSegment const& segment = raw(part);
    piece.curve.getSegments().add(frame_.toCaller(part.c));
    double const from = segment.parameter(part.from), to = segment.parameter(part.to);
    noteMove(part.c.start(), segment.c, part.isBackwards ? to : from);
    noteMove(part.c.end(), segment.c, part.isBackwards ? from : to);
    origins.push_back(
        {segment.kind != RawKind::parallel, segment.from, segment.to, segment.c, from, to});
  }
  piece.curve.setStrictIsClosed(isClosed);
  piece.map = internal::parallelMap(source_, std::move(origins), isClosed);
  found_.push_back({raw(parts.front()).from, std::move(piece)});
}

/// Notes how far an end of a part lies from its place, at t, on a segment of the raw outline:
/// parallels nearer to each other than the resolution of the arrangement meet at one point.
void ParallelMaker::noteMove(internal::Point const& end, Cubic const& c, double t) {
  internal::Point const place = t == 0.0 ? c.start() : t == 1.0 ? c.end() : pointAt(c, t);
  farthestMove_ = std::max(farthestMove_, internal::squaredDistance(end, place));
}

Offset ParallelMaker::result() {
  std::stable_sort(found_.begin(), found_.end(),
                   [](auto const& a, auto const& b) { return isBefore(a.first, b.first); });
  Offset offset;
  for (auto& [place, piece] : found_) offset.parallels.push_back(std::move(piece));
  // All segments count, because a parallel may end at a crossing with a trimmed one, whose error
  // then bounds the error of the distance there.
  double worst = kLeastTolerance * internal::kRounding;
  for (RawSegment const& segment : outline_.segments()) {
    if (segment.hasDistance) worst = std::max(worst, segment.error);
  }
  // Shorter moves are rounding errors.
  double const move = std::sqrt(farthestMove_);
  if (move > kLeastTolerance * internal::kRounding) worst += move;
  offset.worstError = (worst + frame_.moved) * frame_.unit;
  return offset;
}

/// Twice the signed area of a closed curve, without compensation for rounding.
double twiceArea(Chain const& curve) {
  internal::Point const origin = curve.segments[0].start();
  double sum = 0.0;
  for (Cubic const& c : curve.segments) {
    sum += cross(c.start() - origin, c.end() - c.start()) + internal::twiceAreaOverChord(c);
  }
  return sum;
}

}  // namespace

Offset offset(Curve const& curve, double distance, OffsetOptions const& options) {
  Chain chain(curve);
  if (!isUsable(chain, distance, options)) return {};
  if (std::fabs(distance) <= internal::kDefaultResolution * chain.magnitude()) {
    return {{withJoint(curve, Position(0, 0.0))}, std::fabs(distance)};
  }
  Frame frame(std::move(chain), distance, options);
  internal::BoxTree const boxes = internal::boxesOf(frame.curve);
  bool const isAlone = RawOutline::isWhole(frame.curve) && internal::isSimple(frame.curve, boxes);
  RawOutline const outline(frame.curve, frame.distance, frame.options,
                           isAlone ? RawSides::left : RawSides::leftAmongBoth, Cap::round);
  int const outside = isAlone && twiceArea(frame.curve) > 0.0 ? 1 : 0;
  std::vector<Path> paths = internal::trimmed(outline, outside, frame.curve, boxes, frame.distance,
                                              frame.options.tolerance);
  ParallelMaker maker(frame, outline, std::move(frame.curve));
  for (Path& path : paths) maker.add(std::move(path.parts));
  return maker.result();
}

std::vector<Curve> strokeOutline(Curve const& curve, double width, Cap cap,
                                 OffsetOptions const& options) {
  std::vector<Curve> outlines;
  Chain chain(curve);
  bool const isWide = width > internal::kDefaultResolution * chain.magnitude();
  if (!isWide || !isUsable(chain, 0.5 * width, options)) return outlines;
  Frame const frame(std::move(chain), 0.5 * width, options);
  RawOutline const outline(frame.curve, frame.distance, frame.options, RawSides::both, cap);
  for (Path const& path : internal::trimmed(outline, 0, frame.curve, internal::boxesOf(frame.curve),
                                            frame.distance, frame.options.tolerance)) {
    // The path has the stroke on its right, so it is reversed.
    Curve turned;
    for (PathPart const& part : path.parts) {
      Segment const s = frame.toCaller(part.c);
      turned.getSegments().insert({s[3], s[2], s[1], s[0]}, 0);
    }
    turned.setStrictIsClosed(true);
    outlines.push_back(std::move(turned));
  }
  return outlines;
}

}  // namespace crv
