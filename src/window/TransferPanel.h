// What became of the last download, below the tables until the user takes it away.
#pragma once

#include <QFrame>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/DownloadResult.h"
#include "app/ProgramState.h"

class QLabel;
class QPushButton;

namespace walrim {

/// A line a kind, and what can be done where something is missing or damaged. Hidden while there is nothing to tell.
/// The buttons do nothing by themselves.
class TransferPanel : public QFrame {
 public:
  explicit TransferPanel(QWidget* parent = nullptr);

  QPushButton* const again;
  QPushButton* const remove_missing;
  QPushButton* const dismiss;

  /// state: what is held now, which is what came.
  void ShowResults(const std::vector<DownloadResult>& results, ProgramState& state);
  /// Says which buttons can be used; while a command runs none can. Goes away where what came has been undone, or
  /// some of it has been taken out by more than remove_missing.
  void ShowState(ProgramState& state, bool command_runs);

 private:
  /// What is held of a kind that came.
  struct Came {
    DataKind kind;
    std::uint64_t revision;
    std::size_t records;  ///< without those that are missing
  };
  [[nodiscard]] static bool IsHeld(const Came& came, ProgramState& state);

  QLabel* text_;
  std::vector<Came> came_;
};

}  // namespace walrim
