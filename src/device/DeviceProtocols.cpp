#include "device/DeviceProtocols.h"

namespace walrim {

namespace {

struct Choice {
  std::string DeviceProtocols::*field;
  std::string_view contains;  ///< empty: always
  std::string_view value;
};

// Walked in order; a later match overwrites an earlier one.
constexpr Choice Choices[] = {
    {&DeviceProtocols::WaypointProtocol, "", "A100"},
    {&DeviceProtocols::RouteProtocol, "", "A200"},
    {&DeviceProtocols::RouteProtocol, "eMap", "A201"},
    {&DeviceProtocols::RouteProtocol, "eTrex", "A201"},
    {&DeviceProtocols::TrackProtocol, "", "A300"},
    {&DeviceProtocols::TrackProtocol, "eMap", "A301"},
    {&DeviceProtocols::TrackProtocol, "eTrex", "A301"},
    {&DeviceProtocols::PvtProtocol, "", "A800"},
    {&DeviceProtocols::WaypointType, "", "D104"},  // what an unknown model speaks
    {&DeviceProtocols::WaypointType, "GPS 12 ", "D103"},
    {&DeviceProtocols::WaypointType, "GPS 12XL ", "D103"},
    {&DeviceProtocols::WaypointType, "GPS 48 ", "D103"},
    {&DeviceProtocols::WaypointType, "GPS II+ ", "D103"},
    {&DeviceProtocols::WaypointType, "GPS 12CX ", "D107"},
    {&DeviceProtocols::WaypointType, "GPS III+ ", "D104"},
    {&DeviceProtocols::WaypointType, "GPS III", "D104"},
    {&DeviceProtocols::WaypointType, "eMap ", "D108"},
    {&DeviceProtocols::WaypointType, "eTrex ", "D108"},
    {&DeviceProtocols::RouteHeaderType, "", "D201"},
    {&DeviceProtocols::RouteHeaderType, "eMap ", "D202"},
    {&DeviceProtocols::RouteHeaderType, "eTrex ", "D202"},
    {&DeviceProtocols::RouteLinkType, "", ""},
    {&DeviceProtocols::RouteLinkType, "eMap ", "D210"},
    {&DeviceProtocols::RouteLinkType, "eTrex ", "D210"},
    {&DeviceProtocols::TrackPointType, "", "D300"},
    {&DeviceProtocols::TrackPointType, "eMap ", "D301"},
    {&DeviceProtocols::TrackPointType, "eTrex ", "D301"},
    {&DeviceProtocols::TrackHeaderType, "", ""},
    {&DeviceProtocols::TrackHeaderType, "eMap ", "D310"},
    {&DeviceProtocols::TrackHeaderType, "eTrex ", "D310"},
    {&DeviceProtocols::DateTimeType, "", "D600"},
    {&DeviceProtocols::PvtType, "", ""},
    {&DeviceProtocols::PvtType, "GPS III", "D800"},
};

}  // namespace

void ChooseProtocols(std::string_view description, DeviceProtocols& protocols) {
  for (const Choice& choice : Choices) {
    if (description.find(choice.contains) != std::string_view::npos) protocols.*choice.field = choice.value;
  }
}

DeviceProtocols ProtocolsBeforeIdentification() {
  DeviceProtocols protocols;
  protocols.WaypointType = "D108";
  protocols.RouteHeaderType = "D202";
  protocols.RouteLinkType = "D210";
  protocols.TrackPointType = "D301";
  protocols.TrackHeaderType = "D310";
  return protocols;
}

}  // namespace walrim
