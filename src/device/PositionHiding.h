// Traces that do not tell where their user was.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "device/Models.h"

namespace walrim {

/// Moves all positions of a trace by one offset, which puts the first of them to 0, 0: distances between them, and with
/// them most of what goes wrong, stay. Names, texts, heights and times stay too. The frames are to be given in their
/// order, from the trace's beginning: the product data among them tell the types of the records.
///
/// Nothing else that could be a position is left. Packets of unknown ids, and records of receivers of which no types
/// are known or that are too short, become zeros of the same size. Bytes that are no whole frame (damaged ones,
/// sentences) become zeros too, but for their framing, and are no whole frame then either: whoever reads them is to
/// meet the same damage.
class PositionHiding {
 public:
  /// The bytes of a frame, or what became of one, as they are to be told.
  [[nodiscard]] std::vector<std::uint8_t> Hide(std::span<const std::uint8_t> wire);

 private:
  struct Position {
    std::int32_t lat_semicircles = 0;
    std::int32_t lon_semicircles = 0;
  };

  [[nodiscard]] bool HideIn(int packet_id, std::span<std::uint8_t> data);
  [[nodiscard]] bool MoveSemicircles(std::span<std::uint8_t> data, std::size_t offset);
  [[nodiscard]] bool MoveRadians(std::span<std::uint8_t> data, std::size_t offset);
  [[nodiscard]] Position Moved(Position position);
  void TakeProduct(std::span<const std::uint8_t> data);

  std::optional<DeviceProtocols> protocols_;
  std::optional<Position> origin_;
};

}  // namespace walrim
