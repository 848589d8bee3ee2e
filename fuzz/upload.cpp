// A receiver that answers anything: an upload of a few records of each kind ends with the port closed and with the data
// set as it was.
//
// The first byte chooses the kind (two bits), the receiver's types (two bits) and the link (its high bit: checked). The
// rest is a list of answers, one for each frame that the host sends, each begun by a byte whose low three bits choose
// its form:
//   0            none
//   1 n bytes    bytes that are no frame
//   2            an ACK; as many more as the high five bits tell answer the frames behind it
//   3 id n data  a frame
//   4            a NAK
//   5            an ACK with a wrong checksum
//   6 id n data  an ACK, and a frame
//   7            the answer before once more
// Once the list is at its end the receiver is silent.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

using namespace walrim;

namespace {

constexpr int PointCount = 3;
/// The frames of an upload of these records, each sent three times, are fewer.
constexpr std::size_t MostSent = 100;

constexpr std::array<std::string_view, 4> Descriptions{"GPS 12 Software", "GPS III Software", "GPS 12CX Software",
                                                       "eTrex Software"};

/// The receiver's side of the line.
class AnyReceiver {
 public:
  explicit AnyReceiver(std::span<const std::uint8_t> input) : input_(input) {}

  std::vector<ScriptedPort::Answer> Answer(const Bytes& frame) {
    const Bytes ack = WireFrame(Pid_Ack_Byte, Int16(frame.at(1)));
    if (acks_to_come_ > 0) {
      --acks_to_come_;
      last_ = ack;
    } else if (input_.empty()) {
      last_.clear();
    } else {
      NextAnswer(frame.at(1), ack);
    }
    return {{std::chrono::milliseconds{2}, last_}};
  }

 private:
  void NextAnswer(std::uint8_t host_id, const Bytes& ack) {
    const std::uint8_t form = Byte();
    switch (form % 8) {
      case 0:
        last_.clear();
        break;
      case 1:
        last_ = Counted();
        break;
      case 2:
        last_ = ack;
        acks_to_come_ = form / 8;
        break;
      case 3:
        last_ = NextFrame();
        break;
      case 4:
        last_ = WireFrame(Pid_Nak_Byte, Int16(host_id));
        break;
      case 5:
        last_ = ack;
        last_[last_.size() - 3] ^= 0x40;
        break;
      case 6: {
        last_ = ack;
        const Bytes frame = NextFrame();
        last_.insert(last_.end(), frame.begin(), frame.end());
        break;
      }
      default:
        break;
    }
  }
  /// What is not there is 0 or empty.
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_[0];
    input_ = input_.subspan(1);
    return byte;
  }
  /// Bytes behind their number.
  Bytes Counted() {
    const std::size_t wanted = Byte();
    const auto bytes = input_.first(std::min(wanted, input_.size()));
    input_ = input_.subspan(bytes.size());
    return {bytes.begin(), bytes.end()};
  }
  Bytes NextFrame() {
    const int id = Byte();
    return WireFrame(id, Counted());
  }

  std::span<const std::uint8_t> input_;
  Bytes last_;
  int acks_to_come_ = 0;
};

WaypointRecord Waypoint(int number) {
  WaypointRecord record;
  record[WaypointField::ident] = "W" + std::to_string(number);
  record[WaypointField::lat] = "35." + std::to_string(number);
  record[WaypointField::lon] = "139.5";
  return record;
}

void HoldWaypoints(InternalData& data) {
  for (int i = 1; i <= PointCount; ++i)
    static_cast<void>(data.AddWaypoint(Waypoint(i)));
}

void HoldRoute(InternalData& data) {
  RouteHeader header;
  header[RouteHeaderField::nmbr] = "3";
  header[RouteHeaderField::cmnt] = "ROUTE";
  header[RouteHeaderField::rte_wpt_num] = std::to_string(PointCount);
  const int route = data.AddRouteHeader(header);
  for (int p = 0; p < PointCount; ++p) {
    RoutePoint point;
    point.waypoint = Waypoint(p);
    static_cast<void>(data.AddRoutePoint(point, route, p));
  }
  data.MirrorRouteCounters();
}

void HoldLog(InternalData& data) {
  TrackHeader header;
  header[TrackHeaderField::trk_pnt_num] = std::to_string(PointCount);
  header[TrackHeaderField::trk_ident] = "LOG";
  const int log = data.AddTrackHeader(header);
  for (int p = 0; p < PointCount; ++p) {
    TrackPoint point;
    point[TrackPointField::lat] = "35." + std::to_string(p);
    point[TrackPointField::lon] = "139.5";
    point[TrackPointField::new_trk] = p == 0 ? "TRUE" : "FALSE";
    static_cast<void>(data.AddTrackPoint(point, log, p));
  }
  data.MirrorTrackCounters();
}

std::unique_ptr<InternalData> FilledData() {
  auto data = std::make_unique<InternalData>();
  HoldWaypoints(*data);
  HoldRoute(*data);
  HoldLog(*data);
  return data;
}

/// All that is held, in the text of the standard file.
std::string TextOf(InternalData& data) {
  static const NameTablesByType names;
  StandardWriter writer(data, names, {});
  std::string text;
  for (const DataKind kind : AllDataKinds)
    writer.AppendKind(text, kind, true);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const std::unique_ptr<InternalData> data = FilledData();
  static const std::string held = TextOf(*data);
  if (held.find("\r\nTRP\t") == std::string::npos) std::abort();
  const std::span<const std::uint8_t> input(bytes, size);
  const unsigned choice = input.empty() ? 0U : input[0];
  const DataKind kind = AllDataKinds[choice % 4U % AllDataKinds.size()];

  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin(*data, port, clock, loop, desktop);
  garmin.session.checked_link = choice >= 128;
  garmin.SetDefaultProtocols();
  ChooseProtocols(Descriptions[choice / 4 % Descriptions.size()], garmin.session.protocols);
  AnyReceiver receiver(input.subspan(std::min<std::size_t>(1, size)));
  port.script = [&receiver](const Bytes& frame) { return receiver.Answer(frame); };

  try {
    const std::int32_t result = garmin.Upload(kind, "1");
    if (result < 0 && result != TransferGivenUp && result != TransferTimedOut) std::abort();
    if (!garmin.session.report.unsendable.empty()) std::abort();
  } catch (const std::exception&) {
    // Too many frames, or one that does not end.
  }
  // Whatever comes unasked is acknowledged.
  const auto sent =
      std::count_if(port.sent.begin(), port.sent.end(), [](const Bytes& wire) { return wire.at(1) != Pid_Ack_Byte; });
  if (port.PortOpen() || port.opened != 1 || static_cast<std::size_t>(sent) > MostSent) std::abort();
  if (TextOf(*data) != held) std::abort();
  return 0;
}
