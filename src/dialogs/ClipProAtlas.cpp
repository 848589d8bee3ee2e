#include "dialogs/ClipProAtlas.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "dialogs/Messages.h"
#include "records/Symbols.h"
#include "text/Numbers.h"
#include "text/Scan.h"
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

bool TakeOneOf(std::string_view& text, std::string_view characters) {
  return std::any_of(characters.begin(), characters.end(), [&](char each) { return Take(text, each); });
}

/// True for a text that is one number from its beginning to its end.
bool IsNumber(std::string_view text) {
  TakeOneOf(text, "+-");
  const bool whole = !TakeDigits(text).empty();
  const bool fraction = Take(text, '.') && !TakeDigits(text).empty();
  if (!whole && !fraction) return false;
  if (TakeOneOf(text, "Ee")) {
    TakeOneOf(text, "+-");
    if (TakeDigits(text).empty()) return false;
  }
  return text.empty();
}

/// True where the packed minutes are below 60 and the seconds at most 60, which is what 59.996 is written as.
bool HasMinutesAndSeconds(std::string_view dms) {
  const std::string parts = ConvertAngle(dms, AngleNotation::DMS, AngleNotation::MPS);
  std::string_view rest = parts;
  TakeUpTo(rest, '/');
  return LeadingNumber(TakeUpTo(rest, '/')) < 60 && LeadingNumber(rest) <= 60;
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

/// Why a text is no angle of its axis; empty where it is one.
std::string WhyNoAngle(const Axis& axis, std::string_view text, AngleNotation notation, Sign sign) {
  const std::string shown = WithoutControlCharacters(text);
  const std::string_view angle = TrimBlanks(text);
  const bool decimal = notation == AngleNotation::D;
  if (!IsNumber(angle) || (!decimal && !HasMinutesAndSeconds(angle))) {
    return NoAngle(axis.name, shown, decimal ? axis.in_degrees : axis.in_dms);
  }
  const double degrees = DegreesOfAngle(angle, notation);
  if (std::abs(degrees) > axis.limit_deg) return OutOfRange(axis.name, shown, axis.limit_deg);
  return degrees < 0 && sign == Sign::NotNegative ? NoNegativeDms(axis.name, shown) : std::string();
}

std::string WhyNoPosition(const ClipProAtlas& clip, Sign sign) {
  std::string why = WhyNoAngle(LatitudeAxis, clip.ClipLat, clip.notation, sign);
  return why.empty() ? WhyNoAngle(LongitudeAxis, clip.ClipLon, clip.notation, sign) : why;
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
  std::string why = WhyNoPosition(clip, Sign::NotNegative);
  if (!why.empty()) return why;
  const AngleNotation wanted = clip.notation == AngleNotation::D ? AngleNotation::DMS : AngleNotation::D;
  clip.ClipLat = ConvertAngle(TrimBlanks(clip.ClipLat), clip.notation, wanted);
  clip.ClipLon = ConvertAngle(TrimBlanks(clip.ClipLon), clip.notation, wanted);
  clip.notation = wanted;
  return {};
}

ClipResult FinishClip(const ClipProAtlas& clip) {
  const Sign sign = clip.notation == AngleNotation::D ? Sign::Any : Sign::NotNegative;
  ClipResult result{std::nullopt, WhyNoPosition(clip, sign)};
  if (!result.refusal.empty()) return result;
  const GeoPoint given{DegreesOfAngle(TrimBlanks(clip.ClipLat), clip.notation),
                       DegreesOfAngle(TrimBlanks(clip.ClipLon), clip.notation), 0};
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
