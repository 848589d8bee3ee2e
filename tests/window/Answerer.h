// A person who answers the window's dialogs.
#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <functional>
#include <utility>
#include <vector>

namespace walrim {

/// Sees every dialog as it opens, notes what it says, and presses a button. A question without a set answer is
/// answered with its default button.
class Answerer : public QObject {
 public:
  struct Seen {
    QString text;
    QStringList buttons;
    QString default_button;
  };

  Answerer() { qApp->installEventFilter(this); }
  Answerer(const Answerer&) = delete;
  Answerer& operator=(const Answerer&) = delete;
  ~Answerer() override { qApp->removeEventFilter(this); }

  /// Answers to the questions to come, in their order.
  void Answer(QMessageBox::StandardButton button) { answers_.push_back(button); }
  /// What the next file dialog is given; an empty path cancels it.
  void ChooseFile(const QString& path) { path_ = path; }

  [[nodiscard]] QStringList Texts() const {
    QStringList texts;
    for (const Seen& seen : boxes)
      texts.append(seen.text);
    return texts;
  }

  std::vector<Seen> boxes;
  QStringList name_filters;
  QString chosen_filter;
  QString folder;  ///< where the last file dialog began
  int file_dialogs = 0;
  bool save_dialog = false;
  bool leaves_proposals = true;  ///< uploads as it is, whatever would be lost

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show) return false;
    if (auto* box = qobject_cast<QMessageBox*>(watched)) QTimer::singleShot(0, box, [this, box] { AnswerBox(*box); });
    if (leaves_proposals && watched->objectName() == "UploadCheck") {
      QTimer::singleShot(0, watched, [watched] {
        for (const char* button : {"LeaveAll", "Send"})
          watched->findChild<QPushButton*>(button)->click();
      });
    }
    if (auto* dialog = qobject_cast<QFileDialog*>(watched))
      QTimer::singleShot(0, dialog, [this, dialog] { AnswerFileDialog(*dialog); });
    return false;
  }

 private:
  void AnswerBox(QMessageBox& box) {
    Seen seen{box.text(), {}, box.defaultButton() != nullptr ? box.defaultButton()->text() : QString()};
    for (const QAbstractButton* button : box.buttons())
      seen.buttons.append(button->text());
    boxes.push_back(seen);
    QAbstractButton* button = box.defaultButton();
    if (box.buttons().size() > 1 && !answers_.empty()) {
      button = box.button(answers_.front());
      answers_.erase(answers_.begin());
    }
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
  }
  void AnswerFileDialog(QFileDialog& dialog) {
    ++file_dialogs;
    save_dialog = dialog.acceptMode() == QFileDialog::AcceptSave;
    folder = dialog.directory().absolutePath();
    name_filters = dialog.nameFilters();
    chosen_filter = dialog.selectedNameFilter();
    if (path_.isEmpty()) {
      QTest::keyClick(&dialog, Qt::Key_Escape);
      return;
    }
    dialog.selectFile(path_);
    QMetaObject::invokeMethod(&dialog, "accept");
  }

  std::vector<QMessageBox::StandardButton> answers_;
  QString path_;
};

}  // namespace walrim
