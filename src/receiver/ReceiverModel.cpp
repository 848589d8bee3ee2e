#include "receiver/ReceiverModel.h"

#include <algorithm>

#include "receiver/WireBytes.h"

namespace walrim {

namespace {

constexpr std::uint8_t ProductData = 255;

constexpr ReceiverModel Models[] = {
    {"GPS 12", 77, 458, "GPS 12 Software Version 4.58", "12 Channel Navigator", WaypointLayout::D103, false},
    {"GPS 12XL", 96, 453, "GPS 12XL Software Version 4.53", "Japanese", WaypointLayout::D103, false},
    {"GPS 12CX", 116, 202, "GPS 12CX Software Version 2.02", "Colour Display", WaypointLayout::D107, false},
    {"GPS 48", 72, 311, "GPS 48 Software Version 3.11", "Marine Database 1.00", WaypointLayout::D103, false},
    {"GPS II+", 73, 308, "GPS II+ Software Version 3.08", "City Database 1.00", WaypointLayout::D103, false},
    {"GPS III", 71, 210, "GPS III Software Version 2.10", "World Basemap 1.00", WaypointLayout::D104, false},
    {"GPS III+", 97, 206, "GPS III+ Software Version 2.06", "World Basemap 2.00", WaypointLayout::D104, false},
    {"eMap", 111, 278, "eMap Software Version 2.78", "Asia Basemap 1.02", WaypointLayout::D108, true},
    {"eTrex", 130, 214, "eTrex Software Version 2.14", "Personal Navigator", WaypointLayout::D108, true},
};

}  // namespace

std::span<const ReceiverModel> ReceiverModels() {
  return Models;
}

const ReceiverModel* FindReceiverModel(std::string_view name) {
  const auto* model = std::find_if(std::begin(Models), std::end(Models),
                                   [name](const ReceiverModel& candidate) { return candidate.name == name; });
  return model == std::end(Models) ? nullptr : model;
}

LinePacket ProductDataPacket(const ReceiverModel& model) {
  WireBytes bytes;
  bytes.U16(static_cast<std::uint16_t>(model.product_id));
  bytes.U16(static_cast<std::uint16_t>(model.software_version));
  bytes.EndedText(model.description, MaxLinePacketData);
  bytes.EndedText(model.detail, MaxLinePacketData);
  return {ProductData, bytes.Take()};
}

}  // namespace walrim
