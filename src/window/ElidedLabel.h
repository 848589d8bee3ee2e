// A label that never widens its window: a text that does not fit is shown with an ellipsis, and whole in its tool tip.
#pragma once

#include <QLabel>
#include <optional>

namespace walrim {

/// While it says something it can have the focus.
class ElidedLabel : public QLabel {
 public:
  ElidedLabel(const QString& object_name, Qt::TextElideMode mode, QWidget* parent = nullptr);

  /// Plain text, shown as it stands.
  void ShowText(const QString& text);
  /// Shows a text for a while: EndHint brings back the one before, unless another was shown since.
  void ShowHint(const QString& hint);
  void EndHint();

  /// Whether the whole text is on the screen.
  [[nodiscard]] bool ShowsAll() const;

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// Copies the whole text.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QRect TextArea() const;

  Qt::TextElideMode mode_;
  std::optional<QString> before_hint_;  ///< nothing where no hint stands
};

}  // namespace walrim
