#include "device/Garmin.h"

namespace walrim {

namespace {

/// Cuts what a receiver sends into the logs of the data set. A header begins a log, and a flag inside it a segment;
/// where no header came, a flag begins a log. Points in front of both are log 0.
class LogCutter {
 public:
  explicit LogCutter(InternalData& data) : data_(data) {}

  /// Returns the number of the log that the header begins.
  int TakeHeader() {
    header_came_ = true;
    Begin();
    return log_;
  }
  /// The slot that the next point is to be decoded into.
  [[nodiscard]] int NextSlot() const { return slot_; }
  void TakePoint(bool new_trk) {
    if (new_trk && !header_came_) Begin();
    ++slot_;
    ++Points();
  }
  [[nodiscard]] int Logs() const { return log_; }

 private:
  void Begin() {
    ++log_;
    data_.tracks.TrackStart.at(static_cast<std::size_t>(log_)) = slot_;
  }
  int& Points() { return data_.tracks.TrackPointCount.at(static_cast<std::size_t>(log_)); }

  InternalData& data_;
  int slot_ = 0;
  int log_ = 0;
  bool header_came_ = false;
};

}  // namespace

std::int32_t Garmin::DownloadTracks(std::string_view port_name, TransferMode mode) {
  const DeviceProtocols types = session.protocols;
  const bool with_headers = !types.TrackHeaderType.empty();
  LogCutter cutter(incoming_);

  DownloadPlan plan;
  plan.command = session.device_commands.Cmnd_Transfer_Trk;
  plan.most = MaxTrackPoints + (with_headers ? MaxTrackLogs : 0);
  plan.kind = DataKind::TrackLog;
  plan.is_record = [&](int id) { return id == session.link_pids.Pid_Trk_Hdr || id == session.link_pids.Pid_Trk_Data; };
  plan.take = [&](const Frame& frame) {
    if (frame.Id() == session.link_pids.Pid_Trk_Data) {
      const int slot = cutter.NextSlot();
      cutter.TakePoint(DecodeTrackPoint(incoming_, frame, slot, types.TrackPointType));
      return IsLatitude(incoming_.track_points[static_cast<std::size_t>(slot)].lat_deg);
    }
    if (with_headers) DecodeTrackHeader(incoming_, frame, cutter.TakeHeader(), types.TrackHeaderType);
    return true;
  };
  plan.complete = [&] {
    incoming_.tracks.TrackCount = cutter.Logs();
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
