#include "dialogs/MapPointPair.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "dialogs/MapPointText.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

namespace {

/// Far more than a pair of coordinates and a datum's name take.
constexpr std::size_t LongestPair = 256;

struct Spelling {
  std::string_view from;
  std::string_view to;
};

/// What maps write for the few characters that the grammar of a pair is made of. Longer spellings come first.
constexpr Spelling Spellings[] = {
    {"日本測地系2000", "WGS84"},
    {"日本測地系2011", "WGS84"},
    {"日本測地系", "TOKYO"},
    {"世界測地系", "WGS84"},
    {"北緯", "N"},
    {"南緯", "S"},
    {"東経", "E"},
    {"西経", "W"},
    {"度", "d"},
    {"分", "'"},
    {"秒", "\""},
    {"\u2032\u2032", "\""},
    {"\u2019\u2019", "\""},
    {"\u00B0", "d"},
    {"\u00BA", "d"},
    {"\u02DA", "d"},
    {"\u2032", "'"},
    {"\u2018", "'"},
    {"\u2019", "'"},
    {"\u00B4", "'"},
    {"\u2033", "\""},
    {"\u201C", "\""},
    {"\u201D", "\""},
    {"''", "\""},
    {"\u2212", "-"},
    {"\u2013", "-"},
    {"\u3001", ","},
    {"\u3000", " "},
    {"\u00A0", " "},
    {"\u2009", " "},
    {"\u202F", " "},
    {"\u200E", ""},
    {"\u200F", ""},
    {"\uFEFF", ""},
    {"\t", " "},
    {"\r", " "},
    {"\n", " "},
};

/// Full-width letters, digits and signs as their ASCII ones, letters as capitals.
std::string Narrow(std::string_view text) {
  constexpr char32_t FirstWide = 0xFF01;
  constexpr char32_t LastWide = 0xFF5E;
  std::string narrow;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    const bool wide = character >= FirstWide && character <= LastWide;
    AppendCharacter(narrow, wide ? character - FirstWide + U'!' : character);
  }
  return UpperCase(narrow);
}

std::string Normalized(std::string_view text) {
  const std::string narrow = Narrow(text);
  std::string normal;
  for (std::string_view rest = narrow; !rest.empty();) {
    const Spelling* const found =
        std::find_if(std::begin(Spellings), std::end(Spellings),
                     [&](const Spelling& spelling) { return rest.starts_with(spelling.from); });
    const bool known = found != std::end(Spellings);
    normal += known ? found->to : rest.substr(0, 1);
    rest.remove_prefix(known ? found->from.size() : 1);
  }
  return normal;
}

/// What may stand around a pair, and between it and a datum's name.
constexpr std::string_view Around = " ,:()[]";

std::string_view WithoutBrackets(std::string_view text) {
  return TrimAny(text, Around);
}

/// Takes a datum's name off either end of a normalized text.
std::optional<Datum> TakeDatum(std::string_view& text) {
  for (const Datum datum : {Datum::Wgs84, Datum::Tokyo}) {
    const std::size_t length = DatumName(datum).size();
    if (text.size() <= length) continue;
    const bool first = BeginsWithWord(text, DatumName(datum)) && Around.find(text[length]) != std::string_view::npos;
    const bool last = SameWord(text.substr(text.size() - length), DatumName(datum));
    if (!first && !last) continue;
    text = WithoutBrackets(first ? text.substr(length) : text.substr(0, text.size() - length));
    return datum;
  }
  return std::nullopt;
}

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

char TakeDirection(std::string_view& text) {
  constexpr std::string_view Directions = "NSEW";
  if (text.empty() || Directions.find(text.front()) == std::string_view::npos) return 0;
  const char direction = text.front();
  text.remove_prefix(1);
  return direction;
}

/// Takes the next number of an angle and its mark; leaves text as it is where the mark is another.
std::optional<std::string_view> TakePart(std::string_view& text, std::string_view mark) {
  std::string_view rest = text;
  SkipBlanks(rest);
  const auto number = TakeNumber(rest);
  SkipBlanks(rest);
  if (!number || !Take(rest, mark)) return std::nullopt;
  text = rest;
  return number;
}

/// The degrees of one angle without sign and direction.
struct Magnitude {
  std::optional<double> degrees;  ///< nothing where the notation fits and the numbers do not
  bool needs_direction = false;   ///< by itself it could be something else
};
/// Each takes one notation off the front of a text, or leaves the text as it is and gives nothing.
using TakeNotation = std::optional<Magnitude> (*)(std::string_view& text);

/// 35d37'30.7", where what is left out at the end is 0 and only the last part has a fraction.
std::optional<Magnitude> TakeMarked(std::string_view& text) {
  const auto degrees = TakePart(text, "d");
  if (!degrees) return std::nullopt;
  const auto minutes = TakePart(text, "'");
  if (!minutes) return Magnitude{Degrees(*degrees)};
  const auto seconds = TakePart(text, "\"");
  if (seconds && HasFraction(*minutes)) return Magnitude{};
  return Magnitude{DegreesOfParts(*degrees, *minutes, seconds.value_or("0"))};
}

/// 35.37.30 or 35.37.30.7
std::optional<Magnitude> TakeDotted(std::string_view& text) {
  std::string_view rest = text;
  const std::string_view degrees = TakeDigits(rest);
  if (degrees.empty() || !Take(rest, ".")) return std::nullopt;
  const std::string_view minutes = TakeDigits(rest);
  if (minutes.empty() || minutes.size() > MostDigits || !Take(rest, ".")) return std::nullopt;
  const auto seconds = TakeNumber(rest);
  if (!seconds) return std::nullopt;
  text = rest;
  return Magnitude{DegreesOfParts(degrees, minutes, *seconds), true};
}

/// 35.6252; a whole number is taken for degrees only with a direction.
std::optional<Magnitude> TakeDecimal(std::string_view& text) {
  const auto number = TakeNumber(text);
  if (!number) return std::nullopt;
  return Magnitude{Degrees(*number), !HasFraction(*number)};
}

struct Angle {
  double degrees = 0;
  char direction = 0;  ///< N, S, E or W; 0 where the text has none
  bool needs_direction = false;
  TakeNotation notation = nullptr;
};

std::optional<Angle> TakeAngle(std::string_view& text) {
  Angle angle;
  SkipBlanks(text);
  angle.direction = TakeDirection(text);
  SkipBlanks(text);
  const bool negative = Take(text, "-");
  const bool has_sign = negative || Take(text, "+");
  std::optional<Magnitude> magnitude;
  for (const TakeNotation take : {TakeMarked, TakeDotted, TakeDecimal}) {
    if (magnitude) break;
    magnitude = take(text);
    angle.notation = take;
  }
  if (!magnitude || !magnitude->degrees) return std::nullopt;
  SkipBlanks(text);
  if (angle.direction == 0) angle.direction = TakeDirection(text);
  if (has_sign && angle.direction != 0) return std::nullopt;
  const bool reversed = negative || angle.direction == 'S' || angle.direction == 'W';
  angle.degrees = reversed ? -*magnitude->degrees : *magnitude->degrees;
  angle.needs_direction = magnitude->needs_direction;
  return angle;
}

bool IsNorthSouth(const Angle& angle) {
  return angle.direction == 'N' || angle.direction == 'S';
}

std::optional<MapPoint> PointOfAngles(const Angle& first, const Angle& second) {
  // A lone angle whose last mark is missing reads as two of different notations.
  if (first.notation != second.notation) return std::nullopt;
  const bool directed = first.direction != 0;
  if (directed != (second.direction != 0)) return std::nullopt;
  if (!directed) {
    if (first.needs_direction || second.needs_direction) return std::nullopt;
    return PointAt(first.degrees, second.degrees);
  }
  if (IsNorthSouth(first) == IsNorthSouth(second)) return std::nullopt;
  return IsNorthSouth(first) ? PointAt(first.degrees, second.degrees) : PointAt(second.degrees, first.degrees);
}

}  // namespace

std::optional<MapPoint> PointOfPair(std::string_view text) {
  if (text.size() > LongestPair) return std::nullopt;
  const std::string normal = Normalized(text);
  std::string_view rest = WithoutBrackets(normal);
  const auto datum = TakeDatum(rest);
  const auto first = TakeAngle(rest);
  if (!first) return std::nullopt;
  const char last = normal[static_cast<std::size_t>(rest.data() - normal.data()) - 1];
  const bool separated = Take(rest, ",") || last == ' ';
  if (!separated && (rest.starts_with('-') || rest.starts_with('+'))) return std::nullopt;
  const auto second = TakeAngle(rest);
  if (!second || !rest.empty()) return std::nullopt;
  auto point = PointOfAngles(*first, *second);
  if (point && datum) point->datum = *datum;
  return point;
}

std::optional<MapAngle> AngleOfText(std::string_view text) {
  if (text.size() > LongestPair) return std::nullopt;
  const std::string normal = Normalized(text);
  std::string_view rest = TrimBlanks(normal);
  const auto angle = TakeAngle(rest);
  if (!angle || !rest.empty()) return std::nullopt;
  return MapAngle{angle->degrees, angle->direction, angle->direction == 0 && angle->notation == TakeDecimal};
}

}  // namespace walrim
