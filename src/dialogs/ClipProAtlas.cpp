#include "dialogs/ClipProAtlas.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "dialogs/Messages.h"
#include "formats/PositionReader.h"
#include "records/Symbols.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

using namespace dialog_messages;

constexpr std::size_t CodeDigits = 5;
constexpr int LargestSymbolCode = 18000;
constexpr int LargestDisplayCode = 15;
/// What a new waypoint has where nothing else was chosen: the waypoint dot with its name.
constexpr int UsualSymbol = 18;
constexpr int UsualDisplay = 0;

std::vector<std::string> Entries(std::span<const NamedCode> names, int largest) {
  std::vector<std::string> entries;
  for (const NamedCode& row : names) {
    if (row.code < 0 || row.code > largest || row.name.empty()) continue;
    entries.push_back(PadNumber(row.code, CodeDigits).append(" : ").append(row.name));
  }
  return entries;
}

/// The entry of the code chosen before, of the usual code, or the first one.
std::string Choose(const std::vector<std::string>& entries, const std::string& before, int usual) {
  if (entries.empty()) return {};
  const auto with_code = [&](int code) {
    return std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return CodeOfEntry(entry) == code; });
  };
  auto found = before.empty() ? entries.end() : with_code(CodeOfEntry(before));
  if (found == entries.end()) found = with_code(usual);
  return found == entries.end() ? entries.front() : *found;
}

struct Axis {
  std::string_view name;
  int limit_deg;
  std::string_view in_degrees;
  std::string_view in_dms;
};
constexpr Axis LatitudeAxis{Latitude, 90, LatitudeInDegrees, LatitudeInDms};
constexpr Axis LongitudeAxis{Longitude, 180, LongitudeInDegrees, LongitudeInDms};

/// Whether a position may lie south or west. Where it passes through "DMS" it may not: the packed notation rounds
/// degrees down and so has no text for it that reads back the same.
enum class Sign { Any, NotNegative };

/// Reads an angle of an axis. Why the text is none; empty where it is one.
std::string ReadAngle(const Axis& axis, std::string_view text, AngleNotation notation, Sign sign, double& degrees) {
  const std::string shown = WithoutControlCharacters(text);
  if (!ReadAngleText(text, notation, degrees).empty()) {
    return NoAngle(axis.name, shown, notation == AngleNotation::D ? axis.in_degrees : axis.in_dms);
  }
  if (std::abs(degrees) > axis.limit_deg) return OutOfRange(axis.name, shown, axis.limit_deg);
  return degrees < 0 && sign == Sign::NotNegative ? NoNegativeDms(axis.name, shown) : std::string();
}

std::string ReadPosition(const ClipProAtlas& clip, Sign sign, GeoPoint& point) {
  std::string why = ReadAngle(LatitudeAxis, clip.ClipLat, clip.notation, sign, point.latitude_deg);
  return why.empty() ? ReadAngle(LongitudeAxis, clip.ClipLon, clip.notation, sign, point.longitude_deg) : why;
}

}  // namespace

std::vector<std::string> SymbolEntries(WaypointType type) {
  return Entries(SymbolNames(type), LargestSymbolCode);
}

std::vector<std::string> DisplayEntries(WaypointType type) {
  return Entries(DisplayNames(type), LargestDisplayCode);
}

int CodeOfEntry(std::string_view entry) {
  return static_cast<int>(LeadingInteger(entry.substr(0, CodeDigits), 0, 99999));
}

void ShowClip(const MapPoint& point, WaypointType type, ClipProAtlas& clip) {
  clip.datum = point.datum;
  clip.notation = AngleNotation::D;
  clip.ClipLat = ShortestNumber(point.lat_deg);
  clip.ClipLon = ShortestNumber(point.lon_deg);
  clip.ClipIdent = WithoutControlCharacters(point.ident);
  clip.ClipCmnt = WithoutControlCharacters(point.cmnt);
  clip.smbl_entries = SymbolEntries(type);
  clip.dspl_entries = DisplayEntries(type);
  clip.SmblType = Choose(clip.smbl_entries, clip.SmblType, UsualSymbol);
  clip.DsplType = Choose(clip.dspl_entries, clip.DsplType, UsualDisplay);
}

std::string SwitchClipNotation(ClipProAtlas& clip) {
  GeoPoint point;
  std::string why = ReadPosition(clip, Sign::NotNegative, point);
  if (!why.empty()) return why;
  clip.notation = clip.notation == AngleNotation::D ? AngleNotation::DMS : AngleNotation::D;
  clip.ClipLat.clear();
  clip.ClipLon.clear();
  AppendAngle(clip.ClipLat, point.latitude_deg, clip.notation);
  AppendAngle(clip.ClipLon, point.longitude_deg, clip.notation);
  return {};
}

ClipResult FinishClip(const ClipProAtlas& clip) {
  const Sign sign = clip.notation == AngleNotation::D ? Sign::Any : Sign::NotNegative;
  GeoPoint given;
  ClipResult result{std::nullopt, ReadPosition(clip, sign, given)};
  if (!result.refusal.empty()) return result;
  const GeoPoint point = ConvertDatum(given, clip.datum, Datum::Wgs84);
  result.waypoint = ClipWaypoint{point.latitude_deg,
                                 point.longitude_deg,
                                 WithoutControlCharacters(clip.ClipIdent),
                                 WithoutControlCharacters(clip.ClipCmnt),
                                 CodeOfEntry(clip.SmblType),
                                 CodeOfEntry(clip.DsplType)};
  return result;
}

}  // namespace walrim
