// Reads drawings: lines of numbers, the text of SVG paths, SVG files.
#pragma once

#include "tools/crv/drawing.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Reads a file, the text of a path in the argument itself, or the standard input for "-". What a
/// file holds is told by its first character: a
/// tag begins an SVG file, M or m the text of a path, anything else is lines of numbers. Throws a
/// Refusal for a file that cannot be read or holds no shape.
Drawing readDrawing(std::string const& file);

/// Reads several files in order.
Drawing readDrawings(std::vector<std::string> const& files);

/// The points of all strokes of a file, in order.
Points readPoints(std::string const& file);

/// Reads lines of numbers: "x y" is a sample of a stroke, eight coordinates are a segment of a
/// curve. Blanks, commas and semicolons separate numbers, # starts a comment. An empty line ends a
/// stroke or a curve, and so does a segment that does not start where the one before ended. A
/// curve whose last end is its start is closed. name stands in refusals.
Drawing readNumbers(std::string_view text, std::string const& name);

/// Reads the text of an SVG path.
std::vector<Curve> readPath(std::string_view text, std::string const& name);

/// Reads the shapes of an SVG document: paths, lines, polylines, polygons, rectangles, circles and
/// ellipses, carried through their transforms. Definitions, masks, symbols and what is not
/// displayed are left out.
Drawing readSvg(std::string_view text, std::string const& name);

/// Reads "x,y".
Point readPoint(std::string const& text);

/// Reads as many numbers as the text begins with and drops what was read.
std::vector<double> takeNumbers(std::string_view& text);

/// The number's shortest decimals that read back as the same double.
std::string shortest(double number);

}  // namespace tool
