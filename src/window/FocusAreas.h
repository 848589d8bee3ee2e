// The areas of a window for whoever goes through it by keys.
#pragma once

#include <QList>
#include <QWidget>

namespace walrim {

/// In reading order. Areas come and go with what they show; within each the Tab order is its own.
class FocusAreas {
 public:
  /// window must outlive this object; the areas are its own.
  explicit FocusAreas(QWidget& window) : window_(window) {}

  void Append(QWidget* area) { areas_.append(area); }
  void InsertBehind(const QWidget* before, QWidget* area) { areas_.insert(areas_.indexOf(before) + 1, area); }

  /// Makes the Tab order follow the areas, whenever their widgets were made.
  void OrderTabs();
  /// Gives the focus to the next area that can take it, or to the one before.
  void Move(bool forward);

 private:
  [[nodiscard]] QList<QWidget*> FocusChain() const;
  /// The number of areas where a widget is in none.
  [[nodiscard]] qsizetype AreaOf(const QWidget* widget) const;
  [[nodiscard]] QWidget* FirstOf(qsizetype area) const;

  QWidget& window_;
  QList<QWidget*> areas_;
};

}  // namespace walrim
