#include "formats/StandardReader.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "formats/FieldValues.h"
#include "formats/Messages.h"
#include "records/Symbols.h"
#include "text/Dates.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using namespace format_messages;

constexpr std::size_t NotationColumn = 1;
constexpr std::size_t DatumColumn = 2;

/// The columns of NoSubclass as they are written.
constexpr std::string_view NoSubclassText =
    "0\t0\t0\t0\t0\t0\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255\t255";

/// The notes of some symbols, which stand without a wrapping, have a comma.
bool IsSymbolNote(std::string_view piece) {
  if (piece.find(',') == std::string_view::npos) return false;
  return std::ranges::any_of(SymbolNames(WaypointType::D108), [&](const NamedCode& row) { return row.name == piece; });
}

/// SplitColumns, but not at the commas of a text that stands wrapped between two TABs.
std::size_t SplitLine(std::string_view line, std::array<std::string_view, MaxColumns>& columns) {
  const bool may_have_both = line.find(',') != std::string_view::npos && line.find("\t=\"") != std::string_view::npos;
  if (!may_have_both) return SplitColumns(line, columns);
  std::array<std::string_view, MaxColumns> parts;
  std::size_t count = 0;
  for (std::size_t begin = 0, end = 0; begin <= line.size(); begin = end + 1) {
    end = std::min(line.find('\t', begin), line.size());
    const std::string_view piece = TrimBlanks(line.substr(begin, end - begin));
    const bool whole = begin > 0 && (IsWrapped(piece) || IsSymbolNote(piece));
    const std::size_t part_count = whole ? 1 : SplitColumns(piece, parts);
    if (whole) parts[0] = piece;
    if (count + part_count > MaxColumns) throw std::out_of_range("a line has more columns than it may");
    std::copy_n(parts.begin(), part_count, columns.begin() + static_cast<std::ptrdiff_t>(count));
    count += part_count;
  }
  return count;
}

}  // namespace

void StandardReader::ReadLine(std::string_view line, int number) {
  intake_.SetLine(number);
  try {
    column_count_ = SplitLine(line, columns_);
  } catch (const std::out_of_range&) {
    if (SectionOfTag(columns_.front()) != nullptr) intake_.Skip(TooManyColumns);
    return;
  }
  const StandardSection* const section = SectionOfTag(columns_.front());
  if (section == nullptr || IsHeaderLine(*section)) return;
  NoteOverfull(*section);
  switch (section->line) {
    case StandardLine::Waypoint:
      return StoreWaypoint();
    case StandardLine::RouteHeader:
      return StoreRoute();
    case StandardLine::RoutePoint:
      return StoreRoutePoint();
    case StandardLine::TrackHeader:
      return StoreTrackLog();
    case StandardLine::TrackPoint:
      return StoreTrackPoint();
  }
}

bool StandardReader::IsHeaderLine(const StandardSection& section) const {
  if (column_count_ < 2) return false;
  if (section.positioned) return SaysWord(columns_[NotationColumn], "DegreeType");
  const std::size_t count = std::min(column_count_ - 1, section.column_count);
  for (std::size_t i = 0; i < count; ++i) {
    if (!SaysWord(columns_[i + 1], section.title(i))) return false;
  }
  return true;
}

std::string_view StandardReader::Value(std::size_t column) {
  return column < column_count_ ? PlainText(columns_[column], scratch_) : std::string_view();
}

void StandardReader::NoteOverfull(const StandardSection& section) {
  // Spreadsheets put empty columns behind; only filled ones tell.
  for (std::size_t i = section.Lead() + section.column_count; i < column_count_; ++i) {
    if (!columns_[i].empty()) return intake_.Account().overfull.Add(intake_.Line());
  }
}

bool StandardReader::ReadPosition(std::size_t lat_column, double& lat_deg, double& lon_deg) {
  const auto text = [this](std::size_t column) {
    return column < column_count_ ? columns_[column] : std::string_view();
  };
  GeoPoint point;
  const std::string_view why =
      positions_.Read({text(NotationColumn), text(DatumColumn), text(lat_column), text(lat_column + 1)}, point);
  lat_deg = point.latitude_deg;
  lon_deg = point.longitude_deg;
  if (!why.empty()) intake_.Skip(why);
  return why.empty();
}

bool StandardReader::SaysNoSubclass(std::size_t first) const {
  constexpr std::size_t Last = SubclassBytes - 1;
  if (first + Last >= column_count_) return false;
  // The columns lie side by side in the line.
  const char* const begin = columns_[first].data();
  const char* const end = columns_[first + Last].data() + columns_[first + Last].size();
  return std::string_view(begin, static_cast<std::size_t>(end - begin)) == NoSubclassText;
}

template <typename Record>
void StandardReader::ReadColumns(std::span<const StandardColumn<Record>> columns, std::size_t first, Record& record) {
  const std::size_t end = std::min(first + columns.size(), column_count_);
  for (std::size_t i = first; i < end; ++i) {
    const auto read = columns[i - first].read;
    if (read != nullptr) read(record, Value(i));
  }
}

bool StandardReader::ReadWaypoint(Waypoint& waypoint) {
  constexpr std::size_t Lead = 3;
  if (!ReadPosition(Lead + LatColumn, waypoint.lat_deg, waypoint.lon_deg)) return false;
  const auto columns = WaypointColumns();
  // Nearly every line says that there is no subclass, which is what a waypoint has at first.
  if (!SaysNoSubclass(Lead + SubclassColumn)) {
    ReadColumns(columns, Lead, waypoint);
  } else {
    constexpr std::size_t Behind = SubclassColumn + SubclassBytes;
    ReadColumns(columns.first(SubclassColumn), Lead, waypoint);
    ReadColumns(columns.subspan(Behind), Lead + Behind, waypoint);
  }
  return true;
}

void StandardReader::StoreWaypoint() {
  Waypoint waypoint;
  if (ReadWaypoint(waypoint)) intake_.Store(std::move(waypoint));
}

void StandardReader::StoreRoute() {
  Route route;
  ReadColumns(RouteColumns(), 1, route);
  intake_.Begin(std::move(route));
}

void StandardReader::StoreRoutePoint() {
  constexpr std::size_t Lead = 3;
  RoutePoint point;
  if (!intake_.TakesRoutePoint() || !ReadWaypoint(point.waypoint)) return;
  const std::size_t link = Lead + WaypointColumns().size();
  const auto columns = LinkColumns();
  if (!SaysNoSubclass(link + LinkSubclassColumn)) {
    ReadColumns(columns, link, point);
  } else {
    constexpr std::size_t Behind = LinkSubclassColumn + SubclassBytes;
    ReadColumns(columns.first(LinkSubclassColumn), link, point);
    ReadColumns(columns.subspan(Behind), link + Behind, point);
  }
  intake_.Store(std::move(point));
}

void StandardReader::StoreTrackLog() {
  TrackLog log;
  ReadColumns(TrackLogColumns(), 1, log);
  intake_.Begin(std::move(log));
}

void StandardReader::StoreTrackPoint() {
  constexpr std::size_t Lead = 3;
  TrackPoint point;
  if (!intake_.TakesTrackPoint() || !ReadPosition(Lead + TrackLatColumn, point.lat_deg, point.lon_deg)) return;
  ReadColumns(TrackPointColumns(), Lead, point);
  const std::string_view time = Value(Lead + TrackTimeColumn);
  point.time = GarminTimeOfText(time, utc_offset_hours_);
  // Only what gives no time is looked at again.
  if (!point.time && !TrimBlanks(time).empty() && !ParseDateTime(time)) {
    intake_.Account().unread_time.Add(intake_.Line());
  }
  intake_.Store(point);
}

}  // namespace walrim
