// Every row of the fault matrix against the program, in virtual time.
#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <map>

#include "faults/Bench.h"
#include "faults/Endings.h"

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

struct Group {
  Command command = Command::Info;
  std::optional<DataKind> kind;
  std::string_view model;
  Link link = Link::Plain;
};

std::string GroupName(const ::testing::TestParamInfo<Group>& info) {
  const Group& group = info.param;
  std::string name(CommandName(group.command));
  name.append(group.kind ? DataKindName(*group.kind) : "All").append("_").append(group.model);
  name.append(group.link == Link::Plain ? "_Plain" : "_Checked");
  std::erase(name, ' ');
  return name;
}

void PrintTo(const Group& group, std::ostream* out) {
  *out << CommandName(group.command) << " " << group.model;
}

std::vector<Group> Groups() {
  std::vector<Group> groups;
  for (const Link link : {Link::Plain, Link::Checked}) {
    for (const std::string_view model : MatrixModels()) {
      groups.push_back({Command::Info, std::nullopt, model, link});
      for (const Command command : {Command::Download, Command::Upload}) {
        for (const DataKind kind : AllDataKinds)
          groups.push_back({command, kind, model, link});
        groups.push_back({command, std::nullopt, model, link});
      }
    }
  }
  return groups;
}

std::vector<std::string> LinesOf(const std::vector<NamedRecord>& records) {
  std::vector<std::string> lines;
  lines.reserve(records.size());
  for (const NamedRecord& record : records)
    lines.push_back(record.line);
  return lines;
}

/// One row: what was there before, the fault, and what is there afterwards.
class RowRun {
 public:
  RowRun(const Row& row, const std::string& fault, Bench& bench)
      : row_(row), ending_(EndingOf(row)), fault_(fault), bench_(bench) {}

  void Check() {
    ASSERT_EQ(static_cast<int>(Prepare()), static_cast<int>(Outcome::Done));
    const auto start = bench_.clock.now;
    const Outcome outcome = bench_.Run(row_.command, row_.kind);
    EXPECT_EQ(static_cast<int>(outcome), static_cast<int>(ending_.outcome));
    EXPECT_EQ(bench_.Stalled(), ending_.stalled);
    EXPECT_LT(bench_.clock.now - std::max(start, bench_.port.heard_at), LongestSilence(row_, ending_));
    CheckWhatIsShown();
    CheckControls();
    for (const DataKind kind : AllDataKinds) {
      SCOPED_TRACE(DataKindName(kind));
      CheckDataSet(kind);
      CheckReceiver(kind);
      CheckNumber(kind);
    }
    CheckNextCommand();
  }

 private:
  [[nodiscard]] bool Uploads() const { return row_.command == Command::Upload; }
  [[nodiscard]] std::vector<NamedRecord> Old(DataKind kind) const {
    return RecordsOf(kind, Amount::Old, HasLinksAndHeaders(row_.model));
  }
  [[nodiscard]] Held HeldOf(DataKind kind) const { return HeldAfter(row_, ending_, kind); }

  /// A download meets old data in the program, an upload old data in the receiver.
  Outcome Prepare() {
    bench_.main.controls.GpsDataNum.fill("");
    bench_.Plug(row_.model, Uploads() ? MovedAmounts(row_) : AllOld, "", AtOnce);
    const Outcome outcome = bench_.Run(Command::Download, std::nullopt);
    bench_.Plug(row_.model, Uploads() ? AllOld : MovedAmounts(row_), fault_, RealBaud);
    bench_.Forget();
    return outcome;
  }

  void CheckWhatIsShown() {
    EXPECT_EQ(bench_.desktop.messages, MessagesOf(row_, ending_));
    EXPECT_EQ(bench_.desktop.caption, StatusOf(row_, ending_));
    const std::string& info = bench_.main.controls.GpsInfo;
    switch (ending_.identity) {
      case Identity::Known:
        EXPECT_TRUE(info.starts_with(std::string(row_.model) + " ")) << info;
        break;
      case Identity::Silent:
        EXPECT_EQ(info, "電源が入っていないか，接続されていません． (Pid:-1)");
        break;
      case Identity::Unknown:
        EXPECT_EQ(info, " (Pid:0)");
        break;
    }
  }

  void CheckControls() {
    EXPECT_FALSE(bench_.port.PortOpen());
    EXPECT_FALSE(bench_.main.Busy());
    EXPECT_FALSE(bench_.main.controls.CancelEnabled);
    const auto& progress = bench_.desktop.progress;
    if (!progress.empty()) {
      EXPECT_EQ(progress.back().second, 0);
    }
  }

  void CheckDataSet(DataKind kind) {
    const Held held = row_.command == Command::Download ? HeldOf(kind) : Held::Old;
    const std::vector<NamedRecord> moved = MovedRecords(row_, kind);
    std::vector<NamedRecord> expected = held == Held::Old && !Uploads() ? Old(kind) : moved;
    std::string number = std::to_string(expected.size());
    std::size_t blank = 0;
    if (held == Held::Empty) {
      expected.clear();
      number = "-";
    } else if (held == Held::Cut || held == Held::CutAndBlank) {
      expected.resize(static_cast<std::size_t>(RecordsBeforeFault(row_, static_cast<int>(moved.size()))));
      if (held == Held::Cut) number = std::to_string(expected.size());
      if (held == Held::CutAndBlank && kind == DataKind::Waypoint) blank = moved.size() - expected.size();
    }
    std::vector<std::string> lines = LinesOf(expected);
    lines.insert(lines.end(), blank, "blank");
    EXPECT_EQ(bench_.Lines(kind), lines);
    EXPECT_EQ(bench_.main.controls.GpsNum[IndexOf(kind)], number);
    EXPECT_EQ(bench_.main.DataSetLoaded(kind), held != Held::Empty);
  }

  /// Only an upload changes what the receiver holds.
  void CheckReceiver(DataKind kind) {
    const ReceiverMemory* memory = bench_.port.Line().MemoryOf(row_.model);
    ASSERT_NE(memory, nullptr);
    std::vector<NamedRecord> expected = MovedRecords(row_, kind);
    if (Uploads() && HeldOf(kind) == Held::Old) {
      expected = Old(kind);
    } else if (Uploads() && HeldOf(kind) == Held::AllButOne) {
      expected.erase(expected.begin() + RecordsBeforeFault(row_, static_cast<int>(expected.size())));
    }
    EXPECT_EQ(Differs(PacketsOf(*memory, kind), expected), "");
  }

  /// The number that the receiver was heard to hold.
  void CheckNumber(DataKind kind) {
    const std::string& number = bench_.main.controls.GpsDataNum[IndexOf(kind)];
    const int count = static_cast<int>(MovedRecords(row_, kind).size());
    if (row_.command == Command::Info) {
      const Held held = HeldOf(kind);
      const int shown = held == Held::Cut ? RecordsBeforeFault(row_, count) : count;
      EXPECT_EQ(number, held == Held::Whole || held == Held::Cut ? std::to_string(shown) : "");
    } else if (Uploads() && Selected(row_, kind) && ending_.outcome == Outcome::Done) {
      const int held = HeldOf(kind) == Held::Old ? static_cast<int>(Old(kind).size()) : count;
      const bool fewer = row_.phase == Phase::NewNumber && row_.fault->counts == Counts::Nothing;
      EXPECT_EQ(number, std::to_string(fewer ? RecordsBeforeFault(row_, held) : held));
    }
  }

  /// The same command, with the same program, on a receiver that does nothing wrong.
  void CheckNextCommand() {
    SCOPED_TRACE("the next command");
    bench_.Plug(row_.model, Uploads() ? AllOld : MovedAmounts(row_), "", AtOnce);
    bench_.Forget();
    EXPECT_EQ(static_cast<int>(bench_.Run(row_.command, row_.kind)), static_cast<int>(Outcome::Done));
    EXPECT_EQ(bench_.desktop.messages, std::vector<std::string>{});
    EXPECT_EQ(bench_.desktop.caption, "");
    const ReceiverMemory* memory = bench_.port.Line().MemoryOf(row_.model);
    ASSERT_NE(memory, nullptr);
    for (const DataKind kind : AllDataKinds) {
      if (!Selected(row_, kind)) continue;
      const std::vector<NamedRecord> moved = MovedRecords(row_, kind);
      EXPECT_EQ(Differs(PacketsOf(*memory, kind), moved), "");
      if (row_.command != Command::Info) {
        EXPECT_EQ(bench_.Lines(kind), LinesOf(moved));
      }
    }
  }

  const Row& row_;
  const Ending& ending_;
  const std::string& fault_;
  Bench& bench_;
};

class FaultMatrix : public ::testing::TestWithParam<Group> {};

TEST_P(FaultMatrix, EveryRowEndsAsItIsWrittenDown) {
  const Group& group = GetParam();
  const std::vector<Row> rows = RowsOf(group.command, group.kind, group.model, group.link);
  std::map<std::optional<DataKind>, std::vector<ExchangeOnLine>> clean_runs;
  std::optional<Bench> bench(group.link);
  for (const Row& row : rows) {
    if (!clean_runs.contains(row.struck)) clean_runs[row.struck] = CleanRun(row);
    const std::string fault = FaultText(row, clean_runs[row.struck]);
    SCOPED_TRACE(RowName(row) + ": --fault " + fault);
    RowRun(row, fault, *bench).Check();
    // What one row has left behind is no other row's failure.
    if (HasFailure()) bench.emplace(group.link);
  }
}

INSTANTIATE_TEST_SUITE_P(Commands, FaultMatrix, ::testing::ValuesIn(Groups()), GroupName);

}  // namespace
}  // namespace walrim
