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

std::vector<CodeEntry> Entries(std::span<const NamedCode> names, int largest) {
  std::vector<CodeEntry> entries;
  for (const NamedCode& row : names) {
    if (row.code < 0 || row.code > largest || row.name.empty()) continue;
    entries.push_back({row.code, PadNumber(row.code, CodeDigits).append(" : ").append(row.name)});
  }
  return entries;
}

/// The code chosen before, the usual code, or the first one.
std::optional<int> Choose(const std::vector<CodeEntry>& entries, std::optional<int> before, int usual) {
  for (const int code : {before.value_or(usual), usual}) {
    if (std::ranges::find(entries, code, &CodeEntry::code) != entries.end()) return code;
  }
  return entries.empty() ? std::nullopt : std::optional(entries.front().code);
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
  std::string why = ReadAngle(LatitudeAxis, clip.lat, clip.notation, sign, point.latitude_deg);
  return why.empty() ? ReadAngle(LongitudeAxis, clip.lon, clip.notation, sign, point.longitude_deg) : why;
}

}  // namespace

void ShowClip(const MapPoint& point, WaypointType type, ClipProAtlas& clip) {
  clip.datum = point.datum;
  clip.notation = AngleNotation::D;
  clip.type = type;
  clip.lat = ShortestNumber(point.lat_deg);
  clip.lon = ShortestNumber(point.lon_deg);
  clip.ident = WithoutControlCharacters(point.ident);
  clip.cmnt = WithoutControlCharacters(point.cmnt);
  clip.smbl_entries = Entries(SymbolNames(type), LargestSymbolCode);
  clip.dspl_entries = Entries(DisplayNames(type), LargestDisplayCode);
  clip.smbl = Choose(clip.smbl_entries, clip.smbl, UsualSymbol);
  clip.dspl = Choose(clip.dspl_entries, clip.dspl, UsualDisplay);
}

std::string SwitchClipNotation(ClipProAtlas& clip) {
  GeoPoint point;
  std::string why = ReadPosition(clip, Sign::NotNegative, point);
  if (!why.empty()) return why;
  clip.notation = clip.notation == AngleNotation::D ? AngleNotation::DMS : AngleNotation::D;
  clip.lat.clear();
  clip.lon.clear();
  AppendAngle(clip.lat, point.latitude_deg, clip.notation);
  AppendAngle(clip.lon, point.longitude_deg, clip.notation);
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
                                 WithoutControlCharacters(clip.ident),
                                 WithoutControlCharacters(clip.cmnt),
                                 clip.smbl.value_or(0),
                                 clip.dspl.value_or(0)};
  return result;
}

}  // namespace walrim
