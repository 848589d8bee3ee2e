// A table of records with what a user does to it by hand: sorting by a click on a title, choosing rows, copying them.
#pragma once

#include <QSet>
#include <QTableView>
#include <vector>

#include "window/RecordModel.h"

namespace walrim {

class RecordView : public QTableView {
  Q_OBJECT

 public:
  /// The view takes the model over.
  RecordView(RecordModel* model, const QString& name, QWidget* parent = nullptr);

  /// Title lines in front of copied lines.
  void SetWithHeader(bool on) { with_header_ = on; }
  /// Copies the chosen rows, in the order they are shown, as standard lines. Without any the clipboard stays.
  void CopyRows() const;
  /// The records of the chosen rows, each once, in rising order.
  [[nodiscard]] std::vector<int> SelectedRecords() const;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void SetUpRows();
  void SetUpTitles();
  void FollowModel();
  void AddCopyAction();
  [[nodiscard]] std::vector<int> SelectedRows() const;
  [[nodiscard]] std::vector<int> NeededWidths() const;
  void FitRows();
  /// Widens the columns to what a sample of the rows needs; those that the user has set stay.
  void FitColumns();

  RecordModel& model_;
  bool with_header_ = false;
  bool fitting_ = false;
  std::vector<int> fitted_widths_;
  QSet<int> user_columns_;
};

}  // namespace walrim
