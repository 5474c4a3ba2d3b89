// A digitised stroke becomes a path of SVG.
#include "crv/crv.h"

#include <cmath>
#include <iostream>

int main() {
  std::vector<crv::Point> stroke;
  for (int x = 0; x <= 300; ++x) stroke.emplace_back(x, 100 + 40 * std::sin(x * 0.05));
  crv::Fit const fit = crv::fit(stroke, {});
  std::cout << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 300 200\">\n"
            << "<path fill=\"none\" stroke=\"black\" d=\"" << crv::toPath(fit.curve)
            << "\"/>\n</svg>\n";
  return fit.worstDistance <= 0.5 ? 0 : 1;
}
