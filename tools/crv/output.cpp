#include "tools/crv/output.h"

#include "tools/crv/input.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include <unistd.h>

namespace tool {

namespace {

std::string textOf(Table::Cell const& cell) {
  if (auto const* const number = std::get_if<double>(&cell)) return shortest(*number);
  if (auto const* const whole = std::get_if<long>(&cell)) return std::to_string(*whole);
  return std::get<std::string>(cell);
}

/// The names of the columns as a comment, then a line for each row.
std::string textOf(Table const& table) {
  std::string text = "#";
  for (std::string const& column : table.columns) text += ' ' + column;
  text += '\n';
  for (auto const& row : table.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) text += (i == 0 ? "" : " ") + textOf(row[i]);
    text += '\n';
  }
  return text;
}

std::string lineOf(Point const& p) { return shortest(p.xval()) + ' ' + shortest(p.yval()); }

/// Lines that are read as they were written: an empty line between two polylines or two curves.
std::string pointsOf(Result const& result) {
  std::string text;
  for (Points const& polyline : result.polylines) {
    if (!text.empty()) text += '\n';
    for (Point const& p : polyline) text += lineOf(p) + '\n';
  }
  for (Curve const& curve : result.curves) {
    if (!text.empty()) text += '\n';
    for (crv::Segment const& s : curve) {
      text += lineOf(s[0]) + ' ' + lineOf(s[1]) + ' ' + lineOf(s[2]) + ' ' + lineOf(s[3]) + '\n';
    }
  }
  for (Point const& p : result.marks) text += lineOf(p) + '\n';
  return text;
}

std::string pathsOf(Result const& result) {
  std::string text;
  for (Curve const& curve : result.curves) {
    std::string const path = crv::toPath(curve);
    if (!path.empty()) text += path + '\n';
  }
  for (Points const& polyline : result.polylines) {
    for (std::size_t i = 0; i < polyline.size(); ++i) {
      text += (i == 0 ? "M" : i == 1 ? " L" : " ") + lineOf(polyline[i]);
    }
    text += '\n';
  }
  return text;
}

std::string formatOf(OutputOptions const& options) {
  if (!options.format.empty()) return options.format;
  std::string const ending = std::filesystem::path(options.file).extension().string();
  if (ending == ".svg" || ending == ".json") return ending.substr(1);
  return "text";
}

}  // namespace

std::string textOf(Result const& result, OutputOptions const& options) {
  std::string const format = formatOf(options);
  if (format == "svg") return svgOf(result, options.up);
  if (format == "json") return jsonOf(result);
  if (format == "points") return pointsOf(result);
  if (format == "text" && result.table) return textOf(*result.table);
  if (result.table) throw Refusal("this result is a table: choose text, json, points or svg");
  return format == "path" || result.polylines.empty() ? pathsOf(result) : pointsOf(result);
}

void write(Result const& result, OutputOptions const& options) {
  std::string const text = textOf(result, options);
  if (options.file == "-") {
    std::cout << text << std::flush;
    if (!std::cout) throw Refusal("cannot write to the standard output");
    return;
  }
  namespace fs = std::filesystem;
  std::error_code fault;
  fs::path const target = fs::weakly_canonical(options.file, fault);
  // A device or a pipe cannot be replaced; it is written to.
  bool const isSpecial = fs::exists(target, fault) && !fs::is_regular_file(target, fault);
  fs::path part = target;
  if (!isSpecial) part += "." + std::to_string(getpid()) + ".part";
  std::ofstream out(part, std::ios::binary);
  out << text;
  out.close();
  fault = {};
  if (out && !isSpecial) fs::rename(part, target, fault);
  if (out && !fault) return;
  if (!isSpecial) fs::remove(part, fault);
  throw Refusal("cannot write " + options.file);
}

}  // namespace tool
