// A receiver that answers anything: an upload of a few records of each kind ends with the port closed and with the data
// set as it was. What it sends is what is held, taken apart by hand: record after record in their order, each once, or
// up to three times on the checked link; and an upload that ends well has sent all, and says whether the end was
// acknowledged.
//
// The first byte is a TransferChoice. The rest is a list of answers, one for each frame that the host sends, each begun
// by a byte whose low three bits choose its form:
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
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "transfer_input.h"

using namespace walrim;

namespace {

constexpr int PointCount = 3;
/// Of a packet on the checked link, its NAKs counted.
constexpr std::size_t MostTries = 3;
/// The frames of an upload of these records, each sent three times, are fewer.
constexpr std::size_t MostSent = 100;

/// What a frame of the host was answered with.
enum class Verdict { Taken, NotTaken, Unclear };

/// A packet that an upload sends, and how it was answered each time.
struct SentPacket {
  PlainPacket packet;
  std::vector<Verdict> verdicts;

  [[nodiscard]] bool Always(Verdict verdict) const {
    return std::all_of(verdicts.begin(), verdicts.end(), [=](Verdict one) { return one == verdict; });
  }
};

/// The receiver's side of the line.
class AnyReceiver {
 public:
  explicit AnyReceiver(InputReader input) : input_(input) {}

  std::vector<ScriptedPort::Answer> Answer(const Bytes& frame) {
    if (frame.at(1) == PacketId::Ack) return {};
    std::vector<ScriptedPort::Answer> answers = AnswerPacket(frame);
    if (frame.at(1) != PacketId::Nak) {
      const PlainPacket packet = Unwrapped(frame);
      if (sent.empty() || sent.back().packet != packet) sent.push_back({packet, {}});
    }
    if (!sent.empty()) sent.back().verdicts.push_back(verdict_);
    return answers;
  }

  std::vector<SentPacket> sent;  ///< but for ACKs and NAKs

 private:
  std::vector<ScriptedPort::Answer> AnswerPacket(const Bytes& frame) {
    const Bytes ack = WireFrame(PacketId::Ack, Int16(frame.at(1)));
    if (acks_to_come_ > 0) {
      --acks_to_come_;
      Say(ack, Verdict::Taken);
    } else if (input_.AtEnd()) {
      Say({}, Verdict::NotTaken);
    } else {
      NextAnswer(frame.at(1), ack);
    }
    return {{std::chrono::milliseconds{2}, last_}};
  }
  void Say(Bytes bytes, Verdict verdict) {
    last_ = std::move(bytes);
    verdict_ = verdict;
  }
  void NextAnswer(std::uint8_t host_id, const Bytes& ack) {
    const std::uint8_t form = input_.Byte();
    switch (form % 8) {
      case 0:
        Say({}, Verdict::NotTaken);
        break;
      case 1:
        Say(input_.Counted(), Verdict::Unclear);
        break;
      case 2:
        Say(ack, Verdict::Taken);
        acks_to_come_ = form / 8;
        break;
      case 3:
        Say(input_.Frame(), Verdict::Unclear);
        break;
      case 4:
        Say(WireFrame(PacketId::Nak, Int16(host_id)), Verdict::NotTaken);
        break;
      case 5:
        Say(ack, Verdict::Unclear);
        last_[last_.size() - 3] ^= 0x40;
        break;
      case 6: {
        Say(ack, Verdict::Unclear);
        const Bytes frame = input_.Frame();
        last_.insert(last_.end(), frame.begin(), frame.end());
        break;
      }
      default:  // the answer before once more
        verdict_ = Verdict::Unclear;
        break;
    }
  }
  InputReader input_;
  Bytes last_;
  Verdict verdict_ = Verdict::Unclear;
  int acks_to_come_ = 0;
};

Waypoint NumberedWaypoint(int number) {
  Waypoint waypoint;
  waypoint.ident = "W" + std::to_string(number);
  waypoint.lat_deg = 35 + number / 10.0;
  waypoint.lon_deg = 139.5;
  return waypoint;
}

DataSet FilledData() {
  DataSet data;
  Route route{RouteHeaderType::D202, 3, "ROUTE", {}};
  TrackLog log;
  log.trk_ident = "LOG";
  for (int p = 0; p < PointCount; ++p) {
    static_cast<void>(data.Add(NumberedWaypoint(p + 1)));
    route.points.push_back({NumberedWaypoint(p), {}});
  }
  static_cast<void>(data.Begin(std::move(route)));
  static_cast<void>(data.Begin(std::move(log)));
  for (int p = 0; p < PointCount; ++p) {
    TrackPoint point;
    point.lat_deg = 35 + p / 10.0;
    point.lon_deg = 139.5;
    point.new_trk = p == 0;
    static_cast<void>(data.Add(point));
  }
  return data;
}

/// What an upload of a kind sends: ids, and what the data begin with or where they have a position or a text.
struct Expected {
  int id;
  Bytes data;              ///< the whole data, or empty
  std::size_t lat_at = 0;  ///< where a latitude of 35 degrees and number tenths stands; 0 also where there is none
  int number = -1;
  std::size_t text_at = 0;
  std::string text;  ///< ends with a zero byte, a blank, or the data
};

bool TextStands(const Bytes& data, std::size_t at, const std::string& text) {
  if (data.size() < at + text.size()) return false;
  const auto begin = data.begin() + static_cast<std::ptrdiff_t>(at);
  const auto end = begin + static_cast<std::ptrdiff_t>(text.size());
  return std::equal(text.begin(), text.end(), begin) && (end == data.end() || *end == 0 || *end == ' ');
}

/// Within a millionth of a degree of 35 degrees and so many tenths north, 139.5 degrees east.
bool PositionStands(const Bytes& data, std::size_t at, int tenths) {
  if (data.size() < at + 8) return false;
  const auto degrees = [&](std::size_t from) {
    std::uint32_t bits = 0;
    for (std::size_t i = 4; i-- > 0;)
      bits = bits * 256 + data[from + i];
    return static_cast<double>(static_cast<std::int32_t>(bits)) * 180.0 / 2147483648.0;
  };
  return std::abs(degrees(at) - (35 + tenths / 10.0)) < 1e-6 && std::abs(degrees(at + 4) - 139.5) < 1e-6;
}

bool Matches(const PlainPacket& packet, const Expected& expected) {
  if (packet.id != expected.id) return false;
  if (!expected.data.empty() && packet.data != expected.data) return false;
  if (expected.number >= 0 && !PositionStands(packet.data, expected.lat_at, expected.number)) return false;
  return TextStands(packet.data, expected.text_at, expected.text) || expected.text.empty();
}

/// A waypoint of these receivers: D108 alone has its name behind the position.
Expected ExpectedWaypoint(int id, int number, const DeviceProtocols& types) {
  const bool d108 = types.waypoint == WaypointType::D108;
  return {id, {}, d108 ? 24U : 6U, number, d108 ? 48U : 0U, "W" + std::to_string(number)};
}

std::vector<Expected> ExpectedRecords(DataKind kind, const DeviceProtocols& types) {
  const bool rich = types.waypoint == WaypointType::D108;
  std::vector<Expected> records;
  if (kind == DataKind::Waypoint) {
    for (int i = 1; i <= PointCount; ++i)
      records.push_back(ExpectedWaypoint(35, i, types));
  } else if (kind == DataKind::Route) {
    records.push_back({29, {}, 0, -1, rich ? 0U : 1U, "ROUTE"});
    for (int p = 0; p < PointCount; ++p) {
      records.push_back(ExpectedWaypoint(30, p, types));
      if (rich) records.push_back({98, {}, 0, -1, 0, ""});
    }
  } else {
    if (rich) records.push_back({99, {}, 0, -1, 2, "LOG"});
    for (int p = 0; p < PointCount; ++p)
      records.push_back({34, {}, 0, p, 0, ""});
  }
  return records;
}

/// All packets of an upload to its good end.
std::vector<Expected> ExpectedPackets(DataKind kind, const DeviceProtocols& types) {
  const int command = kind == DataKind::Waypoint ? 7 : kind == DataKind::Route ? 4 : 6;
  std::vector<Expected> packets = ExpectedRecords(kind, types);
  packets.insert(packets.begin(), {27, Int16(static_cast<int>(packets.size())), 0, -1, 0, ""});
  packets.push_back({12, Int16(command), 0, -1, 0, ""});
  return packets;
}

/// What was sent is the beginning of what was to be sent, or all of it; behind a part of it may stand an abort.
void CheckSent(const std::vector<SentPacket>& sent, const std::vector<Expected>& expected, std::size_t most_tries) {
  std::size_t matching = 0;
  while (matching < std::min(sent.size(), expected.size()) && Matches(sent[matching].packet, expected[matching]))
    ++matching;
  const PlainPacket abort{10, Int16(0)};
  const bool aborted =
      matching > 0 && matching < expected.size() && sent.size() == matching + 1 && sent[matching].packet == abort;
  if (matching == 0 || (!aborted && sent.size() != matching)) std::abort();
  for (const SentPacket& one : sent) {
    if (one.verdicts.size() > most_tries) std::abort();
  }
}

/// Of an upload that went as it should: everything went out, and its end is told as it was answered.
void CheckEnd(const std::vector<SentPacket>& sent, std::size_t expected, bool end_refused) {
  if (sent.size() != expected) std::abort();
  if (sent.back().Always(Verdict::Taken) && end_refused) std::abort();
  if (sent.back().Always(Verdict::NotTaken) && !end_refused) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const DataSet held = FilledData();
  InputReader input(std::span(bytes, size));
  const TransferChoice choice(input.Byte());
  DeviceWorld world;
  world.data = held;
  world.Meet(choice.description, choice.link);
  AnyReceiver receiver(input);
  world.port.script = [&receiver](const Bytes& frame) { return receiver.Answer(frame); };

  const std::vector<Expected> expected = ExpectedPackets(choice.kind, world.garmin.Protocols());
  const auto records = static_cast<std::int32_t>(expected.size() - 2);
  try {
    const std::int32_t result = world.Upload(choice.kind);
    if (result < 0 && result != TransferGivenUp && result != TransferTimedOut) std::abort();
    if (result > 0 && result != records) std::abort();
    if (!world.garmin.Report().unsendable.empty()) std::abort();
    if (result == records) CheckEnd(receiver.sent, expected.size(), world.garmin.Report().end_refused);
    const bool all_taken = std::all_of(receiver.sent.begin(), receiver.sent.end(),
                                       [](const SentPacket& one) { return one.Always(Verdict::Taken); });
    if (all_taken && result != records) std::abort();
  } catch (const std::exception&) {
    // Too many frames, or one that does not end.
  }
  CheckSent(receiver.sent, expected, choice.link == LinkChoice::Checked ? MostTries : 1);
  // Whatever comes unasked is acknowledged.
  const auto sent = std::count_if(world.port.sent.begin(), world.port.sent.end(),
                                  [](const Bytes& wire) { return wire.at(1) != PacketId::Ack; });
  if (world.port.PortOpen() || world.port.opened != 1 || static_cast<std::size_t>(sent) > MostSent) std::abort();
  for (const DataKind kind : AllDataKinds) {
    if (!SameRecords(world.data, held, kind)) std::abort();
  }
  return 0;
}
