// make_manual <manual.md> <manual.html>
//
// Makes the pages for the foreman that ship beside the program, each with its pictures in it, for
// any web browser. Knows as much of Markdown as the manual uses: headings, paragraphs, pictures on a
// line of their own, lists, tables, and in the text **bold**, `code` and [links](target).

#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <string_view>

namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Ostrel Payroll</title>
<style>
body { font: 16px/1.5 sans-serif; max-width: 52em; margin: 2em auto; padding: 0 1em; color: #222; }
h1, h2 { line-height: 1.2; }
h2 { margin-top: 2em; border-bottom: 1px solid #ccc; }
img { max-width: 100%; border: 1px solid #ccc; }
table { border-collapse: collapse; }
th, td { border: 1px solid #ccc; padding: .3em .6em; text-align: left; vertical-align: top; }
code { background: #eee; padding: 0 .2em; }
@media print { body { font-size: 11px; } }
</style>
</head>
<body>
)";

std::string WholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Base64(std::string_view bytes) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    unsigned group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0u);
    }
    for (int shift = 18; shift >= 0; shift -= 6) text += kDigits[group >> shift & 63];
  }
  const std::size_t padding = (3 - bytes.size() % 3) % 3;
  return text.replace(text.size() - padding, padding, padding, '=');
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  }
  return escaped;
}

std::string Inline(const std::string& text) {
  static const std::regex bold(R"(\*\*([^*]+)\*\*)"), code("`([^`]+)`"),
      page(R"(\[([^\]]+)\]\(([^)]+)\.md\))"), link(R"(\[([^\]]+)\]\(([^)]+)\))");
  std::string html = std::regex_replace(Escaped(text), code, "<code>$1</code>");
  html = std::regex_replace(html, bold, "<b>$1</b>");
  html = std::regex_replace(html, page, "<a href=\"$2.html\">$1</a>");  // made of the same kind
  return std::regex_replace(html, link, "<a href=\"$2\">$1</a>");
}

class Page {
 public:
  explicit Page(std::string folder) : folder_(std::move(folder)) {}

  void Add(const std::string& line) {
    static const std::regex heading("(#+) (.*)"), item(R"((-|\d+\.) (.*))"), row(R"(\|(.*)\|)"),
        picture(R"(!\[([^\]]*)\]\(([^)]+)\))");
    std::smatch part;
    if (line.empty()) {
      Open("");
    } else if (std::regex_match(line, part, heading)) {
      Open("");
      const std::string tag = "h" + std::to_string(part[1].length());
      html_ += "<" + tag + ">" + Inline(part[2]) + "</" + tag + ">\n";
    } else if (std::regex_match(line, part, picture)) {
      Open("");
      AddPicture(part[1], part[2]);
    } else if (std::regex_match(line, part, row)) {
      AddRow(part[1]);
    } else if (std::regex_match(line, part, item)) {
      Open(part[1] == "-" ? "ul" : "ol");
      html_ += "<li>" + Inline(part[2]) + "\n";
    } else {
      if (open_.empty()) Open("p");
      html_ += Inline(line) + "\n";
    }
  }

  std::string Html() {
    Open("");
    return kHead + html_ + "</body>\n</html>\n";
  }

 private:
  /// Ends the paragraph, list or table under way and begins another; goes on with one of that kind.
  void Open(const std::string& block) {
    if (block == open_) return;
    if (!open_.empty()) html_ += "</" + open_ + ">\n";
    if (!block.empty()) html_ += "<" + block + ">\n";
    open_ = block;
  }

  void AddPicture(const std::string& words, const std::string& path) {
    const std::string bytes = WholeFile(folder_ + path);
    if (bytes.empty()) std::fprintf(stderr, "manual: no picture %s\n", path.c_str());
    const std::string source = bytes.empty() ? "" : "data:image/png;base64," + Base64(bytes);
    html_ += "<p><img alt=\"" + Escaped(words) + "\" src=\"" + source + "\"></p>\n";
  }

  /// The first row of a table is its heading; the row of dashes below it says nothing.
  void AddRow(const std::string& cells) {
    static const std::regex dashes("[-| ]*"), bar(R"(\|)");
    if (std::regex_match(cells, dashes)) return;
    const std::string tag = open_ == "table" ? "<td>" : "<th>";
    Open("table");
    html_ += "<tr>";
    for (std::sregex_token_iterator cell(cells.begin(), cells.end(), bar, -1), end; cell != end;
         ++cell) {
      html_ += tag;
      html_ += Inline(*cell);
    }
    html_ += "</tr>\n";
  }

  std::string folder_;
  std::string open_;
  std::string html_;
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const std::string source = arguments[1];
  std::ifstream manual(source, std::ios::binary);
  Page page(source.substr(0, source.find_last_of("/\\") + 1));
  for (std::string line; std::getline(manual, line);) page.Add(line);
  std::ofstream made(arguments[2], std::ios::binary | std::ios::trunc);
  made << page.Html();
  return manual.eof() && made.flush() ? 0 : 1;
}
