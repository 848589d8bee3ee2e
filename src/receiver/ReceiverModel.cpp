#include "receiver/ReceiverModel.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "receiver/WireBytes.h"

namespace walrim {

namespace {

constexpr std::uint8_t ProductData = 255;
constexpr std::uint8_t ExtraTexts = 248;
constexpr std::uint8_t MeaninglessData = 247;
constexpr std::uint8_t ProtocolList = 253;
constexpr std::size_t ProtocolEntrySize = 3;

constexpr std::string_view Protocols12CX = "P000 L001 A010 A100 D107 A200 D201 D107 A300 D300 A600 D600 A700 D700";
constexpr std::string_view Protocols3Plus = "P000 L001 A010 A100 D104 A200 D201 D104 A300 D300 A600 D600 A700 D700";
constexpr std::string_view ProtocolsWithHeaders =
    "P000 L001 A010 A100 D108 A201 D202 D108 D210 A301 D310 D301 A600 D600 A700 D700";

// Those that announce nothing have the id that the published list gives their layouts.
constexpr ReceiverModel Models[] = {
    {"GPS 12", 77, 458, "GPS 12 Software Version 4.58", "12 Channel Navigator", WaypointLayout::D103, false, {}},
    {"GPS 12XL", 96, 453, "GPS 12XL Software Version 4.53", "Japanese", WaypointLayout::D103, false, {}},
    {"GPS 12CX", 116, 202, "GPS 12CX Software Version 2.02", "Colour Display", WaypointLayout::D107, false,
     Protocols12CX},
    {"GPS 48", 96, 311, "GPS 48 Software Version 3.11", "Marine Database 1.00", WaypointLayout::D103, false, {}},
    {"GPS II+", 73, 308, "GPS II+ Software Version 3.08", "City Database 1.00", WaypointLayout::D103, false, {}},
    {"GPS III", 72, 210, "GPS III Software Version 2.10", "World Basemap 1.00", WaypointLayout::D104, false, {}},
    {"GPS III+", 119, 206, "GPS III+ Software Version 2.06", "World Basemap 2.00", WaypointLayout::D104, false,
     Protocols3Plus},
    {"eMap", 111, 278, "eMap Software Version 2.78", "Asia Basemap 1.02", WaypointLayout::D108, true,
     ProtocolsWithHeaders},
    {"eTrex", 130, 214, "eTrex Software Version 2.14", "Personal Navigator", WaypointLayout::D108, true,
     ProtocolsWithHeaders},
};

/// "A100" as its letter and 100; nothing for another text.
std::optional<std::pair<std::uint8_t, std::uint16_t>> ProtocolOf(std::string_view word) {
  if (word.size() < 2 || word[0] < 'A' || word[0] > 'Z') return std::nullopt;
  std::uint16_t number = 0;
  const char* end = word.data() + word.size();
  const auto [stop, problem] = std::from_chars(word.data() + 1, end, number);
  if (problem != std::errc() || stop != end) return std::nullopt;
  return std::pair(static_cast<std::uint8_t>(word[0]), number);
}

}  // namespace

std::span<const ReceiverModel> ReceiverModels() {
  return Models;
}

const ReceiverModel* FindReceiverModel(std::string_view name) {
  const auto* model = std::find_if(std::begin(Models), std::end(Models),
                                   [name](const ReceiverModel& candidate) { return candidate.name == name; });
  return model == std::end(Models) ? nullptr : model;
}

LinePacket ProductDataPacket(const ReceiverModel& model, int texts) {
  WireBytes bytes;
  bytes.U16(static_cast<std::uint16_t>(model.product_id));
  bytes.U16(static_cast<std::uint16_t>(model.software_version));
  bytes.EndedText(model.description, MaxLinePacketData);
  if (texts >= 2) bytes.EndedText(model.detail, MaxLinePacketData);
  if (texts >= 3) bytes.EndedText("Boot Version 1.00", MaxLinePacketData);
  return {ProductData, bytes.Take()};
}

LinePacket PacketBehindProductData(int number) {
  if (number % 4 == 0) return {MeaninglessData, {1, 2, 3, 4}};
  WireBytes bytes;
  bytes.EndedText("Product Text " + std::to_string(number), MaxLinePacketData);
  return {ExtraTexts, bytes.Take()};
}

LinePacket ProtocolListPacket(std::string_view protocols) {
  WireBytes bytes;
  while (!protocols.empty() && bytes.Size() + ProtocolEntrySize <= MaxLinePacketData) {
    const std::size_t end = std::min(protocols.find(' '), protocols.size());
    if (const auto protocol = ProtocolOf(protocols.substr(0, end))) {
      bytes.U8(protocol->first);
      bytes.U16(protocol->second);
    }
    protocols.remove_prefix(std::min(end + 1, protocols.size()));
  }
  return {ProtocolList, bytes.Take()};
}

}  // namespace walrim
