// What an examination of a line has found.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "doctor/NmeaReader.h"
#include "platform/PortFacts.h"
#include "platform/SerialPort.h"

namespace walrim {

enum class Finding : std::uint8_t {
  NoPort,        ///< there is no such port
  Vanished,      ///< it went a moment after it came, or while it was examined
  NotPermitted,  ///< the user may not open it
  Held,          ///< somebody keeps it
  NotOpened,     ///< the system refuses it for another reason
  Silent,        ///< nothing comes
  Nmea,          ///< the receiver sends NMEA 0183
  Rtcm,          ///< corrections come over the line
  TextOut,       ///< the receiver sends its simple text
  Damaged,       ///< what comes makes no sense: garbage, half frames, wrong checksums
  Slow,          ///< answers are whole and late
  Healthy,
  Cancelled  ///< by the user, before anything was found
};

/// Figures of requests for the product data. Times are from a request's last byte.
struct LineFigures {
  int requests = 0;
  int answers = 0;                                      ///< requests that product data answered, whole
  int damaged_frames = 0;                               ///< with a wrong size or checksum, or cut off
  int stray_bytes = 0;                                  ///< that belong to no frame
  std::optional<std::chrono::milliseconds> ack;         ///< the median to the first byte of the ACK
  std::optional<std::chrono::milliseconds> round_trip;  ///< the median to the end of the product data
};

/// What was looked at, in the order in which it is.
enum class ExamStep : std::uint8_t { Port, Answer, Listening, OtherSpeeds, Figures, Holders };

struct LineReport {
  Finding finding = Finding::Cancelled;
  std::string port;         ///< as it was given
  PortResult opened;        ///< what opening it gave, its device and the group that may use it
  int baud = 9600;          ///< at which the finding was made
  bool answered = false;    ///< the first request
  std::string description;  ///< of the receiver that answered
  int product_id = 0;       ///< of the same
  LineFigures figures;
  SentenceFacts sentences;
  std::vector<PortHolder> holders;
  PortAdapter adapter;

  [[nodiscard]] bool Healthy() const { return finding == Finding::Healthy; }
};

}  // namespace walrim
