#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/MapPointText.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

namespace {

constexpr std::array<std::string_view, 8> PointKeys{"OID", "GID", "POS", "STR", "STRFORMAT", "URL", "URLTYPE", "INFO"};
/// Statements that draw nothing by themselves and may stand around the point.
constexpr std::array<std::string_view, 12> OtherKeywords{"MAPSERVER", "INIT",    "KANJI", "GEOREF", "GROUP", "ICON",
                                                         "THEME",     "MESSAGE", "DISP",  "PICK",   "INPUT", "ADDON"};

template <typename Words>
bool Contains(const Words& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

struct Item {
  std::string key;
  std::string_view value;
};

/// Length of a known key with its "=" at the front of text; 0 where there is none.
std::size_t KeyLength(std::string_view text) {
  const std::size_t equals = text.substr(0, sizeof "STRFORMAT").find('=');
  if (equals == std::string_view::npos) return 0;
  return Contains(PointKeys, UpperCase(text.substr(0, equals))) ? equals + 1 : 0;
}

/// What stands before a key. In a statement that is laid out with TABs, as scripts are written, it is TABs, so that
/// a text may hold what looks like a key.
std::string_view SeparatorsOf(std::string_view items) {
  return items.find('\t') == std::string_view::npos ? " ,\r\n" : "\t\r\n";
}

/// Where the value at the front of text ends: at its end, or at separators that a key follows.
std::size_t ValueLength(std::string_view text, std::string_view separators) {
  std::size_t at = 0;
  while (true) {
    at = text.find_first_of(separators, at);
    if (at == std::string_view::npos) return text.size();
    ++at;
    if (KeyLength(text.substr(at)) > 0) return at;
  }
}

std::string_view WithoutComma(std::string_view value) {
  if (!value.empty() && value.back() == ',') value.remove_suffix(1);
  return TrimSpace(value);
}

/// The items key=value of a point; nothing where there is something else or a key comes twice.
std::optional<std::vector<Item>> ItemsOf(std::string_view text) {
  const std::string_view separators = SeparatorsOf(text);
  std::vector<Item> items;
  for (text = TrimSpace(text); !text.empty(); text = TrimSpace(text)) {
    const std::size_t key_length = KeyLength(text);
    if (key_length == 0) return std::nullopt;
    Item item{UpperCase(text.substr(0, key_length - 1)), {}};
    text.remove_prefix(key_length);
    const std::size_t length = ValueLength(text, separators);
    item.value = TrimSpace(text.substr(0, length));
    if (length < text.size()) item.value = WithoutComma(item.value);
    text.remove_prefix(length);
    const auto same_key = [&](const Item& other) { return other.key == item.key; };
    if (std::any_of(items.begin(), items.end(), same_key)) return std::nullopt;
    items.push_back(std::move(item));
  }
  return items;
}

std::string_view ValueOf(const std::vector<Item>& items, std::string_view key) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.key == key; });
  return found == items.end() ? std::string_view() : found->value;
}

/// An angle d/mm/ss.s as scripts write it. Their writer rounds degrees down, also below 0, and rounds seconds up to 60.
std::optional<double> SlashedAngle(std::string_view text) {
  text = TrimSpace(text);
  const std::string_view start = text;
  Take(text, "-");
  const std::string_view whole = TakeDigits(text);
  const std::string_view degrees = start.substr(0, start.size() - text.size());
  if (whole.empty() || !Take(text, "/")) return std::nullopt;
  const auto minutes = TakeNumber(text);
  if (!minutes || !Take(text, "/")) return std::nullopt;
  const auto seconds = TakeNumber(text);
  if (!seconds || !text.empty()) return std::nullopt;
  return DegreesOfParts(degrees, *minutes, *seconds, true);
}

/// Sets the texts of a point. An info "[WP]<ident><comment>" holds the whole ident, of which str may show less.
void SetTexts(const std::vector<Item>& items, MapPoint& point) {
  std::string_view ident = ValueOf(items, "STR");
  std::string_view comment = ValueOf(items, "INFO");
  const bool marked = Take(comment, "[WP]");
  if (marked) comment = TrimSpace(comment);
  const std::size_t middle = comment.find("><");
  if (marked && comment.starts_with('<') && comment.back() == '>' && middle != std::string_view::npos) {
    ident = comment.substr(1, middle - 1);
    comment = comment.substr(middle + 2, comment.size() - middle - 3);
  }
  point.ident = WithoutControlCharacters(ident);
  point.cmnt = WithoutControlCharacters(comment);
}

std::optional<MapPoint> PointOfItems(const std::vector<Item>& items) {
  const std::string_view pos = ValueOf(items, "POS");
  const std::size_t comma = pos.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const auto lat = SlashedAngle(pos.substr(0, comma));
  const auto lon = SlashedAngle(pos.substr(comma + 1));
  if (!lat || !lon) return std::nullopt;
  auto point = PointAt(*lat, *lon);
  if (!point) return std::nullopt;
  point->datum = Datum::Tokyo;
  SetTexts(items, *point);
  return point;
}

/// Takes a statement up to its ";". The last one may lack it.
std::string_view TakeStatement(std::string_view& text) {
  const std::size_t end = std::min(text.find(';'), text.size());
  const std::string_view statement = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return TrimSpace(statement);
}

struct Script {
  std::optional<MapPoint> point;
  std::optional<Datum> datum;
};

/// False for what a script with one point must not hold.
bool ReadStatement(std::string_view statement, Script& script) {
  const std::size_t blank = std::min(statement.find_first_of(" \t\r\n"), statement.size());
  const std::string keyword = UpperCase(statement.substr(0, blank));
  if (keyword == "GEOREF" || keyword == "THEME") {
    const std::string text = UpperCase(statement);
    const bool world = text.find("WGS") != std::string::npos || text.find("JGD") != std::string::npos;
    if (world) script.datum = Datum::Wgs84;
  }
  if (keyword != "POINT") return Contains(OtherKeywords, keyword);
  if (script.point) return false;
  const auto items = ItemsOf(statement.substr(blank));
  if (items) script.point = PointOfItems(*items);
  return script.point.has_value();
}

}  // namespace

std::optional<MapPoint> PointOfScript(std::string_view text) {
  Script script;
  for (text = TrimSpace(text); !text.empty(); text = TrimSpace(text)) {
    if (text.starts_with("//")) {
      text.remove_prefix(std::min(text.find_first_of("\r\n"), text.size()));
      continue;
    }
    if (!ReadStatement(TakeStatement(text), script)) return std::nullopt;
  }
  if (script.point && script.datum) script.point->datum = *script.datum;
  return std::move(script.point);
}

}  // namespace walrim
