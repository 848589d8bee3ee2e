#include "text/Dates.h"

#include <array>
#include <cmath>

#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::int64_t SecondsPerDay = 86400;
constexpr double LargestGarminTime = 4294967295.0;

/// Days from 0000/03/01 to a date; years count from March, so that the leap day is a year's last.
constexpr std::int64_t DayNumber(std::int64_t year, int month, int day) {
  if (month <= 2) --year;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
}

constexpr std::int64_t EpochDay = DayNumber(1989, 12, 31);

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : days[static_cast<std::size_t>(month - 1)];
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Takes low..high digits off the front; false where there are fewer.
bool TakeDigits(std::string_view& text, std::size_t low, std::size_t high, int& value) {
  std::size_t count = 0;
  value = 0;
  while (count < high && count < text.size() && IsDigit(text[count]))
    value = value * 10 + (text[count++] - '0');
  text.remove_prefix(count);
  return count >= low && (text.empty() || !IsDigit(text.front()));
}

bool Take(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

bool TakeDate(std::string_view& text, CivilTime& time) {
  if (!TakeDigits(text, 4, 4, time.year) || text.empty()) return false;
  const char separator = text.front();
  if (separator != '/' && separator != '-') return false;
  if (!Take(text, separator) || !TakeDigits(text, 1, 2, time.month)) return false;
  if (!Take(text, separator) || !TakeDigits(text, 1, 2, time.day)) return false;
  return time.year >= 1 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= DaysInMonth(time.year, time.month);
}

bool TakeFraction(std::string_view& text, double& fraction) {
  std::size_t count = 1;
  while (count < text.size() && IsDigit(text[count]))
    ++count;
  fraction = LeadingNumber(text.substr(0, count));
  text.remove_prefix(count);
  return count > 1;
}

bool TakeTime(std::string_view& text, CivilTime& time, double& fraction) {
  if (!TakeDigits(text, 1, 2, time.hour) || !Take(text, ':') || !TakeDigits(text, 1, 2, time.minute)) return false;
  if (Take(text, ':')) {
    if (!TakeDigits(text, 1, 2, time.second)) return false;
    if (!text.empty() && text.front() == '.' && !TakeFraction(text, fraction)) return false;
  }
  return time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

void PutDigits(char* at, int digits, int value) {
  for (int i = digits - 1; i >= 0; --i, value /= 10)
    at[i] = static_cast<char>('0' + value % 10);
}

}  // namespace

std::int64_t SecondsSinceGarminEpoch(const CivilTime& time) {
  const std::int64_t days = DayNumber(time.year, time.month, time.day) - EpochDay;
  return days * SecondsPerDay + time.hour * 3600 + time.minute * 60 + time.second;
}

CivilTime CivilFromGarminSeconds(std::int64_t seconds) {
  std::int64_t days = seconds / SecondsPerDay;
  std::int64_t rest = seconds % SecondsPerDay;
  if (rest < 0) {
    rest += SecondsPerDay;
    --days;
  }
  const std::int64_t number = days + EpochDay;
  const std::int64_t era = (number >= 0 ? number : number - 146096) / 146097;
  const std::int64_t day_of_era = number - era * 146097;
  const std::int64_t year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t march_month = (5 * day_of_year + 2) / 153;

  CivilTime time;
  time.day = static_cast<int>(day_of_year - (153 * march_month + 2) / 5 + 1);
  time.month = static_cast<int>(march_month < 10 ? march_month + 3 : march_month - 9);
  time.year = static_cast<int>(year_of_era + era * 400 + (time.month <= 2 ? 1 : 0));
  time.hour = static_cast<int>(rest / 3600);
  time.minute = static_cast<int>(rest / 60 % 60);
  time.second = static_cast<int>(rest % 60);
  return time;
}

CivilTime LocalTimeOfGarminTime(double garmin_time, int utc_offset_hours) {
  const bool known = garmin_time >= 0 && garmin_time < UnknownGarminTime;
  const std::int64_t seconds = known ? static_cast<std::int64_t>(garmin_time) : 0;
  return CivilFromGarminSeconds(seconds + std::int64_t{utc_offset_hours} * 3600);
}

std::string DateTimeText(const CivilTime& time) {
  if (time.year < 0 || time.year > 9999) {
    CivilTime in_range = time;
    in_range.year = 0;
    return PadNumber(time.year, 4) + DateTimeText(in_range).substr(4);
  }
  std::string text = "yyyy/mm/dd hh:nn:ss";
  PutDigits(text.data(), 4, time.year);
  PutDigits(text.data() + 5, 2, time.month);
  PutDigits(text.data() + 8, 2, time.day);
  PutDigits(text.data() + 11, 2, time.hour);
  PutDigits(text.data() + 14, 2, time.minute);
  PutDigits(text.data() + 17, 2, time.second);
  return text;
}

std::optional<CivilTime> ParseDateTime(std::string_view text, double* second_fraction) {
  text = TrimBlanks(text);
  CivilTime time;
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

double GarminTimeOfText(std::string_view text, int utc_offset_hours) {
  double fraction = 0;
  const std::optional<CivilTime> time = ParseDateTime(text, &fraction);
  if (!time) return 0;
  const std::int64_t seconds = SecondsSinceGarminEpoch(*time) - std::int64_t{utc_offset_hours} * 3600;
  const double rounded = static_cast<double>(seconds) + std::floor(fraction + 0.5);
  return rounded < 0 ? 0 : rounded > LargestGarminTime ? LargestGarminTime : rounded;
}

}  // namespace walrim
