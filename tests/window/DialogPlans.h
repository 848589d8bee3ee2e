// A person who works in the program's own dialogs, with keys alone.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QLabel>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace walrim {

/// Runs plans in the dialogs as they open, in their order. It is a failure when a dialog comes without a plan, when a
/// plan leaves its dialog open, or when one was not needed; no test waits for ever.
class DialogPlans : public QObject {
 public:
  using Plan = std::function<void(QDialog&)>;

  DialogPlans() { qApp->installEventFilter(this); }
  DialogPlans(const DialogPlans&) = delete;
  DialogPlans& operator=(const DialogPlans&) = delete;
  ~DialogPlans() override {
    qApp->removeEventFilter(this);
    EXPECT_TRUE(plans_.empty()) << "no dialog " << plans_.front().first.toStdString() << " came";
  }

  /// What to do in the next dialog of a name.
  void Next(const QString& dialog, Plan plan) { plans_.emplace_back(dialog, std::move(plan)); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show) return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (dialog != nullptr &&
        QStringList{"ClipProAtlas", "MpsOption", "LinkDialog", "ShortenDialog", "SplitDialog"}.contains(
            dialog->objectName())) {
      QTimer::singleShot(0, dialog, [this, dialog] { Run(*dialog); });
    }
    return false;
  }

 private:
  void Run(QDialog& dialog) {
    if (plans_.empty() || plans_.front().first != dialog.objectName()) {
      ADD_FAILURE() << "unexpected dialog " << dialog.objectName().toStdString();
    } else {
      const Plan plan = std::move(plans_.front().second);
      plans_.erase(plans_.begin());
      ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
      plan(dialog);
    }
    if (!dialog.isVisible()) return;
    ADD_FAILURE() << dialog.objectName().toStdString() << " was left open";
    dialog.reject();
  }

  std::vector<std::pair<QString, Plan>> plans_;
};

/// The name of the widget that keys go to.
inline std::string FocusOf(const QDialog& dialog) {
  return dialog.focusWidget() == nullptr ? "" : dialog.focusWidget()->objectName().toStdString();
}

inline void Press(const QDialog& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  ASSERT_NE(dialog.focusWidget(), nullptr);
  QTest::keyClick(dialog.focusWidget(), key, modifiers);
}

/// Goes to a widget with the TAB key.
inline void TabTo(const QDialog& dialog, const std::string& name) {
  constexpr int MostWidgets = 20;
  for (int i = 0; i < MostWidgets && FocusOf(dialog) != name; ++i)
    Press(dialog, Qt::Key_Tab);
  ASSERT_EQ(FocusOf(dialog), name);
}

/// Types over what stands in the text box that has the focus; characters without a key come from an input method.
inline void Type(const QDialog& dialog, const QString& text) {
  ASSERT_NE(dialog.focusWidget(), nullptr);
  Press(dialog, Qt::Key_A, Qt::ControlModifier);
  Press(dialog, Qt::Key_Delete);
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(dialog.focusWidget(), &event);
}

/// The keys that lead to a caption, in alphabetical order: "BCD".
inline std::string MnemonicsOf(const QDialog& dialog) {
  QStringList keys;
  for (const QLabel* label : dialog.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) keys.append(QKeySequence::mnemonic(label->text()).toString().section('+', 1));
  }
  for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
    keys.append(QKeySequence::mnemonic(button->text()).toString().section('+', 1));
  keys.sort();
  return keys.join("").toStdString();
}

/// The names of the widgets that the TAB key goes through from the one with the focus, once around.
inline std::string TabOrderOf(const QDialog& dialog) {
  QStringList names;
  const QWidget* first = dialog.focusWidget();
  do {
    names.append(dialog.focusWidget()->objectName());
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
  } while (dialog.focusWidget() != first && names.size() < 20);
  return names.join(' ').toStdString();
}

}  // namespace walrim
