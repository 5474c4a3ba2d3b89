// The same calls as the page's, in a program: for the test that both answer the same.
//   play             reads "operation count number..." as often as there is one, numbers as the
//                       hexadecimal digits of their bits, and writes the answers so, one a line
//   play bits.txt    writes that file with the hashes that it should record
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>

#include "website/play/operations.h"

namespace {

std::vector<double> answer(unsigned operation, std::vector<double> const& numbers) {
  play::Input in(numbers.data(), numbers.size());
  play::Output out;
  play::kOperations[operation](in, out);
  return out.numbers();
}

void answerAll(std::istream& questions) {
  unsigned operation = 0;
  std::size_t count = 0;
  while (questions >> std::dec >> operation >> count) {
    std::vector<double> numbers;
    for (std::uint64_t bits; numbers.size() < count && questions >> std::hex >> bits;) {
      numbers.push_back(0.0);
      std::memcpy(&numbers.back(), &bits, sizeof bits);
    }
    for (double const x : answer(operation, numbers)) {
      std::uint64_t bits;
      std::memcpy(&bits, &x, sizeof bits);
      std::cout << std::hex << bits << ' ';
    }
    std::cout << std::endl;
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 1) answerAll(std::cin);
  std::ifstream recorded(count == 1 ? "" : arguments[1]);
  unsigned operation = 0, questions = 0;
  for (std::string name, hash; recorded >> name >> operation >> questions >> hash;) {
    auto const bits = answer(14, {double(operation), double(questions)});
    std::cout << name << ' ' << operation << ' ' << questions << ' ' << std::hex
              << std::setfill('0') << std::setw(16)
              << (static_cast<std::uint64_t>(bits[0]) << 32 | static_cast<std::uint64_t>(bits[1]))
              << std::dec << '\n';
  }
}
