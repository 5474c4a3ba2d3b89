#include "crv/accurate/internal/spanMap.h"

#include "crv/accurate/internal/chain.h"

#include <algorithm>
#include <utility>

namespace crv::internal {

namespace {

/// The place of a position on a curve of n segments; the seam becomes the start.
std::optional<Place> placeOn(std::size_t n, bool isClosed, Position const& position) {
  std::optional<Place> const place = placeAmong(n, position);
  return place && isClosed && place->t == 1.0 ? Place{0, 0.0} : place;
}

class SpanMap : public GxBezierCurvePositionMapBase {
 public:
  explicit SpanMap(Spans spans) : spans_(std::move(spans)), segments_(spans_.order.size()) {
    for (std::size_t i = 0; i < segments_.size(); ++i) segments_[spans_.order[i]] = i;
  }

  int mapPosition(Position& out, Position const& in) const override {
    std::optional<Place> const place = placeOn(spans_.sourceSize, spans_.isSourceClosed, in);
    if (!place) return -1;
    if (mapPlace(out, place->segment, place->t)) return 0;
    return place->t == 0.0 && mapEndBefore(out, place->segment) ? 0 : -1;
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    std::optional<Place> const place = placeOn(size(), spans_.isResultClosed, in);
    if (!place) return -1;
    Span const& span = spans_.parts[partOf(place->segment)];
    double const share = spans_.isBackwards ? 1.0 - place->t : place->t;
    double t = std::min(span.from + share * (span.to - span.from), span.to);
    if (share == 1.0) t = span.to;
    std::size_t const segment = span.segment % spans_.sourceSize;
    out = named(segment, t, spans_.sourceSize, spans_.isSourceClosed, span.joinsNext);
    return 0;
  }

 private:
  std::size_t size() const { return spans_.parts.size(); }

  std::size_t partOf(std::size_t segment) const {
    if (!spans_.order.empty()) return spans_.order[segment];
    return spans_.isBackwards ? size() - 1 - segment : segment;
  }

  std::size_t segmentOf(std::size_t part) const {
    if (!segments_.empty()) return segments_[part];
    return spans_.isBackwards ? size() - 1 - part : part;
  }

  /// Maps t of a source segment, with the segment's number before the seam or the one after it.
  bool mapPlace(Position& out, std::size_t segment, double t) const {
    return mapNumbered(out, segment, t) || mapNumbered(out, segment + spans_.sourceSize, t);
  }

  /// Maps the start of a segment as the end of the one before it, if the two join.
  bool mapEndBefore(Position& out, std::size_t segment) const {
    if (segment == 0 && !spans_.isSourceClosed) return false;
    std::size_t const before = (segment == 0 ? spans_.sourceSize : segment) - 1;
    return mapPlace(out, before, 1.0);
  }

  bool mapNumbered(Position& out, std::size_t segment, double t) const {
    auto const isBefore = [](Span const& span, std::size_t n) { return span.segment < n; };
    auto const& parts = spans_.parts;
    auto const end = parts.end();
    for (auto i = std::lower_bound(parts.begin(), end, segment, isBefore);
         i != end && i->segment == segment; ++i) {
      if (!(i->from <= t && t <= i->to)) continue;
      bool const isEndBeforeGap = t == 1.0 && !i->joinsNext && !isSourceEnd(*i);
      if (isEndBeforeGap) return false;
      out = onResult(static_cast<std::size_t>(i - parts.begin()), t);
      return true;
    }
    return false;
  }

  bool isSourceEnd(Span const& span) const {
    return !spans_.isSourceClosed && span.segment + 1 == spans_.sourceSize;
  }

  Position onResult(std::size_t part, double t) const {
    Span const& span = spans_.parts[part];
    double share = 0.0;
    if (t == span.to && span.to != span.from) {
      share = 1.0;
    } else if (t != span.from) {
      share = (t - span.from) / (span.to - span.from);
    }
    std::size_t const segment = segmentOf(part);
    if (!spans_.isBackwards) {
      return named(segment, share, size(), spans_.isResultClosed, span.joinsNext);
    }
    std::size_t const next = part == 0 ? size() - 1 : part - 1;
    bool const joinsNext = spans_.parts[next].joinsNext;
    return named(segment, 1.0 - share, size(), spans_.isResultClosed, joinsNext);
  }

  /// The position of t on a segment of a curve of n segments; joinsNext tells whether its end is
  /// the start of the next segment.
  static Position named(std::size_t segment, double t, std::size_t n, bool isClosed,
                        bool joinsNext) {
    bool const isOpenEnd = segment + 1 == n && !isClosed;
    if (t == 1.0 && !isOpenEnd && !joinsNext) t = kLastParameter;
    bool const isSeam = t == 1.0 && segment + 1 == n && isClosed;
    return isSeam ? Position(0, 0.0) : Position(static_cast<int>(segment), t);
  }

  Spans spans_;
  std::vector<std::size_t> segments_;  // by part: its segment of the result; empty if order is
};

}  // namespace

Map spanMap(Spans spans) { return new SpanMap(std::move(spans)); }

}  // namespace crv::internal
