#include <algorithm>

#include "device/Garmin.h"

namespace walrim {

namespace {

/// Point numbers that a receiver's route can have: 1 to 99.
constexpr int LastReceivedPoint = MaxRoutePoints - 1;

}  // namespace

std::int32_t Garmin::DownloadRoutes(std::string_view port_name, TransferMode mode) {
  const DeviceProtocols types = session.protocols;
  const auto type = WaypointTypeOfName(types.WaypointType).value_or(WaypointType::D108);
  const bool has_number = types.RouteHeaderType == "D201";
  const bool with_links = types.RouteProtocol == "A201";
  int route = 0;
  int point = 0;  // number of the route's last point, from 1; above LastReceivedPoint once points are dropped
  bool dropped = false;

  // Brings the header of the route just finished into the other layout, and sets its count.
  const auto finish_route = [&] {
    if (route == 0) return;
    const int kept = std::min(point, LastReceivedPoint);
    incoming_.routes.RoutePointCount.at(static_cast<std::size_t>(route)) = kept;
    incoming_.routes.first_point.at(static_cast<std::size_t>(route)) = 1;
    incoming_.SpreadRouteHeader(route, has_number);
  };
  const auto take_header = [&](const Frame& frame) {
    finish_route();
    ++route;
    point = 0;
    DecodeRouteHeader(incoming_, frame, route, types.RouteHeaderType);
  };
  const auto take_point = [&](const Frame& frame) {
    ++point;
    if (route == 0 || point > LastReceivedPoint) {
      dropped = true;  // there is no slot for it that is not another route's
      return true;
    }
    DecodeRoutePoint(incoming_, frame, route, point, types.WaypointType);
    const auto slot = static_cast<std::size_t>(RoutePointSlot(route, point));
    incoming_.SpreadWaypoint(RoutePointSlot(route, point), type);
    return IsLatitude(incoming_.d108[slot].lat_deg);
  };
  const auto take_link = [&](const Frame& frame) {
    if (route == 0 || point > LastReceivedPoint) return;
    DecodeRouteLink(incoming_, frame, route, point, types.RouteLinkType);
  };

  DownloadPlan plan;
  plan.command = session.device_commands.Cmnd_Transfer_Rte;
  plan.most = MaxRoutes * (1 + 2 * MaxRoutePoints);
  plan.kind = DataKind::Route;
  plan.is_record = [&](int id) {
    return id == session.link_pids.Pid_Rte_Hdr || id == session.link_pids.Pid_Rte_Wpt_Data ||
           (with_links && id == session.link_pids.Pid_Rte_Link_Data);
  };
  plan.take = [&](const Frame& frame) {
    if (frame.Id() == session.link_pids.Pid_Rte_Hdr) {
      take_header(frame);
    } else if (frame.Id() == session.link_pids.Pid_Rte_Wpt_Data) {
      return take_point(frame);
    } else {
      take_link(frame);
    }
    return true;
  };
  plan.complete = [&] {
    finish_route();
    incoming_.routes.RouteCount = route;
    return !dropped;
  };
  return RunDownload(port_name, mode, plan);
}

std::int32_t Garmin::UploadRoutes(std::string_view port_name) {
  const LinkPids& pids = session.link_pids;
  const bool with_links = session.protocols.RouteProtocol == "A201";
  const RouteCounters& routes = data_.mirrored_routes;
  const std::string route_total = std::to_string(routes.RouteCount);
  std::vector<UploadStep> steps;
  for (int r = 1; r <= routes.RouteCount; ++r) {
    const auto index = static_cast<std::size_t>(r);
    const int count = routes.RoutePointCount.at(index);
    const std::string route_name = "Route " + std::to_string(r);
    steps.push_back({pids.Pid_Rte_Hdr, r, 0, "", route_name});
    for (int p = 1; p <= count; ++p) {
      const int point = routes.first_point.at(index) + p - 1;
      const std::string counters =
          "[" + std::to_string(r) + "/" + route_total + "," + std::to_string(p) + "/" + std::to_string(count) + "]";
      const std::string name = route_name + " Point " + std::to_string(p);
      steps.push_back({pids.Pid_Rte_Wpt_Data, r, point, counters, name});
      if (with_links) steps.push_back({pids.Pid_Rte_Link_Data, r, point, "", name + " Link"});
    }
  }
  return RunUpload(port_name, session.device_commands.Cmnd_Transfer_Rte, steps, ProgressBase::PacketsSent,
                   static_cast<std::int32_t>(steps.size()));
}

}  // namespace walrim
