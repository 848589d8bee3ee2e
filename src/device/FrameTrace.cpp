#include "device/FrameTrace.h"

#include <cstdio>

namespace walrim {

namespace {

std::string Seconds(std::chrono::nanoseconds time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6f", std::chrono::duration<double>(time).count());
  return text;
}

std::string Byte(std::span<const std::uint8_t> bytes, std::size_t index) {
  return index < bytes.size() ? std::to_string(bytes[index]) : "-";
}

}  // namespace

std::string TraceLine(const TracedFrame& frame) {
  std::string line = Seconds(frame.time);
  line += frame.direction == FrameDirection::Sent ? "\tTX\t" : "\tRX\t";
  const auto framing = frame.mark == SkippedMark ? frame.bytes.first(0) : frame.bytes;
  line += Byte(framing, 1) + '\t' + Byte(framing, 2) + '\t';
  constexpr char Digits[] = "0123456789ABCDEF";
  for (std::size_t i = 0; i < frame.bytes.size(); ++i) {
    if (i > 0) line += ' ';
    line += Digits[frame.bytes[i] >> 4];
    line += Digits[frame.bytes[i] & 15];
  }
  if (!frame.mark.empty()) {
    line += "\t! ";
    line += frame.mark;
  }
  return line;
}

std::string TraceNoteLine(std::chrono::nanoseconds time, std::string_view text) {
  std::string line = Seconds(time) + "\t--\t";
  line += text;
  return line;
}

}  // namespace walrim
