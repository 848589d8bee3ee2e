#include "window/ControlBinder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSpinBox>

namespace walrim {

void ControlBinder::Bind(QCheckBox& box, bool& value) {
  controls_.push_back(&box);
  QObject::connect(&box, &QCheckBox::toggled, &box, [this, &value](bool checked) {
    value = checked;
    changed_();
  });
  show_.emplace_back([&box, &value] {
    const QSignalBlocker blocker(box);
    box.setChecked(value);
  });
}

void ControlBinder::Bind(QSpinBox& box, int& value) {
  controls_.push_back(&box);
  QObject::connect(&box, &QSpinBox::valueChanged, &box, [this, &value](int number) {
    value = number;
    changed_();
  });
  show_.emplace_back([&box, &value] {
    const QSignalBlocker blocker(box);
    box.setValue(value);
  });
}

void ControlBinder::Bind(QComboBox& box, std::string& value) {
  controls_.push_back(&box);
  QObject::connect(&box, &QComboBox::currentIndexChanged, &box, [this, &box, &value](int index) {
    if (index < 0) return;
    value = box.itemData(index).toString().toStdString();
    changed_();
  });
  show_.emplace_back([&box, &value] {
    const QSignalBlocker blocker(box);
    box.setCurrentIndex(box.findData(QString::fromStdString(value)));
  });
}

void ControlBinder::BindNumber(QComboBox& box, std::function<int()> get, std::function<void(int)> set) {
  controls_.push_back(&box);
  QObject::connect(&box, &QComboBox::currentIndexChanged, &box, [this, &box, set = std::move(set)](int index) {
    if (index < 0) return;
    set(box.itemData(index).toInt());
    changed_();
  });
  show_.emplace_back([&box, get = std::move(get)] {
    const QSignalBlocker blocker(box);
    box.setCurrentIndex(box.findData(get()));
  });
}

void ControlBinder::Show() const {
  for (const auto& show : show_)
    show();
}

namespace {

/// The value of a control, as the user sees it.
QVariant ValueOf(const QWidget& control) {
  if (const auto* box = qobject_cast<const QCheckBox*>(&control)) return box->isChecked();
  if (const auto* box = qobject_cast<const QSpinBox*>(&control)) return box->value();
  if (const auto* box = qobject_cast<const QComboBox*>(&control)) return box->currentData();
  return {};
}

void Choose(QWidget& control, const QVariant& value) {
  if (auto* box = qobject_cast<QCheckBox*>(&control)) box->setChecked(value.toBool());
  if (auto* box = qobject_cast<QSpinBox*>(&control)) {
    bool is_number = false;
    const int number = value.toInt(&is_number);
    if (is_number && number >= box->minimum() && number <= box->maximum()) box->setValue(number);
  }
  if (auto* box = qobject_cast<QComboBox*>(&control)) {
    // A file of settings has numbers as texts.
    for (int i = 0; i < box->count(); ++i) {
      if (box->itemData(i).isValid() && box->itemData(i).toString() == value.toString()) box->setCurrentIndex(i);
    }
  }
}

}  // namespace

QVariantMap ControlBinder::Values() const {
  QVariantMap values;
  for (const QWidget* control : controls_)
    values.insert(control->objectName(), ValueOf(*control));
  return values;
}

void ControlBinder::Choose(const QVariantMap& values) const {
  for (QWidget* control : controls_) {
    const auto value = values.constFind(control->objectName());
    if (value != values.constEnd()) walrim::Choose(*control, *value);
  }
}

}  // namespace walrim
