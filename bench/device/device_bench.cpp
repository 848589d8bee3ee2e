// Benchmarks of the device module: records to bytes and back, and frames through the link on a line without delay.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "data/InternalData.h"
#include "device/Codecs.h"
#include "device/Garmin.h"
#include "device/PacketLink.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {
namespace {

// ---- Records

constexpr int Index = 1;
constexpr int Point = 1;

struct RecordType {
  std::string_view name;
  ByteBuffer (*encode)(const InternalData& data, std::string_view name);
  void (*decode)(InternalData& data, const Frame& frame, std::string_view name);
};

ByteBuffer EncodeOneWaypoint(const InternalData& data, std::string_view name) {
  return EncodeWaypoint(data, Index, name);
}
void DecodeOneWaypoint(InternalData& data, const Frame& frame, std::string_view name) {
  DecodeWaypoint(data, frame, Index, name);
}
ByteBuffer EncodeOneRouteHeader(const InternalData& data, std::string_view name) {
  return EncodeRouteHeader(data, Index, name);
}
void DecodeOneRouteHeader(InternalData& data, const Frame& frame, std::string_view name) {
  DecodeRouteHeader(data, frame, Index, name);
}
ByteBuffer EncodeOneRouteLink(const InternalData& data, std::string_view name) {
  return EncodeRouteLink(data, Index, Point, name);
}
void DecodeOneRouteLink(InternalData& data, const Frame& frame, std::string_view name) {
  DecodeRouteLink(data, frame, Index, Point, name);
}
ByteBuffer EncodeOneTrackPoint(const InternalData& data, std::string_view name) {
  return EncodeTrackPoint(data, Index, name);
}
void DecodeOneTrackPoint(InternalData& data, const Frame& frame, std::string_view name) {
  benchmark::DoNotOptimize(DecodeTrackPoint(data, frame, Index, name));
}
ByteBuffer EncodeOneTrackHeader(const InternalData& data, std::string_view name) {
  return EncodeTrackHeader(data, Index, name);
}
void DecodeOneTrackHeader(InternalData& data, const Frame& frame, std::string_view name) {
  DecodeTrackHeader(data, frame, Index, name);
}

constexpr RecordType RecordTypes[] = {
    {"D103", EncodeOneWaypoint, DecodeOneWaypoint},       {"D104", EncodeOneWaypoint, DecodeOneWaypoint},
    {"D107", EncodeOneWaypoint, DecodeOneWaypoint},       {"D108", EncodeOneWaypoint, DecodeOneWaypoint},
    {"D201", EncodeOneRouteHeader, DecodeOneRouteHeader}, {"D202", EncodeOneRouteHeader, DecodeOneRouteHeader},
    {"D210", EncodeOneRouteLink, DecodeOneRouteLink},     {"D300", EncodeOneTrackPoint, DecodeOneTrackPoint},
    {"D301", EncodeOneTrackPoint, DecodeOneTrackPoint},   {"D310", EncodeOneTrackHeader, DecodeOneTrackHeader},
};

constexpr double LatDeg = 35.62513888888889;
constexpr double LonDeg = 139.24372222222223;
constexpr std::string_view Comment = "山頂 599m NORTH RIDGE, HUT";

template <typename Entry>
void FillShortWaypoint(Entry& entry) {
  entry.ident.Set("TAKAO");
  entry.lat_deg = LatDeg;
  entry.lon_deg = LonDeg;
  entry.cmnt.Set(Comment);
}

void FillRecords(InternalData& data) {
  FillShortWaypoint(data.d103.at(Index));
  FillShortWaypoint(data.d104.at(Index));
  FillShortWaypoint(data.d107.at(Index));
  D108Entry& waypoint = data.d108.at(Index);
  waypoint.lat_deg = LatDeg;
  waypoint.lon_deg = LonDeg;
  waypoint.alt_m = 599.1F;
  waypoint.cc.Set("JP");
  waypoint.ident = "TAKAO";
  waypoint.cmnt = Comment;
  waypoint.city = "八王子";
  data.d201.at(Index).nmbr = Index;
  data.d201.at(Index).cmnt.Set("高尾-陣馬");
  data.d202.at(Index).rte_ident = "高尾-陣馬";
  data.d210.at(LinkSlot(Index, Point)).ident = "稲荷山コース";
  data.track_points.at(Index) = {LatDeg, LonDeg, 406000000, true, 599.1F, UnknownMetres};
  data.d310.at(Index).trk_ident = "ACTIVE LOG";
}

Frame FrameOf(const ByteBuffer& data) {
  Frame frame;
  frame.bytes[2] = static_cast<std::uint8_t>(data.Size);
  const auto view = data.View();
  std::copy(view.begin(), view.end(), frame.bytes.begin() + 3);
  frame.Size = static_cast<std::int16_t>(data.Size + 6);
  return frame;
}

void BM_Encode(benchmark::State& state, const RecordType& type) {
  const auto data = std::make_unique<InternalData>();
  FillRecords(*data);
  for (auto _ : state)
    benchmark::DoNotOptimize(type.encode(*data, type.name));
}

void BM_Decode(benchmark::State& state, const RecordType& type) {
  const auto data = std::make_unique<InternalData>();
  FillRecords(*data);
  const Frame frame = FrameOf(type.encode(*data, type.name));
  for (auto _ : state) {
    type.decode(*data, frame, type.name);
    benchmark::ClobberMemory();
  }
}

// ---- The link

/// A line whose whole burst is there at once, as often as Rewind is called, and that takes all bytes at once. Time
/// passes in Wait alone.
class FullBufferPort : public SerialPort {
 public:
  explicit FullBufferPort(FakeClock& clock) : clock_(clock) {}

  [[nodiscard]] PortResult Open(std::string_view, std::string_view) override { return {}; }
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

/// A device module on such a line.
struct Bench {
  Bench() {
    FillRecords(*data);
    garmin.SetDefaultProtocols();
  }

  std::unique_ptr<InternalData> data = std::make_unique<InternalData>();
  FakeClock clock;
  FullBufferPort port{clock};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin{*data, port, clock, loop, desktop};
};

void SetRate(benchmark::State& state, std::size_t bytes_each) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes_each) * static_cast<std::int64_t>(state.iterations()));
}

Bytes WireFrameOf(int id, const ByteBuffer& data) {
  const auto view = data.View();
  return WireFrame(id, Bytes(view.begin(), view.end()));
}

void ReceiveFrame(benchmark::State& state, const Bytes& frame) {
  Bench bench;
  bench.port.SetBurst(frame);
  for (auto _ : state) {
    bench.port.Rewind();
    benchmark::DoNotOptimize(bench.garmin.Link().ReceivePacket());
  }
  if (bench.garmin.Link().ReceivePacket().Size >= 0) state.SkipWithError("received from an empty line");
  SetRate(state, frame.size());
}

/// The longest frame that the link sends, with every data byte doubled on the wire.
Bytes LongestFrame() {
  return WireFrame(Pid_Product_Data, Bytes(LongestSentData, DLE));
}

void BM_ReceiveTrackPoint(benchmark::State& state) {
  const Bench bench;
  ReceiveFrame(state, WireFrameOf(34, EncodeTrackPoint(*bench.data, Index, "D301")));
}
BENCHMARK(BM_ReceiveTrackPoint);

void BM_ReceiveLongestFrame(benchmark::State& state) {
  ReceiveFrame(state, LongestFrame());
}
BENCHMARK(BM_ReceiveLongestFrame);

/// An ACK and the frame behind it, as they answer a command.
void BM_ReceiveAckAndRecords(benchmark::State& state) {
  Bench bench;
  Bytes burst = WireFrame(Pid_Ack_Byte, Int16(10));
  const Bytes records = WireFrame(27, Int16(1001));
  burst.insert(burst.end(), records.begin(), records.end());
  bench.port.SetBurst(burst);
  for (auto _ : state) {
    bench.port.Rewind();
    const PacketReply reply = bench.garmin.Link().ReceivePackets();
    if (reply.Count != 2) state.SkipWithError("not two frames");
  }
  SetRate(state, burst.size());
}
BENCHMARK(BM_ReceiveAckAndRecords);

void BM_Send(benchmark::State& state, int LinkPids::*id, int first, int second) {
  Bench bench;
  const int packet_id = bench.garmin.session.link_pids.*id;
  for (auto _ : state)
    bench.garmin.Link().SendPacket(packet_id, bench.garmin.BuildPacketData(packet_id, first, second));
  state.SetBytesProcessed(static_cast<std::int64_t>(bench.port.Sent()));
}
BENCHMARK_CAPTURE(BM_Send, Xfer_Cmplt, &LinkPids::Pid_Xfer_Cmplt, 6, 0);
BENCHMARK_CAPTURE(BM_Send, Wpt_Data, &LinkPids::Pid_Wpt_Data, Index, 0);
BENCHMARK_CAPTURE(BM_Send, Rte_Hdr, &LinkPids::Pid_Rte_Hdr, Index, 0);
BENCHMARK_CAPTURE(BM_Send, Rte_Link_Data, &LinkPids::Pid_Rte_Link_Data, Index, Point);
BENCHMARK_CAPTURE(BM_Send, Trk_Data, &LinkPids::Pid_Trk_Data, Index, 0);
BENCHMARK_CAPTURE(BM_Send, Trk_Hdr, &LinkPids::Pid_Trk_Hdr, Index, 0);

void RegisterRecordTypes() {
  for (const RecordType& type : RecordTypes) {
    const std::string name(type.name);
    benchmark::RegisterBenchmark(("BM_Encode/" + name).c_str(), BM_Encode, type);
    benchmark::RegisterBenchmark(("BM_Decode/" + name).c_str(), BM_Decode, type);
  }
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  walrim::RegisterRecordTypes();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
