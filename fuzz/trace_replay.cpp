// A trace as a user sends it. Whatever it says, the replay sends no byte that is not in it, takes the host that it was
// taken of to its end, and hiding its positions leaves whole frames whole and all others not.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "device/PositionHiding.h"
#include "receiver/TraceReplay.h"

using namespace walrim;

namespace {

using Kind = TraceStep::Kind;

/// Whether bytes end one frame with their last byte, and none before.
bool OnePacket(const std::vector<std::uint8_t>& bytes, bool intact) {
  LineFrameReader reader;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto frame = reader.Take(bytes[i]);
    if (frame) return i + 1 == bytes.size() && (!intact || frame->intact);
  }
  return false;
}

std::size_t SentUpTo(TraceReplay& replay, std::chrono::nanoseconds& now) {
  std::size_t sent = 0;
  for (auto due = replay.NextDue(); due && !replay.LineClosed(); due = replay.NextDue()) {
    if (*due < now) std::abort();
    now = *due;
    sent += replay.Send(now).size();
  }
  return sent;
}

void Play(const std::vector<TraceStep>& steps) {
  constexpr std::size_t longest_packet = 500;
  TraceReplay replay(steps);
  std::chrono::nanoseconds now{};
  std::size_t in_trace = 0;
  std::size_t sent = 0;
  bool lost = false;
  bool packets = true;
  for (const TraceStep& step : steps) {
    if (step.kind == Kind::ReceiverSends) in_trace += step.bytes.size();
    lost = lost || step.kind == Kind::LineLost;
    if (step.kind != Kind::HostSends) continue;
    packets = packets && step.bytes.size() < longest_packet && OnePacket(step.bytes, false);
    replay.Receive(step.bytes, now);
    sent += SentUpTo(replay, now);
  }
  if (sent > in_trace) std::abort();
  if (packets && !lost && (sent != in_trace || !replay.Problem().empty())) std::abort();
}

void Hide(const std::vector<TraceStep>& steps) {
  PositionHiding hiding;
  for (const TraceStep& step : steps) {
    const std::vector<std::uint8_t> hidden = hiding.Hide(step.bytes);
    if (OnePacket(hidden, true) && !OnePacket(step.bytes, true)) std::abort();
    if (hidden.size() > 2 * step.bytes.size()) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const TraceReading reading = ReadTrace({reinterpret_cast<const char*>(data), size});
  if (reading.problem.empty() == reading.steps.empty()) std::abort();
  if (!reading.problem.empty()) return 0;
  Play(reading.steps);
  Hide(reading.steps);
  return 0;
}
