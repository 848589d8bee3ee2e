#include "data/DeviceEntries.h"

#include "text/Utf8.h"

namespace walrim {

std::optional<WaypointType> WaypointTypeOfName(std::string_view name) {
  const std::string upper = UpperCase(name);
  for (std::size_t i = 0; i < WaypointTypeCount; ++i) {
    const auto type = static_cast<WaypointType>(i);
    if (upper == WaypointTypeName(type)) return type;
  }
  return std::nullopt;
}

}  // namespace walrim
