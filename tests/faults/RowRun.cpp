#include "faults/RowRun.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

#include "app/Messages.h"
#include "device/Messages.h"

namespace walrim {

namespace {

constexpr int RealBaud = 9600;
constexpr int AtOnce = 0;

/// How long a command may go on once the receiver says nothing more, or nothing that helps.
std::chrono::seconds LongestSilence(const Row& row, const Ending& ending) {
  constexpr std::chrono::seconds at_once{1};
  constexpr std::chrono::seconds some_time_outs{10};
  constexpr std::chrono::seconds watchdog{35};
  if (ending.stalled) return watchdog;
  return row.fault->text.starts_with("unplug") ? at_once : some_time_outs;
}

std::vector<std::string> LinesOf(const std::vector<NamedRecord>& records) {
  std::vector<std::string> lines;
  lines.reserve(records.size());
  for (const NamedRecord& record : records)
    lines.push_back(record.line);
  return lines;
}

/// Strikes one frame or one packet of the receiver's life.
bool StrikesOnce(const FaultForm& fault) {
  return (fault.counts == Counts::Frame || fault.counts == Counts::Packet) && fault.text != "refuse=N";
}

/// Behind this fault the receiver says nothing any more.
bool EndsReceiver(const FaultForm& fault) {
  return fault.counts == Counts::FramesBefore;
}

/// Points without their route's header have no place.
std::vector<NamedRecord> WithoutFirst(const std::vector<NamedRecord>& records) {
  constexpr std::uint8_t RouteHeader = 29;
  auto rest = records.begin() + 1;
  if (records.front().id == RouteHeader) {
    rest = std::find_if(rest, records.end(), [](const NamedRecord& record) { return record.id == RouteHeader; });
  }
  return {rest, records.end()};
}

std::vector<DataKind> SelectedKinds(const Row& row) {
  std::vector<DataKind> kinds;
  std::copy_if(AllDataKinds.begin(), AllDataKinds.end(), std::back_inserter(kinds),
               [&](DataKind kind) { return Selected(row, kind); });
  return kinds;
}

}  // namespace

void RowRun::Check() {
  ASSERT_EQ(static_cast<int>(Prepare()), static_cast<int>(Outcome::Done));
  CheckRow();
  CheckSameReceiver();
  CheckHealthyReceiver();
  if (Uploads()) CheckAutoDelete();
}

std::vector<NamedRecord> RowRun::Old(DataKind kind) const {
  return RecordsOf(kind, Amount::Old, HasLinksAndHeaders(row_.model));
}

std::vector<LinePacket> RowRun::InReceiver(DataKind kind) {
  const ReceiverMemory* memory = bench_.port.Line().MemoryOf(row_.model);
  EXPECT_NE(memory, nullptr);
  return memory == nullptr ? std::vector<LinePacket>{} : PacketsOf(*memory, kind);
}

/// A download meets old data in the program, an upload old data in the receiver, of which the program knows.
Outcome RowRun::Prepare() {
  for (const DataKind kind : AllDataKinds)
    bench_.main.State().SetReceiverCount(kind, std::nullopt);
  bench_.Plug(row_.model, Uploads() ? MovedAmounts(row_) : AllOld, "", AtOnce);
  const Outcome outcome = bench_.Run(Command::Download, std::nullopt);
  bench_.Plug(row_.model, Uploads() ? AllOld : MovedAmounts(row_), fault_, RealBaud);
  for (const DataKind kind : AllDataKinds) {
    if (Uploads()) bench_.main.State().SetReceiverCount(kind, static_cast<int>(Old(kind).size()));
  }
  return outcome;
}

Outcome RowRun::RunCommand() {
  bench_.Forget();
  for (const DataKind kind : AllDataKinds) {
    numbers_[IndexOf(kind)] = bench_.main.State().ReceiverCount(kind);
    loaded_[IndexOf(kind)] = bench_.main.State().Loaded(kind);
  }
  return bench_.Run(row_.command, row_.kind);
}

void RowRun::CheckRow() {
  const auto start = bench_.clock.now;
  EXPECT_EQ(static_cast<int>(RunCommand()), static_cast<int>(ending_.outcome));
  EXPECT_EQ(bench_.Stalled(), ending_.stalled);
  EXPECT_LT(bench_.clock.now - std::max(start, bench_.port.heard_at), LongestSilence(row_, ending_));
  CheckQuestions(KindsReached(row_, ending_));
  CheckWhatIsShown();
  CheckControls();
  for (const DataKind kind : AllDataKinds) {
    SCOPED_TRACE(DataKindName(kind));
    CheckDataSet(kind);
    CheckReceiver(kind);
    CheckNumber(kind);
  }
}

/// A download asks before it replaces a kind whose turn has come; nothing else asks.
void RowRun::CheckQuestions(const std::vector<DataKind>& turns) {
  std::vector<std::string> questions;
  for (const DataKind kind : turns) {
    if (row_.command == Command::Download && loaded_[IndexOf(kind)])
      questions.push_back(messages::OverwriteHeldQuestion(kind));
  }
  EXPECT_EQ(bench_.desktop.questions, questions);
}

void RowRun::CheckWhatIsShown() {
  EXPECT_EQ(bench_.desktop.messages, MessagesOf(row_, ending_));
  EXPECT_EQ(bench_.desktop.caption, StatusOf(row_, ending_));
  const std::string& info = bench_.main.State().ReceiverText();
  switch (ending_.identity) {
    case Identity::Known:
      EXPECT_TRUE(info.starts_with(std::string(row_.model) + " ")) << info;
      break;
    case Identity::Silent:
      EXPECT_EQ(info, messages::ReceiverText(device_messages::SilentReceiver, -1));
      break;
    case Identity::Unknown:
      EXPECT_EQ(info, messages::ReceiverText(messages::NotIdentified, 0));
      break;
    case Identity::Refusing:
      EXPECT_EQ(info, messages::ReceiverText(messages::NotAcknowledged, 0));
      break;
  }
}

void RowRun::CheckControls() {
  EXPECT_FALSE(bench_.port.PortOpen());
  EXPECT_FALSE(bench_.main.State().Busy());
  EXPECT_FALSE(bench_.main.State().CancelEnabled());
  const auto& progress = bench_.desktop.progress;
  if (!progress.empty()) {
    EXPECT_EQ(progress.back().second, 0);
  }
}

void RowRun::CheckDataSet(DataKind kind) {
  const Held held = row_.command == Command::Download ? HeldOf(kind) : Held::Old;
  const std::vector<NamedRecord> moved = MovedRecords(row_, kind);
  std::vector<NamedRecord> expected = held == Held::Old && !Uploads() ? Old(kind) : moved;
  std::optional<int> number = static_cast<int>(expected.size());
  std::size_t blank = 0;
  if (held == Held::Empty) {
    expected.clear();
    number.reset();
  } else if (held == Held::FirstMissing) {
    expected = WithoutFirst(expected);
    if (kind == DataKind::Waypoint) blank = 1;
  } else if (held == Held::Cut || held == Held::CutAndBlank) {
    expected.resize(static_cast<std::size_t>(RecordsBeforeFault(row_, static_cast<int>(moved.size()))));
    if (held == Held::Cut) number = static_cast<int>(expected.size());
    if (held == Held::CutAndBlank && kind == DataKind::Waypoint) blank = moved.size() - expected.size();
  }
  std::vector<std::string> lines = LinesOf(expected);
  lines.insert(lines.end(), blank, "blank");
  EXPECT_EQ(bench_.Lines(kind), lines);
  EXPECT_EQ(bench_.main.State().HeldCount(kind), number);
  EXPECT_EQ(bench_.main.State().Loaded(kind), held != Held::Empty);
}

/// Only an upload changes what the receiver holds.
void RowRun::CheckReceiver(DataKind kind) {
  std::vector<NamedRecord> expected = MovedRecords(row_, kind);
  if (Uploads() && HeldOf(kind) == Held::Old) {
    expected = Old(kind);
  } else if (Uploads() && HeldOf(kind) == Held::AllButOne) {
    expected.erase(expected.begin() + RecordsBeforeFault(row_, static_cast<int>(expected.size())));
  }
  EXPECT_EQ(Differs(InReceiver(kind), expected), "");
}

/// The number that the receiver was heard to hold.
void RowRun::CheckNumber(DataKind kind) {
  if (row_.command == Command::Info) {
    CheckInfoNumber(kind);
  } else if (Uploads()) {
    CheckUploadNumber(kind);
  } else {
    EXPECT_EQ(bench_.main.State().ReceiverCount(kind), numbers_[IndexOf(kind)]);
  }
}

void RowRun::CheckInfoNumber(DataKind kind) {
  const Held held = HeldOf(kind);
  const int count = static_cast<int>(MovedRecords(row_, kind).size());
  const int shown = held == Held::Cut ? RecordsBeforeFault(row_, count) : count;
  EXPECT_EQ(bench_.main.State().ReceiverCount(kind),
            held == Held::Whole || held == Held::Cut ? std::optional(shown) : std::nullopt);
}

/// Behind a kind's upload what the receiver holds then. Where it could not be asked, nothing that is not so.
void RowRun::CheckUploadNumber(DataKind kind) {
  const std::optional<int> number = bench_.main.State().ReceiverCount(kind);
  const std::vector<DataKind> reached = KindsReached(row_, ending_);
  if (std::find(reached.begin(), reached.end(), kind) == reached.end()) {
    EXPECT_EQ(number, numbers_[IndexOf(kind)]);
    return;
  }
  const int held = static_cast<int>(InReceiver(kind).size());
  const bool fewer = row_.phase == Phase::NewNumber && row_.fault->counts == Counts::Nothing;
  const int told = fewer ? RecordsBeforeFault(row_, held) : held;
  if (NewNumberKnown(row_, ending_, kind)) {
    EXPECT_EQ(number, told);
  } else if (number) {
    EXPECT_EQ(number, told) << "a number from before the upload";
  }
}

/// The same command once more on the receiver that did something wrong, in the state in which it was left.
void RowRun::CheckSameReceiver() {
  SCOPED_TRACE("the same command on the same receiver");
  if (EndsReceiver(*row_.fault)) return;
  if (StrikesOnce(*row_.fault)) {
    CheckUntroubled();
  } else {
    CheckRow();
  }
}

void RowRun::CheckHealthyReceiver() {
  SCOPED_TRACE("the next command");
  bench_.Plug(row_.model, Uploads() ? AllOld : MovedAmounts(row_), "", AtOnce);
  CheckUntroubled();
}

/// The command comes to what it is there for.
void RowRun::CheckUntroubled() {
  EXPECT_EQ(static_cast<int>(RunCommand()), static_cast<int>(Outcome::Done));
  EXPECT_EQ(bench_.desktop.messages, std::vector<std::string>{});
  EXPECT_EQ(bench_.desktop.caption, "");
  CheckQuestions(SelectedKinds(row_));
  CheckControls();
  for (const DataKind kind : SelectedKinds(row_)) {
    SCOPED_TRACE(DataKindName(kind));
    const std::vector<NamedRecord> moved = MovedRecords(row_, kind);
    EXPECT_EQ(Differs(InReceiver(kind), moved), "");
    if (row_.command == Command::Download) {
      EXPECT_EQ(bench_.main.State().HeldCount(kind), static_cast<int>(moved.size()));
    } else {
      EXPECT_EQ(bench_.main.State().ReceiverCount(kind), static_cast<int>(moved.size()));
    }
    if (row_.command != Command::Info) {
      EXPECT_EQ(bench_.Lines(kind), LinesOf(moved));
    }
  }
}

/// With AutoDelete an upload deletes what it has brought into the receiver, and nothing when anything went wrong.
void RowRun::CheckAutoDelete() {
  SCOPED_TRACE("with AutoDelete");
  ASSERT_EQ(static_cast<int>(Prepare()), static_cast<int>(Outcome::Done));
  bench_.main.State().Settings().auto_delete = true;
  const Outcome outcome = RunCommand();
  bench_.main.State().Settings().auto_delete = false;
  EXPECT_EQ(static_cast<int>(outcome), static_cast<int>(ending_.outcome));
  EXPECT_EQ(bench_.desktop.questions, std::vector<std::string>{});
  for (const DataKind kind : AllDataKinds) {
    SCOPED_TRACE(DataKindName(kind));
    const std::vector<NamedRecord> sent = MovedRecords(row_, kind);
    const bool deleted = outcome == Outcome::Done && Selected(row_, kind);
    EXPECT_EQ(bench_.Lines(kind), deleted ? std::vector<std::string>{} : LinesOf(sent));
    EXPECT_EQ(bench_.main.State().Loaded(kind), !deleted);
    if (deleted) {
      EXPECT_EQ(Differs(InReceiver(kind), sent), "");
    }
  }
}

}  // namespace walrim
