#include "receiver/UnaskedTalker.h"

#include <charconv>
#include <cstdio>

#include "text/Dates.h"
#include "text/Scan.h"

namespace walrim {

namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr int NmeaBaud = 4800;
constexpr std::int64_t BitsPerByte = 10;
constexpr std::size_t NoiseBytes = 32;

std::string Sentence(const std::string& body) {
  unsigned sum = 0;
  for (const char c : body)
    sum ^= static_cast<unsigned char>(c);
  char checksum[8];
  std::snprintf(checksum, sizeof checksum, "*%02X\r\n", sum);
  return "$" + body + checksum;
}

std::string Digits(const char* form, int first, int second, int third) {
  char text[32];
  std::snprintf(text, sizeof text, form, first, second, third);
  return text;
}

seconds IntervalOf(TalkerMode mode) {
  return mode == TalkerMode::Nmea ? seconds(2) : seconds(mode == TalkerMode::Text ? 1 : 0);
}

}  // namespace

std::optional<TalkerSetting> TalkerSettingOf(std::string_view text) {
  if (text == "text") return TalkerSetting{TalkerMode::Text};
  if (text == "noise") return TalkerSetting{TalkerMode::Noise};
  if (text == "silent") return TalkerSetting{TalkerMode::Silent};
  if (!Take(text, "nmea")) return std::nullopt;
  if (text.empty()) return TalkerSetting{TalkerMode::Nmea, NmeaBaud};
  int baud = 0;
  if (!Take(text, ':')) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), baud);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || baud < 300 || baud > 115200) return std::nullopt;
  return TalkerSetting{TalkerMode::Nmea, baud};
}

std::string NmeaSentences(std::int64_t utc_s) {
  const CivilTime time = CivilFromGarminSeconds(utc_s);
  const std::string clock = Digits("%02d%02d%02d", time.hour, time.minute, time.second);
  const std::string date = Digits("%02d%02d%02d", time.day, time.month, time.year % 100);
  const std::string place = "3537.9380,N,13916.2000,E";
  return Sentence("GPRMC," + clock + ",A," + place + ",000.0,000.0," + date + ",006.6,W") +
         Sentence("GPGGA," + clock + "," + place + ",1,05,2.1,190.0,M,39.0,M,,") +
         Sentence("GPGLL," + place + "," + clock + ",A") + Sentence("PGRMT,eTrex Software Version 2.14,,,,,,,,");
}

std::string SimpleText(std::int64_t utc_s) {
  const CivilTime time = CivilFromGarminSeconds(utc_s);
  return "@" + Digits("%02d%02d%02d", time.year % 100, time.month, time.day) +
         Digits("%02d%02d%02d", time.hour, time.minute, time.second) + "N3537938E13916200G015+00190E0000N0000U0000\r\n";
}

std::optional<nanoseconds> UnaskedTalker::NextDue() const {
  if (setting_.mode == TalkerMode::Silent) return std::nullopt;
  return outgoing_.empty() ? next_at_.value_or(nanoseconds(0)) : outgoing_.front().due;
}

std::vector<std::uint8_t> UnaskedTalker::Send(nanoseconds now) {
  if (setting_.mode != TalkerMode::Silent && outgoing_.empty() && now >= next_at_.value_or(now)) Talk(now);
  std::vector<std::uint8_t> bytes;
  while (!outgoing_.empty() && outgoing_.front().due <= now) {
    bytes.push_back(outgoing_.front().byte);
    outgoing_.pop_front();
  }
  return bytes;
}

void UnaskedTalker::Talk(nanoseconds now) {
  const nanoseconds byte_time = nanoseconds(seconds(1)) * BitsPerByte / setting_.baud;
  nanoseconds due = now;
  for (const char c : NextText(now))
    outgoing_.push_back({due += byte_time, static_cast<std::uint8_t>(c)});
  next_at_ = std::max(now + IntervalOf(setting_.mode), due);
}

std::string UnaskedTalker::NextText(nanoseconds now) {
  const std::int64_t utc_s = utc_s_ + std::chrono::floor<seconds>(now).count();
  switch (setting_.mode) {
    case TalkerMode::Nmea:
      return NmeaSentences(utc_s);
    case TalkerMode::Text:
      return SimpleText(utc_s);
    case TalkerMode::Noise:
    case TalkerMode::Silent:
      break;
  }
  std::string noise;
  while (noise.size() < NoiseBytes) {
    noise_ = noise_ * 1664525U + 1013904223U;  // Knuth's and Lewis's linear congruential generator
    noise += static_cast<char>(noise_ >> 24);
  }
  return noise;
}

}  // namespace walrim
