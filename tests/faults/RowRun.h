// A row of the fault matrix, run and held against what is written down of it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "faults/Bench.h"
#include "faults/Endings.h"

namespace walrim {

/// What was there before, the fault, what is there afterwards, and what comes next. All must outlive this object.
class RowRun {
 public:
  RowRun(const Row& row, const std::string& fault, Bench& bench)
      : row_(row), ending_(EndingOf(row)), fault_(fault), bench_(bench) {}

  void Check();

 private:
  [[nodiscard]] bool Uploads() const { return row_.command == Command::Upload; }
  [[nodiscard]] std::vector<NamedRecord> Old(DataKind kind) const;
  [[nodiscard]] Held HeldOf(DataKind kind) const { return HeldAfter(row_, ending_, kind); }
  /// Nothing, with a failure, when the receiver was never met.
  [[nodiscard]] std::vector<LinePacket> InReceiver(DataKind kind);

  [[nodiscard]] Outcome Prepare();
  [[nodiscard]] Outcome RunCommand();
  void CheckRow();
  void CheckQuestions(const std::vector<DataKind>& turns);
  void CheckWhatIsShown();
  void CheckControls();
  void CheckDataSet(DataKind kind);
  void CheckReceiver(DataKind kind);
  void CheckNumber(DataKind kind);
  void CheckInfoNumber(DataKind kind);
  void CheckUploadNumber(DataKind kind);
  void CheckSameReceiver();
  void CheckHealthyReceiver();
  void CheckUntroubled();
  void CheckAutoDelete();

  const Row& row_;
  const Ending& ending_;
  const std::string& fault_;
  Bench& bench_;
  /// Before the command.
  std::array<bool, DataKindCount> loaded_{};
  std::array<std::optional<int>, DataKindCount> numbers_;
};

}  // namespace walrim
