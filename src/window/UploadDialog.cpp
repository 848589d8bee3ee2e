#include "window/UploadDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "preflight/Messages.h"
#include "preflight/ShortNames.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr QSize StartSize{860, 420};
enum Column { Record, Lost, Proposed, Columns };

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The last proposal of a finding, where it is a name that can be changed.
const Proposal* NameOf(const UploadFinding& finding) {
  if (finding.proposals.empty() || finding.proposals.back().change != Change::Rename) return nullptr;
  return &finding.proposals.back();
}

}  // namespace

UploadDialog::UploadDialog(const UploadPlan& plan, QWidget* parent) : QDialog(parent), plan_(plan) {
  setObjectName("UploadCheck");
  setWindowTitle(QString::fromUtf8("アップロードの前に"));
  resize(StartSize);
  auto* column = new QVBoxLayout(this);
  auto* caption =
      new QLabel(Text(plan.findings.empty() ? window_messages::NothingWouldBeLost : window_messages::WouldBeLost));
  caption->setWordWrap(true);
  column->addWidget(caption);
  table_ = new QTableWidget(static_cast<int>(plan.findings.size()), Columns);
  NameControl(*table_, "UploadFindings");
  table_->setHorizontalHeaderLabels(
      {QString::fromUtf8("データ"), QString::fromUtf8("失われるもの"), QString::fromUtf8("提案")});
  table_->verticalHeader()->hide();
  FillTable();
  connect(table_, &QTableWidget::cellChanged, this, &UploadDialog::CheckName);
  column->addWidget(table_);
  column->addWidget(MakeButtons());
}

QWidget* UploadDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox;
  const auto add = [&](const char* name, const char* text, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = buttons->addButton(QString::fromUtf8(text), role);
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

void UploadDialog::FillTable() {
  for (int row = 0; row < table_->rowCount(); ++row)
    AddRow(row, plan_.findings[static_cast<std::size_t>(row)]);
  table_->resizeColumnsToContents();
  table_->horizontalHeader()->setStretchLastSection(true);
}

void UploadDialog::AddRow(int row, const UploadFinding& finding) {
  const auto add = [&](Column column, const std::string& text) {
    auto* item = new QTableWidgetItem(Text(text));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    table_->setItem(row, column, item);
    return item;
  };
  add(Record, preflight_messages::RecordText(plan_.data, finding.difference));
  add(Lost, preflight_messages::FindingText(finding));
  const Proposal* name = NameOf(finding);
  QTableWidgetItem* proposed = add(Proposed, name != nullptr ? name->text : preflight_messages::ProposalText(finding));
  if (finding.proposals.empty()) return;
  proposed->setFlags(proposed->flags() | Qt::ItemIsUserCheckable);
  if (name != nullptr) proposed->setFlags(proposed->flags() | Qt::ItemIsEditable);
  proposed->setCheckState(Qt::Checked);
}

/// A name that was typed is shown as the receiver can take it; what it cannot take at all is not taken here either.
void UploadDialog::CheckName(int row, int column) {
  const Proposal* name = NameOf(plan_.findings[static_cast<std::size_t>(row)]);
  if (column != Proposed || name == nullptr) return;
  const QSignalBlocker blocker(table_);
  QTableWidgetItem& item = *table_->item(row, Proposed);
  const std::string fitting = ProposedName(item.text().toStdString(), plan_.to);
  item.setText(Text(fitting.empty() ? name->text : fitting));
}

void UploadDialog::TakeAll(bool taken) {
  for (int row = 0; row < table_->rowCount(); ++row) {
    if (plan_.findings[static_cast<std::size_t>(row)].proposals.empty()) continue;
    table_->item(row, Proposed)->setCheckState(taken ? Qt::Checked : Qt::Unchecked);
  }
}

std::vector<Proposal> UploadDialog::Taken() const {
  std::vector<Proposal> taken;
  for (int row = 0; row < table_->rowCount(); ++row) {
    const UploadFinding& finding = plan_.findings[static_cast<std::size_t>(row)];
    const QTableWidgetItem& item = *table_->item(row, Proposed);
    if (finding.proposals.empty() || item.checkState() != Qt::Checked) continue;
    taken.insert(taken.end(), finding.proposals.begin(), finding.proposals.end());
    if (NameOf(finding) != nullptr) taken.back().text = item.text().toStdString();
  }
  return taken;
}

bool UploadDialog::AllTaken() const {
  for (int row = 0; row < table_->rowCount(); ++row) {
    const bool left = table_->item(row, Proposed)->checkState() != Qt::Checked;
    if (left && !plan_.findings[static_cast<std::size_t>(row)].proposals.empty()) return false;
  }
  return true;
}

UploadDecision WindowReview::Review(UploadPlan& plan) {
  UploadDialog dialog(plan, &window_);
  dialog.exec();
  if (dialog.Decision() != UploadDecision::Send) return dialog.Decision();
  const std::vector<Proposal> taken = dialog.Taken();
  if (taken.empty()) return UploadDecision::Send;
  plan.data = WithProposals(plan.data, taken, plan.to);
  // What only comes to light now is fitted as the rest was.
  if (dialog.AllTaken()) plan.data = Fitted(plan.data, plan.kinds, plan.before, plan.to, nullptr);
  return UploadDecision::Send;
}

}  // namespace walrim
