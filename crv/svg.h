// Reads the text of an SVG path as curves, and writes curves as the text of a path.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace crv {

/// The reason why reading the text of a path stopped.
enum class PathFaultReason {
  noMoveTo,         // the first command is not M or m
  unknownCommand,   // a character that is no command, where a command or a number is due
  expectedNumber,   // a command has too few numbers
  expectedFlag,     // a flag of an arc is neither 0 nor 1
  numberOutOfRange  // a number, or a sum of relative numbers, beyond the range of doubles
};

/// The place at which reading stopped, and the reason.
struct PathFault {
  std::size_t place;  // index of the first character that could not be read
  PathFaultReason reason;
};

/// The curves of a path, up to the first fault in its text.
struct ParsedPath {
  std::vector<Curve> curves;       // one for each subpath that draws; closed if Z ends it
  std::optional<PathFault> fault;  // empty if the whole text was read
};

/// Reads the value of the attribute d of an SVG path: the commands M L H V C S Q T A Z, absolute
/// and relative, with the grammar's shorthand for repeated commands, separators and flags.
/// Coordinates are taken as they stand; SVG draws with y downwards. The text is read in the same
/// way under every locale.
///
/// - A line becomes a cubic with its handles at the thirds, a quadratic the same curve as a cubic,
///   to rounding. An arc becomes 2^k cubics of at most 45 degrees each; as SVG requires, radii that
///   are too small are enlarged, and an arc with a radius of 0 is a line. The cubics of an arc stay
///   within 4.3e-6 of the larger radius of the ellipse.
/// - Z sets the closed flag, and adds a line if the subpath does not end at its start. A moveto
///   that no drawing command follows gives no curve; if Z follows it, it gives one segment that is
///   a point.
/// - After a fault, the result holds everything before the command, or the repetition of its
///   numbers, that contains the fault, as SVG requires. Numbers too small for doubles are 0.
///
/// The cost is linear in the text. Sources: W3C, "Scalable Vector Graphics (SVG) 2", sections 9.3
/// (path data) and 9.5 and B.2 (arcs).
CRV_API ParsedPath parsePath(std::string_view text);

/// Writes a curve as the value of the attribute d of an SVG path, in absolute commands M L C Z.
/// Each number is the shortest one that reads back as the same double, so parsePath returns the
/// same segments bit for bit, as one curve if they join. Where segments join at 0 and -0, the sign
/// of the first segment is kept. The path ends with Z if the closed flag is set and the ends meet.
/// A gap between two segments starts a new subpath, and a curve with gaps gets no Z. An empty
/// curve, or one with a coordinate that is not finite, gives an empty text.
CRV_API std::string toPath(Curve const& curve);

/// Writes curves one after the other as one path.
CRV_API std::string toPath(std::vector<Curve> const& curves);

}  // namespace crv
