// Finds frames in what comes over a line, and tells the whole ones from the damaged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "device/Frame.h"

namespace walrim {

/// Takes a line's bytes one by one. A frame ends where its stuffing says: at a DLE ETX whose DLE is not doubled,
/// whatever pairs of bytes its data hold. It is whole when its size and its checksum say the same. Bytes before a DLE
/// are skipped, and a DLE that is neither doubled nor followed by ETX starts the frame over.
class CheckedFrameReader {
 public:
  enum class Found { Nothing, WholeFrame, DamagedFrame };

  /// More bytes without the end of a frame are an error: no frame, with every byte doubled, has as many.
  static constexpr std::size_t MostPending = 1536;

  /// Takes the next byte. Throws std::out_of_range when MostPending bytes have come since a frame ended.
  [[nodiscard]] Found Take(std::uint8_t byte);

  /// The frame that was found last. A damaged one has the bytes that came of it, as far as there is room.
  [[nodiscard]] const Frame& Last() const { return last_; }
  /// Its bytes as they came, with all that was skipped before it; until the next Take.
  [[nodiscard]] std::span<const std::uint8_t> Raw() const { return raw_; }
  /// How many of the bytes of Raw were skipped.
  [[nodiscard]] std::size_t Skipped() const { return skipped_; }
  /// Whether bytes have come since a frame ended.
  [[nodiscard]] bool Pending() const { return !ended_ && !raw_.empty(); }

 private:
  enum class State { Outside, Id, Body, AfterDle };

  [[nodiscard]] Found TakeId(std::uint8_t byte);
  [[nodiscard]] Found TakeAfterDle(std::uint8_t byte);
  void Append(std::uint8_t byte);
  [[nodiscard]] Found Finish();

  State state_ = State::Outside;
  Frame last_;
  std::size_t length_ = 0;  ///< of the frame, without doubled bytes; may be beyond its room
  std::vector<std::uint8_t> raw_;
  std::size_t skipped_ = 0;
  bool ended_ = false;
};

}  // namespace walrim
