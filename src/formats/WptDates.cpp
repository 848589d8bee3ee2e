#include "formats/WptDates.h"

#include <array>
#include <cstdint>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

constexpr std::string_view StampWord = "CRTD";
constexpr std::size_t StampLength = 20;
constexpr std::string_view StampMonths = "JANFEBMARAPLMAYJUNJLYAUGSEPOCTNOVDEC";
constexpr std::array<std::string_view, 12> MonthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

void AppendTwo(std::string& out, int value) {
  out += static_cast<char>('0' + value / 10 % 10);
  out += static_cast<char>('0' + value % 10);
}

void AppendDate(std::string& out, const CivilTime& moment) {
  AppendTwo(out, moment.month);
  out += '/';
  AppendTwo(out, moment.day);
  out += '/';
  AppendPadded(out, moment.year, 4);
}

void AppendTime(std::string& out, const CivilTime& moment) {
  AppendTwo(out, moment.hour);
  out += ':';
  AppendTwo(out, moment.minute);
  out += ':';
  AppendTwo(out, moment.second);
}

/// 1..12, or 0 for no month.
int MonthOfStamp(std::string_view name) {
  const std::string upper = UpperCase(name);
  if (upper == "APR") return 4;
  if (upper == "JUL") return 7;
  const std::size_t at = StampMonths.find(upper);
  return at == std::string_view::npos || at % 3 != 0 ? 0 : static_cast<int>(at / 3) + 1;
}

std::optional<int> TwoDigits(std::string_view text, std::size_t at) {
  if (!IsDigit(text[at]) || !IsDigit(text[at + 1])) return std::nullopt;
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

std::optional<CivilTime> MomentOfStamp(std::string_view stamp) {
  const auto hour = TwoDigits(stamp, 5);
  const auto minute = TwoDigits(stamp, 8);
  const auto day = TwoDigits(stamp, 11);
  const int month = MonthOfStamp(stamp.substr(14, 3));
  const auto year = TwoDigits(stamp, 18);
  if (!hour || !minute || !day || !year || month == 0) return std::nullopt;
  const CivilTime moment{*year + (*year < 50 ? 2000 : 1900), month, *day, *hour, *minute, 0};
  return ParseDateTime(DateTimeText(moment));
}

}  // namespace

void AppendWptMoment(std::string& out, const CivilTime& moment, char separator) {
  AppendDate(out, moment);
  out += separator;
  AppendTime(out, moment);
}

std::string StandardMoment(std::string_view date, std::string_view time) {
  std::string_view rest = TrimBlanks(date);
  const std::string_view month = TakeDigits(rest, 2);
  const bool month_first = !month.empty() && Take(rest, '/');
  const std::string_view day = TakeDigits(rest, 2);
  std::string text;
  text.reserve(date.size() + 1 + time.size());
  if (month_first && !day.empty() && Take(rest, '/')) {
    text.append(rest).append("/").append(month).append("/").append(day);
  } else {
    text = date;
  }
  return text.append(" ").append(time);
}

std::optional<CivilTime> ParseWptMoment(std::string_view date, std::string_view time) {
  return ParseDateTime(StandardMoment(date, time));
}

bool IsEpochSomewhere(std::int64_t local) {
  constexpr std::int64_t Hour = 3600;
  return local % Hour == 0 && local >= -24 * Hour && local <= 24 * Hour;
}

CivilTime ShiftedByHours(const CivilTime& moment, int hours) {
  return CivilFromGarminSeconds(SecondsSinceGarminEpoch(moment) + std::int64_t{hours} * 3600);
}

std::string CreationStamp(const CivilTime& now) {
  std::string text(StampWord);
  text += ' ';
  AppendTwo(text, now.hour);
  text += ':';
  AppendTwo(text, now.minute);
  text += ' ';
  AppendTwo(text, now.day);
  text.append("-").append(MonthNames.at(static_cast<std::size_t>(now.month - 1))).append("-");
  AppendTwo(text, now.year % 100);
  return text;
}

std::optional<FoundStamp> FindCreationStamp(std::string_view comment) {
  const std::size_t at = comment.find(StampWord);
  if (at == std::string_view::npos || comment.size() - at < StampLength) return std::nullopt;
  const auto moment = MomentOfStamp(comment.substr(at, StampLength));
  if (!moment) return std::nullopt;
  return FoundStamp{at, *moment};
}

std::string WithShiftedStamp(std::string_view comment, int hours) {
  std::string text(comment);
  if (const auto stamp = FindCreationStamp(comment)) {
    text.replace(stamp->at, StampLength, UpperCase(CreationStamp(ShiftedByHours(stamp->moment, hours))));
  }
  return text;
}

}  // namespace walrim
