// A receiver whose interface is set to something else than the protocol: it talks, or keeps silent, whatever it is
// asked.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "receiver/LineEnd.h"

namespace walrim {

enum class TalkerMode : std::uint8_t {
  Nmea,   ///< NMEA 0183 sentences every two seconds
  Text,   ///< the simple text every second
  Noise,  ///< bytes that mean nothing, all the time
  Silent
};

struct TalkerSetting {
  TalkerMode mode = TalkerMode::Silent;
  int baud = 9600;  ///< the line's pace: ten bits a byte
};

/// The setting of a text: "nmea" (at 4800 baud), "nmea:BAUD" with 300 to 115200, "text", "noise", "silent"; nothing
/// for another one.
[[nodiscard]] std::optional<TalkerSetting> TalkerSettingOf(std::string_view text);

class UnaskedTalker : public LineEnd {
 public:
  /// utc_s are the seconds since 1989/12/31 00:00:00 UTC at time 0 of the clock.
  UnaskedTalker(TalkerSetting setting, std::int64_t utc_s) : setting_(setting), utc_s_(utc_s) {}

  void Receive(std::span<const std::uint8_t> /*bytes*/, std::chrono::nanoseconds /*now*/) override {}
  [[nodiscard]] std::optional<std::chrono::nanoseconds> NextDue() const override;
  [[nodiscard]] std::vector<std::uint8_t> Send(std::chrono::nanoseconds now) override;
  [[nodiscard]] bool LineClosed() const override { return false; }

 private:
  struct DueByte {
    std::chrono::nanoseconds due;
    std::uint8_t byte;
  };

  void Talk(std::chrono::nanoseconds now);
  [[nodiscard]] std::string NextText(std::chrono::nanoseconds now);

  TalkerSetting setting_;
  std::int64_t utc_s_;
  std::uint32_t noise_ = 1;
  std::optional<std::chrono::nanoseconds> next_at_;
  std::deque<DueByte> outgoing_;
};

/// Sentences of the demonstration receiver's place (RMC, GGA, GLL, PGRMT) at a time, in seconds since 1989/12/31
/// 00:00:00 UTC; with CR LF behind each.
[[nodiscard]] std::string NmeaSentences(std::int64_t utc_s);
/// The simple text of the same, 55 characters and CR LF.
[[nodiscard]] std::string SimpleText(std::int64_t utc_s);

}  // namespace walrim
