// From a script to a WPT+ text.
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "data/InternalData.h"
#include "formats/AngleField.h"
#include "formats/ProAtlas.h"
#include "formats/ScriptLabels.h"
#include "formats/Statement.h"
#include "formats/WptDates.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::string_view NoPosition = "位置が読めません";

constexpr int StatementsPerProgress = 256;
constexpr std::string_view DegreeForm = "D";

/// The theme that a script names first.
ScriptTheme FindTheme(std::string_view script) {
  StatementSplitter statements(script);
  for (std::string text; statements.Next(text);) {
    const auto statement = ParseStatement(text);
    if (statement && statement->keyword == "theme") return ParseThemeText(statement->Value("str"));
  }
  return {};
}

/// True where more than a remark stands on a statement's line behind its end. That is not read.
bool HasTail(std::string_view text) {
  text.remove_prefix(std::min(text.find(';'), text.size()));
  text.remove_prefix(std::min(text.find_first_not_of("; \t"), text.size()));
  return !text.empty() && !text.starts_with("//");
}

/// Takes the next item off a comma list.
std::string_view TakeListItem(std::string_view& list) {
  const std::size_t comma = std::min(list.find(','), list.size());
  const std::string_view item = TrimBlanks(list.substr(0, comma));
  list.remove_prefix(std::min(comma + 1, list.size()));
  return item;
}

/// An ident that cuts no line.
std::string IdentText(std::string_view ident) {
  std::string text(ident);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == ',' || c == '"'; }, ' ');
  return std::string(TrimBlanks(text));
}

bool IsRoutePointGroup(std::string_view gid) {
  return gid == ScriptGroup::RoutePoint || gid == ScriptGroup::RoutePointOrigin ||
         gid == ScriptGroup::RoutePointDestination;
}

/// Makes the WPT+ lines of statements.
class ScriptReader {
 public:
  ScriptReader(const ScriptTheme& theme, Conversion& result) : theme_(theme), result_(result) {
    AppendLine("Datum", {ScriptDatumField});
  }

  void TakeStatement(const Statement& statement) {
    if (statement.keyword == "line") TakeLine(statement);
    if (statement.keyword == "point") TakePoint(statement);
  }
  void CloseLog();

 private:
  struct LogPoint {
    std::optional<GeoPoint> point;
    std::optional<std::int64_t> seconds;
  };

  void AppendLine(std::string_view command, std::initializer_list<std::string_view> fields) {
    result_.text.append(ComposeWptLine(command, fields)).append("\r\n");
  }
  [[nodiscard]] std::optional<GeoPoint> TakePosition(std::string_view& pos) const;
  void TakeLine(const Statement& statement);
  void OpenLog(std::string_view number, std::string_view pos);
  void TakePoint(const Statement& statement);
  /// True for a point of the open log, whose time it tells.
  [[nodiscard]] bool TakeLogPoint(const Statement& statement);
  void AppendPoint(std::string_view command, const Statement& statement, const PointTexts& texts);
  void AppendLogPoint(const LogPoint& point, bool begins);

  const ScriptTheme& theme_;
  Conversion& result_;
  bool route_open_ = false;
  std::string log_number_;
  std::vector<LogPoint> log_;
  /// More than these could not be stored.
  std::size_t log_points_left_ = MaxTrackPoints;
};

std::optional<GeoPoint> ScriptReader::TakePosition(std::string_view& pos) const {
  const std::string_view lat = TakeListItem(pos);
  const std::string_view lon = TakeListItem(pos);
  const auto point = PointOfFields(lat, lon, "MPS");
  if (!point) return std::nullopt;
  return ConvertDatum(*point, theme_.datum, "TOKYO");
}

void ScriptReader::TakeLine(const Statement& statement) {
  const std::string_view gid = statement.Value("gid");
  const std::string_view label = statement.Value("str");
  if (const auto log = ParseLogLabel(label); log && gid == ScriptGroup::TrackLog) {
    return OpenLog(*log, statement.Value("pos"));
  }
  const auto number = ParseRouteLabel(label);
  if (gid != ScriptGroup::Route || !number) return;
  CloseLog();
  route_open_ = true;
  AppendLine("RN", {IdentText(*number), ParseRouteInfo(statement.Value("info"))});
}

void ScriptReader::OpenLog(std::string_view number, std::string_view pos) {
  CloseLog();
  log_number_ = number;
  while (!pos.empty() && log_points_left_ > 0) {
    log_.push_back({TakePosition(pos), std::nullopt});
    --log_points_left_;
  }
  if (!pos.empty()) result_.Skip("トラックログの点が多すぎます");
}

void ScriptReader::CloseLog() {
  bool begins = true;
  for (const LogPoint& point : log_) {
    if (!point.point) {
      result_.Skip(NoPosition);
      continue;
    }
    AppendLogPoint(point, begins);
    begins = false;
  }
  log_.clear();
}

void ScriptReader::AppendLogPoint(const LogPoint& point, bool begins) {
  std::string date(NoDate);
  std::string time(NoTime);
  if (point.seconds) {
    const CivilTime moment = CivilFromGarminSeconds(*point.seconds);
    date = WptDate(moment);
    time = WptTime(moment);
  }
  AppendLine("TP", {DegreeForm, GeneralNumber(point.point->latitude_deg), GeneralNumber(point.point->longitude_deg),
                    date, time, begins ? "1" : "0"});
}

void ScriptReader::TakePoint(const Statement& statement) {
  const std::string_view gid = statement.Value("gid");
  const std::string_view info = statement.Value("info");
  if (gid == ScriptGroup::TrackPoint) {
    if (TakeLogPoint(statement)) return;
  } else {
    CloseLog();
  }
  if (gid == ScriptGroup::Waypoint) {
    if (const auto texts = ParseWaypointInfo(info)) return AppendPoint("WP", statement, *texts);
  } else if (IsRoutePointGroup(gid) && route_open_) {
    if (const auto texts = ParseRoutePointInfo(info)) return AppendPoint("RP", statement, *texts);
  }
  const std::string_view label = TrimBlanks(statement.Value("str"));
  AppendPoint("WP", statement, {label.empty() ? statement.Value("oid") : label, TrimBlanks(info)});
}

bool ScriptReader::TakeLogPoint(const Statement& statement) {
  const auto mark = ParseTrackPointInfo(statement.Value("info"));
  if (!mark || mark->point < 1 || mark->point > log_.size()) return false;
  if (mark->log != log_number_) return false;
  if (mark->moment) {
    log_[mark->point - 1].seconds =
        SecondsSinceGarminEpoch(*mark->moment) - std::int64_t{theme_.utc_offset_hours} * 3600;
  }
  return true;
}

void ScriptReader::AppendPoint(std::string_view command, const Statement& statement, const PointTexts& texts) {
  std::string_view pos = statement.Value("pos");
  const auto point = TakePosition(pos);
  if (!point) {
    result_.Skip(NoPosition);
    return;
  }
  std::string comment(texts.comment);
  if (theme_.utc_offset_hours != 0) comment = WithShiftedStamp(comment, -theme_.utc_offset_hours);
  const auto stamp = FindCreationStamp(comment);
  AppendLine(command, {DegreeForm, IdentText(texts.ident), GeneralNumber(point->latitude_deg),
                       GeneralNumber(point->longitude_deg), stamp ? WptDate(stamp->moment) : std::string(NoDate),
                       stamp ? WptTime(stamp->moment) : std::string(NoTime), comment});
}

}  // namespace

Conversion ConvertScriptToWpt(std::string_view script, const ConversionProgress& progress) {
  Conversion result;
  const ScriptTheme theme = FindTheme(script);
  ScriptReader reader(theme, result);
  StatementSplitter statements(script);
  int count = 0;
  for (std::string text; statements.Next(text);) {
    const auto statement = ParseStatement(text);
    if (statement) reader.TakeStatement(*statement);
    if (HasTail(text) && !(statement && statement->keyword == "comment")) {
      result.Skip("文の後ろに同じ行の続きがあります");
    }
    if (progress && ++count % StatementsPerProgress == 0) progress(statements.Offset(), script.size());
  }
  reader.CloseLog();
  if (statements.Incomplete()) result.Skip("文に終わりがありません");
  return result;
}

}  // namespace walrim
