// A serial line bit by bit: what a UART reads of bytes that were sent at another speed.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace walrim {

/// The bytes that a line of read_baud takes from text sent without pauses at sent_baud: eight bits, no parity, one stop
/// bit. A byte whose stop bit is 0 is kept, as a line does that does not test for it; the next start bit is looked for
/// from there on.
inline std::vector<std::uint8_t> ReadAtAnotherSpeed(std::string_view text, int sent_baud, int read_baud) {
  std::vector<bool> line(8, true);
  for (const char c : text) {
    line.push_back(false);
    for (int bit = 0; bit < 8; ++bit)
      line.push_back((static_cast<unsigned char>(c) >> bit & 1) != 0);
    line.push_back(true);
  }
  line.insert(line.end(), 32, true);
  // Times are in bits of the line as it was sent.
  const double step = static_cast<double>(sent_baud) / read_baud;
  const auto level = [&](double at) {
    return static_cast<std::size_t>(at) >= line.size() || line[static_cast<std::size_t>(at)];
  };
  std::vector<std::uint8_t> bytes;
  const double tick = step / 16;
  for (double at = 0; at < static_cast<double>(line.size()); at += tick) {
    if (level(at)) continue;
    unsigned byte = 0;
    for (int bit = 0; bit < 8; ++bit) {
      if (level(at + (bit + 1.5) * step)) byte |= 1U << bit;
    }
    bytes.push_back(static_cast<std::uint8_t>(byte));
    at += 9.5 * step;
    // Behind a stop bit of 0 the line must rise before it can fall for the next start bit.
    while (!level(at) && at < static_cast<double>(line.size()))
      at += tick;
  }
  return bytes;
}

}  // namespace walrim
