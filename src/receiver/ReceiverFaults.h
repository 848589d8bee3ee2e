// What a receiver made of software does wrong on request.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// Each fault is on when it holds a value. Frames, records and packets are counted from 1.
struct ReceiverFaults {
  std::optional<int> silent;          ///< never answers
  std::optional<int> silent_after;    ///< falls silent after N frames sent
  std::optional<int> early_complete;  ///< ends a transfer after N of its records
  std::optional<int> unknown_first;   ///< the first record of a transfer carries an id that means nothing
  std::optional<int> short_count;     ///< announces N records fewer than it sends, never fewer than 0
  std::optional<int> gap;             ///< ms between an ACK and the packet that follows it
  std::optional<int> dribble;         ///< ms between bytes
  std::optional<int> garbage;         ///< noise before the Nth frame sent, before every one with 0
  std::optional<int> overlong;        ///< a frame that is too long in place of the Nth record of a transfer
  std::optional<int> burst;           ///< the first record of a transfer comes as N frames at once
  std::optional<int> bad_checksum;    ///< the Nth record of a transfer comes with a wrong checksum the first time
  std::optional<int> bad_ack;         ///< the Nth ACK sent comes with a wrong checksum the first time
  std::optional<int> unplug_after;    ///< the line closes after N frames sent
  std::optional<int> nak;             ///< NAK for the Nth packet that calls for an answer, for every one with 0
};

/// Adds a fault from its text, KIND or KIND=N. Gives what is wrong with the text, or an empty text; then faults are
/// as they were. A kind that is given again replaces what was given before.
[[nodiscard]] std::string AddFault(ReceiverFaults& faults, std::string_view text);

/// The kinds as AddFault takes them, for help texts: "silent", "silent-after=N", "garbage[=N]", ...
[[nodiscard]] std::vector<std::string> FaultForms();

}  // namespace walrim
