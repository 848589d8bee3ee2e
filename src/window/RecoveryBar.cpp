#include "window/RecoveryBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "app/Messages.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

RecoveryBar::RecoveryBar(RecoveryCommands& commands, const std::function<void(const std::function<void()>&)>& run)
    : commands_(commands),
      text_(new QLabel),
      restore_(MakeButton("RecoveryRestore", messages::RecoveryAnswers.first.data(),
                          "内部データに加えます（元に戻せます）")),
      discard_(MakeButton("RecoveryDiscard", messages::RecoveryAnswers.second.data(), "残っているファイルを消します")),
      later_(
          MakeButton("RecoveryLater", messages::RecoveryAnswers.back.data(), "次に起動したときに，もう一度尋ねます")) {
  setObjectName("RecoveryBar");
  NameControl(*text_, "RecoveryQuestion");
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setAutoFillBackground(true);
  auto* line = new QHBoxLayout(this);
  line->addWidget(text_, 1);
  for (const auto& [button, answer] :
       {std::pair(restore_, Answer::First), std::pair(discard_, Answer::Second), std::pair(later_, Answer::Back)}) {
    line->addWidget(button, 0, Qt::AlignTop);
    connect(button, &QPushButton::clicked, this,
            [this, run, given = answer] { run([this, given] { static_cast<void>(commands_.AnswerLeft(given)); }); });
  }
}

void RecoveryBar::ShowState(bool command_runs) {
  const auto question = commands_.Question();
  setVisible(question.has_value());
  if (!question) return;
  text_->setText(QString::fromStdString(question->text));
  restore_->setVisible(!question->damaged);
  discard_->setVisible(!question->damaged);
  later_->setText(Translated(question->damaged ? window_messages::Dismiss : messages::RecoveryAnswers.back));
  for (QPushButton* button : {restore_, discard_, later_})
    button->setEnabled(!command_runs);
}

}  // namespace walrim
