// Under the map: the profile of a log or route, and the figures of those that are chosen and of all.
#pragma once

#include <QTabWidget>
#include <optional>
#include <vector>

#include "records/DataSet.h"
#include "walks/Figures.h"
#include "window/MapScene.h"
#include "window/RecordTables.h"

class QLabel;

namespace walrim {

class ProfileView;

class WayPanel : public QTabWidget {
  Q_OBJECT

 public:
  /// data_set must outlive the panel.
  explicit WayPanel(const DataSet& data_set, QWidget* parent = nullptr);

  [[nodiscard]] ProfileView& Profile() { return *profile_; }
  /// Shows a log or route that is held, or none. The records may be others than before.
  void ShowWay(const std::optional<MapItem>& way);
  /// What of the figures was computed is no longer so.
  void ForgetFigures();
  /// Shows the figures of some rows, as soon as they are looked at.
  void ShowFigures(const RecordSelection& chosen);

  [[nodiscard]] QSize minimumSizeHint() const override { return {64, 48}; }

 private:
  [[nodiscard]] const Figures& FiguresOfLog(std::size_t log);
  [[nodiscard]] Figures TotalOfLogs(const std::vector<std::size_t>& logs);
  [[nodiscard]] QString LogTable();
  void FillFigures();
  [[nodiscard]] std::vector<std::size_t> ChosenOf(DataKind kind) const;
  void TellRange(std::size_t first, std::size_t last);

  const DataSet& data_;
  ProfileView* profile_;
  QLabel* figures_text_;
  QWidget* figures_page_;
  std::optional<MapItem> way_;
  RecordSelection chosen_;
  bool figures_shown_ = false;
  std::vector<std::optional<Figures>> figures_;  ///< of the logs, as far as they were asked for
};

}  // namespace walrim
