// Whatever comes over the line, receiving ends: with frames, with a time-out, or with std::out_of_range. And what the
// link sends, it receives again.
//
// The first byte tells how many bytes come at a time, the second the milliseconds between; the rest is on the line.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <string_view>

#include "device/PacketLink.h"
#include "support/Fakes.h"

using namespace walrim;

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr int TrackPointId = 34;

/// Bytes that come a few at a time, the first of them at once. Time passes in Wait alone.
class DribblingPort : public SerialPort {
 public:
  DribblingPort(FakeClock& clock, std::span<const std::uint8_t> line, std::size_t step, milliseconds gap)
      : clock_(clock), line_(line), step_(step), gap_(gap), due_(clock.now) {}

  [[nodiscard]] PortResult Open(std::string_view, int) override { return {}; }
  [[nodiscard]] bool PortOpen() const override { return true; }
  void Close() override {}
  [[nodiscard]] std::size_t InBufferCount() override {
    while (come_ < line_.size() && due_ <= clock_.now) {
      come_ = std::min(come_ + step_, line_.size());
      due_ += gap_;
    }
    return come_ - taken_;
  }
  void ClearInBuffer() override { taken_ = come_; }
  [[nodiscard]] std::optional<std::uint8_t> Input() override {
    if (InBufferCount() == 0) return std::nullopt;
    return line_[taken_++];
  }
  void Output(std::uint8_t byte) override { sent.push_back(byte); }
  [[nodiscard]] std::size_t OutBufferCount() override { return 0; }
  void ClearOutBuffer() override {}
  void Wait(milliseconds at_most) override {
    // A wait of no time would go on for ever.
    if (at_most.count() <= 0) std::abort();
    nanoseconds rest = at_most;
    if (come_ < line_.size() && due_ > clock_.now) rest = std::min(rest, due_ - clock_.now);
    clock_.Advance(rest);
  }
  [[nodiscard]] bool LineLost() const override { return false; }

  Bytes sent;

 private:
  FakeClock& clock_;
  std::span<const std::uint8_t> line_;
  std::size_t step_;
  nanoseconds gap_;
  nanoseconds due_;
  std::size_t come_ = 0;
  std::size_t taken_ = 0;
};

/// A link on such a line.
struct Line {
  Line(std::span<const std::uint8_t> bytes, std::size_t step, milliseconds gap) : port(clock, bytes, step, gap) {}

  FakeClock clock;
  DribblingPort port;
  FakeEventLoop loop;
  StopFlags stop;
  PacketLink link{port, clock, loop, stop};
};

void CheckFrame(const Frame& frame) {
  if (frame.bytes[2] + 6 != frame.size) std::abort();
  if (PacketData(frame).size() != frame.bytes[2]) std::abort();
}

/// Receives until the line is silent.
void ReceiveAll(std::span<const std::uint8_t> bytes, std::size_t step, milliseconds gap) {
  Line line(bytes, step, gap);
  while (true) {
    try {
      PacketReply reply;
      line.link.ReceiveMore(reply);
      if (reply.count == ReceiveTimeout) return;
      if (reply.count < 1 || reply.count > PacketReply::LastSlot) std::abort();
      for (int k = 1; k <= reply.count; ++k)
        CheckFrame(reply.Slot(k));
    } catch (const std::out_of_range&) {
      // What has come is dropped, as before the next exchange.
      line.port.ClearInBuffer();
    }
  }
}

/// Whether the end of a frame can be told from its data: not where 10h is followed by 03h.
bool EndsOnlyAtItsEnd(int id, std::span<const std::uint8_t> data) {
  Bytes stored{static_cast<std::uint8_t>(data.size())};
  unsigned sum = static_cast<unsigned>(id) + stored[0];
  for (const std::uint8_t byte : data) {
    stored.push_back(byte);
    sum += byte;
  }
  stored.push_back(static_cast<std::uint8_t>(0x100 - (sum & 0xFF)));
  constexpr std::uint8_t end[] = {0x10, 0x03};
  return std::search(stored.begin(), stored.end(), std::begin(end), std::end(end)) == stored.end();
}

void CheckRoundTrip(std::span<const std::uint8_t> data, std::size_t step, milliseconds gap) {
  if (!EndsOnlyAtItsEnd(TrackPointId, data)) return;
  Line sender({}, step, gap);
  sender.link.SendPacket(TrackPointId, data);

  // What takes longer is no answer any more.
  const auto pieces = static_cast<std::int64_t>(sender.port.sent.size() / step + 1);
  if (gap * pieces > LongestExchange) return;

  Line receiver(sender.port.sent, step, gap);
  const Frame frame = receiver.link.ReceivePacket();
  if (frame.damaged || frame.Id() != TrackPointId || static_cast<std::size_t>(frame.size) != data.size() + 6)
    std::abort();
  const auto received = PacketData(frame);
  if (!std::equal(data.begin(), data.end(), received.begin(), received.end())) std::abort();
  if (receiver.port.InBufferCount() != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> input(data, size);
  if (input.size() < 2) return 0;
  const std::size_t step = input[0] + 1U;
  const milliseconds gap{input[1] % 64};
  const auto line = input.subspan(2);
  ReceiveAll(line, step, gap);
  CheckRoundTrip(line.first(std::min(line.size(), LongestSentData)), step, gap);
  return 0;
}
