#include <string>

#include "dialogs/MapPointText.h"
#include "formats/ScriptLabels.h"
#include "formats/ScriptTheme.h"
#include "formats/StatementParser.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

namespace {

/// An angle d/mm/ss.s as scripts write it. Their writer rounds degrees down, also below 0, and rounds seconds up to 60.
std::optional<double> SlashedAngle(std::string_view text) {
  text = TrimSpace(text);
  const std::string_view start = text;
  Take(text, '-');
  const std::string_view whole = TakeDigits(text);
  const std::string_view degrees = start.substr(0, start.size() - text.size());
  if (whole.empty() || !Take(text, '/')) return std::nullopt;
  const auto minutes = TakeNumber(text);
  if (!minutes || !Take(text, '/')) return std::nullopt;
  const auto seconds = TakeNumber(text);
  if (!seconds || !text.empty()) return std::nullopt;
  return DegreesOfParts(degrees, *minutes, *seconds, true);
}

/// Sets the texts of a point. An info "[WP]<ident><comment>" holds the whole ident, of which str may show less.
void SetTexts(const Statement& statement, MapPoint& point) {
  std::string_view ident = TrimSpace(statement.values[ObjectKey::Str]);
  std::string_view comment = TrimSpace(statement.values[ObjectKey::Info]);
  if (const auto texts = ParseWaypointInfo(comment)) {
    ident = texts->ident;
    comment = texts->comment;
  } else if (Take(comment, WaypointMark)) {
    comment = TrimSpace(comment);
  }
  point.ident = WithoutControlCharacters(ident);
  point.cmnt = WithoutControlCharacters(comment);
}

std::optional<MapPoint> PointOfStatement(const Statement& statement) {
  std::string_view lon_text = statement.values[ObjectKey::Pos];
  const auto lat = SlashedAngle(TakeUpTo(lon_text, ','));
  const auto lon = SlashedAngle(lon_text);
  if (!lat || !lon) return std::nullopt;
  auto point = PointAt(*lat, *lon);
  if (point) SetTexts(statement, *point);
  return point;
}

/// Whether a statement draws nothing by itself and may stand around the point.
bool StandsAround(StatementKeyword keyword) {
  switch (keyword) {
    case StatementKeyword::Group:
    case StatementKeyword::MapServer:
    case StatementKeyword::Init:
    case StatementKeyword::Kanji:
    case StatementKeyword::Georef:
    case StatementKeyword::Theme:
    case StatementKeyword::Icon:
    case StatementKeyword::Message:
    case StatementKeyword::Disp:
    case StatementKeyword::Pick:
    case StatementKeyword::Input:
    case StatementKeyword::Addon:
      return true;
    case StatementKeyword::Point:
    case StatementKeyword::Line:
    case StatementKeyword::Circle:
    case StatementKeyword::Rect:
    case StatementKeyword::Area:
    case StatementKeyword::Comment:
      return false;
  }
  return false;
}

/// Takes a statement up to its ";", its lines joined. The last one may lack it.
std::string TakeStatement(std::string_view& text) {
  const std::string whole = std::string(TakeUpTo(text, ';')) + ";";
  LineSource lines(whole, TextEncoding::Utf8);
  std::string statement;
  return StatementSplitter(lines).Next(statement) ? statement : std::string();
}

}  // namespace

std::optional<MapPoint> PointOfScript(std::string_view text) {
  std::optional<MapPoint> point;
  ScriptThemeFinder theme;
  for (text = TrimSpace(text); !text.empty(); text = TrimSpace(text)) {
    if (text.starts_with("//")) {
      TakeUntilAny(text, "\r\n");
      continue;
    }
    const std::string statement_text = TakeStatement(text);
    const auto statement = ParseStatement(statement_text);
    if (!statement) return std::nullopt;
    theme.Take(*statement);
    if (StandsAround(statement->keyword)) continue;
    if (point || statement->keyword != StatementKeyword::Point) return std::nullopt;
    point = PointOfStatement(*statement);
    if (!point) return std::nullopt;
  }
  if (point) point->datum = theme.Found().datum;
  return point;
}

}  // namespace walrim
