// Every operation. A new room adds its header and its line here.
#pragma once

#include "tests/operations/accurate.h"
#include "tests/operations/bezier.h"
#include "tests/operations/curve.h"
#include "tests/operations/foundation.h"
#include "tests/operations/positionmap.h"

#include <ctime>
#include <map>

namespace support {

inline std::map<std::string, Operations> const kRooms{{"foundation", kFoundation},
                                                      {"bezier", kBezier},
                                                      {"curve", kCurve},
                                                      {"positionmap", kPositionMap},
                                                      {"accurate", kAccurate}};

inline Operations allOperations() {
  Operations all;
  for (auto const& room : kRooms) all.insert(all.end(), room.second.begin(), room.second.end());
  return all;
}

/// Runs an operation, requires that it takes an acceptable processor time, and checks its arguments
/// afterwards. Returns the promise that was broken, or nothing.
inline std::string brokenBy(Operation const& operation, World& w) {
// On Windows and in a browser std::clock measures elapsed time, which depends on other processes.
#if defined(NDEBUG) && !defined(_WIN32) && !defined(__EMSCRIPTEN__)
  constexpr double kMostSeconds = 2.0;
#else
  constexpr double kMostSeconds = 20.0;
#endif
  std::clock_t const start = std::clock();
  try {
    operation.run(w);
    w.finish();
  } catch (Broken const& broken) {
    return operation.name + std::string(" broke: ") + broken.what();
  }
  double const seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  return seconds < kMostSeconds ? "" : operation.name + std::string(" takes too long");
}

}  // namespace support
