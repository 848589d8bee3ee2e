#include "window/ScriptOptionsDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

QLineEdit* AddLine(QFormLayout& form, const char* control, const char* caption, const char* tool_tip) {
  QLineEdit* line = MakeLine(control, tool_tip);
  form.addRow(MakeCaption(caption, *line), line);
  return line;
}

QPushButton* AddButton(QDialogButtonBox& box, QDialogButtonBox::StandardButton which, const char* control,
                       const char* caption, const char* tool_tip) {
  QPushButton* button = box.addButton(which);
  NameControl(*button, control);
  button->setText(Translated(caption));
  button->setToolTip(Translated(tool_tip));
  return button;
}

}  // namespace

ScriptOptionsDialog::ScriptOptionsDialog(ScriptOptions& options, QWidget* parent) : QDialog(parent), options_(options) {
  setObjectName("MpsOption");
  setWindowTitle(Translated("MPS・WPT+出力の設定"));
  auto* column = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  column->addLayout(form);
  utc_offset_ = AddLine(*form, "OptUTCOffset", "時差の補正（時間）(&Z)", "日時に加える時間数");
  origin_name_ =
      AddLine(*form, "OptMpsWptOrgName", "出発地の名前(&S)", "ルートの最初の点の名前．空欄なら点の名前のまま");
  destination_name_ =
      AddLine(*form, "OptMpsWptDestinationName", "目的地の名前(&G)", "ルートの最後の点の名前．空欄なら点の名前のまま");
  numbering_down_ =
      MakeCheckBox("OptMpsWptRPnumberingDown", "ルートの点の番号を大きい方から付ける(&D)", "最後の点を1番とします");
  form->addRow(QString(), numbering_down_);
  track_log_step_ = AddLine(*form, "OptWptTrackLogStep", "トラックログの間隔（点）(&T)",
                            "点として描く間隔．1ならすべての点を描きます");

  // Buttons that are put into a box outside the dialog are neither its default nor all in its tab order.
  BuildButtons(*column);
  Show(ShowScriptOptions(options));
  utc_offset_->setFocus();
  utc_offset_->selectAll();
}

void ScriptOptionsDialog::BuildButtons(QVBoxLayout& column) {
  // A default button, and a tab order with all buttons in it, need the box within the dialog before its buttons, and
  // the one that accepts before the others.
  auto* box = new QDialogButtonBox;
  column.addWidget(box);
  QPushButton* ok = AddButton(*box, QDialogButtonBox::Ok, "OptMpsWptOk", "OK", "設定に反映して，出力を続けます");
  QPushButton* cancel = AddButton(*box, QDialogButtonBox::Cancel, "Cancel", "キャンセル", "出力をやめます");
  QPushButton* update =
      AddButton(*box, QDialogButtonBox::Apply, "OptMpsWptUpdate", "更新(&U)", "ここまでの変更を設定に反映します");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] {
    if (Update()) accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(update, &QPushButton::clicked, this, [this] { Update(); });
}

void ScriptOptionsDialog::Show(const ScriptOptionControls& controls) {
  utc_offset_->setText(QString::fromStdString(controls.utc_offset));
  origin_name_->setText(QString::fromStdString(controls.origin_name));
  destination_name_->setText(QString::fromStdString(controls.destination_name));
  numbering_down_->setChecked(controls.numbering_down);
  track_log_step_->setText(QString::fromStdString(controls.track_log_step));
  for (QLineEdit* line : {origin_name_, destination_name_})
    line->setCursorPosition(0);
}

ScriptOptionControls ScriptOptionsDialog::Controls() const {
  return {utc_offset_->text().toStdString(), origin_name_->text().toStdString(),
          destination_name_->text().toStdString(), numbering_down_->isChecked(), track_log_step_->text().toStdString()};
}

bool ScriptOptionsDialog::Update() {
  const ScriptOptionProblem problem = ApplyScriptOptions(Controls(), options_);
  if (problem == ScriptOptionProblem::None) return true;
  QLineEdit* wrong = problem == ScriptOptionProblem::UtcOffsetOverflow ? utc_offset_ : track_log_step_;
  ShowWarning(*this, Translated(window_messages::NumberTooLarge) + wrong->text());
  wrong->setFocus();
  wrong->selectAll();
  return false;
}

}  // namespace walrim
