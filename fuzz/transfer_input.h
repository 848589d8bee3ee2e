// What the targets of downloads share: the parts of an input, and what a download has brought.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "support/Fakes.h"
#include "text/Utf8.h"

namespace walrim {

/// Receivers of all types.
inline constexpr std::array<std::string_view, 4> Descriptions{"GPS 12 Software", "GPS III Software",
                                                              "GPS 12CX Software", "eTrex Software"};

/// Takes an input apart; what is not there is 0 or empty.
class InputReader {
 public:
  explicit InputReader(std::span<const std::uint8_t> input) : input_(input) {}

  [[nodiscard]] bool AtEnd() const { return input_.empty(); }
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_[0];
    input_ = input_.subspan(1);
    return byte;
  }
  /// Bytes behind their number.
  Bytes Counted() {
    const std::size_t wanted = Byte();
    const std::size_t size = std::min(wanted, input_.size());
    const auto bytes = input_.first(size);
    input_ = input_.subspan(size);
    return {bytes.begin(), bytes.end()};
  }

 private:
  std::span<const std::uint8_t> input_;
};

/// Id of one of a kind's records.
inline int RecordId(DataKind kind, int choice) {
  switch (kind) {
    case DataKind::Waypoint:
      return 35;
    case DataKind::Route:
      return std::array{29, 30, 98}[static_cast<std::size_t>(choice % 3)];
    case DataKind::TrackLog:
      return std::array{34, 99}[static_cast<std::size_t>(choice % 2)];
  }
  return 0;
}

/// What is held of a kind, in the text of the standard file.
inline std::string TextOf(InternalData& data, DataKind kind) {
  static const NameTablesByType names;
  StandardWriter writer(data, names, {});
  std::string text;
  writer.AppendKind(text, kind, true);
  if (!IsValidUtf8(text)) std::abort();
  return text;
}

}  // namespace walrim
