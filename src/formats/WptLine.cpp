#include "formats/WptLine.h"

#include <algorithm>

#include "text/Utf8.h"

namespace walrim {
namespace {

struct Command {
  std::string_view name;
  std::size_t fields;
};
constexpr std::array<Command, 4> Commands{{{"WP", 7}, {"RN", 2}, {"RP", 7}, {"TP", 6}}};
constexpr std::string_view DatumCommand = "Datum";

constexpr std::string_view TokyoLine = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664";
constexpr std::string_view Wgs84Line = "Datum,WGS84,WGS84,0,0,0,0,0";

char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool SameWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char a, char b) { return Upper(a) == Upper(b); });
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front()))
    text.remove_prefix(1);
  return text;
}

std::string_view WithoutBlanks(std::string_view text) {
  text = WithoutLeadingBlanks(text);
  while (!text.empty() && IsBlank(text.back()))
    text.remove_suffix(1);
  return text;
}

/// Takes everything up to the next comma off the front, and the comma.
std::string_view TakeUpToComma(std::string_view& rest) {
  const std::size_t comma = std::min(rest.find(','), rest.size());
  const std::string_view item = rest.substr(0, comma);
  rest.remove_prefix(std::min(comma + 1, rest.size()));
  return item;
}

std::string_view TakeItem(std::string_view& rest) {
  rest = WithoutLeadingBlanks(rest);
  if (rest.empty() || rest.front() != '"') return WithoutBlanks(TakeUpToComma(rest));
  rest.remove_prefix(1);
  const std::size_t quote = std::min(rest.find('"'), rest.size());
  const std::string_view item = rest.substr(0, quote);
  rest.remove_prefix(std::min(quote + 1, rest.size()));
  (void)TakeUpToComma(rest);
  return item;
}

/// The commands of Datum lines that lost their first word.
bool IsBareDatum(std::string_view command) {
  return SameWord(command, "TOKYO MEAN") || SameWord(command, "WGS84");
}

}  // namespace

std::string UnsupportedCommand(std::string_view command) {
  return "command [" + std::string(command) + "] is not suppoted";
}

void MessageList::Add(std::string_view message) {
  if (kept.size() < MostKept) kept.emplace_back(message);
  ++count;
}

std::string_view DatumLine(std::string_view datum) {
  return SameWord(datum, "TOKYO") ? TokyoLine : Wgs84Line;
}

std::string_view DatumOfField(std::string_view field) {
  const std::string_view name = TakeItem(field);
  if (SameWord(name, "TOKYO MEAN") || SameWord(name, "TOKYO")) return "Tokyo";
  return SameWord(name, "WGS84") ? "WGS84" : name;
}

std::string ComposeWptLine(std::string_view command, std::initializer_list<std::string_view> fields) {
  std::array<std::string_view, WptFieldCount> f;
  std::copy_n(fields.begin(), std::min(fields.size(), f.size()), f.begin());
  std::string line(command);
  const auto add = [&line](std::string_view separator, std::string_view field) {
    line.append(separator).append(field);
  };
  if (command == DatumCommand) {
    add(",", f[0]);
  } else if (command == "WP" || command == "RP") {
    add(",", f[0]);
    add(",", f[1]);
    add(", ", f[2]);
    add(", ", f[3]);
    add(",", f[4]);
    add(",", f[5]);
    add(",", f[6]);
  } else if (command == "RN") {
    add(",", f[0]);
    add(",", f[1]);
  } else if (command == "TP") {
    add(",", f[0]);
    add(", ", f[1]);
    add(", ", f[2]);
    add(",", f[3]);
    add(",", f[4]);
    add(",", f[5]);
  } else {
    line = UnsupportedCommand(command);
  }
  return line;
}

namespace {

/// Offset of the first line end from a place on. Searched in short pieces, so that a text with one kind of line end is
/// not looked through for the other kind again for every line.
std::size_t FindLineEnd(std::string_view text, std::size_t from) {
  constexpr std::size_t PieceSize = 256;
  for (; from < text.size(); from += PieceSize) {
    const std::string_view piece = text.substr(from, PieceSize);
    const std::size_t line_feed = std::min(piece.find('\n'), piece.size());
    const std::size_t end = std::min(piece.substr(0, line_feed).find('\r'), line_feed);
    if (end < piece.size()) return from + end;
  }
  return text.size();
}

}  // namespace

std::string_view TakeTextLine(std::string_view text, std::size_t& offset) {
  const std::size_t begin = offset;
  offset = FindLineEnd(text, begin);
  const std::string_view line = text.substr(begin, offset - begin);
  if (offset < text.size() && text[offset++] == '\r' && offset < text.size() && text[offset] == '\n') ++offset;
  return line;
}

bool WptLineReader::NextLine() {
  while (rest_.empty()) {
    if (offset_ >= text_.size()) return false;
    rest_ = WithoutBlanks(TakeTextLine(text_, offset_));
    ++line_number_;
  }
  return true;
}

WptLine WptLineReader::Read() {
  WptLine line;
  if (!NextLine()) {
    line.command = WptEnd;
    return line;
  }
  const std::string_view whole = rest_;
  const std::string_view word = WithoutBlanks(TakeItem(rest_));
  for (const Command& known : Commands) {
    if (!SameWord(word, known.name)) continue;
    line.command = known.name;
    for (std::size_t i = 0; i < known.fields; ++i)
      line.fields[i] = TakeItem(rest_);
    line.overfull = !rest_.empty();
    SkipLine();
    return line;
  }
  if (SameWord(word, DatumCommand) || IsBareDatum(word)) {
    line.command = DatumCommand;
    line.fields[0] = SameWord(word, DatumCommand) ? rest_ : whole;
    SkipLine();
    return line;
  }
  message_ = UnsupportedCommand(word);
  line.fields[0] = message_;
  return line;
}

}  // namespace walrim
