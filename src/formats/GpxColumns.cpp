#include "formats/GpxColumns.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

#include "formats/GpxTexts.h"
#include "formats/StandardColumns.h"
#include "formats/XmlSyntax.h"
#include "formats/XmlValues.h"
#include "geo/Datum.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::string_view SubclassAttribute = "subclass";
constexpr std::string_view LatitudeAttribute = "lat";
constexpr std::string_view LongitudeAttribute = "lon";
constexpr std::string_view LinkPrefix = "link_";
constexpr std::size_t EscapeDigits = 4;

std::string Escaped(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    std::string_view rest = text;
    const char32_t character = TakeCharacter(rest);
    const std::string_view bytes = TakeBytes(text, text.size() - rest.size());
    if (character == U'\\') {
      escaped.append("\\\\");
    } else if (XmlCharacters(bytes) == bytes) {
      escaped.append(bytes);
    } else {
      constexpr std::string_view Hex = "0123456789ABCDEF";
      escaped.append("\\u");
      for (int shift = 12; shift >= 0; shift -= 4)
        escaped += Hex[character >> static_cast<unsigned>(shift) & 15U];
    }
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (;;) {
    plain.append(TakeUntilAny(text, "\\"));
    if (!Take(text, '\\')) return plain;
    unsigned code = 0;
    if (Take(text, 'u')) {
      const std::string_view digits = TakeBytes(text, EscapeDigits);
      std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
      AppendCharacter(plain, code);
    } else {
      plain.append(TakeBytes(text, 1));
    }
  }
}

void AppendAttribute(std::string& out, std::string_view prefix, std::string_view name, std::string_view value) {
  out.append(" ").append(prefix).append(name).append("=\"");
  AppendXmlText(out, Escaped(value));
  out += '"';
}

template <typename Record>
std::string ColumnText(const StandardColumn<Record>& column, const Record& record) {
  if (column.text != nullptr) return std::string(column.text(record));
  std::string text;
  column.write(text, record, {});
  return text;
}

/// Whether a column has an attribute of its own name. Bytes of a subclass, and other names of a text, have none.
template <typename Record>
bool HasAttribute(const StandardColumn<Record>& column) {
  return column.read != nullptr && column.title.find('(') == std::string_view::npos && column.title != "idents" &&
         column.title != "comment";
}

template <typename Record>
void AppendDifferences(std::string& out, std::string_view prefix, std::span<const StandardColumn<Record>> columns,
                       const Record& record, const Record& back) {
  for (const StandardColumn<Record>& column : columns) {
    if (!HasAttribute(column)) continue;
    const std::string text = ColumnText(column, record);
    if (text != ColumnText(column, back)) AppendAttribute(out, prefix, column.title, text);
  }
}

template <typename Record>
void ReadColumn(std::span<const StandardColumn<Record>> columns, Record& record, std::string_view name,
                std::string_view value) {
  const auto column = std::find_if(columns.begin(), columns.end(),
                                   [name](const auto& known) { return known.title == name && HasAttribute(known); });
  if (column != columns.end()) column->read(record, value);
}

void AppendAngle(std::string& out, std::string_view name, double deg) {
  constexpr double FewDigits = 1e-6;
  if (std::abs(deg) >= FewDigits && deg != 180) return;
  if (GpxNumber(XmlAngle(deg)) != deg) AppendAttribute(out, {}, name, ShortestNumber(deg));
}

/// What GPX has not of a position: 180 degrees east, and what is next to nothing.
template <typename Position>
void AppendPosition(std::string& out, const Position& record) {
  AppendAngle(out, LatitudeAttribute, record.lat_deg);
  AppendAngle(out, LongitudeAttribute, record.lon_deg);
}

/// False for another attribute.
template <typename Position>
bool ReadPosition(Position& record, std::string_view name, std::string_view value) {
  if (name != LatitudeAttribute && name != LongitudeAttribute) return false;
  Position changed = record;
  (name == LatitudeAttribute ? changed.lat_deg : changed.lon_deg) = GpxNumber(value).value_or(0);
  if (OnGlobe({changed.lat_deg, changed.lon_deg, 0})) record = changed;
  return true;
}

}  // namespace

std::string ColumnAttributes(const Waypoint& record, const Waypoint& back) {
  std::string attributes;
  AppendPosition(attributes, record);
  if (record == back) return attributes;
  AppendDifferences(attributes, {}, WaypointColumns(), record, back);
  const Subclass& subclass = record.details->subclass;
  if (subclass != back.details->subclass) AppendAttribute(attributes, {}, SubclassAttribute, HexText(subclass));
  return attributes;
}

std::string ColumnAttributes(const RoutePoint& record, const RoutePoint& back) {
  std::string attributes = ColumnAttributes(record.waypoint, back.waypoint);
  if (record.link != back.link) AppendDifferences(attributes, LinkPrefix, LinkColumns(), record, back);
  return attributes;
}

std::string ColumnAttributes(const Route& record, const Route& back) {
  std::string attributes;
  AppendDifferences(attributes, {}, RouteColumns(), record, back);
  return attributes;
}

std::string ColumnAttributes(const TrackLog& record, const TrackLog& back) {
  std::string attributes;
  AppendDifferences(attributes, {}, TrackLogColumns(), record, back);
  return attributes;
}

std::string ColumnAttributes(const TrackPoint& record, const TrackPoint& back) {
  std::string attributes;
  AppendPosition(attributes, record);
  if (record == back) return attributes;
  AppendDifferences(attributes, {}, TrackPointColumns(), record, back);
  return attributes;
}

void AppendRoutePointCount(std::string& attributes, std::size_t count) {
  if (count > MaxReceivedRoutePoints) AppendAttribute(attributes, {}, RoutePointCountAttribute, std::to_string(count));
}

void AppendTrackPointCount(std::string& attributes, std::size_t count) {
  if (count == 0) AppendAttribute(attributes, {}, TrackPointCountAttribute, "0");
}

void ReadColumnAttribute(Waypoint& record, std::string_view name, std::string_view value) {
  if (ReadPosition(record, name, value)) return;
  // A number of its own may be of either set.
  if (name == "smbl") record.symbol_set = SymbolSet::Untold;
  if (name != SubclassAttribute) return ReadColumn(WaypointColumns(), record, name, Unescaped(value));
  if (const auto subclass = SubclassOfHex(value)) record.details.Set(&WaypointDetails::subclass, *subclass);
}

void ReadColumnAttribute(RoutePoint& record, std::string_view name, std::string_view value) {
  if (!Take(name, LinkPrefix)) return ReadColumnAttribute(record.waypoint, name, value);
  ReadColumn(LinkColumns(), record, name, Unescaped(value));
}

void ReadColumnAttribute(Route& record, std::string_view name, std::string_view value) {
  ReadColumn(RouteColumns(), record, name, Unescaped(value));
}

void ReadColumnAttribute(TrackLog& record, std::string_view name, std::string_view value) {
  ReadColumn(TrackLogColumns(), record, name, Unescaped(value));
}

void ReadColumnAttribute(TrackPoint& record, std::string_view name, std::string_view value) {
  if (!ReadPosition(record, name, value)) ReadColumn(TrackPointColumns(), record, name, Unescaped(value));
}

}  // namespace walrim
