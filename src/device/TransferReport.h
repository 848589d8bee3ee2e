// What an identification and a transfer have to tell.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace walrim {

/// What identification brought. All empty when the port could not be used or the answer was none.
struct ProductInfo {
  int product_id = 0;  ///< signed 16-bit; -1 a silent receiver
  std::string description;
};

/// What a transfer does: move the records, or only ask how many there are.
enum class TransferMode : std::uint8_t { Transfer, CountOnly };

// Results of transfers; 0 and above are counts.
inline constexpr std::int32_t TransferGivenUp = -1;
inline constexpr std::int32_t TransferTimedOut = -9;

/// What a transfer has to tell beyond its result code. Emptied when an identification or a transfer begins.
struct TransferReport {
  int damaged_records =
      0;  ///< records whose frame had a wrong checksum or length, or whose position is not on the globe
  int announced_records = 0;      ///< of a download that moved records
  int missing_records = 0;        ///< records that were announced and never came
  int refused_records = 0;        ///< sent records that were not acknowledged
  bool end_refused = false;       ///< the end of sent records was not acknowledged
  bool data_loss = false;         ///< the data-loss warning was shown
  bool port_failed = false;       ///< result 0 because the port could not be opened; a message was shown
  bool no_answer = false;         ///< result 0 because the receiver was silent at the first packet
  bool not_acknowledged = false;  ///< result 0 because it answered the first packet without an ACK
  bool refused = false;           ///< given up because the receiver refused a packet of the checked link to the end
  bool cancelled = false;         ///< Cancel came before the receiver had answered the last packet
  bool bad_answer = false;        ///< given up because an announcement made no sense
  std::string unsendable;         ///< why an upload did not begin: a record that cannot be encoded; empty otherwise
  int cut_texts = 0;  ///< names, comments and route names that the fields of the receiver's types have no room for
  std::vector<std::string> cut_records;       ///< sent records that were too long and lost the end of their texts
  std::vector<std::string> replaced_records;  ///< sent records with a symbol or colour that the receiver lacks
};

}  // namespace walrim
