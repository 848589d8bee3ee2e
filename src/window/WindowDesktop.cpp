#include "window/WindowDesktop.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QUrl>

#include "window/DialogFilters.h"
#include "window/ElidedLabel.h"
#include "window/StatusLine.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

QString FromUtf8(std::string_view text) {
  return Translated(text);
}

/// A message box; Escape and closing it press the safe button.
class Box : public QMessageBox {
 public:
  Box(QWidget& window, Icon icon, std::string_view text, StandardButtons buttons, StandardButton safe)
      : QMessageBox(&window) {
    setObjectName("MessageBox");
    setWindowTitle("Walrim");
    setIcon(icon);
    setTextFormat(Qt::PlainText);
    setText(FromUtf8(text));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setStandardButtons(buttons);
    Name(Yes, "はい(&Y)");
    Name(No, "いいえ(&N)");
    Name(Ok, "OK");
    Name(Cancel, "キャンセル");
    setDefaultButton(safe);
    setEscapeButton(safe);
  }
  void Name(StandardButton which, std::string_view name) {
    if (QAbstractButton* named = button(which)) named->setText(FromUtf8(name));
  }
};

}  // namespace

WindowDesktop::WindowDesktop(QWidget& window, StatusLine& status_line, Hooks hooks)
    : window_(window), status_line_(status_line), hooks_(std::move(hooks)) {}

void WindowDesktop::ShowMessage(std::string_view text) {
  if (silent_) return;
  Box(window_, QMessageBox::Warning, text, QMessageBox::Ok, QMessageBox::Ok).exec();
}

bool WindowDesktop::AskYesNo(std::string_view text) {
  if (silent_) return false;
  Box box(window_, QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

bool WindowDesktop::AskOkCancel(std::string_view text) {
  if (silent_) return false;
  Box box(window_, QMessageBox::Question, text, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel);
  return box.exec() == QMessageBox::Ok;
}

Answer WindowDesktop::AskThree(std::string_view text, const ThreeAnswers& answers) {
  if (silent_) return Answer::Back;
  const auto buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  Box box(window_, QMessageBox::Question, text, buttons, QMessageBox::Cancel);
  box.Name(QMessageBox::Yes, answers.first);
  box.Name(QMessageBox::No, answers.second);
  box.Name(QMessageBox::Cancel, answers.back);
  const int pressed = box.exec();
  if (pressed == QMessageBox::Yes) return Answer::First;
  return pressed == QMessageBox::No ? Answer::Second : Answer::Back;
}

std::optional<std::string> WindowDesktop::RunFileDialog(QFileDialog& dialog, std::string_view filter) {
  if (silent_) return std::nullopt;
  const QStringList filters = NameFilters(FromUtf8(filter));
  dialog.setNameFilters(filters);
  // To be opened, a file may be of any type that is known; to be saved, it is of the chosen one.
  const bool saves = dialog.acceptMode() == QFileDialog::AcceptSave;
  if (!filters.isEmpty()) dialog.selectNameFilter(saves ? filters.last() : filters.first());
  QString& folder = saves ? folders_.save : folders_.open;
  const QString& other = saves ? folders_.open : folders_.save;
  const QString begin = folder.isEmpty() ? other : folder;
  dialog.setDirectory(begin.isEmpty() || !QDir(begin).exists() ? QDir::currentPath() : begin);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  folder = dialog.directory().absolutePath();
  return dialog.selectedFiles().constFirst().toStdString();
}

std::optional<std::string> WindowDesktop::OpenFileDialog(std::string_view filter) {
  QFileDialog dialog(&window_, Translated("取り込むファイル"));
  dialog.setFileMode(QFileDialog::ExistingFile);
  return RunFileDialog(dialog, filter);
}

std::optional<std::string> WindowDesktop::SaveFileDialog(std::string_view filter) {
  QFileDialog dialog(&window_, Translated("名前を付けて保存"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(DefaultSuffix(FromUtf8(filter)));
  // The program asks itself, in its own words.
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  return RunFileDialog(dialog, filter);
}

void WindowDesktop::SetClipboardText(std::string_view text) {
  QGuiApplication::clipboard()->setText(FromUtf8(text));
}

std::string WindowDesktop::ClipboardText() {
  return QGuiApplication::clipboard()->text().toStdString();
}

bool WindowDesktop::OpenLink(std::string_view link) {
  return QDesktopServices::openUrl(QUrl(FromUtf8(link)));
}

void WindowDesktop::SetStatusCaption(std::string_view text) {
  status_line_.ShowStatus(FromUtf8(text));
}

std::string WindowDesktop::StatusCaption() const {
  return status_line_.status->text().toStdString();
}

void WindowDesktop::SetProgress(std::int64_t done, std::int64_t total) {
  status_line_.SetProgress(done, total);
}

void WindowDesktop::BeginPart(std::string_view text, double begin, double end) {
  status_line_.BeginPart(text, begin, end);
}

void WindowDesktop::EndParts() {
  status_line_.EndParts();
}

}  // namespace walrim
