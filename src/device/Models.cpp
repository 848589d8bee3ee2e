#include "device/Models.h"

namespace walrim {

namespace {

struct Model {
  std::string_view name;
  DeviceProtocols protocols;
};

constexpr DeviceProtocols Old(WaypointType waypoint) {
  return {waypoint, RouteHeaderType::D201, RouteLinkType::None, TrackPointType::D300, TrackHeaderType::None};
}

/// A name that goes on without a blank is a model whose types are not known; that it has links and headers is.
constexpr DeviceProtocols Unfamiliar{WaypointType::D104, RouteHeaderType::D201, RouteLinkType::Empty,
                                     TrackPointType::D300, TrackHeaderType::Empty};

constexpr Model Models[] = {
    {"eMap", Unfamiliar},
    {"eTrex", Unfamiliar},
    {"GPS 12 ", Old(WaypointType::D103)},
    {"GPS 12XL ", Old(WaypointType::D103)},
    {"GPS 48 ", Old(WaypointType::D103)},
    {"GPS II+ ", Old(WaypointType::D103)},
    {"GPS 12CX ", Old(WaypointType::D107)},
    {"GPS III", Old(WaypointType::D104)},  // and "GPS III+"
    {"eMap ", RichestProtocols},
    {"eTrex ", RichestProtocols},
};

}  // namespace

DeviceProtocols ProtocolsOf(std::string_view description) {
  DeviceProtocols protocols;
  for (const Model& model : Models) {
    if (description.find(model.name) != std::string_view::npos) protocols = model.protocols;
  }
  return protocols;
}

}  // namespace walrim
