#include "formats/GpxTexts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>
#include <system_error>

#include "formats/FieldValues.h"
#include "formats/XmlValues.h"
#include "records/Symbols.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// By the display mode of D103, D107 and D108.
constexpr std::array<std::string_view, 3> DisplayModeNames{"SymbolAndName", "SymbolOnly", "SymbolAndDescription"};
/// By the colour of a log.
constexpr std::array<std::string_view, 16> ColourNames{
    "Black",    "DarkRed", "DarkGreen", "DarkYellow", "DarkBlue", "DarkMagenta", "DarkCyan", "LightGray",
    "DarkGray", "Red",     "Green",     "Yellow",     "Blue",     "Magenta",     "Cyan",     "White"};

template <std::size_t Count>
std::optional<std::uint8_t> IndexIn(const std::array<std::string_view, Count>& names, std::string_view name) {
  const auto row = std::find_if(names.begin(), names.end(), [name](auto known) { return SameWord(known, name); });
  if (row == names.end()) return std::nullopt;
  return static_cast<std::uint8_t>(row - names.begin());
}

template <std::size_t Count>
std::string_view NameIn(const std::array<std::string_view, Count>& names, std::size_t index) {
  return index < names.size() ? names[index] : std::string_view();
}

/// The text of an element as records hold it.
std::string RecordText(std::string_view text) {
  return text.empty() ? std::string() : CapitalText(WithoutControlCharacters(TrimSpace(text)));
}

/// A decimal number alone, within what Value holds.
template <typename Value>
std::optional<Value> Number(std::string_view text) {
  text = TrimSpace(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  Value value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<float> Metres(std::string_view text) {
  const auto metres = Number<float>(text);
  return metres == UnknownMetres ? std::nullopt : metres;
}

void SetMetres(std::string& text, std::optional<float> metres) {
  text.clear();
  if (metres) AppendXmlMetres(text, *metres);
}

/// D104's display modes in those of the other types; the first one, no symbol at all, is nothing that they have.
std::uint8_t UsualDisplayMode(std::uint8_t d104) {
  constexpr std::array<std::uint8_t, 6> modes{0, 1, 2, 0, 4, 2};
  return d104 < modes.size() ? modes[d104] : d104;
}

/// Seconds that a zone is ahead: "", "Z", "+09:00", "-0330", "+09"; at most 14 hours, as a schema has them.
std::optional<std::int64_t> ZoneSeconds(std::string_view zone) {
  if (zone.empty() || SameWord(zone, "Z")) return 0;
  const bool west = Take(zone, '-');
  if (!west && !Take(zone, '+')) return std::nullopt;
  const std::string_view hours = TakeDigits(zone, 2);
  Take(zone, ':');
  const std::string_view minutes = TakeDigits(zone, 2);
  if (hours.size() != 2 || minutes.size() == 1 || !zone.empty()) return std::nullopt;
  const std::int64_t minute = LeadingInteger(minutes, 0, 99);
  const std::int64_t seconds = LeadingInteger(hours, 0, 99) * 3600 + minute * 60;
  if (minute > 59 || seconds > 14 * 3600) return std::nullopt;
  return west ? -seconds : seconds;
}

/// The seconds of a time as nearly all programs write it; nothing for another text.
std::optional<std::int64_t> SecondsOfUsual(std::string_view text) {
  constexpr std::string_view Form = "0000-00-00T00:00:00Z";
  const auto fits = [](char form, char c) { return form == '0' ? IsDigit(c) : form == c; };
  if (!std::equal(Form.begin(), Form.end(), text.begin(), text.end(), fits)) return std::nullopt;
  const auto two = [text](std::size_t at) { return (text[at] - '0') * 10 + (text[at + 1] - '0'); };
  const CivilTime time{two(0) * 100 + two(2), two(5), two(8), two(11), two(14), two(17)};
  const std::chrono::year_month_day date = std::chrono::year(time.year) / time.month / time.day;
  if (!date.ok() || time.hour > 23 || time.minute > 59 || time.second > 59) return std::nullopt;
  return SecondsSinceGarminEpoch(time);
}

/// Seconds from the receivers' epoch; fractions are cut off.
std::optional<std::int64_t> SecondsOf(std::string_view text) {
  if (const auto usual = SecondsOfUsual(text)) return usual;
  text = TrimSpace(text);
  const std::size_t t = std::min(text.find_first_of("Tt "), text.size());
  const std::string_view date = TakeBytes(text, t);
  if (date.empty() || text.empty()) return std::nullopt;
  text.remove_prefix(1);
  const std::string_view clock = TakeUntilAny(text, "Zz+-");
  const auto zone = ZoneSeconds(text);
  const auto time = ParseDateTime(std::string(date).append(" ").append(clock));
  if (!zone || !time) return std::nullopt;
  return SecondsSinceGarminEpoch(*time) - *zone;
}

void SetTime(std::string& text, std::optional<GarminSeconds> time) {
  text.clear();
  if (time) AppendXmlTime(text, *time);
}

}  // namespace

// ---- Numbers and times

std::optional<double> GpxNumber(std::string_view text) {
  return Number<double>(text);
}

std::optional<int> GpxRouteNumber(std::string_view text) {
  text = TrimSpace(text);
  if (text.empty() || text.size() > 3 || !std::all_of(text.begin(), text.end(), IsDigit)) return std::nullopt;
  const auto number = static_cast<int>(LeadingInteger(text, 0, 999));
  return number <= 255 ? std::optional(number) : std::nullopt;
}

bool IsGpxTime(std::string_view text) {
  return SecondsOf(text).has_value();
}

std::string HexText(const Subclass& subclass) {
  constexpr std::string_view Hex = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : subclass) {
    text += Hex[byte >> 4U];
    text += Hex[byte & 15U];
  }
  return text;
}

std::optional<Subclass> SubclassOfHex(std::string_view text) {
  Subclass subclass{};
  if (text.size() != 2 * subclass.size()) return std::nullopt;
  for (std::uint8_t& byte : subclass) {
    const char* const begin = TakeBytes(text, 2).data();
    if (std::from_chars(begin, begin + 2, byte, 16).ptr != begin + 2) return std::nullopt;
  }
  return subclass;
}

// ---- Records as in a file

Waypoint AsInFile(const Waypoint& waypoint) {
  Waypoint file = waypoint;
  file.type = WaypointType::D108;
  file.missing = false;
  file.unused = 0;
  for (std::string* const text : {&file.ident, &file.cmnt}) {
    *text = CapitalText(OneLine(*text));
    if (HasFixedWidthTexts(waypoint.type)) *text = TrimBlanks(std::string(*text));
  }
  for (const auto text :
       {&WaypointDetails::facility, &WaypointDetails::city, &WaypointDetails::addr, &WaypointDetails::cross_road}) {
    file.details.Set(text, CapitalText(OneLine((*waypoint.details).*text)));
  }
  for (const auto text : {&WaypointDetails::state, &WaypointDetails::country})
    file.details.Set(text, StateText(OneLine((*waypoint.details).*text)));
  if (!HasFixedWidthTexts(waypoint.type)) return file;
  if (HasSmallSymbol(waypoint)) file.smbl = LargeSymbolFor(waypoint.smbl.value_or(0));
  if (waypoint.type == WaypointType::D104) file.dspl = UsualDisplayMode(waypoint.dspl);
  if (waypoint.type == WaypointType::D107 && waypoint.color == 0) file.color = DefaultLargeColour;
  file.dist_m = std::max(waypoint.dst_m.value_or(0), 0.0F);
  file.dst_m = 0;
  return file;
}

Route AsInFile(const Route& route) {
  Route file;
  file.nmbr = route.nmbr;
  file.cmnt = CapitalText(OneLine(route.cmnt));
  if (route.type == RouteHeaderType::D201) file.cmnt = TrimBlanks(std::string(file.cmnt));
  return file;
}

TrackLog AsInFile(const TrackLog& log) {
  TrackLog file;
  file.dspl = log.dspl;
  file.color = log.color;
  file.trk_ident = CapitalText(OneLine(log.trk_ident));
  return file;
}

// ---- Records as texts

void SetTexts(GpxTexts& texts, const Waypoint& waypoint, const Waypoint& file) {
  const WaypointDetails& details = *waypoint.details;
  SetMetres(texts.ele, waypoint.alt_m);
  texts.name = XmlText(waypoint.ident);
  texts.cmt = XmlText(waypoint.cmnt);
  // What a file says to be one of the 16 keeps its number there, and shows its picture here.
  const bool small = waypoint.symbol_set == SymbolSet::Small;
  texts.sym = file.smbl ? GpxSymbolName(small ? LargeSymbolFor(*file.smbl) : *file.smbl) : std::string();
  SetMetres(texts.proximity, file.dist_m > 0 ? std::optional(file.dist_m) : std::nullopt);
  SetMetres(texts.depth, waypoint.dpth_m);
  texts.display_mode = NameIn(DisplayModeNames, file.dspl);
  texts.street = XmlText(details.addr);
  texts.city = XmlText(details.city);
  texts.state = XmlText(details.state);
  texts.country = XmlText(details.country);
  texts.subclass.clear();
}

GpxTexts GpxTextsOf(const Route& route) {
  GpxTexts texts;
  texts.name = XmlText(route.cmnt);
  AppendInteger(texts.number, route.nmbr);
  return texts;
}

GpxTexts GpxTextsOf(const TrackLog& log) {
  GpxTexts texts;
  texts.name = XmlText(log.trk_ident);
  texts.color = NameIn(ColourNames, log.color);
  return texts;
}

void SetTexts(GpxTexts& texts, const TrackPoint& point) {
  SetMetres(texts.ele, point.alt_m);
  SetTime(texts.time, point.time);
  SetMetres(texts.depth, point.dpth_m);
}

// ---- Texts as records

Waypoint WaypointOf(const GpxTexts& texts, int number) {
  constexpr int NumberDigits = 3;
  Waypoint waypoint;
  waypoint.ident = RecordText(texts.name);
  if (waypoint.ident.empty()) waypoint.ident = "WPT" + PadNumber(number, NumberDigits);
  waypoint.cmnt = RecordText(TrimSpace(texts.cmt).empty() ? texts.desc : texts.cmt);
  if (const auto symbol = SymbolOfGpxName(TrimSpace(texts.sym))) waypoint.smbl = symbol->code;
  waypoint.symbol_set = SymbolSet::Large;
  waypoint.alt_m = Metres(texts.ele);
  waypoint.dpth_m = Metres(texts.depth);
  waypoint.dist_m = std::max(Metres(texts.proximity).value_or(0), 0.0F);
  waypoint.dspl = IndexIn(DisplayModeNames, TrimSpace(texts.display_mode)).value_or(0);
  waypoint.details.Set(&WaypointDetails::addr, RecordText(texts.street));
  waypoint.details.Set(&WaypointDetails::city, RecordText(texts.city));
  waypoint.details.Set(&WaypointDetails::state, StateText(RecordText(texts.state)));
  waypoint.details.Set(&WaypointDetails::country, StateText(RecordText(texts.country)));
  return waypoint;
}

Rare<RouteLink> LinkOf(const GpxTexts& texts) {
  Rare<RouteLink> link;
  if (const auto subclass = SubclassOfHex(TrimSpace(texts.subclass))) link.Set(&RouteLink::subclass, *subclass);
  return link;
}

Route RouteOf(const GpxTexts& texts) {
  Route route;
  route.nmbr = static_cast<std::uint8_t>(GpxRouteNumber(texts.number).value_or(0));
  route.cmnt = RecordText(texts.name);
  return route;
}

TrackLog TrackLogOf(const GpxTexts& texts) {
  TrackLog log;
  log.trk_ident = RecordText(texts.name);
  if (const auto color = IndexIn(ColourNames, TrimSpace(texts.color))) log.color = *color;
  return log;
}

TrackPoint AsSaid(const TrackPoint& point, const GpxTexts& texts) {
  TrackPoint said = point;
  if (texts.ele.empty()) said.alt_m.reset();
  if (texts.depth.empty()) said.dpth_m.reset();
  if (point.time) said.time = KnownGarminTime(*point.time);
  return said;
}

TrackPoint TrackPointOf(const GpxTexts& texts) {
  TrackPoint point;
  point.alt_m = Metres(texts.ele);
  point.dpth_m = Metres(texts.depth);
  if (const auto seconds = SecondsOf(texts.time)) point.time = KnownGarminTime(*seconds);
  return point;
}

}  // namespace walrim
