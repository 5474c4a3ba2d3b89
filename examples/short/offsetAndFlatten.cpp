// An outline is offset to both sides and flattened for a machine that knows only lines.
#include "crv/crv.h"

#include <iostream>

int main() {
  crv::ParsedPath const path = crv::parsePath("M0 0H100V60C100 90 60 100 50 70S0 90 0 60Z");
  if (path.fault || path.curves.size() != 1) return 1;
  for (double const distance : {5.0, -5.0}) {
    crv::Offset const parallel = crv::offset(path.curves[0], distance);
    for (crv::Piece const& piece : parallel.parallels) {
      crv::Polyline const polyline = crv::flatten(piece.curve, 0.05);
      std::cout << "by " << distance << ": " << polyline.points.size() << " points, first ("
                << polyline.points[0].xval() << ", " << polyline.points[0].yval() << ")\n";
    }
    if (parallel.parallels.empty() || parallel.worstError > 0.01) return 1;
  }
}
