// A receiver that answers anything: a download of each kind ends with the port closed and with data that can be
// written.
//
// The first byte chooses the kind (two bits), the receiver's types (two bits), the mode (three bits: 7 counts only) and
// the link (one bit: checked). The rest is a list of
// answers, one for each frame that the host sends, each begun by a byte whose low three bits choose its form:
//   0            none
//   1 n bytes    bytes that are no frame
//   2 id n data  an ACK, and a frame
//   3 id n data  a frame
//   4 n data     a record of the kind, chosen by the high bits of the form
//   5            the end of the transfer
//   6 lo hi      an ACK, and the number of records
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
#include "text/Utf8.h"

using namespace walrim;

namespace {

/// After this many turns of the event loop the user has had enough.
constexpr int MostYields = 3000;

constexpr std::array<std::string_view, 4> Descriptions{"GPS 12 Software", "GPS III Software", "GPS 12CX Software",
                                                       "eTrex Software"};

/// Takes an input apart; what is not there is 0 or empty.
class InputReader {
 public:
  explicit InputReader(std::span<const std::uint8_t> input) : input_(input) {}

  [[nodiscard]] bool AtEnd() const { return input_.empty(); }
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_[0];
    input_ = input_.subspan(1);
    return byte;
  }
  /// Bytes behind their number.
  Bytes Counted() {
    const std::size_t wanted = Byte();
    const std::size_t size = std::min(wanted, input_.size());
    const auto bytes = input_.first(size);
    input_ = input_.subspan(size);
    return {bytes.begin(), bytes.end()};
  }

 private:
  std::span<const std::uint8_t> input_;
};

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
        last_ = WireFrame(Pid_Ack_Byte, Int16(host_id));
        AppendFrame(input_.Byte());
        break;
      case 3:
        last_.clear();
        AppendFrame(input_.Byte());
        break;
      case 4:
        last_.clear();
        AppendFrame(RecordId(form / 8));
        break;
      case 5:
        last_ = WireFrame(12, Int16(0));
        break;
      case 6:
        last_ = WireFrame(Pid_Ack_Byte, Int16(host_id));
        Append(WireFrame(27, {input_.Byte(), input_.Byte()}));
        break;
      default:
        break;
    }
  }
  [[nodiscard]] int RecordId(int choice) const {
    switch (kind_) {
      case DataKind::Waypoint:
        return 35;
      case DataKind::Route:
        return std::array{29, 30, 98}[static_cast<std::size_t>(choice % 3)];
      case DataKind::TrackLog:
        return std::array{34, 99}[static_cast<std::size_t>(choice % 2)];
    }
    return 0;
  }
  void AppendFrame(int id) { Append(WireFrame(id, input_.Counted())); }
  void Append(const Bytes& bytes) { last_.insert(last_.end(), bytes.begin(), bytes.end()); }

  InputReader input_;
  DataKind kind_;
  Bytes last_;
};

/// Writes what was downloaded, in the text of the standard file.
void CheckWritable(InternalData& data, DataKind kind) {
  static const NameTablesByType names;
  StandardWriter writer(data, names, {});
  std::string text;
  writer.AppendKind(text, kind, true);
  if (!IsValidUtf8(text)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const auto data = std::make_unique<InternalData>();
  InputReader input(std::span(bytes, size));
  const std::uint8_t choice = input.Byte();
  const DataKind kind = AllDataKinds[choice % 4U % AllDataKinds.size()];
  const TransferMode mode = choice / 16 % 8 == 7 ? TransferMode::CountOnly : TransferMode::Transfer;

  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin(*data, port, clock, loop, desktop);
  garmin.session.checked_link = choice >= 128;
  garmin.SetDefaultProtocols();
  ChooseProtocols(Descriptions[choice / 4 % Descriptions.size()], garmin.session.protocols);
  loop.on_yield = [&] {
    if (loop.yields >= MostYields) garmin.session.TransferAborted = true;
  };
  AnyReceiver receiver(input, kind);
  port.script = [&receiver](const Bytes& frame) { return receiver.Answer(frame); };

  bool stored = mode == TransferMode::Transfer;
  try {
    const std::int32_t result = garmin.Download(kind, "1", mode);
    if (result < 0 && result != TransferGivenUp && result != TransferTimedOut) std::abort();
    if (result < 0) data->Clear(kind);
    stored = stored && result > 0;
  } catch (const std::exception&) {
    data->Clear(kind);
    stored = false;
  }
  if (port.PortOpen() || port.opened != 1) std::abort();
  CheckWritable(*data, kind);
  if (stored) data->Clear(kind);
  return 0;
}
