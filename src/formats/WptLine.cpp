#include "formats/WptLine.h"

#include <algorithm>

#include "text/Scan.h"

namespace walrim {
namespace {

struct Command {
  std::string_view name;
  WptCommand command;
  std::size_t fields;
};
constexpr std::array<Command, 4> Commands{{{"WP", WptCommand::Waypoint, 7},
                                           {"RN", WptCommand::Route, 2},
                                           {"RP", WptCommand::RoutePoint, 7},
                                           {"TP", WptCommand::TrackPoint, 6}}};
constexpr std::string_view DatumWord = "Datum";

constexpr std::string_view TokyoName = "TOKYO MEAN";
constexpr std::string_view TokyoLine = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664";
constexpr std::string_view Wgs84Line = "Datum,WGS84,WGS84,0,0,0,0,0";

constexpr std::string_view Blanks = " \t";

bool IsUnwritable(char c) {
  return c == '\t' || c == '\r' || c == '\n' || c == '\0';
}

}  // namespace

std::string_view WithoutWptBlanks(std::string_view text) {
  return TrimAny(text, Blanks);
}

std::string_view TakeWptItem(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(Blanks), rest.size()));
  if (!Take(rest, '"')) return WithoutWptBlanks(TakeUpTo(rest, ','));
  const std::string_view item = TakeUpTo(rest, '"');
  TakeUpTo(rest, ',');
  return item;
}

WptLine ReadWptLine(std::string_view line) {
  WptLine result;
  std::string_view rest = WithoutWptBlanks(line);
  const std::string_view whole = rest;
  const std::string_view word = WithoutWptBlanks(TakeWptItem(rest));
  for (const Command& known : Commands) {
    if (!SameWord(word, known.name)) continue;
    result.command = known.command;
    for (std::size_t i = 0; i < known.fields; ++i)
      result.fields[i] = TakeWptItem(rest);
    result.overfull = !rest.empty();
    return result;
  }
  result.fields[0] = word;
  // A Datum line may have lost its first word.
  const bool bare_datum = SameWord(word, TokyoName) || SameWord(word, DatumName(Datum::Wgs84));
  if (bare_datum || SameWord(word, DatumWord)) {
    result.command = WptCommand::Datum;
    result.fields[0] = bare_datum ? whole : rest;
  }
  return result;
}

std::string WptText(std::string_view text) {
  std::string cleaned(text);
  std::replace_if(cleaned.begin(), cleaned.end(), IsUnwritable, ' ');
  return std::string(TrimBlanks(cleaned));
}

bool BreaksWptLine(std::string_view text) {
  return text.find_first_of(",\"") != std::string_view::npos;
}

std::string_view DatumLine(Datum datum) {
  switch (datum) {
    case Datum::Wgs84:
      return Wgs84Line;
    case Datum::Tokyo:
      return TokyoLine;
  }
  return {};
}

std::string_view DatumOfField(std::string_view field) {
  const std::string_view name = TakeWptItem(field);
  return SameWord(name, TokyoName) ? DatumName(Datum::Tokyo) : name;
}

}  // namespace walrim
