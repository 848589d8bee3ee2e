#include "window/ClipDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/Messages.h"
#include "window/SymbolBox.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

/// What a position has in either notation.
constexpr int PositionLetters = 22;

void Fill(QComboBox& box, const std::vector<CodeEntry>& entries, std::optional<int> chosen) {
  box.clear();
  for (const CodeEntry& entry : entries)
    box.addItem(QString::fromStdString(entry.text), entry.code);
  if (chosen) box.setCurrentIndex(box.findData(*chosen));
}

std::optional<int> CodeIn(const QComboBox& box) {
  return box.currentIndex() < 0 ? std::nullopt : std::optional(box.currentData().toInt());
}

bool IsEnter(const QEvent* event) {
  const int key = static_cast<const QKeyEvent*>(event)->key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

ClipDialog::ClipDialog(ClipProAtlas& clip, QWidget* parent)
    : QDialog(parent),
      clip_(clip),
      lat_(MakeLine("ClipLat", "緯度")),
      lon_(MakeLine("ClipLon", "経度")),
      form_(new QLabel),
      notation_(MakeButton("ClipPnt", "D ⇔ DMS(&P)", "度と度分秒を切り替えます")),
      ident_(MakeLine("ClipIdent", "ウェイポイントの名前")),
      cmnt_(MakeLine("ClipCmnt", "コメント")),
      smbl_(new SymbolBox),
      dspl_(MakeComboBox("DsplType", "受信機での表示")) {
  setObjectName("ClipProAtlas");
  setWindowTitle(Translated(clip.is_new ? "新しいウェイポイント" : "地図からの地点"));
  NameControl(*smbl_, "SmblType");
  smbl_->setToolTip(Translated("シンボル．日本語・英語の名前の一部を入力すると，探せます"));
  NameControl(*form_, "ClipForm");
  form_->setToolTip(Translated("緯度と経度の表記"));
  for (QLineEdit* line : {lat_, lon_})
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * PositionLetters);
  Build();
  ShowClip();
  QLineEdit* first = clip.lat.empty() ? lat_ : ident_;
  first->setFocus();
  first->selectAll();
}

void ClipDialog::Build() {
  auto* column = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  auto* position = new QHBoxLayout;
  position->addWidget(lat_);
  position->addWidget(MakeCaption("経度(&L)", *lon_));
  position->addWidget(lon_);
  position->addWidget(form_);
  position->addWidget(notation_);
  form->addRow(MakeCaption("緯度(&B)", *lat_), position);
  form->addRow(MakeCaption("名前(&N)", *ident_), ident_);
  form->addRow(MakeCaption("コメント(&C)", *cmnt_), cmnt_);
  form->addRow(MakeCaption("シンボル(&S)", *smbl_), smbl_);
  form->addRow(MakeCaption("表示(&D)", *dspl_), dspl_);
  column->addLayout(form);

  auto* buttons = new QDialogButtonBox;
  QPushButton* ok = buttons->addButton(QDialogButtonBox::Ok);
  QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
  NameControl(*ok, "Ok");
  NameControl(*cancel, "Cancel");
  ok->setText("OK");
  cancel->setText(Translated("キャンセル"));
  column->addWidget(buttons);
  connect(notation_, &QPushButton::clicked, this, [this] { SwitchNotation(); });
  connect(ok, &QPushButton::clicked, this, [this] { Finish(); });
  connect(cancel, &QPushButton::clicked, this, &ClipDialog::reject);
  for (QWidget* widget : {static_cast<QWidget*>(ident_), static_cast<QWidget*>(cmnt_), static_cast<QWidget*>(smbl_),
                          static_cast<QWidget*>(dspl_)}) {
    widget->installEventFilter(this);
  }
}

/// Whatever is longer than its field is seen from its beginning.
void ClipDialog::ShowPosition() {
  lat_->setText(QString::fromStdString(clip_.lat));
  lon_->setText(QString::fromStdString(clip_.lon));
  for (QLineEdit* line : {lat_, lon_})
    line->setCursorPosition(0);
  form_->setText(Translated(clip_.notation == AngleNotation::D ? "度" : "度分秒"));
}

void ClipDialog::ShowClip() {
  ShowPosition();
  ident_->setText(QString::fromStdString(clip_.ident));
  cmnt_->setText(QString::fromStdString(clip_.cmnt));
  for (QLineEdit* line : {ident_, cmnt_})
    line->setCursorPosition(0);
  for (const CodeEntry& entry : clip_.smbl_entries)
    smbl_->Offer(clip_.type, entry.code, QString::fromStdString(entry.text));
  smbl_->setCurrentIndex(clip_.smbl ? smbl_->findData(*clip_.smbl) : -1);
  Fill(*dspl_, clip_.dspl_entries, clip_.dspl);
}

void ClipDialog::ReadControls() {
  clip_.lat = lat_->text().toStdString();
  clip_.lon = lon_->text().toStdString();
  clip_.ident = ident_->text().toStdString();
  clip_.cmnt = cmnt_->text().toStdString();
  clip_.smbl = smbl_->Code();
  clip_.dspl = CodeIn(*dspl_);
}

void ClipDialog::SwitchNotation() {
  ReadControls();
  const std::string refusal = SwitchClipNotation(clip_);
  if (!refusal.empty()) ShowWarning(*this, QString::fromStdString(refusal));
  ShowPosition();
}

void ClipDialog::Finish() {
  ReadControls();
  if (!clip_.smbl && smbl_->count() > 0) {
    ShowWarning(*this, Translated(messages::NoSuchSymbol));
    return smbl_->setFocus(Qt::TabFocusReason);
  }
  const ClipResult result = FinishClip(clip_);
  if (result.waypoint) {
    waypoint_ = result.waypoint;
    accept();
  } else if (!result.refusal.empty()) {
    ShowWarning(*this, QString::fromStdString(result.refusal));
  }
}

bool ClipDialog::Enter(const QObject* widget) {
  if (widget == ident_) {
    cmnt_->setFocus();
  } else if (widget == cmnt_) {
    smbl_->setFocus(Qt::TabFocusReason);
  } else if (widget == smbl_) {
    dspl_->setFocus();
  } else if (widget == dspl_) {
    Finish();
  } else {
    return false;
  }
  return true;
}

bool ClipDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && IsEnter(event)) return Enter(watched);
  return QDialog::eventFilter(watched, event);
}

}  // namespace walrim
