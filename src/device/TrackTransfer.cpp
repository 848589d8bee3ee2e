#include "device/Garmin.h"

namespace walrim {

std::int32_t Garmin::DownloadTracks(std::string_view port_name, TransferMode mode) {
  const DeviceProtocols types = session.protocols;
  int slot = 0;     // of the last point; receivers' points begin at 1
  int headers = 0;  // numbered in arrival order on their own
  int log = 0;      // 0 until the first point that begins a log
  int points = 0;   // in the current log

  const auto finish_log = [&] {
    data_.tracks.TrackPointCount.at(static_cast<std::size_t>(log)) = points;
    if (log == 0) data_.tracks.TrackStart[0] = 1;
  };
  const auto take_point = [&](const Frame& frame) {
    ++slot;
    if (!DecodeTrackPoint(data_, frame, slot, types.TrackPointType)) {
      ++points;
      return;
    }
    finish_log();
    ++log;
    points = 1;
    data_.tracks.TrackStart.at(static_cast<std::size_t>(log)) = slot;
  };

  DownloadPlan plan;
  plan.command = session.device_commands.Cmnd_Transfer_Trk;
  plan.most = MaxTrackPoints + MaxTrackLogs;
  plan.clear = [&] { data_.Clear(DataKind::TrackLog); };
  plan.is_record = [&](int id) { return id == session.link_pids.Pid_Trk_Hdr || id == session.link_pids.Pid_Trk_Data; };
  plan.take = [&](const Frame& frame) {
    if (frame.Id() == session.link_pids.Pid_Trk_Data) {
      take_point(frame);
    } else {
      DecodeTrackHeader(data_, frame, ++headers, types.TrackHeaderType);
    }
  };
  plan.complete = [&] {
    finish_log();
    data_.tracks.TrackCount = log;
    data_.MirrorTrackCounters();
    return true;
  };
  return RunDownload(port_name, mode, plan);
}

std::int32_t Garmin::UploadTracks(std::string_view port_name) {
  const LinkPids& pids = session.link_pids;
  const bool with_headers = session.protocols.TrackProtocol == "A301";
  const TrackCounters& tracks = data_.mirrored_tracks;
  std::vector<UploadStep> steps;
  // Log 0 is there only where points came before the first one that begins a log; they are sent first, as they came.
  for (int i = tracks.TrackPointCount[0] > 0 ? 0 : 1; i <= tracks.TrackCount; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const std::string log_name = "TrackLog " + std::to_string(i);
    if (with_headers) steps.push_back({pids.Pid_Trk_Hdr, i, 0, "", log_name});
    for (int j = 1; j <= tracks.TrackPointCount.at(index); ++j) {
      steps.push_back(
          {pids.Pid_Trk_Data, tracks.TrackStart.at(index) + j - 1, 0, "", log_name + " Point " + std::to_string(j)});
    }
  }
  const std::string total = std::to_string(steps.size());
  for (std::size_t k = 0; k < steps.size(); ++k) {
    steps[k].counters = "[" + std::to_string(k + 1) + "/" + total + "]";
    steps[k].shown_after = true;
  }
  return RunUpload(port_name, session.device_commands.Cmnd_Transfer_Trk, steps, ProgressBase::PacketsSent,
                   static_cast<std::int32_t>(steps.size()));
}

}  // namespace walrim
