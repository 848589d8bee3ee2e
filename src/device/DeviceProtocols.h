// Which application protocols and data types a receiver speaks, chosen from its product description.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// Protocol and data type names such as "A100"; empty where the receiver has none.
struct DeviceProtocols {
  std::string LinkProtocol;
  std::string CommandProtocol;
  std::string WaypointProtocol;
  std::string RouteProtocol;  ///< "A200", "A201"
  std::string TrackProtocol;  ///< "A300", "A301"
  std::string PvtProtocol;
  std::string WaypointType;     ///< "D103", "D104", "D107", "D108"
  std::string RouteHeaderType;  ///< "D201", "D202"
  std::string RouteLinkType;    ///< "", "D210"
  std::string TrackPointType;   ///< "D300", "D301"
  std::string TrackHeaderType;  ///< "", "D310"
  std::string DateTimeType;
  std::string PvtType;  ///< "", "D800"

  friend bool operator==(const DeviceProtocols&, const DeviceProtocols&) = default;
};

/// Sets all fields but LinkProtocol and CommandProtocol from a product description. The tests look for model names
/// anywhere in it; the data type tests want a blank behind the name. An unknown model is taken for one that speaks
/// D104 under A200 and A300.
void ChooseProtocols(std::string_view description, DeviceProtocols& protocols);

/// Before any receiver has been identified: the richest types, so that nothing a file carries is lost.
[[nodiscard]] DeviceProtocols ProtocolsBeforeIdentification();

}  // namespace walrim
