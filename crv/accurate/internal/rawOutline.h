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

/// The kind of a segment of a raw outline.
enum class RawKind {
  parallel,
  join,  // or a cap
  link,  // a line between ends that are nearer to the curve than the distance, or the boundary of
         // what a pen passes over where its end runs backwards
};

/// A segment of a raw outline.
struct RawSegment {
  Cubic c;
  RawKind kind;
  bool isWanted;              // it lies on the left of the curve
  bool hasDistance;           // false for miters, bevels, flat caps and links
  Place from, to;             // its stretch of the curve, or both sides of its joint
  std::size_t next;           // the number of the segment that follows
  double error;               // bounds the error of the distance
  double s0 = 0.0, s1 = 1.0;  // the part of c that belongs to the outline

  /// The parameter of c, given that of the part.
  double parameter(double s) const { return s == 1.0 ? s1 : s0 + (s1 - s0) * s; }
};

/// The sides of a curve that a raw outline contains.
enum class RawSides {
  left,           // only the left side, of a closed curve
  leftAmongBoth,  // both, with round joins on the right
  both,
};

/// Closed chains with the points farther from a curve than a distance on their left, and those
/// nearer on their right. They may cross and overlap, and contain stretches that are too near to
/// the curve. Most loops at inner corners, which would only be trimmed away, are left out.
///
/// Where all joins and caps are round, a point is near if it is within the distance. Otherwise the
/// outline is swept: a point is near if a straight pen held across the curve passes over it, or a
/// join or a cap contains it. The chains then pass through the joint on the inner side of a turn.
/// Where an end of the pen runs backwards they follow the centres of curvature, about which the pen
/// turns there, and what it passes over beyond these has a chain of its own.
class RawOutline {
 public:
  /// Makes the outline of a curve. Its coordinates are of the order of 1; distance, which is above
  /// 0, and the tolerance of the options are in the same units. Open ends get caps.
  RawOutline(Chain const& curve, double distance, OffsetOptions const& options, RawSides sides,
             Cap cap);

  /// Whether a curve is closed without gaps.
  static bool isWhole(Chain const& curve);

  std::vector<RawSegment> const& segments() const { return segments_; }
  bool isSwept() const { return isSwept_; }

 private:
  struct Turn;
  using Parts = std::vector<SmoothPart>;

  void addRun(Chain const& curve, std::size_t first, std::size_t count, bool isClosed);
  void addSide(Parts const& parts, bool isClosed, bool isWanted);
  Turn turnBetween(SmoothPart const& before, SmoothPart const& behind) const;
  void addTurn(Turn const& turn, bool isWanted);
  void cutLoop(std::size_t link);
  void addPart(SmoothPart const& part, Point const& from, Point const& to, bool isWanted);
  void addReversed(ReversedStretch const& stretch, SmoothPart const& part, bool isWanted);
  void addBackward();
  void addCap(Point const& end, Point const& direction);
  void addJoin(std::optional<double> error, bool isWanted, Place const& from, Place const& to);
  void goTo(Point const& p, bool isWanted, Place const& from, Place const& to);
  void add(RawSegment const& segment);
  void closeFrom(std::size_t first);

  double magnitude_;  // of the curve
  double distance_;
  OffsetOptions options_;
  RawSides sides_;
  Cap cap_;
  bool isSwept_ = false;
  Point pen_{};
  std::size_t innerLink_ = 0;              // the last link at an inner corner, by number
  std::vector<ParallelPiece> pieces_;      // of the part that is added
  std::vector<ReversedStretch> reversed_;  // of the part that is added
  std::vector<RawSegment> backward_;       // chains of what the pen passes over backwards
  std::vector<Cubic> join_;                // the one that is added
  std::vector<RawSegment> segments_;
};

}  // namespace crv::internal
