#include "tests/architecture/declarations.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

namespace architecture {

namespace {

fs::path const kRoot = CRV_SOURCE_DIR;

/// What a heading becomes in text without comments: this character, the file, this character.
constexpr char kHeading = '\x01';

std::vector<std::string> linesOf(fs::path const& file) {
  std::vector<std::string> lines;
  std::istringstream in(contentOf(file));
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string squeezed(std::string const& text) {
  std::string const spaced = std::regex_replace(text, std::regex("\\s+"), " ");
  return std::regex_replace(spaced, std::regex("^ | $"), "");
}

/// The text without comments and preprocessor lines; headings are marked.
std::string codeOf(fs::path const& file) {
  static std::regex const heading(R"(^\s*// ---- (\S+\.cpp))");
  std::string code;
  std::smatch match;
  bool directive = false;
  for (std::string const& line : linesOf(file)) {
    bool const continued = directive && !line.empty();
    directive = (continued || line.substr(0, 1) == "#") && !line.empty() && line.back() == '\\';
    if (continued || line.substr(0, 1) == "#") continue;
    if (std::regex_search(line, match, heading)) code += kHeading + match.str(1) + kHeading;
    code += line.substr(0, line.find("//")) + '\n';
  }
  return code;
}

/// The position after the bracket that closes the one at begin.
std::size_t afterClosing(std::string const& text, std::size_t begin, char open, char close) {
  int depth = 0;
  for (std::size_t i = begin; i < text.size(); ++i) {
    depth += text[i] == open;
    depth -= text[i] == close;
    if (depth == 0) return i + 1;
  }
  return text.size();
}

/// Walks through a header, a declaration at a time.
class HeaderReader {
 public:
  explicit HeaderReader(fs::path const& header) : header_(header), code_(codeOf(header)) {}

  std::vector<Function> read() {
    while (at_ < code_.size()) step(code_[at_++]);
    return functions_;
  }

 private:
  struct Scope {
    std::string name;  // of a class; empty for a namespace
    std::string access;
  };

  void step(char c) {
    if (c == kHeading) {
      std::size_t const end = code_.find(kHeading, at_);
      heading_ = code_.substr(at_, end - at_);
      at_ = end + 1;
    } else if (c == '(') {
      std::size_t const end = afterClosing(code_, at_ - 1, '(', ')');
      declaration_ += code_.substr(at_ - 1, end - at_ + 1);
      at_ = end;
    } else if (c == ';') {
      finish(false);
    } else if (c == '{') {
      open();
    } else if (c == '}') {
      if (!scopes_.empty()) scopes_.pop_back();
      if (scopes_.empty() || scopes_.back().name.empty()) heading_.clear();
      declaration_.clear();
    } else if (c == ':' && isAccess(squeezed(declaration_))) {
      if (!scopes_.empty()) scopes_.back().access = squeezed(declaration_);
      declaration_.clear();
    } else {
      declaration_ += c;
    }
  }

  static bool isAccess(std::string const& word) {
    return word == "public" || word == "protected" || word == "private";
  }

  void open() {
    static std::regex const space(R"(\bnamespace\b\s*(\S*))");
    static std::regex const type(R"(\b(class|struct)\s+(?:CRV_API\s+)?(\w+)[^()]*$)");
    static std::regex const parameters(R"(\btemplate\s*<[^>]*>)");
    declaration_ = std::regex_replace(declaration_, parameters, "");
    std::smatch match;
    if (std::regex_search(declaration_, match, space)) {
      scopes_.push_back({"", "public"});
    } else if (std::regex_search(declaration_, match, type)) {
      bool const hidden = !scopes_.empty() && scopes_.back().access == "private";
      scopes_.push_back({match[2], hidden ? "hidden" : match[1] == "class" ? "private" : "public"});
    } else {
      finish(true);
      at_ = afterClosing(code_, at_ - 1, '{', '}');
    }
    declaration_.clear();
  }

  std::string scopeName() const {
    std::string name;
    for (Scope const& scope : scopes_) {
      if (!scope.name.empty()) name += (name.empty() ? "" : "::") + scope.name;
    }
    return name;
  }

  bool isVisible() const {
    return std::all_of(scopes_.begin(), scopes_.end(), [](Scope const& scope) {
      return scope.access == "public" || scope.access == "protected";
    });
  }

  void finish(bool hasBody) {
    static std::regex const function(R"((operator\s*(?:\(\)|[^\s\w(]+)|[\w~]+)\s*(\([\s\S]*))");
    static std::regex const noFunction(R"(^(extern template|using|friend|typedef)\b)");
    std::string const text = squeezed(declaration_);
    declaration_.clear();
    std::size_t const bracket = text.find('(');
    std::size_t const equals = text.find('=');
    bool const isValue = equals < bracket && text.find("operator") == std::string::npos;
    std::smatch match;
    if (!isVisible() || isValue || std::regex_search(text, noFunction) ||
        !std::regex_search(text, match, function)) {
      return;
    }
    bool const isMemberOutside =
        match.position(0) >= 2 &&
        text.compare(static_cast<std::size_t>(match.position(0)) - 2, 2, "::") == 0;
    if (isMemberOutside || text.find('~') < bracket) return;
    std::string const rest = match[2];
    if (std::regex_search(rest, std::regex("= delete$"))) return;
    std::size_t const end = afterClosing(rest, 0, '(', ')');
    bool const isConst = rest.compare(end, 6, " const") == 0;
    bool const isSettled = std::regex_search(rest, std::regex(R"(= (default|0)$)"));
    std::string const arguments = std::regex_replace(rest.substr(0, end), std::regex("\\( "), "(");
    Function const found{scopeName(),
                         match[1],
                         arguments + (isConst ? " const" : ""),
                         heading_,
                         header_,
                         !scopes_.empty() && scopes_.back().access == "protected",
                         hasBody || isSettled};
    // An inline function may be declared first and defined below.
    for (Function& f : functions_) {
      if (f.qualifiedName() != found.qualifiedName() || f.arguments != found.arguments) continue;
      f.isInline = f.isInline || found.isInline;
      return;
    }
    functions_.push_back(found);
  }

  fs::path header_;
  std::string code_;
  std::size_t at_ = 0;
  std::string declaration_;
  std::string heading_;
  std::vector<Scope> scopes_;
  std::vector<Function> functions_;
};

}  // namespace

std::vector<fs::path> filesOfLibrary(std::string const& extension, bool internal) {
  std::vector<fs::path> files;
  for (auto const& entry : fs::recursive_directory_iterator(kRoot / "crv")) {
    fs::path const& file = entry.path();
    if (file.extension() != extension) continue;
    if (internal || file.parent_path().filename() != "internal") files.push_back(file);
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string contentOf(fs::path const& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string fromRoot(fs::path const& file) {
  return file.lexically_relative(kRoot).generic_string();
}

std::vector<Function> functionsOf(fs::path const& header) { return HeaderReader(header).read(); }

std::vector<std::string> definitionsIn(fs::path const& source) {
  static std::regex const definition(
      R"((?:^|\n)(?=[A-Za-z_])[^;{}()#]*?((?:\w+::)*(?:operator\s*(?:\(\)|[^\s\w(]+)|\w+))\()");
  static std::map<fs::path, std::vector<std::string>> known;
  if (known.count(source) > 0) return known[source];
  std::string const code = codeOf(source);
  std::vector<std::string>& names = known[source];
  for (std::sregex_iterator i(code.begin(), code.end(), definition), end; i != end; ++i) {
    std::size_t const bracket = static_cast<std::size_t>(i->position(0) + i->length(0)) - 1;
    std::size_t const after = afterClosing(code, bracket, '(', ')');
    std::size_t const next = code.find_first_of(";{", after);
    if (next == std::string::npos) continue;
    bool const isDefaulted =
        code.substr(after, next - after).find("= default") != std::string::npos;
    if (code[next] == '{' || isDefaulted) names.push_back((*i)[1]);
  }
  return names;
}

std::vector<Constants> constantsOf(fs::path const& file) {
  static std::regex const constant(
      R"(^\s*(?:inline |static )?constexpr ([\w ]+?) (k[A-Z]\w*)(?:\[[^=]*)? = ([^;]*);?\s*(?://\s*(.*))?$)");
  std::vector<Constants> found;
  std::vector<std::string> const lines = linesOf(file);
  std::string comment;
  bool together = false;
  std::smatch match;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::size_t const mark = lines[i].find_first_not_of(" /");
    bool const isComment = lines[i].find("//") < mark && mark != std::string::npos;
    if (std::regex_match(lines[i], match, constant)) {
      std::string value = match[3];
      for (std::size_t k = i; lines[k].find(';') == std::string::npos; ++i)
        value += lines[k = i + 1];
      value = squeezed(value.substr(0, value.find(';')));
      if (!together) found.push_back({{}, {}, {}, comment});
      found.back().types.push_back(match[1]);
      found.back().names.push_back(match[2]);
      found.back().values.push_back(value);
      if (match[4].matched) found.back().comment += " " + match.str(4);
      found.back().comment = squeezed(found.back().comment);
      together = true;
      comment.clear();
    } else {
      if (!isComment) comment.clear();
      if (isComment) comment += " " + lines[i].substr(mark);
      together = false;
    }
  }
  return found;
}

}  // namespace architecture
