// Areas, welded and cut, and a curve taken apart.

#include "examples/gallery/room.h"

#include <array>

namespace gallery {
namespace {

void showRegion(Room& room, std::string const& name, std::string const& words,
                std::vector<crv::Curve> const& sources, crv::Region const& region, double area) {
  Picture picture(svg::Box{-10, -100, 620, 830});
  for (crv::Curve const& source : sources) picture.chain(source, kGhost);
  picture.area(region.curves, kBlue, "#d0ebff");
  room.show(name, "weld&a=letter+S&b=letter+f", words,
            say(region.curves.size(), " outlines, area ", area), picture);
}

void showLetters(Room& room) {
  GxBezierCurve const s = readOutline("roman-capital-s-thirds.txt");
  GxBezierCurve f = readOutline("italic-f-thirds.txt");
  f.moveCurve({92, 114});
  constexpr crv::FillRule rule = crv::FillRule::nonZero;
  //! [crv::unite, area]
  crv::Region const welded = crv::unite({s}, {f}, rule);
  double const area = crv::area(welded.curves, rule);
  //! [crv::unite, area]
  showRegion(room, "crv::unite, area", "The places in either letter.", {s, f}, welded, area);
  //! [crv::intersect]
  crv::Region const shared = crv::intersect({s}, {f}, rule);
  //! [crv::intersect]
  showRegion(room, "crv::intersect", "The places in both.", {s, f}, shared,
             crv::area(shared.curves, rule));
  //! [crv::subtract]
  crv::Region const rest = crv::subtract({s}, {f}, rule);
  //! [crv::subtract]
  showRegion(room, "crv::subtract", "The first without the second.", {s, f}, rest,
             crv::area(rest.curves, rule));
  //! [crv::exclude]
  crv::Region const either = crv::exclude({s}, {f}, rule);
  //! [crv::exclude]
  showRegion(room, "crv::exclude", "The places in one, not in both.", {s, f}, either,
             crv::area(either.curves, rule));
}

void showScribble(Room& room) {
  GxBezierCurve const scribble = crv::fit(readStroke("pad-scribble.txt"), {}).curve;
  //! [crv::simplified]
  crv::Region const clean = crv::simplified({scribble}, crv::FillRule::evenOdd);
  //! [crv::simplified]
  Picture area(scribble);
  area.area(clean.curves, kBlue, "#d0ebff");
  room.show("crv::simplified", "weld", "The area that a scribble bounds, without crossings.",
            say(clean.curves.size(), " outlines"), area);

  //! [crv::contains, winding]
  bool const isInside = crv::contains({scribble}, {250, 450}, crv::FillRule::evenOdd);
  int const turns = crv::winding({scribble}, {250, 450});
  //! [crv::contains, winding]
  Picture point(scribble);
  point.chain(scribble, std::string(kGhost) + ";fill:#f1f3f5;fill-rule:evenodd");
  point.dots({{250, 450}}, 4, isInside ? "stroke:#2b8a3e" : "stroke:#c2255c");
  room.show("crv::contains, winding", "weld",
            "Whether a point is inside, and how often it is gone around.",
            say(isInside ? "inside" : "outside", ", winding number ", turns), point);

  //! [crv::separate]
  crv::Separated const parts = crv::separate(scribble);
  //! [crv::separate]
  Picture loops(scribble);
  std::array<char const*, 3> const looks = {kBlue, kOrange, kRed};
  for (crv::Piece const& piece : parts.rests) loops.chain(piece.curve, kInk);
  for (std::size_t i = 0; i < parts.loops.size(); ++i) {
    loops.chain(parts.loops[i].piece.curve, std::string(looks[i % 3]) + ";fill:#f8f9fa");
  }
  room.show("crv::separate", "weld", "Cut at its crossings and joined to simple loops.",
            say(parts.loops.size(), " loops and ", parts.rests.size(), " rest"), loops);

  GxList<GxBezierCurve> pieces, opened;
  //! [seperateSelfIntersections, seperateSelfIntersectionsForOpenCurve]
  int const count = seperateSelfIntersections(scribble, pieces);
  int const countOpened = seperateSelfIntersectionsForOpenCurve(scribble, opened);
  //! [seperateSelfIntersections, seperateSelfIntersectionsForOpenCurve]
  Picture listed(scribble);
  for (unsigned i = 0; i < pieces.length(); ++i) listed.chain(pieces[i], looks[i % 3]);
  room.show("seperateSelfIntersections, seperateSelfIntersectionsForOpenCurve", "weld",
            "The same as a list of curves.", say(count, " pieces, and ", countOpened), listed);
}

}  // namespace

Room regions() {
  Room room("Areas", "regions.cpp");
  showLetters(room);
  showScribble(room);
  return room;
}

}  // namespace gallery
