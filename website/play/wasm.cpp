// What the page calls: it asks for room, writes numbers there, runs an operation, reads numbers.
#include <iterator>

#include "website/play/operations.h"

namespace {

std::vector<double> room;
std::vector<double> results;

}  // namespace

extern "C" {

double* playRoom(unsigned count) {
  room.resize(count);
  return room.data();
}

unsigned playRun(unsigned operation) {
  play::Input in(room.data(), room.size());
  play::Output out;
  if (operation < std::size(play::kOperations)) play::kOperations[operation](in, out);
  results = out.numbers();
  return static_cast<unsigned>(results.size());
}

double const* playResults() { return results.data(); }
}
