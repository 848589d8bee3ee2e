// Benchmarks of the device module: records to bytes and back, and frames through the link on a line without delay.
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "device/PacketLink.h"
#include "device/types/RouteTypes.h"
#include "device/types/TrackTypes.h"
#include "device/types/WaypointTypes.h"
#include "support/Fakes.h"

namespace walrim {
namespace {

// ---- Records

constexpr double LatDeg = 35.62513888888889;
constexpr double LonDeg = 139.24372222222223;
constexpr std::string_view Comment = "山頂 599m NORTH RIDGE, HUT";

/// A waypoint as a receiver of a type sends it.
Waypoint WaypointOf(WaypointType type) {
  Waypoint waypoint;
  waypoint.type = WaypointType::D108;
  waypoint.lat_deg = LatDeg;
  waypoint.lon_deg = LonDeg;
  waypoint.alt_m = 599.1F;
  waypoint.ident = "TAKAO";
  waypoint.cmnt = Comment;
  waypoint.details.Set(&WaypointDetails::country, "JP");
  waypoint.details.Set(&WaypointDetails::city, "八王子");
  EncodeNotes notes;
  return DecodeWaypoint(EncodeWaypoint(waypoint, type, notes), type);
}
const Route& SomeRoute(RouteHeaderType type) {
  static const Route route{type, 1, "高尾-陣馬", {}};
  return route;
}
const RouteLink SomeLink{0, NoSubclass, "稲荷山コース"};
const TrackPoint SomePoint{LatDeg, LonDeg, 406000000, 599.1F, std::nullopt, true};
TrackLog SomeLog() {
  TrackLog log;
  log.trk_ident = "ACTIVE LOG";
  return log;
}

template <typename Encode>
void EncodeAgain(benchmark::State& state, Encode encode) {
  for (auto _ : state) {
    EncodeNotes notes;
    benchmark::DoNotOptimize(encode(notes));
  }
}
template <typename Decode>
void DecodeAgain(benchmark::State& state, Decode decode) {
  for (auto _ : state)
    benchmark::DoNotOptimize(decode());
}

void BM_EncodeWaypoint(benchmark::State& state, WaypointType type) {
  const Waypoint waypoint = WaypointOf(type);
  EncodeAgain(state, [&](EncodeNotes& notes) { return EncodeWaypoint(waypoint, type, notes); });
}
void BM_DecodeWaypoint(benchmark::State& state, WaypointType type) {
  EncodeNotes notes;
  const Bytes data = EncodeWaypoint(WaypointOf(type), type, notes);
  DecodeAgain(state, [&] { return DecodeWaypoint(data, type); });
}
void BM_EncodeRouteHeader(benchmark::State& state, RouteHeaderType type) {
  EncodeAgain(state, [&](EncodeNotes& notes) { return EncodeRouteHeader(SomeRoute(type), type, notes); });
}
void BM_DecodeRouteHeader(benchmark::State& state, RouteHeaderType type) {
  EncodeNotes notes;
  const Bytes data = EncodeRouteHeader(SomeRoute(type), type, notes);
  DecodeAgain(state, [&] { return DecodeRouteHeader(data, type, 1); });
}
void BM_EncodeTrackPoint(benchmark::State& state, TrackPointType type) {
  EncodeAgain(state, [&](EncodeNotes&) { return EncodeTrackPoint(SomePoint, type); });
}
void BM_DecodeTrackPoint(benchmark::State& state, TrackPointType type) {
  const Bytes data = EncodeTrackPoint(SomePoint, type);
  DecodeAgain(state, [&] { return DecodeTrackPoint(data, type); });
}
void BM_EncodeRouteLink(benchmark::State& state) {
  EncodeAgain(state, [](EncodeNotes& notes) { return EncodeRouteLink(SomeLink, RouteLinkType::D210, notes); });
}
void BM_DecodeRouteLink(benchmark::State& state) {
  EncodeNotes notes;
  const Bytes data = EncodeRouteLink(SomeLink, RouteLinkType::D210, notes);
  DecodeAgain(state, [&] { return DecodeRouteLink(data); });
}
void BM_EncodeTrackHeader(benchmark::State& state) {
  EncodeAgain(state,
              [log = SomeLog()](EncodeNotes& notes) { return EncodeTrackHeader(log, TrackHeaderType::D310, notes); });
}
void BM_DecodeTrackHeader(benchmark::State& state) {
  EncodeNotes notes;
  const Bytes data = EncodeTrackHeader(SomeLog(), TrackHeaderType::D310, notes);
  DecodeAgain(state, [&] { return DecodeTrackHeader(data); });
}

BENCHMARK_CAPTURE(BM_EncodeWaypoint, D103, WaypointType::D103);
BENCHMARK_CAPTURE(BM_DecodeWaypoint, D103, WaypointType::D103);
BENCHMARK_CAPTURE(BM_EncodeWaypoint, D104, WaypointType::D104);
BENCHMARK_CAPTURE(BM_DecodeWaypoint, D104, WaypointType::D104);
BENCHMARK_CAPTURE(BM_EncodeWaypoint, D107, WaypointType::D107);
BENCHMARK_CAPTURE(BM_DecodeWaypoint, D107, WaypointType::D107);
BENCHMARK_CAPTURE(BM_EncodeWaypoint, D108, WaypointType::D108);
BENCHMARK_CAPTURE(BM_DecodeWaypoint, D108, WaypointType::D108);
BENCHMARK_CAPTURE(BM_EncodeRouteHeader, D201, RouteHeaderType::D201);
BENCHMARK_CAPTURE(BM_DecodeRouteHeader, D201, RouteHeaderType::D201);
BENCHMARK_CAPTURE(BM_EncodeRouteHeader, D202, RouteHeaderType::D202);
BENCHMARK_CAPTURE(BM_DecodeRouteHeader, D202, RouteHeaderType::D202);
BENCHMARK(BM_EncodeRouteLink);
BENCHMARK(BM_DecodeRouteLink);
BENCHMARK_CAPTURE(BM_EncodeTrackPoint, D300, TrackPointType::D300);
BENCHMARK_CAPTURE(BM_DecodeTrackPoint, D300, TrackPointType::D300);
BENCHMARK_CAPTURE(BM_EncodeTrackPoint, D301, TrackPointType::D301);
BENCHMARK_CAPTURE(BM_DecodeTrackPoint, D301, TrackPointType::D301);
BENCHMARK(BM_EncodeTrackHeader);
BENCHMARK(BM_DecodeTrackHeader);

// ---- The link

/// A line whose whole burst is there at once, as often as Rewind is called, and that takes all bytes at once. Time
/// passes in Wait alone.
class FullBufferPort : public SerialPort {
 public:
  explicit FullBufferPort(FakeClock& clock) : clock_(clock) {}

  [[nodiscard]] PortResult Open(std::string_view, int) override { return {}; }
  [[nodiscard]] bool PortOpen() const override { return true; }
  void Close() override {}
  [[nodiscard]] std::size_t InBufferCount() override { return burst_.size() - position_; }
  void ClearInBuffer() override { position_ = burst_.size(); }
  [[nodiscard]] std::optional<std::uint8_t> Input() override { return burst_[position_++]; }
  void Output(std::uint8_t byte) override {
    last_sent_ = byte;
    ++sent_;
  }
  [[nodiscard]] std::size_t OutBufferCount() override { return 0; }
  void ClearOutBuffer() override {}
  void Wait(std::chrono::milliseconds at_most) override { clock_.Advance(at_most); }
  [[nodiscard]] bool LineLost() const override { return false; }

  void SetBurst(Bytes burst) { burst_ = std::move(burst); }
  void Rewind() { position_ = 0; }
  [[nodiscard]] std::size_t Sent() const { return sent_; }

 private:
  FakeClock& clock_;
  Bytes burst_;
  std::size_t position_ = 0;
  std::size_t sent_ = 0;
  std::uint8_t last_sent_ = 0;
};

/// A link on such a line.
struct Bench {
  FakeClock clock;
  FullBufferPort port{clock};
  FakeEventLoop loop;
  StopFlags stop;
  PacketLink link{port, clock, loop, stop};
};

void SetRate(benchmark::State& state, std::size_t bytes_each) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes_each) * static_cast<std::int64_t>(state.iterations()));
}

void ReceiveFrame(benchmark::State& state, const Bytes& frame) {
  Bench bench;
  bench.port.SetBurst(frame);
  for (auto _ : state) {
    bench.port.Rewind();
    benchmark::DoNotOptimize(bench.link.ReceivePacket());
  }
  if (bench.link.ReceivePacket().size >= 0) state.SkipWithError("received from an empty line");
  SetRate(state, frame.size());
}

/// The longest frame that the link sends, with every data byte doubled on the wire.
Bytes LongestFrame() {
  return WireFrame(PacketId::ProductData, Bytes(LongestSentData, DLE));
}

void BM_ReceiveTrackPoint(benchmark::State& state) {
  ReceiveFrame(state, WireFrame(PacketId::TrkData, EncodeTrackPoint(SomePoint, TrackPointType::D301)));
}
BENCHMARK(BM_ReceiveTrackPoint);

void BM_ReceiveLongestFrame(benchmark::State& state) {
  ReceiveFrame(state, LongestFrame());
}
BENCHMARK(BM_ReceiveLongestFrame);

/// An ACK and the frame behind it, as they answer a command.
void BM_ReceiveAckAndRecords(benchmark::State& state) {
  Bench bench;
  Bytes burst = WireFrame(PacketId::Ack, Int16(10));
  const Bytes records = WireFrame(27, Int16(1001));
  burst.insert(burst.end(), records.begin(), records.end());
  bench.port.SetBurst(burst);
  for (auto _ : state) {
    bench.port.Rewind();
    PacketReply reply;
    bench.link.ReceiveMore(reply);
    if (reply.count != 2) state.SkipWithError("not two frames");
  }
  SetRate(state, burst.size());
}
BENCHMARK(BM_ReceiveAckAndRecords);

/// Encodes a packet's data, and sends them.
template <typename Encode>
void SendAgain(benchmark::State& state, int packet_id, Encode encode) {
  Bench bench;
  for (auto _ : state) {
    EncodeNotes notes;
    bench.link.SendPacket(packet_id, encode(notes));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bench.port.Sent()));
}
void BM_SendXferCmplt(benchmark::State& state) {
  SendAgain(state, PacketId::XferCmplt, [](EncodeNotes&) { return NumberData(DeviceCommand::TransferTrk); });
}
BENCHMARK(BM_SendXferCmplt);
void BM_SendWaypoint(benchmark::State& state) {
  const Waypoint waypoint = WaypointOf(WaypointType::D108);
  SendAgain(state, PacketId::WptData,
            [&](EncodeNotes& notes) { return EncodeWaypoint(waypoint, WaypointType::D108, notes); });
}
BENCHMARK(BM_SendWaypoint);
void BM_SendTrackPoint(benchmark::State& state) {
  SendAgain(state, PacketId::TrkData, [](EncodeNotes&) { return EncodeTrackPoint(SomePoint, TrackPointType::D301); });
}
BENCHMARK(BM_SendTrackPoint);

}  // namespace
}  // namespace walrim

BENCHMARK_MAIN();
