// Panels side by side, for the pictures of the guide.
#pragma once

#include "examples/svg.h"

#include <sstream>
#include <string>

namespace panels {

// Pixels.
constexpr double kWidth = 900;
constexpr double kHeight = 340;
constexpr double kTop = 56;

/// A page of panels beside each other.
class Row : public svg::Page {
 public:
  explicit Row(int count) : Page(kWidth, kTop + kHeight), width_(kWidth / count) {}

  /// Begins a panel: its title, a note below it, and a view of a box.
  void panel(int index, svg::Box const& box, std::string const& title, std::string const& note) {
    double const left = width_ * index;
    text(left + 16, 26, title, "font-weight:bold;font-size:14px");
    text(left + 16, 46, note, "fill:#868e96");
    view(box, {left, kTop, left + width_, kTop + kHeight}, 16);
  }

 private:
  double width_;
};

/// A number with a few digits, and words.
template <class Number>
std::string say(Number number, std::string const& words, int digits = 4) {
  std::ostringstream out;
  out.precision(digits);
  out << number << words;
  return out.str();
}

}  // namespace panels
