#include "doctor/NmeaReader.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {

namespace {

/// NMEA allows 82 characters; makers' own sentences are longer at times.
constexpr std::size_t LongestLine = 256;
/// "@yymmddhhmmss", latitude, longitude, quality, height, three speeds; without its line end.
constexpr std::size_t TextLength = 55;

int Number(std::string_view digits) {
  int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

bool ChecksumHolds(std::string_view body, std::string_view hex) {
  unsigned told = 0;
  const auto end = std::from_chars(hex.data(), hex.data() + hex.size(), told, 16).ptr;
  unsigned sum = 0;
  for (const char c : body)
    sum ^= static_cast<std::uint8_t>(c);
  return hex.size() == 2 && end == hex.data() + 2 && sum == told;
}

/// "3537.9382","N" is 35.632303 degrees; nothing for an empty field or one that is no angle.
std::optional<double> Degrees(std::string_view angle, std::string_view side, double most) {
  const std::size_t point = std::min(angle.find('.'), angle.size());
  if (side.empty() || point < 3 || !AllDigits(angle.substr(0, point))) return std::nullopt;
  const double degrees = LeadingNumber(angle.substr(0, point - 2)) + LeadingNumber(angle.substr(point - 2)) / 60;
  if (degrees > most) return std::nullopt;
  return side == "S" || side == "W" ? -degrees : degrees;
}

/// Two digits each, in the order that the date has: "ddmmyy" or "yymmdd", and "hhmmss".
std::optional<CivilTime> TimeOf(std::string_view year, std::string_view month, std::string_view day,
                                std::string_view clock) {
  if (!AllDigits(year) || !AllDigits(month) || !AllDigits(day) || clock.size() < 6 || !AllDigits(clock.substr(0, 6))) {
    return std::nullopt;
  }
  // Receivers of this kind were made after 1980.
  const int short_year = Number(year);
  CivilTime time{short_year + (short_year < 80 ? 2000 : 1900), Number(month), Number(day)};
  time.hour = Number(clock.substr(0, 2));
  time.minute = Number(clock.substr(2, 2));
  time.second = Number(clock.substr(4, 2));
  const bool exists = ParseDateTime(DateTimeText(time)) == time;
  return exists ? std::optional(time) : std::nullopt;
}

std::vector<std::string_view> Fields(std::string_view body) {
  std::vector<std::string_view> fields;
  while (!body.empty())
    fields.push_back(TakeUpTo(body, ','));
  fields.resize(std::max<std::size_t>(fields.size(), 16));
  return fields;
}

void TakePosition(SentenceFacts& facts, const std::vector<std::string_view>& fields, std::size_t first) {
  const auto lat = Degrees(fields[first], fields[first + 1], 90);
  const auto lon = Degrees(fields[first + 2], fields[first + 3], 180);
  if (!lat || !lon) return;
  facts.lat_deg = lat;
  facts.lon_deg = lon;
}

}  // namespace

void NmeaReader::Take(std::uint8_t byte) {
  if (byte == '\n') {
    TakeLine();
    line_.clear();
  } else if (line_.size() < LongestLine) {
    line_ += static_cast<char>(byte);
  }
}

/// A line begins where its sentence does: what was cut off before it means nothing.
void NmeaReader::TakeLine() {
  const std::string_view line = TrimSpace(line_);
  const std::size_t dollar = line.rfind('$');
  const std::size_t at = line.rfind('@');
  if (dollar != std::string_view::npos) {
    std::string_view rest = line.substr(dollar + 1);
    const std::string_view body = TakeUpTo(rest, '*');
    const bool known = body.starts_with("GP") || body.starts_with("PG");
    if (known && ChecksumHolds(body, rest)) TakeSentence(body);
  } else if (at != std::string_view::npos && line.size() - at == TextLength) {
    TakeText(line.substr(at + 1));
  }
}

void NmeaReader::TakeSentence(std::string_view body) {
  ++facts_.nmea_sentences;
  const auto fields = Fields(body);
  const std::string_view name = fields[0];
  if (name == "GPRMC") {
    TakePosition(facts_, fields, 3);
    const std::string_view date = fields[9];
    if (date.size() == 6) {
      const auto time = TimeOf(date.substr(4), date.substr(2, 2), date.substr(0, 2), fields[1]);
      if (time) facts_.utc = time;
    }
  } else if (name == "GPGGA") {
    TakePosition(facts_, fields, 2);
    if (AllDigits(fields[7])) facts_.satellites = Number(fields[7]);
  } else if (name == "GPGLL") {
    TakePosition(facts_, fields, 1);
  } else if (name == "PGRMT") {
    facts_.product = fields[1];
  }
}

/// "yymmddhhmmssNddmmmmmEdddmmmmm" and more; minutes have three decimals, and "_" stands for what is not known.
void NmeaReader::TakeText(std::string_view line) {
  const bool has_time = AllDigits(line.substr(0, 12));
  const bool blank_time = line.substr(0, 12) == "____________";
  if (!has_time && !blank_time) return;
  ++facts_.text_sentences;
  const auto time = TimeOf(line.substr(0, 2), line.substr(2, 2), line.substr(4, 2), line.substr(6, 6));
  if (time) facts_.utc = time;
  const auto angle = [&](std::size_t from, std::size_t degree_digits) {
    return std::string(line.substr(from, degree_digits + 2)) + "." +
           std::string(line.substr(from + degree_digits + 2, 3));
  };
  const auto lat = Degrees(angle(13, 2), line.substr(12, 1), 90);
  const auto lon = Degrees(angle(21, 3), line.substr(20, 1), 180);
  if (!lat || !lon) return;
  facts_.lat_deg = lat;
  facts_.lon_deg = lon;
}

}  // namespace walrim
