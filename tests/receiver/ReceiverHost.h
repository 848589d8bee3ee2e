// The other end of the line in the receiver's tests: frames written and read by its own few lines, time moved by hand.
#pragma once

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "receiver/SoftReceiver.h"

namespace walrim {

using Bytes = std::vector<std::uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

inline Bytes BytesOf(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

/// A frame of the host's making.
inline Bytes HostFrame(std::uint8_t id, const Bytes& data) {
  unsigned sum = id + static_cast<unsigned>(data.size());
  for (const std::uint8_t byte : data)
    sum += byte;
  Bytes body{static_cast<std::uint8_t>(data.size())};
  body.insert(body.end(), data.begin(), data.end());
  body.push_back(static_cast<std::uint8_t>((256 - sum % 256) % 256));
  Bytes frame{16, id};
  for (const std::uint8_t byte : body) {
    frame.push_back(byte);
    if (byte == 16) frame.push_back(16);
  }
  return frame + Bytes{16, 3};
}

inline const Bytes ProductRequestFrame{0x10, 0xFE, 0x02, 0x00, 0x00, 0x00, 0x10, 0x03};

/// A frame as the host finds it: what stands between its id and its DLE ETX, un-stuffed.
struct SeenFrame {
  std::uint8_t id = 0;
  Bytes data;
  bool sound = false;  ///< size and checksum hold
  Bytes noise;         ///< bytes that came before it

  friend bool operator==(const SeenFrame&, const SeenFrame&) = default;
};

inline SeenFrame Sound(std::uint8_t id, Bytes data) {
  return {id, std::move(data), true, {}};
}

/// Cuts bytes into frames; bytes that make up no whole frame at the end are dropped.
inline std::vector<SeenFrame> FramesIn(const Bytes& bytes) {
  std::vector<SeenFrame> frames;
  std::size_t i = 0;
  SeenFrame frame;
  while (i < bytes.size()) {
    if (bytes[i] != 16) {
      frame.noise.push_back(bytes[i++]);
      continue;
    }
    if (i + 1 >= bytes.size()) break;
    frame.id = bytes[i + 1];
    Bytes body;
    for (i += 2; i + 1 < bytes.size() && !(bytes[i] == 16 && bytes[i + 1] == 3); ++i) {
      if (bytes[i] == 16) ++i;
      body.push_back(bytes[i]);
    }
    if (i + 1 >= bytes.size()) break;
    i += 2;
    unsigned sum = frame.id;
    for (const std::uint8_t byte : body)
      sum += byte;
    frame.sound = body.size() >= 2 && body.size() == body[0] + 2U && sum % 256 == 0;
    if (body.size() >= 2) frame.data = Bytes(body.begin() + 1, body.end() - 1);
    frames.push_back(frame);
    frame = {};
  }
  return frames;
}

/// A program at the other end of a receiver's line.
class ReceiverHost {
 public:
  explicit ReceiverHost(SoftReceiver& receiver) : receiver_(receiver) {}

  std::chrono::nanoseconds now{std::chrono::seconds(1000)};

  /// Sends bytes and takes all that comes back, however long it takes.
  Bytes ExchangeBytes(const Bytes& bytes) {
    receiver_.Receive(bytes, now);
    now = std::max(now, receiver_.InputFreeAt());
    Bytes came;
    while (const auto due = receiver_.NextDue()) {
      now = std::max(now, *due);
      came = came + receiver_.Send(now);
    }
    return came;
  }
  /// Takes all that comes within a time, for receivers that never fall silent.
  Bytes ListenBytes(std::chrono::nanoseconds time) {
    const std::chrono::nanoseconds end = now + time;
    Bytes came = receiver_.Send(now);
    for (auto due = receiver_.NextDue(); due && *due <= end; due = receiver_.NextDue()) {
      now = std::max(now, *due);
      came = came + receiver_.Send(now);
    }
    now = end;
    return came;
  }
  std::vector<SeenFrame> Listen(std::chrono::nanoseconds time) { return FramesIn(ListenBytes(time)); }
  /// Sends a frame and takes all that comes within a time.
  std::vector<SeenFrame> Tell(std::uint8_t id, const Bytes& data, std::chrono::nanoseconds time) {
    receiver_.Receive(HostFrame(id, data), now);
    return Listen(time);
  }
  std::vector<SeenFrame> Exchange(std::uint8_t id, const Bytes& data) {
    return FramesIn(ExchangeBytes(HostFrame(id, data)));
  }
  std::vector<SeenFrame> Command(std::uint8_t command) { return Exchange(10, {command, 0}); }
  std::vector<SeenFrame> Ack(std::uint8_t id) { return Exchange(6, {id, 0}); }
  std::vector<SeenFrame> Nak(std::uint8_t id) { return Exchange(21, {id, 0}); }

  /// All that a transfer command brings, each packet acknowledged; the ACK of the command is left out.
  std::vector<SeenFrame> Download(std::uint8_t command) {
    std::vector<SeenFrame> all;
    std::vector<SeenFrame> answer = Command(command);
    if (!answer.empty()) answer.erase(answer.begin());
    while (!answer.empty() && all.size() < 100000) {
      all.insert(all.end(), answer.begin(), answer.end());
      answer = Ack(answer.back().id);
    }
    return all;
  }

 private:
  SoftReceiver& receiver_;
};

}  // namespace walrim
