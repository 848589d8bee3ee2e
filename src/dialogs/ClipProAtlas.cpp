#include "dialogs/ClipProAtlas.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::size_t CodeDigits = 5;
/// What a new waypoint has where nothing else was chosen: the waypoint dot with its name.
constexpr int UsualSymbol = 18;
constexpr int UsualDisplay = 0;

std::string EntryCode(int code) {
  return PadNumber(code, CodeDigits);
}

std::vector<std::string> Entries(std::span<const NamedCode> names, int largest) {
  std::vector<std::string> entries;
  for (const NamedCode& row : names) {
    if (row.code < 0 || row.code > largest || row.name.empty()) continue;
    entries.push_back(EntryCode(row.code).append(" : ").append(row.name));
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

bool SkipDigits(std::string_view& text) {
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  text.remove_prefix(digits);
  return digits > 0;
}

bool SkipAny(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

/// True for a text that is one number from its beginning to its end.
bool IsNumber(std::string_view text) {
  SkipAny(text, "+-");
  const bool whole = SkipDigits(text);
  const bool fraction = SkipAny(text, ".") && SkipDigits(text);
  if (!whole && !fraction) return false;
  if (SkipAny(text, "Ee")) {
    SkipAny(text, "+-");
    if (!SkipDigits(text)) return false;
  }
  return text.empty();
}

/// True where the packed minutes are below 60 and the seconds at most 60, which is what 59.996 is written as.
bool HasMinutesAndSeconds(std::string_view dms) {
  const std::string parts = ConvertAngle(dms, "DMS", "MPS");
  const std::size_t first = parts.find('/');
  const std::size_t second = parts.find('/', first + 1);
  return LeadingNumber(std::string_view(parts).substr(first + 1)) < 60 &&
         LeadingNumber(std::string_view(parts).substr(second + 1)) <= 60;
}

struct Axis {
  std::string_view name;
  double limit_deg;
  std::string_view decimal_example;
  std::string_view dms_example;
};
constexpr Axis Latitude{"緯度", 90, "35.6252", "35.373072"};
constexpr Axis Longitude{"経度", 180, "139.2437", "139.143732"};

/// The packed notation rounds degrees down and so has no text for a position south or west that reads back the same.
constexpr std::string_view NoNegativeDms = "南緯・西経のため，度分秒（DMS形式）では扱えません．";

/// Whether a position may lie south or west: where it passes through "DMS" it may not.
enum class Sign { Any, NotNegative };

/// Why a text is no angle of its axis; empty where it is one.
std::string WhyNoAngle(const Axis& axis, std::string_view text, std::string_view notation, Sign sign) {
  const std::string quoted = std::string(axis.name) + "「" + WithoutControlCharacters(text) + "」は";
  const std::string_view angle = TrimBlanks(text);
  const bool decimal = notation == "D";
  if (!IsNumber(angle) || (!decimal && !HasMinutesAndSeconds(angle))) {
    return quoted + (decimal ? "度（D形式，例 " : "度分秒（DMS形式，例 ") +
           std::string(decimal ? axis.decimal_example : axis.dms_example) + "）として読めません．";
  }
  const double degrees = DegreesOfAngle(angle, notation);
  if (std::abs(degrees) > axis.limit_deg) {
    const std::string limit = GeneralNumber(axis.limit_deg);
    return quoted + "-" + limit + "度から" + limit + "度までの範囲にありません．";
  }
  return degrees < 0 && sign == Sign::NotNegative ? quoted + std::string(NoNegativeDms) : std::string();
}

std::string WhyNoPosition(std::string_view lat, std::string_view lon, std::string_view notation, Sign sign) {
  std::string why = WhyNoAngle(Latitude, lat, notation, sign);
  return why.empty() ? WhyNoAngle(Longitude, lon, notation, sign) : why;
}

}  // namespace

std::vector<std::string> SymbolEntries(const NameTables& names) {
  return Entries(names.SymbolNames, LargestSymbolCode);
}

std::vector<std::string> DisplayEntries(const NameTables& names) {
  return Entries(names.DisplayNames, LargestDisplayCode);
}

int CodeOfEntry(std::string_view entry) {
  return static_cast<int>(LeadingInteger(entry.substr(0, CodeDigits), 0, 99999));
}

void ClipProAtlas::SetClip(std::string_view context, std::string_view lat, std::string_view lon, std::string_view datum,
                           std::string_view ident, std::string_view comment) {
  context_ = context;
  datum_ = datum;
  notation_ = "D";
  ClipLat = lat;
  ClipLon = lon;
  ClipIdent = WithoutControlCharacters(ident);
  ClipCmnt = WithoutControlCharacters(comment);
  smbl_entries = SymbolEntries(names_);
  dspl_entries = DisplayEntries(names_);
  SmblType = Choose(smbl_entries, SmblType, UsualSymbol);
  DsplType = Choose(dspl_entries, DsplType, UsualDisplay);
  open_ = true;
}

std::string ClipProAtlas::ClipPnt() {
  std::string why = WhyNoPosition(ClipLat, ClipLon, notation_, Sign::NotNegative);
  if (!why.empty()) return why;
  const std::string_view wanted = notation_ == "D" ? "DMS" : "D";
  ClipLat = ConvertAngle(TrimBlanks(ClipLat), notation_, wanted);
  ClipLon = ConvertAngle(TrimBlanks(ClipLon), notation_, wanted);
  notation_ = wanted;
  return {};
}

ClipResult ClipProAtlas::Ok() {
  if (!open_) return {};
  const Sign sign = notation_ == "D" ? Sign::Any : Sign::NotNegative;
  ClipResult result{std::nullopt, WhyNoPosition(ClipLat, ClipLon, notation_, sign)};
  if (!result.refusal.empty()) return result;
  const GeoPoint given{DegreesOfAngle(TrimBlanks(ClipLat), notation_), DegreesOfAngle(TrimBlanks(ClipLon), notation_)};
  const GeoPoint point = ConvertDatum(given, datum_, "WGS84");
  result.waypoint = ClipWaypoint{point.latitude_deg,
                                 point.longitude_deg,
                                 WithoutControlCharacters(ClipIdent),
                                 WithoutControlCharacters(ClipCmnt),
                                 CodeOfEntry(SmblType),
                                 CodeOfEntry(DsplType)};
  Cancel();
  return result;
}

void ClipProAtlas::Cancel() {
  open_ = false;
  context_.clear();
  datum_.clear();
}

}  // namespace walrim
