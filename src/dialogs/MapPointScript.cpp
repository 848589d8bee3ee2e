#include "dialogs/MapPointScript.h"

#include <string>

#include "dialogs/MapPointText.h"
#include "formats/ScriptLabels.h"
#include "formats/ScriptTheme.h"
#include "formats/StatementParser.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

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
  std::string_view pos = statement.values[ObjectKey::Pos];
  const auto position = TakePosition(pos);
  if (!position) return std::nullopt;
  MapPoint point = map_point::PointAt(position->latitude_deg, position->longitude_deg);
  SetTexts(statement, point);
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
