// The parallels of a whole curve as closed chains, before anything is trimmed away.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/segmentParallel.h"
#include "crv/accurate/internal/smoothParts.h"
#include "crv/accurate/offset.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// What a segment of a raw outline is.
enum class RawKind {
  parallel,
  join,  // or a cap
  link,  // a line across what the distance reaches
};

/// A segment of a raw outline.
struct RawSegment {
  Cubic c;
  RawKind kind;
  bool isWanted;     // on the left of the curve itself
  bool hasDistance;  // not of a miter, a bevel, a flat cap or a link
  Place from, to;    // the stretch of the curve that it grew from, or its joint from both sides
  std::size_t next;  // the number of the segment that follows
  double error;      // how far the distance is off at most
};

/// Which sides of a curve a raw outline has.
enum class RawSides {
  left,           // that of a closed curve
  leftAmongBoth,  // both, with round joins on the right
  both,
};

/// Closed chains that have the places farther from a curve than a distance on their left, and what
/// is nearer on their right. They meet and overlap, and have stretches that are too near.
class RawOutline {
 public:
  /// Of a chain whose coordinates are of the order of 1, as are the distance, which is above 0, and
  /// the tolerance of the options. Open ends have caps.
  RawOutline(Chain const& curve, double distance, OffsetOptions const& options, RawSides sides,
             Cap cap);

  /// Whether a curve is closed without gaps.
  static bool isWhole(Chain const& curve);

  std::vector<RawSegment> const& segments() const { return segments_; }

 private:
  struct Turn;
  using Parts = std::vector<SmoothPart>;

  void addRun(Chain const& curve, std::size_t first, std::size_t count, bool isClosed);
  void addSide(Parts const& parts, bool isClosed, bool isWanted);
  Turn turnBetween(SmoothPart const& before, SmoothPart const& behind) const;
  void addTurn(Turn const& turn, bool isWanted);
  void addPart(SmoothPart const& part, Point const& from, Point const& to, bool isWanted);
  void addCap(Point const& end, Point const& direction);
  void addJoin(std::optional<double> error, bool isWanted, Place const& from, Place const& to);
  void goTo(Point const& p, bool isWanted, Place const& from, Place const& to);
  void add(RawSegment const& segment);
  void closeFrom(std::size_t first);

  double distance_;
  OffsetOptions options_;
  RawSides sides_;
  Cap cap_;
  Point pen_{};
  std::vector<ParallelPiece> pieces_;  // of the part that is added
  std::vector<Cubic> join_;            // the one that is added
  std::vector<RawSegment> segments_;
};

}  // namespace crv::internal
