// The same calls as the page's, in a program: for the test that both answer the same.
//   play             reads "operation count number..." as often as there is one, numbers as the
//                       hexadecimal digits of their bits, and writes the answers so, one a line
//   play bits.txt    writes that file as it should be; fails if it is not
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

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

std::string hashOf(unsigned operation, unsigned questions) {
  auto const halves = answer(static_cast<unsigned>(std::size(play::kOperations)) - 1,
                             {double(operation), double(questions)});
  std::ostringstream text;
  text << std::hex << std::setfill('0');
  for (double const half : halves) text << std::setw(8) << static_cast<std::uint32_t>(half);
  return text.str();
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 1) {
    answerAll(std::cin);
    return 0;
  }
  std::ifstream recorded(arguments[1]);
  bool isAsRecorded = true;
  unsigned operation = 0, questions = 0;
  for (std::string name, hash; recorded >> name >> operation >> questions >> hash;) {
    std::string const found = hashOf(operation, questions);
    std::cout << name << ' ' << operation << ' ' << questions << ' ' << found << '\n';
    isAsRecorded = isAsRecorded && found == hash;
  }
  if (isAsRecorded) return 0;
  std::cerr << arguments[1] << " records other hashes; it should be as above\n";
  return 1;
}
