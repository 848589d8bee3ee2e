#include "app/CutTexts.h"

#include <string_view>

#include "text/Cp932.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::size_t AnyWidth = 0;

/// Whether a text is wider than a field; the wide fields of the newer records take any.
bool IsCut(std::string_view text, std::size_t width) {
  return width != AnyWidth && Cp932Width(TrimBlanks(text)) > width;
}

int CutTextsOf(const NamedPoint& point, const DeviceProtocols& protocols) {
  const bool any = protocols.WaypointType == "D108";
  return (IsCut(point.ident, any ? AnyWidth : 6) ? 1 : 0) + (IsCut(point.cmnt, any ? AnyWidth : 40) ? 1 : 0);
}

}  // namespace

int CountCutTexts(InternalData& data, DataKind kind, const DeviceProtocols& protocols) {
  int cut = 0;
  if (kind == DataKind::Waypoint) {
    for (int slot = 1; slot <= data.WaypointCount; ++slot)
      cut += CutTextsOf(data.GetNamedPoint(slot), protocols);
  }
  if (kind != DataKind::Route) return cut;
  const RouteCounters& routes = data.mirrored_routes;
  for (int route = 1; route <= routes.RouteCount; ++route) {
    const auto r = static_cast<std::size_t>(route);
    const std::size_t width = protocols.RouteHeaderType == "D201" ? 20 : AnyWidth;
    if (IsCut(data.GetRouteHeader(route)[RouteHeaderField::cmnt], width)) ++cut;
    for (int i = 0; i < routes.RoutePointCount[r]; ++i)
      cut += CutTextsOf(data.GetNamedPoint(RoutePointSlot(route, routes.first_point[r] + i)), protocols);
  }
  return cut;
}

}  // namespace walrim
