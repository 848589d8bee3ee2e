#include "window/StatusLine.h"

#include <QFileInfo>
#include <QLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <algorithm>
#include <utility>

#include "app/Messages.h"
#include "window/ElidedLabel.h"
#include "window/StallOffer.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr int ProgressWidth = 160;
/// Steps of the progress bar; counts of any size are brought to it.
constexpr int ProgressSteps = 1000;

}  // namespace

StatusLine::StatusLine(QWidget& window, const Clock& clock)
    : QObject(&window),
      status(new ElidedLabel("Status", Qt::ElideMiddle, &window)),
      open_folder(MakeButton("OpenFolder", "フォルダーを開く", "保存したファイルのあるフォルダーを開きます")),
      remove_duplicates(MakeButton("RemoveDuplicates", "重複を取り除く",
                                   "取り込む前からあった記録と同じものを取り除きます（元に戻せます）")),
      stall_offer(new StallOffer(clock, &window)),
      told_(new ElidedLabel("Told", Qt::ElideMiddle, &window)),
      progress_(new QProgressBar(&window)) {
  for (QPushButton* button : {open_folder, remove_duplicates}) {
    button->setParent(&window);
    button->setFlat(true);
  }
  progress_->setObjectName("Progress");
  progress_->setAccessibleName(Translated("進み具合"));
  progress_->setMaximumWidth(ProgressWidth);
  progress_->setTextVisible(false);
  progress_->setRange(0, ProgressSteps);
  for (QWidget* widget : std::initializer_list<QWidget*>{status, told_, open_folder, remove_duplicates, progress_})
    widget->hide();
}

void StatusLine::FillBar(QStatusBar& bar) {
  bar.addWidget(status, 1);
  bar.addWidget(told_, 1);
  bar.addWidget(open_folder);
  bar.addWidget(remove_duplicates);
  bar.addPermanentWidget(progress_);
  // Added widgets are shown.
  for (QWidget* widget : std::initializer_list<QWidget*>{open_folder, remove_duplicates, progress_})
    widget->hide();
  ShowWhatFits();
}

/// A text that is empty takes no room from the other one.
void StatusLine::ShowWhatFits() {
  told_->setVisible(!told_->text().isEmpty());
  status->setVisible(!status->text().isEmpty() || told_->text().isEmpty());
}

void StatusLine::ShowStatus(const QString& text) {
  status->ShowText(text);
  ShowWhatFits();
}

bool StatusLine::ShowsWholeStatus() const {
  // What has just been shown or hidden finds its place now.
  if (const QWidget* bar = status->parentWidget(); bar->layout() != nullptr) bar->layout()->activate();
  return status->ShowsAll();
}

void StatusLine::ShowHint(const QString& hint) {
  status->ShowHint(hint);
  ShowWhatFits();
}

void StatusLine::EndHint() {
  status->EndHint();
  ShowWhatFits();
}

void StatusLine::ShowDeeds(const Deeds& deeds) {
  if (deeds.All().empty()) return;
  deeds_.clear();
  folder_.clear();
  ForgetDuplicates();
  for (const Deed& deed : deeds.All()) {
    deeds_ += QString::fromStdString(messages::DeedLine(deed));
    if (!deed.path.empty()) folder_ = QFileInfo(QString::fromStdString(deed.path)).absolutePath();
    if (deed.kind == Deed::Kind::Imported) already_held_ = deed.already_held;
  }
  told_->ShowText(deeds_);
  ShowWhatFits();
}

void StatusLine::ForgetDuplicates() {
  already_held_ = {};
}

void StatusLine::ShowState(bool command_runs) {
  open_folder->setVisible(!folder_.isEmpty() && !in_parts_);
  remove_duplicates->setVisible(CountOf(already_held_) > 0 && !in_parts_);
  for (QPushButton* button : {open_folder, remove_duplicates})
    button->setEnabled(!command_runs);
}

void StatusLine::SetProgress(std::int64_t done, std::int64_t total) {
  if (in_parts_ && total > 0 && std::exchange(done_, done) != done) stall_offer->Moved();
  if (total <= 0) {
    progress_->setVisible(in_parts_);
    return;
  }
  const double share = static_cast<double>(std::clamp<std::int64_t>(done, 0, total)) / static_cast<double>(total);
  const double whole = in_parts_ ? part_begin_ + (part_end_ - part_begin_) * share : share;
  progress_->setValue(static_cast<int>(whole * ProgressSteps));
  progress_->show();
}

void StatusLine::BeginPart(std::string_view text, double begin, double end) {
  in_parts_ = true;
  part_begin_ = begin;
  part_end_ = end;
  stall_offer->Moved();
  told_->ShowText(Translated(text));
  progress_->setValue(static_cast<int>(begin * ProgressSteps));
  ShowState(true);
  ShowWhatFits();
}

/// What was done before stays told where nothing new has been.
void StatusLine::EndParts() {
  in_parts_ = false;
  stall_offer->Ended();
  SetProgress(0, 0);
  told_->ShowText(deeds_);
  ShowWhatFits();
}

}  // namespace walrim
