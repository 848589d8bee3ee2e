// The settings text of a serial line, "9600,N,8,1".
#pragma once

#include <optional>
#include <string_view>

namespace walrim {

enum class LineParity { None, Even, Odd, Mark, Space };

struct LineSettings {
  int baud = 9600;
  LineParity parity = LineParity::None;
  int data_bits = 8;
  int stop_bits = 1;

  friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

/// Reads "BAUD,PARITY,DATA,STOP": a rate of 50 to 4000000, one of N E O M S in either case, 5 to 8, 1 or 2.
/// Nothing for any other text.
[[nodiscard]] std::optional<LineSettings> ParseLineSettings(std::string_view text);

}  // namespace walrim
