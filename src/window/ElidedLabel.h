// A label that never widens its window: a text that does not fit is shown with an ellipsis, and whole in its tool tip.
#pragma once

#include <QLabel>

namespace walrim {

class ElidedLabel : public QLabel {
 public:
  ElidedLabel(const QString& object_name, Qt::TextElideMode mode, QWidget* parent = nullptr);

  /// Plain text, shown as it stands.
  void ShowText(const QString& text);

  /// Whether the whole text is on the screen.
  [[nodiscard]] bool ShowsAll() const;

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRect TextArea() const;

  Qt::TextElideMode mode_;
};

}  // namespace walrim
