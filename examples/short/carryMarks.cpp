// A mark is carried through a copy, a cut and a reversal, and lies where it lay each time.
#include "crv/crv.h"

#include <iostream>

int main() {
  crv::Curve const curve = crv::parsePath("M0 0C0 5 5 5 5 0S10-5 10 0S15 5 15 0").curves.at(0);
  crv::Position mark(1, 0.25);
  crv::Point const before = curve.locateCurvePosition(mark);
  crv::Piece const copy = crv::stretch(curve, {0, 0.5}, {2, 0.5}, true);
  crv::Piece const front = crv::cut(copy.curve, {{1, 0.75}}).at(0);
  crv::Piece const back = crv::reversed(front.curve);
  for (crv::Piece const* piece : {&copy, &front, &back}) {
    if (piece->map->mapPosition(mark, mark) != 0) return 1;
    crv::Point const now = piece->curve.locateCurvePosition(mark);
    std::cout << mark.getSegmentNumber() << " at " << mark.getTValue() << '\n';
    if (before.distance(now) > 1e-12) return 1;
  }
}
