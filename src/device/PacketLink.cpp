#include "device/PacketLink.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "device/CheckedExchange.h"
#include "device/CheckedFrameReader.h"
#include "device/CheckedInput.h"

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr milliseconds PollTime{2};
/// How often the event loop runs while an answer is waited for.
constexpr milliseconds YieldInterval{10};
/// More bytes than a burst of five frames can have.
constexpr std::size_t LongestBurst = 5 * 2 * Frame::LongestCapacity;
/// How long an output buffer may stand still before it is taken for stuck.
constexpr milliseconds OutputStallTime{3000};

}  // namespace

int FindAckSlot(const PacketReply& reply) {
  for (int k = 1; k <= reply.count; ++k) {
    if (reply.Slot(k).Id() == PacketId::Ack) return k;
  }
  return -1;
}

/// Puts the bytes of one frame together.
class PacketLink::FrameBuilder {
 public:
  /// Takes the next byte; true when it ended the frame.
  bool Take(std::uint8_t byte) {
    if (byte == DLE && after_dle_) {  // the second half of a doubled byte
      after_dle_ = false;
      return false;
    }
    if (length_ >= CapacityNow()) throw std::out_of_range("received frame too long");
    frame_.bytes[length_] = byte;
    after_dle_ = byte == DLE;
    // Only the stored bytes are looked at: a data byte 10h followed by 03h ends the frame too.
    const bool ended = length_ > 0 && frame_.bytes[length_ - 1] == DLE && byte == ETX;
    ++length_;
    return ended;
  }

  /// The frame, with size and damage noted; call once Take has told the end.
  Frame Finish() {
    frame_.size = static_cast<std::int16_t>(frame_.bytes[2] + 6);
    frame_.damaged = !Mark().empty();
    return frame_;
  }

  [[nodiscard]] std::string_view Mark() const {
    const std::size_t size = frame_.bytes[2];
    if (length_ != size + 6) return "length";
    const auto sum = FrameChecksum(std::span(frame_.bytes).subspan(1, 2 + size));
    return sum == frame_.bytes[3 + size] ? std::string_view{} : "checksum";
  }

 private:
  [[nodiscard]] std::size_t CapacityNow() const {
    return length_ > 2 ? std::max<std::size_t>(Frame::Capacity, frame_.bytes[2] + 6U) : Frame::Capacity;
  }

  Frame frame_;
  std::size_t length_ = 0;
  bool after_dle_ = false;
};

void PacketLink::SetTrace(FrameTrace* trace) {
  trace_ = trace;
  trace_start_ = clock_.Monotonic();
}

void PacketLink::Note(std::string_view text) {
  if (trace_ != nullptr) trace_->Note(TraceTime(), text);
}

bool PacketLink::OpenPort(std::string_view port_name) {
  last_port_result_ = port_.Open(port_name, LineBaud);
  if (!last_port_result_.Ok()) {
    Note("port " + std::string(port_name) + " cannot be opened");
    return false;
  }
  port_.ClearOutBuffer();
  port_.ClearInBuffer();
  burst_frames_ = 0;
  deadline_ = nanoseconds::max();
  Note("port " + std::string(port_name) + " open, " + std::to_string(LineBaud) + ",N,8,1");
  return true;
}

bool PacketLink::ProbePort(std::string_view port_name) {
  last_port_result_ = port_.Open(port_name, LineBaud);
  if (!last_port_result_.Ok()) {
    Note("port " + std::string(port_name) + " cannot be opened");
    return false;
  }
  port_.Close();
  return true;
}

void PacketLink::ClosePort() {
  if (!port_.PortOpen()) return;
  port_.Close();
  Note("port closed");
}

void PacketLink::SendPacket(int packet_id, std::span<const std::uint8_t> data) {
  const std::vector<std::uint8_t> wire = FrameOnWire(packet_id, data);
  for (const std::uint8_t byte : wire)
    port_.Output(byte);
  if (trace_ != nullptr) trace_->Frame({FrameDirection::Sent, TraceTime(), wire, {}});
  WaitForOutput();
}

void PacketLink::WaitForOutput() {
  auto last_progress = clock_.Monotonic();
  std::size_t last_count = port_.OutBufferCount();
  input_while_sending_ = false;
  while (last_count > 0) {
    event_loop_.Yield();
    Rest(PollTime);
    const bool input = port_.InBufferCount() > 0;
    const std::size_t count = port_.OutBufferCount();
    if (input && count > 0) input_while_sending_ = true;
    if (count < last_count) last_progress = clock_.Monotonic();
    last_count = count;
    // A line that takes nothing any more shows as a time-out of the answer.
    const nanoseconds patience = stop_.cancelled ? QuietTime : nanoseconds(OutputStallTime);
    if (clock_.Monotonic() - last_progress > patience) {
      Note("output stuck");
      port_.ClearOutBuffer();
      return;
    }
  }
}

Frame PacketLink::ReceivePacket() {
  FrameBuilder builder;
  const std::size_t begin = heard_.size();
  bool timed_out = false;
  auto last_progress = clock_.Monotonic();
  while (!timed_out) {
    const auto byte = port_.InBufferCount() > 0 ? port_.Input() : std::nullopt;
    if (!byte) {
      WaitForBurst(last_progress, timed_out);
      continue;
    }
    heard_.push_back(*byte);
    bool ended = false;
    try {
      ended = builder.Take(*byte);
    } catch (const std::out_of_range&) {
      TraceHeard(begin, "too long");
      throw;
    }
    if (!ended) continue;
    TraceHeard(begin, builder.Mark());
    return builder.Finish();
  }
  if (heard_.size() > begin) TraceHeard(begin, "cut short");
  Note(why_ == NoAnswer::Cancel ? "cancelled" : port_.LineLost() ? "line lost" : "time-out");
  Frame none;
  none.size = ReceiveTimeout;
  return none;
}

/// The bytes from a number on are a frame, or what became of one.
void PacketLink::TraceHeard(std::size_t begin, std::string_view mark) {
  if (trace_ == nullptr) return;
  trace_->Frame({FrameDirection::Received, TraceTime(), std::span(heard_).subspan(begin), mark});
}

/// Returns when a burst has come and settled, or sets timed_out.
void PacketLink::WaitForBurst(nanoseconds& last_progress, bool& timed_out) {
  const auto shortest =
      std::chrono::duration_cast<nanoseconds>(ShortestSettleTime * static_cast<double>(pacing_factor_));
  std::size_t last_count = 0;
  nanoseconds settle_time{};
  const nanoseconds start = clock_.Monotonic();
  while (true) {
    const std::size_t count = port_.InBufferCount();
    const nanoseconds now = clock_.Monotonic();
    timed_out = GivesUp(count, now - start, last_progress);
    if (timed_out || count > LongestBurst) return;
    if (count > last_count) {
      ++input_seen_;
      if (last_count == 0) settle_time = std::max(now - last_progress, shortest);
      last_count = count;
      last_progress = now;
    }
    if (count > 0 && now - last_progress > settle_time) return;
    YieldNowAndThen();
    auto left = PollTime;
    if (last_count > 0) left = std::chrono::ceil<milliseconds>(last_progress + settle_time - clock_.Monotonic());
    port_.Wait(std::clamp(left, milliseconds{1}, PollTime));
  }
}

/// Bytes that keep coming neither keep a cancelled transfer waiting nor make an answer that could be taken.
bool PacketLink::GivesUp(std::size_t count, nanoseconds waited, nanoseconds last_progress) {
  const std::optional<NoAnswer> over = WaitIsOver(last_progress);
  why_ = over.value_or(NoAnswer::Silence);
  if (over == NoAnswer::Trickle || (stop_.aborted && waited > ReceiveTimeoutTime)) return true;
  const bool silent = clock_.Monotonic() - last_progress > ReceiveTimeoutTime;
  return count == 0 && (over || port_.LineLost() || silent);
}

std::optional<NoAnswer> PacketLink::WaitIsOver(nanoseconds last_progress) const {
  const nanoseconds now = clock_.Monotonic();
  if (stop_.cancelled && now - last_progress > QuietTime) return NoAnswer::Cancel;
  if (now - exchange_began_ > LongestExchange || now > deadline_) return NoAnswer::Trickle;
  return std::nullopt;
}

void PacketLink::YieldNowAndThen() {
  const auto now = clock_.Monotonic();
  if (now - last_yield_ < YieldInterval) return;
  event_loop_.Yield();
  last_yield_ = clock_.Monotonic();
}

/// Adds the frames of a burst to the reply but for those that cannot be its answer.
void PacketLink::TakeBurst(PacketReply& reply, std::vector<int>& unasked) {
  int frames = reply.count;
  do {
    const Frame frame = ReceivePacket();
    if (frame.size < 0) {
      reply.count = frame.size;
      reply.why = why_;
      return;
    }
    const bool can_be_answer = CanBeAnswer(frame);
    if (!can_be_answer && frame.Id() != PacketId::Ack) {
      unasked.push_back(frame.Id());
      continue;
    }
    if (++frames > PacketReply::LastSlot) throw std::out_of_range("more than five frames in one burst");
    if (can_be_answer) reply.slots[static_cast<std::size_t>(++reply.count)] = frame;
  } while (port_.InBufferCount() > 0);
}

void PacketLink::ReceiveMore(PacketReply& reply) {
  const std::int16_t count = reply.count;
  while (reply.count == count) {
    std::vector<int> unasked;
    TakeBurst(reply, unasked);
    for (const int id : unasked)
      Acknowledge(id);
  }
}

/// What a damaged frame was nobody knows: it is taken as it came. Where a record is due, whatever came may have been
/// meant as one, but for what receivers are known to send unasked.
bool PacketLink::CanBeAnswer(const Frame& frame) const {
  if (asked_id_ == 0 || frame.damaged) return true;
  const int id = frame.Id();
  if (id == PacketId::Ack) {
    const bool names_packet = frame.bytes[2] == 0 || frame.bytes[3] == asked_id_;
    return asked_answer_ != ExpectedAnswer::OneFrame && names_packet;
  }
  if (!BelongsToNoTransfer(frame)) return true;
  const bool known = id == PacketId::PvtData || id == PacketId::ExtProductData || id == PacketId::ProtocolArray ||
                     id == PacketId::ProductData;
  return asked_answer_ == ExpectedAnswer::OneFrame && !known;
}

/// Told unasked, or an answer to what was asked before.
bool PacketLink::BelongsToNoTransfer(const Frame& frame) const {
  constexpr std::array of_transfers{
      PacketId::Ack,     PacketId::Nak,    PacketId::ProductRqst, PacketId::CommandData, PacketId::XferCmplt,
      PacketId::Records, PacketId::RteHdr, PacketId::RteWptData,  PacketId::TrkData,     PacketId::DateTimeData,
      PacketId::WptData, PacketId::TrkHdr, PacketId::RteLinkData};
  if (frame.damaged) return false;
  if (frame.Id() == PacketId::ProductData) return asked_id_ != PacketId::ProductRqst;
  return std::find(of_transfers.begin(), of_transfers.end(), frame.Id()) == of_transfers.end();
}

void PacketLink::BeginExchange(int packet_id, ExpectedAnswer answer) {
  asked_id_ = packet_id;
  asked_answer_ = answer;
  exchange_began_ = clock_.Monotonic();
}

PacketReply PacketLink::ExchangeData(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer) {
  BeginExchange(packet_id, answer);
  port_.ClearInBuffer();
  heard_.clear();
  SendPacket(packet_id, data);
  PacketReply reply;
  ReceiveMore(reply);
  return reply;
}

std::optional<PacketReply> PacketLink::AnswerAsPublished() const {
  using Found = CheckedFrameReader::Found;
  CheckedFrameReader reader;
  PacketReply reply;
  for (const std::uint8_t byte : heard_) {
    const Found found = reader.Take(byte);
    if (found == Found::Nothing) continue;
    if (found == Found::DamagedFrame || reader.Skipped() > 0) return std::nullopt;
    if (!CanBeAnswer(reader.Last()) || reply.count == PacketReply::LastSlot) continue;
    reply.slots[static_cast<std::size_t>(++reply.count)] = reader.Last();
  }
  if (reader.Pending() || reply.count == 0) return std::nullopt;
  return reply;
}

/// The frame that is acknowledged came whole behind the packet before: what comes next is no burst that goes on.
void PacketLink::Acknowledge(int packet_id) {
  SendPacket(PacketId::Ack, NumberData(packet_id));
  input_while_sending_ = false;
}

void PacketLink::AcknowledgeInput() {
  BeginExchange(0, ExpectedAnswer::OneFrame);
  try {
    CheckedInput(*this).AcknowledgeRest();
  } catch (const std::out_of_range&) {
    DrainInput();
  }
}

PacketReply PacketLink::ExchangeChecked(int packet_id, std::span<const std::uint8_t> data, ExpectedAnswer answer) {
  BeginExchange(packet_id, answer);
  int frames_before = std::exchange(burst_frames_, 0);
  if (frames_before > 0) CheckedInput(*this).FinishBurst(frames_before);
  port_.ClearInBuffer();
  return CheckedExchange(*this, answer).Run(packet_id, data);
}

void PacketLink::DrainInput(nanoseconds quiet) {
  const auto start = clock_.Monotonic();
  auto last_input = start;
  while (!port_.LineLost() && clock_.Monotonic() - last_input < quiet &&
         clock_.Monotonic() - start < ReceiveTimeoutTime) {
    if (port_.InBufferCount() > 0) last_input = clock_.Monotonic();
    port_.ClearInBuffer();
    YieldNowAndThen();
    port_.Wait(PollTime);
  }
}

void PacketLink::Idle() {
  event_loop_.Yield();
  Rest(milliseconds{10});
}

/// Sleeps although input may lie there that nobody takes.
void PacketLink::Rest(milliseconds at_most) {
  static_cast<void>(port_.InBufferCount());  // only what comes from now on ends the sleep
  port_.Wait(at_most);
}

}  // namespace walrim
