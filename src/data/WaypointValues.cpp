#include "data/WaypointValues.h"

#include <algorithm>

#include "text/Utf8.h"

namespace walrim {
namespace {

using enum WaypointField;

/// Upper case, trimmed, with the zero character that ends the text in a D103 or D104 field.
template <std::size_t Width>
void SetZeroEnded(FixedText<Width>& field, std::string_view text) {
  std::string prepared = UpperCase(TrimBlanks(text));
  prepared += '\0';
  field.Set(prepared);
}

template <typename Entry>
void StorePosition(const WaypointValues& values, Entry& entry) {
  entry.lat_deg = values.lat_deg;
  entry.lon_deg = values.lon_deg;
}

std::uint16_t SymbolWord(long long smbl) {
  return static_cast<std::uint16_t>(std::clamp<long long>(smbl, 0, 65535));
}

void StoreNumbers(const WaypointValues& values, D103Entry& entry) {
  StorePosition(values, entry);
  entry.unused = 0;
  // The symbols of other layouts mean nothing here; the dot does no harm.
  entry.smbl = static_cast<std::uint8_t>(values.smbl > 0 && values.smbl <= 255 ? values.smbl : 0);
  entry.dspl = values.dspl;
}

void StoreNumbers(const WaypointValues& values, D104Entry& entry) {
  StorePosition(values, entry);
  entry.unused = 0;
  entry.dst_m = values.dst_m;
  entry.smbl = values.smbl_given ? SymbolWord(values.smbl) : D104Entry().smbl;
  entry.dspl = values.dspl;
}

void StoreNumbers(const WaypointValues& values, D107Entry& entry) {
  StorePosition(values, entry);
  entry.unused = 0;
  entry.smbl = static_cast<std::uint8_t>(static_cast<unsigned long long>(values.smbl) & 0xFFU);
  entry.dspl = values.dspl;
  entry.dst_m = values.dst_m;
  entry.color = values.color;
}

template <std::size_t Width>
std::string Blanked(const FixedText<Width>& text) {
  std::string padded = text.Padded();
  std::replace(padded.begin(), padded.end(), '\0', ' ');
  return padded;
}

void FillSubclass(const Subclass& subclass_bytes, WaypointRecord& record) {
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    AssignNumber(record[SubclassField(i)], subclass_bytes[i]);
}

/// What the four layouts share.
template <typename Entry>
void FillCommon(const Entry& entry, WaypointRecord& record) {
  record[lat] = ShortestNumber(entry.lat_deg);
  record[lon] = ShortestNumber(entry.lon_deg);
  AssignNumber(record[smbl], entry.smbl);
  AssignNumber(record[dspl], entry.dspl);
  record[smbl_notes].clear();
  record[dspl_notes].clear();
}

/// The fields that only D108 has, as a waypoint of the other types shows them.
template <typename Entry>
void FillFixedWidth(const Entry& entry, WaypointRecord& record) {
  FillCommon(entry, record);
  record[ident] = Blanked(entry.ident);
  record[cmnt] = Blanked(entry.cmnt);
  record[color] = "255";
  record[wpt_class] = "0";
  record[attr] = "96";
  FillSubclass(NoSubclass, record);
  record[alt] = MetresText(UnknownMetres);
  record[dpth] = MetresText(UnknownMetres);
  record[dist] = "0";
  for (const WaypointField field : {state, cc, idents, comment, facility, city, addr, cross_road}) {
    record[field].clear();
  }
}

}  // namespace

WaypointValues ValuesOf(const WaypointRecord& record) {
  WaypointValues values = EvaluateWaypoint([&record](WaypointField field) -> std::string_view { return record[field]; },
                                           WaypointRecord::FieldCount);
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    values.subclass[i] = ByteOf(record[SubclassField(i)]);
  values.lat_deg = LeadingNumber(record[lat]);
  values.lon_deg = LeadingNumber(record[lon]);
  return values;
}

void StoreValues(const WaypointValues& values, D103Entry& entry) {
  StoreNumbers(values, entry);
  SetZeroEnded(entry.ident, values.ident);
  SetZeroEnded(entry.cmnt, values.cmnt);
}

void StoreValues(const WaypointValues& values, D104Entry& entry) {
  StoreNumbers(values, entry);
  SetZeroEnded(entry.ident, values.ident);
  SetZeroEnded(entry.cmnt, values.cmnt);
}

void StoreValues(const WaypointValues& values, D107Entry& entry) {
  StoreNumbers(values, entry);
  entry.ident.Set(UpperCase(values.ident));
  SetZeroEnded(entry.cmnt, values.cmnt);
}

void StoreValues(const WaypointValues& values, D108Entry& entry) {
  StorePosition(values, entry);
  entry.wpt_class = values.wpt_class;
  entry.color = values.color;
  entry.dspl = values.dspl;
  entry.attr = values.attr;
  entry.smbl = SymbolWord(values.smbl);
  entry.subclass = values.subclass;
  entry.alt_m = values.alt_m;
  entry.dpth_m = values.dpth_m;
  entry.dist_m = values.dist_m;
  entry.state.Set(UpperCase(values.state));
  entry.cc.Set(UpperCase(values.cc));
  AssignText(entry.ident, values.ident);
  AssignUpper(entry.cmnt, values.cmnt);
  AssignUpper(entry.facility, values.facility);
  AssignUpper(entry.city, values.city);
  AssignUpper(entry.addr, values.addr);
  AssignUpper(entry.cross_road, values.cross_road);
}

void StoreValues(const WaypointValues& values, D103Entry& d103, D104Entry& d104, D107Entry& d107, D108Entry& d108) {
  StoreValues(values, d103);
  StoreNumbers(values, d104);
  d104.ident = d103.ident;
  d104.cmnt = d103.cmnt;
  StoreNumbers(values, d107);
  d107.ident.Set(UpperCase(values.ident));
  d107.cmnt = d103.cmnt;
  StoreValues(values, d108);
}

NamedPoint NamedPointOf(const D103Entry& entry) {
  return {Blanked(entry.ident), Blanked(entry.cmnt), entry.lat_deg, entry.lon_deg};
}

NamedPoint NamedPointOf(const D104Entry& entry) {
  return {Blanked(entry.ident), Blanked(entry.cmnt), entry.lat_deg, entry.lon_deg};
}

NamedPoint NamedPointOf(const D107Entry& entry) {
  return {Blanked(entry.ident), Blanked(entry.cmnt), entry.lat_deg, entry.lon_deg};
}

NamedPoint NamedPointOf(const D108Entry& entry) {
  return {entry.ident, entry.cmnt, entry.lat_deg, entry.lon_deg};
}

void FillRecord(const D103Entry& entry, WaypointRecord& record) {
  FillFixedWidth(entry, record);
  record[dst].clear();
}

void FillRecord(const D104Entry& entry, WaypointRecord& record) {
  FillFixedWidth(entry, record);
  record[dst] = ShortestNumber(entry.dst_m);
}

void FillRecord(const D107Entry& entry, WaypointRecord& record) {
  FillFixedWidth(entry, record);
  record[dst] = ShortestNumber(entry.dst_m);
  AssignNumber(record[color], entry.color);
}

void FillRecord(const D108Entry& entry, WaypointRecord& record) {
  FillCommon(entry, record);
  record[ident] = entry.ident;
  record[cmnt] = entry.cmnt;
  record[dst].clear();
  AssignNumber(record[color], entry.color);
  AssignNumber(record[wpt_class], entry.wpt_class);
  AssignNumber(record[attr], entry.attr);
  FillSubclass(entry.subclass, record);
  record[alt] = MetresText(entry.alt_m);
  record[dpth] = MetresText(entry.dpth_m);
  record[dist] = MetresText(entry.dist_m);
  record[state] = Blanked(entry.state);
  record[cc] = Blanked(entry.cc);
  record[idents] = entry.ident;
  record[comment] = entry.cmnt;
  record[facility] = entry.facility;
  record[city] = entry.city;
  record[addr] = entry.addr;
  record[cross_road] = entry.cross_road;
}

}  // namespace walrim
