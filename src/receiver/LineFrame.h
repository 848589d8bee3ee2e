// Frames as they stand on the receiver's end of the line:
//   frame := DLE id size data* checksum DLE ETX
// size, data and checksum are doubled where they are DLE; id + size + data + checksum is 0 modulo 256.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace walrim {

/// What one frame carries. A frame has room for 255 data bytes.
struct LinePacket {
  std::uint8_t id = 0;
  std::vector<std::uint8_t> data;

  friend bool operator==(const LinePacket&, const LinePacket&) = default;
};

inline constexpr std::size_t MaxLinePacketData = 255;

/// The bytes of a packet on the line. checksum_error is added to the checksum, so that any value but 0 spoils it.
/// Data past MaxLinePacketData bytes are left out.
[[nodiscard]] std::vector<std::uint8_t> LineFrameBytes(const LinePacket& packet, std::uint8_t checksum_error = 0);

/// A frame that came: intact when its size fits what came and its checksum holds.
struct ReceivedFrame {
  LinePacket packet;  ///< of a frame that is not intact the id alone
  bool intact = false;
};

/// Finds frames in a stream of bytes, one byte after the other. Bytes outside a frame are skipped; a DLE inside a
/// frame that is neither doubled nor followed by ETX starts the frame over.
class LineFrameReader {
 public:
  /// Takes the next byte; gives the frame that it ends.
  [[nodiscard]] std::optional<ReceivedFrame> Take(std::uint8_t byte);

 private:
  enum class State { Outside, Id, Body, BodyDle };

  void Begin(std::uint8_t id);
  void Append(std::uint8_t byte);
  [[nodiscard]] ReceivedFrame Finish();

  State state_ = State::Outside;
  std::uint8_t id_ = 0;
  std::array<std::uint8_t, MaxLinePacketData + 2> body_{};  // size, data, checksum
  std::size_t body_size_ = 0;                               // one more than body_ holds: too long
};

}  // namespace walrim
