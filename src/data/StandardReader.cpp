#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "data/FieldValues.h"
#include "data/GeneralWalrim.h"
#include "data/StandardSections.h"
#include "data/WaypointValues.h"
#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::size_t DegreeTypeColumn = 1;
constexpr std::size_t DatumColumn = 2;
constexpr std::size_t LinkColumns = 3 + WaypointRecord::FieldCount;

/// The columns of NoSubclass as they are written.
constexpr std::string_view NoSubclassText =
    "0\t0\t0\t0\t0\t0\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255";

constexpr std::string_view UnknownDegreeType = "角度の表記が不明です";
constexpr std::string_view UnknownDatum = "測地系が不明です";
constexpr std::string_view TooManyColumns = "列が多すぎます";
constexpr std::string_view NoPosition = "緯度または経度がありません";
constexpr std::string_view BadAngle = "緯度または経度の書き方が不正です";
constexpr std::string_view PositionOutOfRange = "緯度または経度が範囲外です";
constexpr std::string_view NoRouteHeader = "前にルートのヘッダ行(RTH)がありません";
constexpr std::string_view NoTrackHeader = "前にトラックログのヘッダ行(TRH)がありません";
constexpr std::string_view HeaderRefused = "ヘッダ行を格納できなかったため，この点も格納できません";
constexpr std::string_view StoreFull = "内部データ容量の限界です";

bool IsStripped(char c) {
  return c == '"' || c == '=';
}

/// Whether a column is ="text" as a whole.
bool IsWrapped(std::string_view column) {
  return column.size() >= 3 && column.starts_with("=\"") && column.back() == '"';
}

/// Splits a line at its TABs and commas, but not at the commas of a text that stands wrapped between two TABs.
/// Throws std::out_of_range, with the first column set, where there are too many.
std::size_t SplitLine(std::string_view line, std::array<std::string_view, MaxColumns>& columns) {
  const bool may_have_both = line.find(',') != std::string_view::npos && line.find("\t=\"") != std::string_view::npos;
  if (!may_have_both) return SplitColumns(line, columns);
  std::array<std::string_view, MaxColumns> parts;
  std::size_t count = 0;
  for (std::size_t begin = 0, end = 0; begin <= line.size(); begin = end + 1) {
    end = std::min(line.find('\t', begin), line.size());
    const std::string_view piece = TrimBlanks(line.substr(begin, end - begin));
    const bool whole = begin > 0 && IsWrapped(piece);
    const std::size_t part_count = whole ? 1 : SplitColumns(piece, parts);
    if (whole) parts[0] = piece;
    if (count + part_count > MaxColumns) throw std::out_of_range("a line has more columns than it may");
    std::copy_n(parts.begin(), part_count, columns.begin() + static_cast<std::ptrdiff_t>(count));
    count += part_count;
  }
  return count;
}

bool HasStripped(std::string_view value) {
  for (const char c : value) {
    if (IsStripped(c)) return true;
  }
  return false;
}

bool OnEarth(const GeoPoint& point) {
  return std::abs(point.latitude_deg) <= 90 && std::abs(point.longitude_deg) <= 180;
}

/// Whether a text begins with a number that fits one.
bool BeginsWithNumber(std::string_view text, double value) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  const std::size_t digits = text.find_first_not_of('.');
  if (digits > 1 || text[digits] < '0' || text[digits] > '9') return false;
  // What is read as 0 although other digits stand before its exponent fitted no number.
  return value != 0 || text.find_first_of("123456789") >= text.find_first_of("eE/");
}

}  // namespace

bool ImportSummary::Received(DataKind kind) const {
  if (stored[IndexOf(kind)] > 0) return true;
  return (kind == DataKind::Route && route_points > 0) || (kind == DataKind::TrackLog && track_points > 0);
}

std::string StripValue(std::string_view value) {
  std::string stripped;
  stripped.reserve(value.size());
  for (const char c : value) {
    if (!IsStripped(c)) stripped += c;
  }
  return stripped;
}

StandardReader::StandardReader(InternalData& data, int utc_offset_hours)
    : data_(data), utc_offset_hours_(utc_offset_hours) {}

void StandardReader::ReadText(std::string_view text) {
  std::size_t line_feed = text.find('\n');
  while (!text.empty()) {
    // Only the part before the next line feed is searched for a carriage return, so that no byte is looked at twice.
    const std::string_view upto = text.substr(0, line_feed);
    const std::size_t end = std::min(upto.find('\r'), upto.size());
    ReadLine(text.substr(0, end));
    std::size_t next = end;
    if (next < text.size() && text[next] == '\r') ++next;
    if (next == line_feed) {
      text.remove_prefix(next + 1);
      line_feed = text.find('\n');
    } else {
      text.remove_prefix(next);
      if (line_feed != std::string_view::npos) line_feed -= next;
    }
  }
  Finish();
}

void StandardReader::ReadLine(std::string_view line) {
  ++line_number_;
  std::size_t count = 0;
  try {
    count = SplitLine(line, columns_);
  } catch (const std::out_of_range&) {
    if (SectionOf(columns_.front()) != nullptr) Skip(TooManyColumns);
    return;
  }
  StoreLine(std::span(columns_).first(count));
}

void StandardReader::StoreLine(std::span<const std::string_view> columns) {
  if (columns.empty()) return;
  const Section* section = SectionOf(columns.front());
  if (section == nullptr || IsHeaderLine(*section, columns)) return;
  if (columns.size() > MaxColumns) return Skip(TooManyColumns);
  line_ = columns;
  NoteOverfull(*section);
  if (section == &TrackPointSection) return StoreTrackPoint();
  if (section == &RoutePointSection) return StoreRoutePoint();
  if (section == &WaypointSection) return StoreWaypoint();
  if (section == &TrackHeaderSection) return StoreTrackHeader();
  StoreRouteHeader();
}

void StandardReader::Finish() {
  CloseRoute();
  CloseTrack();
  if (routes_changed_) data_.MirrorRouteCounters();
  if (tracks_changed_) data_.MirrorTrackCounters();
}

const Section* StandardReader::SectionOf(std::string_view tag) {
  if (const Section* section = FindSection(tag)) return section;
  if (tag.size() < 3 || tag.size() > 9) return nullptr;
  return FindSection(UpperCase(StripValue(tag)));
}

bool StandardReader::IsHeaderLine(const Section& section, std::span<const std::string_view> columns) {
  if (columns.size() < 2) return false;
  if (section.positioned) {
    constexpr std::string_view Title = "DEGREETYPE";
    return columns[1].size() >= Title.size() && UpperCase(StripValue(columns[1])) == Title;
  }
  const std::size_t count = std::min(columns.size() - 1, section.columns.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (UpperCase(StripValue(columns[i + 1])) != UpperCase(section.columns[i].FullTitle())) return false;
  }
  return true;
}

std::string_view StandardReader::Value(std::size_t column) {
  if (column >= line_.size()) return {};
  const std::string_view value = line_[column];
  if (IsWrapped(value)) return value.substr(2, value.size() - 3);
  return HasStripped(value) ? StrippedValue(column) : value;
}

std::string_view StandardReader::StrippedValue(std::size_t column) {
  const std::string_view value = line_[column];
  if (stripped_.size() <= column) stripped_.resize(MaxColumns);
  stripped_[column] = StripValue(value);
  return stripped_[column];
}

void StandardReader::Skip(std::string_view why) {
  if (++summary_.skipped > 1) return;
  summary_.first_skipped_line = line_number_;
  summary_.first_skipped_why = why;
}

void StandardReader::NoteOverfull(const Section& section) {
  const std::size_t most = 1 + (section.positioned ? 2 : 0) + section.columns.size();
  // Spreadsheets put empty columns behind; only filled ones tell.
  for (std::size_t i = most; i < line_.size(); ++i) {
    if (line_[i].empty()) continue;
    if (++summary_.overfull == 1) summary_.first_overfull_line = line_number_;
    return;
  }
}

void StandardReader::NoteUnreadTime() {
  if (++summary_.unread_times == 1) summary_.first_unread_time_line = line_number_;
}

std::string_view StandardReader::ReadNotation() {
  if (!degree_type_.meaning.empty() && line_.size() > DatumColumn && line_[DegreeTypeColumn] == degree_type_.text &&
      line_[DatumColumn] == datum_.text) {
    return {};
  }
  const std::string degree_type = UpperCase(TrimBlanks(Value(DegreeTypeColumn)));
  if (!IsAngleNotation(degree_type)) return UnknownDegreeType;
  const std::string datum = UpperCase(TrimBlanks(Value(DatumColumn)));
  if (!datum.empty() && datum != "WGS84" && datum != "TOKYO") return UnknownDatum;
  degree_type_ = {std::string(line_[DegreeTypeColumn]), degree_type};
  datum_ = {std::string(line_.size() > DatumColumn ? line_[DatumColumn] : std::string_view()),
            datum.empty() ? "WGS84" : datum};
  return {};
}

std::string_view StandardReader::ReadAngle(std::size_t column, double& degrees) {
  if (column < line_.size() && degree_type_.meaning == "D" && PlainNumber(line_[column], degrees)) return {};
  const std::string_view value = Value(column);
  if (TrimBlanks(value).empty()) return NoPosition;
  if (value.find(',') != std::string_view::npos) return BadAngle;
  try {
    degrees = DegreesOfAngle(value, degree_type_.meaning);
  } catch (const std::out_of_range&) {
    return BadAngle;
  }
  return BeginsWithNumber(value, LeadingNumber(value)) ? std::string_view() : BadAngle;
}

std::string_view StandardReader::ReadPosition(std::size_t lat_column, double& lat_deg, double& lon_deg) {
  if (const std::string_view why = ReadNotation(); !why.empty()) return why;
  GeoPoint point;
  if (const std::string_view why = ReadAngle(lat_column, point.latitude_deg); !why.empty()) return why;
  if (const std::string_view why = ReadAngle(lat_column + 1, point.longitude_deg); !why.empty()) return why;
  if (!OnEarth(point)) return PositionOutOfRange;
  if (datum_.meaning != "WGS84") point = ConvertDatum(point, datum_.meaning, "WGS84");
  if (!OnEarth(point)) return PositionOutOfRange;
  lat_deg = point.latitude_deg;
  lon_deg = point.longitude_deg;
  return {};
}

Subclass StandardReader::ReadSubclass(std::size_t first, const Subclass& when_empty) {
  constexpr std::size_t Last = SubclassBytes - 1;
  // Nearly every line says that there is none; its columns lie side by side where the line was split here.
  if (line_.data() == columns_.data() && first + Last < line_.size()) {
    const char* const begin = line_[first].data();
    const char* const end = line_[first + Last].data() + line_[first + Last].size();
    if (std::string_view(begin, static_cast<std::size_t>(end - begin)) == NoSubclassText) return NoSubclass;
  }
  Subclass subclass = NoSubclass;
  for (std::size_t i = 0; i < SubclassBytes && first + i < line_.size(); ++i) {
    const std::string_view value = Value(first + i);
    subclass[i] = value.empty() ? when_empty[i] : ByteOf(value);
  }
  return subclass;
}

std::string_view StandardReader::ReadWaypoint(WaypointValues& values) {
  constexpr std::size_t Lead = 3;
  double lat_deg = 0;
  double lon_deg = 0;
  const std::string_view why = ReadPosition(Lead + static_cast<std::size_t>(WaypointField::lat), lat_deg, lon_deg);
  if (!why.empty()) return why;
  values = EvaluateWaypoint([this](WaypointField field) { return Value(Lead + static_cast<std::size_t>(field)); },
                            line_.size() - Lead);
  values.subclass = ReadSubclass(Lead + static_cast<std::size_t>(WaypointField::subclass), Subclass{});
  values.lat_deg = lat_deg;
  values.lon_deg = lon_deg;
  return {};
}

void StandardReader::ReadLink(D210Entry& link) {
  const auto column = [](LinkField field) { return LinkColumns + static_cast<std::size_t>(field); };
  link.link_class = WordOf(Value(column(LinkField::link_class)));
  link.subclass = ReadSubclass(column(LinkField::subclass), NoSubclass);
  AssignText(link.ident, Value(column(LinkField::ident)));
}

void StandardReader::StoreWaypoint() {
  WaypointValues values;
  if (const std::string_view why = ReadWaypoint(values); !why.empty()) return Skip(why);
  if (data_.AddWaypoint(values) == AddRejected) return Skip(StoreFull);
  ++summary_.stored[IndexOf(DataKind::Waypoint)];
}

void StandardReader::StoreRouteHeader() {
  CloseRoute();
  for (std::size_t i = 0; i < RouteHeader::FieldCount; ++i)
    route_header_.text[i].assign(Value(i + 1));
  data_.import_cursor.route = data_.AddRouteHeader(route_header_);
  data_.import_cursor.route_points = 0;
  if (data_.import_cursor.route == AddRejected) return Skip(StoreFull);
  route_open_ = true;
  ++summary_.stored[IndexOf(DataKind::Route)];
}

void StandardReader::StoreRoutePoint() {
  ImportCursor& cursor = data_.import_cursor;
  if (cursor.route == AddRejected) return Skip(HeaderRefused);
  if (cursor.route <= 0) return Skip(NoRouteHeader);
  WaypointValues values;
  if (const std::string_view why = ReadWaypoint(values); !why.empty()) return Skip(why);
  ReadLink(link_);
  const int point = data_.AddRoutePoint(values, link_, cursor.route, cursor.route_points);
  if (point == AddRejected) return Skip(StoreFull);
  cursor.route_points = point + 1;
  route_open_ = true;
  ++summary_.route_points;
}

void StandardReader::StoreTrackHeader() {
  using enum TrackHeaderField;
  CloseTrack();
  for (std::size_t i = 0; i < TrackHeader::FieldCount; ++i)
    track_header_.text[i].assign(Value(i + 1));
  if (line_.size() <= 1 + static_cast<std::size_t>(color)) AssignNumber(track_header_[color], D310Entry().color);
  data_.import_cursor.track_log = data_.AddTrackHeader(track_header_);
  data_.import_cursor.track_points = 0;
  if (data_.import_cursor.track_log == AddRejected) return Skip(StoreFull);
  track_open_ = true;
  ++summary_.stored[IndexOf(DataKind::TrackLog)];
}

void StandardReader::StoreTrackPoint() {
  using enum TrackPointField;
  const auto column = [](TrackPointField field) { return 3 + static_cast<std::size_t>(field); };
  ImportCursor& cursor = data_.import_cursor;
  if (cursor.track_log == AddRejected) return Skip(HeaderRefused);
  // Behind any log but the last lie the points of the next one.
  if (cursor.track_log <= 0 || cursor.track_log != data_.tracks.TrackCount) return Skip(NoTrackHeader);
  TrackPointEntry entry;
  const std::string_view why = ReadPosition(column(lat), entry.lat_deg, entry.lon_deg);
  if (!why.empty()) return Skip(why);
  const std::string_view time_text = Value(column(time));
  entry.time = GarminTimeOfText(time_text, utc_offset_hours_);
  // Only what gives no time is looked at again.
  if (entry.time == 0 && !TrimBlanks(time_text).empty() && !ParseDateTime(time_text)) NoteUnreadTime();
  entry.new_trk = TruthOf(Value(column(new_trk)));
  if (column(alt) < line_.size()) entry.alt_m = SingleOf(Value(column(alt)));
  if (column(dpth) < line_.size()) entry.dpth_m = SingleOf(Value(column(dpth)));
  const int point = data_.AddTrackPoint(entry, cursor.track_log, cursor.track_points);
  if (point == AddRejected) return Skip(StoreFull);
  cursor.track_points = point + 1;
  track_open_ = true;
  ++summary_.track_points;
}

void StandardReader::CloseRoute() {
  if (!route_open_) return;
  route_open_ = false;
  const int route = data_.import_cursor.route;
  if (route > 0) data_.routes.RoutePointCount.at(static_cast<std::size_t>(route)) = data_.import_cursor.route_points;
  routes_changed_ = true;
}

void StandardReader::CloseTrack() {
  if (!track_open_) return;
  track_open_ = false;
  const int log = data_.import_cursor.track_log;
  if (log > 0) data_.tracks.TrackPointCount.at(static_cast<std::size_t>(log)) = data_.import_cursor.track_points;
  tracks_changed_ = true;
}

}  // namespace walrim
