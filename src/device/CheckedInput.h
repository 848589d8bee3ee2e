// The receiving side of the checked link: frames off the line, one by one, for as long as it is worth waiting for them.
#pragma once

#include <chrono>
#include <cstdint>

#include "device/CheckedFrameReader.h"
#include "device/PacketLink.h"

namespace walrim {

/// Counts a frame of a burst. Throws std::out_of_range when it is one more than a burst can have.
void CountInBurst(int& frames);

/// The frames of one exchange.
class PacketLink::CheckedInput {
 public:
  using Found = CheckedFrameReader::Found;

  explicit CheckedInput(PacketLink& link) : link_(link) {}

  /// From here on a cancelled transfer waits for as long as a silence is waited out; without it, not at all.
  void Begin() { started_at_ = link_.clock_.Monotonic(); }
  /// A packet of so many bytes on the wire goes out now; what comes from here on may answer it.
  void NoteSending(std::size_t wire_bytes);
  /// From the packet to the first byte of the frame that was found last.
  [[nodiscard]] std::chrono::nanoseconds Waited() const { return frame_began_ - sent_at_; }

  /// The next frame, or Nothing when no byte came for as long as patience; half a frame is waited for longer. Throws
  /// std::out_of_range where no frame is found in what comes.
  [[nodiscard]] Found NextFrame(std::chrono::nanoseconds patience);
  /// The frame that was found last.
  [[nodiscard]] const Frame& Last() const { return reader_.Last(); }
  /// Whether half a frame has come.
  [[nodiscard]] bool Pending() const { return reader_.Pending(); }
  /// Whether there was noise in front of the last frame.
  [[nodiscard]] bool NoiseBefore() const { return reader_.Skipped() > 0; }
  /// Gives up half a frame.
  void Forget() { reader_ = {}; }
  void TraceCutShort();

  /// Acknowledges a frame that came unasked; false for any other.
  [[nodiscard]] bool PassOver(Found found);
  /// Whether the last frame cannot be the answer: it began on the line before the packet had left.
  [[nodiscard]] bool BeganTooEarly() const;
  /// How long a frame may still be on its way: as long as the receiver took for its slowest answer.
  [[nodiscard]] std::chrono::nanoseconds Patience() const;
  /// Whether nothing more is waited for. Bytes that keep coming do not keep a cancelled transfer waiting.
  [[nodiscard]] bool WaitIsOver() const;

  /// Drops what still comes of a burst of which so many frames have been taken, and counts it. Throws
  /// std::out_of_range when they are more than a burst can have.
  void FinishBurst(int& frames);
  /// See PacketLink::AcknowledgeInput.
  void AcknowledgeRest();

 private:
  [[nodiscard]] Found TakeInput();
  [[nodiscard]] Found TakeByte(std::uint8_t byte);
  void TraceFound(Found found);

  PacketLink& link_;
  CheckedFrameReader reader_;
  std::chrono::nanoseconds started_at_{};
  std::chrono::nanoseconds sent_at_{};
  std::chrono::nanoseconds sent_line_time_{};
  std::chrono::nanoseconds slowest_answer_{};
  std::chrono::nanoseconds frame_began_{};
  std::chrono::nanoseconds frame_ended_{};
};

}  // namespace walrim
