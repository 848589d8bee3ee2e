#include "doctor/LineExam.h"

#include <algorithm>
#include <stdexcept>

#include "device/CheckedFrameReader.h"
#include "device/Identification.h"
#include "device/PacketIds.h"
#include "device/PacketLink.h"
#include "doctor/UnaskedBytes.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Receivers tell their sentences every one or two seconds.
constexpr milliseconds SentenceTime{2200};
/// Once the line is known to answer, or not to.
constexpr milliseconds FigurePatience{400};
constexpr milliseconds LongestFigures{4000};
constexpr milliseconds LongestFiguresOfSilence{2600};
constexpr int MostRequests = 20;
/// Behind an answer, for what a receiver tells of itself unasked.
constexpr milliseconds QuietBehindAnswer{30};
/// Receivers answer within a few milliseconds, adapters hold bytes back for 16 at most.
constexpr milliseconds SlowAck{60};
/// What is kept of unasked bytes.
constexpr std::size_t MostUnasked = 4096;

std::optional<milliseconds> Median(std::vector<nanoseconds> times) {
  if (times.empty()) return std::nullopt;
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::ranges::nth_element(times, middle);
  return std::chrono::round<milliseconds>(*middle);
}

/// What the figures of a line that answers come to.
Finding FindingOf(const LineFigures& figures) {
  const bool whole = figures.answers == figures.requests && figures.damaged_frames == 0 && figures.stray_bytes == 0;
  if (!whole) return Finding::Damaged;
  return figures.ack.value_or(SlowAck) > SlowAck ? Finding::Slow : Finding::Healthy;
}

Finding FindingOf(const PortResult& opened, bool vanished) {
  switch (opened.problem) {
    case PortProblem::Missing:
      return vanished ? Finding::Vanished : Finding::NoPort;
    case PortProblem::InUse:
      return Finding::Held;
    case PortProblem::NotPermitted:
      return Finding::NotPermitted;
    case PortProblem::None:
    case PortProblem::Other:
      break;
  }
  return Finding::NotOpened;
}

/// ModemManager alone looks at a port for some seconds, and leaves those that are no modem.
bool IsHeld(const std::vector<PortHolder>& holders) {
  return std::ranges::any_of(holders,
                             [](const PortHolder& holder) { return holder.kind != PortHolder::Kind::ModemManager; });
}

}  // namespace

LineReport LineExam::Examine(std::string_view port_name, const StepDone& step_done) {
  cancelled_ = false;
  unasked_.clear();
  step_done_ = step_done;
  LineReport report;
  report.port = port_name;
  Find(report);
  if (port_.PortOpen() && port_.LineLost()) report.finding = Finding::Vanished;
  if (cancelled_) report.finding = Finding::Cancelled;
  port_.Close();
  return report;
}

void LineExam::Find(LineReport& report) {
  if (!OpenPort(report)) return;
  const Answer first = Ask(ReceiveTimeoutTime);
  report.answered = first.whole;
  Done(ExamStep::Answer, report);
  if (first.whole) return TakeFigures(report);
  if (!unasked_.empty() || first.damaged_frames == 0) {
    const bool found = FindSentences(report, SentenceTime - ReceiveTimeoutTime);
    Done(ExamStep::Listening, report);
    if (found) return;
  }
  if (unasked_.empty() && first.damaged_frames == 0) {
    report.finding = Finding::Silent;
    return AskHolders(report);
  }
  if (first.damaged_frames == 0) {
    FindAtOtherSpeeds(report);
    Done(ExamStep::OtherSpeeds, report);
    if (report.finding == Finding::Nmea || report.finding == Finding::TextOut) return;
  }
  TakeFigures(report);
}

bool LineExam::OpenPort(LineReport& report) {
  report.opened = port_.Open(report.port, LineBaud);
  report.adapter = facts_.Adapter(report.opened.device);
  if (!report.opened.Ok()) {
    report.finding = FindingOf(report.opened, facts_.VanishedLately(report.opened.device));
  }
  Done(ExamStep::Port, report);
  if (report.finding == Finding::Held) AskHolders(report);
  return report.opened.Ok();
}

/// True when what comes at the speed of the open port is one of the known kinds.
bool LineExam::FindSentences(LineReport& report, nanoseconds longest) {
  NmeaReader reader;
  for (const std::uint8_t byte : unasked_)
    reader.Take(byte);
  const auto found = [&] { return reader.Facts().nmea_sentences + reader.Facts().text_sentences > 0; };
  // What proves the cable right; the text comes with all of it at once.
  const auto complete = [&] {
    const SentenceFacts& facts = reader.Facts();
    return found() && facts.lat_deg && (facts.text_sentences > 0 || (facts.satellites && facts.utc));
  };
  const auto listen = [&] {
    Listen(longest, [&](std::uint8_t byte) {
      reader.Take(byte);
      if (unasked_.size() < MostUnasked) unasked_.push_back(byte);
      return complete();
    });
  };
  listen();
  longest = SentenceTime;
  const bool more = found() || KindOfUnasked(unasked_) == UnaskedKind::Text;
  if (!complete() && more) listen();
  report.sentences = reader.Facts();
  if (found()) {
    report.finding = reader.Facts().nmea_sentences > 0 ? Finding::Nmea : Finding::TextOut;
    return true;
  }
  const bool corrections = KindOfUnasked(unasked_) == UnaskedKind::Rtcm;
  if (corrections) report.finding = Finding::Rtcm;
  return corrections;
}

void LineExam::FindAtOtherSpeeds(LineReport& report) {
  const std::vector<std::uint8_t> heard = unasked_;
  for (const int baud : SpeedsToTry(heard)) {
    if (cancelled_) return;
    if (!port_.Open(report.port, baud).Ok()) break;
    unasked_.clear();
    if (FindSentences(report, SentenceTime) && report.finding != Finding::Rtcm) {
      report.baud = baud;
      return;
    }
  }
  unasked_ = heard;
  report.opened = port_.Open(report.port, LineBaud);
}

void LineExam::TakeFigures(LineReport& report) {
  LineFigures& figures = report.figures;
  std::vector<nanoseconds> acks;
  std::vector<nanoseconds> round_trips;
  const nanoseconds end = clock_.Monotonic() + (report.answered ? LongestFigures : LongestFiguresOfSilence);
  while (figures.requests < MostRequests && clock_.Monotonic() < end && !cancelled_ && !port_.LineLost()) {
    const Answer answer = Ask(FigurePatience);
    ++figures.requests;
    figures.damaged_frames += answer.damaged_frames;
    figures.stray_bytes += answer.stray_bytes;
    if (!answer.whole) continue;
    ++figures.answers;
    if (answer.ack) acks.push_back(*answer.ack);
    round_trips.push_back(answer.end);
    try {
      const ProductInfo product = ReadProduct(answer.product);
      report.description = WithoutControlCharacters(product.description);
      report.product_id = product.product_id;
    } catch (const std::out_of_range&) {
      ++figures.damaged_frames;
    }
  }
  figures.ack = Median(acks);
  figures.round_trip = Median(round_trips);
  report.finding = FindingOf(figures);
  Done(ExamStep::Figures, report);
  if (report.finding == Finding::Damaged) AskHolders(report);
}

void LineExam::AskHolders(LineReport& report) {
  report.holders = facts_.Holders(report.opened.device);
  // Not all who take what comes keep others from opening the port.
  if (IsHeld(report.holders)) report.finding = Finding::Held;
  Done(ExamStep::Holders, report);
}

// ---- The line

/// Takes what comes until take says that it is enough.
void LineExam::Listen(nanoseconds longest, const std::function<bool(std::uint8_t)>& take) {
  const nanoseconds end = clock_.Monotonic() + longest;
  while (!cancelled_ && !port_.LineLost() && clock_.Monotonic() < end) {
    while (port_.InBufferCount() > 0) {
      const auto byte = port_.Input();
      if (!byte) break;
      if (take(*byte)) return;
    }
    const auto left = std::chrono::ceil<milliseconds>(end - clock_.Monotonic());
    if (left > milliseconds(0)) port_.Wait(std::min(left, milliseconds(50)));
    event_loop_.Yield();
  }
}

void LineExam::SendFrame(int packet_id, std::span<const std::uint8_t> data) {
  for (const std::uint8_t byte : FrameOnWire(packet_id, data))
    port_.Output(byte);
  const nanoseconds end = clock_.Monotonic() + ReceiveTimeoutTime;
  while (port_.OutBufferCount() > 0 && clock_.Monotonic() < end) {
    static_cast<void>(port_.InBufferCount());  // what has come already ends no wait
    port_.Wait(milliseconds(1));
  }
}

/// The frames that come behind a request, until the product data are whole or the patience is at its end.
struct LineExam::Listener {
  Answer answer;
  CheckedFrameReader reader;
  Time begun{};
  std::vector<std::uint8_t>& unasked;
  int acknowledge = 0;    ///< the packet that wants an ACK; 0 for none
  std::size_t heard = 0;  ///< bytes

  /// True for the byte that ends a frame that wants an ACK.
  bool Take(std::uint8_t byte, Time now) {
    ++heard;
    if (!answer.ack) answer.ack = now - begun;
    if (unasked.size() < MostUnasked) unasked.push_back(byte);
    CheckedFrameReader::Found found{};
    try {
      found = reader.Take(byte);
    } catch (const std::out_of_range&) {
      answer.stray_bytes += static_cast<int>(CheckedFrameReader::MostPending);
      reader = {};
    }
    if (found == CheckedFrameReader::Found::Nothing) return false;
    answer.stray_bytes += static_cast<int>(reader.Skipped());
    unasked.clear();
    if (found == CheckedFrameReader::Found::DamagedFrame) {
      ++answer.damaged_frames;
      return false;
    }
    return TakeFrame(now);
  }

  bool TakeFrame(Time now) {
    const Frame& frame = reader.Last();
    if (frame.Id() == PacketId::Ack || frame.Id() == PacketId::Nak) return false;
    acknowledge = frame.Id();
    if (frame.Id() != PacketId::ProductData || answer.whole) return true;
    const auto data = PacketData(frame);
    answer.product.assign(data.begin(), data.end());
    answer.whole = true;
    answer.end = now - begun;
    return true;
  }
};

LineExam::Answer LineExam::Ask(nanoseconds patience) {
  port_.ClearInBuffer();
  unasked_.clear();
  SendFrame(PacketId::ProductRqst, {});
  Listener listener{{}, {}, clock_.Monotonic(), unasked_};
  const nanoseconds end = listener.begun + patience;
  const auto take = [&](std::uint8_t byte) { return listener.Take(byte, clock_.Monotonic()); };
  // An ACK brings more at times; the line is left alone once it is quiet.
  for (bool busy = true; busy && clock_.Monotonic() < end;) {
    const nanoseconds left = listener.answer.whole ? nanoseconds(QuietBehindAnswer) : end - clock_.Monotonic();
    const std::size_t heard = listener.heard;
    listener.acknowledge = 0;
    Listen(left, take);
    if (listener.acknowledge > 0) SendFrame(PacketId::Ack, NumberData(listener.acknowledge));
    busy = listener.heard > heard;
  }
  const bool half = listener.reader.Pending() && !unasked_.empty() && unasked_.front() == DLE;
  if (half) ++listener.answer.damaged_frames;
  if (!half) listener.answer.stray_bytes += static_cast<int>(unasked_.size());
  return listener.answer;
}

// ---- All ports

std::optional<PortChoice> LineExam::FindReceiver(const PortAsked& port_asked) {
  cancelled_ = false;
  for (const PortChoice& choice : facts_.Ports()) {
    if (cancelled_) break;
    const bool held = IsHeld(facts_.Holders(choice.device));
    const bool answers = !held && port_.Open(choice.name, LineBaud).Ok() && Ask(ReceiveTimeoutTime).whole;
    port_.Close();
    port_asked(choice, answers);
    if (answers) return choice;
  }
  return std::nullopt;
}

void LineExam::Done(ExamStep step, const LineReport& report) const {
  if (step_done_) step_done_(step, report);
}

}  // namespace walrim
