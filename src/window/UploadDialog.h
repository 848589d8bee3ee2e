// What an upload would lose, with what is proposed against it, before the first byte.
#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "app/UploadReview.h"

class QTableWidget;

namespace walrim {

/// A row for each finding, and for each record that gets another name: a proposal is taken while its box is checked,
/// and a name in it can be changed. What becomes of the names as they stand is told beside them at once.
class UploadDialog : public QDialog {
 public:
  /// plan must outlive the dialog.
  UploadDialog(const UploadPlan& plan, QWidget* parent);

  /// Send where the dialog was accepted.
  [[nodiscard]] UploadDecision Decision() const { return decision_; }
  /// Those whose boxes are checked, with the names as they were changed.
  [[nodiscard]] std::vector<Proposal> Taken() const;
  /// The kinds in which what only comes to light when the proposals are taken is fitted as well: all of which no
  /// proposal was left and no name was typed.
  [[nodiscard]] DataKinds FittedKinds() const;

 private:
  struct Row {
    Difference about;
    std::string told;
    std::vector<Proposal> proposals;  ///< but for a name of the record itself
    std::optional<Proposal> name;     ///< of the record itself, as it stands
    std::string proposed_name;
    std::string note;  ///< what became of a name that was typed
  };

  void MakeRows();
  [[nodiscard]] Row RowOf(const UploadFinding& finding) const;
  /// A row of its own for a name that a finding about another record proposes.
  void AddNameOfOther(const Proposal& rename, const Difference& about);
  [[nodiscard]] bool HasRowFor(const Proposal& rename) const;
  void FillTable();
  void ShowRow(int row);
  [[nodiscard]] bool HasProposal(const Row& row) const { return row.name || !row.proposals.empty(); }
  [[nodiscard]] bool IsTaken(std::size_t row) const;
  void RowChanged(int row, int column);
  void TakeTyped(Row& row, const std::string& typed) const;
  /// Rows about the same record show the same name.
  void FollowName(std::size_t row);
  void TakeAll(bool taken);
  /// Finds out what the names that stand there lead to, and says so beside them.
  void Examine();
  [[nodiscard]] std::string TroubleOf(const Row& row, const std::vector<UploadFinding>& findings) const;
  [[nodiscard]] QWidget* MakeButtons();

  const UploadPlan& plan_;
  std::vector<Row> rows_;
  DataKinds typed_{};  ///< kinds with names that the user typed
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
