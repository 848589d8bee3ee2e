#include "text/Dates.h"

#include <chrono>
#include <cmath>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

constexpr sys_seconds Epoch = sys_days(std::chrono::year(1989) / 12 / 31);
constexpr std::int64_t SecondsPerHour = 3600;

std::chrono::year_month_day DateOf(const CivilTime& time) {
  return std::chrono::year(time.year) / time.month / time.day;
}

/// Takes low..high digits off the front; false where there are fewer or more.
bool TakeField(std::string_view& text, std::size_t low, std::size_t high, int& value) {
  const std::string_view digits = TakeDigits(text, high);
  value = 0;
  for (const char c : digits)
    value = value * 10 + (c - '0');
  return digits.size() >= low && (text.empty() || !IsDigit(text.front()));
}

bool TakeDate(std::string_view& text, CivilTime& time) {
  if (!TakeField(text, 4, 4, time.year) || text.empty()) return false;
  const char separator = text.front();
  if (separator != '/' && separator != '-') return false;
  if (!Take(text, separator) || !TakeField(text, 1, 2, time.month)) return false;
  if (!Take(text, separator) || !TakeField(text, 1, 2, time.day)) return false;
  return time.year >= 1 && DateOf(time).ok();
}

bool TakeFraction(std::string_view& text, double& fraction) {
  const std::string_view whole = text;
  Take(text, '.');
  const std::size_t digits = TakeDigits(text).size();
  fraction = LeadingNumber(whole.substr(0, 1 + digits));
  return digits > 0;
}

bool TakeTime(std::string_view& text, CivilTime& time, double& fraction) {
  if (!TakeField(text, 1, 2, time.hour) || !Take(text, ':') || !TakeField(text, 1, 2, time.minute)) return false;
  if (Take(text, ':')) {
    if (!TakeField(text, 1, 2, time.second)) return false;
    if (text.starts_with('.') && !TakeFraction(text, fraction)) return false;
  }
  return time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

void PutDigits(char* at, int digits, int value) {
  for (int i = digits - 1; i >= 0; --i, value /= 10)
    at[i] = static_cast<char>('0' + value % 10);
}

}  // namespace

std::int64_t SecondsSinceGarminEpoch(const CivilTime& time) {
  const sys_seconds day = sys_days(DateOf(time));
  return (day - Epoch).count() + time.hour * SecondsPerHour + time.minute * 60 + time.second;
}

CivilTime CivilFromGarminSeconds(std::int64_t seconds) {
  const sys_seconds moment = Epoch + std::chrono::seconds(seconds);
  const sys_days day = std::chrono::floor<days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

std::optional<std::uint32_t> KnownGarminTime(std::int64_t seconds) {
  if (seconds <= 0 || seconds >= UnknownGarminTime) return std::nullopt;
  return static_cast<std::uint32_t>(seconds);
}

CivilTime LocalTimeOfGarminTime(std::optional<std::uint32_t> garmin_time, int utc_offset_hours) {
  return CivilFromGarminSeconds(garmin_time.value_or(0) + utc_offset_hours * SecondsPerHour);
}

void AppendDateTime(std::string& out, const CivilTime& time) {
  if (time.year < 0 || time.year > 9999) {
    CivilTime in_range = time;
    in_range.year = 0;
    AppendPadded(out, time.year, 4);
    out.append(DateTimeText(in_range), 4);
    return;
  }
  char text[] = "yyyy/mm/dd hh:nn:ss";
  PutDigits(text, 4, time.year);
  PutDigits(text + 5, 2, time.month);
  PutDigits(text + 8, 2, time.day);
  PutDigits(text + 11, 2, time.hour);
  PutDigits(text + 14, 2, time.minute);
  PutDigits(text + 17, 2, time.second);
  out.append(text, sizeof text - 1);
}

std::string DateTimeText(const CivilTime& time) {
  std::string text;
  AppendDateTime(text, time);
  return text;
}

std::optional<CivilTime> ParseDateTime(std::string_view text, double* second_fraction) {
  text = TrimBlanks(text);
  CivilTime time{0, 0, 0, 0, 0, 0};
  double fraction = 0;
  if (!TakeDate(text, time)) return std::nullopt;
  if (!text.empty()) {
    if (text.front() != ' ') return std::nullopt;
    text = TrimBlanks(text);
    if (!TakeTime(text, time, fraction) || !text.empty()) return std::nullopt;
  }
  if (second_fraction != nullptr) *second_fraction = fraction;
  return time;
}

std::optional<std::uint32_t> GarminTimeOfText(std::string_view text, int utc_offset_hours) {
  double fraction = 0;
  const std::optional<CivilTime> time = ParseDateTime(text, &fraction);
  if (!time) return std::nullopt;
  const std::int64_t seconds = SecondsSinceGarminEpoch(*time) - utc_offset_hours * SecondsPerHour;
  return KnownGarminTime(seconds + static_cast<std::int64_t>(std::floor(fraction + 0.5)));
}

}  // namespace walrim
