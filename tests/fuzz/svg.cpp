// Reads any text as a path, and expects the same curves, bit for bit, after writing and reading
// them again.
#include "crv/svg.h"

#include "tests/support/bits.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using support::sameBits;

void require(bool holds, char const* promise) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", promise);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  crv::ParsedPath const path = crv::parsePath(text);
  require(!path.fault || path.fault->place <= size, "a fault lies in the text");
  for (GxBezierCurve const& curve : path.curves) {
    require(curve.length() > 0, "a curve has segments");
    std::string const written = crv::toPath(curve);
    crv::ParsedPath const back = crv::parsePath(written);
    require(!back.fault && back.curves.size() == 1, "a path is one curve again");
    require(sameBits(back.curves[0], curve), "a path comes back to the bit");
  }
  return 0;
}
