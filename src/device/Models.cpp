#include "device/Models.h"

namespace walrim {

namespace {

struct Model {
  std::string_view name;
  DeviceProtocols protocols;
  std::optional<ReceiverLimits> limits;
};

constexpr DeviceProtocols Old(WaypointType waypoint) {
  return {waypoint, RouteHeaderType::D201, RouteLinkType::None, TrackPointType::D300, TrackHeaderType::None};
}

/// A name that goes on without a blank is a model whose types are not known; that it has links and headers is.
constexpr DeviceProtocols Unfamiliar{WaypointType::D104, RouteHeaderType::D201, RouteLinkType::Empty,
                                     TrackPointType::D300, TrackHeaderType::Empty};

constexpr ReceiverLimits OldLimits{500, 6, false, 20, 30, 1024};

constexpr Model Models[] = {
    {"eMap", Unfamiliar, {}},
    {"eTrex", Unfamiliar, {}},
    {"GPS 12 ", Old(WaypointType::D103), OldLimits},
    {"GPS 12XL ", Old(WaypointType::D103), OldLimits},
    {"GPS 48 ", Old(WaypointType::D103), OldLimits},
    {"GPS II+ ", Old(WaypointType::D103), OldLimits},
    {"GPS 12CX ", Old(WaypointType::D107), ReceiverLimits{1000, 6, false, 20, 30, 2000}},
    {"GPS III", Old(WaypointType::D104), ReceiverLimits{500, 6, false, 20, 30, 1900}},
    {"GPS III+", Old(WaypointType::D104), ReceiverLimits{500, 6, false, 20, 30, 1900}},
    {"eMap ", RichestProtocols, ReceiverLimits{500, 10, true, 20, 50, 2048}},
    {"eTrex ", RichestProtocols, ReceiverLimits{500, 6, true, 20, 50, 1535}},
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

std::vector<std::string_view> KnownModels() {
  std::vector<std::string_view> names;
  for (const Model& model : Models) {
    if (model.protocols == Unfamiliar) continue;
    names.push_back(model.name.substr(0, model.name.find_last_not_of(' ') + 1));
  }
  return names;
}

std::optional<ReceiverLimits> LimitsOf(std::string_view description) {
  const Model* model = ModelOf(description);
  return model == nullptr ? std::nullopt : model->limits;
}

}  // namespace walrim
