// The platform as tests hold it in their hands: a clock that they move, a line that they script, a desktop that
// records.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/Inet.h"
#include "platform/PortFacts.h"
#include "platform/SerialPort.h"
#include "support/Packets.h"

namespace walrim {

class FakeClock : public Clock {
 public:
  [[nodiscard]] std::chrono::nanoseconds Monotonic() const override { return now; }
  [[nodiscard]] std::int64_t UtcSeconds() const override { return utc_s; }
  [[nodiscard]] CivilTime LocalTime() const override { return local_time; }
  void Advance(std::chrono::nanoseconds time) { now += time; }

  std::chrono::nanoseconds now{};
  CivilTime local_time{2002, 11, 15, 14, 25, 30};
  std::int64_t utc_s = 406'272'330;  ///< 2002/11/15 05:25:30
};

class FakeEventLoop : public EventLoop {
 public:
  void Yield() override {
    ++yields;
    if (on_yield) on_yield();
  }

  int yields = 0;
  std::function<void()> on_yield;
};

/// Records what it is asked; answers come from its fields.
class RecordingDesktop : public Desktop {
 public:
  void ShowMessage(std::string_view text) override {
    messages.emplace_back(text);
    if (on_message) on_message();
  }
  [[nodiscard]] bool AskYesNo(std::string_view text) override {
    questions.emplace_back(text);
    return yes;
  }
  [[nodiscard]] bool AskOkCancel(std::string_view text) override {
    questions.emplace_back(text);
    return ok;
  }
  [[nodiscard]] Answer AskThree(std::string_view text, const ThreeAnswers& /*answers*/) override {
    questions.emplace_back(text);
    return answer;
  }
  [[nodiscard]] std::optional<std::string> OpenFileDialog(std::string_view filter) override {
    filters.emplace_back(filter);
    return open_path;
  }
  [[nodiscard]] std::optional<std::string> SaveFileDialog(std::string_view filter) override {
    filters.emplace_back(filter);
    return save_path;
  }
  void SetClipboardText(std::string_view text) override { clipboard = text; }
  [[nodiscard]] std::string ClipboardText() override { return clipboard; }
  [[nodiscard]] bool OpenLink(std::string_view link) override {
    links.emplace_back(link);
    return opens_links;
  }
  void SetStatusCaption(std::string_view text) override {
    caption = text;
    captions.emplace_back(text);
  }
  [[nodiscard]] std::string StatusCaption() const override { return caption; }
  void SetProgress(std::int64_t done, std::int64_t total) override { progress.emplace_back(done, total); }
  void ControlsChanged() override { ++changes; }

  [[nodiscard]] bool Showed(std::string_view text) const {
    return std::find(captions.begin(), captions.end(), text) != captions.end();
  }

  bool yes = true;
  bool ok = true;
  Answer answer = Answer::First;
  bool opens_links = true;
  std::optional<std::string> open_path;  ///< nothing: cancelled
  std::optional<std::string> save_path;
  std::string clipboard;
  std::string caption;
  std::function<void()> on_message;  ///< while a message is shown
  std::vector<std::string> messages;
  std::vector<std::string> questions;
  std::vector<std::string> filters;
  std::vector<std::string> links;  ///< that were opened
  std::vector<std::string> captions;
  std::vector<std::pair<std::int64_t, std::int64_t>> progress;
  int changes = 0;
};

/// Links that answer what they are told to.
class FakeInet : public Inet {
 public:
  [[nodiscard]] InetResult OpenUrl(std::string_view link) override {
    links.emplace_back(link);
    if (on_open) on_open();
    return std::exchange(cancelled_, false) ? InetResult{"", "", true} : answer;
  }
  void Cancel() override { cancelled_ = true; }

  InetResult answer;
  std::vector<std::string> links;
  std::function<void()> on_open;  ///< runs while a link is read

 private:
  bool cancelled_ = false;
};

/// What a test says of the ports.
class FakePortFacts : public PortFacts {
 public:
  [[nodiscard]] std::vector<PortChoice> Ports() const override { return ports; }
  [[nodiscard]] std::vector<PortHolder> Holders(std::string_view device) const override {
    const auto found = holders.find(std::string(device));
    return found == holders.end() ? std::vector<PortHolder>{} : found->second;
  }
  [[nodiscard]] PortAdapter Adapter(std::string_view) const override { return adapter; }
  [[nodiscard]] bool VanishedLately(std::string_view) const override { return vanished; }

  std::vector<PortChoice> ports;
  std::map<std::string, std::vector<PortHolder>> holders;
  PortAdapter adapter;
  bool vanished = false;
};

/// A line whose other end is a function: it gets every frame that was sent, as its bytes on the wire, and says what
/// comes back after how long. Time passes in Wait alone.
class ScriptedPort : public SerialPort {
 public:
  struct Answer {
    std::chrono::nanoseconds delay{};
    Bytes bytes;
  };
  using Script = std::function<std::vector<Answer>(const Bytes& frame)>;

  explicit ScriptedPort(FakeClock& clock) : clock_(clock) {}

  [[nodiscard]] PortResult Open(std::string_view comm_port, int baud) override {
    ++opened;
    last_name = comm_port;
    last_baud = baud;
    if (open_result.Ok()) open_ = true;
    return open_result;
  }
  [[nodiscard]] bool PortOpen() const override { return open_; }
  void Close() override {
    open_ = false;
    ++closed;
  }
  [[nodiscard]] std::size_t InBufferCount() override {
    Deliver();
    told_ = in_.size();
    return told_;
  }
  void ClearInBuffer() override {
    Deliver();
    in_.clear();
    told_ = 0;
  }
  [[nodiscard]] std::optional<std::uint8_t> Input() override {
    Deliver();
    if (in_.empty()) return std::nullopt;
    const std::uint8_t byte = in_.front();
    in_.pop_front();
    told_ -= told_ > 0 ? 1U : 0U;
    return byte;
  }
  void Output(std::uint8_t byte) override {
    sending_.push_back(byte);
    if (!FrameEnded()) return;
    sent.push_back(std::exchange(sending_, {}));
    if (!script) return;
    for (Answer& answer : script(sent.back()))
      Queue(answer.delay, std::move(answer.bytes));
  }
  [[nodiscard]] std::size_t OutBufferCount() override { return 0; }
  void ClearOutBuffer() override {}
  void Wait(std::chrono::milliseconds at_most) override {
    Deliver();
    if (in_.size() > told_) return;
    // Bytes come in order: none before the first that is due.
    auto step = std::chrono::nanoseconds(at_most);
    if (!coming_.empty()) step = std::min(step, coming_.front().first - clock_.now);
    clock_.Advance(step);
  }
  [[nodiscard]] bool LineLost() const override { return line_lost; }

  /// Bytes that arrive this long from now.
  void Queue(std::chrono::nanoseconds delay, Bytes bytes) {
    for (const std::uint8_t byte : bytes)
      coming_.emplace_back(clock_.now + delay, byte);
  }

  /// Takes back what has not arrived yet.
  void DropQueued() { coming_.clear(); }

  Script script;
  PortResult open_result;
  bool line_lost = false;
  std::vector<Bytes> sent;
  int opened = 0;
  int closed = 0;
  std::string last_name;
  int last_baud = 0;

 private:
  [[nodiscard]] bool FrameEnded() const {
    if (sending_.size() < 6 || sending_.back() != 3) return false;
    // DLE before ETX ends a frame only when it is not the second half of a doubled byte.
    std::size_t run = 0;
    for (std::size_t i = sending_.size() - 1; i-- > 2 && sending_[i] == 16;)
      ++run;
    return run % 2 == 1;
  }
  void Deliver() {
    while (!coming_.empty() && coming_.front().first <= clock_.now) {
      in_.push_back(coming_.front().second);
      coming_.pop_front();
    }
  }

  FakeClock& clock_;
  bool open_ = false;
  Bytes sending_;
  std::deque<std::uint8_t> in_;
  std::size_t told_ = 0;  // what InBufferCount last told
  std::deque<std::pair<std::chrono::nanoseconds, std::uint8_t>> coming_;
};

}  // namespace walrim
