#include "receiver/MemoryFile.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

#include "receiver/ReceiverDatum.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/TextEncoding.h"

namespace walrim {

namespace {

constexpr std::size_t MaxFileBytes = 64U << 20;
// A count is sent as a signed 16-bit number.
constexpr std::size_t MaxRecords = 32767;
// A trip around the world in minutes and seconds has no more digits than this.
constexpr std::size_t MaxAngleText = 64;
constexpr std::size_t MaxColumnCount = 256;

/// The columns of one line, without their wrapping; columns that the line lacks are empty.
class Columns {
 public:
  explicit Columns(std::string_view line) {
    while (columns_.size() < MaxColumnCount) {
      const std::size_t tab = line.find('\t');
      columns_.push_back(Unwrapped(line.substr(0, tab)));
      if (tab == std::string_view::npos) return;
      line.remove_prefix(tab + 1);
    }
    too_many_ = true;
  }

  [[nodiscard]] bool TooMany() const { return too_many_; }
  [[nodiscard]] std::string_view operator[](std::size_t index) const {
    return index < columns_.size() ? std::string_view(columns_[index]) : std::string_view();
  }

 private:
  static std::string Unwrapped(std::string_view column) {
    std::string text(TrimBlanks(column));
    std::erase_if(text, [](char c) { return c == '"' || c == '='; });
    return text;
  }

  std::vector<std::string> columns_;
  bool too_many_ = false;
};

bool HasDigit(std::string_view text) {
  return std::any_of(text.begin(), text.end(), IsDigit);
}

template <typename Number>
Number WholeColumn(std::string_view text, Number empty = 0) {
  if (text.empty()) return empty;
  return static_cast<Number>(LeadingInteger(text, 0, std::numeric_limits<Number>::max()));
}

template <typename Number>
std::optional<Number> OptionalColumn(std::string_view text) {
  if (text.empty()) return std::nullopt;
  return WholeColumn<Number>(text);
}

float FloatColumn(std::string_view text, float empty) {
  if (text.empty()) return empty;
  return static_cast<float>(std::clamp(LeadingNumber(text), -static_cast<double>(FLT_MAX), double{FLT_MAX}));
}

bool TrueColumn(std::string_view text) {
  return SameWord(text, "TRUE");
}

HeldSubclass SubclassColumns(const Columns& columns, std::size_t first) {
  HeldSubclass subclass;
  for (std::size_t i = 0; i < subclass.size(); ++i) {
    subclass[i] = WholeColumn<std::uint8_t>(columns[first + i], NoHeldSubclass[i]);
  }
  return subclass;
}

// "dd.mmss..." has its minutes, and in DMS its seconds, as digits behind the point: taken from the text, because the
// digits of a binary fraction come out one too small now and then.
std::optional<double> DegreesOfPackedDigits(std::string_view text, bool seconds) {
  const std::size_t point = std::min(text.find('.'), text.size());
  const double degrees = LeadingNumber(text.substr(0, point));
  std::string digits;
  text.remove_prefix(std::min(point + 1, text.size()));
  digits.append(TakeDigits(text)).append(4, '0');
  const double minutes = LeadingNumber(digits.substr(0, 2) + (seconds ? "" : "." + digits.substr(2)));
  const double rest = seconds ? LeadingNumber(digits.substr(2, 2) + "." + digits.substr(4)) : 0;
  return degrees + minutes / 60 + rest / 3600;
}

std::optional<double> DegreesOfParts(std::string_view text, double seconds_unit) {
  std::array<double, 3> parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t slash = text.find('/');
    parts[i] = LeadingNumber(text.substr(0, slash));
    if (slash == std::string_view::npos) return parts[0] + parts[1] / 60 + parts[2] * seconds_unit / 3600;
    text.remove_prefix(slash + 1);
  }
  return std::nullopt;
}

std::optional<DatumPosition> PositionColumns(const Columns& columns, std::size_t lat_column) {
  const std::string notation = UpperCase(columns[1]);
  const std::optional<double> lat = DegreesOfNotation(columns[lat_column], notation);
  const std::optional<double> lon = DegreesOfNotation(columns[lat_column + 1], notation);
  const std::string datum = UpperCase(columns[2]);
  if (!lat || !lon || std::abs(*lat) > 90 || std::abs(*lon) > 180) return std::nullopt;
  if (datum.empty() || datum == "WGS84") return DatumPosition{*lat, *lon};
  if (datum == "TOKYO") return PositionOnWgs84({*lat, *lon});
  return std::nullopt;
}

std::optional<HeldWaypoint> WaypointColumns(const Columns& columns) {
  const std::optional<DatumPosition> position = PositionColumns(columns, 4);
  if (!position) return std::nullopt;
  HeldWaypoint waypoint;
  // idents and comment, the names of the same texts elsewhere, serve where these are empty.
  waypoint.ident = columns[3].empty() ? columns[38] : columns[3];
  waypoint.lat_deg = position->lat_deg;
  waypoint.lon_deg = position->lon_deg;
  waypoint.cmnt = columns[6].empty() ? columns[39] : columns[6];
  waypoint.smbl = OptionalColumn<std::uint16_t>(columns[7]);
  waypoint.dspl = WholeColumn<std::uint8_t>(columns[9]);
  waypoint.dst_m = FloatColumn(columns[11], 0);
  waypoint.color = OptionalColumn<std::uint8_t>(columns[12]);
  waypoint.wpt_class = WholeColumn<std::uint8_t>(columns[13]);
  waypoint.attr = WholeColumn<std::uint8_t>(columns[14], 96);
  waypoint.subclass = SubclassColumns(columns, 15);
  waypoint.alt_m = FloatColumn(columns[33], UnknownHeight);
  waypoint.dpth_m = FloatColumn(columns[34], UnknownHeight);
  waypoint.dist_m = FloatColumn(columns[35], 0);
  waypoint.state = columns[36];
  waypoint.country = columns[37];
  waypoint.facility = columns[40];
  waypoint.city = columns[41];
  waypoint.addr = columns[42];
  waypoint.cross_road = columns[43];
  return waypoint;
}

class MemoryFileReader {
 public:
  explicit MemoryFileReader(int utc_offset_hours) : utc_offset_hours_(utc_offset_hours) {}

  void TakeLine(std::string_view line) {
    ++line_number_;
    const Columns columns(line);
    const std::string tag = UpperCase(columns[0]);
    bool taken = !columns.TooMany();
    if (taken && tag == "WPT") taken = TakeWaypoint(columns);
    if (taken && tag == "RTH") TakeRouteHeader(columns);
    if (taken && tag == "RTP") taken = TakeRoutePoint(columns);
    if (taken && tag == "TRH") TakeTrackHeader(columns);
    if (taken && tag == "TRP") taken = TakeTrackPoint(columns);
    if (!taken && UpperCase(columns[1]) != "DEGREETYPE" && ++skipped_ == 1) first_skipped_ = line_number_;
  }

  MemoryFileResult Finish() {
    if (contents_.waypoints.empty() && contents_.routes.empty() && contents_.track_logs.empty()) {
      return {std::nullopt, "holds no record of a standard file"};
    }
    std::size_t route_records = contents_.routes.size();
    for (const HeldRoute& route : contents_.routes)
      route_records += 2 * route.points.size();
    std::size_t track_records = contents_.track_logs.size();
    for (const HeldTrackLog& log : contents_.track_logs)
      track_records += log.points.size();
    if (std::max({contents_.waypoints.size(), route_records, track_records}) > MaxRecords) {
      return {std::nullopt, "holds more than " + std::to_string(MaxRecords) + " records of a kind"};
    }
    return {std::move(contents_), {}, skipped_, first_skipped_};
  }

 private:
  bool TakeWaypoint(const Columns& columns) {
    auto waypoint = WaypointColumns(columns);
    if (waypoint) contents_.waypoints.push_back(std::move(*waypoint));
    return waypoint.has_value();
  }

  void TakeRouteHeader(const Columns& columns) {
    // The titles of a header line stand where the number would.
    if (!columns[1].empty() && !HasDigit(columns[1])) return;
    HeldRoute& route = contents_.routes.emplace_back();
    route.nmbr = WholeColumn<std::uint8_t>(columns[1]);
    route.cmnt = columns[2];
  }

  bool TakeRoutePoint(const Columns& columns) {
    auto waypoint = WaypointColumns(columns);
    if (!waypoint || contents_.routes.empty()) return false;
    HeldRoutePoint& point = contents_.routes.back().points.emplace_back();
    point.waypoint = std::move(*waypoint);
    point.link_class = WholeColumn<std::uint16_t>(columns[44]);
    point.link_subclass = SubclassColumns(columns, 45);
    point.link_ident = columns[63];
    return true;
  }

  void TakeTrackHeader(const Columns& columns) {
    if (!columns[1].empty() && !HasDigit(columns[1])) return;
    HeldTrackLog& log = contents_.track_logs.emplace_back();
    log.dspl = columns[2].empty() || TrueColumn(columns[2]);
    log.color = WholeColumn<std::uint8_t>(columns[3]);
    log.trk_ident = columns[4];
  }

  bool TakeTrackPoint(const Columns& columns) {
    const std::optional<DatumPosition> position = PositionColumns(columns, 3);
    if (!position || contents_.track_logs.empty()) return false;
    HeldTrackPoint& point = contents_.track_logs.back().points.emplace_back();
    point.lat_deg = position->lat_deg;
    point.lon_deg = position->lon_deg;
    point.time_s = GarminTimeOfText(columns[5], utc_offset_hours_).value_or(0);
    point.new_trk = TrueColumn(columns[6]);
    point.alt_m = FloatColumn(columns[7], UnknownHeight);
    point.dpth_m = FloatColumn(columns[8], UnknownHeight);
    return true;
  }

  int utc_offset_hours_;
  HeldContents contents_;
  int line_number_ = 0;
  int skipped_ = 0;
  int first_skipped_ = 0;
};

}  // namespace

std::optional<double> DegreesOfNotation(std::string_view text, std::string_view notation) {
  text = TrimBlanks(text);
  if (!HasDigit(text) || text.size() > MaxAngleText) return std::nullopt;
  if (notation == "D") return LeadingNumber(text);
  if (notation == "DM") return DegreesOfPackedDigits(text, false);
  if (notation == "DMS") return DegreesOfPackedDigits(text, true);
  if (notation == "MPS") return DegreesOfParts(text, 1);
  if (notation == "PAO") return DegreesOfParts(text, 0.001);
  return std::nullopt;
}

MemoryFileResult ParseMemoryFile(std::string_view bytes, int utc_offset_hours) {
  if (bytes.size() > MaxFileBytes) return {std::nullopt, "is too large for a standard file"};
  MemoryFileReader reader(utc_offset_hours);
  LineSource lines(bytes, EncodingOf(bytes));
  for (std::string_view line; lines.Next(line);)
    reader.TakeLine(line);
  return reader.Finish();
}

MemoryFileResult LoadMemoryFile(const std::string& path, int utc_offset_hours) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes;
  std::array<char, 1U << 16> block{};
  while (file && bytes.size() <= MaxFileBytes) {
    file.read(block.data(), block.size());
    bytes.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  if (!file.eof() && bytes.size() <= MaxFileBytes) return {std::nullopt, path + " cannot be read"};
  MemoryFileResult result = ParseMemoryFile(bytes, utc_offset_hours);
  if (!result.contents) result.problem = path + " " + result.problem;
  return result;
}

}  // namespace walrim
