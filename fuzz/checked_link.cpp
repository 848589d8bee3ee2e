// Whatever comes over the line, an exchange on the checked link ends within a minute, or once no frame was found in as
// many bytes as are waited for, and a cancelled one within seconds: with whole frames, failed after three tries, or
// with std::out_of_range. And data of any bytes come back as they were, also behind noise.
//
// The first byte tells what answer is waited for (its lowest two bits; 3: the next record, cancelled) and how the bytes
// come: so many at a time, a millisecond apart (the next five bits), and with the high bit the last piece again and
// again, unasked. The rest is the line, cut by bytes FEh: each piece answers one packet that is no ACK.
#include <algorithm>
#include <array>
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
/// Of the packet and the NAKs of an exchange; any number of frames that came unasked is acknowledged.
constexpr std::size_t MostSent = 3;
constexpr int TrackPointId = 34;
/// More exchanges than this in one input find nothing new and take their time.
constexpr int MostExchanges = 8;
constexpr std::chrono::seconds LongestExchange{60};
constexpr std::chrono::seconds LongestCancelled{5};
constexpr milliseconds RepeatTime{200};
constexpr std::array Answers{ExpectedAnswer::OneFrame, ExpectedAnswer::AckAndAnswer, ExpectedAnswer::Ack,
                             ExpectedAnswer::OneFrame};
constexpr unsigned CancelledAnswer = 3;

bool IsAck(const Bytes& sent) {
  return sent.at(1) == PacketId::Ack;
}

/// The pieces of the line, one for each packet that is sent and no ACK.
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
    last_.assign(line_.begin(), end);
    line_ = line_.subspan(std::min(size + 1, line_.size()));
    return answers;
  }
  [[nodiscard]] bool AtEnd() const { return line_.empty(); }
  /// The piece that came last.
  [[nodiscard]] const Bytes& Last() const { return last_; }

 private:
  std::span<const std::uint8_t> line_;
  std::size_t step_;
  Bytes last_;
};

/// Sound by its own bytes.
void CheckWhole(const Frame& frame) {
  const std::size_t size = frame.bytes[2];
  unsigned sum = 0;
  for (std::size_t i = 1; i <= size + 3; ++i)
    sum += frame.bytes[i];
  if (sum % 256 != 0 || static_cast<std::size_t>(frame.size) != size + 6) std::abort();
}

void CheckReply(const PacketReply& reply, ExpectedAnswer answer) {
  if (reply.count == ReceiveTimeout) return;
  if (reply.count < 1 || reply.count > PacketReply::LastSlot) std::abort();
  for (int k = 1; k <= reply.count; ++k) {
    const Frame& frame = reply.Slot(k);
    // Only an ACK may be damaged.
    if (!frame.damaged)
      CheckWhole(frame);
    else if (answer == ExpectedAnswer::OneFrame || frame.Id() != PacketId::Ack)
      std::abort();
  }
}

struct Manner {
  bool endless = false;
  bool cancelled = false;
};

/// Of an exchange. A trickle without a frame is listened to for as long as its bytes could still become one.
std::chrono::nanoseconds LongestTime(const Manner& manner, std::size_t piece_size) {
  if (manner.cancelled) return LongestCancelled;
  if (!manner.endless || piece_size == 0) return LongestExchange;
  return LongestExchange + RepeatTime * (CheckedFrameReader::MostPending / piece_size);
}

void RunExchanges(std::span<const std::uint8_t> bytes, std::size_t step, ExpectedAnswer answer, Manner manner) {
  FakeClock clock;
  ScriptedPort port(clock);
  FakeEventLoop loop;
  const StopFlags stop{.aborted = manner.cancelled};
  PacketLink link(port, clock, loop, stop);
  if (!link.OpenPort("1")) std::abort();
  PiecewiseLine line(bytes, step);
  port.script = [&line](const Bytes& sent) { return IsAck(sent) ? std::vector<ScriptedPort::Answer>{} : line.Next(); };
  std::chrono::nanoseconds exchange_began{};
  std::chrono::nanoseconds next_repeat{};
  loop.on_yield = [&] {
    if (clock.now - exchange_began > LongestTime(manner, line.Last().size())) std::abort();
    if (!manner.endless || !line.AtEnd() || clock.now < next_repeat) return;
    next_repeat = clock.now + RepeatTime;
    port.Queue({}, line.Last());
  };
  for (int exchange = 0; exchange < MostExchanges && (exchange == 0 || !line.AtEnd()); ++exchange) {
    port.sent.clear();
    exchange_began = clock.now;
    try {
      CheckReply(link.ExchangeChecked(10, NumberData(7), answer), answer);
    } catch (const std::out_of_range&) {
      link.DrainInput();
    }
    const bool too_long = clock.now - exchange_began > LongestTime(manner, line.Last().size());
    const auto tries =
        std::count_if(port.sent.begin(), port.sent.end(), [](const Bytes& sent) { return !IsAck(sent); });
    if (static_cast<std::size_t>(tries) > MostSent || too_long) std::abort();
  }
}

/// A frame of these data behind noise without a DLE is found at its last byte, whole.
void CheckRoundTrip(std::span<const std::uint8_t> bytes) {
  const auto data = bytes.first(std::min<std::size_t>(bytes.size(), 255));
  Bytes line;
  for (const std::uint8_t byte : data)
    if (byte != DLE) line.push_back(byte);
  const Bytes frame = FrameOnWire(TrackPointId, data);
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
  const ExpectedAnswer answer = Answers[input[0] % Answers.size()];
  const std::size_t step = 1U + 2U * (input[0] / 4U % 32U);
  RunExchanges(input.subspan(1), step, answer, {input[0] >= 128, input[0] % Answers.size() == CancelledAnswer});
  CheckRoundTrip(input.subspan(1));
  return 0;
}
