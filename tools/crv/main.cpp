// crv: fits, flattens, offsets, cuts, welds, measures and draws curves on the command line.
#include "tools/crv/commands.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>

namespace tool {

namespace {

constexpr int kRefused = 1;  // bad arguments or input, or an output that cannot be written

int refuse(std::string message) {
  std::replace(message.begin(), message.end(), '\n', ' ');
  std::cerr << "crv: " << message << '\n';
  return kRefused;
}

}  // namespace

CLI::App* addCommand(CLI::App& app, std::string const& name, std::string const& description,
                     std::string const& example, Files& files) {
  CLI::App* const command = app.add_subcommand(name, description);
  command->add_option("FILE", files.in,
                      "what to read: files, or the text of a path; - or nothing is "
                      "the standard input");
  command->add_option("-o,--out", files.out.file, "the file to write; - is the standard output");
  command
      ->add_option("--to", files.out.format,
                   "how to write: svg, json, points, path, or text, which suits the result; "
                   "without it by the ending of the output's name")
      ->check(CLI::IsMember({"svg", "json", "points", "path", "text"}));
  command->add_flag("--up", files.out.up, "y runs up: draw SVG the other way round");
  command->footer("Example:\n  " + example);
  return command;
}

CLI::Validator positive() {
  auto const check = [](std::string const& text) -> std::string {
    std::string_view rest = text;
    std::vector<double> const n = takeNumbers(rest);
    bool const isPositive = n.size() == 1 && rest.empty() && n[0] > 0.0;
    return isPositive ? "" : "expected a number above 0 but found \"" + text + '"';
  };
  return CLI::Validator(check, "");
}

double lengthOr(double given, double share, double size) {
  return given > 0.0 ? given : share * (size > 0.0 ? size : 1.0);
}

}  // namespace tool

int main(int argc, char** argv) {
  CLI::App app("Fits, flattens, offsets, cuts, welds, measures and draws curves.", "crv");
  app.set_version_flag("--version", std::string("crv " CRV_VERSION));
  app.require_subcommand(1);
  app.footer(
      "Input is lines of numbers, the text of SVG paths, also as an argument, or SVG files. Each "
      "command has its own "
      "--help.");
  tool::addFit(app);
  tool::addFlatten(app);
  tool::addOffset(app);
  tool::addContacts(app);
  tool::addCut(app);
  tool::addNearest(app);
  tool::addWeld(app);
  tool::addInfo(app);
  tool::addDraw(app);
  try {
    app.parse(argc, argv);
  } catch (CLI::ParseError const& e) {
    if (e.get_exit_code() == 0) return app.exit(e);  // --help and --version
    bool const isUnknown = argc > 1 && argv[1][0] != '-' && app.get_subcommands().empty();
    return tool::refuse((isUnknown ? "unknown command " + std::string(argv[1]) : e.what()) +
                        " (crv --help tells more)");
  } catch (std::bad_alloc const&) {
    return tool::refuse("out of memory");
  } catch (std::exception const& e) {
    return tool::refuse(e.what());
  }
  return 0;
}
