// Reads the library's sources as far as the maps of them need: declarations of functions in
// headers, definitions in sources, named constants. Relies on the project's format: definitions
// start in column 0, constants are constexpr and begin with k.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace architecture {

namespace fs = std::filesystem;

/// Files of the library with this extension, sorted; those in internal/ folders on request.
std::vector<fs::path> filesOfLibrary(std::string const& extension, bool internal);

std::string contentOf(fs::path const& file);

/// A path from the project's root, with slashes.
std::string fromRoot(fs::path const& file);

struct Function {
  std::string scope;      // the class, or empty
  std::string name;       // operators with their sign, constructors as their class
  std::string arguments;  // with brackets and const
  std::string heading;    // the source named by the heading above, or empty
  fs::path header;
  bool isProtected;
  bool isInline;  // defined, defaulted, deleted or pure in the header

  std::string qualifiedName() const { return scope.empty() ? name : scope + "::" + name; }
};

/// The public and protected functions that a header declares, destructors apart.
std::vector<Function> functionsOf(fs::path const& header);

/// Names, qualified by their class, of the functions that a source defines, one for each overload.
std::vector<std::string> definitionsIn(fs::path const& source);

/// Named constants that stand together under one comment.
struct Constants {
  std::vector<std::string> types;
  std::vector<std::string> names;
  std::vector<std::string> values;
  std::string comment;
};

std::vector<Constants> constantsOf(fs::path const& file);

}  // namespace architecture
