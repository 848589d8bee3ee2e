#include "window/DataPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "window/ChosenCount.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

enum Column { DownChecks, DataTypes, ReceiverCounts, Ways, DoChecks, HeldCounts, Writing, Reading };
constexpr int FirstRow = 1;

int RowOf(DataKind kind) {
  return FirstRow + static_cast<int>(kind);
}

QLabel* MakeHeading(const char* text) {
  auto* label = new QLabel(QString::fromUtf8(text));
  label->setAlignment(Qt::AlignCenter);
  return label;
}

QString CountText(const std::optional<int>& count, const char* unknown) {
  return count ? QString::number(*count) : QString(unknown);
}

}  // namespace

DataPanel::DataPanel(ProgramState& state, ControlBinder& binder)
    : QGroupBox(QString::fromUtf8("データ")),
      down_load(MakeButton("GpsDownLoad", "ダウンロード(&D) →", "チェックした種類を受信機から受け取ります")),
      up_load(MakeButton("GpsUpLoad", "← アップロード(&U)", "選択した種類を受信機へ送ります")),
      cancel(MakeButton("Cancel", "中止(&C)", "転送を中止します（Esc）")),
      file_export(MakeButton("FileExport", "保存(&S)...", "選択した種類をファイルに保存します")),
      copy(MakeButton("Copy", "コピー(&Y)", "選択した種類をクリップボードにコピーします")),
      remove(MakeButton("Delete", "削除(&X)", "選択した種類を内部データから削除します（確認しません）")),
      file_import(MakeButton("FileImport", "取り込み(&O)...", "ファイルを内部データに取り込みます")),
      paste(MakeButton("Paste", "貼り付け(&V)", "クリップボードの内容を内部データに取り込みます")),
      state_(state) {
  auto* grid = new QGridLayout(this);
  BuildHeadings(*grid);
  for (const DataKind kind : AllDataKinds)
    BuildRow(*grid, kind, binder);
  int row = FirstRow;
  for (QPushButton* button : {down_load, up_load, cancel})
    grid->addWidget(button, row++, Ways);
  row = FirstRow;
  for (QPushButton* button : {file_export, copy, remove})
    grid->addWidget(button, row++, Writing);
  row = FirstRow;
  for (QPushButton* button : {file_import, paste})
    grid->addWidget(button, row++, Reading);
  for (const int wide : {Ways, Writing, Reading})
    grid->setColumnStretch(wide, 1);
}

void DataPanel::BuildHeadings(QGridLayout& grid) {
  grid.addWidget(MakeHeading("受信機"), 0, DownChecks, 1, 3);
  grid.addWidget(MakeHeading("内部データ"), 0, DoChecks, 1, 2);
}

void DataPanel::BuildRow(QGridLayout& grid, DataKind kind, ControlBinder& binder) {
  Row& row = rows_[IndexOf(kind)];
  row.down_check = MakeCheckBox(IndexedName("DownCheck", IndexOf(kind)), "", "ダウンロードする種類");
  row.do_check = MakeCheckBox(IndexedName("DoCheck", IndexOf(kind)), "", "アップロード・保存・コピー・削除する種類");
  binder.Bind(*row.down_check, state_.Settings().download_kinds[IndexOf(kind)]);
  binder.Bind(*row.do_check, state_.Settings().chosen_kinds[IndexOf(kind)]);
  row.receiver_count = MakeCountBox(IndexedName("GpsDataNum", IndexOf(kind)), "受信機にある件数");
  row.held_count = MakeCountBox(IndexedName("GpsNum", IndexOf(kind)), "内部データの件数");
  const std::string_view name = DataKindName(kind);
  row.data_type = new QLabel(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  NameControl(*row.data_type, IndexedName("DataType", IndexOf(kind)));
  row.data_type->setAutoFillBackground(true);
  row.data_type->setMargin(row.data_type->fontMetrics().averageCharWidth() / 2);
  row.data_type->setFrameShape(QFrame::StyledPanel);
  grid.addWidget(row.down_check, RowOf(kind), DownChecks);
  grid.addWidget(row.data_type, RowOf(kind), DataTypes);
  grid.addWidget(row.receiver_count, RowOf(kind), ReceiverCounts);
  grid.addWidget(row.do_check, RowOf(kind), DoChecks);
  grid.addWidget(row.held_count, RowOf(kind), HeldCounts);
}

void DataPanel::ShowRow(DataKind kind, bool command_runs) {
  Row& row = rows_[IndexOf(kind)];
  row.receiver_count->setText(CountText(state_.ReceiverCount(kind), ""));
  row.held_count->setText(ChosenCountText(state_.Data(), kind, CountText(state_.HeldCount(kind), "-")));
  row.held_count->setToolTip(
      QString::fromUtf8(state_.Unsaved(kind) ? window_messages::UnsavedCount : window_messages::HeldCount));
  // A kind that is full looks like a button, others like a text box.
  const QPalette::ColorRole role = state_.Full(kind) ? QPalette::Button : QPalette::Base;
  row.data_type->setBackgroundRole(role);
  row.data_type->setForegroundRole(role == QPalette::Base ? QPalette::Text : QPalette::ButtonText);
  row.down_check->setEnabled(!command_runs);
  row.do_check->setEnabled(!command_runs);
}

void DataPanel::ShowState(bool command_runs) {
  for (const DataKind kind : AllDataKinds)
    ShowRow(kind, command_runs);
  for (QPushButton* button : {down_load, up_load, file_export, copy, remove, file_import, paste})
    button->setEnabled(!command_runs);
  cancel->setEnabled(state_.CancelEnabled());
}

std::vector<QWidget*> DataPanel::TabOrder() const {
  std::vector<QWidget*> order;
  for (const Row& row : rows_)
    order.push_back(row.down_check);
  order.insert(order.end(), {down_load, up_load, cancel});
  for (const Row& row : rows_)
    order.push_back(row.do_check);
  order.insert(order.end(), {file_export, copy, remove, file_import, paste});
  return order;
}

}  // namespace walrim
