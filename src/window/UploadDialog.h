// What an upload would lose, with what is proposed against it, before the first byte.
#pragma once

#include <QDialog>
#include <vector>

#include "app/UploadReview.h"

class QTableWidget;

namespace walrim {

/// A row for each finding: a proposal is taken while its box is checked, and a name in it can be changed.
class UploadDialog : public QDialog {
 public:
  /// plan must outlive the dialog.
  UploadDialog(const UploadPlan& plan, QWidget* parent);

  /// Send where the dialog was accepted.
  [[nodiscard]] UploadDecision Decision() const { return decision_; }
  /// Those whose boxes are checked, with the names as they were changed.
  [[nodiscard]] std::vector<Proposal> Taken() const;
  /// Whether no proposal was left.
  [[nodiscard]] bool AllTaken() const;

 private:
  void FillTable();
  void AddRow(int row, const UploadFinding& finding);
  void CheckName(int row, int column);
  void TakeAll(bool taken);
  [[nodiscard]] QWidget* MakeButtons();

  const UploadPlan& plan_;
  QTableWidget* table_;
  UploadDecision decision_ = UploadDecision::Back;
};

/// Shows the dialog.
class WindowReview : public UploadReview {
 public:
  explicit WindowReview(QWidget& window) : window_(window) {}
  [[nodiscard]] UploadDecision Review(UploadPlan& plan) override;

 private:
  QWidget& window_;
};

}  // namespace walrim
