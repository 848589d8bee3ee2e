#include "qt/QtClock.h"

#include <QDateTime>

namespace walrim {

std::chrono::nanoseconds QtClock::Monotonic() const {
  return std::chrono::steady_clock::now().time_since_epoch();
}

std::int64_t QtClock::UtcSeconds() const {
  return GarminSecondsOfUnix(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
}

CivilTime QtClock::LocalTime() const {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate date = now.date();
  const QTime time = now.time();
  return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

}  // namespace walrim
