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
  std::optional<int> refuse;          ///< NAK for the Nth packet that calls for an answer, however often it comes
  std::optional<int> short_ack;       ///< ACKs have one data byte
  std::optional<int> empty_ack;       ///< ACKs have no data byte
  std::optional<int> late_ack;        ///< ms by which each ACK comes later
  std::optional<int> other_ack;       ///< before the Nth ACK, or every one with 0, one that names another packet
  std::optional<int> two_acks;        ///< the end of an upload is acknowledged twice, the second time N ms later
  std::optional<int> ack_once;        ///< a NAK does not bring the last ACK again
  std::optional<int> repeat;          ///< ms after which a packet comes again until it is acknowledged
  std::optional<int> pvt;             ///< tells its fix N times a second, unasked
  std::optional<int> product_frames;  ///< so many frames behind the product data, unasked
  std::optional<int> product_texts;   ///< the product data hold so many texts
  std::optional<int> links_between;   ///< routes have links between their points only, none behind the last one
  std::optional<int> two_segments;    ///< the first track log has two segments, under one header
};

/// Adds a fault from its text, KIND or KIND=N. Gives what is wrong with the text, or an empty text; then faults are
/// as they were. A kind that is given again replaces what was given before.
[[nodiscard]] std::string AddFault(ReceiverFaults& faults, std::string_view text);

/// The kinds as AddFault takes them, for help texts: "silent", "silent-after=N", "garbage[=N]", ...
[[nodiscard]] std::vector<std::string> FaultForms();

}  // namespace walrim
