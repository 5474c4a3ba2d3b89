// The plane as a set of curves divides it: where they meet, how they turn there, and how often they
// wind around each face.
//
// An operation on outlines takes these steps:
//
//   std::vector<ArrangedSegment> segments = ...;       // closed outlines: next leads around
//   Arrangement const plane(std::move(segments), 0.0);  // 0: the default resolution
//   std::vector<signed char> kept(plane.edges().size());
//   for (i ...) kept[i] = ...;                          // by plane.edges()[i].left and .right
//   for (Path const& path : plane.paths(kept)) ...      // what remains, as parts of the segments
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/planeGraph.h"
#include "crv/accurate/internal/trails.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// A part of a segment as it runs in a result.
struct PathPart {
  std::size_t segment;
  double from, to;   // from < to
  bool isBackwards;  // it runs from `to` to `from`
  Cubic c;           // in the scale of the input, as it runs; parts join to the bit
};

struct Path {
  std::vector<PathPart> parts;
  bool isClosed;
};

/// All segments cut where they meet. Places that are nearer to each other than the resolution are
/// one node, and stretches that are as near are one edge.
///
/// Winding numbers are those of closed curves; where the segments of a group do not close, those of
/// the group mean nothing. They are found without sample points (but see windings.h): the turns at
/// the nodes give the faces, the face that surrounds a connected set of edges has the winding
/// number of the other sets there, and each edge that is crossed adds its count.
class Arrangement {
 public:
  /// The coordinates must be finite and of a magnitude that isUsable. Segments that follow each
  /// other meet up to the resolution; wider gaps stay gaps, with a node on either side.
  Arrangement(std::vector<ArrangedSegment> segments, double resolution);

  std::vector<ArrangedSegment> const& segments() const { return segments_; }  // in unit scale
  std::vector<Stretch> const& stretches() const { return cutting_.stretches; }
  /// Edges that have become part of another one have no stretch: first is kNone.
  std::vector<Edge> const& edges() const { return cutting_.edges; }
  std::vector<Point> const& nodes() const { return cutting_.nodes; }  // in unit scale
  UnitScale const& scale() const { return scale_; }

  /// The curves of which kept edges consist: kept[i] is 1 where edge i runs as it does, -1 where it
  /// runs the other way, 0 where it is left out. At nodes they neither cross nor pass through one
  /// node twice: what could touch itself comes as several curves. Neighbouring stretches of one
  /// segment become one part. Where more edges end at a node than begin, paths stay open.
  std::vector<Path> paths(std::vector<signed char> const& kept) const;

 private:
  /// Stretches of one segment that follow each other, by number.
  struct Run {
    std::size_t first, last;  // as they are passed; last < first where it runs backwards
    bool isBackwards;
  };

  Path pathOf(Trail const& trail) const;
  Run runAlong(std::size_t halfEdge) const;
  bool extend(Run& run, std::size_t halfEdge) const;
  bool areOne(Run const& run, Run const& next) const;
  bool isTip(Run const& run, Run const& next) const;
  void addParts(std::vector<PathPart>& parts, Run const& run, bool fromTip, bool toTip) const;

  std::vector<ArrangedSegment> segments_;
  UnitScale scale_;
  Cutting cutting_;
  Turns turns_;
};

}  // namespace crv::internal
