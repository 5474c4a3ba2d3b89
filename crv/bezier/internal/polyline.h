// The polyline of a segment by halving, for operations that set their own limit of pieces.
#pragma once

#include "crv/bezier/GxBezier.h"

#include <vector>

namespace crv::internal {

/// Appends the points of GxBezier::getPolyline. Once maxPieces pieces have been examined, the
/// remaining pieces are taken as lines.
void appendPolyline(GxBezier const& segment, double tol, long maxPieces,
                    std::vector<GxCoord<double>>& out);

}  // namespace crv::internal
