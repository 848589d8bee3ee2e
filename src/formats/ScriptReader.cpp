#include "formats/ScriptReader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "formats/RecordIntake.h"
#include "formats/ScriptLabels.h"
#include "formats/ScriptTheme.h"
#include "formats/StatementParser.h"
#include "formats/WptDates.h"
#include "formats/WptLine.h"
#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using namespace format_messages;

/// True where more than a remark stands on a statement's line behind its end. That is not read.
bool HasTail(std::string_view text) {
  text.remove_prefix(std::min(text.find(';'), text.size()));
  text.remove_prefix(std::min(text.find_first_not_of("; \t"), text.size()));
  return !text.empty() && !text.starts_with("//");
}

bool IsRoutePointGroup(std::string_view gid) {
  return gid == ScriptGroup::RoutePoint || gid == ScriptGroup::RoutePointOrigin ||
         gid == ScriptGroup::RoutePointDestination;
}

/// Degrees rounded to 15 digits, so that a script gives the same positions in every file made of it.
double Rounded(double degrees) {
  const double magnitude = std::abs(degrees);
  // Where the digits are a whole number in units of a power of ten, both are doubles, and one division gives the
  // nearest.
  const double unit = magnitude >= 100 ? 1e12 : magnitude >= 10 ? 1e13 : 1e14;
  const double scaled = magnitude * unit;
  const double nearest = std::round(scaled);
  const double off = scaled - nearest + std::fma(magnitude, unit, -scaled);
  constexpr double SurelyNearest = 0.4999;
  if (magnitude >= 1 && magnitude < 1000 && std::abs(off) < SurelyNearest)
    return std::copysign(nearest / unit, degrees);
  std::string text;
  AppendGeneralNumber(text, degrees);
  return LeadingNumber(text);
}

/// An ident as a field of a WPT+ line that it does not cut gives it back.
std::string IdentText(std::string_view ident) {
  std::string text(ident);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == ',' || c == '"'; }, ' ');
  std::string scratch;
  return CapitalText(PlainText(WithoutWptBlanks(text), scratch));
}

/// Stores what the statements of a script say.
class ScriptReader {
 public:
  ScriptReader(const ScriptTheme& theme, DataSet& data, int utc_offset_hours)
      : theme_(theme), utc_offset_hours_(utc_offset_hours), intake_(data) {
    intake_.SetLine(1);
  }

  void TakeText(std::string_view text);
  void SkipStatement(std::string_view why) { intake_.Account().statements.Add(0, why); }
  void CloseLog();
  [[nodiscard]] const ImportResult& Result() { return intake_.Account(); }

 private:
  struct LogPoint {
    std::optional<GeoPoint> point;  ///< on the script's datum
    std::optional<std::int64_t> seconds;
  };

  void NextLine() { intake_.SetLine(intake_.Line() + 1); }
  /// Puts a position on the script's datum into a record; counts it where it is off the globe.
  template <typename Record>
  [[nodiscard]] bool Place(const GeoPoint& given, Record& record);
  /// A comment as the last field of a WPT+ line gives it back.
  [[nodiscard]] std::string FieldText(std::string_view text);

  void TakeLine(const Statement& statement);
  void OpenLog(std::string_view number, std::string_view pos);
  void TakePoint(const Statement& statement);
  /// True for a point of the open log, whose time it tells.
  [[nodiscard]] bool TakeLogPoint(const Statement& statement);
  /// A point's texts, and its position on the script's datum; nothing, and counted, where it has none.
  [[nodiscard]] std::optional<GeoPoint> ReadPoint(const Statement& statement, const PointTexts& texts,
                                                  Waypoint& waypoint);
  void StoreWaypoint(const Statement& statement, const PointTexts& texts);
  void StoreRoutePoint(const Statement& statement, const PointTexts& texts);
  void StoreLogPoint(const LogPoint& log_point, bool begins);

  ScriptTheme theme_;
  int utc_offset_hours_;
  RecordIntake intake_;
  bool route_begun_ = false;
  std::string log_number_;
  std::vector<LogPoint> log_;
  /// More than these could not be stored.
  std::size_t log_points_left_ = MaxTrackPoints;
  std::string scratch_;
};

void ScriptReader::TakeText(std::string_view text) {
  const auto statement = ParseStatement(text);
  if (statement && statement->keyword == StatementKeyword::Line) TakeLine(*statement);
  if (statement && statement->keyword == StatementKeyword::Point) TakePoint(*statement);
  const bool comment = statement && statement->keyword == StatementKeyword::Comment;
  if (!comment && HasTail(text)) SkipStatement(StatementTail);
}

template <typename Record>
bool ScriptReader::Place(const GeoPoint& given, Record& record) {
  const GeoPoint rounded{Rounded(given.latitude_deg), Rounded(given.longitude_deg), 0};
  const GeoPoint point = ConvertDatum(rounded, theme_.datum, Datum::Wgs84);
  record.lat_deg = point.latitude_deg;
  record.lon_deg = point.longitude_deg;
  const bool placed = OnGlobe(rounded) && OnGlobe(point);
  if (!placed) intake_.Skip(PositionOutOfRange);
  return placed;
}

std::string ScriptReader::FieldText(std::string_view text) {
  text = WithoutWptBlanks(text);
  const std::string_view item = TakeWptItem(text);
  if (!text.empty()) intake_.Account().overfull.Add(intake_.Line());
  return CapitalText(PlainText(item, scratch_));
}

void ScriptReader::TakeLine(const Statement& statement) {
  const std::string_view gid = statement.values[ObjectKey::Gid];
  const std::string_view label = statement.values[ObjectKey::Str];
  if (const auto log = ParseLogLabel(label); log && gid == ScriptGroup::TrackLog) {
    return OpenLog(*log, statement.values[ObjectKey::Pos]);
  }
  const auto number = ParseRouteLabel(label);
  if (gid != ScriptGroup::Route || !number) return;
  CloseLog();
  route_begun_ = true;
  NextLine();
  Route route;
  route.nmbr = ByteOf(IdentText(*number));
  route.cmnt = FieldText(ParseRouteInfo(statement.values[ObjectKey::Info]));
  intake_.Begin(std::move(route));
}

void ScriptReader::OpenLog(std::string_view number, std::string_view pos) {
  CloseLog();
  log_number_ = number;
  while (!pos.empty() && log_points_left_ > 0) {
    log_.push_back({TakePosition(pos), std::nullopt});
    --log_points_left_;
  }
  if (!pos.empty()) SkipStatement(TooManyLogPoints);
}

void ScriptReader::CloseLog() {
  bool begins = true;
  for (const LogPoint& point : log_) {
    if (!point.point) {
      SkipStatement(UnreadPosition);
      continue;
    }
    StoreLogPoint(point, begins);
    begins = false;
  }
  log_.clear();
}

void ScriptReader::StoreLogPoint(const LogPoint& log_point, bool begins) {
  NextLine();
  if (begins) intake_.Begin(TrackLog());
  TrackPoint point;
  point.new_trk = begins;
  if (!intake_.TakesTrackPoint() || !Place(*log_point.point, point)) return;
  // The epoch itself stands for no time, whatever the zone.
  if (log_point.seconds && *log_point.seconds != 0) {
    point.time = KnownGarminTime(*log_point.seconds - std::int64_t{utc_offset_hours_} * 3600);
  }
  intake_.Store(point);
}

void ScriptReader::TakePoint(const Statement& statement) {
  const std::string_view gid = statement.values[ObjectKey::Gid];
  const std::string_view info = statement.values[ObjectKey::Info];
  if (gid == ScriptGroup::TrackPoint) {
    if (TakeLogPoint(statement)) return;
  } else {
    CloseLog();
  }
  if (gid == ScriptGroup::Waypoint) {
    if (const auto texts = ParseWaypointInfo(info)) return StoreWaypoint(statement, *texts);
  } else if (IsRoutePointGroup(gid) && route_begun_) {
    if (const auto texts = ParseRoutePointInfo(info)) return StoreRoutePoint(statement, *texts);
  }
  const std::string_view label = TrimBlanks(statement.values[ObjectKey::Str]);
  StoreWaypoint(statement, {label.empty() ? statement.values[ObjectKey::Oid] : label, TrimBlanks(info)});
}

bool ScriptReader::TakeLogPoint(const Statement& statement) {
  const auto mark = ParseTrackPointInfo(statement.values[ObjectKey::Info]);
  if (!mark || mark->point < 1 || mark->point > log_.size()) return false;
  if (mark->log != log_number_) return false;
  if (mark->moment) {
    log_[mark->point - 1].seconds =
        SecondsSinceGarminEpoch(*mark->moment) - std::int64_t{theme_.utc_offset_hours} * 3600;
  }
  return true;
}

std::optional<GeoPoint> ScriptReader::ReadPoint(const Statement& statement, const PointTexts& texts,
                                                Waypoint& waypoint) {
  std::string_view pos = statement.values[ObjectKey::Pos];
  const auto point = TakePosition(pos);
  if (!point) {
    SkipStatement(UnreadPosition);
    return std::nullopt;
  }
  NextLine();
  waypoint.ident = IdentText(texts.ident);
  waypoint.cmnt = theme_.utc_offset_hours == 0 ? FieldText(texts.comment)
                                               : FieldText(WithShiftedStamp(texts.comment, -theme_.utc_offset_hours));
  return point;
}

void ScriptReader::StoreWaypoint(const Statement& statement, const PointTexts& texts) {
  Waypoint waypoint;
  const auto point = ReadPoint(statement, texts, waypoint);
  if (point && Place(*point, waypoint)) intake_.Store(std::move(waypoint));
}

void ScriptReader::StoreRoutePoint(const Statement& statement, const PointTexts& texts) {
  RoutePoint stop;
  const auto point = ReadPoint(statement, texts, stop.waypoint);
  if (point && intake_.TakesRoutePoint() && Place(*point, stop.waypoint)) intake_.Store(std::move(stop));
}

}  // namespace

ImportResult ReadScript(LineSource& lines, DataSet& data, const ReadSettings& settings) {
  StatementSplitter statements(lines);
  // Statements are held until it is known what their positions and times are on.
  std::vector<std::string> held;
  ScriptThemeFinder theme;
  for (std::string text; !theme.Sure() && statements.Next(text);) {
    if (const auto statement = ParseStatement(text)) theme.Take(*statement);
    held.push_back(text);
  }
  ScriptReader reader(theme.Found(), data, settings.utc_offset_hours);
  for (std::string& text : held) {
    reader.TakeText(text);
    std::string().swap(text);
  }
  for (std::string text; theme.Sure() && statements.Next(text);)
    reader.TakeText(text);
  reader.CloseLog();
  if (statements.Incomplete()) reader.SkipStatement(OpenStatement);
  return reader.Result();
}

}  // namespace walrim
