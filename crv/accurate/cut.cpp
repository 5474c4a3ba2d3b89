#include "crv/accurate/cut.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/spanMap.h"
#include "crv/bezier/internal/cubic.h"

#include <algorithm>
#include <utility>

namespace crv {

namespace {

using internal::Chain;
using internal::Cubic;
using internal::Place;
using internal::Span;
using internal::Spans;

// In units of u S: neighbouring segments are joined if their ends differ by at most this in each
// coordinate.
constexpr double kJoinedRoundings = 16.0;

/// A curve that is to be edited. The places on it have t below 1; the end of an open curve of n
/// segments is (n, 0).
class Source {
 public:
  explicit Source(Curve const& curve) : chain_(curve), magnitude_(chain_.magnitude()) {}

  bool isUsable() const { return size() != 0 && internal::isUsable(magnitude_); }
  bool isClosed() const { return chain_.closed; }
  std::size_t size() const { return chain_.size(); }

  Place start() const { return {0, 0.0}; }
  Place end() const { return isClosed() ? start() : Place{size(), 0.0}; }

  /// The place of a position; the seam is the start. Nothing for a position off the curve.
  std::optional<Place> placeOf(Position const& position) const {
    std::optional<Place> const place = chain_.placeOf(position);
    return place && place->t == 1.0 ? end() : place;
  }

  /// The part from a to b. On a closed curve it crosses the seam if a is not before b; on an open
  /// one a must be before b.
  Spans between(Place const& a, Place const& b) const {
    Spans spans = noSpans();
    bool const isWithin = a.segment == b.segment && a.t < b.t;
    add(spans, a.segment, a.t, isWithin ? b.t : 1.0);
    if (isWithin) return spans;
    std::size_t const last = isBefore(a, b) ? b.segment : b.segment + size();
    for (std::size_t k = a.segment + 1; k < last; ++k) add(spans, k, 0.0, 1.0);
    if (b.t > 0.0) add(spans, last, 0.0, b.t);
    return spans;
  }

  /// One segment that is the point at a place.
  Spans pointAt(Place const& place) const {
    Spans spans = noSpans();
    bool const isEnd = place.segment == size();
    double const t = isEnd ? 1.0 : place.t;
    add(spans, isEnd ? size() - 1 : place.segment, t, t);
    return spans;
  }

  Spans noSpans() const { return {{}, {}, size(), isClosed(), false, false}; }

  Piece piece(Spans spans) const {
    Piece piece;
    for (Span const& span : spans.parts) add(piece.curve, span, spans.isBackwards);
    piece.curve.setStrictIsClosed(spans.isResultClosed);
    piece.map = internal::spanMap(std::move(spans));
    return piece;
  }

 private:
  void add(Spans& spans, std::size_t segment, double from, double to) const {
    spans.parts.push_back({segment, from, to, to < 1.0 || joinsNext(segment % size())});
  }

  bool joinsNext(std::size_t segment) const {
    internal::Point const gap =
        chain_.segments[segment].end() - chain_.segments[(segment + 1) % size()].start();
    double const tolerance = kJoinedRoundings * internal::kRounding * magnitude_;
    return std::fabs(gap.x) <= tolerance && std::fabs(gap.y) <= tolerance;
  }

  void add(Curve& curve, Span const& span, bool isBackwards) const {
    Cubic const& whole = chain_.segments[span.segment % size()];
    Cubic const c = internal::part(whole, span.from, span.to);
    if (isBackwards) {
      curve.getSegments().insert(internal::segment(internal::reversed(c)), 0);
    } else {
      curve.getSegments().add(internal::segment(c));
    }
  }

  Chain chain_;
  double magnitude_;
};

Piece emptyPiece() { return {Curve(), internal::spanMap(Spans())}; }

/// The cuts that count, ascending.
std::vector<Place> placesOf(Source const& source, std::vector<Position> const& cuts) {
  std::vector<Place> places;
  for (Position const& position : cuts) {
    std::optional<Place> const place = source.placeOf(position);
    bool const isEnd =
        place && (areEqual(*place, source.start()) || areEqual(*place, source.end()));
    if (place && (source.isClosed() || !isEnd)) places.push_back(*place);
  }
  std::sort(places.begin(), places.end(), internal::isBefore);
  auto const areEqualPlaces = [](Place const& p, Place const& q) { return areEqual(p, q); };
  places.erase(std::unique(places.begin(), places.end(), areEqualPlaces), places.end());
  return places;
}

}  // namespace

std::vector<Piece> cut(Curve const& curve, std::vector<Position> const& cuts) {
  Source const source(curve);
  std::vector<Piece> pieces;
  if (!source.isUsable()) return pieces;
  std::vector<Place> places = placesOf(source, cuts);
  if (!source.isClosed()) {
    places.insert(places.begin(), source.start());
    places.push_back(source.end());
  } else {
    if (places.empty()) places.push_back(source.start());
    places.push_back(places.front());
  }
  pieces.reserve(places.size() - 1);
  for (std::size_t i = 0; i + 1 < places.size(); ++i) {
    pieces.push_back(source.piece(source.between(places[i], places[i + 1])));
  }
  return pieces;
}

Piece withJoint(Curve const& curve, Position const& position) {
  Source const source(curve);
  if (!source.isUsable()) return emptyPiece();
  Spans spans = source.between(source.start(), source.end());
  std::optional<Place> const place = source.placeOf(position);
  if (place && place->t > 0.0) {
    Spans after = source.between(*place, source.end());
    spans = source.between(source.start(), *place);
    spans.parts.insert(spans.parts.end(), after.parts.begin(), after.parts.end());
  }
  spans.isResultClosed = source.isClosed();
  return source.piece(std::move(spans));
}

Piece stretch(Curve const& curve, Position const& from, Position const& to, bool forward) {
  Source const source(curve);
  if (!source.isUsable()) return emptyPiece();
  std::optional<Place> const start = source.placeOf(forward ? from : to);
  std::optional<Place> const end = source.placeOf(forward ? to : from);
  if (!start || !end) return emptyPiece();
  bool const isPoint = !source.isClosed() && areEqual(*start, *end);
  bool const leads = source.isClosed() || isPoint || isBefore(*start, *end);
  if (!leads) return emptyPiece();
  Spans spans = isPoint ? source.pointAt(*start) : source.between(*start, *end);
  spans.isBackwards = !forward;
  return source.piece(std::move(spans));
}

Piece reversed(Curve const& curve) {
  Source const source(curve);
  if (!source.isUsable()) return emptyPiece();
  Spans spans = source.between(source.start(), source.end());
  spans.isBackwards = true;
  spans.isResultClosed = source.isClosed();
  return source.piece(std::move(spans));
}

}  // namespace crv
