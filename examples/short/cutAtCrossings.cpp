// A curve is cut where a line and another curve cross it.
#include "crv/crv.h"

#include <iostream>

int main() {
  crv::Curve const curve = crv::parsePath("M0 0C30 60 70 60 100 0").curves.at(0);
  crv::Curve const other = crv::parsePath("M0 30Q50 0 100 30").curves.at(0);
  std::vector<crv::Position> cuts;
  for (crv::LineContact const& c : crv::contacts(curve, {60, -10}, {60, 90}))
    cuts.push_back(c.position);
  for (crv::CurveContact const& c : crv::contacts(curve, other).points) cuts.push_back(c.first);
  std::vector<crv::Piece> const pieces = crv::cut(curve, cuts);
  double length = 0;
  for (crv::Piece const& piece : pieces) length += crv::arcLength(piece.curve, 1e-9);
  std::cout << pieces.size() << " pieces, together " << length << " long\n";
  double const difference = length - crv::arcLength(curve, 1e-9);
  return pieces.size() == 4 && -1e-8 < difference && difference < 1e-8 ? 0 : 1;
}
