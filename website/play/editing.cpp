// What makes curves of curves: parallels, edits with the marks they carry, areas.
#include "crv/accurate/cut.h"
#include "crv/accurate/offset.h"
#include "crv/accurate/region.h"

#include "website/play/operations.h"

namespace play {

namespace {

/// Where a mark lies on a piece, and what of it comes back: 0 and two positions and a point, or -1
/// and zeros where the piece does not have it.
void addCarried(Output& out, crv::Piece const& piece, crv::Position const& mark) {
  crv::Position there, back;
  int const code = piece.map->mapPosition(there, mark);
  int const codeBack = code == 0 ? piece.map->inverseMapPosition(back, there) : -1;
  out.add(code == 0 && codeBack == 0 ? 0 : -1, there, back, piece.curve.locateCurvePosition(there));
}

void addPiece(Output& out, crv::Piece const& piece, std::vector<crv::Position> const& marks) {
  out.add(piece.curve);
  for (crv::Position const& mark : marks) addCarried(out, piece, mark);
}

}  // namespace

void offset(Input& in, Output& out) {
  double const distance = in.number();
  crv::OffsetOptions options;
  options.tolerance = in.number();
  options.join = static_cast<crv::Join>(static_cast<int>(in.number()) % 3);
  options.miterLimit = in.number();
  crv::Curve const curve = in.curve();
  for (double const side : {distance, -distance}) {
    crv::Offset const found = crv::offset(curve, side, options);
    std::size_t segments = 0;
    for (crv::Piece const& each : found.parallels) segments += each.curve.length();
    out.add(found.parallels.size(), segments, found.worstError);
    for (crv::Piece const& each : found.parallels) out.add(each.curve);
  }
}

void copy(Input& in, Output& out) {
  bool const forward = in.flag();
  crv::Position const from = in.position();
  crv::Position const to = in.position();
  crv::Curve const curve = in.curve();
  addPiece(out, crv::stretch(curve, from, to, forward), in.positions());
}

void cut(Input& in, Output& out) {
  std::vector<crv::Position> const cuts = in.positions();
  crv::Curve const curve = in.curve();
  std::vector<crv::Position> const marks = in.positions();
  std::vector<crv::Piece> const pieces = crv::cut(curve, cuts);
  out.add(pieces.size());
  for (crv::Piece const& each : pieces) addPiece(out, each, marks);
}

void reverse(Input& in, Output& out) {
  crv::Curve const curve = in.curve();
  addPiece(out, crv::reversed(curve), in.positions());
}

void weld(Input& in, Output& out) {
  using Weld = crv::Region (*)(std::vector<crv::Curve> const&, std::vector<crv::Curve> const&,
                               crv::FillRule);
  constexpr Weld kWelds[] = {crv::unite, crv::intersect, crv::subtract, crv::exclude};
  Weld const chosen = kWelds[static_cast<int>(in.number()) % 4];
  auto const rule = in.flag() ? crv::FillRule::evenOdd : crv::FillRule::nonZero;
  std::vector<crv::Curve> const a = in.curves();
  std::vector<crv::Curve> const b = in.curves();
  crv::Region const result = chosen(a, b, rule);
  std::size_t segments = 0;
  for (crv::Curve const& each : result.curves) segments += each.length();
  out.add(crv::area(a, rule), crv::area(b, rule), crv::area(result.curves, rule));
  out.add(result.curves.size(), segments, result.curves);
  for (auto const& sources : result.sources) {
    for (crv::Source const& each : sources) out.add(each.list == 1);
  }
}

}  // namespace play
