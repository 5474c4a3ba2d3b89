// Fills a letter with its parallels until nothing is left of it, and expands a fitted pen stroke
// into the outline that a pen of some width leaves. Writes insideALetter.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string withDigits(double x) {
  std::ostringstream out;
  out.precision(3);
  out << x;
  return out.str();
}

}  // namespace

int main() {
  GxBezierCurve const letter = readOutline("roman-g-outer.txt");
  svg::Page page(900, 620);
  page.view({20, -215, 495, 460}, {0, 0, 440, 560});
  page.chain(letter, "stroke:#212529;stroke-width:2");
  // The letter runs clockwise: its inside is on the right.
  double const inwards = crv::isClockwise(letter) ? -1 : 1;
  std::size_t rings = 0;
  double worst = 0.0;
  double distance = 0.0;
  for (bool isLeft = true; isLeft;) {
    distance += 6;
    crv::Offset const parallel = crv::offset(letter, inwards * distance);
    isLeft = !parallel.parallels.empty();
    worst = max(worst, parallel.worstError);
    for (crv::Piece const& piece : parallel.parallels) {
      page.chain(piece.curve, "stroke:#1864ab;stroke-width:1");
      ++rings;
    }
  }

  svg::Points const samples = readStroke("pen-waves.txt");
  crv::Fit const fitted = crv::fit(samples, {2.0, false, 0.0});
  crv::OffsetOptions options;
  options.tolerance = 0.05;
  std::vector<GxBezierCurve> const pen =
      crv::strokeOutline(fitted.curve, 18, crv::Cap::round, options);
  page.view(svg::boxOf(samples), {450, 60, 890, 500}, 24);
  std::size_t segments = 0;
  page.area(pen, "stroke:#c2255c;stroke-width:1.6", "#fff0f6");
  for (GxBezierCurve const& curve : pen) segments += curve.length();
  page.chain(fitted.curve, "stroke:#212529;stroke-width:1");
  page.dots(samples, 1, "stroke:#868e96");
  page.text(
      20, 580,
      std::to_string(rings) + " parallels, 6 apart, off by at most " + withDigits(worst) + ";");
  page.text(20, 600, "at a distance of " + withDigits(distance) + " nothing is left");
  page.text(470, 580,
            std::to_string(samples.size()) + " samples, a fit of " +
                std::to_string(fitted.curve.length()) + " segments,");
  page.text(470, 600, "the outline of a pen 18 wide in " + std::to_string(segments));
  page.save("insideALetter.svg");
  std::cout << rings << " parallels off by " << worst << " at most; the stroke's outline has "
            << pen.size() << " curves of " << segments << " segments\n";
}
