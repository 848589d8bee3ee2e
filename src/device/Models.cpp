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

const Model* ModelOf(std::string_view description) {
  const Model* found = nullptr;
  for (const Model& model : Models) {
    if (description.find(model.name) != std::string_view::npos) found = &model;
  }
  return found;
}

}  // namespace

DeviceProtocols ProtocolsOf(std::string_view description) {
  const Model* model = ModelOf(description);
  return model == nullptr ? DeviceProtocols() : model->protocols;
}

std::optional<DeviceProtocols> KnownProtocolsOf(std::string_view description) {
  const Model* model = ModelOf(description);
  if (model == nullptr || model->protocols == Unfamiliar) return std::nullopt;
  return model->protocols;
}

}  // namespace walrim
