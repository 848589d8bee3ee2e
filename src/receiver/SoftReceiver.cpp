#include "receiver/SoftReceiver.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "receiver/ReceiverFix.h"
#include "receiver/StrictRules.h"
#include "text/Dates.h"

namespace walrim {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr std::uint8_t AckByte = 6;
constexpr std::uint8_t CommandData = 10;
constexpr std::uint8_t TransferComplete = 12;
constexpr std::uint8_t NakByte = 21;
constexpr std::uint8_t Records = 27;
constexpr std::uint8_t ProductRequest = 254;
constexpr std::uint8_t ProductData = 255;

constexpr std::uint16_t AbortTransfer = 0;
constexpr std::uint16_t TransferPosition = 2;
constexpr std::uint16_t TransferRoutes = 4;
constexpr std::uint16_t TransferTime = 5;
constexpr std::uint16_t TransferTracks = 6;
constexpr std::uint16_t TransferWaypoints = 7;

constexpr std::uint8_t MeaninglessId = 200;
constexpr std::uint8_t ChecksumError = 0x55;
constexpr std::uint8_t Noise[] = {0x00, 0xFF, 0x5A, 0xA5, 0x7E};

constexpr int StrictRepeatMs = 1000;

constexpr std::int64_t BitsPerByte = 10;
// A host that asks on and on without reading is not answered for ever.
constexpr std::size_t MaxOutgoing = 1U << 20;

LinePacket WordPacket(std::uint8_t id, std::size_t word) {
  return {id, {static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>((word >> 8) & 0xFF)}};
}

// Bytes that did not come count as 0.
std::uint16_t WordOf(const LinePacket& packet) {
  const unsigned low = packet.data.empty() ? 0U : packet.data[0];
  const unsigned high = packet.data.size() < 2 ? 0U : packet.data[1];
  return static_cast<std::uint16_t>(low + 256 * high);
}

nanoseconds FixInterval(int fixes_per_second) {
  return nanoseconds(std::chrono::seconds(1)) / fixes_per_second;
}

bool IsRecordOf(std::uint16_t command, std::uint8_t id) {
  switch (command) {
    case TransferWaypoints:
      return id == record_id::Waypoint;
    case TransferRoutes:
      return id == record_id::RouteHeader || id == record_id::RouteWaypoint || id == record_id::RouteLink;
    case TransferTracks:
      return id == record_id::TrackHeader || id == record_id::TrackPoint;
    default:
      return false;
  }
}

// Longer than any frame can be, although its size byte tells an ordinary size. Its bytes hold neither DLE nor ETX.
std::vector<std::uint8_t> OverlongFrame(std::uint8_t id) {
  constexpr std::uint8_t told_size = 200;
  constexpr std::size_t data_size = 400;
  std::vector<std::uint8_t> bytes{16, id, told_size};
  for (std::size_t i = 0; i < data_size; ++i)
    bytes.push_back(static_cast<std::uint8_t>(0x20 + i % 64));
  bytes.insert(bytes.end(), {0x7F, 16, 3});
  return bytes;
}

}  // namespace

std::int64_t DemoUtcSeconds() {
  return SecondsSinceGarminEpoch({2002, 12, 8, 3, 0, 0});
}

SoftReceiver::SoftReceiver(const ReceiverModel& model, ReceiverMemory memory, int baud, ReceiverFaults faults,
                           ReceiverTemper temper)
    : model_(model),
      memory_(std::move(memory)),
      faults_(faults),
      temper_(temper),
      byte_time_(baud > 0 ? nanoseconds(std::chrono::seconds(1)) * BitsPerByte / baud : nanoseconds(0)) {
  SetClock(DemoUtcSeconds(), nanoseconds(0));
}

void SoftReceiver::SetClock(std::int64_t utc_s, nanoseconds now) {
  clock_start_ = now - std::chrono::seconds(utc_s);
}

std::int64_t SoftReceiver::UtcSeconds(nanoseconds at) const {
  return std::chrono::floor<std::chrono::seconds>(at - clock_start_).count() - clock_behind_s_;
}

void SoftReceiver::FallBack(int roll_overs, bool with_logs) {
  clock_behind_s_ = roll_overs * SecondsPerRollOver;
  logs_behind_s_ = with_logs ? clock_behind_s_ : 0;
}

// What it has recorded is dated by its clock, too.
void SoftReceiver::TakeDateTime(const LinePacket& packet) {
  const auto utc_s = UtcSecondsOf(packet);
  if (!utc_s) return;
  FallBack(0, false);
  SetClock(*utc_s, input_free_at_);
}

void SoftReceiver::Receive(std::span<const std::uint8_t> bytes, nanoseconds now) {
  for (const std::uint8_t byte : bytes) {
    if (LineClosed()) return;
    input_free_at_ = std::max(now, input_free_at_) + byte_time_;
    ActUnasked(input_free_at_);
    if (const auto frame = reader_.Take(byte)) TakeFrame(*frame);
  }
}

std::optional<nanoseconds> SoftReceiver::NextDue() const {
  const std::optional<nanoseconds> unasked = NextUnasked();
  if (outgoing_.empty()) return unasked;
  return std::min(outgoing_.front().due, unasked.value_or(nanoseconds::max()));
}

std::vector<std::uint8_t> SoftReceiver::Send(nanoseconds now) {
  ActUnasked(now);
  std::vector<std::uint8_t> bytes;
  while (!outgoing_.empty() && outgoing_.front().due <= now) {
    bytes.push_back(outgoing_.front().byte);
    outgoing_.pop_front();
  }
  return bytes;
}

std::optional<nanoseconds> SoftReceiver::RepeatDue() const {
  if (!awaiting_ack_ || (!faults_.repeat && !Strict())) return std::nullopt;
  return awaiting_since_ + milliseconds(faults_.repeat.value_or(StrictRepeatMs));
}

std::optional<nanoseconds> SoftReceiver::NextUnasked() const {
  const std::optional<nanoseconds> repeat = RepeatDue();
  if (NoFrameLeft() || (!repeat && !next_fix_at_)) return std::nullopt;
  return std::min(repeat.value_or(nanoseconds::max()), next_fix_at_.value_or(nanoseconds::max()));
}

void SoftReceiver::ActUnasked(nanoseconds now) {
  if (faults_.pvt && !next_fix_at_) next_fix_at_ = now + FixInterval(*faults_.pvt);
  for (auto due = NextUnasked(); due && *due <= now; due = NextUnasked()) {
    output_free_at_ = std::max(output_free_at_, *due);
    if (due == next_fix_at_) {
      SendFrame(LineFrameBytes(PvtPacket(UtcSeconds(*due))));
      *next_fix_at_ += FixInterval(*faults_.pvt);
    } else {
      SendPacket(LinePacket(*awaiting_ack_));
    }
  }
}

bool SoftReceiver::LineClosed() const {
  return faults_.unplug_after && frames_sent_ >= *faults_.unplug_after && outgoing_.empty();
}

void SoftReceiver::TakeFrame(const ReceivedFrame& frame) {
  const LinePacket& packet = frame.packet;
  const bool answers_ours = packet.id == AckByte || packet.id == NakByte;
  if (!frame.intact || (!answers_ours && RefusesPacket(packet))) {
    SendVerdict(NakByte, packet.id);
  } else if (packet.id == AckByte) {
    TakeAck(packet);
  } else if (packet.id == NakByte) {
    TakeNak();
  } else {
    SendAck(packet.id);
    TakePacket(packet);
  }
}

bool SoftReceiver::RefusesPacket(const LinePacket& packet) {
  ++packets_taken_;
  if (faults_.refuse == packets_taken_) refused_ = packet;
  if (refused_ == packet || (Strict() && !Allowed(packet))) return true;
  return faults_.nak && (*faults_.nak == 0 || *faults_.nak == packets_taken_);
}

// Records come announced. The last one may come once more, where the host has not seen its ACK.
bool SoftReceiver::Allowed(const LinePacket& packet) const {
  const bool record = IsRecordOf(TransferWaypoints, packet.id) || IsRecordOf(TransferRoutes, packet.id) ||
                      IsRecordOf(TransferTracks, packet.id);
  if (!WellFormed(packet, model_)) return false;
  if (!record) return true;
  if (!upload_) return false;
  return upload_->records.size() < upload_->announced ||
         (!upload_->records.empty() && upload_->records.back() == packet);
}

void SoftReceiver::TakePacket(const LinePacket& packet) {
  switch (packet.id) {
    case ProductRequest:
      SendProductData();
      break;
    case CommandData:
      TakeCommand(WordOf(packet));
      break;
    case Records:
      StartUpload(WordOf(packet));
      break;
    case TransferComplete:
      FinishUpload(WordOf(packet));
      break;
    case DateTimeData:
      TakeDateTime(packet);
      break;
    default:
      TakeRecord(packet);
      break;
  }
}

void SoftReceiver::TakeCommand(std::uint16_t command) {
  const bool transfer = MemoryOf(command) != nullptr;
  if (transfer || command == AbortTransfer || command == TransferTime || command == TransferPosition) {
    upload_.reset();
    download_.reset();
    awaiting_ack_.reset();
  }
  if (transfer) StartDownload(command);
  if (command == TransferTime) SendAnswer(DateTimePacket(UtcSeconds(input_free_at_)));
  if (command == TransferPosition) SendAnswer(PositionPacket());
}

void SoftReceiver::StartDownload(std::uint16_t command) {
  download_ = Download{command, RecordsToSend(command), 0};
  const std::size_t count = download_->records.size();
  const auto fewer = static_cast<std::size_t>(faults_.short_count.value_or(0));
  SendAnswer(WordPacket(Records, count - std::min(count, fewer)));
}

std::vector<LinePacket> SoftReceiver::RecordsToSend(std::uint16_t command) {
  const std::vector<LinePacket>& records = *MemoryOf(command);
  if (command == TransferTracks && logs_behind_s_ > 0) return WithTimesBack(records, logs_behind_s_);
  if (command == TransferRoutes && faults_.links_between) return WithLinksBetweenPoints(records);
  if (command == TransferTracks && faults_.two_segments) return WithTwoSegments(records);
  return records;
}

// An ACK that names another packet than the last one sent is not for it.
void SoftReceiver::TakeAck(const LinePacket& ack) {
  if (!awaiting_ack_ || ack.data.empty() || WordOf(ack) != awaiting_ack_->id) return;
  const bool product_data = awaiting_ack_->id == ProductData;
  awaiting_ack_.reset();
  if (download_) SendNextRecord();
  if (product_data && !model_.protocols.empty()) SendPacket(ProtocolListPacket(model_.protocols));
}

void SoftReceiver::TakeNak() {
  if (awaiting_ack_) {
    SendPacket(LinePacket(*awaiting_ack_));
  } else if (last_verdict_ && !faults_.ack_once) {
    SendFrame(LineFrameBytes(*last_verdict_));
  }
}

void SoftReceiver::StartUpload(std::uint16_t count) {
  download_.reset();
  awaiting_ack_.reset();
  upload_ = Upload{count, {}};
}

void SoftReceiver::TakeRecord(const LinePacket& packet) {
  if (upload_ && upload_->records.size() < upload_->announced) upload_->records.push_back(packet);
}

// Hosts name other commands at the end than that of the records: what the records are tells where they belong.
void SoftReceiver::FinishUpload(std::uint16_t command) {
  if (!upload_) return;
  const std::vector<LinePacket> records = std::move(upload_->records);
  upload_.reset();
  if (std::ranges::any_of(records, [](const LinePacket& record) { return record.id == record_id::TrackPoint; })) {
    logs_behind_s_ = 0;
  }
  if (Strict()) {
    StoreUpload(memory_, records, model_);
    return;
  }
  for (const std::uint16_t kind : {TransferWaypoints, TransferRoutes, TransferTracks}) {
    std::vector<LinePacket> of_kind;
    std::copy_if(records.begin(), records.end(), std::back_inserter(of_kind),
                 [kind](const LinePacket& record) { return IsRecordOf(kind, record.id); });
    if (!of_kind.empty() || (records.empty() && kind == command)) *MemoryOf(kind) = std::move(of_kind);
  }
}

std::vector<LinePacket>* SoftReceiver::MemoryOf(std::uint16_t command) {
  switch (command) {
    case TransferWaypoints:
      return &memory_.waypoints;
    case TransferRoutes:
      return &memory_.routes;
    case TransferTracks:
      return &memory_.tracks;
    default:
      return nullptr;
  }
}

// The frames behind them wait for no ACK.
void SoftReceiver::SendProductData() {
  download_.reset();
  SendAnswer(ProductDataPacket(model_, faults_.product_texts.value_or(2)));
  for (int i = 1; i <= faults_.product_frames.value_or(0); ++i)
    SendFrame(LineFrameBytes(PacketBehindProductData(i)));
}

void SoftReceiver::SendVerdict(std::uint8_t verdict, std::uint8_t packet_id) {
  last_verdict_ = WordPacket(verdict, packet_id);
  SendFrame(LineFrameBytes(*last_verdict_));
}

LinePacket SoftReceiver::AckOf(std::uint8_t packet_id) const {
  LinePacket ack = WordPacket(AckByte, packet_id);
  if (faults_.short_ack) ack.data.resize(1);
  if (faults_.empty_ack) ack.data.clear();
  return ack;
}

void SoftReceiver::SendAck(std::uint8_t packet_id) {
  ++acks_sent_;
  LaterBy(milliseconds(faults_.late_ack.value_or(0)));
  if (faults_.other_ack && (*faults_.other_ack == 0 || *faults_.other_ack == acks_sent_)) {
    SendFrame(LineFrameBytes(AckOf(packet_id == Records ? CommandData : Records)));
  }
  last_verdict_ = AckOf(packet_id);
  SendFrame(LineFrameBytes(*last_verdict_, faults_.bad_ack == acks_sent_ ? ChecksumError : std::uint8_t{0}));
  if (faults_.two_acks && packet_id == TransferComplete) {
    LaterBy(milliseconds(*faults_.two_acks));
    SendFrame(LineFrameBytes(*last_verdict_));
  }
}

void SoftReceiver::LaterBy(milliseconds time) {
  output_free_at_ = std::max(input_free_at_, output_free_at_) + time;
}

// The packet that follows an ACK.
void SoftReceiver::SendAnswer(const LinePacket& packet) {
  LaterBy(milliseconds(faults_.gap.value_or(0)));
  SendPacket(packet);
}

void SoftReceiver::SendNextRecord() {
  const std::vector<LinePacket>& records = download_->records;
  std::size_t end = records.size();
  if (faults_.early_complete) end = std::min(end, static_cast<std::size_t>(*faults_.early_complete));
  if (download_->sent < end) {
    SendRecord(records, download_->sent++);
  } else {
    const std::uint16_t command = download_->command;
    download_.reset();
    SendPacket(WordPacket(TransferComplete, command));
  }
}

void SoftReceiver::SendRecord(const std::vector<LinePacket>& records, std::size_t index) {
  const int number = static_cast<int>(index) + 1;
  LinePacket record = records[index];
  if (faults_.overlong == number) {
    SendAwaited(record, OverlongFrame(record.id));
    return;
  }
  if (faults_.unknown_first && number == 1) record.id = MeaninglessId;
  SendPacket(record, faults_.bad_checksum == number ? ChecksumError : std::uint8_t{0});
  if (faults_.burst && number == 1) SendBurst(records);
}

// What makes a burst of the first record, which alone waits for an ACK: the records after it, the last one repeated.
void SoftReceiver::SendBurst(const std::vector<LinePacket>& records) {
  for (std::size_t i = 1; i < static_cast<std::size_t>(*faults_.burst); ++i) {
    SendFrame(LineFrameBytes(records[std::min(i, records.size() - 1)]));
  }
}

void SoftReceiver::SendPacket(const LinePacket& packet, std::uint8_t checksum_error) {
  SendAwaited(packet, LineFrameBytes(packet, checksum_error));
}

void SoftReceiver::SendAwaited(const LinePacket& packet, const std::vector<std::uint8_t>& frame) {
  awaiting_ack_ = packet;
  SendFrame(frame);
  awaiting_since_ = std::max(input_free_at_, output_free_at_);
}

void SoftReceiver::SendFrame(const std::vector<std::uint8_t>& frame) {
  if (NoFrameLeft() || outgoing_.size() > MaxOutgoing) return;
  ++frames_sent_;
  if (faults_.garbage && (*faults_.garbage == 0 || *faults_.garbage == frames_sent_)) SendBytes(Noise);
  SendBytes(frame);
}

bool SoftReceiver::NoFrameLeft() const {
  return faults_.silent || (faults_.silent_after && frames_sent_ >= *faults_.silent_after) ||
         (faults_.unplug_after && frames_sent_ >= *faults_.unplug_after);
}

void SoftReceiver::SendBytes(std::span<const std::uint8_t> bytes) {
  const nanoseconds step = std::max(byte_time_, nanoseconds(milliseconds(faults_.dribble.value_or(0))));
  for (const std::uint8_t byte : bytes) {
    output_free_at_ = std::max(input_free_at_, output_free_at_) + step;
    outgoing_.push_back({output_free_at_, byte});
  }
}

}  // namespace walrim
