// A receiver that answers anything: a download of each kind ends with the port closed and with data that can be
// packets for any receiver.
//
// The first byte is a TransferChoice, and chooses the mode (the three bits in the middle: 7 counts only). The rest is a
// list of answers, one for each frame that the host sends, each begun by a byte whose low three bits choose its form:
//   0            none
//   1 n bytes    bytes that are no frame
//   2 id n data  an ACK, and a frame
//   3 id n data  a frame
//   4 n data     a record of the kind, chosen by the high bits of the form
//   5            the end of the transfer
//   6 lo hi      an ACK, and the number of records
//   7            the answer before once more
// Once the list is at its end the receiver is silent.
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <span>
#include <vector>

#include "device/OutgoingRecords.h"
#include "transfer_input.h"

using namespace walrim;

namespace {

/// After this many turns of the event loop the user has had enough.
constexpr int MostYields = 200;

/// The receiver's side of the line.
class AnyReceiver {
 public:
  AnyReceiver(InputReader input, DataKind kind) : input_(input), kind_(kind) {}

  std::vector<ScriptedPort::Answer> Answer(const Bytes& frame) {
    if (input_.AtEnd()) return {};
    NextAnswer(frame.at(1));
    return {{std::chrono::milliseconds{2}, last_}};
  }

 private:
  void NextAnswer(std::uint8_t host_id) {
    const std::uint8_t form = input_.Byte();
    switch (form % 8) {
      case 0:
        last_.clear();
        break;
      case 1:
        last_ = input_.Counted();
        break;
      case 2:
        last_ = WireFrame(PacketId::Ack, Int16(host_id));
        AppendFrame(input_.Byte());
        break;
      case 3:
        last_.clear();
        AppendFrame(input_.Byte());
        break;
      case 4:
        last_.clear();
        AppendFrame(RecordId(kind_, form / 8));
        break;
      case 5:
        last_ = WireFrame(12, Int16(0));
        break;
      case 6:
        last_ = WireFrame(PacketId::Ack, Int16(host_id));
        Append(WireFrame(27, {input_.Byte(), input_.Byte()}));
        break;
      default:
        break;
    }
  }
  void AppendFrame(int id) { Append(WireFrame(id, input_.Counted())); }
  void Append(const Bytes& bytes) { last_.insert(last_.end(), bytes.begin(), bytes.end()); }

  InputReader input_;
  DataKind kind_;
  Bytes last_;
};

/// Whatever has come is packets of a size that can be sent.
void RequirePackets(const DataSet& data, DataKind kind) {
  for (const std::string_view description : Descriptions) {
    TransferReport report;
    for (const OutgoingPacket& packet : OutgoingRecordsOf(data, kind, ProtocolsOf(description), report).packets) {
      if (packet.data.size() > LongestSentData) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  InputReader input(std::span(bytes, size));
  const std::uint8_t first = input.Byte();
  const TransferChoice choice(first);
  const TransferMode mode = first / 16 % 8 == 7 ? TransferMode::CountOnly : TransferMode::Transfer;
  DeviceWorld world;
  world.Meet(choice.description, choice.link);
  world.loop.on_yield = [&world] {
    if (world.loop.yields >= MostYields) world.garmin.Cancel();
  };
  AnyReceiver receiver(input, choice.kind);
  world.port.script = [&receiver](const Bytes& frame) { return receiver.Answer(frame); };
  try {
    const std::int32_t result = world.garmin.Download(world.data, choice.kind, "1", mode);
    if (result < 0 && result != TransferGivenUp && result != TransferTimedOut) std::abort();
  } catch (const std::exception&) {
    // Too many frames or records, or one that does not end.
  }
  RequireSound(world.data);
  RequirePackets(world.data, choice.kind);
  if (world.port.PortOpen() || world.port.opened != 1) std::abort();
  return 0;
}
