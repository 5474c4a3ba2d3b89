// The maps of the library are true: the headings in class headers, docs/methods.md,
// docs/tolerances.md, the README's code, links between pages.
//
// The two tables are generated: run with CRV_UPDATE_DOCS set in the environment (the build target
// docs), these tests write them instead of comparing.

#include "tests/architecture/declarations.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "gtest/gtest.h"

namespace {

using namespace architecture;

fs::path const kRoot = CRV_SOURCE_DIR;

std::vector<Function> allFunctions() {
  std::vector<Function> all;
  for (fs::path const& header : filesOfLibrary(".h", false)) {
    std::vector<Function> const some = functionsOf(header);
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

void expectPage(std::string const& page, std::string const& expected) {
  fs::path const file = kRoot / page;
  if (std::getenv("CRV_UPDATE_DOCS") != nullptr) {
    std::ofstream(file, std::ios::binary) << expected;
  } else if (contentOf(file) != expected) {
    std::istringstream is(contentOf(file)), shouldBe(expected);
    std::string was, line;
    while (std::getline(shouldBe, line) && std::getline(is, was) && was == line) {
    }
    ADD_FAILURE() << page << " disagrees with the sources; build the target docs to write it anew."
                  << "\nIt says:   " << was << "\nbut it is: " << line;
  }
}

/// Where a function is defined: the source its heading names, its header's own source, the header,
/// another source of the room; empty if none defines it.
fs::path homeOf(Function const& f) {
  if (f.isInline) return f.header;
  std::vector<fs::path> places;
  if (!f.heading.empty()) places = {f.header.parent_path() / f.heading};
  if (f.heading.empty()) {
    places = {fs::path(f.header).replace_extension(".cpp"), f.header};
    for (fs::path const& source : filesOfLibrary(".cpp", true)) {
      if (source.parent_path() == f.header.parent_path()) places.push_back(source);
    }
  }
  for (fs::path const& place : places) {
    std::string name = f.qualifiedName();
    std::string const content = contentOf(place);
    std::vector<std::string> const names = definitionsIn(place);
    if (std::count(names.begin(), names.end(), name) > 0) return place;
    // A method of a class template, or an inline one, below its class.
    if (place == f.header && content.find(f.scope + "<T>::" + f.name + "(") != std::string::npos) {
      return place;
    }
  }
  return {};
}

TEST(Maps, AHeadingNamesTheSourceThatDefinesItsMethods) {
  std::map<std::string, long> balance;  // source and method: declared less defined
  std::set<std::string> classes;
  std::set<fs::path> headed;
  for (Function const& f : allFunctions()) {
    if (f.heading.empty() || f.isInline) continue;
    fs::path const source = f.header.parent_path() / f.heading;
    ++balance[fromRoot(source) + " " + f.qualifiedName()];
    headed.insert(source);
    classes.insert(f.scope);
  }
  ASSERT_GT(headed.size(), 2u);
  for (fs::path const& source : filesOfLibrary(".cpp", true)) {
    for (std::string const& name : definitionsIn(source)) {
      std::size_t const colon = name.rfind("::");
      std::string const scope = colon == std::string::npos ? "" : name.substr(0, colon);
      bool const isMapped = scope.empty() ? balance.count(fromRoot(source) + " " + name) > 0
                                          : classes.count(scope) > 0;
      if (isMapped) --balance[fromRoot(source) + " " + name];
    }
  }
  for (auto const& [what, difference] : balance) {
    EXPECT_EQ(difference, 0) << what
                             << (difference > 0 ? ": declared under a heading that names "
                                                  "this source, which does not define it"
                                                : ": defined here, but no heading says so");
  }
}

TEST(Maps, ATopicOfAHeadedHeaderHasItsHeading) {
  std::map<std::string, std::set<std::string>> headings;  // header's path without extension
  for (Function const& f : allFunctions()) {
    if (!f.heading.empty()) headings[fs::path(f.header).replace_extension()].insert(f.heading);
  }
  for (auto const& [header, named] : headings) {
    for (fs::path const& source : filesOfLibrary(".cpp", true)) {
      bool const isTopic = source.string().rfind(header + "_", 0) == 0;
      EXPECT_TRUE(!isTopic || named.count(source.filename()) > 0)
          << fromRoot(header) << ".h has no heading for " << fromRoot(source);
    }
    for (std::string const& name : named) {
      EXPECT_TRUE(fs::exists(fs::path(header).parent_path() / name)) << name << " does not exist";
    }
  }
}

TEST(Maps, MethodsPage) {
  struct Row {
    std::string key;
    std::string text;
  };
  std::vector<Row> rows;
  for (Function const& f : allFunctions()) {
    fs::path const home = homeOf(f);
    EXPECT_FALSE(home.empty()) << f.qualifiedName() << f.arguments << " of " << fromRoot(f.header)
                               << " is defined nowhere";
    std::string key = f.name + " ";
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    rows.push_back(
        {key + f.scope, "| `" + f.name + "` | " + (f.scope.empty() ? "" : "`" + f.scope + "`") +
                            (f.isProtected ? ", protected" : "") + " | `" + f.arguments + "` | " +
                            (home.empty() ? "?" : fromRoot(home).substr(4)) + " |\n"});
  }
  ASSERT_GT(rows.size(), 150u);
  std::stable_sort(rows.begin(), rows.end(),
                   [](Row const& a, Row const& b) { return a.key < b.key; });
  std::string page =
      "# Methods and their files\n\n"
      "Every public and protected method and every free function that a header declares, with the\n"
      "file under `crv/` that holds its code. Generated by the build target `docs`, and checked "
      "by\n"
      "a test; what a method does is said where it is declared.\n\n"
      "| name | of | arguments | file |\n|---|---|---|---|\n";
  for (Row const& row : rows) page += row.text;
  expectPage("docs/methods.md", page);
}

TEST(Maps, TolerancesPage) {
  std::string page =
      "# Tolerances and other named constants\n\n"
      "Every named constant of the library: its value, and its unit and purpose as the source "
      "says\n"
      "them. Lengths are in curve units; mind which are squared. A constant stands in the one "
      "file\n"
      "that uses it, only `kZeroTolerance` is shared. Generated by the build target `docs`, and\n"
      "checked by a test.\n";
  std::size_t count = 0;
  std::vector<fs::path> files = filesOfLibrary(".h", true);
  std::vector<fs::path> const sources = filesOfLibrary(".cpp", true);
  files.insert(files.end(), sources.begin(), sources.end());
  auto const floorOf = [](fs::path const& file) {
    std::string const path = fromRoot(file);
    for (std::size_t floor = 0; floor < 4; ++floor) {
      char const* const rooms[] = {"crv/foundation", "crv/bezier", "crv/curve", "crv/positionmap"};
      if (path.rfind(rooms[floor], 0) == 0) return floor;
    }
    return std::size_t{4};
  };
  std::stable_sort(files.begin(), files.end(),
                   [&](fs::path const& a, fs::path const& b) { return floorOf(a) < floorOf(b); });
  for (fs::path const& file : files) {
    std::string table;
    for (Constants const& group : constantsOf(file)) {
      bool const isNumber = std::count(group.types.begin(), group.types.end(), "double") > 0 &&
                            group.values[0].find("numeric_limits") == std::string::npos;
      EXPECT_TRUE(!isNumber || !group.comment.empty())
          << fromRoot(file) << ": " << group.names[0] << " says neither its unit nor its purpose";
      if (group.comment.empty()) continue;
      table += "| ";
      for (std::size_t i = 0; i < group.names.size(); ++i) {
        table += (i > 0 ? "<br>" : "") + ("`" + group.names[i]) + "` = " + group.values[i];
        ++count;
      }
      table += " | " + std::regex_replace(group.comment, std::regex("\\|"), "\\|") + " |\n";
    }
    if (!table.empty()) {
      page +=
          "\n## " + fromRoot(file).substr(4) + "\n\n| constant | purpose |\n|---|---|\n" + table;
    }
  }
  EXPECT_GT(count, 50u);
  expectPage("docs/tolerances.md", page);
}

TEST(Maps, ReadmeShowsTheFirstExampleLineForLine) {
  std::string const readme = contentOf(kRoot / "README.md");
  std::string const example = contentOf(kRoot / "examples/firstResult.cpp");
  ASSERT_FALSE(example.empty());
  EXPECT_NE(readme.find("```cpp\n" + example + "```\n"), std::string::npos);
}

TEST(Maps, PagesLinkToFilesThatExist) {
  static std::regex const link(R"x((?:\]\(|src=")([^)"#]+))x");
  std::vector<fs::path> pages;
  for (char const* folder : {"", "docs", "benchmarks"}) {
    for (auto const& entry : fs::directory_iterator(kRoot / folder)) {
      if (entry.path().extension() == ".md") pages.push_back(entry.path());
    }
  }
  ASSERT_GE(pages.size(), 4u);
  for (fs::path const& page : pages) {
    std::string const text = contentOf(page);
    for (std::sregex_iterator i(text.begin(), text.end(), link), end; i != end; ++i) {
      std::string const target = (*i)[1];
      if (target.find("://") != std::string::npos) continue;
      EXPECT_TRUE(fs::exists(page.parent_path() / target)) << fromRoot(page) << ": " << target;
    }
  }
}

}  // namespace
