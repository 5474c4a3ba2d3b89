// An arrangement of curves in the plane: nodes where the curves meet, edges between the nodes, and
// the winding number of each face.
//
// An operation on outlines has these steps:
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

/// A part of a segment in a result, in the direction of the result.
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

/// Segments, cut where they meet. Points nearer to each other than the resolution become one node,
/// and stretches that are as near become one edge.
///
/// Winding numbers are meaningful only for groups whose segments form closed curves. They are
/// computed without sample points (but see windings.h): the order of edges around the nodes defines
/// the faces; the face that surrounds a connected set of edges has the winding number of the other
/// sets at that point; and crossing an edge changes the winding number by the edge's count.
class Arrangement {
 public:
  /// The coordinates must be finite and of a magnitude that isUsable. Segments that follow each
  /// other meet up to the resolution; wider gaps stay gaps, with a node on either side.
  Arrangement(std::vector<ArrangedSegment> segments, double resolution);

  std::vector<ArrangedSegment> const& segments() const { return segments_; }  // in unit scale
  std::vector<Stretch> const& stretches() const { return cutting_.stretches; }
  /// In edges that were merged into another edge, first is kNone.
  std::vector<Edge> const& edges() const { return cutting_.edges; }
  std::vector<Point> const& nodes() const { return cutting_.nodes; }  // in unit scale
  UnitScale const& scale() const { return scale_; }
  /// The resolution in the scale of the input.
  double resolution() const { return resolution_; }
  /// Whether the order of the edges around all nodes is certain. Where it is not, paths may come
  /// within the resolution of themselves or of each other.
  bool isCertain() const { return isCertain_; }

  /// The paths that the kept edges form: kept[i] is 1 to keep edge i in its direction, -1 to keep
  /// it reversed, 0 to drop it. The paths do not cross at nodes, and none passes through a node
  /// twice: a path that would touch itself is divided into several. Neighbouring stretches of one
  /// segment become one part. If more edges end at a node than begin there, paths stay open.
  std::vector<Path> paths(std::vector<signed char> const& kept) const;

 private:
  /// Stretches of one segment that follow each other, by number.
  struct Run {
    std::size_t first, last;  // as they are passed; last < first where it runs backwards
    bool isBackwards;
  };

  Path pathOf(Trail const& trail) const;
  void addRuns(std::vector<Run>& runs, std::size_t halfEdge) const;
  bool extend(Run& run, std::size_t halfEdge) const;
  bool areOne(Run const& run, Run const& next) const;
  bool isTip(Run const& run, Run const& next) const;
  void addParts(std::vector<PathPart>& parts, Run const* before, Run const& run,
                Run const* behind) const;

  std::vector<ArrangedSegment> segments_;
  UnitScale scale_;
  double resolution_;
  Cutting cutting_;
  Turns turns_;
  bool isCertain_;
};

}  // namespace crv::internal
