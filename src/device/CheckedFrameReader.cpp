#include "device/CheckedFrameReader.h"

#include <stdexcept>

namespace walrim {

CheckedFrameReader::Found CheckedFrameReader::Take(std::uint8_t byte) {
  if (ended_) {
    raw_.clear();
    skipped_ = 0;
    ended_ = false;
  }
  if (raw_.size() >= MostPending) throw std::out_of_range("no frame in what came");
  raw_.push_back(byte);
  switch (state_) {
    case State::Outside:
      if (byte == DLE)
        state_ = State::Id;
      else
        ++skipped_;
      return Found::Nothing;
    case State::Id:
      return TakeId(byte);
    case State::Body:
      if (byte == DLE)
        state_ = State::AfterDle;
      else
        Append(byte);
      return Found::Nothing;
    case State::AfterDle:
      return TakeAfterDle(byte);
  }
  return Found::Nothing;
}

/// No packet has the ids 10h and 03h: there the line was joined in the middle of a frame.
CheckedFrameReader::Found CheckedFrameReader::TakeId(std::uint8_t byte) {
  if (byte == DLE) {
    ++skipped_;
    return Found::Nothing;
  }
  last_ = {};
  last_.bytes[0] = DLE;
  length_ = 1;
  if (byte == ETX) return Finish();
  skipped_ = raw_.size() - 2;
  Append(byte);
  state_ = State::Body;
  return Found::Nothing;
}

CheckedFrameReader::Found CheckedFrameReader::TakeAfterDle(std::uint8_t byte) {
  if (byte == ETX) return Finish();
  if (byte != DLE) return TakeId(byte);
  Append(byte);
  state_ = State::Body;
  return Found::Nothing;
}

void CheckedFrameReader::Append(std::uint8_t byte) {
  if (length_ < Frame::LongestCapacity) last_.bytes[length_] = byte;
  ++length_;
}

CheckedFrameReader::Found CheckedFrameReader::Finish() {
  state_ = State::Outside;
  ended_ = true;
  const std::size_t size = last_.bytes[2];
  last_.damaged =
      length_ != size + 4 || FrameChecksum(std::span(last_.bytes).subspan(1, size + 2)) != last_.bytes[3 + size];
  last_.size = static_cast<std::int16_t>(size + 6);
  if (last_.damaged) return Found::DamagedFrame;
  Append(DLE);
  Append(ETX);
  return Found::WholeFrame;
}

}  // namespace walrim
