#include "window/UploadDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "preflight/Messages.h"
#include "preflight/Sending.h"
#include "preflight/ShortNames.h"
#include "text/Scan.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr QSize StartSize{960, 440};
enum Column { Record, Lost, Proposed, Checked, Columns };

QString Text(std::string_view utf8) {
  return Translated(utf8);
}

bool SameRecord(const Proposal& proposal, const Difference& about) {
  return proposal.kind == about.kind && proposal.record == about.record && proposal.point == about.point;
}

bool SameTarget(const Proposal& proposal, const Proposal& other) {
  return proposal.kind == other.kind && proposal.record == other.record && proposal.point == other.point;
}

const Waypoint& PointOf(const DataSet& data, const Difference& about) {
  return about.point ? data.Routes()[about.record].points[*about.point].waypoint : data.Waypoints()[about.record];
}

/// Whether what is found hangs on the name of a waypoint or of a route's point.
bool IsAboutName(const UploadFinding& finding) {
  const Difference& difference = finding.difference;
  if (difference.kind == DataKind::TrackLog || (difference.kind == DataKind::Route && !difference.point)) return false;
  if (difference.loss == Loss::Missing) return finding.cause == Cause::Overwritten || finding.cause == Cause::Letters;
  return difference.loss == Loss::Name || difference.loss == Loss::Overwrites || difference.loss == Loss::SharedName;
}

}  // namespace

UploadDialog::UploadDialog(const UploadPlan& plan, QWidget* parent) : QDialog(parent), plan_(plan) {
  setObjectName("UploadCheck");
  setWindowTitle(Translated("アップロードの前に"));
  resize(StartSize);
  auto* column = new QVBoxLayout(this);
  auto* caption =
      new QLabel(Text(plan.findings.empty() ? window_messages::NothingWouldBeLost : window_messages::WouldBeLost));
  caption->setWordWrap(true);
  column->addWidget(caption);
  MakeRows();
  table_ = new QTableWidget(static_cast<int>(rows_.size()), Columns);
  NameControl(*table_, "UploadFindings");
  table_->setHorizontalHeaderLabels(
      {Translated("データ"), Translated("失われるもの"), Translated("提案"), Translated("確認")});
  table_->verticalHeader()->hide();
  FillTable();
  connect(table_, &QTableWidget::cellChanged, this, &UploadDialog::RowChanged);
  column->addWidget(table_);
  column->addWidget(MakeButtons());
}

QWidget* UploadDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox;
  const auto add = [&](const char* name, const char* text, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = buttons->addButton(Translated(text), role);
    NameControl(*button, name);
    return button;
  };
  const auto decide = [this](UploadDecision decision) {
    decision_ = decision;
    done(decision == UploadDecision::Back ? Rejected : Accepted);
  };
  connect(add("TakeAll", "すべて提案どおり(&A)", QDialogButtonBox::ActionRole), &QPushButton::clicked, this,
          [this] { TakeAll(true); });
  connect(add("LeaveAll", "すべてそのまま(&L)", QDialogButtonBox::ActionRole), &QPushButton::clicked, this,
          [this] { TakeAll(false); });
  QPushButton* ask = add("AskReceiver", "受信機の名前も調べる(&N)", QDialogButtonBox::ActionRole);
  ask->setEnabled(!plan_.receiver_asked);
  connect(ask, &QPushButton::clicked, this, [decide] { decide(UploadDecision::AskReceiver); });
  QPushButton* send = add("Send", "アップロードする(&U)", QDialogButtonBox::AcceptRole);
  send->setDefault(true);
  connect(send, &QPushButton::clicked, this, [decide] { decide(UploadDecision::Send); });
  connect(add("Back", "戻る(&B)", QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
          [decide] { decide(UploadDecision::Back); });
  return buttons;
}

// ---- Rows

void UploadDialog::MakeRows() {
  for (const UploadFinding& finding : plan_.findings)
    rows_.push_back(RowOf(finding));
  for (const UploadFinding& finding : plan_.findings) {
    for (const Proposal& proposal : finding.proposals) {
      const bool of_other = proposal.change == Change::Rename && !SameRecord(proposal, finding.difference);
      if (of_other && !HasRowFor(proposal)) AddNameOfOther(proposal, finding.difference);
    }
  }
}

UploadDialog::Row UploadDialog::RowOf(const UploadFinding& finding) const {
  Row row{finding.difference, preflight_messages::FindingText(finding), {}, {}, {}, {}};
  for (const Proposal& proposal : finding.proposals) {
    if (proposal.change != Change::Rename) {
      row.proposals.push_back(proposal);
    } else if (SameRecord(proposal, finding.difference)) {
      row.name = proposal;
    }
  }
  if (!row.name && IsAboutName(finding)) {
    row.name = {Change::Rename, row.about.kind, row.about.record, row.about.point, {}, 0};
    row.name->text = Bare(PointOf(plan_.data, row.about).ident);
  }
  if (row.name) row.proposed_name = row.name->text;
  return row;
}

bool UploadDialog::HasRowFor(const Proposal& rename) const {
  return std::ranges::any_of(rows_, [&](const Row& row) { return row.name && SameTarget(*row.name, rename); });
}

void UploadDialog::AddNameOfOther(const Proposal& rename, const Difference& about) {
  Row row;
  row.about = {rename.kind, Loss::Name, rename.record, rename.point, 1, {}, {}};
  row.told = window_messages::SameNameAs(preflight_messages::RecordText(plan_.data, about));
  row.name = rename;
  row.proposed_name = rename.text;
  const auto same = [&](const Row& other) { return other.about == about; };
  rows_.insert(std::ranges::find_if(rows_, same) + 1, std::move(row));
}

void UploadDialog::FillTable() {
  for (int row = 0; row < table_->rowCount(); ++row)
    ShowRow(row);
  table_->resizeColumnsToContents();
  table_->horizontalHeader()->setStretchLastSection(true);
}

void UploadDialog::ShowRow(int row) {
  const Row& shown = rows_[static_cast<std::size_t>(row)];
  const auto add = [&](Column column, const std::string& text) {
    auto* item = new QTableWidgetItem(Text(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    table_->setItem(row, column, item);
    return item;
  };
  add(Record, preflight_messages::RecordText(plan_.data, shown.about));
  add(Lost, shown.told);
  add(Checked, {});
  QTableWidgetItem* proposed =
      add(Proposed,
          shown.name ? shown.name->text : preflight_messages::ProposalText({{}, Cause::Type, {}, shown.proposals}));
  if (!HasProposal(shown)) return;
  proposed->setFlags(proposed->flags() | Qt::ItemIsUserCheckable);
  if (shown.name) proposed->setFlags(proposed->flags() | Qt::ItemIsEditable);
  proposed->setCheckState(Qt::Checked);
}

// ---- Names

void UploadDialog::RowChanged(int row, int column) {
  if (column != Proposed) return;
  const QSignalBlocker blocker(table_);
  const auto index = static_cast<std::size_t>(row);
  QTableWidgetItem& item = *table_->item(row, Proposed);
  if (rows_[index].name) {
    TakeTyped(rows_[index], item.text().toStdString());
    if (rows_[index].name->text != rows_[index].proposed_name) typed_[IndexOf(rows_[index].about.kind)] = true;
    FollowName(index);
  }
  Examine();
}

/// A name that was typed is shown as the receiver can take it; what it cannot take at all is not taken here either.
void UploadDialog::TakeTyped(Row& row, const std::string& typed) const {
  if (typed == row.name->text) return;
  const std::string fitting = ProposedName(typed, plan_.to);
  row.note.clear();
  if (!SameWord(fitting, typed)) {
    row.note = fitting.empty() ? window_messages::NoLettersOf(typed) : window_messages::FittedFrom(typed, fitting);
  }
  row.name->text = fitting.empty() ? row.proposed_name : fitting;
}

void UploadDialog::FollowName(std::size_t row) {
  const Proposal name = *rows_[row].name;
  const Qt::CheckState state = table_->item(static_cast<int>(row), Proposed)->checkState();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (!rows_[i].name || !SameTarget(*rows_[i].name, name)) continue;
    rows_[i].name = name;
    table_->item(static_cast<int>(i), Proposed)->setText(Text(name.text));
    table_->item(static_cast<int>(i), Proposed)->setCheckState(state);
  }
}

void UploadDialog::Examine() {
  std::vector<Proposal> taken = Taken();
  // Parts of a route would count the routes anew.
  std::erase_if(taken, [](const Proposal& proposal) { return proposal.change == Change::Split; });
  const DataSet renamed = WithProposals(plan_.data, taken, plan_.to);
  const std::vector<UploadFinding> findings = FindingsOf(renamed, plan_.kinds, plan_.before, plan_.to, nullptr);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const std::string trouble = rows_[i].name && IsTaken(i) ? TroubleOf(rows_[i], findings) : std::string();
    QTableWidgetItem& item = *table_->item(static_cast<int>(i), Checked);
    item.setText(Text(rows_[i].note + trouble));
    item.setToolTip(item.text());
    item.setIcon(trouble.empty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning));
  }
}

std::string UploadDialog::TroubleOf(const Row& row, const std::vector<UploadFinding>& findings) const {
  for (const UploadFinding& finding : findings) {
    if (!IsAboutName(finding)) continue;
    if (SameRecord(*row.name, finding.difference)) return preflight_messages::FindingText(finding);
    const bool overwrites = finding.other == row.name->record && finding.difference.kind == row.name->kind;
    if (overwrites && finding.cause == Cause::Overwritten && !row.name->point) {
      return window_messages::SameNameAs(preflight_messages::RecordText(plan_.data, finding.difference));
    }
  }
  return {};
}

// ---- What is taken

bool UploadDialog::IsTaken(std::size_t row) const {
  return table_->item(static_cast<int>(row), Proposed)->checkState() == Qt::Checked;
}

void UploadDialog::TakeAll(bool taken) {
  const QSignalBlocker blocker(table_);
  for (int row = 0; row < table_->rowCount(); ++row) {
    if (!HasProposal(rows_[static_cast<std::size_t>(row)])) continue;
    table_->item(row, Proposed)->setCheckState(taken ? Qt::Checked : Qt::Unchecked);
  }
  Examine();
}

std::vector<Proposal> UploadDialog::Taken() const {
  std::vector<Proposal> taken;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Row& row = rows_[i];
    if (!HasProposal(row) || !IsTaken(i)) continue;
    taken.insert(taken.end(), row.proposals.begin(), row.proposals.end());
    if (row.name && row.name->text != Bare(PointOf(plan_.data, row.about).ident)) taken.push_back(*row.name);
  }
  return taken;
}

DataKinds UploadDialog::FittedKinds() const {
  DataKinds kinds = plan_.kinds;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (HasProposal(rows_[i]) && !IsTaken(i)) return {};
  }
  for (const DataKind kind : AllDataKinds)
    kinds[IndexOf(kind)] = kinds[IndexOf(kind)] && !typed_[IndexOf(kind)];
  return kinds;
}

UploadDecision WindowReview::Review(UploadPlan& plan) {
  UploadDialog dialog(plan, &window_);
  dialog.exec();
  if (dialog.Decision() != UploadDecision::Send) return dialog.Decision();
  const std::vector<Proposal> taken = dialog.Taken();
  if (taken.empty()) return UploadDecision::Send;
  plan.data = WithProposals(plan.data, taken, plan.to);
  // What only comes to light now is fitted as the rest was.
  plan.data = Fitted(plan.data, dialog.FittedKinds(), plan.before, plan.to, nullptr);
  return UploadDecision::Send;
}

}  // namespace walrim
