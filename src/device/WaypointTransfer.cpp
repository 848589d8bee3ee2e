#include <algorithm>

#include "device/Garmin.h"
#include "text/Utf8.h"

namespace walrim {

std::int32_t Garmin::DownloadWaypoints(std::string_view port_name, TransferMode mode) {
  const std::string type_name = session.protocols.WaypointType;
  const auto type = WaypointTypeOfName(type_name).value_or(WaypointType::D108);
  int index = 0;

  DownloadPlan plan;
  plan.command = session.device_commands.Cmnd_Transfer_Wpt;
  plan.most = MaxWaypoints;
  plan.kind = DataKind::Waypoint;
  plan.is_record = [&](int id) { return id == session.link_pids.Pid_Wpt_Data; };
  plan.take = [&](const Frame& frame) {
    DecodeWaypoint(incoming_, frame, ++index, type_name);
    incoming_.SpreadWaypoint(index, type);
    return IsLatitude(incoming_.d108.at(static_cast<std::size_t>(index)).lat_deg);
  };
  plan.complete = [&] {
    incoming_.WaypointCount = session.RecordsAnnounced;
    incoming_.WaypointHighWater = session.RecordsAnnounced;
    // Records that never came are the type's cleared defaults.
    for (int slot = index + 1; slot <= session.RecordsAnnounced; ++slot)
      incoming_.SpreadWaypoint(slot, type);
    if (index < session.RecordsAnnounced) {
      incoming_.first_missing_waypoint = index + 1;
      incoming_.last_missing_waypoint = session.RecordsAnnounced;
    }
    return true;
  };
  return RunDownload(port_name, mode, plan);
}

std::int32_t Garmin::UploadWaypoints(std::string_view port_name) {
  std::vector<UploadStep> steps;
  const std::string total = std::to_string(data_.WaypointCount);
  for (int i = 1; i <= data_.WaypointCount; ++i) {
    const std::string number = std::to_string(i);
    std::string counters = "[";
    counters.append(number).append("/").append(total).append("]");
    steps.push_back({session.link_pids.Pid_Wpt_Data, i, 0, counters, "Waypoint " + number});
  }
  return RunUpload(port_name, session.device_commands.Cmnd_Transfer_Wpt, steps, ProgressBase::WithThisPacket,
                   data_.WaypointCount);
}

}  // namespace walrim
