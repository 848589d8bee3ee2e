#include "window/DoctorPanel.h"

#include <QClipboard>
#include <QFont>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "app/DoctorCommands.h"
#include "doctor/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr double HeadlineScale = 1.4;

QLabel* MakeText(const char* control) {
  auto* label = new QLabel;
  NameControl(*label, control);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setFocusPolicy(Qt::StrongFocus);
  return label;
}

QString Lines(const std::vector<std::string>& texts, const char* bullet) {
  QStringList lines;
  for (const std::string& text : texts)
    lines.append(Translated(bullet) + QString::fromStdString(text));
  return lines.join(QLatin1Char('\n'));
}

/// Who answered, and what to do next.
QString Told(const LineReport& report) {
  const QString advice = Lines(doctor_messages::Advice(report), "・");
  if (report.description.empty()) return advice;
  return QString::fromStdString(report.description) + (advice.isEmpty() ? QString() : QLatin1Char('\n') + advice);
}

}  // namespace

DoctorPanel::DoctorPanel(QWidget* parent)
    : QWidget(parent),
      again(MakeButton("DoctorAgain", "もう一度(&A)", "この接続をもう一度調べます")),
      find_receiver(MakeButton("DoctorFind", "すべてのポートを探す(&W)",
                               "すべてのシリアルポートを順に調べ，受信機が応えたポートを選びます")),
      save_trace(MakeButton("SaveTrace", "通信記録を保存(&J)...", "送受信したデータの記録をファイルに保存します")),
      back(MakeButton("DoctorBack", "表に戻る(&B)", "データの表を表示します")),
      headline_(MakeText("DoctorHeadline")),
      advice_(MakeText("DoctorAdvice")),
      command_row_(new QWidget),
      command_(new QLineEdit),
      steps_(MakeText("DoctorSteps")) {
  QFont large = headline_->font();
  large.setPointSizeF(large.pointSizeF() * HeadlineScale);
  large.setBold(true);
  headline_->setFont(large);
  steps_->setForegroundRole(QPalette::PlaceholderText);

  NameControl(*command_, "DoctorCommand");
  command_->setReadOnly(true);
  QPushButton* copy = MakeButton("DoctorCopy", "命令をコピー", "この命令をクリップボードにコピーします");
  connect(copy, &QPushButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(command_->text()); });
  auto* command_line = new QHBoxLayout(command_row_);
  command_line->setContentsMargins(0, 0, 0, 0);
  command_line->addWidget(command_, 1);
  command_line->addWidget(copy);

  auto* texts = new QWidget;
  auto* column = new QVBoxLayout(texts);
  for (QWidget* widget : std::initializer_list<QWidget*>{headline_, advice_, command_row_, steps_})
    column->addWidget(widget);
  column->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setWidget(texts);

  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {again, find_receiver, save_trace, back})
    buttons->addWidget(button);
  buttons->insertStretch(3, 1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(scroll, 1);
  all->addLayout(buttons);
}

void DoctorPanel::ShowState(const DoctorCommands& doctor, bool command_runs) {
  for (QPushButton* button : {again, find_receiver, save_trace, back})
    button->setEnabled(!command_runs);
  steps_->setText(Lines(doctor.Lines(), ""));
  headline_->setText(QString::fromStdString(doctor.Headline()));
  const std::optional<LineReport>& report = doctor.Report();
  advice_->setText(report ? Told(*report) : QString());
  ShowCommand(report ? doctor_messages::ShellCommand(*report) : std::string());
}

void DoctorPanel::ShowCommand(const std::string& command) {
  command_->setText(QString::fromStdString(command));
  command_row_->setVisible(!command.empty());
}

}  // namespace walrim
