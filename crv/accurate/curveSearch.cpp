#include "crv/accurate/curveSearch.h"

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/lineContacts.h"
#include "crv/curve/internal/boxTree.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace crv {

using internal::Foot;
using internal::kEnlargement;
using internal::Minima;

namespace {

// Bounds the amount by which a computed squared distance of a point may be less than that of a box
// around the point: relative to the squared distance, and to the square of the largest coordinate.
constexpr double kShortfall = 0x1p-30;
constexpr double kShortfallOfSize = 0x1p-60;

// Rounding may move a minimum at a joint into a segment. A minimum inside a segment counts as the
// joint if its parameter differs from that of the joint by less than kAtJoint, and its distance
// from the joint is at most kJointRadius times the largest coordinate.
constexpr double kAtJoint = 0x1p-20;
constexpr double kJointRadius = 0x1p-46;

// Relative to the largest coordinate: a minimum that is nearer to the query than the joint by more
// than this is a minimum of its own, because rounding errors of distances are smaller.
constexpr double kJointNoise = 4 * internal::kRounding;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<internal::Box> boxesOf(internal::Chain const& chain) {
  std::vector<internal::Box> boxes;
  boxes.reserve(chain.size());
  for (internal::Cubic const& cubic : chain.segments) boxes.push_back(cubic.hull());
  return boxes;
}

}  // namespace

struct CurveSearch::Table {
  explicit Table(internal::Chain const& given)
      : chain(given), tree(boxesOf(chain)), magnitude(chain.magnitude()) {
    if (!internal::isTiny(magnitude)) return;
    internal::Chain larger = chain;
    for (internal::Cubic& c : larger.segments) c = internal::scaled(c, kEnlargement);
    enlarged = std::make_unique<Table const>(larger);
  }

  std::optional<NearestOnCurve> nearest(Point const& p) const;
  std::vector<NearestOnCurve> within(Point const& p, double distance) const;

  /// Whether squares would underflow, so that the enlarged table has to be used.
  bool isTiny(double size) const {
    return enlarged != nullptr && size < internal::kSmallestUnscaled;
  }
  static Point enlargedPoint(Point const& p) {
    return Point(p.xval() * kEnlargement, p.yval() * kEnlargement);
  }
  static NearestOnCurve reduced(NearestOnCurve const& found) {
    return {found.position,
            Point(found.point.xval() / kEnlargement, found.point.yval() / kEnlargement),
            found.distance / kEnlargement};
  }

  /// The largest coordinate of curve and point; NaN if they are unusable.
  double usableMagnitude(internal::Point const& p) const {
    internal::Magnitude all;
    all.add(magnitude);
    all.add(p);
    bool const isUsable = chain.size() > 0 && internal::isUsable(all.value());
    return isUsable ? all.value() : std::numeric_limits<double>::quiet_NaN();
  }

  static double widened(double squaredDistance, double magnitude) {
    return squaredDistance + kShortfall * squaredDistance +
           kShortfallOfSize * magnitude * magnitude;
  }

  NearestOnCurve at(std::size_t segment, Foot const& foot, internal::Point const& p) const {
    internal::Point const place = internal::placeOf(foot, chain.segments[segment], p);
    return {chain.positionOn(segment, foot.t, magnitude), Point(place.x, place.y),
            std::sqrt(foot.squaredDistance)};
  }

  internal::Chain chain;
  internal::BoxTree tree;
  double magnitude;
  std::unique_ptr<Table const> enlarged;  // of the same curve, if it is tiny
};

namespace {

/// Collects the local minima along a chain, inside its segments and at its joints.
class MinimaAlong {
 public:
  MinimaAlong(internal::Chain const& chain, internal::Point const& p, double limit,
              double magnitude)
      : chain_(chain),
        p_(p),
        limit_(limit),
        squaredRadius_(kJointRadius * magnitude * kJointRadius * magnitude),
        noise_(kJointNoise * magnitude) {}

  /// Must be called for segments in ascending order. Segments that are not added are farther than
  /// the limit.
  void add(std::size_t segment) {
    entries_.push_back({segment, internal::localMinima(chain_.segments[segment], p_, limit_)});
  }

  /// Calls report(segment, foot) for each minimum, in ascending order of positions.
  template <class Report>
  void run(Report const& report) const {
    long const n = static_cast<long>(chain_.size());
    if (chain_.closed && (minimaOf(0) != nullptr || minimaOf(n - 1) != nullptr)) {
      reportJoint(n, report);
    }
    for (Entry const& entry : entries_) {
      long const k = static_cast<long>(entry.segment);
      if (k > 0 || !chain_.closed) reportJoint(k, report);
      for (Foot const& foot : entry.minima.inside) {
        if (!isAt(footAt(k, 0.0), foot) && !isAt(footAt(k, 1.0), foot)) report(entry.segment, foot);
      }
      // Behind a gap the next segment may be farther away than the limit, so that it has no minima.
      bool const isLast = k == n - 1;
      if (isLast ? !chain_.closed : minimaOf(k + 1) == nullptr) reportJoint(k + 1, report);
    }
  }

 private:
  struct Entry {
    std::size_t segment;
    Minima minima;
  };

  /// The number of an existing segment, around the seam of a closed curve; -1 where there is none.
  long existing(long k) const {
    long const n = static_cast<long>(chain_.size());
    if (chain_.closed) return (k + n) % n;
    return k < n ? k : -1;
  }

  Minima const* minimaOf(long k) const {
    auto const isBefore = [](Entry const& entry, long segment) {
      return static_cast<long>(entry.segment) < segment;
    };
    auto const found = std::lower_bound(entries_.begin(), entries_.end(), k, isBefore);
    bool const isThere = found != entries_.end() && static_cast<long>(found->segment) == k;
    return isThere ? &found->minima : nullptr;
  }

  Foot footAt(long k, double t) const {
    internal::Cubic const& c = chain_.segments[static_cast<std::size_t>(k)];
    internal::Point const offset = (t == 0.0 ? c.start() : c.end()) - p_;
    return {t, offset, dot(offset, offset)};
  }

  /// The slope of the distance behind the start of segment k or, with step -1, before its end;
  /// segments that are one point are skipped. 1 means rising along the curve, -1 falling, and 0
  /// that the curve ends or has a gap.
  int slope(long k, long step) const {
    long last = -1;
    for (std::size_t count = 0; count < chain_.size(); ++count, k += step) {
      k = existing(k);
      Minima const* minima = k >= 0 ? minimaOf(k) : nullptr;
      if (minima == nullptr) return 0;
      Foot const joint = footAt(k, step > 0 ? 0.0 : 1.0);
      if (last >= 0 && !isNear(footAt(last, 0.0), joint)) return 0;
      last = k;
      // A minimum beside the joint is the joint, moved by rounding, or is reported instead of it.
      if (!minima->inside.empty()) {
        Foot const& next = step > 0 ? minima->inside.front() : minima->inside.back();
        if (isBeside(joint, next)) return static_cast<int>(isAt(joint, next) ? step : -step);
      }
      int const slope = step > 0 ? minima->slopeAtStart : minima->slopeAtEnd;
      if (slope != 0) return slope;
    }
    return 0;
  }

  bool isNear(Foot const& a, Foot const& b) const {
    return internal::dot(a.offset - b.offset, a.offset - b.offset) <= squaredRadius_;
  }
  bool isBeside(Foot const& end, Foot const& foot) const {
    return std::fabs(foot.t - end.t) < kAtJoint && isNear(foot, end);
  }
  /// Whether a minimum inside a segment is taken as one at an end of the segment.
  bool isAt(Foot const& end, Foot const& foot) const {
    return isBeside(end, foot) &&
           std::sqrt(end.squaredDistance) - std::sqrt(foot.squaredDistance) <= noise_;
  }

  /// Reports the joint between the segments j - 1 and j, or an end of an open curve, if it is a
  /// minimum. A gap counts as two ends.
  template <class Report>
  void reportJoint(long j, Report const& report) const {
    long const before = existing(j - 1);
    long const behind = existing(j);
    Minima const* arrival = before >= 0 ? minimaOf(before) : nullptr;
    Minima const* departure = behind >= 0 ? minimaOf(behind) : nullptr;
    bool const arrives = arrival != nullptr && slope(before, -1) <= 0;
    bool const departs = departure != nullptr && slope(behind, 1) >= 0;
    // A segment that is one point is reported with the joint at its start. If all segments are one
    // point, the seam is reported.
    bool const isPoint = arrival != nullptr && arrival->slopeAtEnd == 0;
    if (!areJoined(before, behind)) {
      reportGap(before, arrives && !isPoint, behind, departs, report);
      return;
    }
    bool const isFirst = !isPoint || (behind == 0 && slope(0, 1) == 0);
    if (isFirst && arrives && departs) reportUpTo(behind, footAt(behind, 0.0), report);
  }

  bool areJoined(long before, long behind) const {
    return before >= 0 && behind >= 0 && isNear(footAt(before, 1.0), footAt(behind, 0.0));
  }

  /// Reports the nearer one of the two ends at a gap, if it is a minimum.
  template <class Report>
  void reportGap(long before, bool isMinimumBefore, long behind, bool isMinimumBehind,
                 Report const& report) const {
    double const atEnd = isMinimumBefore ? footAt(before, 1.0).squaredDistance : kInfinity;
    double const atStart = isMinimumBehind ? footAt(behind, 0.0).squaredDistance : kInfinity;
    if (isMinimumBehind && atStart <= atEnd) reportUpTo(behind, footAt(behind, 0.0), report);
    if (atEnd < atStart) reportUpTo(before, footAt(before, 1.0), report);
  }

  template <class Report>
  void reportUpTo(long k, Foot const& foot, Report const& report) const {
    if (foot.squaredDistance <= limit_) report(static_cast<std::size_t>(k), foot);
  }

  internal::Chain const& chain_;
  internal::Point p_;
  double limit_;
  double squaredRadius_;
  double noise_;
  std::vector<Entry> entries_;
};

}  // namespace

std::optional<NearestOnCurve> CurveSearch::Table::nearest(Point const& p) const {
  internal::Point const from = internal::plain(p);
  double const size = usableMagnitude(from);
  if (size != size) return std::nullopt;
  if (isTiny(size)) return reduced(*enlarged->nearest(enlargedPoint(p)));
  std::size_t nearestSegment = chain.size();
  Foot best = {0.0, {0.0, 0.0}, kInfinity};
  tree.visitNear(from, kInfinity, [&](std::size_t segment, double) {
    double const limit = widened(best.squaredDistance, size);
    Foot const foot = internal::nearestFoot(chain.segments[segment], from, limit);
    bool const isFirst =
        segment < nearestSegment && !internal::isNearer(best.squaredDistance, foot.squaredDistance);
    if (isFirst || internal::isNearer(foot.squaredDistance, best.squaredDistance)) {
      nearestSegment = segment;
      best = foot;
    }
    return widened(best.squaredDistance, size);
  });
  return at(nearestSegment, best, from);
}

std::vector<NearestOnCurve> CurveSearch::Table::within(Point const& p, double distance) const {
  std::vector<NearestOnCurve> found;
  internal::Point const from = internal::plain(p);
  double const size = usableMagnitude(from);
  if (size != size || !(distance >= 0.0)) return found;
  if (isTiny(size)) {
    found = enlarged->within(enlargedPoint(p), distance * kEnlargement);
    for (NearestOnCurve& minimum : found) minimum = reduced(minimum);
    return found;
  }
  double const limit = distance * distance;
  double const reach = widened(limit, size);
  MinimaAlong minima(chain, from, limit, size);
  bool areSomeNear = false;
  tree.visit(
      [&](internal::Box const& box) { return internal::squaredDistance(box, from) <= reach; },
      [&](std::size_t segment) {
        areSomeNear = true;
        minima.add(segment);
      });
  minima.run(
      [&](std::size_t segment, Foot const& foot) { found.push_back(at(segment, foot, from)); });
  // The search starts at the seam; if there is a gap, it finds the end before the gap first,
  // although that is the last position.
  if (found.size() > 1 && found[1].position < found[0].position) {
    std::rotate(found.begin(), found.begin() + 1, found.end());
  }
  if (found.empty() && areSomeNear) {
    // On a curve no larger than rounding errors no minimum may be found.
    NearestOnCurve const best = *nearest(p);
    if (best.distance <= distance) found.push_back(best);
  }
  return found;
}

CurveSearch::CurveSearch(Curve const& curve)
    : table_(std::make_shared<Table const>(internal::Chain(curve))) {}

std::optional<NearestOnCurve> CurveSearch::nearest(Point const& p) const {
  return table_->nearest(p);
}

std::vector<NearestOnCurve> CurveSearch::within(Point const& p, double distance) const {
  return table_->within(p, distance);
}

std::vector<LineContact> CurveSearch::contacts(Point const& a, Point const& b) const {
  return internal::lineContacts(table_->chain, table_->tree, table_->magnitude, a, b, 0.0);
}

}  // namespace crv
