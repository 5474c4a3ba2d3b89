// The gallery: rooms of exhibits, each an operation on a real stroke or outline with its code, what
// it returned and a picture.
#pragma once

#include "examples/outline.h"
#include "examples/svg.h"

#include <sstream>
#include <string>
#include <vector>

namespace gallery {

using svg::kBlue, svg::kGhost, svg::kGreen, svg::kInk, svg::kOrange, svg::kRed;

/// A picture of one view.
class Picture : public svg::Page {
 public:
  /// Views a box.
  explicit Picture(svg::Box const& box) : Page(360, 250) { view(box, {0, 0, 360, 250}, 14); }
  /// Views the tight box of a curve, widened on every side.
  explicit Picture(GxBezierCurve const& curve, double by = 0) : Picture(svg::boxOf(curve, by)) {}
};

/// An operation on show.
struct Exhibit {
  std::string name;
  std::string operation;  ///< Its name in the playground, and what to begin with: "cut&a=letter+g".
  std::string words;
  std::string code;
  std::string returned;
  std::string picture;  ///< SVG.
};

/// The exhibits of one source, whose code they show.
class Room {
 public:
  /// The source is a file of this folder.
  Room(std::string title, std::string const& source);

  /// Shows an operation, with the code between two lines "//! [name]" of the source. Throws
  /// std::runtime_error unless these are one to three lines.
  void show(std::string const& name, std::string const& operation, std::string const& words,
            std::string const& returned, Picture& picture);

  std::string title;
  std::vector<Exhibit> exhibits;

 private:
  std::vector<std::string> lines_;
};

/// Words and numbers, one after the other.
template <class... Parts>
std::string say(Parts const&... parts) {
  std::ostringstream out;
  out.precision(6);
  (out << ... << parts);
  return out.str();
}

/// A position as segment and t.
inline std::string say(GxBezierCurvePosition const& p) {
  return say('(', p.getSegmentNumber(), ", ", p.getTValue(), ')');
}
/// A point.
inline std::string say(GxCoord<double> const& p) { return say('(', p.xval(), ", ", p.yval(), ')'); }

Room segments();
Room positions();
Room points();
Room fits();
Room polylines();
Room measures();
Room meetings();
Room edits();
Room walks();
Room parallels();
Room regions();
Room paths();

}  // namespace gallery
