#include "window/DataPanel.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QToolButton>

#include "window/ChosenCount.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

enum Row { Names, Receiver, Held };
/// A kind has two columns: its tick, and its count. The rows' captions stand in front of them, the buttons behind.
constexpr int FirstKind = 1;
constexpr int Gap = FirstKind + 2 * static_cast<int>(DataKindCount);
constexpr int FirstButton = Gap + 1;
/// Between kinds, and at least between what is counted and what can be done with it.
constexpr int GapWidth = 16;

constexpr const char* ReceiverCaption = "受信機";
constexpr const char* HeldCaption = "内部データ";

QString Name(DataKind kind) {
  const std::string_view name = DataKindName(kind);
  return Translated(name);
}

QString CountText(const std::optional<int>& count, const char* unknown) {
  return count ? QString::number(*count) : QString(unknown);
}

QToolButton* MakeSettingsButton() {
  auto* button = new QToolButton;
  button->setObjectName("Settings");
  button->setText(Translated("設定"));
  button->setToolTip(Translated("保存の形式，通信，自動処理の設定を表示します（Ctrl+,）"));
  button->setShortcut(QKeySequence("Ctrl+,"));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setArrowType(Qt::RightArrow);
  button->setCheckable(true);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
  return button;
}

}  // namespace

DataPanel::DataPanel(ProgramState& state, ControlBinder& binder)
    : file_import(MakeButton("FileImport", "取り込み(&O)...", "ファイルを内部データに取り込みます（Ctrl+O）")),
      paste(MakeButton("Paste", "貼り付け(&V)", "クリップボードの内容を内部データに取り込みます（Ctrl+V）")),
      settings(MakeSettingsButton()),
      file_export(MakeButton("FileExport", "保存(&S)...", "選択した種類をファイルに保存します（Ctrl+S）")),
      copy(MakeButton("Copy", "コピー(&Y)", "選択した種類をクリップボードにコピーします（Ctrl+Shift+C）")),
      remove(MakeButton("Delete", "削除(&X)", "選択した種類を内部データから削除します（確認しません）")),
      state_(state) {
  setObjectName("DataPanel");
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins({});
  grid->setVerticalSpacing(grid->verticalSpacing() / 2);
  grid->addWidget(new QLabel(Translated(ReceiverCaption)), Receiver, 0);
  grid->addWidget(new QLabel(Translated(HeldCaption)), Held, 0);
  for (const DataKind kind : AllDataKinds)
    BuildKind(*grid, kind, binder);
  BuildButtons(*grid);
}

void DataPanel::BuildKind(QGridLayout& grid, DataKind kind, ControlBinder& binder) {
  Column& column = columns_[IndexOf(kind)];
  const std::size_t index = IndexOf(kind);
  column.data_type = new QLabel(Name(kind));
  column.data_type->setObjectName(IndexedName("DataType", index));
  column.data_type->setToolTip(Translated("クリックすると，この種類のチェックを付けるか外します"));
  column.data_type->setCursor(Qt::PointingHandCursor);
  column.data_type->setAutoFillBackground(true);
  column.data_type->installEventFilter(this);
  column.down_check = MakeCheckBox(IndexedName("DownCheck", index), "", "ダウンロードする種類");
  column.do_check = MakeCheckBox(IndexedName("DoCheck", index), "", "アップロード・保存・コピー・削除する種類");
  binder.Bind(*column.down_check, state_.Settings().download_kinds[index]);
  binder.Bind(*column.do_check, state_.Settings().chosen_kinds[index]);
  column.receiver_count = MakeCountBox(IndexedName("GpsDataNum", index), "受信機にある件数");
  column.held_count = MakeCountBox(IndexedName("GpsNum", index), "内部データの件数");
  const QString row_names[] = {Translated(ReceiverCaption), Translated(HeldCaption)};
  const auto in_row = [&](int row) { return row_names[row] + " " + Name(kind); };
  column.down_check->setAccessibleName(in_row(0));
  column.receiver_count->setAccessibleName(in_row(0) + Translated(" 件数"));
  column.do_check->setAccessibleName(in_row(1));
  column.held_count->setAccessibleName(in_row(1) + Translated(" 件数"));
  for (QCheckBox* check : {column.down_check, column.do_check})
    connect(check, &QCheckBox::clicked, this, &DataPanel::Ticked);
  const int first = FirstKind + 2 * static_cast<int>(index);
  grid.addWidget(column.data_type, Names, first, 1, 2);
  grid.addWidget(column.down_check, Receiver, first);
  grid.addWidget(column.receiver_count, Receiver, first + 1);
  grid.addWidget(column.do_check, Held, first);
  grid.addWidget(column.held_count, Held, first + 1);
}

void DataPanel::BuildButtons(QGridLayout& grid) {
  grid.setColumnMinimumWidth(Gap, GapWidth);
  grid.setColumnStretch(Gap, 1);
  grid.addWidget(file_import, Receiver, FirstButton);
  grid.addWidget(paste, Receiver, FirstButton + 1);
  grid.addWidget(settings, Receiver, FirstButton + 2);
  grid.addWidget(file_export, Held, FirstButton);
  grid.addWidget(copy, Held, FirstButton + 1);
  grid.addWidget(remove, Held, FirstButton + 2);
}

bool DataPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonRelease) return QWidget::eventFilter(watched, event);
  for (const Column& column : columns_) {
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    if (watched != column.data_type || !column.down_check->isEnabled()) continue;
    if (mouse->button() != Qt::LeftButton || !column.data_type->rect().contains(mouse->pos())) continue;
    const bool tick = !column.down_check->isChecked() || !column.do_check->isChecked();
    column.down_check->setChecked(tick);
    column.do_check->setChecked(tick);
    Q_EMIT Ticked();
  }
  return QWidget::eventFilter(watched, event);
}

void DataPanel::ShowKind(DataKind kind, bool command_runs) {
  Column& column = columns_[IndexOf(kind)];
  column.receiver_count->setText(CountText(state_.ReceiverCount(kind), ""));
  column.held_count->setText(ChosenCountText(state_.Data(), kind, CountText(state_.HeldCount(kind), "-")));
  column.held_count->setToolTip(
      Translated(state_.Unsaved(kind) ? window_messages::UnsavedCount : window_messages::HeldCount));
  // A kind that is full looks like a button, others like any caption.
  const bool full = state_.Full(kind);
  column.data_type->setBackgroundRole(full ? QPalette::Button : QPalette::Window);
  column.data_type->setForegroundRole(full ? QPalette::ButtonText : QPalette::WindowText);
  column.data_type->setFrameStyle(full ? static_cast<int>(QFrame::Panel) | static_cast<int>(QFrame::Raised)
                                       : static_cast<int>(QFrame::NoFrame));
  column.down_check->setEnabled(!command_runs);
  column.do_check->setEnabled(!command_runs);
}

void DataPanel::ShowState(bool command_runs) {
  for (const DataKind kind : AllDataKinds)
    ShowKind(kind, command_runs);
  for (QPushButton* button : {file_import, paste, file_export, copy, remove})
    button->setEnabled(!command_runs);
}

std::vector<QWidget*> DataPanel::TabOrder() const {
  std::vector<QWidget*> order;
  for (const Column& column : columns_)
    order.insert(order.end(), {column.down_check, column.receiver_count});
  order.insert(order.end(), {file_import, paste, settings});
  for (const Column& column : columns_)
    order.insert(order.end(), {column.do_check, column.held_count});
  order.insert(order.end(), {file_export, copy, remove});
  return order;
}

}  // namespace walrim
