#include "receiver/DemoSerialPort.h"

#include <algorithm>
#include <array>
#include <utility>

#include "receiver/DemoContents.h"

namespace walrim {

namespace {

using std::chrono::nanoseconds;

constexpr std::string_view DemoName = "demo";

}  // namespace

std::vector<std::string> DemoModelNames() {
  std::vector<std::string> names;
  for (const ReceiverModel& model : ReceiverModels())
    names.emplace_back(model.name);
  return names;
}

DemoSerialPort::DemoSerialPort(DemoReceiverOptions options, const Clock& clock, std::function<void(nanoseconds)> sleep)
    : options_(std::move(options)), clock_(clock), sleep_(std::move(sleep)) {}

PortResult DemoSerialPort::Open(std::string_view comm_port, int /*baud*/) {
  Close();
  PortResult result;
  result.device = std::string(comm_port);
  result.problem = PortProblem::Missing;
  const std::size_t colon = comm_port.find(':');
  if (comm_port.substr(0, colon) != DemoName) return result;
  const bool named = colon != std::string_view::npos;
  const ReceiverModel* model = FindReceiverModel(named ? comm_port.substr(colon + 1) : options_.model);
  if (model == nullptr) return result;
  SoftReceiver& receiver = ReceiverOf(*model);
  // What came while nobody listened is lost.
  static_cast<void>(receiver.Send(clock_.Monotonic()));
  if (receiver.LineClosed()) return result;
  receiver_ = &receiver;
  result.problem = PortProblem::None;
  return result;
}

SoftReceiver& DemoSerialPort::ReceiverOf(const ReceiverModel& model) {
  std::unique_ptr<SoftReceiver>& receiver = receivers_[model.name];
  if (receiver == nullptr) {
    const HeldContents contents = options_.contents ? *options_.contents : DemoContents(model);
    receiver = std::make_unique<SoftReceiver>(model, EncodeMemory(contents, model), options_.baud, options_.faults,
                                              options_.temper);
    receiver->SetClock(DemoUtcSeconds(), clock_.Monotonic());
  }
  return *receiver;
}

void DemoSerialPort::Close() {
  receiver_ = nullptr;
  in_.clear();
  out_.clear();
  told_in_count_ = 0;
}

std::size_t DemoSerialPort::InBufferCount() {
  Pump();
  told_in_count_ = in_.size();
  return told_in_count_;
}

void DemoSerialPort::ClearInBuffer() {
  Pump();
  in_.clear();
  told_in_count_ = 0;
}

std::optional<std::uint8_t> DemoSerialPort::Input() {
  Pump();
  if (in_.empty()) return std::nullopt;
  const std::uint8_t byte = in_.front();
  in_.pop_front();
  if (told_in_count_ > 0) --told_in_count_;
  return byte;
}

void DemoSerialPort::Output(std::uint8_t byte) {
  if (receiver_ == nullptr) return;
  out_.push_back({clock_.Monotonic(), byte});
  Pump();
}

std::size_t DemoSerialPort::OutBufferCount() {
  Pump();
  return OutCountAt(clock_.Monotonic());
}

std::size_t DemoSerialPort::OutCountAt(nanoseconds now) const {
  if (receiver_ == nullptr || receiver_->LineClosed()) return 0;
  return out_.size() + (receiver_->InputFreeAt() > now ? 1U : 0U);
}

void DemoSerialPort::ClearOutBuffer() {
  Pump();
  out_.clear();
}

void DemoSerialPort::Wait(std::chrono::milliseconds at_most) {
  Pump();
  nanoseconds now = clock_.Monotonic();
  const nanoseconds deadline = now + at_most;
  const std::size_t out_count = OutCountAt(now);
  while (in_.size() <= told_in_count_ && OutCountAt(now) >= out_count && now < deadline) {
    sleep_(NextEvent(now, deadline) - now);
    const nanoseconds then = std::exchange(now, clock_.Monotonic());
    Pump();
    if (now <= then) return;  // a clock that stands still would wait here for ever
  }
}

bool DemoSerialPort::LineLost() const {
  return receiver_ != nullptr && receiver_->LineClosed();
}

const ReceiverMemory* DemoSerialPort::MemoryOf(std::string_view model) const {
  const auto found = receivers_.find(model);
  return found == receivers_.end() ? nullptr : &found->second->Memory();
}

void DemoSerialPort::Pump() {
  if (receiver_ == nullptr) return;
  const nanoseconds now = clock_.Monotonic();
  PumpOutput(now);
  const std::vector<std::uint8_t> bytes = receiver_->Send(now);
  in_.insert(in_.end(), bytes.begin(), bytes.end());
}

// Each byte goes on the line when the one before has passed.
void DemoSerialPort::PumpOutput(nanoseconds now) {
  while (!out_.empty()) {
    const nanoseconds start = std::max(out_.front().since, receiver_->InputFreeAt());
    if (start > now) return;
    const std::array<std::uint8_t, 1> byte{out_.front().byte};
    out_.pop_front();
    receiver_->Receive(byte, start);
  }
}

nanoseconds DemoSerialPort::NextEvent(nanoseconds now, nanoseconds at_latest) const {
  nanoseconds next = at_latest;
  if (receiver_ == nullptr) return next;
  if (receiver_->InputFreeAt() > now) next = std::min(next, receiver_->InputFreeAt());
  if (const auto due = receiver_->NextDue()) next = std::min(next, *due);
  return std::max(next, now + nanoseconds(1));
}

}  // namespace walrim
