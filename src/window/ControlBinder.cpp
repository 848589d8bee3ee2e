#include "window/ControlBinder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSpinBox>

namespace walrim {

void ControlBinder::Bind(QCheckBox& box, bool& value) {
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

}  // namespace walrim
