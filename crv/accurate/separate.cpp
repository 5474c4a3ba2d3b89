// The passes of a curve through its crossings are linked anew; each cycle of links is a loop.
#include "crv/accurate/separate.h"

#include "crv/accurate/direction.h"
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/chainMeetings.h"
#include "crv/accurate/internal/crossingLinks.h"
#include "crv/accurate/internal/spanMap.h"
#include "crv/accurate/internal/unitScale.h"

#include <algorithm>
#include <utility>

namespace crv {

namespace {

using internal::Chain;
using internal::Cubic;
using internal::Pass;
using internal::Place;
using internal::Span;
using internal::Spans;

bool isBefore(Span const& a, Span const& b) {
  return a.segment != b.segment ? a.segment < b.segment : a.from < b.from;
}

/// A curve and its passes through its crossings. Stretch i of the curve ends at pass i, and stretch
/// i + 1 begins there; the first stretch begins at the curve's start, and the last one ends at its
/// end.
class Separation {
 public:
  Separation(Chain const& chain, std::vector<Pass> passes)
      : chain_(chain),
        magnitude_(chain.magnitude()),
        passes_(std::move(passes)),
        isTaken_(passes_.size() + 1, 0) {}

  Separated pieces();

 private:
  struct Part {
    Span span;
    Cubic c;
  };

  Piece pieceFrom(std::size_t start, bool isClosed);
  void addStretch(std::vector<Part>& parts, std::size_t stretch) const;
  Piece piece(std::vector<Part> const& parts, bool isClosed) const;

  Chain const& chain_;
  double const magnitude_;
  std::vector<Pass> passes_;
  std::vector<char> isTaken_;  // by stretch
};

/// Appends the segments of a stretch, its ends moved onto the points of their passes.
void Separation::addStretch(std::vector<Part>& parts, std::size_t stretch) const {
  bool const isFirst = stretch == 0, isLast = stretch == passes_.size();
  Place const from = isFirst ? Place{0, 0.0} : passes_[stretch - 1].place;
  Place const to = isLast ? Place{chain_.size() - 1, 1.0} : passes_[stretch].place;
  std::size_t const begin = parts.size();
  for (std::size_t i = from.segment; i <= to.segment; ++i) {
    double const t0 = i == from.segment ? from.t : 0.0, t1 = i == to.segment ? to.t : 1.0;
    if (!(t0 < t1)) continue;
    bool const joinsNext = t1 < 1.0 || !chain_.hasGapBehind(i, magnitude_);
    parts.push_back({{i, t0, t1, joinsNext}, internal::part(chain_.segments[i], t0, t1)});
  }
  if (parts.size() == begin) return;
  Cubic &head = parts[begin].c, &tail = parts.back().c;
  if (!isFirst) head = withEnds(head, passes_[stretch - 1].point, head.end());
  if (!isLast) tail = withEnds(tail, tail.start(), passes_[stretch].point);
}

Piece Separation::piece(std::vector<Part> const& parts, bool isClosed) const {
  Piece piece;
  Spans spans = {{}, {}, chain_.size(), chain_.closed, isClosed, false};
  std::vector<std::pair<Span, std::size_t>> sorted;
  for (Part const& part : parts) {
    piece.curve.getSegments().add(internal::segment(part.c));
    sorted.push_back({part.span, sorted.size()});
  }
  piece.curve.setStrictIsClosed(isClosed);
  std::sort(sorted.begin(), sorted.end(),
            [](auto const& p, auto const& q) { return isBefore(p.first, q.first); });
  spans.order.resize(sorted.size());
  for (auto const& [span, segment] : sorted) {
    spans.order[segment] = spans.parts.size();
    spans.parts.push_back(span);
  }
  piece.map = internal::spanMap(std::move(spans));
  return piece;
}

/// The piece that begins with a stretch.
Piece Separation::pieceFrom(std::size_t start, bool isClosed) {
  std::vector<Part> parts;
  std::size_t stretch = start;
  do {
    isTaken_[stretch] = 1;
    addStretch(parts, stretch);
    stretch = stretch == passes_.size() ? 0 : passes_[stretch].next + 1;
  } while (stretch != start && !isTaken_[stretch]);
  return piece(parts, isClosed);
}

Separated Separation::pieces() {
  Separated result;
  for (std::size_t i = 0; i <= passes_.size(); ++i) {
    if (isTaken_[i]) continue;
    bool const isRest = i == 0 && !chain_.closed;
    Piece piece = pieceFrom(i, !isRest);
    if (isRest) {
      result.rests.push_back(std::move(piece));
    } else {
      bool const clockwise = isClockwise(piece.curve);
      result.loops.push_back({std::move(piece), clockwise});
    }
  }
  return result;
}

Separated separated(Chain const& chain, double resolution) {
  double const magnitude = chain.magnitude();
  if (chain.size() == 0 || !internal::isUsable(magnitude)) return {};
  internal::UnitScale const scale(magnitude, resolution);
  double const margin = scale.resolution / scale.factor;
  internal::ChainMeetings const found = internal::findSelfMeetings(
      chain, internal::boxTree(chain, margin), internal::boxTree(chain, 0.0), scale);
  return Separation(chain, internal::linkCrossings(chain, found, scale)).pieces();
}

int append(Separated const& separated, GxList<GxBezierCurve>& pieces) {
  for (Loop const& loop : separated.loops) pieces.add(loop.piece.curve);
  for (Piece const& rest : separated.rests) pieces.add(rest.curve);
  return static_cast<int>(separated.loops.size() + separated.rests.size());
}

}  // namespace

Separated separate(Curve const& curve, double resolution) {
  return separated(Chain(curve), resolution);
}

}  // namespace crv

int seperateSelfIntersections(GxBezierCurve const& curve, GxList<GxBezierCurve>& pieces) {
  return curve.length() == 0 ? -1 : crv::append(crv::separate(curve), pieces);
}

int seperateSelfIntersectionsForOpenCurve(GxBezierCurve const& curve,
                                          GxList<GxBezierCurve>& pieces) {
  if (curve.length() == 0) return -1;
  crv::internal::Chain chain(curve);
  chain.closed = false;
  return crv::append(crv::separated(chain, 0.0), pieces);
}
