// Whoever answers the product request, and with what: identification ends with the port closed, and with the types of
// the model that its description names.
//
// The first byte chooses the link, or lets it be chosen. The rest is a list of frames: id, number of data bytes, data.
// The last one may be cut short. An id of 0 stands for bytes on the line that are no frame.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <stdexcept>

#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

/// Of a packet on the checked link. Any number of frames is acknowledged.
constexpr std::size_t MostTries = 3;
constexpr int Ack = 6;

Bytes WireBytes(std::span<const std::uint8_t> input) {
  Bytes wire;
  while (input.size() >= 2) {
    const int id = input[0];
    const std::size_t size = std::min<std::size_t>(input[1], input.size() - 2);
    const auto content = input.subspan(2, size);
    const Bytes data(content.begin(), content.end());
    const Bytes bytes = id == 0 ? data : WireFrame(id, data);
    wire.insert(wire.end(), bytes.begin(), bytes.end());
    input = input.subspan(2 + size);
  }
  return wire;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin(port, clock, loop, desktop);
  const std::span<const std::uint8_t> input(bytes, size);
  constexpr std::array choices{LinkChoice::Plain, LinkChoice::Checked, LinkChoice::Automatic};
  const LinkChoice choice = choices[input.empty() ? 0 : input[0] % choices.size()];
  garmin.SetLinkChoice(choice);
  // The request is repeated once.
  const std::size_t most_sent = 2 * (choice == LinkChoice::Checked ? MostTries : 1);
  const Bytes answer = WireBytes(input.subspan(std::min<std::size_t>(1, size)));
  port.script = [&answer](const Bytes& sent) {
    if (sent.at(1) == Ack) return std::vector<ScriptedPort::Answer>{};
    return std::vector<ScriptedPort::Answer>{{std::chrono::milliseconds{2}, answer}};
  };
  DeviceProtocols expected = RichestProtocols;
  try {
    const ProductInfo info = garmin.ConnectDevice("1");
    if (!info.description.empty()) expected = ProtocolsOf(info.description);
    if (info.product_id > 0 && !IsValidUtf8(info.description)) std::abort();
  } catch (const std::out_of_range&) {
    // Too many frames, or one that does not end.
  }
  if (garmin.Protocols() != expected) std::abort();
  const auto asked =
      std::count_if(port.sent.begin(), port.sent.end(), [](const Bytes& sent) { return sent.at(1) != Ack; });
  if (port.PortOpen() || port.sent.empty() || static_cast<std::size_t>(asked) > most_sent) std::abort();
  return 0;
}
