#include "preflight/NameBook.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

#include "text/Scan.h"
#include "text/TextEncoding.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view Headline = "# long name, short name, position, date";
/// A receiver's rounding, and that of the notations.
constexpr double PlaceTolerance_deg = 5e-5;

bool IsName(std::string_view name) {
  return !name.empty() && name.size() <= NameBook::LongestName && IsValidUtf8(name) &&
         WithoutControlCharacters(name) == name;
}

bool IsAscii(std::string_view text) {
  return AsciiPrefix(text) == text.size();
}

/// A number of degrees at the front of a text, taken off.
std::optional<double> TakeDegrees(std::string_view& text, double most) {
  double degrees = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), degrees);
  if (problem != std::errc() || !std::isfinite(degrees) || std::abs(degrees) > most) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return degrees;
}

std::optional<NamePlace> PlaceOf(std::string_view text) {
  const auto lat_deg = TakeDegrees(text, 90);
  if (!lat_deg || !Take(text, ' ')) return std::nullopt;
  const auto lon_deg = TakeDegrees(text, 180);
  if (!lon_deg || !text.empty()) return std::nullopt;
  return NamePlace{*lat_deg, *lon_deg};
}

/// Rounded as it is written, so that what is read again is the same.
std::string PlaceText(const std::optional<NamePlace>& place) {
  if (!place) return {};
  char text[64];
  const int size = std::snprintf(text, sizeof text, "%.5f %.5f", place->lat_deg, place->lon_deg);
  return {text, static_cast<std::size_t>(size)};
}

std::optional<NamePair> PairOf(std::string_view line) {
  NamePair pair;
  pair.long_name = TrimSpace(TakeUpTo(line, '\t'));
  pair.short_name = TrimSpace(TakeUpTo(line, '\t'));
  const std::string_view place = TrimSpace(TakeUpTo(line, '\t'));
  const std::string_view date = TrimSpace(TakeUpTo(line, '\t'));
  pair.place = PlaceOf(place);
  if (IsName(date) && IsAscii(date)) pair.date = date;
  const bool sound = IsName(pair.long_name) && pair.long_name.front() != '#' && IsName(pair.short_name) &&
                     IsAscii(pair.short_name) && (place.empty() || pair.place);
  return sound ? std::optional(std::move(pair)) : std::nullopt;
}

bool SamePlace(const NamePlace& a, const NamePlace& b) {
  const double gap_deg = std::abs(a.lon_deg - b.lon_deg);
  return std::abs(a.lat_deg - b.lat_deg) < PlaceTolerance_deg &&
         (gap_deg < PlaceTolerance_deg || std::abs(gap_deg - 360) < PlaceTolerance_deg);
}

}  // namespace

int NameBook::Read(std::string_view text) {
  int left_out = 0;
  LineSource lines(text, TextEncoding::Utf8);
  for (std::string_view line; lines.Next(line);) {
    const bool remark = line.starts_with('#') && line.size() <= LongestName && IsValidUtf8(line);
    if (remark && line != Headline && remarks_.size() < MostNames) remarks_.emplace_back(line);
    if (remark || TrimSpace(line).empty()) continue;
    auto pair = PairOf(line);
    if (pair && pairs_.size() < MostNames) {
      pairs_.push_back(std::move(*pair));
    } else {
      ++left_out;
    }
  }
  return left_out;
}

std::string NameBook::Text() const {
  std::string text = std::string(Headline) + "\n";
  for (const std::string& remark : remarks_)
    text += remark + "\n";
  for (const NamePair& pair : pairs_) {
    text += pair.long_name + "\t" + pair.short_name + "\t" + PlaceText(pair.place) + "\t" + pair.date + "\n";
  }
  return text;
}

void NameBook::Remember(NamePair pair) {
  if (!IsName(pair.long_name) || !IsName(pair.short_name) || pair.long_name.front() == '#') return;
  std::erase_if(pairs_, [&pair](const NamePair& other) {
    if (other.long_name != pair.long_name) return false;
    return !other.place || !pair.place || SamePlace(*other.place, *pair.place);
  });
  if (pairs_.size() < MostNames) pairs_.push_back(std::move(pair));
}

std::string NameBook::ShortOf(std::string_view long_name) const {
  const auto found =
      std::find_if(pairs_.rbegin(), pairs_.rend(), [&](const NamePair& pair) { return pair.long_name == long_name; });
  return found == pairs_.rend() ? std::string() : found->short_name;
}

std::string NameBook::LongOf(std::string_view short_name, const NamePlace& place) const {
  const auto found = std::find_if(pairs_.rbegin(), pairs_.rend(), [&](const NamePair& pair) {
    return SameWord(pair.short_name, short_name) && pair.place && SamePlace(*pair.place, place);
  });
  return found == pairs_.rend() ? std::string() : found->long_name;
}

}  // namespace walrim
