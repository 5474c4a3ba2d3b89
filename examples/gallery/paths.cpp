// Paths of SVG in and out.

#include "examples/gallery/room.h"

namespace gallery {

Room paths() {
  Room room("Paths of SVG", "paths.cpp");
  //! [crv::parsePath]
  auto const parsed =
      crv::parsePath("M10 10h80a40 40 0 0 1 40 40v60q-60 60-120 0z M40 40h40v40h-40z");
  //! [crv::parsePath]
  Picture drawn(svg::Box{0, 0, 140, 150});
  for (crv::Curve const& curve : parsed.curves) drawn.chain(curve, kBlue);
  room.show("crv::parsePath", "fit", "Lines, arcs and quadratics become cubics; here y stays up.",
            say(parsed.curves.size(), " curves, ", parsed.fault ? "a fault" : "no fault"), drawn);

  GxBezierCurve const letter = readOutline("roman-o-inner.txt");
  //! [crv::toPath]
  std::string const text = crv::toPath(letter);
  bool const isSame = crv::parsePath(text).curves.at(0) == letter;
  //! [crv::toPath]
  Picture written(letter);
  written.chain(letter, kBlue);
  room.show("crv::toPath", "bits", "The shortest text that reads back to the bit.",
            say(text.substr(0, 40), "... ", isSame ? "the same bits" : "other bits"), written);
  return room;
}

}  // namespace gallery
