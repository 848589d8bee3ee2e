// Sentences that receivers send unasked when their interface is not set to the protocol of the house: NMEA 0183, and
// the simple text of 57 characters.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/Dates.h"

namespace walrim {

/// What sentences have told so far.
struct SentenceFacts {
  int nmea_sentences = 0;  ///< with a right checksum
  int text_sentences = 0;  ///< of the simple text
  std::optional<double> lat_deg;
  std::optional<double> lon_deg;
  std::optional<CivilTime> utc;   ///< with date and time of day
  std::optional<int> satellites;  ///< in use
  std::string product;            ///< as PGRMT names it; empty where it has not come
};

/// Takes bytes as they come, in lines that end with CR LF or LF. What is no sentence is passed over; nothing throws.
class NmeaReader {
 public:
  void Take(std::uint8_t byte);
  [[nodiscard]] const SentenceFacts& Facts() const { return facts_; }

 private:
  void TakeLine();
  void TakeSentence(std::string_view body);
  void TakeText(std::string_view line);

  std::string line_;
  SentenceFacts facts_;
};

}  // namespace walrim
