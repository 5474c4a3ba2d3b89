// What a command found, and how it is written.
#pragma once

#include "tools/crv/drawing.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tool {

/// Rows under named columns.
struct Table {
  using Cell = std::variant<double, long, std::string>;
  std::string name;  // of the list in JSON
  std::vector<std::string> columns;
  std::vector<std::vector<Cell>> rows;
};

/// How an SVG document shows a result.
struct Look {
  bool handles = false;  // joints as dots, and lines to the inner control points
  bool fill = false;
  double width = 0.0;  // of the lines, in curve units; 0: by the size of the drawing
};

/// What a command found. Curves, polylines and a table exclude each other.
struct Result {
  std::vector<Curve> curves;
  std::vector<Points> polylines;
  std::optional<Table> table;
  Points marks;                   // the points that the table speaks of
  std::vector<Curve> background;  // drawn beneath, in SVG only
  Look look;
};

/// Where and how a result is written.
struct OutputOptions {
  std::string file = "-";
  std::string format;  // svg, json, points, path or text; empty: by the ending of the file's name
  bool up = false;     // y runs up in the drawing
};

/// The result as text. Throws a Refusal where the format cannot hold it.
std::string textOf(Result const& result, OutputOptions const& options);
std::string svgOf(Result const& result, bool up);
std::string jsonOf(Result const& result);

/// Writes the result. A file appears under its name only when all of it was written.
void write(Result const& result, OutputOptions const& options);

}  // namespace tool
