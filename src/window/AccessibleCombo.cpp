#include "window/AccessibleCombo.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>

namespace walrim {

namespace {

class AccessibleCombo : public QAccessibleWidget {
 public:
  explicit AccessibleCombo(QComboBox& box) : QAccessibleWidget(&box, QAccessible::ComboBox), box_(box) {}

  [[nodiscard]] QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? box_.currentText() : QAccessibleWidget::text(what);
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QAccessibleWidget::actionNames() << showMenuAction() << pressAction();
  }
  void doAction(const QString& action) override {
    if (action != showMenuAction() && action != pressAction()) return QAccessibleWidget::doAction(action);
    box_.showPopup();
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.editable = box_.isEditable();
    return state;
  }

 private:
  QComboBox& box_;
};

QAccessibleInterface* MakeCombo(const QString& /*class_name*/, QObject* object) {
  auto* box = qobject_cast<QComboBox*>(object);
  return box != nullptr ? new AccessibleCombo(*box) : nullptr;
}

}  // namespace

void NameCombosByCaption() {
  static const bool installed = [] {
    QAccessible::installFactory(&MakeCombo);
    return true;
  }();
  static_cast<void>(installed);
}

}  // namespace walrim
