// Whatever comes over the line, an exchange on the checked link ends: with whole frames, failed after three tries, or
// with std::out_of_range. And data of any bytes come back as they were, also behind noise.
//
// The first byte tells what is sent (its lowest bit) and how the bytes come: so many at a time, a millisecond apart.
// The rest is the line, cut by bytes FEh: each piece answers one packet.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <vector>

#include "device/CheckedFrameReader.h"
#include "device/PacketLink.h"
#include "support/Fakes.h"

using namespace walrim;

namespace {

using std::chrono::milliseconds;
using Found = CheckedFrameReader::Found;

constexpr std::uint8_t PieceEnd = 0xFE;
constexpr std::size_t MostSent = 3;
constexpr int TrackPointId = 34;

/// The pieces of the line, one for each packet that is sent.
class PiecewiseLine {
 public:
  PiecewiseLine(std::span<const std::uint8_t> line, std::size_t step) : line_(line), step_(step) {}

  std::vector<ScriptedPort::Answer> Next() {
    const auto end = std::find(line_.begin(), line_.end(), PieceEnd);
    const auto size = static_cast<std::size_t>(end - line_.begin());
    std::vector<ScriptedPort::Answer> answers;
    milliseconds delay{};
    for (std::size_t from = 0; from < size; from += step_) {
      const auto part = line_.subspan(from, std::min(step_, size - from));
      answers.push_back({++delay, {part.begin(), part.end()}});
    }
    line_ = line_.subspan(std::min(size + 1, line_.size()));
    return answers;
  }
  [[nodiscard]] bool AtEnd() const { return line_.empty(); }

 private:
  std::span<const std::uint8_t> line_;
  std::size_t step_;
};

/// Sound by its own bytes.
void CheckWhole(const Frame& frame) {
  const std::size_t size = frame.bytes[2];
  unsigned sum = 0;
  for (std::size_t i = 1; i <= size + 3; ++i)
    sum += frame.bytes[i];
  if (sum % 256 != 0 || static_cast<std::size_t>(frame.Size) != size + 6) std::abort();
}

void CheckReply(const PacketReply& reply, ExpectedAnswer answer) {
  if (reply.Count == ReceiveTimeout) return;
  if (reply.Count < 1 || reply.Count > PacketReply::LastSlot) std::abort();
  for (int k = 1; k <= reply.Count; ++k) {
    const Frame& frame = reply.Slot(k);
    // Only an ACK in front of its answer may be damaged.
    if (!frame.damaged)
      CheckWhole(frame);
    else if (answer != ExpectedAnswer::AckAndAnswer || frame.Id() != Pid_Ack_Byte)
      std::abort();
  }
}

void RunExchanges(std::span<const std::uint8_t> bytes, std::size_t step, ExpectedAnswer answer) {
  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  DeviceSession session;
  PacketLink link(port, clock, loop, session);
  std::string settings;
  if (!link.OpenPort("1", settings)) std::abort();
  PiecewiseLine line(bytes, step);
  port.script = [&line](const Bytes&) { return line.Next(); };
  do {
    port.sent.clear();
    try {
      CheckReply(link.ExchangeChecked(10, IntegerToBuffer(7), answer), answer);
    } catch (const std::out_of_range&) {
      link.DrainInput();
    }
    if (port.sent.size() > MostSent) std::abort();
  } while (!line.AtEnd());
}

/// A frame of these data behind noise without a DLE is found at its last byte, whole.
void CheckRoundTrip(std::span<const std::uint8_t> bytes) {
  const auto data = bytes.first(std::min<std::size_t>(bytes.size(), 255));
  ByteBuffer sent;
  std::copy(data.begin(), data.end(), sent.bytes.begin());
  sent.Size = static_cast<std::int16_t>(data.size());
  Bytes line;
  for (const std::uint8_t byte : data)
    if (byte != DLE) line.push_back(byte);
  const Bytes frame = FrameOnWire(TrackPointId, sent);
  line.insert(line.end(), frame.begin(), frame.end());
  CheckedFrameReader reader;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Found found = reader.Take(line[i]);
    if (found != (i + 1 == line.size() ? Found::WholeFrame : Found::Nothing)) std::abort();
  }
  CheckWhole(reader.Last());
  if (!std::equal(data.begin(), data.end(), reader.Last().bytes.begin() + 3)) std::abort();
  if (reader.Skipped() + frame.size() != line.size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> input(data, size);
  if (input.empty()) return 0;
  const auto answer = input[0] % 2 == 0 ? ExpectedAnswer::OneFrame : ExpectedAnswer::AckAndAnswer;
  RunExchanges(input.subspan(1), input[0] / 2U + 1U, answer);
  CheckRoundTrip(input.subspan(1));
  return 0;
}
