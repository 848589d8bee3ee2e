// What became of the last download, below the tables until the user takes it away.
#pragma once

#include <QFrame>
#include <vector>

#include "app/DownloadResult.h"
#include "records/DataSet.h"

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

  void ShowResults(const std::vector<DownloadResult>& results);
  /// Says which buttons can be used. While a command runs none can.
  void ShowState(const DataSet& held, bool command_runs);

 private:
  QLabel* text_;
};

}  // namespace walrim
