#include "receiver/LineFrame.h"

#include <algorithm>
#include <numeric>

namespace walrim {

namespace {

constexpr std::uint8_t Dle = 16;
constexpr std::uint8_t Etx = 3;

void AppendStuffed(std::vector<std::uint8_t>& bytes, std::uint8_t byte) {
  bytes.push_back(byte);
  if (byte == Dle) bytes.push_back(byte);
}

}  // namespace

std::vector<std::uint8_t> LineFrameBytes(const LinePacket& packet, std::uint8_t checksum_error) {
  const std::size_t size = std::min(packet.data.size(), MaxLinePacketData);
  std::vector<std::uint8_t> bytes{Dle, packet.id};
  unsigned sum = packet.id + static_cast<unsigned>(size);
  AppendStuffed(bytes, static_cast<std::uint8_t>(size));
  for (std::size_t i = 0; i < size; ++i) {
    sum += packet.data[i];
    AppendStuffed(bytes, packet.data[i]);
  }
  AppendStuffed(bytes, static_cast<std::uint8_t>(0U - sum + checksum_error));
  bytes.push_back(Dle);
  bytes.push_back(Etx);
  return bytes;
}

std::optional<ReceivedFrame> LineFrameReader::Take(std::uint8_t byte) {
  switch (state_) {
    case State::Outside:
      if (byte == Dle) state_ = State::Id;
      break;
    case State::Id:
      // DLE ETX here is the tail of a frame whose beginning was missed; of several DLE the last one counts.
      if (byte == Etx) {
        state_ = State::Outside;
      } else if (byte != Dle) {
        Begin(byte);
      }
      break;
    case State::Body:
      if (byte == Dle) {
        state_ = State::BodyDle;
      } else {
        Append(byte);
      }
      break;
    case State::BodyDle:
      if (byte == Etx) return Finish();
      if (byte == Dle) {
        state_ = State::Body;
        Append(byte);
      } else {
        Begin(byte);
      }
      break;
  }
  return std::nullopt;
}

void LineFrameReader::Begin(std::uint8_t id) {
  state_ = State::Body;
  id_ = id;
  body_size_ = 0;
}

void LineFrameReader::Append(std::uint8_t byte) {
  if (body_size_ < body_.size()) body_[body_size_] = byte;
  body_size_ = std::min(body_size_ + 1, body_.size() + 1);
}

ReceivedFrame LineFrameReader::Finish() {
  state_ = State::Outside;
  ReceivedFrame frame{{id_, {}}, false};
  if (body_size_ < 2 || body_size_ > body_.size() || body_size_ != body_[0] + 2U) return frame;
  const auto end = body_.begin() + static_cast<std::ptrdiff_t>(body_size_);
  const unsigned sum = std::accumulate(body_.begin(), end, static_cast<unsigned>(id_));
  frame.intact = sum % 256 == 0;
  if (frame.intact) frame.packet.data.assign(body_.begin() + 1, end - 1);
  return frame;
}

}  // namespace walrim
