// A line above the tables in which one types what their rows are to hold.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace walrim {

/// Closing it empties it.
class FilterBar : public QWidget {
  Q_OBJECT

 public:
  explicit FilterBar(QWidget* parent);

  /// Comes forward with the keyboard in it.
  void Open();
  void Close();
  [[nodiscard]] QString Text() const;
  void ShowCounts(const QString& counts);

 Q_SIGNALS:
  void TextChanged();

 private:
  QLineEdit* text_;
  QLabel* counts_;
};

}  // namespace walrim
