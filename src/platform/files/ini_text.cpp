#include "platform/files/ini_text.h"

#include <algorithm>
#include <optional>

#include "platform/files/text_encoding.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::size_t kNone = std::string_view::npos;

// What the first bytes say of a file. `Unit` is the size in bytes of a letter of plain ASCII.
struct Kind {
  std::size_t MarkSize = 0;
  std::size_t Unit = 1;
  ByteOrder Order = ByteOrder::LittleEnd;
};

Kind KindOf(std::string_view file) {
  if (file.starts_with("\xEF\xBB\xBF")) return {.MarkSize = 3};
  if (file.starts_with("\xFF\xFE")) return {.MarkSize = 2, .Unit = 2};
  if (file.starts_with("\xFE\xFF")) return {.MarkSize = 2, .Unit = 2, .Order = ByteOrder::BigEnd};
  return {};
}

// The text with one byte for each unit, since all that makes up an ini file is ASCII: offsets in it
// are those in the file but for the unit's size. Any other unit of UTF-16 shows as FF.
std::string OutlineOf(std::string_view body, const Kind& kind) {
  if (kind.Unit == 1) return std::string(body);
  std::string outline;
  outline.reserve(body.size() / 2);
  for (std::size_t at = 0; at + 1 < body.size(); at += 2) {
    const bool highFirst = kind.Order == ByteOrder::BigEnd;
    const char high = body[highFirst ? at : at + 1];
    const char low = body[highFirst ? at + 1 : at];
    const bool ascii = high == 0 && static_cast<unsigned char>(low) < 0x80;
    outline += ascii ? low : '\xFF';
  }
  return outline;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == kNone) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool InQuotes(std::string_view text) {
  return text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
         text.front() == text.back();
}

struct Line {
  std::size_t Begin;
  std::size_t End;   // before its line end
  std::size_t Next;  // behind it
};

Line LineAt(std::string_view text, std::size_t begin) {
  const std::size_t end = std::min(text.find_first_of(kLineEnds, begin), text.size());
  const bool pair = text.substr(end).starts_with("\r\n");
  return {begin, end, std::min(end + (pair ? 2 : 1), text.size())};
}

// The name when the line is a section's first, "[name]".
std::optional<std::string_view> SectionName(std::string_view line) {
  const std::size_t close = line.find(']');
  if (!line.starts_with('[') || close == kNone) return std::nullopt;
  return WithoutBlanks(line.substr(1, close - 1));
}

// Where a key stands or would stand, as offsets in the outline.
struct Place {
  std::size_t ValueBegin = kNone;  // none: the key has no line
  std::size_t ValueEnd = kNone;
  std::size_t NewLine = kNone;  // where a line of the section can be put in; none: no section
};

Place FindKey(std::string_view text, std::string_view section, std::string_view key) {
  Place place;
  for (std::size_t at = 0; at < text.size();) {
    const Line line = LineAt(text, at);
    at = line.Next;
    const std::string_view content = WithoutBlanks(text.substr(line.Begin, line.End - line.Begin));
    if (const auto name = SectionName(content)) {
      if (place.NewLine != kNone) break;
      if (SameText(*name, section)) place.NewLine = line.Next;
      continue;
    }
    const std::size_t equals = content.find('=');
    if (place.NewLine == kNone || content.starts_with(';') || equals == kNone) continue;
    place.NewLine = line.Next;
    if (!SameText(WithoutBlanks(content.substr(0, equals)), key)) continue;
    const std::size_t behind = text.find('=', line.Begin) + 1;
    place.ValueBegin = std::min(text.find_first_not_of(kBlanks, behind), line.End);
    place.ValueEnd = line.End;
    break;
  }
  return place;
}

// How the file's first line ends.
std::string_view LineEndOf(std::string_view text) {
  const Line first = LineAt(text, 0);
  return first.Next > first.End ? text.substr(first.End, first.Next - first.End) : kLineEnds;
}

struct Change {
  std::size_t Begin;  // of what goes
  std::size_t End;
  std::string Text;  // what comes, UTF-8
};

Change ChangeFor(std::string_view text, std::string_view section, std::string_view key,
                 std::string_view value) {
  const Place place = FindKey(text, section, key);
  if (place.ValueBegin != kNone) return {place.ValueBegin, place.ValueEnd, std::string(value)};
  const std::string_view lineEnd = LineEndOf(text);
  const std::size_t at = std::min(place.NewLine, text.size());
  std::string lines;
  if (at > 0 && kLineEnds.find(text[at - 1]) == kNone) lines += lineEnd;
  if (place.NewLine == kNone) lines.append("[").append(section).append("]").append(lineEnd);
  lines.append(key).append("=").append(value).append(lineEnd);
  return {at, at, lines};
}

std::string InKindOf(std::string_view file, const Kind& kind, const std::string& text) {
  if (kind.Unit == 2) return ToUtf16(text, kind.Order);
  if (kind.MarkSize > 0 || IsUtf8(file)) return text;
  std::string bytes = ToCodePage1252(text);
  return AsUtf8(bytes) == text ? bytes : text;
}

}  // namespace

std::string IniValueIn(std::string_view file, std::string_view section, std::string_view key) {
  const Kind kind = KindOf(file);
  const std::string_view body = file.substr(kind.MarkSize);
  const std::string outline = OutlineOf(body, kind);
  const Place place = FindKey(outline, section, key);
  if (place.ValueBegin == kNone) return {};
  const std::string_view bytes =
      body.substr(place.ValueBegin * kind.Unit, (place.ValueEnd - place.ValueBegin) * kind.Unit);
  const std::string line = kind.Unit == 2 ? FromUtf16(bytes, kind.Order) : AsUtf8(bytes);
  std::string_view value = WithoutBlanks(line);
  if (InQuotes(value)) value = value.substr(1, value.size() - 2);
  return std::string(value);
}

std::string WithIniValue(std::string_view file, std::string_view section, std::string_view key,
                         std::string_view value) {
  const Kind kind = KindOf(file);
  const std::string_view body = file.substr(kind.MarkSize);
  const std::string text = QuotedIniValue(AsUtf8(value.substr(0, value.find_first_of(kLineEnds))));
  const Change change = ChangeFor(OutlineOf(body, kind), section, key, text);
  std::string changed(file.substr(0, kind.MarkSize + change.Begin * kind.Unit));
  changed += InKindOf(file, kind, change.Text);
  changed += body.substr(change.End * kind.Unit);
  return changed;
}

std::string QuotedIniValue(std::string_view value) {
  const bool asItStands = WithoutBlanks(value).size() == value.size() && !InQuotes(value);
  return asItStands ? std::string(value) : "\"" + std::string(value) + "\"";
}

}  // namespace ostrel
