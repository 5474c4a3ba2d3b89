#include "examples/gallery/room.h"

#include <stdexcept>
#include <utility>

namespace gallery {

Room::Room(std::string name, std::string const& source) : title(std::move(name)) {
  std::ifstream in(CRV_SOURCE_DIR "/examples/gallery/" + source);
  for (std::string line; std::getline(in, line);) lines_.push_back(line);
}

void Room::show(std::string const& name, std::string const& operation, std::string const& words,
                std::string const& returned, Picture& picture) {
  std::string code;
  int count = 0;
  bool isInside = false;
  for (std::string const& line : lines_) {
    if (line == "  //! [" + name + "]") {
      isInside = !isInside;
    } else if (isInside) {
      code += line.substr(line.find_first_not_of(' ')) + "\n";
      ++count;
    }
  }
  if (count < 1 || count > 3) throw std::runtime_error(name + " needs one to three lines of code");
  exhibits.push_back({name, operation, words, code, returned, picture.document()});
}

}  // namespace gallery
