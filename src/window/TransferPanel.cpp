#include "window/TransferPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "app/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

std::size_t PresentRecords(const DataSet& data, DataKind kind) {
  if (kind != DataKind::Waypoint) return data.Count(kind);
  return static_cast<std::size_t>(std::ranges::count(data.Waypoints(), false, &Waypoint::missing));
}

}  // namespace

TransferPanel::TransferPanel(QWidget* parent)
    : QFrame(parent),
      again(MakeButton("DownloadAgain", "もう一度（誤り検査）",
                       "データの誤りを検査しながら，もう一度ダウンロードします")),
      remove_missing(MakeButton("RemoveMissing", "届かなかった記録を取り除く",
                                "受信機から届かなかった記録を内部データから取り除きます（元に戻せます）")),
      dismiss(MakeButton("DismissResults", "閉じる", "この結果を消します")),
      text_(new QLabel) {
  NameControl(*text_, "DownloadResults");
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setFocusPolicy(Qt::StrongFocus);
  setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
  auto* line = new QHBoxLayout(this);
  line->addWidget(text_, 1);
  for (QPushButton* button : {again, remove_missing, dismiss})
    line->addWidget(button, 0, Qt::AlignTop);
  connect(dismiss, &QPushButton::clicked, this, &QWidget::hide);
  hide();
}

void TransferPanel::ShowResults(const std::vector<DownloadResult>& results, ProgramState& state) {
  came_.clear();
  for (const DownloadResult& result : results) {
    came_.push_back({result.kind, state.Revisions()[IndexOf(result.kind)], PresentRecords(state.Data(), result.kind)});
  }
  const bool whole = std::ranges::all_of(results, &DownloadResult::Whole);
  QStringList lines;
  for (const std::string& line : messages::DownloadResultLines(results))
    lines.append(QString::fromStdString(line));
  // What went well needs no room of its own.
  text_->setText(lines.join(whole ? QLatin1Char(' ') : QLatin1Char('\n')));
  again->setVisible(!whole);
  show();
}

/// Undoing gives an older revision back.
bool TransferPanel::IsHeld(const Came& came, ProgramState& state) {
  return state.Revisions()[IndexOf(came.kind)] >= came.revision &&
         PresentRecords(state.Data(), came.kind) >= came.records;
}

void TransferPanel::ShowState(ProgramState& state, bool command_runs) {
  const bool held = std::ranges::all_of(came_, [&](const Came& came) { return IsHeld(came, state); });
  if (!command_runs && !held) hide();
  remove_missing->setVisible(std::ranges::any_of(state.Data().Waypoints(), &Waypoint::missing));
  for (QPushButton* button : {again, remove_missing, dismiss})
    button->setEnabled(!command_runs);
}

}  // namespace walrim
