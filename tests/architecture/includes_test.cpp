// The rooms of the library stand on floors: a file includes its own room and those below it.

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "gtest/gtest.h"

namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 4> kFloors = {"foundation", "bezier", "curve", "positionmap"};

std::size_t floorOf(const std::string& room) {
  return static_cast<std::size_t>(std::find(kFloors.begin(), kFloors.end(), room) -
                                  kFloors.begin());
}

struct Include {
  std::string target;
  bool quoted;
};

std::vector<Include> includesOf(const fs::path& file) {
  static const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::vector<Include> found;
  std::ifstream in(file);
  std::smatch match;
  for (std::string line; std::getline(in, line);) {
    if (std::regex_search(line, match, pattern)) {
      found.push_back({match[2], match[1] == "\""});
    }
  }
  return found;
}

bool isCode(const fs::path& file) { return file.extension() == ".h" || file.extension() == ".cpp"; }

TEST(Architecture, ARoomIncludesItselfAndTheFloorsBelow) {
  static const std::regex inRoom("crv/([^/]+)/(internal/)?[^/]+");
  const fs::path library = fs::path(CRV_SOURCE_DIR) / "crv";
  std::smatch match;
  for (std::size_t floor = 0; floor < kFloors.size(); ++floor) {
    for (const auto& entry : fs::recursive_directory_iterator(library / kFloors[floor])) {
      if (!isCode(entry.path())) continue;
      SCOPED_TRACE(entry.path().lexically_relative(library).string());
      for (const Include& include : includesOf(entry.path())) {
        if (!include.quoted) {
          EXPECT_EQ(include.target.find('/'), std::string::npos)
              << include.target << " is not of the standard library";
        } else if (include.target != "crv/export.h") {
          ASSERT_TRUE(std::regex_match(include.target, match, inRoom))
              << include.target << " is not a whole path into a room";
          EXPECT_LE(floorOf(match[1]), floor) << include.target << " stands on a higher floor";
          EXPECT_TRUE(!match[2].matched || match[1] == kFloors[floor])
              << include.target << " is private to its room";
        }
      }
    }
  }
}

TEST(Architecture, TheOneIncludeForCallersBringsEveryPublicHeader) {
  const fs::path library = fs::path(CRV_SOURCE_DIR) / "crv";
  std::vector<std::string> brought;
  for (const Include& include : includesOf(library / "crv.h")) brought.push_back(include.target);
  for (const auto& entry : fs::recursive_directory_iterator(library)) {
    const fs::path& file = entry.path();
    if (file.extension() != ".h" || file.parent_path().filename() == "internal" ||
        file.filename() == "crv.h") {
      continue;
    }
    const std::string name = file.lexically_relative(CRV_SOURCE_DIR).generic_string();
    EXPECT_EQ(std::count(brought.begin(), brought.end(), name), 1)
        << "crv.h does not bring " << name;
  }
}

}  // namespace
