#include "window/FilterBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

FilterBar::FilterBar(QWidget* parent)
    : QWidget(parent),
      text_(MakeLine("FilterText", "この文字を含む行だけを表示します（Escで閉じます）")),
      counts_(new QLabel) {
  setObjectName("FilterBar");
  NameControl(*counts_, "FilterCounts");
  counts_->setToolTip(Translated(window_messages::HiddenRowsCount));
  text_->setClearButtonEnabled(true);
  text_->setPlaceholderText(Translated("名前・コメント・シンボルなど"));
  QPushButton* close = MakeButton("CloseFilter", "閉じる", "すべての行を表示します");
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(MakeCaption("検索(&Z)", *text_));
  line->addWidget(text_, 1);
  line->addWidget(counts_);
  line->addWidget(close);
  connect(text_, &QLineEdit::textChanged, this, &FilterBar::TextChanged);
  connect(close, &QPushButton::clicked, this, &FilterBar::Close);
}

void FilterBar::Open() {
  show();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

void FilterBar::Close() {
  hide();
  text_->clear();
}

QString FilterBar::Text() const {
  return text_->text();
}

void FilterBar::ShowCounts(const QString& counts) {
  counts_->setText(counts);
}

}  // namespace walrim
