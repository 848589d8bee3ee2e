// The receivers that the software one can be.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "receiver/LineFrame.h"

namespace walrim {

/// The layout of a model's waypoints on the wire.
enum class WaypointLayout { D103, D104, D107, D108 };

struct ReceiverModel {
  std::string_view name;
  std::int16_t product_id;
  std::int16_t software_version;  ///< hundredths
  std::string_view description;   ///< begins with the name and a blank
  std::string_view detail;
  WaypointLayout waypoint_layout;
  /// A201 and A301 with D202, D210, D301 and D310; else A200 and A300 with D201 and D300.
  bool has_links_and_track_headers;
  /// What it announces behind its product data, as "A100 D108 ..."; empty: it announces nothing.
  std::string_view protocols;
};

/// All models, in the order of their names in help texts and lists.
[[nodiscard]] std::span<const ReceiverModel> ReceiverModels();

/// The model of this name, written exactly so; nothing for another.
[[nodiscard]] const ReceiverModel* FindReceiverModel(std::string_view name);

/// The answer to the product request, with one, two or three texts.
[[nodiscard]] LinePacket ProductDataPacket(const ReceiverModel& model, int texts = 2);

/// What some receivers send behind their product data, from 1: texts (248), and as every fourth a packet (247) that
/// means nothing.
[[nodiscard]] LinePacket PacketBehindProductData(int number);

/// The list of protocols: for each of the words, such as "A100", its letter and its number in two bytes. A word that
/// is none of these is left out, as are words past 85.
[[nodiscard]] LinePacket ProtocolListPacket(std::string_view protocols);

}  // namespace walrim
