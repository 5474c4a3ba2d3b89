// Runs the operations of a room on a fuzzer's bytes; the first byte selects the operation.
#include "tests/operations/all.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static support::Operations const operations = support::kRooms.at(CRV_ROOM);
  if (size < 2) return 0;
  support::World w(data + 1, size - 1);
  std::string const broken = support::brokenBy(operations[data[0] % operations.size()], w);
  if (broken.empty()) return 0;
  std::fprintf(stderr, "%s\n", broken.c_str());
  std::abort();
}
