// A waypoint between its text form and the device tables: numbers evaluated, texts as they were given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "data/DeviceEntries.h"
#include "data/FieldValues.h"
#include "data/InternalData.h"
#include "data/Records.h"
#include "text/Numbers.h"

namespace walrim {

/// The texts are views of the text form they were taken from. What a text form does not carry at all keeps the value
/// of a cleared D108 waypoint.
struct WaypointValues {
  std::string_view ident;
  std::string_view cmnt;
  std::string_view state;
  std::string_view cc;
  std::string_view facility;
  std::string_view city;
  std::string_view addr;
  std::string_view cross_road;
  double lat_deg = 0;
  double lon_deg = 0;
  long long smbl = 18;
  bool smbl_given = true;  ///< false for an empty text
  std::uint8_t dspl = 0;
  std::uint8_t color = 255;
  std::uint8_t wpt_class = 0;
  std::uint8_t attr = 96;
  Subclass subclass = NoSubclass;
  float dst_m = 0;
  float alt_m = UnknownMetres;
  float dpth_m = UnknownMetres;
  float dist_m = 0;
};

/// Largest symbol number that is evaluated; far beyond what any layout holds.
inline constexpr long long LargestSymbol = 9'000'000'000'000'000;

/// Evaluates all fields but the position and the subclass. text(field) gives a field's text; fields from number present
/// on are not carried.
template <typename Text>
[[nodiscard]] WaypointValues EvaluateWaypoint(const Text& text, std::size_t present) {
  using enum WaypointField;
  WaypointValues values;
  const auto carried = [present](WaypointField field) { return static_cast<std::size_t>(field) < present; };
  const auto byte = [&](WaypointField field, std::uint8_t& to) {
    if (carried(field)) to = ByteOf(text(field));
  };
  const auto single = [&](WaypointField field, float& to) {
    if (carried(field)) to = SingleOf(text(field));
  };
  const auto view = [&](WaypointField field, std::string_view& to) {
    if (carried(field)) to = text(field);
  };
  if (carried(smbl)) {
    const std::string_view symbol = text(smbl);
    values.smbl_given = !symbol.empty();
    values.smbl = LeadingInteger(symbol, -LargestSymbol, LargestSymbol);
  }
  byte(dspl, values.dspl);
  single(dst, values.dst_m);
  byte(color, values.color);
  byte(wpt_class, values.wpt_class);
  byte(attr, values.attr);
  single(alt, values.alt_m);
  single(dpth, values.dpth_m);
  single(dist, values.dist_m);
  view(ident, values.ident);
  view(cmnt, values.cmnt);
  // The same two texts under D108's names.
  if (values.ident.empty()) view(idents, values.ident);
  if (values.cmnt.empty()) view(comment, values.cmnt);
  view(state, values.state);
  view(cc, values.cc);
  view(facility, values.facility);
  view(city, values.city);
  view(addr, values.addr);
  view(cross_road, values.cross_road);
  return values;
}

/// All values of a record. The record must outlive the result.
[[nodiscard]] WaypointValues ValuesOf(const WaypointRecord& record);

void StoreValues(const WaypointValues& values, D103Entry& entry);
void StoreValues(const WaypointValues& values, D104Entry& entry);
void StoreValues(const WaypointValues& values, D107Entry& entry);
void StoreValues(const WaypointValues& values, D108Entry& entry);
/// The same for all four layouts at once.
void StoreValues(const WaypointValues& values, D103Entry& d103, D104Entry& d104, D107Entry& d107, D108Entry& d108);

/// An entry's texts as its text form has them, and its position.
[[nodiscard]] NamedPoint NamedPointOf(const D103Entry& entry);
[[nodiscard]] NamedPoint NamedPointOf(const D104Entry& entry);
[[nodiscard]] NamedPoint NamedPointOf(const D107Entry& entry);
[[nodiscard]] NamedPoint NamedPointOf(const D108Entry& entry);

/// Text form of an entry with zero characters of its fixed-width texts as blanks. dst is empty where the layout has
/// none.
void FillRecord(const D103Entry& entry, WaypointRecord& record);
void FillRecord(const D104Entry& entry, WaypointRecord& record);
void FillRecord(const D107Entry& entry, WaypointRecord& record);
void FillRecord(const D108Entry& entry, WaypointRecord& record);

}  // namespace walrim
