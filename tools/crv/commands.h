// The commands: each function adds one to the command line.
#pragma once

#include "tools/crv/input.h"
#include "tools/crv/output.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

/// The files to read and the way to write, which all commands share.
struct Files {
  std::vector<std::string> in = {"-"};
  OutputOptions out;
};

/// Adds a command with its options for reading and writing. example is a whole command line.
CLI::App* addCommand(CLI::App& app, std::string const& name, std::string const& description,
                     std::string const& example, Files& files);

/// Adds an option that takes one of some names.
template <class T>
CLI::Option* addChoice(CLI::App* command, std::string const& option, T& value,
                       std::map<std::string, T> const& values, std::string const& description) {
  return command
      ->add_option_function<std::string>(
          option, [values, &value](std::string const& name) { value = values.at(name); },
          description)
      ->check(CLI::IsMember(values))
      ->option_text("NAME");
}

/// Accepts numbers above 0 that are finite.
CLI::Validator positive();

/// A length that is given or, where it is 0, a share of a size. A size of 0, that of a drawing of
/// one point, counts as 1.
double lengthOr(double given, double share, double size);

// ---- shapes.cpp ---------------------------------------------------------------------------------
void addFit(CLI::App& app);
void addFlatten(CLI::App& app);

// ---- edits.cpp ----------------------------------------------------------------------------------
void addOffset(CLI::App& app);
void addCut(CLI::App& app);
void addWeld(CLI::App& app);

// ---- queries.cpp --------------------------------------------------------------------------------
void addContacts(CLI::App& app);
void addNearest(CLI::App& app);
void addInfo(CLI::App& app);
void addDraw(CLI::App& app);

}  // namespace tool
