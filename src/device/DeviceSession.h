// What the device module keeps for a run.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/DeviceProtocols.h"
#include "device/LinkTables.h"

namespace walrim {

/// What identification brought. All empty when the port could not be used or the answer was none.
struct ProductInfo {
  int ProductId = 0;          ///< signed 16-bit; -1 a silent receiver
  float SoftwareVersion = 0;  ///< the receiver's number divided by 100
  std::string Description;
};

/// What a transfer has to tell beyond its result code. Emptied when a transfer begins.
struct TransferReport {
  int damaged_records =
      0;  ///< records whose frame had a wrong checksum or length, or whose position is not on the globe
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
  std::vector<std::string> cut_records;       ///< sent records that were too long and lost the end of their texts
  std::vector<std::string> replaced_records;  ///< sent records with a symbol or colour that the receiver lacks
};

/// The link of the transfers behind an identification, as the user wants it.
enum class LinkChoice {
  Automatic,  ///< the checked one where the answer to the identification keeps to the published framing
  Checked,
  Plain
};

/// One run's state of the device module; owned by Garmin.
struct DeviceSession {
  LinkPids link_pids;
  DeviceCommands device_commands;
  DeviceProtocols protocols = ProtocolsBeforeIdentification();
  bool TransferAborted = false;   ///< the cancel and failure flag of all transfers
  bool cancel_requested = false;  ///< by the user: no silence is waited out any more
  std::int32_t RecordsAnnounced = 0;
  LinkChoice link_choice = LinkChoice::Automatic;
  bool checked_link = false;   ///< in use: frames are tested, damaged ones sent again, and no burst is waited for
  float pacing_factor = 1.0F;  ///< stretches the settle time of received bursts; 0 is taken as 1
  TransferReport report;
  std::int64_t input_seen = 0;  ///< grows over the whole run whenever something comes: whoever waits sees progress
};

}  // namespace walrim
