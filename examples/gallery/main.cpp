// Writes the gallery, one page with pictures in it:
//
//   gallery FOLDER PLAYGROUND
//
// FOLDER/index.html links to the playground at that address. ./demo --gallery FOLDER runs it.

#include "examples/gallery/room.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace {

constexpr char const* kHead = R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>CRV: gallery</title>
<style>
body { font: 15px/1.5 system-ui, sans-serif; margin: 0 auto; max-width: 1240px; padding: 1em; color: #212529; }
nav a { margin-right: 1em; }
a { color: #1864ab; }
section { display: grid; grid-template-columns: repeat(auto-fill, minmax(340px, 1fr)); gap: 16px; }
article { border: 1px solid #dee2e6; border-radius: 8px; padding: 12px 14px; display: flex; flex-direction: column; }
article h3 { margin: 0; overflow-wrap: anywhere; font: 600 15px ui-monospace, monospace; }
article p { margin: 4px 0; }
article svg { width: 100%; height: auto; }
pre { background: #f8f9fa; border-radius: 6px; padding: 8px; margin: 6px 0; font-size: 12px; white-space: pre-wrap; }
.returned { color: #495057; font-size: 13px; flex: 1; }
</style>
</head>
<body>
<h1>Gallery</h1>
<p>Every operation on real strokes and outlines: the call, what it returned, and a picture of it. The code
is that of the program that wrote this page.</p>
)";

std::string escaped(std::string const& text) {
  std::string out;
  for (char const c : text) {
    if (c == '<')
      out += "&lt;";
    else if (c == '&')
      out += "&amp;";
    else
      out += c;
  }
  return out;
}

void write(std::ostream& out, gallery::Exhibit const& exhibit, std::string const& playground) {
  out << "<article>\n<h3>" << escaped(exhibit.name) << "</h3>\n<p>" << escaped(exhibit.words)
      << "</p>\n"
      << exhibit.picture << "<pre>" << escaped(exhibit.code) << "</pre>\n<p class=\"returned\">"
      << escaped(exhibit.returned) << "</p>\n<p><a href=\"" << playground
      << "#op=" << escaped(exhibit.operation)
      << "\">Try it in the playground</a></p>\n</article>\n";
}

void write(std::string const& folder, std::string const& playground) {
  using gallery::Room;
  std::vector<Room> const rooms = {gallery::fits(),      gallery::polylines(), gallery::measures(),
                                   gallery::meetings(),  gallery::edits(),     gallery::walks(),
                                   gallery::parallels(), gallery::regions(),   gallery::paths(),
                                   gallery::segments(),  gallery::positions(), gallery::points()};
  std::filesystem::create_directories(folder);
  std::ofstream out(std::filesystem::path(folder) / "index.html");
  out << kHead << "<nav>";
  for (Room const& room : rooms)
    out << "<a href=\"#" << room.title << "\">" << room.title << "</a>";
  out << "</nav>\n";
  std::size_t count = 0;
  for (Room const& room : rooms) {
    out << "<h2 id=\"" << room.title << "\">" << room.title << "</h2>\n<section>\n";
    for (gallery::Exhibit const& exhibit : room.exhibits) write(out, exhibit, playground);
    out << "</section>\n";
    count += room.exhibits.size();
  }
  out << "</body>\n</html>\n";
  out.close();
  if (!out) throw std::runtime_error("cannot write into " + folder);
  std::cout << count << " exhibits in " << folder << "/index.html\n";
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::runtime_error("usage: gallery FOLDER PLAYGROUND");
    write(argv[1], argv[2]);
    return 0;
  } catch (std::exception const& e) {
    std::cerr << e.what() << "\n";
    return 1;
  }
}
